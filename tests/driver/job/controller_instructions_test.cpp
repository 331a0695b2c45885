// What the printer's controller is told: all that was asked for and nothing else, in words that the document lists.

#include "driver/job/controller_instructions.h"
#include "driver/instructions/read_color.h"
#include "model/records/color_choices.h"
#include "model/records/full_color_options.h"
#include "model/settings/ticket_items.h"
#include "tests/support/places.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <regex>
#include <set>

namespace {

Instructions tell(const JobInstructions& job, std::int64_t pages = 10) {
    return controllerInstructions(job, planSheets(job, pages));
}

/// "name=value", a line each.
std::string lines(const Instructions& instructions, const std::string& start = {}) {
    std::string text;
    for (const auto& [name, value] : instructions) {
        text += name.starts_with(start) ? name + "=" + value + "\n" : "";
    }
    return text;
}

Paper paperWithEverything() {
    return {"A4", "Other", "TabStock", 5, 160, true, 2, 3, 4, 1, "Mauve", "Index", "Our \"best\" paper"};
}

/// Between them, two jobs with all that there is: a booklet or fax has no inserts or exceptions.
std::vector<JobInstructions> jobsWithEverything() {
    JobInstructions print;
    print.kind = JobKind::sampleSet;
    print.copies = 2;
    print.sides = Sides::longEdge;
    print.paper = paperWithEverything();
    print.frontCover = CoverInstruction{CoverPrint::both, paperWithEverything()};
    print.backCover = CoverInstruction{CoverPrint::side2, paperWithEverything()};
    print.inserts = {{0, 2, {}}, {5, 1, {.color = "Blue"}}, {5, 1, {.color = "Blue"}}, {99, 1, {}}};
    print.exceptions = {{{4, 6}, {.color = "Red"}, Sides::one, {72, 36}, -3},
                        {{7, INT64_MAX}, {.size = "A3"}, {}, {}, {}},
                        {{50, 60}, {}, Sides::one, {}, {}}};
    print.finishing = {1'005'010, "wire", true, Offset::subsets, 5, "Top", "2Staples", "CTriFoldOpt"};
    print.notes = {"A\r\n@PJL SET COPIES=99", "Ada", "Bo", "Hello", "100 % ink \xE2\x82\xAC"};
    print.isNegative = print.isMirrored = print.isRotated = true;
    print.outputColor = OutputColor::blackAndWhite;
    print.watermark = {"DRAFT", false, false};
    JobInstructions fax;
    fax.kind = JobKind::fax;
    fax.fax = {{{"Ada L", "5550", "Tavro", "7"}, {"", "*1", "", ""}},
               FaxCoverInstruction{.paperSize = "A4"},
               false,
               3,
               2,
               3903657600};
    JobInstructions booklet;
    booklet.kind = JobKind::printAndSave;
    booklet.booklet = {true, true, "A3"};
    booklet.printTime = 3903657600;
    booklet.backCover = CoverInstruction{CoverPrint::both, {.color = "Pink"}};
    JobInstructions slides;
    slides.paper.type = kTransparencyType;
    slides.separators = Separators::printed;
    slides.separatorColor = "Pink";
    return {print, fax, booklet, slides};
}

/// Names of instructions, and of what stands between braces.
std::set<std::string> namesIn(const Instructions& instructions) {
    static const std::regex member("[{ ]([a-z0-9-]+)=");
    std::set<std::string> names;
    for (const auto& [name, value] : instructions) {
        names.insert(name);
        if (value.starts_with('{')) {
            for (std::sregex_iterator at(value.begin(), value.end(), member); at != std::sregex_iterator(); ++at) {
                names.insert((*at)[1]);
            }
        }
    }
    return names;
}

/// Those that the first cells of the document's tables have.
std::set<std::string> documentedNames() {
    static const std::regex name("`([a-z0-9…-]+)`");
    std::ifstream file(sourcePath("docs/job-instructions.md"));
    std::set<std::string> names;
    std::set<std::string> paper;
    for (std::string line; std::getline(file, line);) {
        const std::string cell = line.substr(0, line.find('|', 1));
        for (std::sregex_iterator at(cell.begin(), cell.end(), name);
             line.starts_with("|") && at != std::sregex_iterator(); ++at) {
            names.insert((*at)[1]);
        }
    }
    for (const std::string& one : names) {
        if (one.starts_with("media-") || one.starts_with("tavro-media-")) {
            paper.insert(one);
        }
    }
    for (const std::string cover : {"cover-front-", "cover-back-"}) {
        if (names.erase(cover + "media-…") == 1) {
            for (const std::string& one : paper) {
                names.insert(one.starts_with("media-") ? cover + one : "tavro-" + cover + one.substr(6));
            }
        }
    }
    return names;
}

/// Every adjustment that the settings can hold.
std::vector<ColorInstruction> allColors() {
    FullColorOptions options;
    options.setLightness(1);
    options.setContrast(2);
    options.setSaturation(3);
    options.setColorCast(4, 5, 6);
    options.setTrapping(kAdjustedTrapping);
    options.setTrappingAdjustment(7, 8);
    options.setBlackOverprint(1);
    options.setTRC(CFSTR("curve"));
    for (const auto set : {&FullColorOptions::setRGBImagesProfile, &FullColorOptions::setRGBTextAndGraphicsProfile,
                           &FullColorOptions::setCMYKImagesProfile, &FullColorOptions::setCMYKTextAndGraphicsProfile,
                           &FullColorOptions::setDestinationProfile}) {
        (options.*set)(1, nullptr);
    }
    options.setGrayImagesProfile(CFSTR("gray"));
    options.setGrayTextAndGraphicsProfile(CFSTR("gray"));
    for (const auto set : {&FullColorOptions::setImageObjectRendering, &FullColorOptions::setTextObjectRendering,
                           &FullColorOptions::setGraphicObjectRendering}) {
        (options.*set)(0);
    }
    PMTicketRef ticket = 0;
    PMTicketCreate(nullptr, CFSTR("test"), &ticket);
    PMTicketSetCFDictionary(ticket, CFSTR("test"), kFullColorOptionsItem, options.asTicket().get(), kPMUnlocked);
    std::vector<ColorInstruction> colors = readColors(ticket);
    PMTicketReleaseAndClear(&ticket);
    return colors;
}

}  // namespace

TEST(ControllerInstructions, TheDocumentListsThemAll) {
    JobInstructions adjusted;
    adjusted.colors = allColors();
    std::set<std::string> told = namesIn(tell(adjusted));
    for (const JobInstructions& job : jobsWithEverything()) {
        told.merge(namesIn(tell(job)));
    }
    told.merge(namesIn(secretInstructions({.creditCard = "4111", .dialingPrefix = "9"})));
    EXPECT_EQ(told, documentedNames());
}

TEST(ControllerInstructions, SayWhatWasAskedFor) {
    JobInstructions plain;
    plain.paper = {.size = "A4", .color = "White", .type = kPlainType};
    plain.finishing = {0, "", false, Offset::none, 1, "Auto", "None", "None"};
    EXPECT_EQ(lines(tell(plain)), "tavro-job-kind=print\n");
    EXPECT_FALSE(needsController(plain, false, false));

    const std::vector<JobInstructions> jobs = jobsWithEverything();
    EXPECT_EQ(lines(tell(jobs[0]), "cover-front-type") + lines(tell(jobs[0]), "cover-back-type"),
              "cover-front-type=print-both\ncover-back-type=print-back\n");
    JobInstructions inserts = jobs[0];
    inserts.paper = {.size = "A4"};
    EXPECT_TRUE(lines(tell(inserts), "insert-sheet").starts_with("insert-sheet={insert-after-page=2 insert-count=2 "))
        << "beside the cover, which has two pages";
    inserts.frontCover.reset();
    EXPECT_EQ(lines(tell(inserts), "insert-sheet"),
              "insert-sheet={insert-after-page=0 insert-count=2 media-size=A4}\n"
              "insert-sheet={insert-after-page=5 insert-count=2 media-size=A4 media-color=Blue}\n");
    EXPECT_EQ(lines(tell(jobs[0]), "overrides"),
              "overrides={pages=4-6 media-color=Red sides=one-sided x-side1-image-shift=-2540 "
              "x-side2-image-shift=1270 tavro-lighten-darken=-3}\n"
              "overrides={pages=7-10 media-size=A3}\n");
    EXPECT_EQ(lines(tell(jobs[0]), "finishings"), "finishings=staple-top-left\nfinishings=punch-dual-left\n");
    EXPECT_EQ(lines(tell(jobs[0]), "media-key") + lines(tell(jobs[0]), "media-weight"),
              "media-key=Our \"best\" paper\nmedia-weight-metric=160\n");
    EXPECT_EQ(lines(tell(jobs[1])),
              "tavro-job-kind=fax\n"
              "fax-destination={number=5550 name=\"Ada L\" organization=Tavro mailbox=7}\n"
              "fax-destination={number=\"*1\"}\n"
              "fax-send-time=2027-09-13T05:20:00\nfax-speed=33600\nfax-resolution=200x200dpi\n"
              "confirmation-sheet-print=false\nfax-cover-sheet=true\n");
    JobInstructions folded = jobs[2];
    folded.finishing = jobs[0].finishing;
    EXPECT_EQ(lines(tell(folded), "separator-sheets") + lines(tell(folded), "tavro-offset"), "")
        << "a booklet has none";
    EXPECT_EQ(lines(tell(jobs[2]), "cover-") + lines(tell(jobs[2]), "sides"),
              "cover-back-type=print-both\ncover-back-media-size=A3\ncover-back-media-color=Pink\nsides=two-sided-"
              "short-edge\n");
}

TEST(ControllerInstructions, OfAReversedStackAreTheSame) {
    JobInstructions job = jobsWithEverything()[0];
    const std::string straight = lines(tell(job));
    job.isReversed = true;
    EXPECT_EQ(lines(tell(job)), straight);
}

TEST(ControllerInstructions, NoTextEndsALine) {
    std::string nasty;
    for (int c = 1; c < 256; ++c) {
        nasty += static_cast<char>(c);
    }
    JobInstructions job;
    job.notes = {nasty, nasty, nasty, nasty, nasty};
    job.watermark = {nasty, false, false};
    job.finishing.custom = job.paper.name = nasty;
    job.inserts = {{1, 1, {.name = nasty}}};
    for (const auto& [name, value] : tell(job)) {
        const std::string line = instructionLine(name, value);
        EXPECT_EQ(std::ranges::count_if(line, [](char c) { return c < ' ' || c > '~'; }), 1) << line;
        EXPECT_EQ(readInstruction(std::string_view(line).substr(5, line.size() - 6)), std::pair(name, value));
    }
}

TEST(ControllerInstructions, SomeJobsNeedThem) {
    std::vector<JobInstructions> jobs(8);
    jobs[0].kind = JobKind::fax;
    jobs[1].kind = JobKind::save;
    jobs[2].kind = JobKind::printAndSave;
    jobs[3].kind = JobKind::sampleSet;
    jobs[4].finishing.offset = Offset::sets;
    jobs[5].finishing.value = 1'005'010;
    jobs[6].notes = JobNotesInstruction{.specialInstructions = "Mind the ink"};
    jobs[7].colors = allColors();
    for (const JobInstructions& job : jobs) {
        EXPECT_TRUE(needsController(job, false, false)) << lines(tell(job));
    }
    EXPECT_FALSE(needsController(jobs[5], true, false)) << "the printer has options for it";
    EXPECT_FALSE(needsController(jobs[7], false, true)) << "the same";
    JobInstructions other;
    other.kind = JobKind::delayed;
    for (const int value : {0, 1, 9, 1'000'000}) {  // default, none, and numbers that mean nothing
        other.finishing.value = value;
        EXPECT_FALSE(needsController(other, false, false)) << value;
    }
}
