#include "core/shell/built_in_panels.h"

#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFString.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <new>
#include <optional>
#include <vector>

namespace {

struct BuiltInPanel {
    const char* getter;
    const char* helpPage;
};
constexpr BuiltInPanel kBuiltInPanels[] = {
    // name of the getter               page of the help book
    {"GetPaperOutputPanelInterface", "paper-output.html"},
    {"GetSpecialPagesPanelInterface", "special-pages.html"},
    {"GetImageOptionsPanelInterface", "image-options.html"},
    {"GetLayoutPanelInterface", "layout.html"},
    {"GetWatermarkPanelInterface", "watermark.html"},
    {"GetAdvancedPanelInterface", "advanced.html"},
    {"GetAboutPanelInterface", "about.html"},
};
static_assert(std::size(kBuiltInPanels) == 7);

// For models that list them among theirs.
constexpr BuiltInPanel kFurtherPanels[] = {
    {"GetColorOptionsPanelInterface", "color-options.html"},
};

/// A copy of the panel's table. The object that the getter makes is of no further use and goes.
std::optional<PDEInterfaceTable> CopyPanelTable(CFBundleRef bundle, const char* getterName) {
    const auto getter = reinterpret_cast<PanelInterfaceGetter>(
        CFBundleGetFunctionPointerForName(bundle, CFStringMakeConstant(getterName)));
    PlugInIntf* interface = nullptr;
    if (getter == nullptr || getter(&interface) != noErr || interface == nullptr) {
        return std::nullopt;
    }
    std::optional<PDEInterfaceTable> table;
    if (interface->table != nullptr) {
        table = *interface->table;
    }
    std::free(interface->table);
    std::free(interface);
    return table;
}

void LoadPanel(PDEShellContext* context, const BuiltInPanel& panel) {
    const auto loaded = CopyPanelTable(context->bundle.get(), panel.getter);
    if (!loaded) {
        return;
    }
    const PDEInterfaceTable& table = *loaded;
    context->panels.reserve(context->panels.size() + 1);
    PMPDEContext panelContext = nullptr;
    OSType creator = 0;
    CFStringRef kind = nullptr;
    CFStringRef title = nullptr;
    UInt32 maximumWidth = 0;
    UInt32 maximumHeight = 0;
    if (table.operations.Prologue(&panelContext, &creator, &kind, &title, &maximumWidth, &maximumHeight) != noErr) {
        return;
    }
    const auto number = static_cast<SInt16>(context->panels.size() + 1);
    context->panels.push_back({panel.getter, table, panelContext,
                               CFRef<CFStringRef>::adopt(CFStringCreateCopy(kCFAllocatorDefault, title)),
                               CFRef<CFStringRef>::adopt(CFStringCreateCopy(kCFAllocatorDefault, kind)),
                               CFStringMakeConstant(panel.helpPage), nullptr, false, number});
}

/// The panel's record; null for a name that is no panel's, or a panel that cannot be loaded.
PanelRecord* FindOrLoadPanel(PDEShellContext* context, CFStringRef getter) {
    const auto has = [getter](const auto& panel) { return CFEqual(getter, CFStringMakeConstant(panel.getter)); };
    auto found = std::ranges::find_if(context->panels, has);
    if (found == context->panels.end()) {
        const auto* const further = std::ranges::find_if(kFurtherPanels, has);
        if (further == std::end(kFurtherPanels)) {
            return nullptr;
        }
        LoadPanel(context, *further);
        found = std::ranges::find_if(context->panels, has);
    }
    return found != context->panels.end() ? &*found : nullptr;
}

}  // namespace

void LoadBuiltInPanels(PDEShellContext* context) {
    try {
        context->panels.reserve(10);
        for (const BuiltInPanel& panel : kBuiltInPanels) {
            LoadPanel(context, panel);
        }
    } catch (const std::bad_alloc&) {
        return;  // with the panels that there are
    }
}

void ChoosePanels(PDEShellContext* context, CFArrayRef getters) {
    std::vector<const char*> chosen;
    for (CFIndex i = 0; i < CFArrayGetCount(getters); ++i) {
        const void* const getter = CFArrayGetValueAtIndex(getters, i);
        if (CFGetTypeID(getter) == CFStringGetTypeID()) {
            const PanelRecord* const record = FindOrLoadPanel(context, static_cast<CFStringRef>(getter));
            if (record != nullptr && std::ranges::find(chosen, record->getter) == chosen.end()) {
                chosen.push_back(record->getter);
            }
        }
    }
    if (chosen.empty()) {
        for (const BuiltInPanel& panel : kBuiltInPanels) {
            chosen.push_back(panel.getter);
        }
    }
    const auto place = [&chosen](const PanelRecord& record) { return std::ranges::find(chosen, record.getter); };
    std::ranges::stable_sort(context->panels, {}, place);
    SInt16 number = 0;
    for (PanelRecord& record : context->panels) {
        record.number = place(record) != chosen.end() ? ++number : kNoPanel;
        if (record.number == kNoPanel) {
            HideControl(record.pane);
        }
    }
}
