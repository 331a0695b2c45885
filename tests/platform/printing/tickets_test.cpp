#include "platform/foundation/CFPropertyList.h"
#include "platform/printing/PMSession.h"
#include "tests/platform/printing/printing_fixture.h"

#include <gtest/gtest.h>

namespace {

TEST(Tickets, HoldDeepCopies) {
    const Ticket ticket;
    const auto outer = makeDictionary();
    const auto inner = makeDictionary();
    set(inner.get(), "Size", "Letter");
    CFDictionarySetValue(outer.get(), CFSTR("Stock"), inner.get());
    ASSERT_EQ(PMTicketSetCFDictionary(ticket.get(), CFSTR("client"), CFSTR("Stocks"), outer.get(), kPMUnlocked), noErr);

    set(inner.get(), "Size", "A4");
    CFDictionaryRef stored = nullptr;
    ASSERT_EQ(PMTicketGetCFDictionary(ticket.get(), kPMTopLevel, kPMTopLevel, CFSTR("Stocks"), &stored), noErr);
    const auto* const storedInner = static_cast<CFDictionaryRef>(CFDictionaryGetValue(stored, CFSTR("Stock")));
    EXPECT_EQ(get(storedInner, "Size"), "Letter");

    // A copy of all items stays what it is when the ticket changes, and goes.
    const auto items = CFRef<CFMutableDictionaryRef>::adopt(PMTicketCopyItems(ticket.get()));
    ASSERT_EQ(PMTicketSetCFDictionary(ticket.get(), CFSTR("client"), CFSTR("Stocks"), inner.get(), kPMUnlocked), noErr);
    ASSERT_EQ(PMTicketReleaseItem(ticket.get(), kPMTopLevel, CFSTR("Stocks")), noErr);
    const auto* const copied = static_cast<CFDictionaryRef>(CFDictionaryGetValue(items.get(), CFSTR("Stocks")));
    EXPECT_EQ(get(static_cast<CFDictionaryRef>(CFDictionaryGetValue(copied, CFSTR("Stock"))), "Size"), "Letter");
}

TEST(Tickets, TellAbsentFromOtherKind) {
    const Ticket ticket;
    ticket.setNumber(CFSTR("n"), 7);
    CFStringRef string = CFSTR("untouched");
    EXPECT_EQ(PMTicketGetCFString(ticket.get(), kPMTopLevel, kPMTopLevel, CFSTR("x"), &string), kPMKeyNotFound);
    EXPECT_EQ(PMTicketGetCFString(ticket.get(), kPMTopLevel, kPMTopLevel, CFSTR("n"), &string), kPMItemTypeMismatch);
    EXPECT_EQ(text(string), "untouched");
    CFBooleanRef boolean = nullptr;  // neither is a number a boolean
    EXPECT_EQ(PMTicketGetCFBoolean(ticket.get(), kPMTopLevel, kPMTopLevel, CFSTR("n"), &boolean), kPMItemTypeMismatch);

    EXPECT_EQ(PMTicketReleaseItem(ticket.get(), kPMTopLevel, CFSTR("n")), noErr);
    EXPECT_EQ(PMTicketReleaseItem(ticket.get(), kPMTopLevel, CFSTR("n")), kPMKeyNotFound);
}

TEST(Tickets, RefuseWhatTheyCannotHold) {
    const Ticket ticket;
    EXPECT_EQ(PMTicketSetCFNumber(ticket.get(), nullptr, CFSTR("n"), nullptr, kPMUnlocked), paramErr);
    EXPECT_EQ(PMTicketSetCFNumber(ticket.get(), nullptr, nullptr, cf(1).get(), kPMUnlocked), paramErr);
    CFNumberRef number = nullptr;
    EXPECT_EQ(PMTicketGetCFNumber(ticket.get(), 1, kPMTopLevel, CFSTR("n"), &number), paramErr);
    EXPECT_EQ(PMTicketSetItems(ticket.get(), nullptr), paramErr);
}

TEST(Tickets, HandlesEndWithTheirOwnerAndDoNotComeBack) {
    PMTicketRef first = 0;
    ASSERT_EQ(PMTicketCreate(nullptr, kPDE_PMPrintSettingsKey, &first), noErr);
    EXPECT_GT(first, 0);
    const PMTicketRef stale = first;
    EXPECT_EQ(PMTicketReleaseAndClear(&first), noErr);
    EXPECT_EQ(first, 0);
    EXPECT_EQ(PMTicketReleaseAndClear(&first), kPMInvalidTicket);

    const Ticket next;
    EXPECT_NE(next.get(), stale);
    EXPECT_EQ(PMTicketSetCFNumber(stale, nullptr, CFSTR("n"), cf(1).get(), kPMUnlocked), kPMInvalidTicket);
    CFMutableDictionaryRef pairs = nullptr;
    EXPECT_EQ(PMTicketGetPPDDict(stale, kPMTopLevel, &pairs), kPMInvalidTicket);
    EXPECT_EQ(PMTicketCopyItems(stale), nullptr);
    PMTicketRef again = stale;
    EXPECT_EQ(PMTicketReleaseAndClear(&again), kPMInvalidTicket);
}

TEST(Tickets, PPDDictionaryGoesThroughASettingsFile) {
    const Ticket ticket;
    EXPECT_FALSE(CFDictionaryContainsKey(CFRef<CFMutableDictionaryRef>::adopt(PMTicketCopyItems(ticket.get())).get(),
                                         CFSTR("PPDDict")));
    set(ticket.ppd(), "Duplex", "None");
    EXPECT_EQ(get(ticket.ppd(), "Duplex"), "None");  // one dictionary, however often it is asked for
    ticket.setNumber(CFSTR("n"), 7);

    const auto items = CFRef<CFMutableDictionaryRef>::adopt(PMTicketCopyItems(ticket.get()));
    auto* const pairs =
        static_cast<CFMutableDictionaryRef>(const_cast<void*>(CFDictionaryGetValue(items.get(), CFSTR("PPDDict"))));
    CFDictionarySetValue(pairs, CFSTR("Jog"), cf(3).get());

    const Ticket other;
    other.setNumber(CFSTR("old"), 1);
    set(other.ppd(), "Old", "True");
    ASSERT_EQ(PMTicketSetItems(other.get(), items.get()), noErr);
    EXPECT_EQ(get(other.ppd(), "Duplex"), "None");
    EXPECT_EQ(CFDictionaryGetCount(other.ppd()), 1);  // neither the old pair nor the number
    CFNumberRef number = nullptr;
    EXPECT_EQ(PMTicketGetCFNumber(other.get(), kPMTopLevel, kPMTopLevel, CFSTR("n"), &number), noErr);
    EXPECT_EQ(PMTicketGetCFNumber(other.get(), kPMTopLevel, kPMTopLevel, CFSTR("old"), &number), kPMKeyNotFound);
    CFDictionaryRef item = nullptr;
    EXPECT_EQ(PMTicketGetCFDictionary(other.get(), kPMTopLevel, kPMTopLevel, CFSTR("PPDDict"), &item), kPMKeyNotFound);
}

TEST(Sessions, OwnTheirDataAndPrinter) {
    PMPrintSession session = nullptr;
    ASSERT_EQ(PMCreateSession(&session), noErr);
    CFTypeRef data = nullptr;
    EXPECT_EQ(PMSessionGetDataFromSession(session, CFSTR("k"), &data), kPMKeyNotFound);
    PMPrinter printer = nullptr;
    EXPECT_EQ(PMSessionGetCurrentPrinter(session, &printer), kPMNoDefaultPrinter);
    {
        const auto number = cf(42);
        const auto before = CFGetRetainCount(number.get());
        ASSERT_EQ(PMSessionSetDataInSession(session, CFSTR("k"), number.get()), noErr);
        ASSERT_EQ(PMSessionGetDataFromSession(session, CFSTR("k"), &data), noErr);
        EXPECT_EQ(data, static_cast<CFTypeRef>(number.get()));
        EXPECT_EQ(CFGetRetainCount(number.get()), before + 2);
        CFRelease(data);
        const Printer made(kZR410);
        ASSERT_EQ(PMSessionSetCurrentPMPrinter(session, made.get()), noErr);
        ASSERT_EQ(PMSessionSetCurrentPMPrinter(session, made.get()), noErr);  // the same one again
    }
    ASSERT_EQ(PMSessionGetCurrentPrinter(session, &printer), noErr);
    EXPECT_EQ(text(PMPrinterGetName(printer)), "Tavro ZR410");
    EXPECT_EQ(PMReleaseSession(session), noErr);
    EXPECT_EQ(PMReleaseSession(nullptr), paramErr);
}

}  // namespace
