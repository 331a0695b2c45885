#include "core/built_in_panels.h"

#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFString.h"

#include <cstdlib>
#include <iterator>
#include <new>
#include <optional>

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

void LoadPanel(PDEShellContext* context, const PDEInterfaceTable& table, const char* helpPage) {
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
    context->panels.push_back({table, panelContext,
                               CFRef<CFStringRef>::adopt(CFStringCreateCopy(kCFAllocatorDefault, title)),
                               CFRef<CFStringRef>::adopt(CFStringCreateCopy(kCFAllocatorDefault, kind)),
                               CFStringMakeConstant(helpPage), nullptr, number});
}

}  // namespace

void LoadBuiltInPanels(PDEShellContext* context) {
    try {
        context->panels.reserve(10);
        for (const BuiltInPanel& panel : kBuiltInPanels) {
            if (const auto table = CopyPanelTable(context->bundle.get(), panel.getter)) {
                LoadPanel(context, *table, panel.helpPage);
            }
        }
    } catch (const std::bad_alloc&) {
        return;  // with the panels that there are
    }
}
