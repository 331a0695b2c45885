#include "jobtypes/dialogs/fax_ab_import.h"

#include "jobtypes/dialogs/fax_file_name.h"
#include "jobtypes/dialogs/fax_texts.h"
#include "model/settings/ticket_access.h"
#include "platform/contacts/AddressBookImport.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumber.h"
#include "platform/toolbox/Navigation.h"
#include "platform/toolbox/Notices.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace {

constexpr CFIndex kProblemsShown = 5;

struct ErrorText {
    ABImportError error;
    const char* key;
};
constexpr ErrorText kErrorTexts[] = {
    // error, key
    {kABImportCannotRead, "Import Cannot Read"},
    {kABImportTooLarge, "Import Too Large"},
    {kABImportNoVCard, "Import No Cards"},
    {kABImportNotSaved, "Import Not Saved"},
};

struct ReasonText {
    CFIndex reason;
    const char* key;
};
constexpr ReasonText kReasonTexts[] = {
    // reason, key
    {kABImportTextOutside, "Import Text Outside"},
    {kABImportNoEnd, "Import No End"},
    {kABImportZeroByte, "Import Zero Byte"},
    {kABImportNothingInside, "Import Nothing Inside"},
};

CFRef<CFStringRef> StringOf(const std::u16string& units) {
    return CFRef<CFStringRef>::adopt(
        CFStringCreateWithCharacters(kCFAllocatorDefault, units.data(), static_cast<CFIndex>(units.size())));
}

void Append(std::u16string& text, CFStringRef part) {
    const std::size_t length = text.size();
    text.resize(length + static_cast<std::size_t>(CFStringGetLength(part)));
    CFStringGetCharacters(part, CFRangeMake(0, CFStringGetLength(part)), text.data() + length);
}

void AppendLine(std::u16string& text, CFStringRef line) {
    text += u'\n';
    Append(text, line);
}

CFIndex NumberOf(CFDictionaryRef problem, CFStringRef key) {
    CFIndex number = 0;
    CFDictionaryGetNumber(problem, key, &number, kCFNumberCFIndexType);
    return number;
}

CFRef<CFStringRef> CopyProblemText(CFBundleRef bundle, CFDictionaryRef problem) {
    const auto* row = std::ranges::find(kReasonTexts, NumberOf(problem, kABImportProblemReason), &ReasonText::reason);
    return row == std::end(kReasonTexts)
               ? CFRef<CFStringRef>::retain(CFSTR(""))
               : CopyFaxMessage(bundle, CFStringMakeConstant(row->key),
                                {CopyNumberText(NumberOf(problem, kABImportProblemLine)).get()});
}

void TellSuccess(CFBundleRef bundle, CFStringRef fileName, CFIndex count, CFArrayRef problems) {
    std::u16string text;
    Append(text, CopyFaxMessage(bundle, CFSTR("Import Message"), {CopyNumberText(count).get(), fileName}).get());
    const CFIndex problemCount = CFArrayGetCount(problems);
    if (problemCount > 0) {
        text += u'\n';
        AppendLine(text, CopyFaxText(bundle, CFSTR("Import Problems")).get());
    }
    for (CFIndex i = 0; i < std::min(problemCount, kProblemsShown); ++i) {
        AppendLine(text,
                   CopyProblemText(bundle, static_cast<CFDictionaryRef>(CFArrayGetValueAtIndex(problems, i))).get());
    }
    if (problemCount > kProblemsShown) {
        AppendLine(text, CopyFaxMessage(bundle, CFSTR("Import More Problems"),
                                        {CopyNumberText(problemCount - kProblemsShown).get()})
                             .get());
    }
    CFUserNotificationDisplayAlert(
        0, problemCount > 0 ? kCFUserNotificationCautionAlertLevel : kCFUserNotificationNoteAlertLevel, nullptr,
        nullptr, nullptr, CopyFaxText(bundle, count > 0 ? CFSTR("Import Header") : CFSTR("Import Error Header")).get(),
        StringOf(text).get(), nullptr, nullptr, nullptr, nullptr);
}

void TellFailure(CFBundleRef bundle, CFStringRef fileName, ABImportError error) {
    const auto* row = std::ranges::find(kErrorTexts, error, &ErrorText::error);
    if (row != std::end(kErrorTexts)) {
        ShowFaxNotice(bundle, CFSTR("Import Error Header"),
                      CopyFaxMessage(bundle, CFStringMakeConstant(row->key),
                                     {fileName, CopyNumberText(kABMaximumImportBytes / (1024 * 1024)).get()})
                          .get());
    }
}

}  // namespace

bool RunModalFaxABImport(CFBundleRef bundle) {
    const CFRef<CFStringRef> cards = CopyFaxText(bundle, CFSTR("vCard Files"));
    const CFRef<CFStringRef> all = CopyFaxText(bundle, CFSTR("All Files"));
    const NavFileKind kinds[] = {{cards.get(), CFSTR("*.vcf *.vcard *.VCF")}, {all.get(), CFSTR("*")}};
    CFURLRef chosen = nullptr;
    if (NavChooseFile(CopyFaxText(bundle, CFSTR("Import Title")).get(), std::size(kinds), kinds, &chosen) != noErr) {
        return false;
    }
    const auto file = CFRef<CFURLRef>::adopt(chosen);
    CFArrayRef told = nullptr;
    ABImportError error = kABImportNoError;
    const CFIndex count = ABImportVCardFile(ABGetSharedAddressBook(), file.get(), &told, &error);
    const auto problems = CFRef<CFArrayRef>::adopt(told);
    const CFRef<CFStringRef> fileName = CopyFileName(file.get());
    if (count < 0) {
        TellFailure(bundle, fileName.get(), error);
        return false;
    }
    TellSuccess(bundle, fileName.get(), count, problems.get());
    return true;
}
