// Strings, their encodings, and sets of characters.

#include "platform/foundation/CFCharacterSet.h"
#include "platform/foundation/terminal_text.h"
#include "platform/foundation/text.h"
#include "tests/support/cf_values.h"

#include <gtest/gtest.h>
#include <QLocale>

#include <map>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace {

std::optional<std::string> encoded(CFStringRef string, CFStringEncoding encoding) {
    char buffer[64] = "unchanged";
    return CFStringGetCString(string, buffer, sizeof buffer, encoding) ? std::optional<std::string>(buffer)
                                                                       : std::nullopt;
}

CFRef<CFStringRef> decoded(const std::string& bytes, CFStringEncoding encoding) {
    return CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, bytes.c_str(), encoding));
}

TEST(Strings, EncodingsConvertBothWays) {
    const struct {
        const char* utf8;
        std::optional<std::string> macRoman, latin1, ascii;
    } rows[] = {
        {"A4 ~", "A4 ~", "A4 ~", "A4 ~"},
        {"Größe",
         "Gr\x9A\xA7"
         "e",
         "Gr\xF6\xDF"
         "e",
         {}},
        {"½ & €", {}, {}, {}},
        {"€", "\xDB", {}, {}},
        {"×", {}, "\xD7", {}},
        {"\uFB01 \u03A9", "\xDE \xBD", {}, {}},
        {"三", {}, {}, {}},
        {"😀", {}, {}, {}},
        {"", "", "", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.utf8);
        const auto string = makeCFString(row.utf8);
        EXPECT_EQ(encoded(string.get(), kCFStringEncodingUTF8), row.utf8);
        EXPECT_EQ(encoded(string.get(), kCFStringEncodingMacRoman), row.macRoman);
        EXPECT_EQ(encoded(string.get(), kCFStringEncodingISOLatin1), row.latin1);
        EXPECT_EQ(encoded(string.get(), kCFStringEncodingASCII), row.ascii);
        if (row.latin1) {
            EXPECT_TRUE(CFEqual(decoded(*row.latin1, kCFStringEncodingISOLatin1).get(), string.get()));
        }
    }
}

TEST(Strings, NamesOfFilesAreReadable) {
    const std::pair<std::string, const char*> rows[] = {{"", ""},
                                                        {"Größe 三.pdf", "Größe 三.pdf"},
                                                        {"Gr\xF6\xDF"
                                                         "e 三",
                                                         "Größe 三"},
                                                        {"\xE4\xB8", "ä¸"},
                                                        {std::string("a\0b", 3), "a"}};
    for (const auto& [bytes, shown] : rows) {
        EXPECT_EQ(readable(bytes), shown);
    }
    EXPECT_EQ(readable("a\x9B"
                       "31mb"),
              "a\uFFFD"
              "31mb")
        << "which a terminal would obey";
    EXPECT_EQ(utf8Text(nullptr), "");
    EXPECT_EQ(errorLine("Gr\xF6\xDF"
                        "e.pdf",
                        "is\ndamaged "),
              "Größe.pdf: is damaged");
}

TEST(Strings, EveryMacRomanByteSurvivesTheWayThere) {
    for (int byte = 1; byte < 256; ++byte) {
        const std::string bytes(1, char(byte));
        const auto string = decoded(bytes, kCFStringEncodingMacRoman);
        ASSERT_EQ(CFStringGetLength(string.get()), 1) << byte;
        EXPECT_EQ(encoded(string.get(), kCFStringEncodingMacRoman), bytes) << byte;
    }
}

TEST(Strings, BytesOutsideOfTheEncodingAreRefused) {
    for (const char* bytes : {"\x80", "a\xC3", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF"}) {
        EXPECT_FALSE(decoded(bytes, kCFStringEncodingUTF8)) << bytes;
        EXPECT_FALSE(decoded(bytes, kCFStringEncodingASCII)) << bytes;
    }
    EXPECT_FALSE(decoded("a", 0x7777));
    EXPECT_EQ(CFStringCreateWithCString(nullptr, nullptr, kCFStringEncodingUTF8), nullptr);
    EXPECT_EQ(CFStringCreateWithBytes(nullptr, nullptr, 2, kCFStringEncodingUTF8, false), nullptr);
    EXPECT_EQ(CFStringCreateWithCharacters(nullptr, u"a", -1), nullptr);

    const UniChar half[] = {0xD83D};
    const auto broken = CFRef<CFStringRef>::adopt(CFStringCreateWithCharacters(nullptr, half, 1));
    EXPECT_EQ(encoded(broken.get(), kCFStringEncodingUTF8), std::nullopt);

    // A byte order mark, or what looks like one the other way round, is a character as any other.
    for (const std::u16string_view text : {u"\uFEFFa", u"\uFFFEa"}) {
        const auto marked = CFRef<CFStringRef>::adopt(CFStringCreateWithCharacters(nullptr, text.data(), 2));
        EXPECT_EQ(CFStringGetCharacterAtIndex(marked.get(), 0), text[0]);
        EXPECT_EQ(CFStringGetCharacterAtIndex(marked.get(), 1), u'a');
    }
}

TEST(Strings, ABufferTooSmallStaysEmpty) {
    char buffer[6] = "?????";
    EXPECT_FALSE(CFStringGetCString(CFSTR("Größe"), buffer, 6, kCFStringEncodingUTF8));
    EXPECT_STREQ(buffer, "");
    EXPECT_TRUE(CFStringGetCString(CFSTR("Größe"), buffer, 6, kCFStringEncodingMacRoman));
    EXPECT_FALSE(CFStringGetCString(CFSTR(""), buffer, 0, kCFStringEncodingUTF8));
    EXPECT_FALSE(CFStringGetCString(nullptr, buffer, 6, kCFStringEncodingUTF8));
    // A zero inside would cut the text for whoever reads the buffer.
    EXPECT_FALSE(CFStringGetCString(makeCFString({"a\0b", 3}).get(), buffer, 6, kCFStringEncodingUTF8));
}

TEST(Strings, PositionsAreCodeUnits) {
    const auto string = makeCFString("a😀b");
    ASSERT_EQ(CFStringGetLength(string.get()), 4);
    EXPECT_EQ(CFStringGetCharacterAtIndex(string.get(), 1), 0xD83D);
    EXPECT_EQ(CFStringGetCharacterAtIndex(string.get(), 3), u'b');
    EXPECT_EQ(CFStringGetCharacterAtIndex(string.get(), 4), 0);
    EXPECT_EQ(CFStringGetCharacterAtIndex(string.get(), -1), 0);

    const auto substring = [&](CFIndex location, CFIndex length) {
        return CFRef<CFStringRef>::adopt(
            CFStringCreateWithSubstring(nullptr, string.get(), CFRangeMake(location, length)));
    };
    EXPECT_EQ(textOfCF(substring(1, 2).get()), "😀");
    EXPECT_EQ(textOfCF(substring(4, 0).get()), "");
    EXPECT_FALSE(substring(3, 2));
    EXPECT_FALSE(substring(-1, 1));
    EXPECT_FALSE(substring(1, std::numeric_limits<CFIndex>::max()));

    UniChar units[2] = {};
    CFStringGetCharacters(string.get(), CFRangeMake(2, 2), units);
    EXPECT_EQ(units[1], u'b');
    CFStringGetCharacters(string.get(), CFRangeMake(3, 2), units);
    EXPECT_EQ(units[1], u'b');
}

TEST(Strings, CompareOrdersByCodeUnitsOrWithoutCase) {
    EXPECT_EQ(CFStringCompare(CFSTR("A4"), CFSTR("A5"), 0), kCFCompareLessThan);
    EXPECT_EQ(CFStringCompare(CFSTR("a"), CFSTR("B"), 0), kCFCompareGreaterThan);
    EXPECT_EQ(CFStringCompare(CFSTR("a"), CFSTR("B"), kCFCompareCaseInsensitive), kCFCompareLessThan);
    EXPECT_EQ(CFStringCompare(CFSTR("ÄRGER"), CFSTR("ärger"), kCFCompareCaseInsensitive), kCFCompareEqualTo);
    EXPECT_EQ(CFStringCompare(CFSTR("\uFB01"), CFSTR("😀"), 0), kCFCompareGreaterThan);
}

TEST(Strings, CannotForgeLinesOfATerminal) {
    EXPECT_EQ(terminalText("Grün\t日本 😀 e\u0301 שלום"), "Grün 日本 😀 e\u0301 שלום");
    EXPECT_EQ(terminalText("a\r\nb\x1B[31mred\x7F\u009B2J\u0085c\u2028d\u202Ee"), "a  b [31mred  2J c d e");
    EXPECT_EQ(terminalText("\x9B"
                           "31m \xFF\xC3"),
              "\uFFFD31m \uFFFD\uFFFD");
    EXPECT_EQ(terminalText(std::string_view("a\0b", 3)), "a b");
}

TEST(CharacterSets, KnowTheirMembers) {
    const auto isIn = [](CFCharacterSetPredefinedSet set, UInt32 c) {
        return CFCharacterSetIsLongCharacterMember(CFCharacterSetGetPredefined(set), c);
    };
    EXPECT_TRUE(isIn(kCFCharacterSetDecimalDigit, U'7'));
    EXPECT_TRUE(isIn(kCFCharacterSetDecimalDigit, U'٣'));
    EXPECT_FALSE(isIn(kCFCharacterSetDecimalDigit, U'½'));
    EXPECT_TRUE(isIn(kCFCharacterSetControl, 0x7F));
    EXPECT_TRUE(isIn(kCFCharacterSetControl, 0x200F));
    EXPECT_FALSE(isIn(kCFCharacterSetControl, U' '));
    EXPECT_TRUE(isIn(kCFCharacterSetWhitespaceAndNewline, 0x2028));
    EXPECT_TRUE(isIn(kCFCharacterSetWhitespaceAndNewline, 0xA0));
    EXPECT_FALSE(isIn(kCFCharacterSetWhitespaceAndNewline, 0x200B));

    const auto listed = CFRef<CFCharacterSetRef>::adopt(
        CFCharacterSetCreateWithCharactersInString(nullptr, makeCFString("0-9😀").get()));
    EXPECT_TRUE(CFCharacterSetIsLongCharacterMember(listed.get(), U'-'));
    EXPECT_TRUE(CFCharacterSetIsLongCharacterMember(listed.get(), U'😀'));
    EXPECT_FALSE(CFCharacterSetIsLongCharacterMember(listed.get(), U'5'));
    EXPECT_FALSE(CFCharacterSetIsLongCharacterMember(listed.get(), 0xD83D));
    EXPECT_FALSE(CFCharacterSetIsLongCharacterMember(nullptr, U'5'));
}

/// The strings in their order; those of one rank have "=" between them.
std::string ranked(std::vector<std::string> words) {
    std::vector<CFRef<CFStringRef>> strings;
    std::vector<CFStringRef> lent;
    for (const std::string& word : words) {
        strings.push_back(makeCFString(word.c_str()));
        lent.push_back(strings.back().get());
    }
    std::vector<UInt32> ranks(words.size());
    CFStringGetLocalizedRanks(lent.data(), static_cast<CFIndex>(lent.size()), ranks.data());
    std::map<UInt32, std::string> places;
    for (std::size_t i = 0; i < words.size(); ++i) {
        std::string& place = places[ranks[i]];
        place += (place.empty() ? "" : "=") + words[i];
        for (std::size_t k = 0; k < words.size(); ++k) {
            const CFComparisonResult result = CFStringCompare(lent[i], lent[k], kCFCompareLocalized);
            EXPECT_EQ(result == kCFCompareLessThan, ranks[i] < ranks[k]) << words[i] << ", " << words[k];
        }
    }
    std::string all;
    for (const auto& [rank, place] : places) {
        all += (all.empty() ? "" : " ") + place;
    }
    return all;
}

TEST(Strings, StandAsTheUsersLanguageSorts) {
    const std::vector<std::string> words{"Zebra", "öl", "apfel", "Ärger", "Apfel", "azur", "Ａpfel", "Obst"};
    const auto in = [&](const QLocale& locale) {
        std::string sorted;
        std::thread([&] {  // which has an order of its own
            QLocale::setDefault(locale);
            sorted = ranked(words);
        })
            .join();
        return sorted;
    };
    EXPECT_EQ(in(QLocale(QLocale::German)), "apfel=Apfel=Ａpfel Ärger azur Obst öl Zebra");
    EXPECT_EQ(in(QLocale(QLocale::Swedish)), "apfel=Apfel=Ａpfel azur Obst Zebra Ärger öl");
    EXPECT_EQ(in(QLocale::c()), "apfel=Apfel=Ａpfel Ärger azur Obst öl Zebra");
    EXPECT_EQ(ranked({}), "");
}

}  // namespace
