#include "model/settings/ticket_access.h"

#include "model/settings/plugin_state.h"
#include "tests/model/settings/session.h"

#include <gtest/gtest.h>

namespace {

CFRef<CFNumberRef> number(double value) {
    return CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberFloat64Type, &value));
}

CFRef<CFNumberRef> wide(CFIndex value) {
    return CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberCFIndexType, &value));
}

TEST(TicketAccess, FindsTheTicketsOfASession) {
    const Session session(kZR420);
    PMTicketRef ticket = -7;
    EXPECT_EQ(GetTicketFromSession(session.get(), kPDE_PMPrinterInfoKey, &ticket), noErr);
    EXPECT_EQ(ticket, session.printerInfo);

    // What is no ticket leaves the variable alone.
    ticket = -7;
    EXPECT_EQ(GetTicketFromSession(session.get(), CFSTR("nothing"), &ticket), kPMKeyNotFound);
    PMSessionSetDataInSession(session.get(), CFSTR("text"), CFSTR("5"));
    EXPECT_NE(GetTicketFromSession(session.get(), CFSTR("text"), &ticket), noErr);
    PMSessionSetDataInSession(session.get(), CFSTR("wide"), wide(CFIndex{1} << 32).get());
    EXPECT_NE(GetTicketFromSession(session.get(), CFSTR("wide"), &ticket), noErr);
    EXPECT_EQ(ticket, -7);

    const auto kept = number(1);
    PMSessionSetDataInSession(session.get(), CFSTR("real"), kept.get());
    const CFIndex owners = CFGetRetainCount(kept.get());
    EXPECT_EQ(GetTicketFromSession(session.get(), CFSTR("real"), &ticket), noErr);
    EXPECT_EQ(CFGetRetainCount(kept.get()), owners);
}

TEST(TicketAccess, ReadsSettingsOf32BitsOnly) {
    const Ticket ticket;
    const CFStringRef key = CFSTR("com.tavro.print.Test");
    EXPECT_EQ(GetTicketNumber(ticket.get(), key, 3), 3);
    EXPECT_EQ(SetTicketNumber(ticket.get(), kTicketCreator, key, kTicketValueUnset), noErr);
    EXPECT_EQ(GetTicketNumber(ticket.get(), key, 3), kTicketValueUnset);
    CFNumberRef stored = nullptr;
    CFIndex index = 0;
    ASSERT_EQ(PMTicketGetCFNumber(ticket.get(), kPMTopLevel, kPMTopLevel, key, &stored), noErr);
    EXPECT_TRUE(CFNumberGetValue(stored, kCFNumberCFIndexType, &index));
    EXPECT_EQ(index, -(CFIndex{1} << 31));

    PMTicketSetCFNumber(ticket.get(), kTicketCreator, key, wide(CFIndex{1} << 31).get(), kPMUnlocked);
    EXPECT_EQ(GetTicketNumber(ticket.get(), key, 3), 3) << "does not fit";
    PMTicketSetCFNumber(ticket.get(), kTicketCreator, key, number(2.5).get(), kPMUnlocked);
    EXPECT_EQ(GetTicketNumber(ticket.get(), key, 3), 3) << "has a fraction";
    ticket.setString(key, "2");
    EXPECT_EQ(GetTicketNumber(ticket.get(), key, 3), 3) << "is a text";
    EXPECT_NE(SetTicketNumber(0, kTicketCreator, key, 1), noErr);
}

TEST(TicketAccess, DictionaryGettersRefuseWhatIsNoSuchNumber) {
    const auto dictionary = makeDictionary();
    const CFStringRef key = CFSTR("key");
    CFIndex index = -7;
    EXPECT_FALSE(GetCFIndexFromCFDictionary(nullptr, key, &index));
    EXPECT_FALSE(GetCFIndexFromCFDictionary(dictionary.get(), nullptr, &index));
    EXPECT_FALSE(GetCFIndexFromCFDictionary(dictionary.get(), key, &index));
    CFDictionarySetCString(dictionary.get(), key, "12", kCFStringEncodingASCII);
    EXPECT_EQ(get(dictionary.get(), "key"), "12");
    EXPECT_FALSE(GetCFIndexFromCFDictionary(dictionary.get(), key, &index));
    CFDictionarySetValue(dictionary.get(), key, kCFBooleanTrue);
    EXPECT_FALSE(GetCFIndexFromCFDictionary(dictionary.get(), key, &index));
    const double half = 0.5;
    CFDictionarySetNumber(dictionary.get(), key, &half, kCFNumberDoubleType);
    EXPECT_FALSE(GetCFIndexFromCFDictionary(dictionary.get(), key, &index));
    EXPECT_EQ(index, -7);
    double real = 0;
    EXPECT_TRUE(CFDictionaryGetNumber(dictionary.get(), key, &real, kCFNumberDoubleType));
    EXPECT_EQ(real, 0.5);

    WriteTicketValue(dictionary.get(), key, CFIndex{1} << 40);
    EXPECT_TRUE(GetCFIndexFromCFDictionary(dictionary.get(), key, &index));
    EXPECT_EQ(index, CFIndex{1} << 40);
    SInt32 narrow = -7;
    EXPECT_FALSE(CFDictionaryGetNumber(dictionary.get(), key, &narrow, kCFNumberSInt32Type));
    EXPECT_EQ(narrow, -7);

    CFDictionarySetCString(dictionary.get(), key, "\xC3(", kCFStringEncodingUTF8);
    EXPECT_TRUE(GetCFIndexFromCFDictionary(dictionary.get(), key, &index)) << "bytes that are no text set nothing";
}

TEST(TicketAccess, InnerDictionariesAreMadeWhereTheyAreMissing) {
    const auto outer = makeDictionary();
    const CFMutableDictionaryRef inner = CFDictionaryGetDictionaryOrCreate(outer.get(), CFSTR("inner"));
    ASSERT_NE(inner, nullptr);
    EXPECT_EQ(CFGetRetainCount(inner), 1) << "owned by the outer one alone";
    WriteTicketValue(inner, CFSTR("a"), 1);
    EXPECT_EQ(CFDictionaryGetDictionaryOrCreate(outer.get(), CFSTR("inner")), inner);

    set(outer.get(), "text", "no dictionary");
    const CFMutableDictionaryRef replaced = CFDictionaryGetDictionaryOrCreate(outer.get(), CFSTR("text"));
    EXPECT_EQ(CFDictionaryGetCount(replaced), 0);
    EXPECT_EQ(CFDictionaryGetValue(outer.get(), CFSTR("text")), replaced);
    EXPECT_EQ(CFDictionaryGetDictionaryOrCreate(nullptr, CFSTR("inner")), nullptr);
}

TEST(PluginState, SyncGoesToTheShellWithTheCurrentSession) {
    EXPECT_EQ(PDESync(nullptr, true), kPMInvalidPrintSession);

    static PMPrintSession given = nullptr;
    static Boolean direction = true;
    const Session session(kZR420);
    SetCurrentPrintSession(session.get());
    SetPDESyncProc([](PMPrintSession synced, Boolean ticketsToControls) {
        given = synced;
        direction = ticketsToControls;
        return OSStatus{-1};
    });
    EXPECT_EQ(PDESync(nullptr, false), -1);
    EXPECT_EQ(given, session.get());
    EXPECT_FALSE(direction);
    SetPDESyncProc(nullptr);
    SetCurrentPrintSession(nullptr);
}

}  // namespace
