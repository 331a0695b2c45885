#include "platform/printing/CompiledPPD.h"

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"
#include "platform/foundation/text.h"
#include "platform/printing/mac_roman.h"
#include "platform/printing/ppd_cache.h"
#include "platform/printing/printer_info.h"

#include <cstring>
#include <map>

namespace {

struct Choice {
    PPDByteString keyword;
    PPDByteString alias;  // without bytes until somebody asks for it
    bool chosen;
};

struct MainKeyword {
    PPDByteString keyword;
    std::vector<Choice> choices;
};

std::string_view bytesOf(ConstPPDString text) {
    return {reinterpret_cast<const char*>(text) + 1, text[0]};
}

}  // namespace

/// Main and option indexes are positions in the PPD's options and their choices.
struct OpaquePPDContext {
    std::shared_ptr<const PPDFile> file;
    const PPDFile& ppd;                         // the same
    std::vector<MainKeyword> keywords;          // one for each option of the PPD, at the same position
    std::map<std::string_view, UInt32> places;  // of each keyword the first, lent by `keywords`

    explicit OpaquePPDContext(std::shared_ptr<const PPDFile> opened) : file(std::move(opened)), ppd(*file) {
        keywords.reserve(ppd.options.size());
        for (const PPDOption& option : ppd.options) {
            MainKeyword& made = keywords.emplace_back(MainKeyword{ppdByteString(option.keyword), {}});
            places.try_emplace(bytesOf(made.keyword.data()), static_cast<UInt32>(keywords.size() - 1));
            made.choices.reserve(option.choices.size());
            for (const PPDChoice& choice : option.choices) {
                made.choices.push_back({ppdByteString(choice.keyword), {}, choice.marked});
            }
        }
    }
};

namespace {

Choice* findChoice(PPDContext context, UInt32 mainIndex, UInt32 optionIndex) {
    return optionIndex < ppdCountUIOptions(context, mainIndex) ? &context->keywords[mainIndex].choices[optionIndex]
                                                               : nullptr;
}

void choose(OpaquePPDContext& context, const PPDOption& option, std::string_view keyword) {
    const auto chosen = option.findChoice(keyword);
    if (!option.installable || !chosen) {
        return;
    }
    auto& choices = context.keywords[static_cast<std::size_t>(&option - context.ppd.options.data())].choices;
    for (std::size_t i = 0; i < choices.size(); ++i) {
        choices[i].chosen = i == *chosen;
    }
}

/// The path of the file that a printer info ticket names.
std::string describedFile(CFStringRef text) {
    const auto url = CFRef<CFURLRef>::adopt(CFURLCreateWithString(nullptr, text, nullptr));
    return url ? filePath(url.get()) : utf8Text(text);
}

}  // namespace

OSStatus ppdOpenCompiledPPDFromTicket(PMTicketRef printerInfo, PPDContext* context) {
    if (context == nullptr) {
        return paramErr;
    }
    CFStringRef path = nullptr;
    std::string reason;
    if (PMTicketGetCFString(printerInfo, kPMTopLevel, kPMTopLevel, kPMPrinterDescriptionPathKey, &path) != noErr) {
        return fnfErr;
    }
    auto ppd = openPPDFile(describedFile(path), &reason);
    if (!ppd) {
        return fnfErr;
    }
    *context = new OpaquePPDContext(std::move(ppd));
    return noErr;
}

void ppdCloseCompiledPPDFromTicket(PPDContext context) {
    delete context;
}

OSStatus setInstallableOptions(PPDContext context, PMTicketRef printerInfo) {
    if (context == nullptr) {
        return paramErr;
    }
    CFDictionaryRef installed = nullptr;
    const OSStatus status =
        PMTicketGetCFDictionary(printerInfo, kPMTopLevel, kPMTopLevel, kPMInstalledOptionsKey, &installed);
    if (status != noErr) {
        return status == kPMKeyNotFound ? noErr : status;
    }
    for (const PPDOption& option : context->ppd.options) {
        const CFTypeRef keyword = CFDictionaryGetValue(installed, makeString(option.keyword).get());
        if (CFGetTypeID(keyword) == CFStringGetTypeID()) {
            choose(*context, option, utf8Text(static_cast<CFStringRef>(keyword)));
        }
    }
    return noErr;
}

UInt32 ppdCountUIHeaders(PPDContext context) {
    return context == nullptr ? 0 : static_cast<UInt32>(context->keywords.size());
}

OSStatus ppdGetIndUIHeader(PPDContext context, UInt32 headerIndex, PPDUIHeader* header) {
    return ppdGetUIHeader(context, headerIndex, header);
}

OSStatus ppdGetUIHeader(PPDContext context, UInt32 mainIndex, PPDUIHeader* header) {
    if (header == nullptr) {
        return paramErr;
    }
    if (mainIndex >= ppdCountUIHeaders(context)) {
        return kPPDNotFound;
    }
    const auto defaultChoice = context->ppd.options[mainIndex].defaultChoice;
    *header = {mainIndex, defaultChoice ? static_cast<SInt32>(*defaultChoice) : -1};
    return noErr;
}

OSStatus ppdGetMainIndex(PPDContext context, ConstPPDString mainKeyword, UInt32* mainIndex) {
    if (context == nullptr || mainKeyword == nullptr || mainIndex == nullptr) {
        return paramErr;
    }
    const auto found = context->places.find(bytesOf(mainKeyword));
    if (found == context->places.end()) {
        return kPPDNotFound;
    }
    *mainIndex = found->second;
    return noErr;
}

OSStatus ppdGetMainString(PPDContext context, UInt32 mainIndex, ConstPPDString* mainKeyword) {
    if (mainKeyword == nullptr) {
        return paramErr;
    }
    if (mainIndex >= ppdCountUIHeaders(context)) {
        return kPPDNotFound;
    }
    *mainKeyword = context->keywords[mainIndex].keyword.data();
    return noErr;
}

OSStatus ppdGetUIKeyType(PPDContext context, UInt32 mainIndex, UInt32* type) {
    if (type == nullptr) {
        return paramErr;
    }
    if (mainIndex >= ppdCountUIHeaders(context)) {
        return kPPDNotFound;
    }
    *type = context->ppd.options[mainIndex].type;
    return noErr;
}

UInt32 ppdCountUIOptions(PPDContext context, UInt32 mainIndex) {
    return mainIndex < ppdCountUIHeaders(context) ? static_cast<UInt32>(context->keywords[mainIndex].choices.size())
                                                  : 0;
}

OSStatus ppdGetIndUIOption(PPDContext context, UInt32 mainIndex, UInt32 index, PPDUIOption* option) {
    if (option == nullptr) {
        return paramErr;
    }
    const Choice* const choice = findChoice(context, mainIndex, index);
    if (choice == nullptr) {
        return kPPDNotFound;
    }
    *option = {index, UInt8{context->ppd.options[mainIndex].installable}, UInt8{choice->chosen}};
    return noErr;
}

OSStatus ppdGetOptionString(PPDContext context, UInt32 mainIndex, UInt32 optionIndex, ConstPPDString* optionKeyword) {
    if (optionKeyword == nullptr) {
        return paramErr;
    }
    const Choice* const choice = findChoice(context, mainIndex, optionIndex);
    if (choice == nullptr) {
        return kPPDNotFound;
    }
    *optionKeyword = choice->keyword.data();
    return noErr;
}

OSStatus ppdGetOptionAlias(PPDContext context, UInt32 mainIndex, UInt32 optionIndex, ConstPPDString* alias) {
    if (alias == nullptr) {
        return paramErr;
    }
    Choice* const choice = findChoice(context, mainIndex, optionIndex);
    if (choice == nullptr) {
        return kPPDNotFound;
    }
    if (choice->alias.empty()) {
        choice->alias = ppdByteString(context->ppd.options[mainIndex].choices[optionIndex].title);
    }
    *alias = choice->alias.data();
    return noErr;
}

OSStatus ppdGetInvocationString(PPDContext context, ConstPPDString mainKeyword, char* buffer, UInt32 bufferSize) {
    if (context == nullptr || mainKeyword == nullptr || buffer == nullptr || bufferSize == 0) {
        return paramErr;
    }
    const std::string_view keyword(reinterpret_cast<const char*>(mainKeyword + 1), mainKeyword[0]);
    const auto found = context->ppd.attributes.find(keyword);
    if (found == context->ppd.attributes.end()) {
        return kPPDNotFound;
    }
    const std::size_t length = found->second.copy(buffer, bufferSize - 1);
    buffer[length] = '\0';
    return noErr;
}
