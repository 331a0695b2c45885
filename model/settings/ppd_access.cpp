#include "model/settings/ppd_access.h"

#include "model/settings/ppd_ui_dictionary.h"
#include "platform/foundation/CFString.h"

namespace {

/// The string that a PPD dictionary holds for a main keyword; null when there is none.
CFStringRef GetOptionKeyword(CFDictionaryRef ppdDictionary, CFStringRef mainKeyword) {
    const void* value = CFDictionaryGetValue(ppdDictionary, mainKeyword);
    return CFGetTypeID(value) == CFStringGetTypeID() ? static_cast<CFStringRef>(value) : nullptr;
}

}  // namespace

OSStatus PPDSetMainKeyword(PMTicketRef ticket, CFStringRef mainKeyword, CFStringRef optionKeyword) {
    if (ticket == 0 || mainKeyword == nullptr || optionKeyword == nullptr) {
        return paramErr;
    }
    CFMutableDictionaryRef dictionary = nullptr;
    const OSStatus status = PMTicketGetPPDDict(ticket, kPMTopLevel, &dictionary);
    if (status == noErr) {
        CFDictionarySetValue(dictionary, mainKeyword, optionKeyword);
    }
    return status;
}

OSStatus PPDSetMainKeywordIndex(PMTicketRef ticket, CFArrayRef options, CFIndex index) {
    return PPDSetMainKeyword(ticket, GetKeywordInfo(options, index, KeywordInfo::mainKeyword),
                             GetKeywordInfo(options, index, KeywordInfo::optionKeyword));
}

OSStatus PPDGetMainKeywordValue(PMTicketRef ticket, CFStringRef mainKeyword, CFStringRef* optionKeyword) {
    if (optionKeyword == nullptr) {
        return paramErr;
    }
    *optionKeyword = nullptr;
    CFMutableDictionaryRef dictionary = nullptr;
    if (ticket == 0 || mainKeyword == nullptr || PMTicketGetPPDDict(ticket, kPMTopLevel, &dictionary) != noErr) {
        return paramErr;
    }
    *optionKeyword = GetOptionKeyword(dictionary, mainKeyword);
    return *optionKeyword == nullptr ? paramErr : noErr;
}

OSStatus PPDGetMainKeywordValueIndex(PMTicketRef ticket, CFStringRef mainKeyword, CFArrayRef options, CFIndex* index) {
    *index = -1;
    CFMutableDictionaryRef dictionary = nullptr;
    const OSStatus status = PMTicketGetPPDDict(ticket, kPMTopLevel, &dictionary);
    if (status == noErr && mainKeyword != nullptr) {
        *index = FindPPDKeyPairsMatch(options, mainKeyword, GetOptionKeyword(dictionary, mainKeyword));
    }
    return status;
}

CFIndex FindPPDKeyPairsMatch(CFArrayRef options, CFStringRef mainKeyword, CFStringRef optionKeyword) {
    if (mainKeyword == nullptr || optionKeyword == nullptr) {
        return -1;
    }
    const CFIndex count = CFArrayGetCount(options);
    for (CFIndex row = 0; row < count; ++row) {
        if (CFEqual(GetKeywordInfo(options, row, KeywordInfo::mainKeyword), mainKeyword) &&
            CFEqual(GetKeywordInfo(options, row, KeywordInfo::optionKeyword), optionKeyword)) {
            return row;
        }
    }
    return -1;
}
