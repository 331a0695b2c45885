#include "platform/printing/job_options.h"

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/message.h"
#include "platform/foundation/text.h"
#include "platform/printing/PMPrinter.h"
#include "platform/printing/last_error.h"
#include "platform/printing/secret_options.h"

#include <algorithm>
#include <optional>
#include <regex>

namespace {

constexpr SInt32 kMostCopies = 9999;

bool isControl(unsigned char c) {
    return c < ' ' || c == 0x7F;
}

// The ASCII tests by hand: those of the C library follow the user's locale.
bool isKeywordCharacter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '_' ||
           c == '.';
}

std::optional<SInt32> number(PMTicketRef ticket, CFStringRef key) {
    CFNumberRef item = nullptr;
    SInt32 value = 0;
    if (PMTicketGetCFNumber(ticket, kPMTopLevel, kPMTopLevel, key, &item) != noErr ||
        !CFNumberGetValue(item, kCFNumberSInt32Type, &value)) {
        return std::nullopt;
    }
    return value;
}

std::string string(PMTicketRef ticket, CFStringRef key) {
    CFStringRef item = nullptr;
    return PMTicketGetCFString(ticket, kPMTopLevel, kPMTopLevel, key, &item) == noErr ? utf8Text(item) : std::string();
}

OSStatus addPPDPairs(CFDictionaryRef pairs, OptionList* options) {
    const auto count = static_cast<std::size_t>(CFDictionaryGetCount(pairs));
    std::vector<const void*> keys(count);
    std::vector<const void*> values(count);
    CFDictionaryGetKeysAndValues(pairs, keys.data(), values.data());
    for (std::size_t i = 0; i < count; ++i) {
        if (CFGetTypeID(keys[i]) != CFStringGetTypeID() || CFGetTypeID(values[i]) != CFStringGetTypeID()) {
            continue;
        }
        std::string name = utf8Text(static_cast<CFStringRef>(keys[i]));
        std::string value = utf8Text(static_cast<CFStringRef>(values[i]));
        if (name.empty() || !std::ranges::all_of(name, isKeywordCharacter)) {
            return failWith(paramErr, name, messageText("is not the name of a printer option"));
        }
        if (std::ranges::any_of(value, isControl)) {
            return failWith(paramErr, name, messageText("the option's value has control characters"));
        }
        options->emplace_back(std::move(name), std::move(value));
    }
    return noErr;
}

bool isPasscode(const std::string& text) {
    return text.size() >= 4 && text.size() <= 10 &&
           std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

/// Whether a text can stand in a PPD as a choice by default.
bool isPlain(const std::string& text) {
    return !text.empty() && std::ranges::all_of(text, [](unsigned char c) {
        return c > ' ' && c < 0x7F &&
               std::string_view("\"\\/:()<>").find(static_cast<char>(c)) == std::string_view::npos;
    });
}

/// Secrets become items of their own of the request, checked: they reach the printer's commands as they are. What asks
/// for one that the printer does not take must not be printed openly.
OSStatus takeSecrets(PMTicketRef printSettings, const PPDFile& ppd, JobRequest* request) {
    CFStringRef item = nullptr;
    if (PMTicketGetCFString(printSettings, kPMTopLevel, kPMTopLevel, kPMJobPasscodeKey, &item) == noErr) {
        request->passcode = utf8Text(item);
    }
    OptionList others;
    for (const auto& [name, value] : request->choices) {
        const PPDOption* const option = ppd.findOption(name);
        const bool isNothing = value == "None" || value.empty() || (option != nullptr && option->findChoice(value));
        const bool isPasscode = isSameOption(name, ppd.passcodeKeyword);
        if (isNothing ? !(isPasscode && request->passcode) : !isSecretOption(ppd, name)) {
            others.emplace_back(name, value);
            continue;
        }
        if (isNothing) {
            continue;  // the passcode of the job stands in its place
        }
        const auto secret = typedValue(value);
        if (!secret || option == nullptr || !option->findChoice("Custom") || !(isPasscode || isPlain(*secret))) {
            return failWith(paramErr, name,
                            messageText("the printer does not take what stands there, and would print the job openly"));
        }
        if (!isPasscode) {
            request->secrets.emplace_back(name, *secret);
        } else if (!request->passcode) {
            request->passcode = secret;
        }
    }
    request->choices = std::move(others);
    if (!request->passcode) {
        return noErr;
    }
    if (!isPasscode(*request->passcode)) {
        return failWith(paramErr, messageText("secure print"), messageText("a passcode has 4 to 10 digits"));
    }
    if (ppd.passcodeKeyword.empty()) {
        return failWith(paramErr, messageText("secure print"),
                        messageText("the printer cannot hold a job for a passcode"));
    }
    request->secrets.emplace_back(ppd.passcodeKeyword, *request->passcode);
    return noErr;
}

/// What is typed into an option of the printer's commands stands there in quotation marks, and nothing can hold one.
OSStatus checkCommands(const OptionList& choices, const PPDFile& ppd) {
    for (const auto& [name, value] : choices) {
        const PPDOption* const option = ppd.findOption(name);
        if (option != nullptr && option->isCommand && option->hasTextCustom && value.find('"') != std::string::npos) {
            return failWith(paramErr, name, messageText("a printer command cannot hold quotation marks"));
        }
    }
    return noErr;
}

}  // namespace

bool isNumberOfCopies(SInt32 copies) {
    return copies >= 1 && copies <= kMostCopies;
}

bool isPageRange(const std::string& text) {
    static const std::regex pattern("[0-9]{1,9}(-[0-9]{0,9})?(,[0-9]{1,9}(-[0-9]{0,9})?)*");
    return text.size() <= 1000 && std::regex_match(text, pattern);
}

OSStatus readJobRequest(PMTicketRef printSettings, const PPDFile& ppd, JobRequest* request) {
    CFMutableDictionaryRef pairs = nullptr;
    if (PMTicketGetPPDDict(printSettings, kPMTopLevel, &pairs) != noErr) {
        return failWith(kPMInvalidTicket, messageText("print job"), messageText("its settings are missing"));
    }

    request->title = string(printSettings, kPMJobNameKey);
    std::ranges::replace_if(request->title, isControl, ' ');
    request->owner = string(printSettings, kPMJobOwnerKey);

    request->copies = number(printSettings, kPMCopiesKey).value_or(1);
    if (!isNumberOfCopies(request->copies)) {
        return failWith(paramErr, std::to_string(request->copies),
                        messageText("the number of copies must be %1 to %2", {1, kMostCopies}));
    }

    if (const OSStatus status = addPPDPairs(pairs, &request->choices); status != noErr) {
        return status;
    }

    if (const OSStatus status = takeSecrets(printSettings, ppd, request); status != noErr) {
        return status;
    }
    if (const OSStatus status = checkCommands(request->choices, ppd); status != noErr) {
        return status;
    }
    request->holdUntil = string(printSettings, kPMJobHoldUntilTimeKey);

    const std::string range = string(printSettings, kPMPageRangeKey);
    return range.empty() || isPageRange(range) ? noErr
                                               : failWith(paramErr, range, messageText("is not a range of pages"));
}

OptionList orientationOptions(PMTicketRef pageFormat) {
    // The numbers of IPP's orientation-requested.
    constexpr const char* kLandscape = "4";
    constexpr const char* kReverseLandscape = "5";
    const SInt32 orientation = number(pageFormat, kPMOrientationKey).value_or(1);
    if (orientation != 2 && orientation != 3) {
        return {};
    }
    // Left alone, the filter turns a tall page back, or cuts what the turned sheet has no room for.
    return {{kOrientationOption, orientation == 2 ? kLandscape : kReverseLandscape},
            {kAutorotateOption, "false"},
            {kScalingOption, "fit"}};
}
