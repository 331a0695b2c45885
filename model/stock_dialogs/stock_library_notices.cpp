#include "model/stock_dialogs/stock_library_notices.h"

#include "model/settings/number_text.h"
#include "model/stock/stock_summary.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Notices.h"
#include "ui/localization.h"
#include "ui/message_text.h"

namespace {

using String = CFRef<CFStringRef>;

String Number(std::size_t number) {
    return String::adopt(CreateLocalizedCFStringFromNumberWithDecimals(static_cast<SInt32>(number), 0));
}

String Filled(CFBundleRef bundle, CFStringRef key, std::initializer_list<CFStringRef> arguments) {
    return CopyFilledInMessage(CopyLocalizedText(bundle, key).get(), arguments);
}

void Tell(CFOptionFlags level, CFStringRef header, CFStringRef message) {
    CFOptionFlags response = 0;
    CFUserNotificationDisplayAlert(0, level, nullptr, nullptr, nullptr, header, message, nullptr, nullptr, nullptr,
                                   &response);
}

/// The first button goes back.
bool Ask(CFBundleRef bundle, CFStringRef header, CFStringRef messageKey, CFStringRef backKey, CFStringRef doKey) {
    CFOptionFlags response = kCFUserNotificationDefaultResponse;
    CFUserNotificationDisplayAlert(0, kCFUserNotificationCautionAlertLevel | kCFUserNotificationDefaultIsCancelFlag,
                                   nullptr, nullptr, nullptr, header, CopyLocalizedText(bundle, messageKey).get(),
                                   CopyLocalizedText(bundle, backKey).get(), CopyLocalizedText(bundle, doKey).get(),
                                   nullptr, &response);
    return (response & kCFUserNotificationResponseMask) == kCFUserNotificationAlternateResponse;
}

/// What is wrong with the user's own file.
CFStringRef LibraryFaultKey(StockLibraryFault fault) {
    switch (fault) {
        case StockLibraryFault::newer:
            return CFSTR("Paper Library Newer");
        case StockLibraryFault::unreadable:
            return CFSTR("Paper Library Unreadable");
        case StockLibraryFault::otherFile:
            return CFSTR("Paper Library Other File");
        default:
            return CFSTR("Paper Library Out of Reach");
    }
}

}  // namespace

String CopyLibraryNote(CFBundleRef bundle, const StockLibrary& library, std::size_t shown) {
    if (library.fault != StockLibraryFault::none) {
        return CopyLocalizedText(bundle, LibraryFaultKey(library.fault));
    }
    if (library.papers.empty()) {
        return CopyLocalizedText(bundle, CFSTR("Paper Library Empty"));
    }
    const String all = Number(library.papers.size());
    return shown == library.papers.size()
               ? Filled(bundle, CFSTR("Paper Library Size"), {all.get()})
               : Filled(bundle, CFSTR("Paper Library Found"), {Number(shown).get(), all.get()});
}

String CopyPaperWords(CFBundleRef bundle, const Stock& paper) {
    return GenerateStockWords(bundle, paper, CopyLocalizedText(bundle, CFSTR("List Comma")).get());
}

bool AskToReplacePaper(CFBundleRef bundle, CFStringRef name) {
    return Ask(bundle, Filled(bundle, CFSTR("Paper Name Taken Header"), {name}).get(),
               CFSTR("Paper Name Taken Message"), CFSTR("Paper Other Name"), CFSTR("Paper Replace"));
}

bool AskToDeletePapers(CFBundleRef bundle, const std::vector<const Stock*>& papers) {
    const String header = papers.size() == 1
                              ? Filled(bundle, CFSTR("Paper Delete Header"), {papers.front()->customName()})
                              : Filled(bundle, CFSTR("Paper Delete Several Header"), {Number(papers.size()).get()});
    return Ask(bundle, header.get(), CFSTR("Paper Delete Message"), CFSTR("Paper Keep"), CFSTR("Paper Delete"));
}

void TellPapersNotSaved(CFBundleRef bundle, const StockLibraryChange& change) {
    const CFStringRef key = change.fault == StockLibraryFault::notWritten ? CFSTR("Paper Not Saved Message")
                                                                          : LibraryFaultKey(change.fault);
    Tell(kCFUserNotificationStopAlertLevel, CopyLocalizedText(bundle, CFSTR("Paper Not Saved Header")).get(),
         CopyLocalizedText(bundle, key).get());
}

void TellPapersNotExported(CFBundleRef bundle) {
    Tell(kCFUserNotificationStopAlertLevel, CopyLocalizedText(bundle, CFSTR("Paper Not Exported Header")).get(),
         CopyLocalizedText(bundle, CFSTR("Paper Not Exported Message")).get());
}

void TellPapersNotImported(CFBundleRef bundle, CFURLRef file, StockLibraryFault fault) {
    const CFStringRef key = fault == StockLibraryFault::newer        ? CFSTR("Paper Not Imported Newer")
                            : fault == StockLibraryFault::otherFile  ? CFSTR("Paper Not Imported Other")
                            : fault == StockLibraryFault::unreadable ? CFSTR("Paper Not Imported Damaged")
                                                                     : CFSTR("Paper Not Imported Out of Reach");
    const std::string path = filePath(file);
    const String name = makeString(path.substr(path.rfind('/') + 1));
    Tell(kCFUserNotificationStopAlertLevel, Filled(bundle, CFSTR("Paper Not Imported Header"), {name.get()}).get(),
         CopyLocalizedText(bundle, key).get());
}

void TellPapersImported(CFBundleRef bundle, std::size_t added, std::size_t given) {
    Tell(kCFUserNotificationNoteAlertLevel,
         Filled(bundle, CFSTR("Paper Imported Header"), {Number(added).get(), Number(given).get()}).get(),
         CopyLocalizedText(bundle, CFSTR("Paper Imported Message")).get());
}
