// The list of recipients: whose they are, and which of them are the same.

#include "jobtypes/records/fax_recipient_list.h"
#include "tests/support/cf_values.h"

#include <gtest/gtest.h>

namespace {

FaxRecipientOwner recipient(const char* first, const char* last, const char* number) {
    const auto text = [](const char* utf8) { return utf8 ? makeCFString(utf8) : nullptr; };
    return FaxRecipientOwner(new FaxRecipient(text(first).get(), text(last).get(), text(number).get()));
}

/// The last names, which these tests use as the recipients' names.
std::string namesOf(const FaxRecipientList& list) {
    std::string names;
    for (CFIndex i = 0; i < list.count(); ++i) {
        names += textOfCF(list.recipientAtIndex(i)->lastName());
    }
    return names;
}

/// The number of owners.
SInt32 countOf(const FaxRecipientOwner& owner) {
    owner->retain();
    return owner->release();
}

TEST(FaxRecipientLists, HoldACountOfEach) {
    const auto a = recipient(nullptr, "a", nullptr);
    const auto b = recipient(nullptr, "b", nullptr);
    {
        FaxRecipientList list;
        list.append(a.get());
        list.insertAtIndex(b.get(), 0);
        list.insertAtIndex(a.get(), 1);
        EXPECT_EQ(namesOf(list), "baa");
        EXPECT_EQ(countOf(a), 3);

        const FaxRecipientList copy(list);
        EXPECT_EQ(countOf(a), 3);
        EXPECT_NE(copy.recipientAtIndex(1), a.get());
        list.recipientAtIndex(0)->setLastName(CFSTR("c"));
        EXPECT_EQ(namesOf(copy), "baa");

        list.removeAtIndex(0);
        EXPECT_EQ(countOf(b), 1);
        list.removeAll();
        EXPECT_EQ(countOf(a), 1);
        list.append(a.get());
    }
    EXPECT_EQ(countOf(a), 1);
}

TEST(FaxRecipientLists, IgnoreWhatIsOutsideOfThem) {
    const auto a = recipient(nullptr, "a", nullptr);
    FaxRecipientList list;
    list.append(nullptr);
    for (const CFIndex index : {CFIndex{-1}, CFIndex{1}}) {
        list.insertAtIndex(a.get(), index);
        list.removeAtIndex(index);
        EXPECT_EQ(list.recipientAtIndex(index), nullptr);
    }
    EXPECT_EQ(list.count(), 0);
    EXPECT_EQ(countOf(a), 1);
}

TEST(FaxRecipientLists, RemovingSkipsTheOneAfterARemovedOne) {
    const auto a = recipient(nullptr, "a", nullptr);
    const auto b = recipient(nullptr, "b", nullptr);
    const auto twin = recipient(nullptr, "a", nullptr);
    FaxRecipientList list;
    for (const auto* each : {&a, &a, &b, &a, &twin}) {
        list.append(each->get());
    }
    list.remove(a.get());
    EXPECT_EQ(namesOf(list), "aba");
    EXPECT_EQ(list.recipientAtIndex(0), a.get());
    EXPECT_EQ(list.recipientAtIndex(2), twin.get()) << "equal texts are not the same recipient";
    list.remove(a.get());
    EXPECT_EQ(namesOf(list), "ba");
}

TEST(FaxRecipientLists, KnowARecipientByNameAndNumber) {
    FaxRecipientList list;
    list.append(recipient("Jo", "Smith", "1-2").get());
    list.append(recipient(nullptr, "Berg", nullptr).get());
    const auto contains = [&list](const char* first, const char* last, const char* number) {
        return list.containsRecipient(recipient(first, last, number).get());
    };
    EXPECT_TRUE(contains("Jo", "Smith", "1-2"));
    EXPECT_TRUE(contains(nullptr, "Berg", nullptr));
    EXPECT_FALSE(contains("Jo", "smith", "1-2"));
    EXPECT_FALSE(contains("Jo", "Smith", "12"));
    EXPECT_FALSE(contains("Jo", "Smith", nullptr));
    EXPECT_FALSE(contains("", "Berg", nullptr)) << "an empty name is not a missing one";

    const auto elsewhere = recipient("Jo", "Smith", "1-2");
    elsewhere->setEmailAddress(CFSTR("jo@example.com"));
    EXPECT_TRUE(list.containsRecipient(elsewhere.get()));
}

TEST(FaxRecipientLists, GoThroughTheTicket) {
    FaxRecipientList list;
    list.append(recipient("A", "a", "1").get());
    list.append(recipient(nullptr, nullptr, nullptr).get());
    list.append(recipient(nullptr, "b", nullptr).get());
    const auto ticket = list.toTicket();
    ASSERT_EQ(CFArrayGetCount(ticket.get()), 3);
    const FaxRecipientList read(ticket.get());
    EXPECT_TRUE(CFEqual(read.toTicket().get(), ticket.get()));

    const auto damaged = makeCFArray();
    CFArrayAppendValue(damaged.get(), CFSTR("nobody"));
    CFArrayAppendValue(damaged.get(), list.recipientAtIndex(2)->toTicket().get());
    list.fromTicket(damaged.get());
    EXPECT_EQ(namesOf(list), "b");
    list.fromTicket(nullptr);
    EXPECT_EQ(list.count(), 0);
}

}  // namespace
