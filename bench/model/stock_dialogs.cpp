// Opening a stock dialog, from the call until its window has been shown and closed again, beside an empty dialog of
// Qt's with the same number of widgets.
//
// usage: bench_stock_dialogs PPD BUNDLE

#include "bench/side_by_side.h"
#include "model/settings/plugin_state.h"
#include "model/settings/ppd_ui_dictionary.h"
#include "model/stock_dialogs/advanced_stock_selection.h"
#include "model/stock_dialogs/custom_stock_size.h"
#include "model/stock_dialogs/stock_description.h"
#include "model/stock_dialogs/tab_stock_setup.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFURL.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/Windows.h"

#include <QApplication>
#include <QDialog>
#include <QTimer>
#include <QVBoxLayout>
#include <functional>

namespace {

constexpr int kRounds = 51;

CFRef<CFURLRef> url(const char* path, bool isFolder) {
    const auto text = CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, path, kCFStringEncodingUTF8));
    return CFRef<CFURLRef>::adopt(CFURLCreateWithFileSystemPath(nullptr, text.get(), kCFURLPOSIXPathStyle, isFolder));
}

/// Runs a dialog that goes as soon as it is there, and counts its widgets.
int opened(const std::function<void()>& run) {
    int widgets = 0;
    QTimer::singleShot(0, qApp, [&widgets] {
        QWidget* window = QApplication::activeModalWidget();
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);  // the first frame
        widgets = static_cast<int>(window->findChildren<QWidget*>().size());
        QuitAppModalLoopForWindow(FrontNonFloatingWindow());
    });
    run();
    return widgets;
}

void openEmpty(int widgets) {
    QDialog dialog;
    auto* layout = new QVBoxLayout(&dialog);
    for (int i = 0; i < widgets; ++i) {
        layout->addWidget(new QWidget);
    }
    QTimer::singleShot(0, &dialog, [&dialog] {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        dialog.reject();
    });
    dialog.exec();
}

void compare(const char* title, const std::function<void()>& run) {
    const int widgets = opened(run);
    bench::compare((std::string(title) + ", " + std::to_string(widgets) + " widgets").c_str(), kRounds, "ours",
                   [&] { opened(run); }, "Qt", [widgets] { openEmpty(widgets); });
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s PPD BUNDLE\n", argv[0]);
        return 2;
    }
    int count = 1;
    ToolboxInitialize(&count, argv, true);
    const auto bundle = CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, url(argv[2], true).get()));
    PMPrinter printer = nullptr;
    PMPrintSession session = nullptr;
    PMTicketRef info = 0;
    PPDContext ppd = nullptr;
    if (!bundle || PMPrinterCreateFromPPDFile(url(argv[1], false).get(), &printer) != noErr ||
        PMCreateSession(&session) != noErr || PMSessionSetCurrentPMPrinter(session, printer) != noErr ||
        PMTicketCreate(nullptr, kPDE_PMPrinterInfoKey, &info) != noErr ||
        PMPrinterWriteInfoTicket(printer, nullptr, info) != noErr ||
        ppdOpenCompiledPPDFromTicket(info, &ppd) != noErr || PPDCreateGlobalUIDictionary(ppd) != noErr) {
        std::fprintf(stderr, "%s or %s cannot be used\n", argv[1], argv[2]);
        return 1;
    }
    SetPDEBundle(bundle.get());
    SetCurrentPrintSession(session);

    Stock stock;
    SInt16 result = 0;
    compare("advanced selection", [&] {
        RunModalAdvancedStockSelection(bundle.get(), DialogMode::edit, JobContext::insert, NamedPaperContext::office,
                                       &stock, &result);
    });
    compare("custom size", [&] {
        SInt32 width = 21000;
        SInt32 length = 29700;
        RunModalCustomStockSizeDialog(bundle.get(), &result, &width, &length);
    });
    compare("description",
            [&] { RunModalStockDescriptionSetup(bundle.get(), DialogMode::edit, JobContext::job, &stock, &result); });
    compare("tab stock", [&] {
        _IS_Options options{};
        ImageShiftInitialize(nullptr, nullptr, &options);
        RunModalTabStockSetupDialog(bundle.get(), &stock, &options, &result);
    });

    PPDReleaseGlobalUIDictionary();
    ppdCloseCompiledPPDFromTicket(ppd);
    PMTicketReleaseAndClear(&info);
    PMReleaseSession(session);
    PMPrinterRelease(printer);
    return 0;
}
