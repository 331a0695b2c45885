// Settings that become the user's own defaults of a queue.
#include "platform/foundation/message.h"
#include "platform/foundation/text.h"
#include "platform/printing/PMPrinter.h"
#include "platform/printing/job_options.h"
#include "platform/printing/last_error.h"
#include "platform/printing/printer_record.h"
#include "platform/printing/saved_options.h"
#include "platform/printing/secret_options.h"

#include <algorithm>
#include <array>
#include <set>

namespace {

/// What a landscape job is made of (job_options.cpp). A portrait one has none of them.
constexpr std::array kOrientationOptions{kOrientationOption, kAutorotateOption, kScalingOption};

/// What the destination's jobs have as long as the user's own line says nothing else.
OptionList defaultsBelow(const OpaquePMPrinter& printer, const std::string& destination, const std::string& userText) {
    OptionList marks;
    for (const PPDOption& option : printer.ppd.options) {
        if (const auto marked = std::ranges::find(option.choices, true, &PPDChoice::marked);
            marked != option.choices.end()) {
            marks.emplace_back(option.keyword, marked->keyword);
        }
    }
    OptionList options{{"copies", "1"}};
    setOptions(&options, marks);
    const std::string systemText = readOptionsFile(systemOptionsPath()).value_or(std::string());
    OptionList saved = optionsInText(systemText, printer.queue);
    if (destination != printer.queue) {
        setOptions(&saved, optionsInText(systemText, destination));
        setOptions(&saved, optionsInText(userText, printer.queue));
    }
    setOptions(&options, saved);
    setOptions(&options, sortOptions(printer.ppd, printer.ppdPath, saved).choices);
    return options;
}

/// Whether it may be kept for other jobs, and every program could ask for it.
bool isKept(const OpaquePMPrinter& printer, const std::string& name) {
    if (std::ranges::find(kOrientationOptions, name) != kOrientationOptions.end() || name == "copies") {
        return true;
    }
    const PPDOption* const option = printer.ppd.findOption(name);
    return option != nullptr && !option->installable && !isSecretOption(printer.ppd, name);
}

/// The options of the destination's line once the job's are its defaults. Those that are not kept stay as they are, but
/// for those that say the same in other words ("sides"), which would say it against the new ones.
OptionList mergedOptions(const OptionList& old, const OptionList& wanted, const OptionList& below,
                         const OpaquePMPrinter& printer) {
    OptionList kept;
    std::set<std::string, OptionOrder> needless;  // as the job has it without them
    const auto valuesBelow = optionsByName(below);
    for (const auto& [name, value] : wanted) {
        if (!isKept(printer, name)) {
            continue;
        }
        const auto already = valuesBelow.find(name);
        if (already != valuesBelow.end() && already->second == value) {
            needless.insert(name);
        } else {
            kept.emplace_back(name, value);
        }
    }
    OptionList options = old;
    std::erase_if(
        options, [&](const auto& option) { return isStandardOption(option.first) || needless.contains(option.first); });
    setOptions(&options, kept);
    if (findOption(wanted, kOrientationOption) != nullptr) {
        return options;
    }
    if (findOption(old, kOrientationOption) != nullptr) {
        std::erase_if(options, [](const auto& option) {
            return std::ranges::find(kOrientationOptions, option.first) != kOrientationOptions.end();
        });
    }
    if (findOption(below, kOrientationOption) != nullptr) {
        setOption(&options, kOrientationOption, kPortraitRequested);
    }
    return options;
}

}  // namespace

OSStatus PMPrinterSaveDefaultSettings(PMPrinter printer, PMTicketRef printSettings, PMTicketRef pageFormat) {
    clearLastError();
    if (printer == nullptr || printer->queue.empty()) {
        return failWith(kPMNoSuchPrinter, printer == nullptr ? "printer" : utf8Text(printer->name.get()),
                        messageText("only a queue has defaults of its own"));
    }
    JobRequest request;
    if (const OSStatus status = readJobRequest(printSettings, printer->ppd, &request); status != noErr) {
        return status;
    }
    const std::string destination = utf8Text(printer->id.get());
    OptionList wanted = request.choices;
    setOptions(&wanted, orientationOptions(pageFormat));
    setOption(&wanted, "copies", std::to_string(request.copies));
    return changeUserOptions(destination, [&](const std::string& text) {
        const OptionList options = mergedOptions(optionsInText(text, destination), wanted,
                                                 defaultsBelow(*printer, destination, text), *printer);
        return textWithOptions(text, destination, options);
    });
}
