#include "host/settings/shared_presets.h"

#include "driver/pages/stored_mark.h"
#include "host/settings/preset_content.h"
#include "host/settings/texts.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <vector>

namespace {

std::string queueName(const std::string& destination) {
    return destination.substr(0, destination.find('/'));
}

/// The instances that hold the preset, of all queues.
std::vector<std::string> instancesOf(const std::string& preset) {
    const auto list = CFRef<CFArrayRef>::adopt(PMCopyInstancesOfSettings(makeString(preset).get()));
    std::vector<std::string> names;
    for (CFIndex i = 0; i < CFArrayGetCount(list.get()); ++i) {
        names.push_back(utf8Text(static_cast<CFStringRef>(CFArrayGetValueAtIndex(list.get(), i))));
    }
    return names;
}

std::optional<std::string> instanceOn(const std::string& queue, const std::string& preset) {
    for (std::string& instance : instancesOf(preset)) {
        if (queueName(instance) == queue) {
            return std::move(instance);
        }
    }
    return std::nullopt;
}

/// One that the preset has, or a free one.
std::string instanceFor(const std::string& queue, const std::string& preset) {
    if (auto own = instanceOn(queue, preset)) {
        return *own;
    }
    std::string base = utf8Text(CFRef<CFStringRef>::adopt(PMCopyInstanceName(makeString(preset).get())).get());
    base = queue + "/" + (base.empty() ? "preset" : base);
    std::string name = base;
    for (int copy = 2; PMHasInstance(makeString(name).get()); ++copy) {
        name = base + "-" + std::to_string(copy);
    }
    return name;
}

CFStringRef faultOf(JobKind kind) {
    switch (kind) {
        case JobKind::fax:
            return CFSTR("Preset Shared Fax");
        case JobKind::secure:
            return CFSTR("Preset Shared Secure");
        case JobKind::delayed:
            return CFSTR("Preset Shared Delayed");
        default:
            return nullptr;
    }
}

/// What a preset keeps and no option stands for.
CFRef<CFMutableDictionaryRef> settingsToShare(const PrintSession& session, const std::string& preset) {
    const auto makeDictionary = [](CFDictionaryRef items) {
        return CFRef<CFMutableDictionaryRef>::adopt(
            items == nullptr ? CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks,
                                                         &kCFTypeDictionaryValueCallBacks)
                             : CFDictionaryCreateMutableCopy(nullptr, 0, items));
    };
    const auto items = makeDictionary(presetContent(session.copySettings()).printSettings.get());
    for (const CFStringRef key : {CFSTR("PPDDict"), kPMCopiesKey, kPMPageOptionsKey}) {
        CFDictionaryRemoveValue(items.get(), key);
    }
    auto settings = makeDictionary(nullptr);
    CFDictionarySetValue(settings.get(), kPMSavedSettingsNameKey, makeString(preset).get());
    CFDictionarySetValue(settings.get(), kPDE_PMPrintSettingsKey, items.get());
    return settings;
}

std::optional<std::string> reasonOf(OSStatus status) {
    return status == noErr ? std::nullopt : std::optional(utf8Text(PMGetLastErrorText()));
}

std::optional<std::string> removeAll(const std::vector<std::string>& instances) {
    for (const std::string& instance : instances) {
        if (auto reason = reasonOf(PMRemoveInstance(makeString(instance).get()))) {
            return reason;
        }
    }
    return std::nullopt;
}

}  // namespace

bool canBeShared(const Printer& printer) {
    return PMPrinterTakesSavedSettings(printer.get()) != 0;
}

bool isShared(const Printer& printer, const std::string& preset) {
    return !preset.empty() && instanceOn(queueName(printer.queue()), preset).has_value();
}

bool isShared(const std::string& preset) {
    return !instancesOf(preset).empty();
}

std::string sharedName(const Printer& printer, const std::string& preset) {
    return instanceFor(queueName(printer.queue()), preset);
}

std::optional<std::string> sharePreset(const PrintSession& session, const std::string& preset, CFBundleRef texts) {
    const JobInstructions& job = session.instructions();
    if (const CFStringRef fault = faultOf(job.kind)) {
        return utf8Text(localized(texts, fault).get());
    }
    const auto settings = settingsToShare(session, preset);
    if (job.watermark) {
        std::string reason;
        const auto mark = copyMarkToTravel(job.watermark->name, &reason);
        if (!mark) {
            return utf8Text(localized(texts, CFSTR("Preset Shared Watermark"), job.watermark->name).get());
        }
        CFDictionarySetValue(settings.get(), kPMSavedSettingsWatermarkKey, mark.get());
    }
    const std::string instance = sharedName(session.printer(), preset);
    return reasonOf(PMPrinterSaveInstance(session.printer().get(),
                                          makeString(instance.substr(instance.find('/') + 1)).get(),
                                          session.printSettings(), session.pageFormat(), settings.get()));
}

std::optional<std::string> unsharePreset(const Printer& printer, const std::string& preset) {
    std::vector<std::string> instances = instancesOf(preset);
    std::erase_if(instances,
                  [queue = queueName(printer.queue())](const std::string& each) { return queueName(each) != queue; });
    return removeAll(instances);
}

std::optional<std::string> unsharePreset(const std::string& preset) {
    return removeAll(instancesOf(preset));
}

std::optional<std::string> renameSharedPreset(const std::string& preset, const std::string& newName) {
    if (preset == newName) {
        return std::nullopt;
    }
    if (auto reason = unsharePreset(newName)) {
        return reason;
    }
    for (const std::string& instance : instancesOf(preset)) {
        const std::string renamed = instanceFor(queueName(instance), newName);
        if (auto reason = reasonOf(
                PMRenameInstance(makeString(instance).get(), makeString(renamed).get(), makeString(newName).get()))) {
            return reason;
        }
    }
    return std::nullopt;
}
