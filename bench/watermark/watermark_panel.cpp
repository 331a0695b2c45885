// The watermark panel with many watermarks: opened with its list and drawn, beside a Qt list of as many rows, and what
// its Sync costs when the font of the chosen watermark is stored already, beside converting and storing
// it.
//
// usage: bench_watermark_panel BUNDLE

#include "bench/side_by_side.h"
#include "core/features/panel_interface.h"
#include "model/settings/plugin_state.h"
#include "model/settings/preference_files.h"
#include "model/settings/ticket_access.h"
#include "platform/files/url_access.h"
#include "platform/fonts/ATSFont.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/CFURL.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Windows.h"
#include "ui/nib_window.h"
#include "watermark/records/watermark_font.h"
#include "watermark/records/watermark_storage.h"
#include "watermark/type42/type42.h"

#include <QApplication>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>

extern "C" OSStatus GetWatermarkPanelInterface(PlugInIntf** interface);

namespace {

constexpr int kRounds = 21;
#define kFont "DejaVuSans"

CFRef<CFDataRef> fontFile() {
    FSRef file = {};
    FMGetFontContainer(FMGetFontFromATSFontRef(ATSFontFindFromPostScriptName(CFSTR(kFont), kATSOptionFlagsDefault)),
                       &file);
    CFDataRef bytes = nullptr;
    CFURLCreateDataAndPropertiesFromResource(nullptr, makeFileURL(file.path).get(), &bytes, nullptr, nullptr, nullptr);
    return CFRef<CFDataRef>::adopt(bytes);
}

/// A new store with that many watermarks, written at once.
void fillStore(int count) {
    const auto store = CFRef<CFURLRef>::adopt(CopyPreferenceFileURL(kWatermarkStore));
    if (FSRef file; CFURLGetFSRef(store.get(), &file)) {
        std::filesystem::remove(file.path);
    }
    const auto list = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
    ChangeStore(kWatermarkStore, StoreUse::NewIfNone, [&](CFMutableDictionaryRef root) {
        WatermarkRecord record = {};
        record.kind = kTextWatermark;
        std::ranges::copy(kFont, record.fontName);
        for (int i = 0; i < count; ++i) {
            const auto name = makeString("Watermark " + std::to_string(i));
            CFStringGetCString(name.get(), record.text, sizeof record.text, kCFStringEncodingUTF8);
            CFDictionarySetValue(root, name.get(), CreateWatermarkDictionary(record).get());
            CFArrayAppendValue(list.get(), name.get());
        }
        CFDictionarySetValue(root, CFSTR("WatermarkListEntries"), list.get());
        return true;
    });
}

/// One life of the panel in a window, with its first frame.
void openPanel(WindowRef window, PMPrintSession session) {
    PlugInIntf* interface = nullptr;
    GetWatermarkPanelInterface(&interface);
    const PDEOperations panel = interface->table->operations;
    std::free(interface->table);
    std::free(interface);
    PMPDEContext context = nullptr;
    OSType creator = 0;
    CFStringRef kind = nullptr;
    CFStringRef title = nullptr;
    UInt32 width = 0;
    UInt32 height = 0;
    panel.Prologue(&context, &creator, &kind, &title, &width, &height);
    const Rect bounds{0, 0, 440, 540};
    ControlRef pane = nullptr;
    CreateUserPaneControl(window, &bounds, kControlSupportsEmbedding, &pane);
    panel.Initialize(context, nullptr, nullptr, pane, session);
    panel.Open(context);
    QApplication::processEvents();
    panel.Terminate(context, noErr);
    DisposeControl(pane);
}

void openQtList(int count) {
    QWidget window;
    auto* list = new QTreeWidget;
    (new QVBoxLayout(&window))->addWidget(list);
    QList<QTreeWidgetItem*> rows;
    for (int i = 0; i < count; ++i) {
        rows.append(new QTreeWidgetItem(QStringList(QStringLiteral("Watermark %1").arg(i))));
    }
    list->addTopLevelItems(rows);
    window.resize(540, 440);
    window.show();
    QApplication::processEvents();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s BUNDLE\n", argv[0]);
        return 2;
    }
    std::string folder = (std::filesystem::temp_directory_path() / "tavro-bench-XXXXXX").string();
    setenv("XDG_DATA_HOME", mkdtemp(folder.data()), 1);
    int count = 1;
    ToolboxInitialize(&count, argv, true);
    const auto bundle = CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, makeFileURL(argv[1], true).get()));
    PMPrintSession session = nullptr;
    PMTicketRef settings = 0;
    WindowFromNib window;
    if (!bundle || PMCreateSession(&session) != noErr ||
        PMTicketCreate(nullptr, kPDE_PMPrintSettingsKey, &settings) != noErr ||
        window.load(bundle.get(), CFSTR("Watermark"), CFSTR("Window")) != noErr) {
        std::fprintf(stderr, "%s cannot be used\n", argv[1]);
        return 1;
    }
    const auto number = CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberSInt32Type, &settings));
    PMSessionSetDataInSession(session, kPDE_PMPrintSettingsKey, number.get());
    ShowWindow(window.get());

    for (const int rows : {1'000, 10'000}) {
        fillStore(rows);
        bench::compare(("open, " + std::to_string(rows) + " watermarks").c_str(), kRounds, "panel",
                       [&] { openPanel(window.get(), session); }, "Qt list", [rows] { openQtList(rows); });
    }
    fillStore(1'000);
    const CFRef<CFDataRef> font = fontFile();
    bench::compare(
        "font stored already", kRounds, "keep", [] { convertFont(CFSTR("Watermark 0")); }, "convert and store",
        [&] {
            FontRefusal refusal = FontRefusal::none;
            storeFontData(kWatermarkStore, CFSTR("Another"),
                          convertTTFtoPS42(font.get(), CFSTR(kFont), 0, &refusal).get());
        });

    PMTicketReleaseAndClear(&settings);
    PMReleaseSession(session);
    std::filesystem::remove_all(folder);
    return 0;
}
