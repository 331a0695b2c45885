// The settings in the user's words.
#include "host/settings/summary.h"

#include "host/settings/choice_words.h"
#include "panels/paper_output/finishing_choices.h"
#include "tests/host/settings/settings_session.h"
#include "tests/support/cf_values.h"

#include <algorithm>

namespace {

using Lines = std::vector<std::string>;

class SummaryOf : public SettingsTest {
protected:
    Lines tell(const std::string& items, const std::string& choices = {}, std::int64_t pageCount = 0) const {
        return summarize(*session(items, choices), pageCount, bundle.get());
    }
    static std::string list(const char* name, const std::string& elements) {
        return item(std::string("SpecialPages.") + name, "<array>" + elements + "</array>");
    }
};

}  // namespace

TEST_F(SummaryOf, SettingsThatAreThePrintersOwnIsOneSentence) {
    const Lines nothing{"All settings are the printer's defaults."};
    EXPECT_EQ(tell(""), nothing);
    // What the panels write when nobody has chosen anything, and what has no meaning.
    EXPECT_EQ(
        tell(numberItem("FinishingOptions", 0) + numberItem("FinishingOffset", 1) +
                 numberItem("FinishingOutputColor", 2) + numberItem("AdvancedBookletLayoutOrderStr", 1) +
                 numberItem("BookletDrawOutlines", 1) + numberItem("SeparatorOption", 2) + numberItem("EmitTPIF", 1) +
                 item("BookletLayout", "<false/>") + item("JobLevelStock", dictionary(number("Color", 2))) +
                 jobType(1) + item("FaxRecipientList", "<array><dict/></array>"),
             choice("PageRegion", "A4") + choice("JCLMediaColor", "Blue") + choice("Duplex", "None")),
        nothing);
    // What the panel of paper begins with; without its item somebody else has chosen it.
    const std::string plain = choice("MediaType", "Standard");
    EXPECT_EQ(tell(item("JobLevelStock", dictionary(number("Type", 1))), plain), nothing);
    EXPECT_EQ(tell("", plain), Lines{"Paper Type: Plain Paper"});
}

TEST_F(SummaryOf, ChoicesOfThePrinterIsInItsWordsAndInTheOrderOfThePanels) {
    EXPECT_EQ(
        tell("", choice("JCLBanner", "True") + choice("TREconomode", "True") + choice("StapleLocation", "2Staples") +
                     choice("MediaType", "CardStock") + choice("PageSize", "A4") + choice("MediaColor", "Blue") +
                     choice("Jog", "EndOfSet") + choice("OutputBin", "Stacker")),
        (Lines{"Paper Size: A4 (210 x 297 mm)", "Paper Color: Blue", "Paper Type: Card Stock", "Staple: 2 Staples",
               "Offset: Offset Each Set", "Output Tray: Stacker Tray", "Toner Saver: On", "Banner Page: On"}));
    EXPECT_EQ(tell("", choice("PageSize", "Custom.400x600")).size(), 1U);
    EXPECT_EQ(tell("", choice("Fragrance", "Rose")), tell(""));
}

TEST_F(SummaryOf, PagesStandsFirst) {
    const auto made = session("", choice("Duplex", "DuplexNoTumble"));
    made->setCopies(3);
    made->setPageRange("1-3,7");
    made->setOrientation(kReverseLandscape);
    EXPECT_EQ(summarize(*made, 0, bundle.get()), (Lines{"Copies: 3", "Pages: 1-3,7", "Reverse Landscape",
                                                        "2-Sided Printing: 2-Sided, Flip on Long Edge"}));
}

TEST_F(SummaryOf, OneThingIsToldOnce) {
    const struct {
        std::string items;
        std::string choices;
        Lines lines;
    } rows[] = {
        {item("BookletLayout", "<true/>") + numberItem("BookletDrawOutlines", 1) +
             numberItem("AdvancedBookletLayoutOrderStr", 1),
         choice("Duplex", "DuplexTumble") + choice("TRFoldOptions", "BookletFoldOpt"),
         {"Booklet: page outlines, right to left", "Fold and Punch: Booklet Fold"}},
        {item("BookletLayout", "<true/>"), choice("Duplex", "DuplexTumble"), {"Booklet"}},
        {"", choice("JCLColorCorrection", "BlackWhite"), {"Print in: Black and White"}},
        {numberItem("FinishingOutputColor", 1),
         choice("JCLColorCorrection", "PressMatch"),
         {"Print in: Black and White"}},
        {numberItem("FinishingOutputColor", 2),
         choice("JCLColorCorrection", "BlackWhite"),
         {"All settings are the printer's defaults."}},
        {numberItem("FinishingOutputColor", 2),
         choice("JCLColorCorrection", "PressMatch"),
         {"Color Correction: Press Match"}},
        {numberItem("FinishingOffset", 2), choice("Jog", "EndOfSet"), {"Offset: Offset Each Set"}},
        {numberItem("FinishingOffset", 2), "", {"Offset Each Copy"}},
        {item("JobLevelStock", dictionary(number("Color", 2) + number("Type", 12))),
         choice("MediaColor", "Blue") + choice("MediaType", "CardStock"),
         {"Paper Color: Blue", "Paper Type: Card Stock"}},
        {cover("FrontCover", 4, number("Size", 1) + number("Color", 3) + number("Type", 12)),
         choice("JCLCovers", "Front") + choice("JCLMediaColor", "Yellow") + choice("JCLMediaType", "CardStock"),
         {"Front Cover: printed, Yellow, Card Stock"}},
        {cover("FrontCover", 1, number("Size", 4)) + cover("BackCover", 1, number("Size", 4)),
         choice("JCLCovers", "BlankFrontBack"),
         {"Front and Back Covers: blank, A4 (210 x 297 mm)"}},
        {cover("FrontCover", 1, number("Color", 2)) + cover("BackCover", 3),
         choice("JCLCovers", "BlankFrontBack"),
         {"Front Cover: blank, Blue", "Back Cover: printed on one side"}},
        {"",
         choice("JCLCovers", "FrontBack") + choice("JCLFrontBackMediaColor", "Blue") + choice("JCLMediaColor", "Red"),
         {"Front and Back Covers: printed, Blue"}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(tell(row.items, row.choices), row.lines) << row.items << row.choices;
    }
}

TEST_F(SummaryOf, WhatNoOptionStandsForIsToldAsWell) {
    const std::string insert = dictionary(number("StartPage", 3));
    const std::string page = dictionary(
        number("StartPage", 4) + number("EndPage", 9) + number("SidesImaged", 1) + number("LightenDarken", -2) +
        element("Stock", dictionary(number("Color", 2) + number("Type", 12))) +
        element("com.tavro.print.ImageShiftOptionsPage", dictionary(number("Option", 1) + number("X1", 500))));
    const std::string other = dictionary(number("StartPage", 2) + number("EndPage", 2));
    const auto mark = [](const std::string& more) {
        return element("com.tavro.print.watermark.Watermark", "<string>Draft</string>") + more;
    };
    const auto faxTo = [](const std::string& recipients) {
        return jobType(5) + item("FaxRecipientList", "<array>" + recipients + "</array>");
    };
    const struct {
        std::string items;
        Lines lines;
    } rows[] = {
        {list("InsertList", insert), {"1 Insert"}},
        {list("InsertList", insert + insert + insert), {"3 Inserts"}},
        {list("ExceptionList", other + page),
         {"Page 2: exception", "Pages 4-9: Blue, Card Stock, 1-Sided, lighter, image shifted"}},
        {list("ExceptionList", page + other + page + other),
         {"Page 2: exception", "Pages 4-9: Blue, Card Stock, 1-Sided, lighter, image shifted"}},
        {list("ExceptionList", other + page + dictionary(number("StartPage", 6) + number("EndPage", 6)) + other),
         {"4 Exceptions"}},
        {item("JobLevelStock", dictionary(number("Weight", 90))), {"Paper Weight: 90 g/m²"}},
        {numberItem("FinishingOptions", 80), {"Finishing: fold"}},
        {numberItem("FinishingSlipSheet", 2), {"Slip Sheets"}},
        {numberItem("FinishingOffset", 2) + numberItem("FinishingOffsetEnableSubset", 1) +
             numberItem("FinishingOffsetPagesPerSubset", 5),
         {"Offset, Pages in a Subset: 5"}},
        {faxTo(""), {"Fax"}},
        {faxTo("<dict/>"), {"Fax to 1 Recipient"}},
        {faxTo("<dict/><dict/>") + item("FaxOptions", dictionary(element("CoverSheet", "<true/>"))),
         {"Fax to 2 Recipients", "Fax Cover Sheet"}},
        {jobType(6), {"Secure Print"}},
        {item("JobType", dictionary(number("JobType", 7) + number("DelayedPrintTime", 18 * 3600 + 30 * 60))),
         {"Print at 18:30"}},
        {jobType(8), {"Sample Set"}},
        {jobType(3), {"Save on Printer"}},
        {jobType(4), {"Print and Save on Printer"}},
        {item("InvertImageOptions", dictionary(number("NegativeImage", 1) + number("MirrorImage", 1))),
         {"Negative", "Mirrored"}},
        {numberItem("AdvancedRotateImage180", 1) + numberItem("EmitTPIF", 0),
         {"Rotated by 180 Degrees", "No Job Instructions"}},
        {mark(""), {"Watermark: Draft"}},
        {mark(numberItem("watermark.FirstPageOnly", 1) + numberItem("watermark.Option", 1)),
         {"Watermark: Draft, first page only, behind the page"}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(tell(row.items), row.lines) << row.items;
    }
    EXPECT_EQ(
        tell(numberItem("SeparatorOption", 2) + numberItem("SeparatorColor", 2), choice("MediaType", "Transparency")),
        (Lines{"Paper Type: Transparency", "Separators: blank, Blue"}));
}

TEST_F(SummaryOf, SecretsHasNone) {
    const std::string recipient = dictionary(choice("FirstName", "Ada") + choice("FaxNumber", "442079460018"));
    const Lines fax =
        tell(jobType(5) + item("FaxRecipientList", "<array>" + recipient + "</array>") +
             item("FaxOptions", dictionary(choice("CreditCard", "4929000000006") + choice("DialingPrefix", "9"))));
    EXPECT_EQ(fax, Lines{"Fax to 1 Recipient"});
    const std::string secure =
        item("JobType", dictionary(number("JobType", 6) + choice("SecurePrintPassword", "8642")));
    EXPECT_EQ(tell(secure), Lines{"Secure Print"});
    EXPECT_EQ(tell(secure, choice("JCLPasscode", "Custom.8642")), Lines{"Secure Print"});
    EXPECT_EQ(tell("", choice("JCLPasscode", "Custom.8642")), Lines{"Secure Print"});
}

TEST_F(SummaryOf, RubbishIsThatOfNothing) {
    // Of other types, and numbers that no panel knows.
    EXPECT_EQ(tell(item("JobType", "<array/>") + item("SpecialPages.InsertList", "<dict/>") +
                   item("SpecialPages.FrontCover", "<string/>") + numberItem("FinishingOptions", 999) +
                   item("BookletLayout", "<integer>1</integer>") + item("InvertImageOptions", "<true/>") +
                   item("watermark.Watermark", "<integer>3</integer>") + numberItem("SeparatorOption", -7)),
              tell(""));
    EXPECT_EQ(tell(item("SpecialPages.ExceptionList",
                        "<array>" +
                            dictionary(number("StartPage", 4) + number("EndPage", 4) + number("SidesImaged", -9) +
                                       element("Stock", dictionary(number("Color", 999) + number("Size", 75) +
                                                                   number("Width", 10000) + number("Length", 20000)))) +
                            "</array>")),
              Lines{"Page 4: 100 × 200 mm"});
}

TEST_F(SummaryOf, FinishingHasANameForEveryChoiceOfThePanels) {
    const auto words = [this](int finishing) { return finishingWords({.value = finishing}, bundle.get()); };
    for (SInt32 value = -1; value < 120; ++value) {
        const FinishingChoice* const choice = FindFinishingChoice(value);
        const bool isNone = choice == nullptr || value <= kFinishingValueNone;
        EXPECT_EQ(words(value).empty(), isNone) << value;
        if (choice != nullptr && value > 10) {
            EXPECT_EQ(words(value) == words(value - 1), choice->kind == FinishingKindOfValue(value - 1)) << value;
        }
    }
    EXPECT_EQ(words(FinishingValueOf({.staple = 21, .punch = 60, .halfSheetFold = 91})),
              "2 staples, 3 holes, Z fold of half sheets");
    EXPECT_EQ(words(INT32_MAX), "");
    EXPECT_EQ(words(INT32_MIN), "");
}

TEST_F(SummaryOf, FinishingThatIsAnOptionIsToldAsOne) {
    printer = *openPPD(sourcePath("resources/ppd/Tavro-ZR840.ppd"));
    const std::string note = item("FinishingCustom", "<string>3 mm</string>");
    EXPECT_EQ(tell(numberItem("FinishingOptions", 1'005'013) + note,
                   choice("TRStaple", "1StapleBL") + choice("TRPunch", "2HolePunchL")),
              (Lines{"Staple Position: 1 Staple, Bottom Left", "Hole Position: 2 Holes, Left"}));
    EXPECT_EQ(tell(numberItem("FinishingOptions", 2) + note, choice("TRBooklet", "SquareFold")),
              (Lines{"Booklet Maker: Square-Fold Trimming", "Finishing: 3 mm"}));
    EXPECT_EQ(tell(numberItem("FinishingOptions", 40)), Lines{"Finishing: binding"})
        << "by settings of another printer";
}

TEST_F(SummaryOf, WhatAQueueSavedForItsPages) {
    const auto queue = [](const std::string& options) {
        return item("PrintSettings.PageOptions", dictionary(options));
    };
    EXPECT_EQ(tell(queue(choice("number-up", "4") + choice("page-border", "single") + choice("page-set", "odd") +
                         choice("outputorder", "reverse") + choice("natural-scaling", "75"))),
              (Lines{"Odd Pages Only", "Last Page First", "Pages per Side: 4, with borders"}));
    EXPECT_EQ(tell(queue(choice("booklet", "yes") + choice("number-up", "4") + choice("page-border", "double"))),
              Lines{"Booklet: page outlines"});
}

TEST_F(SummaryOf, TheSheetsAreTheLastLine) {
    const std::string twoSided = choice("Duplex", "DuplexNoTumble");
    const std::string insert = list("InsertList", dictionary(number("StartPage", 3) + number("Quantity", 2)));
    const auto last = [](const Lines& lines) { return lines.back(); };
    EXPECT_EQ(tell("", "", 1), (Lines{"All settings are the printer's defaults.", "1 page on 1 sheet"}));
    EXPECT_EQ(last(tell("", twoSided, 2)), "2 pages on 1 sheet");
    EXPECT_EQ(last(tell(cover("FrontCover", 1), "", 1)), "1 page on 2 sheets");
    EXPECT_EQ(tell(jobType(5) + item("FaxRecipientList", "<array/>"), "", 24), Lines{"Fax"});

    // It follows every change, also of a list alone.
    const auto made = session(insert, twoSided);
    const auto sheets = [&](std::int64_t pages) { return summarize(*made, pages, bundle.get()).back(); };
    EXPECT_EQ(sheets(24), "24 pages on 15 sheets");
    EXPECT_EQ(sheets(2), "2 pages on 1 sheet");
    made->setPageRange("3-10");
    made->setCopies(3);
    EXPECT_EQ(sheets(24), "8 pages on 7 sheets, in each of 3 copies");
    const auto none = makeCFArray();
    PMTicketSetCFArray(made->printSettings(), CFSTR("test"), CFSTR("com.tavro.print.SpecialPages.InsertList"),
                       none.get(), kPMUnlocked);
    EXPECT_EQ(sheets(24), "8 pages on 4 sheets, in each of 3 copies");
    made->setPageRange("99");
    EXPECT_EQ(sheets(24).find("sheet"), std::string::npos) << "none of them is in the document";
}
