#include "host/dialog/plugin_host.h"

#include "host/script/text.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFCollections.h"
#include "platform/toolbox/Controls.h"

#include <algorithm>

namespace {

constexpr UInt32 kBaseVersion = 1;

/// Asks the instance for the extension's interface and gives the instance back; null when it has none.
PDEInterface* takeInterface(void* instance) {
    const auto id = CFRef<CFUUIDRef>::adopt(CFUUIDCreateFromString(nullptr, kPDEInterface));
    IUnknownVTable& unknown = **static_cast<IUnknownVTable**>(instance);
    void* interface = nullptr;
    const HRESULT result = unknown.QueryInterface(instance, CFUUIDGetUUIDBytes(id.get()), &interface);
    unknown.Release(instance);
    auto* extension = static_cast<PDEInterface*>(interface);
    // A status of 0 promises neither the object nor its table.
    return result == 0 && extension != nullptr && extension->table != nullptr ? extension : nullptr;
}

/// Summaries that the extension hands out are the dialog's to release. This dialog shows none: every setting is beside
/// the maker's panels already.
void discardSummaries(PDEInterface::Table& operations, PDEContext context) {
    CFArrayRef titles = nullptr;
    CFArrayRef summaries = nullptr;
    operations.GetSummaryText(context, &titles, &summaries);
    CFRelease(titles);
    CFRelease(summaries);
}

}  // namespace

Result<std::unique_ptr<PluginHost>> PluginHost::load(const std::string& path) {
    auto plugin = CFRef<CFPlugInRef>::adopt(CFPlugInCreate(nullptr, fileURL(path, true).get()));
    if (!plugin) {
        return Failure{ExitStatus::unusableInput, utf8(CFBundleGetLastError())};
    }
    const auto type = CFRef<CFUUIDRef>::adopt(CFUUIDCreateFromString(nullptr, kPDEPlugInType));
    const auto factories =
        CFRef<CFArrayRef>::adopt(CFPlugInFindFactoriesForPlugInTypeInPlugIn(type.get(), plugin.get()));
    if (CFArrayGetCount(factories.get()) == 0) {
        return unusable(path, "declares no print dialog extension");
    }
    if (!CFBundleLoadExecutable(plugin.get())) {
        return Failure{ExitStatus::unusableInput, utf8(CFBundleGetLastError())};
    }
    const auto* factory = static_cast<CFUUIDRef>(CFArrayGetValueAtIndex(factories.get(), 0));
    void* instance = CFPlugInInstanceCreate(nullptr, factory, type.get());
    if (instance == nullptr) {
        return unusable(path, "its factory makes no print dialog extension");
    }
    PDEInterface* interface = takeInterface(instance);
    PDEAPIVersion version{};
    if (interface == nullptr || interface->table->GetAPIVersion(interface, &version) != noErr ||
        version.baseMajor != kBaseVersion) {
        return unusable(path, "its extension is of a version that this dialog does not know");
    }
    return std::unique_ptr<PluginHost>(new PluginHost(path, std::move(plugin), interface));
}

PluginHost::~PluginHost() {
    stop(noErr);
    operations().Release(&interface_);
}

PluginHost::Start PluginHost::start(ControlRef place, PMPrintSession session) {
    OSType creator = 0;
    CFStringRef kind = nullptr;
    CFStringRef title = nullptr;
    UInt32 width = 0;
    UInt32 height = 0;
    if (operations().Prologue(&context_, &creator, &kind, &title, &width, &height) != noErr) {
        context_ = nullptr;
        return Start::refused;
    }
    session_ = session;
    Rect bounds{};
    GetControlBounds(place, &bounds);
    // With large text the place is larger than the plug-in asks for, and so is all that it puts there.
    bounds.right = std::max(bounds.right, static_cast<SInt16>(bounds.left + static_cast<SInt16>(width)));
    bounds.bottom = std::max(bounds.bottom, static_cast<SInt16>(bounds.top + static_cast<SInt16>(height)));
    CreateUserPaneControl(GetControlOwner(place), &bounds, kControlSupportsEmbedding, &pane_);
    EmbedControl(pane_, place);

    UInt32 flags = 0;
    if (const OSStatus status = operations().Initialize(context_, &flags, nullptr, pane_, session_); status != noErr) {
        stop(status);
        return Start::refused;
    }
    copyTicketsToControls();
    discardSummaries(operations(), context_);
    isOpen_ = operations().Open(context_) == noErr;
    return Start::started;
}

void PluginHost::stop(OSStatus status) {
    if (context_ == nullptr) {
        return;
    }
    if (isOpen_) {
        operations().Close(context_);
    }
    operations().Terminate(context_, status);
    DisposeControl(pane_);
    context_ = nullptr;
    session_ = nullptr;
    pane_ = nullptr;
    isOpen_ = false;
}

void PluginHost::sync(bool ticketsToControls) {
    if (context_ != nullptr) {
        operations().Sync(context_, session_, ticketsToControls);
    }
}
