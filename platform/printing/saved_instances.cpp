// Instances of queues, which users keep for all their programs, with settings that no option stands for.
#include "platform/foundation/CFString.h"
#include "platform/foundation/message.h"
#include "platform/foundation/text.h"
#include "platform/printing/PMPrinter.h"
#include "platform/printing/cups_server.h"
#include "platform/printing/job_options.h"
#include "platform/printing/last_error.h"
#include "platform/printing/printer_record.h"
#include "platform/printing/saved_options.h"
#include "platform/printing/secret_options.h"
#include "platform/printing/settings_option.h"

#include <algorithm>

namespace {

bool isNameCharacter(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x80 || (c >= '0' && c <= '9') || (lowerCase(c) >= 'a' && lowerCase(c) <= 'z') || c == '-' ||
           c == '_' || c == '.';
}

/// The options that every program has words for.
OptionList instanceOptions(const OpaquePMPrinter& printer, const JobRequest& request, PMTicketRef printSettings,
                           PMTicketRef pageFormat) {
    OptionList kept;
    for (const auto& [name, value] : request.choices) {
        const PPDOption* const option = printer.ppd.findOption(name);
        if (option != nullptr && !option->installable && !isSecretOption(printer.ppd, name)) {
            kept.emplace_back(name, value);
        }
    }
    OptionList options;
    setOptions(&options, kept);
    setOption(&options, "copies", std::to_string(request.copies));
    setOptions(&options, orientationOptions(pageFormat));
    if (findOption(options, kOrientationOption) == nullptr && printer.start.orientation.value_or(1) != 1) {
        setOption(&options, kOrientationOption, kPortraitRequested);
    }
    CFDictionaryRef pages = nullptr;
    PMTicketGetCFDictionary(printSettings, kPMTopLevel, kPMTopLevel, kPMPageOptionsKey, &pages);
    const auto count = static_cast<std::size_t>(pages == nullptr ? 0 : CFDictionaryGetCount(pages));
    std::vector<const void*> keys(count);
    std::vector<const void*> values(count);
    if (count > 0) {
        CFDictionaryGetKeysAndValues(pages, keys.data(), values.data());
    }
    OptionList ofPages;
    for (std::size_t i = 0; i < count; ++i) {
        if (CFGetTypeID(values[i]) == CFStringGetTypeID()) {
            ofPages.emplace_back(utf8Text(static_cast<CFStringRef>(keys[i])),
                                 utf8Text(static_cast<CFStringRef>(values[i])));
        }
    }
    setOptions(&options, ofPages);
    return options;
}

CFRef<CFDictionaryRef> settingsIn(const OptionList& options) {
    const std::string* const value = findOption(options, kSettingsOption);
    std::string ignored;
    return value == nullptr ? CFRef<CFDictionaryRef>() : unpackSettings(*value, &ignored);
}

std::string nameIn(const CFRef<CFDictionaryRef>& settings) {
    const void* const name = settings ? CFDictionaryGetValue(settings.get(), kPMSavedSettingsNameKey) : nullptr;
    return CFGetTypeID(name) == CFStringGetTypeID() ? utf8Text(static_cast<CFStringRef>(name)) : std::string();
}

OSStatus checkLength(const std::string& destination, const OptionList& options) {
    const std::size_t length = lengthOfLine(destination, options);
    return length <= kMostOfOptionsLine
               ? noErr
               : failWith(paramErr, destination,
                          messageText("the settings take %1 characters, and other programs read no more than %2",
                                      {length, kMostOfOptionsLine}));
}

std::vector<SavedDestination> usersDestinations() {
    return destinationsInText(readOptionsFile(userOptionsPath()).value_or(""));
}

}  // namespace

CFStringRef PMCopyInstanceName(CFStringRef name) {
    std::string made;
    for (const char c : utf8Text(name)) {
        if (isNameCharacter(c)) {
            made += c;
        } else if (!made.empty() && made.back() != '-') {
            made += '-';
        }
    }
    made.erase(made.find_last_not_of('-') + 1);
    return makeString(made).leak();
}

Boolean PMPrinterTakesSavedSettings(PMPrinter printer) {
    return printer != nullptr && !printer->queue.empty() &&
           std::ranges::any_of(printer->ppd.filters,
                               [](const std::string& line) { return line.ends_with(kSettingsFilter); });
}

OSStatus PMPrinterSaveInstance(PMPrinter printer, CFStringRef instance, PMTicketRef printSettings,
                               PMTicketRef pageFormat, CFDictionaryRef settings) {
    clearLastError();
    if (printer == nullptr || printer->queue.empty()) {
        return failWith(kPMNoSuchPrinter, printer == nullptr ? "printer" : utf8Text(printer->name.get()),
                        messageText("only a queue can be saved for other programs"));
    }
    const std::string destination = printer->queue + "/" + utf8Text(instance);
    JobRequest request;
    if (const OSStatus status = readJobRequest(printSettings, printer->ppd, &request); status != noErr) {
        return status;
    }
    OptionList options = instanceOptions(*printer, request, printSettings, pageFormat);
    if (settings != nullptr) {
        std::string reason;
        const auto packed = packSettings(settings, &reason);
        if (!packed) {
            return failWith(paramErr, destination, messageText("the settings %1", {reason}));
        }
        const ServerAnswer<QueueState> state = examineQueue(printer->queue, printer->ppdCopy);
        if (state.status != noErr) {
            return failWith(state.status, printer->queue, state.reason);
        }
        if (!state.value.hasSettingsFilter) {
            return failWith(
                kPMCannotWriteOutput, printer->queue,
                messageText("its print server has no filter that other programs could print such settings with"));
        }
        setOption(&options, kSettingsOption, *packed);
    }
    if (const OSStatus status = checkLength(destination, options); status != noErr) {
        return status;
    }
    return changeUserOptions(destination,
                             [&](const std::string& text) { return textWithOptions(text, destination, options); });
}

CFArrayRef PMCopyInstancesOfSettings(CFStringRef name) {
    auto found = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
    for (const SavedDestination& each : usersDestinations()) {
        if (!instanceOf(each.name).empty() && nameIn(settingsIn(each.options)) == utf8Text(name)) {
            CFArrayAppendValue(found.get(), makeString(each.name).get());
        }
    }
    return found.leak();
}

Boolean PMHasInstance(CFStringRef instanceID) {
    return std::ranges::any_of(usersDestinations(), [name = utf8Text(instanceID)](const SavedDestination& each) {
        return isSameOption(each.name, name);
    });
}

OSStatus PMRemoveInstance(CFStringRef instanceID) {
    clearLastError();
    const std::string destination = utf8Text(instanceID);
    return changeUserOptions(destination, [&](const std::string& text) { return textWithout(text, destination); });
}

OSStatus PMRenameInstance(CFStringRef instanceID, CFStringRef newInstanceID, CFStringRef newName) {
    clearLastError();
    const std::string destination = utf8Text(instanceID);
    const std::vector<SavedDestination> saved = usersDestinations();
    const auto old =
        std::ranges::find_if(saved, [&](const SavedDestination& each) { return isSameOption(each.name, destination); });
    const auto settings = old == saved.end() ? CFRef<CFDictionaryRef>() : settingsIn(old->options);
    if (!settings) {
        return failWith(kPMNoSuchPrinter, destination, messageText("no settings are saved under this name"));
    }
    const auto renamed =
        CFRef<CFMutableDictionaryRef>::adopt(CFDictionaryCreateMutableCopy(nullptr, 0, settings.get()));
    CFDictionarySetValue(renamed.get(), kPMSavedSettingsNameKey, newName);
    std::string reason;
    const auto packed = packSettings(renamed.get(), &reason);
    if (!packed) {
        return failWith(paramErr, destination, messageText("the settings %1", {reason}));
    }
    OptionList options = old->options;
    setOption(&options, kSettingsOption, *packed);
    if (const OSStatus status = checkLength(utf8Text(newInstanceID), options); status != noErr) {
        return status;
    }
    return changeUserOptions(destination, [&](const std::string& text) {
        return textWithOptions(textWithout(text, destination), utf8Text(newInstanceID), options);
    });
}
