// PPD options in the tickets and in the global UI dictionary, over the real PPDs.

#include "model/settings/ppd_access.h"
#include "model/settings/ppd_option_maps.h"
#include "model/settings/ppd_ui_dictionary.h"
#include "model/stock/media_limits.h"
#include "tests/model/settings/session.h"

#include <gtest/gtest.h>

namespace {

std::string info(CFArrayRef options, CFIndex row, KeywordInfo which) {
    return text(GetKeywordInfo(options, row, which));
}

/// The position of an option of the global UI dictionary.
CFIndex row(CFStringRef mainKeyword, CFStringRef optionKeyword) {
    return FindPPDKeyPairsMatch(PPDGetGlobalOptions(mainKeyword), mainKeyword, optionKeyword);
}

class GlobalUIDictionary : public testing::TestWithParam<std::filesystem::path> {
protected:
    void SetUp() override { ASSERT_EQ(PPDCreateGlobalUIDictionary(ppd.get()), noErr); }
    void TearDown() override { PPDReleaseGlobalUIDictionary(); }

    Session session{GetParam()};
    OpenPPD ppd{session};
};

TEST_P(GlobalUIDictionary, EveryOptionOfAMappedKeywordHasATicketValue) {
    const CFDictionaryRef dictionary = PPDGetGlobalUIDictionary();
    const auto count = static_cast<std::size_t>(CFDictionaryGetCount(dictionary));
    std::vector<const void*> keys(count);
    CFDictionaryGetKeysAndValues(dictionary, keys.data(), nullptr);
    int mapped = 0;
    for (const void* key : keys) {
        const auto* mainKeyword = static_cast<CFStringRef>(key);
        const PPDOptionMap* map = GetPPDOptionMapForMainKeyword(mainKeyword);
        const CFArrayRef options = PPDGetGlobalOptions(mainKeyword);
        EXPECT_GT(CFArrayGetCount(options), 0) << text(mainKeyword);
        for (CFIndex i = 0; map != nullptr && i < CFArrayGetCount(options); ++i) {
            ++mapped;
            const CFStringRef option = GetKeywordInfo(options, i, KeywordInfo::optionKeyword);
            const SInt32 value = GetTicketValueForPPDOptionKeyword(map, option);
            if (text(option) == "Custom") {  // libcups adds it where the PPD has custom sizes
                EXPECT_EQ(value, -1);
                continue;
            }
            ASSERT_NE(value, -1) << text(mainKeyword) << " " << text(option);
            EXPECT_EQ(text(GetPPDOptionKeywordForTicketValue(map, value)), text(option));
            EXPECT_EQ(text(GetPPDOptionAliasForTicketValue(mainKeyword, value)), info(options, i, KeywordInfo::alias));
        }
    }
    EXPECT_GT(mapped, 80);
}

INSTANTIATE_TEST_SUITE_P(Printers, GlobalUIDictionary, testing::Values(kZR410, kZR420, kZR840),
                         [](const auto& printer) { return printer.param.stem().string().substr(6); });

class PPDOptions : public testing::Test {
protected:
    Session session{kZR420};
    OpenPPD ppd{session};
};

TEST_F(PPDOptions, AKeywordInfoArrayDescribesAnOption) {
    ASSERT_EQ(PPDCreateGlobalUIDictionary(ppd.get()), noErr);
    const CFArrayRef finishers = PPDGetGlobalOptions(CFSTR("Option2"));
    const CFIndex booklet = row(CFSTR("Option2"), CFSTR("HCSS_BK"));
    ASSERT_GE(booklet, 0);
    EXPECT_EQ(CFArrayGetCount(static_cast<CFArrayRef>(CFArrayGetValueAtIndex(finishers, booklet))), kKeywordInfoCount);
    EXPECT_EQ(info(finishers, booklet, KeywordInfo::mainKeyword), "Option2");
    EXPECT_EQ(info(finishers, booklet, KeywordInfo::installable), "true");
    EXPECT_EQ(info(finishers, booklet, KeywordInfo::isDefault), "true");
    EXPECT_EQ(info(finishers, booklet, KeywordInfo::chosen), "true");
    const CFIndex other = row(CFSTR("Option2"), CFSTR("HCSS"));
    EXPECT_EQ(info(finishers, other, KeywordInfo::isDefault), "false");
    EXPECT_EQ(info(finishers, other, KeywordInfo::chosen), "false");

    const CFArrayRef duplex = PPDGetGlobalOptions(CFSTR("Duplex"));
    EXPECT_EQ(info(duplex, 2, KeywordInfo::optionKeyword), "DuplexTumble") << "in the order of the PPD";
    EXPECT_EQ(info(duplex, 2, KeywordInfo::alias), "2-Sided, Flip on Short Edge");
    EXPECT_EQ(info(duplex, 2, KeywordInfo::installable), "false");

    EXPECT_EQ(PPDGetGlobalOptions(CFSTR("Option1")), nullptr) << "a boolean offers nothing to pick";
    EXPECT_EQ(GetKeywordInfo(duplex, 3, KeywordInfo::alias), nullptr);
    EXPECT_EQ(GetKeywordInfo(nullptr, 0, KeywordInfo::alias), nullptr);

    // A second dictionary is refused and the first one stays.
    const CFDictionaryRef dictionary = PPDGetGlobalUIDictionary();
    EXPECT_EQ(PPDCreateGlobalUIDictionary(ppd.get()), -1);
    EXPECT_EQ(PPDGetGlobalUIDictionary(), dictionary);
    PPDReleaseGlobalUIDictionary();
    EXPECT_EQ(PPDGetGlobalUIDictionary(), nullptr);
    EXPECT_EQ(PPDCreateGlobalUIDictionary(nullptr), -1) << "no options";
    PPDReleaseGlobalUIDictionary();
}

TEST_F(PPDOptions, OptionsOfAKeywordAreCopied) {
    CFMutableArrayRef options = nullptr;
    EXPECT_EQ(PPDCopyOptionsForMainKeyword(ppd.get(), PPDKeyword("NoSuchKeyword"), &options), -1);
    EXPECT_EQ(PPDCopyOptionsForMainKeyword(ppd.get(), PPDKeyword("Option1"), &options), -1);
    EXPECT_EQ(options, nullptr);
    ASSERT_EQ(PPDCopyOptionsForMainKeyword(ppd.get(), kStapleKey, &options), noErr);
    const auto owned = CFRef<CFMutableArrayRef>::adopt(options);
    EXPECT_EQ(CFGetRetainCount(options), 1);
    EXPECT_EQ(CFArrayGetCount(options), 4);

    CFIndex count = -1;
    EXPECT_NE(GetUIListFromPPD(ppd.get(), PPDKeyword("NoSuchKeyword"), options, &count), noErr);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(GetUIListFromPPD(ppd.get(), kCollateKey, options, &count), noErr);
    EXPECT_EQ(CFArrayGetCount(options), 4 + count) << "appended";
}

TEST_F(PPDOptions, TextsAreDecodedFromMacRoman) {
    const UInt8 alias[] = {9, 'A', '<', '2', '0', '>', 0x8A, '<', '4', '>'};  // 0x8A: a with diaeresis
    CFArrayRef made = nullptr;
    ASSERT_EQ(PPDIndexToKeywordInfoArray(ppd.get(), 0, 0, alias, true, false, false, &made), noErr);
    const auto owned = CFRef<CFArrayRef>::adopt(made);
    EXPECT_EQ(text(CFArrayGetValueAtIndex(made, 2)), "A \u00E4");
    EXPECT_EQ(text(CFArrayGetValueAtIndex(made, 3)), "true");
    EXPECT_EQ(text(CFArrayGetValueAtIndex(made, 4)), "false");
    EXPECT_EQ(CFArrayGetValueAtIndex(made, 6), nullptr);
    EXPECT_NE(PPDIndexToKeywordInfoArray(ppd.get(), 0, 9999, alias, true, false, false, &made), noErr);
}

TEST(PPDOptionMaps, AnswerWithTheFirstMatch) {
    const PPDOptionMap* sizes = GetPPDOptionMapForMainKeyword(CFSTR("PageSize"));
    EXPECT_EQ(GetTicketValueForPPDOptionKeyword(sizes, CFSTR("9x11")), 8);
    EXPECT_EQ(GetTicketValueForPPDOptionKeyword(sizes, CFSTR("letter")), -1) << "case counts";
    EXPECT_EQ(GetTicketValueForPPDOptionKeyword(sizes, CFSTR("L\u00E9tter")), -1);
    EXPECT_EQ(GetTicketValueForPPDOptionKeyword(sizes, nullptr), -1);
    EXPECT_EQ(GetTicketValueForPPDOptionKeyword(nullptr, CFSTR("Letter")), -1);
    EXPECT_EQ(GetPPDOptionKeywordForTicketValue(sizes, 75), nullptr);
    EXPECT_EQ(GetPPDOptionKeywordForTicketValue(nullptr, 1), nullptr);

    // 0 is a value like any other, and the two ways to say True and False stay apart.
    EXPECT_EQ(text(GetPPDOptionKeywordForTicketValue(GetPPDOptionMapForMainKeyword(CFSTR("JCLBanner")), 0)), "False");
    EXPECT_EQ(text(GetPPDOptionKeywordForTicketValue(GetPPDOptionMapForMainKeyword(CFSTR("Jog")), 0)), "None");
    EXPECT_EQ(text(GetPPDOptionKeywordForTicketValue(GetPPDOptionMapForMainKeyword(CFSTR("JCLTrueGrayImages")), 1)),
              "False");
    const PPDOptionMap* types = GetPPDOptionMapForMainKeyword(CFSTR("MediaType"));
    EXPECT_EQ(GetTicketValueForPPDOptionKeyword(types, CFSTR("Custom7")), 21);

    EXPECT_EQ(GetPPDOptionMapForMainKeyword(CFSTR("StapleLocation")), nullptr);
    EXPECT_EQ(GetPPDOptionMapForMainKeyword(nullptr), nullptr);
    EXPECT_EQ(text(GetPPDOptionAliasForTicketValue(CFSTR("Duplex"), 1)), "") << "no dictionary";
}

TEST_F(PPDOptions, TheTicketHoldsOneOptionAKeyword) {
    const Ticket ticket;
    CFMutableArrayRef duplex = nullptr;
    ASSERT_EQ(PPDCopyOptionsForMainKeyword(ppd.get(), PPDKeyword("Duplex"), &duplex), noErr);
    const auto owned = CFRef<CFMutableArrayRef>::adopt(duplex);
    const CFStringRef mainKeyword = CFSTR("Duplex");
    CFStringRef option = mainKeyword;
    CFIndex index = 7;
    EXPECT_EQ(PPDGetMainKeywordValue(ticket.get(), mainKeyword, &option), paramErr);
    EXPECT_EQ(option, nullptr);
    EXPECT_EQ(PPDGetMainKeywordValueIndex(ticket.get(), mainKeyword, duplex, &index), noErr);
    EXPECT_EQ(index, -1);

    EXPECT_EQ(PPDSetMainKeywordIndex(ticket.get(), duplex, 1), noErr);
    EXPECT_EQ(PPDGetMainKeywordValue(ticket.get(), mainKeyword, &option), noErr);
    EXPECT_EQ(text(option), "DuplexNoTumble");
    EXPECT_EQ(PPDGetMainKeywordValueIndex(ticket.get(), mainKeyword, duplex, &index), noErr);
    EXPECT_EQ(index, 1);

    // An option that the list lacks, and something that is no option at all.
    EXPECT_EQ(PPDSetMainKeyword(ticket.get(), mainKeyword, CFSTR("Elsewhere")), noErr);
    EXPECT_EQ(PPDGetMainKeywordValueIndex(ticket.get(), mainKeyword, duplex, &index), noErr);
    EXPECT_EQ(index, -1);
    CFDictionarySetValue(ticket.ppd(), mainKeyword, kCFBooleanTrue);
    EXPECT_EQ(PPDGetMainKeywordValueIndex(ticket.get(), mainKeyword, duplex, &index), noErr);
    EXPECT_EQ(index, -1);
    EXPECT_EQ(PPDGetMainKeywordValue(ticket.get(), mainKeyword, &option), paramErr);

    EXPECT_EQ(PPDSetMainKeyword(ticket.get(), mainKeyword, nullptr), paramErr);
    EXPECT_EQ(PPDSetMainKeyword(ticket.get(), nullptr, mainKeyword), paramErr);
    EXPECT_EQ(PPDSetMainKeyword(0, mainKeyword, mainKeyword), paramErr);
    EXPECT_EQ(PPDSetMainKeywordIndex(ticket.get(), duplex, 3), paramErr);
    EXPECT_EQ(PPDSetMainKeywordIndex(ticket.get(), nullptr, 0), paramErr);
    EXPECT_EQ(PPDGetMainKeywordValue(ticket.get(), mainKeyword, nullptr), paramErr);
    EXPECT_EQ(FindPPDKeyPairsMatch(nullptr, mainKeyword, mainKeyword), -1);
}

class MediaLimits : public testing::Test {
protected:
    void TearDown() override { SetCurrentPrintSession(nullptr); }
    std::array<float, 4> limits() {
        std::array<float, 4> read{};
        GetMediaLimits(&read[0], &read[1], &read[2], &read[3]);
        return read;
    }
    static constexpr std::array<float, 4> kDefault = {432, 432, 864, 864};
};

TEST_F(MediaLimits, ComeFromThePPDOfTheCurrentPrinter) {
    EXPECT_EQ(limits(), kDefault) << "no session";
    const Session session(kZR420);
    SetCurrentPrintSession(session.get());
    EXPECT_EQ(limits(), (std::array<float, 4>{288, 432, 936, 1368}));

    PMPrintSession empty = nullptr;
    PMCreateSession(&empty);
    SetCurrentPrintSession(empty);
    EXPECT_EQ(limits(), kDefault) << "no printer";
    PMReleaseSession(empty);
}

TEST_F(MediaLimits, AreTheDefaultsWithoutUsableCustomSizes) {
    const TemporaryFolder folder;
    const auto limitsOf = [&](const std::string& name, const std::string& ppd) {
        const Session session(folder.add(name, ppd));
        SetCurrentPrintSession(session.get());
        const auto read = limits();
        SetCurrentPrintSession(nullptr);
        return read;
    };
    EXPECT_EQ(limitsOf("same.ppd", changedPPD({}, "")), (std::array<float, 4>{288, 432, 936, 1368}));
    EXPECT_EQ(
        limitsOf("fixed.ppd", changedPPD({"*VariablePaperSize", "*CustomPageSize", "*ParamCustomPageSize"}, "*% not")),
        kDefault);
    EXPECT_EQ(limitsOf("zero.ppd", changedPPD({"Width: 1 points 288 936"}, "Width: 1 points 0 0")), kDefault);
}

}  // namespace
