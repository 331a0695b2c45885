// Cards of all versions are changed without losing what we do not know; another reader agrees on what we write.

#include "platform/contacts/card_library.h"

#include <gtest/gtest.h>

#include <libebook-contacts/libebook-contacts.h>

namespace {

CardOwner newCard() {
    return cardLibrary()->make();
}

CardOwner cardOf(const std::string& text) {
    return cardLibrary()->read(text);
}

/// What a program that knows contacts by their fields makes of the card.
std::string fieldOf(const Card& card, EContactField field) {
    EContact* contact = e_contact_new_from_vcard(card.text().c_str());
    const auto* text = static_cast<const char*>(e_contact_get_const(contact, field));
    const std::string result = text ? text : "(null)";
    g_object_unref(contact);
    return result;
}

bool hasLine(const Card& card, const std::string& line) {
    return card.text().find("\r\n" + line + "\r\n") != std::string::npos;
}

TEST(Cards, OfAllVersionsKeepWhatWeDoNotKnow) {
    const struct {
        const char* text;
        std::vector<const char*> lines;
    } rows[] = {
        {"BEGIN:VCARD\r\nVERSION:2.1\r\nUID:q\r\n"
         "N;CHARSET=ISO-8859-1;ENCODING=QUOTED-PRINTABLE:M=FCller;J=F6rg;;Dr.\r\n"
         "NOTE;CHARSET=UTF-8;encoding=quoted-printable:one=0D=0Atwo =C3=BC, th=\r\nr=\r\nee=\r\n\r\n"
         "TEL;CELL:12\r\nX-FOO;BAR=x:a\r\nEND:VCARD\r\n",
         {"N:M\u00fcller;Ada;;Dr.;", "X-FOO;BAR=x:a", "TEL;TYPE=CELL:12"}},
        {"BEGIN:VCARD\nVERSION:3.0\nUID:r\nFN:Shown\\, so\nN:Berg;Bo;;;\nitem1.X-ABDATE:2001\nCATEGORIES:a,b\n"
         "ADR;TYPE=HOME:;;Way 1\\;2;Town;;;\nNOTE:a very\n  long line\\nand more\nEND:VCARD\n",
         {"FN:Shown\\, so", "N:Berg;Ada;;;", "item1.X-ABDATE:2001", "CATEGORIES:a,b",
          "ADR;TYPE=HOME:;;Way 1\\;2;Town;;;", "NOTE:a very long line\\nand more"}},
        {"BEGIN:VCARD\r\nVERSION:4.0\r\nUID:urn:uuid:7\r\nKIND:individual\r\nFN:Four\r\nGENDER:F\r\n"
         "TEL;VALUE=uri;PREF=1:tel:+1-555\r\nBDAY:--0203\r\nEND:VCARD\r\n",
         {"N:;Ada;;;", "KIND:individual", "FN:Four", "GENDER:F", "BDAY:--0203"}},
    };
    for (const auto& row : rows) {
        const CardOwner owner = cardOf(row.text);
        Card& card = *owner;
        card.setNamePart(NamePart::Given, "Ada");
        for (const char* line : row.lines) {
            EXPECT_TRUE(hasLine(card, line)) << line << "\n in\n" << card.text();
        }
        EXPECT_FALSE(card.isGroup());
    }
    EXPECT_EQ(cardOf(rows[0].text)->uniqueId(), "q");
    EXPECT_EQ(fieldOf(*cardOf(rows[0].text), E_CONTACT_NOTE), "one\ntwo \u00fc, three");
    EXPECT_EQ(cardOf(rows[2].text)->uniqueId(), "urn:uuid:7");
}

TEST(Cards, AreReadByOtherPrograms) {
    const CardOwner owner = newCard();
    Card& card = *owner;
    card.setNamePart(NamePart::Given, "Ada; \u00e4\\n,");
    card.setLabelledTexts("TEL", {{"WorkFAX", "+1 (5) 5"}, {"Work", "7,8"}, {"Nowhere", "9"}});
    card.setLabelledTexts("EMAIL", {{"Work", "a@example.com"}});
    card.setText("ORG", "A; B, C");
    EXPECT_EQ(fieldOf(card, E_CONTACT_GIVEN_NAME), "Ada; \u00e4\\n,");
    EXPECT_EQ(fieldOf(card, E_CONTACT_FULL_NAME), "Ada; \u00e4\\n,");
    EXPECT_EQ(fieldOf(card, E_CONTACT_PHONE_BUSINESS_FAX), "+1 (5) 5");
    EXPECT_EQ(fieldOf(card, E_CONTACT_PHONE_BUSINESS), "7,8");
    EXPECT_EQ(fieldOf(card, E_CONTACT_EMAIL_1), "a@example.com");
    EXPECT_EQ(fieldOf(card, E_CONTACT_ORG), "A; B, C");
    EXPECT_TRUE(hasLine(card, "TEL;TYPE=WORK,FAX:+1 (5) 5"));
    EXPECT_TRUE(card.text().ends_with("\r\nEND:VCARD\r\n"));

    card.setLabelledTexts("TEL", {});
    card.setText("ORG", std::nullopt);
    EXPECT_EQ(card.text().find("TEL"), std::string::npos);
    EXPECT_EQ(card.text().find("ORG"), std::string::npos);
}

TEST(Cards, ATextCannotEndTheCard) {
    const CardOwner owner = newCard();
    Card& card = *owner;
    const std::string text = "x\r\nEND:VCARD\r\nBEGIN:VCARD\rFN:y\nZ";
    card.setText("ORG", text);
    card.setNamePart(NamePart::Given, text);
    EXPECT_EQ(card.text().find("\nEND:VCARD"), card.text().size() - 12);
    EXPECT_EQ(card.text().find("\nBEGIN"), std::string::npos);
    EXPECT_EQ(cardOf(card.text())->uniqueId(), card.uniqueId());
}

TEST(Cards, ALongTextIsFoldedBetweenCharacters) {
    std::string text;
    for (int i = 0; i < 200; ++i) {
        text += "\u00e4\U0001f4e0";
    }
    const CardOwner owner = newCard();
    Card& card = *owner;
    card.setText("ORG", text);
    EXPECT_EQ(fieldOf(card, E_CONTACT_ORG), text);
}

TEST(Cards, ShowTheNameOrTheNextBest) {
    const CardOwner owner = newCard();
    Card& card = *owner;
    card.setLabelledTexts("TEL", {{"WorkFAX", "12"}});
    EXPECT_TRUE(hasLine(card, "FN:12"));
    EXPECT_TRUE(hasLine(card, "N:;;;;"));
    card.setText("ORG", "Acme");
    EXPECT_TRUE(hasLine(card, "FN:Acme"));
    card.setNamePart(NamePart::Given, "Ada");
    EXPECT_TRUE(hasLine(card, "FN:Ada"));
}

TEST(Cards, AGroupNamesEachMemberOnce) {
    const CardOwner owner = newCard();
    Card& group = *owner;
    group.makeGroup();
    group.setText("FN", "Board");
    const CardOwner person = newCard();
    const CardOwner stranger = cardOf("BEGIN:VCARD\r\nVERSION:4.0\r\nUID:urn:example:1\r\nEND:VCARD\r\n");
    for (const Card* member : {person.get(), stranger.get(), person.get(), stranger.get()}) {
        group.addMember(*member);
    }
    const CardOwner reader = cardOf(group.text());
    const Card& read = *reader;
    EXPECT_TRUE(read.isGroup());
    const std::string members = "MEMBER:urn:uuid:" + person->uniqueId() + "\r\nMEMBER:urn:example:1";
    EXPECT_TRUE(hasLine(read, members)) << read.text();
    EXPECT_EQ(read.text().find("MEMBER", read.text().find(members) + members.size()), std::string::npos);
}

TEST(Cards, KeptAsTextAnswerAndChangeAsBefore) {
    const auto card = cardOf("BEGIN:VCARD\nVERSION:4.0\nUID:1\nKIND:group\nFN:Team\nMEMBER:urn:uuid:a\nEND:VCARD\n");
    const std::string text = card->text();
    card->keepAsText();
    card->keepAsText();
    EXPECT_EQ(card->uniqueId(), "1");
    EXPECT_TRUE(card->isGroup());
    EXPECT_EQ(card->text(), text);
    EXPECT_EQ(card->members(), std::vector<std::string>{"a"});
    EXPECT_EQ(card->text(), text);

    card->keepAsText();
    card->setUniqueId("2");
    EXPECT_EQ(card->uniqueId(), "2");
    EXPECT_TRUE(hasLine(*card, "UID:2"));
    EXPECT_TRUE(hasLine(*card, "MEMBER:urn:uuid:a"));
}

TEST(Cards, GarbageIsAnEmptyCard) {
    for (const char* text : {"", "garbage", "BEGIN:VCARD", "BEGIN:VCARD\n:::\n;;=\nEND:VCARD\n"}) {
        const CardOwner owner = cardOf(text);
        const Card& card = *owner;
        EXPECT_EQ(card.uniqueId(), "");
        EXPECT_FALSE(card.isGroup());
        EXPECT_TRUE(hasLine(card, "VERSION:3.0"));
    }
}

TEST(Cards, OfOldProgramsAreReadWhole) {
    const auto boss = cardOf(
        "BEGIN:VCARD\r\nVERSION:2.1\r\nUID:1\r\nAGENT:\r\nBEGIN:VCARD\r\nUID:2\r\nFN:Agent; so\r\nEND:VCARD\r\n"
        "FN:Boss\r\nEND:VCARD\r\n");
    EXPECT_EQ(boss->uniqueId(), "1");
    EXPECT_EQ(boss->textOf("FN"), "Boss");
    EXPECT_TRUE(hasLine(*boss, "AGENT:BEGIN:VCARD\\nUID:2\\nFN:Agent\\; so\\nEND:VCARD\\n")) << boss->text();

    const auto bytes = cardOf(
        "BEGIN:VCARD\r\nVERSION:2.1\r\nN;CHARSET=ISO-8859-1:M\xFCller;J\xF6rg\r\nORG:\x80uro\r\n"
        "NOTE;CHARSET=koi8-r:\xC4\xC1\r\nTITLE:\xC3\r\n \xBC\r\nFN;CHARSET=no-such:\xFC\r\nEND:VCARD\r\n");
    EXPECT_EQ(bytes->namePart(NamePart::Family), "M\u00fcller");
    EXPECT_EQ(bytes->namePart(NamePart::Given), "J\u00f6rg");
    EXPECT_EQ(bytes->textOf("ORG"), "\u20acuro");
    EXPECT_EQ(bytes->textOf("NOTE"), "\u0434\u0430");
    EXPECT_EQ(bytes->textOf("TITLE"), "\u00fc") << "folded inside of a character";
    EXPECT_EQ(bytes->textOf("FN"), "\uFFFD");
}

TEST(Cards, OnlyAnEncodedValueHasSoftBreaks) {
    const auto card = cardOf(
        "BEGIN:VCARD\nVERSION:2.1\nN:Ek\nTITLE:about;\n ENCODING=QUOTED-PRINTABLE:a=\nORG;X-QUOTED-PRINTABLE=b:b=\n"
        "NICKNAME;X=\n y;ENCODING=\n QUOTED-PRINTABLE:c=3D=\n=3D\nROLE:d\nNOTE;QUOTED-PRINTABLE:e=\nf\nEND:VCARD\n");
    EXPECT_EQ(card->textOf("TITLE"), "about");
    EXPECT_EQ(card->textOf("ORG"), "b=");
    EXPECT_EQ(card->textOf("NICKNAME"), "c==");
    EXPECT_EQ(card->textOf("ROLE"), "d");
    EXPECT_EQ(card->textOf("NOTE"), "ef") << "as version 2.1 may name it";
}

TEST(Cards, LineBreaksOfAllKindsAreReadAsWritten) {
    const auto card =
        cardOf("BEGIN:VCARD\nVERSION:2.1\nNOTE;ENCODING=QUOTED-PRINTABLE:a=0D=0Ab=0Dc=0D=0D=0A?id=3D41\nEND:VCARD\n");
    EXPECT_EQ(card->textOf("NOTE"), "a\nb\nc\n\n?id=41");
    EXPECT_EQ(cardOf(card->text())->textOf("NOTE"), card->textOf("NOTE")) << "decoded once";
}

TEST(Cards, AGroupFollowsMembersToTheirNewIds) {
    const std::unordered_map<std::string, std::string> newIds = {{"a", "0"}, {"b", "1"}};
    const auto group = cardOf(
        "BEGIN:VCARD\nVERSION:3.0\nX-EVOLUTION-LIST:TRUE\nMEMBER:urn:uuid:a\nMEMBER:c\n"
        "X-ADDRESSBOOKSERVER-MEMBER:urn:uuid:b\nEMAIL;X-EVOLUTION-DEST-CONTACT-UID=b:x\nEMAIL:y\nEND:VCARD\n");
    group->renameMembers(newIds);
    EXPECT_EQ(group->members(), (std::vector<std::string>{"0", "c", "1", "1"}));
}

}  // namespace
