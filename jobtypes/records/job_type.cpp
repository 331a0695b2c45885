#include "jobtypes/records/job_type.h"

#include "model/settings/plugin_state.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFCharacterSet.h"
#include "platform/printing/PMTicket.h"

#include <string>

namespace {

#define kMediaTypeKey CFSTR("MediaType")
#define kUseJobNameKey CFSTR("UseJobName")

constexpr LongDateTime kSecondsPerDay = 86400;

void SetIfThere(CFMutableDictionaryRef dictionary, CFStringRef key, const CFRef<CFStringRef>& text) {
    if (text) {
        CFDictionarySetValue(dictionary, key, text.get());
    }
}

void TakeIfThere(CFDictionaryRef dictionary, CFStringRef key, CFRef<CFStringRef>* text) {
    if (const CFStringRef stored = GetRecordString(dictionary, key)) {
        *text = CFRef<CFStringRef>::adopt(CFStringCreateCopy(kCFAllocatorDefault, stored));
    }
}

CFRef<CFStringRef> CopyJobName(PMTicketRef ticket) {
    CFStringRef name = nullptr;
    if (PMTicketGetCFString(ticket, kPMTopLevel, kPMTopLevel, kJobNameTicketKey, &name) == noErr && name != nullptr) {
        return CFRef<CFStringRef>::retain(name);
    }
    return CFRef<CFStringRef>::adopt(
        CFBundleCopyLocalizedString(GetPDEBundle(), CFSTR("Unknown"), nullptr, CFSTR("Localizable")));
}

}  // namespace

bool JobTypeHasSetup(SInt32 jobType) {
    return jobType == kJobTypeFax || jobType == kJobTypeSecurePrint || jobType == kJobTypeDelayedPrint ||
           jobType == kJobTypeOfOtherEditions;
}

CFRef<CFMutableDictionaryRef> JobType::read(PMTicketRef ticket) {
    CFDictionaryRef stored = nullptr;
    PMTicketGetCFDictionary(ticket, kPMTopLevel, kPMTopLevel, kJobTypeTicketKey, &stored);
    auto dictionary =
        stored != nullptr
            ? CFRef<CFMutableDictionaryRef>::adopt(CFDictionaryCreateMutableCopy(kCFAllocatorDefault, 0, stored))
            : CreateRecordDictionary();
    jobType = kJobTypeNormal;
    mediaType = 1;
    ReadTicketValue(dictionary.get(), kJobTypeKey, &jobType);
    ReadTicketValue(dictionary.get(), kMediaTypeKey, &mediaType);
    useJobName = CFDictionaryGetValue(dictionary.get(), kUseJobNameKey) != kCFBooleanFalse;
    TakeIfThere(dictionary.get(), kSavedJobNameKey, &savedJobName);
    TakeIfThere(dictionary.get(), kSavedJobLocationKey, &savedJobLocation);
    TakeIfThere(dictionary.get(), kSecurePrintPasswordKey, &passcode);
    CFDictionaryGetNumber(dictionary.get(), kDelayedPrintTimeKey, &delayedPrintTime, kCFNumberSInt64Type);
    return dictionary;
}

void JobType::write(CFMutableDictionaryRef dictionary, PMTicketRef ticket) {
    if (useJobName) {
        savedJobName = CopyJobName(ticket);
    }
    CFDictionarySetNumber(dictionary, kMediaTypeKey, &mediaType, kCFNumberSInt32Type);
    CFDictionarySetValue(dictionary, kUseJobNameKey, useJobName ? kCFBooleanTrue : kCFBooleanFalse);
    CFDictionarySetNumber(dictionary, kJobTypeKey, &jobType, kCFNumberSInt32Type);
    SetIfThere(dictionary, kSavedJobNameKey, savedJobName);
    SetIfThere(dictionary, kSavedJobLocationKey, savedJobLocation);
    if (CFStringGetLength(passcode.get()) > 0) {
        CFDictionarySetValue(dictionary, kSecurePrintPasswordKey, passcode.get());
    } else {
        CFDictionaryRemoveValue(dictionary, kSecurePrintPasswordKey);
    }
    CFDictionarySetNumber(dictionary, kDelayedPrintTimeKey, &delayedPrintTime, kCFNumberSInt64Type);
}

LongDateTime NextTimeOfDay(const LongDateRec& clock, LongDateTime now) {
    LongDateRec moment{};
    LongSecondsToDate(&now, &moment);
    moment.ld.hour = clock.ld.hour;
    moment.ld.minute = clock.ld.minute;
    moment.ld.second = clock.ld.second;
    LongDateTime next = 0;
    LongDateToSeconds(&moment, &next);
    return next < now ? next + kSecondsPerDay : next;
}

CFRef<CFStringRef> CopyASCIIDigits(CFStringRef digits) {
    std::string ascii;
    const CFIndex length = CFStringGetLength(digits);
    for (CFIndex i = 0; i < length; ++i) {
        const UniChar unit = CFStringGetCharacterAtIndex(digits, i);
        UInt32 codePoint = unit;
        if (unit >= 0xD800 && unit < 0xDC00 && i + 1 < length) {
            codePoint = 0x10000 + ((unit - 0xD800U) << 10) + (CFStringGetCharacterAtIndex(digits, ++i) - 0xDC00U);
        }
        if (const SInt32 value = CFCharacterGetDigitValue(codePoint); value >= 0) {
            ascii += static_cast<char>('0' + value);
        }
    }
    return CFRef<CFStringRef>::adopt(
        CFStringCreateWithCString(kCFAllocatorDefault, ascii.c_str(), kCFStringEncodingASCII));
}
