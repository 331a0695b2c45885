// What a job leaves out, as its settings say it.
#include "host/settings/left_out.h"

#include "host/job/print_job.h"
#include "host/settings/document_paper.h"
#include "jobtypes/records/job_type.h"
#include "tests/host/settings/settings_session.h"
#include "tests/support/places.h"

#include <fstream>

namespace {

using Sentences = std::vector<std::string>;

class LeftOut : public SettingsTest {
protected:
    /// Of a document of 24 pages.
    Sentences tell(const std::string& items, const std::string& choices = {}, JobWay way = JobWay::file) const {
        return tellLeftOut(*session(items, choices), 24, way, bundle.get());
    }

    static std::string list(const char* name, const std::string& elements) {
        return item(std::string("SpecialPages.") + name, "<array>" + elements + "</array>");
    }
};

}  // namespace

TEST_F(LeftOut, NothingOfWhatReachesThePaper) {
    const std::string insert = dictionary(number("StartPage", 3) + number("Quantity", 2));
    const std::string pages = dictionary(number("StartPage", 4) + number("EndPage", 9));
    for (const std::string& items :
         {std::string(), cover("FrontCover", 2), cover("FrontCover", 4) + cover("BackCover", 1, number("Color", 2)),
          list("InsertList", insert), list("ExceptionList", pages), item("BookletLayout", "<true/>"),
          numberItem("FinishingOptions", 21), numberItem("FinishingSlipSheet", 2), numberItem("FinishingOffset", 2),
          numberItem("FinishingOutputColor", 1), numberItem("AdvancedRotateImage180", 1), jobType(3), jobType(4),
          jobType(5), jobType(8), item("JobNotesMessage", "<string>Hello</string>"),
          item("InvertImageOptions", dictionary(number("MirrorImage", 1)))}) {
        EXPECT_EQ(tell(items), Sentences{}) << items;
    }
    EXPECT_EQ(tell(numberItem("SeparatorOption", 2), choice("MediaType", "Transparency")), Sentences{});
    const std::string message = item("JobNotesSheetMessage", "<string>Hello</string>");
    EXPECT_EQ(tell(message, choice("JCLBanner", "True")), Sentences{});
    EXPECT_EQ(tell(message), Sentences{"The message for the banner page will not be printed: the banner page is off."});
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

TEST_F(LeftOut, WhatTheSheetsCannotBe) {
    const std::string third = dictionary(number("StartPage", 3) + number("Quantity", 1));
    const std::string beyond = dictionary(number("StartPage", 99) + number("Quantity", 2));
    const std::string missing = "The insert after page 99 will be missing: the document has 24 pages.";
    const std::string inBooklet = "Inserts will be missing: a booklet cannot have any.";
    EXPECT_EQ(tell(list("InsertList", third + beyond)), Sentences{missing});
    EXPECT_EQ(tell(list("InsertList", beyond + beyond + third)).size(), 1U);
    EXPECT_EQ(tell(item("BookletLayout", "<true/>") + list("InsertList", third)), Sentences{inBooklet});
    EXPECT_EQ(tellLeftOut(*session(list("InsertList", beyond), {}), 0, JobWay::file, bundle.get()), Sentences{});
    EXPECT_EQ(tell(cover("FrontCover", 4, number("Color", 77))),
              Sentences{"The printer does not offer this paper: 77. Its sheets will be on the paper of the job."});
    EXPECT_EQ(tell(cover("FrontCover", 4, number("Size", 8)) + item("BookletLayout", "<false/>")), Sentences{});
}

TEST_F(LeftOut, TheSizeOfPagesThatNoPaperHolds) {
    const auto tellOf = [&](const Size& page, const std::string& items = {}) {
        const auto shown = session(items, choice("PageSize", "A5"));
        followDocument(shown.get(), page);
        EXPECT_EQ(shown->choice(CFSTR("PageSize")), "A5") << "is chosen";
        return tellLeftOut(*shown, 24, JobWay::file, bundle.get());
    };
    EXPECT_EQ(tellOf({936, 1368}), Sentences{}) << "a custom size";
    EXPECT_EQ(tellOf({1684, 2384}), Sentences{"The printer has no paper as large as the document’s pages: they will be "
                                              "shrunk to fit."});
    EXPECT_EQ(tellOf({1684, 2384}, item("BookletLayout", "<true/>")), Sentences{}) << "is always made to fit";
}

TEST_F(LeftOut, ThePrintTimeOfAFile) {
    const std::string delayed =
        item("JobType", dictionary(number("JobType", 7) + number("DelayedPrintTime", 18 * 3600 + 30 * 60)));
    EXPECT_EQ(tell(delayed), Sentences{"The job will be written to its file now, not at 18:30."});
    EXPECT_EQ(tell(delayed, "", JobWay::queue), Sentences{});
}

TEST_F(LeftOut, IsAlsoWhatTheJobCannotDo) {
    const auto faults = [&](const std::string& items, JobWay way) {
        return tellJobFaults(*session(items, {}), way, bundle.get());
    };
    EXPECT_EQ(faults("", JobWay::queue), Sentences{});
    EXPECT_EQ(faults(item("watermark.Watermark", "<string>No such mark</string>"), JobWay::file),
              Sentences{"The watermark will be missing (No such mark: is not stored)."});
    EXPECT_EQ(faults(jobType(kJobTypeDelayedPrint), JobWay::file), Sentences{});
    EXPECT_EQ(faults(jobType(kJobTypeDelayedPrint), JobWay::queue),
              Sentences{"The job will be printed at 00:00: it has no print time within the next day."});
}
