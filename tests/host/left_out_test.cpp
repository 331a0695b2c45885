// What a job leaves out, as its settings say it.
#include "host/settings/left_out.h"

#include "host/job/print_job.h"

#include "host/settings/choice_words.h"
#include "host/settings/paper_options.h"
#include "jobtypes/job_type.h"
#include "model/ppd_option_maps.h"
#include "model/setting_map.h"
#include "model/special_page_list.h"
#include "model/sync_covers.h"
#include "panels/paper_output/finishing_choices.h"
#include "tests/host/settings_session.h"
#include "tests/support/places.h"

namespace {

using Sentences = std::vector<std::string>;

class LeftOut : public SettingsTest {
protected:
    Sentences tell(const std::string& items, const std::string& choices = {}, JobWay way = JobWay::file) const {
        return tellLeftOut(*session(items, choices), way, bundle.get());
    }
};

}  // namespace

TEST_F(LeftOut, NothingOfWhatThePrinterIsTold) {
    EXPECT_EQ(tell(""), Sentences{});
    EXPECT_EQ(tell(numberItem("FinishingOptions", 1) + numberItem("FinishingOffset", 1) + numberItem("EmitTPIF", 0) +
                       numberItem("AdvancedRotateImage180", 0) + jobType(6) + item("BookletLayout", "<false/>") +
                       numberItem("BookletDrawOutlines", 1) + numberItem("SeparatorOption", 2),
                   choice("Duplex", "DuplexTumble") + choice("TRFoldOptions", "BookletFoldOpt")),
              Sentences{});
    EXPECT_EQ(tell(numberItem("FinishingOutputColor", 1)), Sentences{});
    EXPECT_EQ(tell(numberItem("FinishingOffset", 2), choice("Jog", "EndOfSet")), Sentences{});
    EXPECT_EQ(tell(cover("FrontCover", 4), choice("JCLCovers", "Front")), Sentences{});
    EXPECT_EQ(tell(cover("FrontCover", 1) + cover("BackCover", 1), choice("JCLCovers", "BlankFrontBack")), Sentences{});
}

TEST_F(LeftOut, BlackAndWhiteOfAPrinterThatHasNoSuchOption) {
    std::ifstream whole(sourcePath("resources/ppd/Tavro-ZR420.ppd"));
    const std::string path = folder / "color.ppd";
    std::ofstream rest(path);
    for (std::string line; std::getline(whole, line);) {
        if (!line.starts_with("*JCLColorCorrection BlackWhite")) {
            rest << line << '\n';
        }
    }
    rest.close();
    printer = *openPPD(path);
    EXPECT_EQ(tell(numberItem("FinishingOutputColor", 1)),
              Sentences{"The printer is not told to print in black and white."});
}

TEST_F(LeftOut, CoversThatTheirPPDOptionDoesNotTell) {
    const std::string blue = number("Size", 1) + number("Color", 2);
    const struct {
        std::string items;
        const char* covers;
        const char* sentence;
    } rows[] = {
        {cover("FrontCover", 2), "None", "There will be no front cover."},
        {cover("FrontCover", 2) + cover("BackCover", 2), "None", "There will be no covers."},
        {cover("FrontCover", 1) + cover("BackCover", 1), "BlankFront", "There will be no back cover."},
        {cover("BackCover", 4), "None",
         "There will be no back cover: the printer makes one only together with a front cover."},
        {cover("FrontCover", 4) + cover("BackCover", 1), "FrontBack",
         "The back cover will be like the front cover: on the same paper, and blank or printed as that is."},
        {cover("FrontCover", 4) + cover("BackCover", 4, blue), "FrontBack",
         "The back cover will be like the front cover: on the same paper, and blank or printed as that is."},
        {cover("FrontCover", 4, number("Size", 4)), "Front", "Covers will have the paper size of the document."},
        {cover("FrontCover", 4, number("Size", 75)), "Front", "Covers will have the paper size of the document."},
        {cover("FrontCover", 4, blue + number("Weight", 200)), "Front",
         "For covers, only color and type of the paper are chosen, not its weight or other properties."},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(tell(row.items, choice("JCLCovers", row.covers)), Sentences{row.sentence}) << row.items;
    }
}

TEST_F(LeftOut, ThingsThatOnlyTheMakersDriverReads) {
    const std::string insert = dictionary(number("StartPage", 3) + number("Quantity", 2));
    const std::string pages = dictionary(number("StartPage", 4) + number("EndPage", 9));
    const std::string page = dictionary(number("StartPage", 4) + number("EndPage", 4));
    const auto list = [](const char* name, const std::string& elements) {
        return item(std::string("SpecialPages.") + name, "<array>" + elements + "</array>");
    };
    const std::string forced = item("BookletLayout", "<true/>") + item("BookletForceNewSize", "<true/>");
    const std::string booklet =
        "The pages will not be put together as a booklet: each is printed on a side of its own, in the order of the "
        "document.";
    const struct {
        std::string items;
        Sentences sentences;
    } rows[] = {
        {list("InsertList", insert), {"The insert will be missing."}},
        {list("InsertList", insert + "<integer>1</integer>" + insert), {"The 2 inserts will be missing."}},
        {list("ExceptionList", pages),
         {"Pages 4-9 will be printed like all other pages: their exception is left out."}},
        {list("ExceptionList", page), {"Page 4 will be printed like all other pages: its exception is left out."}},
        {list("ExceptionList", pages + page + page + page),
         {"The 4 exceptions are left out: their pages will be printed like all others."}},
        {item("BookletLayout", "<true/>") + numberItem("BookletDrawOutlines", 1), {booklet}},
        {forced + item("JobLevelStock", dictionary(number("Size", 3))),
         {booklet, "The booklet will have the paper size of the document."}},
        {forced + item("JobLevelStock", dictionary(number("Size", 1))), {booklet}},
        {item("JobLevelStock", dictionary(number("Color", 2) + number("Weight", 90))),
         {"Only color and type of the paper are chosen, not its weight or other properties."}},
        {numberItem("FinishingOptions", 21), {"This finishing will be missing: 2 staples."}},
        {numberItem("FinishingOptions", 1'905'010),
         {"This finishing will be missing: 1 staple, 2 holes, Z fold of half sheets."}},
        {numberItem("FinishingOptions", 2) + item("FinishingCustom", "<string>Crimp</string>"),
         {"This finishing will be missing: Crimp."}},
        {numberItem("FinishingSlipSheet", 2), {"There will be no slip sheets."}},
        {numberItem("FinishingOffset", 2), {"The copies will not be offset."}},
        {numberItem("FinishingOffset", 2) + numberItem("FinishingOffsetEnableSubset", 1),
         {"Subsets of pages will not be offset."}},
        {item("InvertImageOptions", dictionary(number("NegativeImage", 1) + number("MirrorImage", 1))),
         {"The pages will not be negative.", "The pages will not be mirrored."}},
        {numberItem("AdvancedRotateImage180", 1), {"The pages will not be rotated by 180 degrees."}},
        {jobType(8), {"All copies will be printed at once, without a sample set first."}},
        {jobType(4), {"The document will be printed, but not saved on the printer."}},
        {jobType(3), {"The document will be printed at once, and not be saved on the printer."}},
        {jobType(5), {"The document will be printed, not faxed."}},
        {jobType(5) + item("FaxRecipientList", "<array><dict/><dict/><dict/></array>"),
         {"The document will be printed, not faxed to the 3 recipients."}},
        {item("JobNotesMessage", "<string>Hello</string>"), {"The job notes will be missing."}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(tell(row.items), row.sentences) << row.items;
    }
    EXPECT_EQ(tell(item("BookletLayout", "<true/>"), choice("TRFoldOptions", "BookletFoldOpt")),
              Sentences{"The pages will not be put together as a booklet, and nothing is folded: each is printed on a "
                        "side of its own, in the order of the document."});
    EXPECT_EQ(tell(numberItem("SeparatorOption", 2), choice("MediaType", "Transparency")),
              Sentences{"There will be no separators between the transparencies."});
}

TEST_F(LeftOut, NothingThatTheHostAdds) {
    const std::string mark = element("com.tavro.print.watermark.Watermark", "<string>Draft</string>");
    const std::string sheet = jobType(5) + item("FaxOptions", dictionary(element("CoverSheet", "<true/>")));
    for (const JobWay way : {JobWay::file, JobWay::queue}) {
        EXPECT_EQ(tell(mark, "", way), Sentences{});
        EXPECT_EQ(tell(sheet, "", way).size(), 1U);
    }
    const std::string delayed =
        item("JobType", dictionary(number("JobType", 7) + number("DelayedPrintTime", 18 * 3600 + 30 * 60)));
    EXPECT_EQ(tell(delayed), Sentences{"The job will be written to its file now, not at 18:30."});
    EXPECT_EQ(tell(delayed, "", JobWay::queue), Sentences{});
}

TEST_F(LeftOut, IsReadFromTheRecordsThatThePanelsWrite) {
    const auto made = session("");
    const PMTicketRef ticket = made->printSettings();
    auto front = std::make_unique<Cover>();
    front->setSidesImaged(kCoverBlank);
    auto back = std::make_unique<Cover>();
    back->setSidesImaged(kCoverBothSides);
    SyncCovers(ticket, kCoversToTicket, &front, &back);
    ExceptionPageList exceptions;
    SpecialPages pages;
    auto page = std::make_unique<ExceptionPage>();
    page->setStartPage(4);
    page->setEndPage(9);
    pages.push_back(std::move(page));
    exceptions.add(pages);
    PMTicketSetCFArray(ticket, CFSTR("test"), CFSTR("com.tavro.print.SpecialPages.ExceptionList"),
                       exceptions.asTicket().get(), kPMUnlocked);
    EXPECT_EQ(tellLeftOut(*made, JobWay::file, bundle.get()),
              (Sentences{"The back cover will be like the front cover: on the same paper, and blank or printed as that "
                         "is.",
                         "Pages 4-9 will be printed like all other pages: their exception is left out."}));
}

TEST_F(LeftOut, FinishingHasANameForEveryChoiceOfThePanels) {
    const auto words = [this](SInt32 finishing) {
        PanelChoices choices;
        choices.finishing = finishing;
        return finishingWords(choices, bundle.get());
    };
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

TEST(PanelChoices, HaveTheJobTypesOfThePanels) {
    EXPECT_EQ(PanelChoices::normalJob, kJobTypeNormal);
    EXPECT_EQ(PanelChoices::faxJob, kJobTypeFax);
    EXPECT_EQ(PanelChoices::secureJob, kJobTypeSecurePrint);
    EXPECT_EQ(PanelChoices::delayedJob, kJobTypeDelayedPrint);
    for (const auto& [key, type] : {std::pair{"Save", PanelChoices::savedJob},
                                    {"Print and Save", PanelChoices::printedAndSavedJob},
                                    {"SampleSet", PanelChoices::sampleSetJob}}) {
        EXPECT_EQ(utf8(LocalizedKeyForTicketValue(JobTypeMap, type)), key);
    }
}

TEST(PaperOptions, AreThoseOfThePanels) {
    const struct {
        CFStringRef mainKeyword;
        std::string (*option)(SInt32 number);
    } rows[] = {{CFSTR("PageSize"), paperSizeOption},
                {CFSTR("MediaColor"), paperColorOption},
                {CFSTR("MediaType"), paperTypeOption}};
    for (const auto& row : rows) {
        const PPDOptionMap* const map = GetPPDOptionMapForMainKeyword(row.mainKeyword);
        for (SInt32 number = -1; number < 100; ++number) {
            EXPECT_EQ(row.option(number), utf8(GetPPDOptionKeywordForTicketValue(map, number)))
                << utf8(row.mainKeyword) << " " << number;
        }
    }
}

TEST_F(LeftOut, IsAlsoWhatTheJobCannotDo) {
    auto document = openDocument(sourcePath("tests/data/ten-pages.pdf"));
    ASSERT_TRUE(document);
    const auto faults = [&](const std::string& items, JobWay way) {
        return tellJobFaults(*document, *session(items, {}), way, bundle.get());
    };
    EXPECT_EQ(faults("", JobWay::queue), Sentences{});
    EXPECT_EQ(faults(item("watermark.Watermark", "<string>No such mark</string>"), JobWay::file),
              Sentences{"The watermark will be missing (No such mark: is not stored)."});
    EXPECT_EQ(faults(jobType(kJobTypeDelayedPrint), JobWay::file), Sentences{});
    EXPECT_EQ(faults(jobType(kJobTypeDelayedPrint), JobWay::queue),
              Sentences{"The job will be printed at 00:00: it has no print time within the next day."});
}
