#include "host/dialog/plugin_host.h"

#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/message.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Help.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

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

/// A copy of the operations behind a getter; nothing when there are none. The object that the getter makes is of no
/// further use and goes.
std::optional<PDEInterface::Table> operationsBehind(CFBundleRef bundle, CFStringRef getterName) {
    const auto getter = reinterpret_cast<PDEInterfaceGetter>(CFBundleGetFunctionPointerForName(bundle, getterName));
    PDEInterface* interface = nullptr;
    if (getter == nullptr || getter(&interface) != noErr || interface == nullptr) {
        return std::nullopt;
    }
    std::optional<PDEInterface::Table> operations;
    if (interface->table != nullptr) {
        operations = *interface->table;
    }
    std::free(interface->table);
    std::free(interface);
    return operations;
}

/// The names of the getters of the other extensions that the printer has.
CFRef<CFArrayRef> copyGetters(CFBundleRef bundle) {
    const auto copy =
        reinterpret_cast<PDEExtensionGettersCopier>(CFBundleGetFunctionPointerForName(bundle, kPDEExtensionGetters));
    return copy == nullptr ? CFRef<CFArrayRef>() : CFRef<CFArrayRef>::adopt(copy());
}

}  // namespace

Result<std::unique_ptr<PluginHost>> PluginHost::load(const std::string& path) {
    auto plugin = CFRef<CFPlugInRef>::adopt(CFPlugInCreate(nullptr, makeFileURL(path, true).get()));
    if (!plugin) {
        return Failure{ExitStatus::unusableInput, utf8Text(CFBundleGetLastError())};
    }
    const auto type = CFRef<CFUUIDRef>::adopt(CFUUIDCreateFromString(nullptr, kPDEPlugInType));
    const auto factories =
        CFRef<CFArrayRef>::adopt(CFPlugInFindFactoriesForPlugInTypeInPlugIn(type.get(), plugin.get()));
    if (CFArrayGetCount(factories.get()) == 0) {
        return unusable(path, messageText("declares no print dialog extension"));
    }
    if (!CFBundleLoadExecutable(plugin.get())) {
        return Failure{ExitStatus::unusableInput, utf8Text(CFBundleGetLastError())};
    }
    const auto* factory = static_cast<CFUUIDRef>(CFArrayGetValueAtIndex(factories.get(), 0));
    void* instance = CFPlugInInstanceCreate(nullptr, factory, type.get());
    if (instance == nullptr) {
        return unusable(path, messageText("its factory makes no print dialog extension"));
    }
    PDEInterface* interface = takeInterface(instance);
    PDEAPIVersion version{};
    if (interface == nullptr || interface->table->GetAPIVersion(interface, &version) != noErr ||
        version.baseMajor != kBaseVersion) {
        return unusable(path, messageText("its extension is of a version that this dialog does not know"));
    }
    return std::unique_ptr<PluginHost>(new PluginHost(path, std::move(plugin), interface));
}

PluginHost::~PluginHost() {
    stop(noErr);
    interface_->table->Release(&interface_);
}

PluginHost::Start PluginHost::start(ControlRef place, PMPrintSession session) {
    auto first = Extension::start(*interface_->table, place, 1, session);
    if (!first) {
        return Start::refused;
    }
    running_.push_back({std::string(), std::move(first)});
    startOthers(place, session);
    shown_ = 0;
    running_.front().extension->open();  // always: it has settings that every job carries
    const auto last = std::ranges::find(running_, shownGetter_, &Running::getter);
    if (last != running_.end()) {
        show(static_cast<std::size_t>(last - running_.begin()));
    }
    return Start::started;
}

void PluginHost::startOthers(ControlRef place, PMPrintSession session) {
    const auto getters = copyGetters(plugin_.get());
    for (CFIndex i = 0; i < CFArrayGetCount(getters.get()); ++i) {
        const auto* const getter = static_cast<CFStringRef>(CFArrayGetValueAtIndex(getters.get(), i));
        const auto operations = operationsBehind(plugin_.get(), getter);
        const auto number = static_cast<SInt32>(running_.size() + 1);
        if (auto other = operations ? Extension::start(*operations, place, number, session) : nullptr) {
            running_.push_back({utf8Text(getter), std::move(other)});
        }
    }
}

void PluginHost::stop(OSStatus status) {
    // The first one has what the others stand on.
    for (; !running_.empty(); running_.pop_back()) {
        running_.back().extension->stop(status);
    }
}

bool PluginHost::show(std::size_t extension) {
    if (extension >= running_.size() || extension == shown_) {
        return false;
    }
    Extension& left = *running_[shown_].extension;
    const bool hadFocus = left.hasFocus();
    left.copyControlsToTickets();
    left.close();
    shown_ = extension;
    shownGetter_ = running_[extension].getter;
    for (const Running& running : running_) {
        if (running.extension.get() != &left) {
            running.extension->copyTicketsToControls();
        }
    }
    running_[extension].extension->open();
    return hadFocus;
}

template <typename Act>
void PluginHost::eachShownLast(Act act) {
    for (std::size_t i = 0; i < running_.size(); ++i) {
        if (i != shown_) {
            act(*running_[i].extension);
        }
    }
    if (!running_.empty()) {
        act(*running_[shown_].extension);
    }
}

void PluginHost::copyTicketsToControls() {
    eachShownLast([](Extension& extension) { extension.copyTicketsToControls(); });
}

void PluginHost::copyControlsToTickets() {
    eachShownLast([](Extension& extension) { extension.copyControlsToTickets(); });
}

OSStatus PluginHost::showHelp(CFStringRef page) const {
    const CFTypeRef name = CFBundleGetValueForInfoDictionaryKey(plugin_.get(), CFSTR("CFBundleHelpBookName"));
    FSRef folder{};
    if (name == nullptr || CFGetTypeID(name) != CFStringGetTypeID() ||
        !CFURLGetFSRef(makeFileURL(path_, true).get(), &folder)) {
        return fnfErr;
    }
    const OSStatus status = AHRegisterHelpBook(&folder);
    return status == noErr ? AHGotoPage(static_cast<CFStringRef>(name), page, nullptr) : status;
}
