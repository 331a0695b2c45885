#include "model/settings/ppd_ui_dictionary.h"

#include "model/settings/ppd_decode.h"
#include "model/settings/ppd_option_maps.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"

#include <algorithm>
#include <string_view>

namespace {

CFRef<CFMutableDictionaryRef> ppdUIOptions;

/// A new string of a PPD text, its hexadecimal substrings decoded.
CFRef<CFStringRef> CopyDecoded(ConstPPDString text) {
    char buffer[512];
    std::copy_n(text + 1, text[0], buffer);
    buffer[text[0]] = '\0';
    std::string_view decoded(buffer, ppd_decode(buffer));
    const bool isUTF8 = decoded.starts_with(kPPDTextIsUTF8);
    decoded.remove_prefix(isUTF8 ? kPPDTextIsUTF8.size() : 0);
    return CFRef<CFStringRef>::adopt(CFStringCreateWithBytes(
        kCFAllocatorDefault, reinterpret_cast<const UInt8*>(decoded.data()), static_cast<CFIndex>(decoded.size()),
        isUTF8 ? kCFStringEncodingUTF8 : kCFStringEncodingMacRoman, false));
}

CFStringRef BooleanText(bool value) {
    return value ? CFSTR("true") : CFSTR("false");
}

}  // namespace

CFStringRef GetKeywordInfo(CFArrayRef options, CFIndex row, KeywordInfo info) {
    const auto* strings = static_cast<CFArrayRef>(CFArrayGetValueAtIndex(options, row));
    return static_cast<CFStringRef>(CFArrayGetValueAtIndex(strings, static_cast<CFIndex>(info)));
}

OSStatus PPDCreateGlobalUIDictionary(PPDContext context) {
    if (ppdUIOptions) {
        return -1;
    }
    ppdUIOptions = CFRef<CFMutableDictionaryRef>::adopt(CFDictionaryCreateMutable(
        kCFAllocatorDefault, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    const UInt32 count = ppdCountUIHeaders(context);
    for (UInt32 index = 0; index < count; ++index) {
        PPDUIHeader header{};
        ConstPPDString mainKeyword = nullptr;
        if (ppdGetIndUIHeader(context, index, &header) != noErr ||
            ppdGetMainString(context, header.mainIndex, &mainKeyword) != noErr) {
            continue;
        }
        CFMutableArrayRef options = nullptr;
        const OSStatus status = PPDCopyOptionsForMainKeyword(context, mainKeyword, &options);
        const auto list = CFRef<CFMutableArrayRef>::adopt(options);
        if (status != noErr) {
            continue;
        }
        const auto key = CFRef<CFStringRef>::adopt(CFStringCreateWithBytes(
            kCFAllocatorDefault, mainKeyword + 1, mainKeyword[0], kCFStringEncodingISOLatin1, false));
        CFDictionarySetValue(ppdUIOptions.get(), key.get(), list.get());
    }
    return CFDictionaryGetCount(ppdUIOptions.get()) > 0 ? noErr : -1;
}

CFDictionaryRef PPDGetGlobalUIDictionary() {
    return ppdUIOptions.get();
}

void PPDReleaseGlobalUIDictionary() {
    ppdUIOptions = nullptr;
}

CFArrayRef PPDGetGlobalOptions(CFStringRef mainKeyword) {
    return mainKeyword == nullptr ? nullptr
                                  : static_cast<CFArrayRef>(CFDictionaryGetValue(ppdUIOptions.get(), mainKeyword));
}

CFStringRef GetPPDOptionAliasForTicketValue(CFStringRef mainKeyword, SInt32 value) {
    const CFStringRef keyword = GetPPDOptionKeywordForTicketValue(GetPPDOptionMapForMainKeyword(mainKeyword), value);
    if (keyword != nullptr) {
        const CFArrayRef options = PPDGetGlobalOptions(mainKeyword);
        const CFIndex count = CFArrayGetCount(options);
        for (CFIndex row = 0; row < count; ++row) {
            if (CFEqual(GetKeywordInfo(options, row, KeywordInfo::optionKeyword), keyword)) {
                return GetKeywordInfo(options, row, KeywordInfo::alias);
            }
        }
    }
    return CFSTR("");
}

OSStatus PPDCopyOptionsForMainKeyword(PPDContext context, ConstPPDString mainKeyword, CFMutableArrayRef* options) {
    UInt32 mainIndex = 0;
    UInt32 type = 0;
    if (ppdGetMainIndex(context, mainKeyword, &mainIndex) != noErr ||
        ppdGetUIKeyType(context, mainIndex, &type) != noErr || type != kPPDUIPickOne ||
        ppdCountUIOptions(context, mainIndex) == 0) {
        return -1;
    }
    *options = CFArrayCreateMutable(kCFAllocatorDefault, 0, &kCFTypeArrayCallBacks);
    CFIndex count = 0;
    return GetUIListFromPPD(context, mainKeyword, *options, &count);
}

OSStatus GetUIListFromPPD(PPDContext context, ConstPPDString mainKeyword, CFMutableArrayRef options, CFIndex* count) {
    *count = 0;
    UInt32 mainIndex = 0;
    PPDUIHeader header{};
    OSStatus status = ppdGetMainIndex(context, mainKeyword, &mainIndex);
    if (status == noErr) {
        status = ppdGetUIHeader(context, mainIndex, &header);
    }
    const UInt32 optionCount = ppdCountUIOptions(context, mainIndex);
    for (UInt32 index = 0; status == noErr && index < optionCount; ++index) {
        PPDUIOption option{};
        ConstPPDString alias = nullptr;
        if (ppdGetIndUIOption(context, mainIndex, index, &option) != noErr ||
            ppdGetOptionAlias(context, mainIndex, option.optionIndex, &alias) != noErr) {
            continue;
        }
        CFArrayRef info = nullptr;
        status = PPDIndexToKeywordInfoArray(context, mainIndex, option.optionIndex, alias, option.isInstallable != 0,
                                            option.isChosen != 0,
                                            static_cast<SInt32>(index) == header.defaultOptionIndex, &info);
        if (status == noErr) {
            CFArrayAppendValue(options, CFRef<CFArrayRef>::adopt(info).get());
            ++*count;
        }
    }
    return status;
}

OSStatus PPDIndexToKeywordInfoArray(PPDContext context, UInt32 mainIndex, UInt32 optionIndex, ConstPPDString alias,
                                    Boolean installable, Boolean chosen, Boolean isDefault, CFArrayRef* info) {
    ConstPPDString mainKeyword = nullptr;
    ConstPPDString optionKeyword = nullptr;
    OSStatus status = ppdGetMainString(context, mainIndex, &mainKeyword);
    if (status == noErr) {
        status = ppdGetOptionString(context, mainIndex, optionIndex, &optionKeyword);
    }
    if (status != noErr) {
        return status;
    }
    const CFRef<CFStringRef> mainText = CopyDecoded(mainKeyword);
    const CFRef<CFStringRef> optionText = CopyDecoded(optionKeyword);
    const CFRef<CFStringRef> aliasText = CopyDecoded(alias);
    const void* strings[kKeywordInfoCount] = {mainText.get(),           optionText.get(),       aliasText.get(),
                                              BooleanText(installable), BooleanText(isDefault), BooleanText(chosen)};
    *info = CFArrayCreate(kCFAllocatorDefault, strings, kKeywordInfoCount, &kCFTypeArrayCallBacks);
    return noErr;
}
