// Sheets as the preview shows them: where the job's own pages have their ink, and what there is beside it.

#include "driver/pages/document.h"
#include "driver/pages/make_pages.h"
#include "host/preview/color_curves.h"
#include "host/preview/finish_marks.h"
#include "host/preview/page_sources.h"
#include "host/preview/sheet_words.h"
#include "host/preview/shown_side.h"
#include "model/records/finishing.h"
#include "platform/files/pending_file.h"
#include "platform/files/plain_file.h"
#include "tests/host/settings/settings_session.h"
#include "tests/support/ink.h"

#include <poll.h>
#include <set>

namespace {

constexpr CanvasColor kYellow{255, 246, 160};

class SheetPreview : public SettingsTest {
protected:
    SheetPreview() {
        const std::string block = "0 g 100 150 90 20 re f 250 500 8 70 re f 0.5 g 300 100 9 9 re f";
        std::ofstream(document, std::ios::binary)
            << pdfOf({{"/MediaBox[0 0 612 792]", block}, {"/MediaBox[0 0 792 612]", block}, {}, {}, {}});
        std::string reason;
        sizes = std::make_shared<const std::vector<Size>>(
            readDocument(openPlainFile(document, INT64_MAX).get(), &reason)->sizes);
        sources.document = DrawnDocument::open(document, {}, &reason);
        instructions.paper.size = "Letter";
    }

    JobSheets plan() const {
        return sheetsOfJob(instructions, planSheets(instructions, std::ssize(*sizes)), sizes, printer.get());
    }

    /// So large that a pixel is a point.
    static SheetView viewOf(const JobSheets& job, std::size_t sheet, bool isSide2 = false) {
        SheetView view{sheet, isSide2, 2000, 2000};
        const SheetPlace place = placeSheet(job, view);
        const Size& paper = job.papers[job.plan.sheets[sheet].paper].size;
        const bool isTurned = place.turns % 2 != 0;
        view.width = static_cast<int>((isTurned ? paper.height : paper.width) + 2 * kSheetMargin);
        view.height = static_cast<int>((isTurned ? paper.width : paper.height) + 2 * kSheetMargin);
        return view;
    }

    /// With all pictures that are needed.
    Pixels draw(const JobSheets& job, const SheetView& view) {
        std::vector<PageWish> wishes;
        for (const PictureNeed& need : picturesOf(job, view)) {
            wishes.push_back(wishFor(need, sources));
        }
        drawer.wish(wishes);
        for (const PageWish& wish : wishes) {
            while (!drawer.find(wish).isAsWished) {
                EXPECT_EQ(drawer.find(wish).fault, PageFault::none);
                pollfd news{drawer.newsDescriptor(), POLLIN, 0};
                poll(&news, 1, -1);
                drawer.takeNews();
            }
        }
        return drawSheet(job, view, picturesIn(drawer, sources), bundle.get());
    }

    static std::uint32_t valueAt(const Pixels& picture, const SheetPlace& place, double x, double y) {
        const Matrix& matrix = place.toPicture;
        const auto column = static_cast<std::size_t>(matrix.a * x + matrix.c * y + matrix.e);
        const auto row = static_cast<std::size_t>(matrix.b * x + matrix.d * y + matrix.f);
        return picture.values.at(row * static_cast<std::size_t>(picture.width) + column);
    }
    /// What is at points of a sheet that stands upright.
    std::vector<std::uint32_t> valuesAt(const JobSheets& job, std::size_t sheet, bool isSide2,
                                        const std::vector<CanvasPoint>& points) {
        const SheetView view = viewOf(job, sheet, isSide2);
        const Pixels picture = draw(job, view);
        std::vector<std::uint32_t> values;
        for (const CanvasPoint& point : points) {
            values.push_back(valueAt(picture, placeSheet(job, view), point.x, point.y));
        }
        return values;
    }

    /// Holds the ink of all sides against what Ghostscript finds on the job's pages.
    void expectInkOfJob(const char* title) {
        const JobSheets job = plan();
        PagesOrder order;
        order.document = document;
        order.plan = &job.plan;
        order.layout = job.layout;
        order.papers = job.papers;
        const std::string pages = folder / "pages.pdf";
        PendingFile file(pages);
        std::string reason;
        ASSERT_TRUE(makePages(order, file, {}, &reason) && file.commit()) << reason;
        int page = 0;
        for (std::size_t sheet = 0; sheet < job.plan.sheets.size(); ++sheet) {
            for (const bool isSide2 : {false, true}) {
                if (!job.plan.isSent(sheet, isSide2)) {
                    continue;
                }
                const SheetView view = viewOf(job, sheet, isSide2);
                const SheetPlace place = placeSheet(job, view);
                const Pixels picture = draw(job, view);
                Pixels theirs = drawnByGhostscript(pages, page++);
                Pixels ours = theirs;
                for (std::size_t i = 0; i < ours.values.size(); ++i) {
                    const auto width = static_cast<std::size_t>(ours.width);
                    ours.values[i] = valueAt(picture, place, static_cast<double>(i % width) + 0.5,
                                             ours.height - static_cast<double>(i / width) - 0.5);
                }
                EXPECT_TRUE(isSamePlace(inkOf(ours), inkOf(theirs)))
                    << title << ", page " << page << ": " << inkOf(ours) << ", not " << inkOf(theirs);
            }
        }
        EXPECT_GT(page, 0);
    }

    std::string document = folder / "document.pdf";
    std::shared_ptr<const std::vector<Size>> sizes;
    PageSources sources;
    PageDrawer drawer{stagePath("lib/tavro-pictures")};
    JobInstructions instructions;
};

constexpr std::uint32_t valueOf(const CanvasColor& color) {
    return 0xFF000000U | static_cast<std::uint32_t>(color.red) << 16 | static_cast<std::uint32_t>(color.green) << 8 |
           color.blue;
}

bool isDark(std::uint32_t value) {
    return value >> 24 == 0xFF && (value >> 8 & 0xFF) < 0x70;
}

}  // namespace

TEST_F(SheetPreview, HasTheInkOfTheJobWhereTheJobHasIt) {
    expectInkOfJob("plain");
    instructions.isMirrored = true;
    expectInkOfJob("mirrored");
    instructions.isRotated = true;
    instructions.sides = Sides::longEdge;
    instructions.exceptions = {{.pages = {1, 2}, .shift = {36, 20}}};
    expectInkOfJob("mirrored, turned and shifted");
    instructions = {};
    instructions.paper.size = "A4";
    instructions.scaling.kind = Scaling::Kind::fit;
    instructions.orientation = Orientation::landscape;
    expectInkOfJob("made to fit");
    instructions = {};
    instructions.paper.size = "Letter";
    instructions.booklet = BookletInstruction{};
    expectInkOfJob("booklet");
}

TEST_F(SheetPreview, ShowsPaperAndWhatIsDoneToIt) {
    instructions.sides = Sides::longEdge;
    instructions.inserts = {{1, 1, {.color = "Yellow"}}};
    instructions.exceptions = {
        {.pages = {2, 3}, .paper = {.size = "9x11", .color = "Yellow", .type = "TabStock"}, .sides = Sides::one}};
    instructions.finishing.staples = "2Staples";
    instructions.isNegative = true;
    JobSheets job = plan();
    // A printed side is negative, a blank one and the cuts beside tabs are not. Staples are at the back seen right.
    const std::vector<CanvasPoint> points{{400, 20}, {20, 198}, {592, 198}};
    const std::vector<std::uint32_t> front = valuesAt(job, 0, false, points);
    EXPECT_TRUE(isDark(front[0]));
    EXPECT_FALSE(isDark(front[1]));
    const std::vector<std::uint32_t> back = valuesAt(job, 0, true, points);
    EXPECT_EQ(back[0], valueOf({255, 255, 255}));
    EXPECT_EQ(back[1], back[0]);
    EXPECT_NE(back[2], back[0]);
    EXPECT_EQ(valuesAt(job, 1, false, {{300, 400}})[0], valueOf(kYellow));

    instructions.isNegative = false;
    job = plan();
    const std::vector<CanvasPoint> tabs{{630, 720}, {630, 560}, {400, 20}};
    EXPECT_EQ(valuesAt(job, 2, false, tabs),
              (std::vector<std::uint32_t>{valueOf(kYellow), 0, valueOf(kYellow)}));  // the first tab of a bank
    EXPECT_EQ(valuesAt(job, 3, false, tabs), (std::vector<std::uint32_t>{0, valueOf(kYellow), valueOf(kYellow)}));
    instructions.paper = std::exchange(instructions.exceptions, {})[0].paper;
    instructions.hasBanner = true;
    EXPECT_NE(valuesAt(plan(), 1, false, tabs)[0], 0U) << "a banner page takes no tab of the bank";
}

// As Ghostscript draws them with the PPD's code.
TEST_F(SheetPreview, HasTheColorsOfTheJob) {
    const std::vector<CanvasPoint> points{{304, 104}, {304, 50}, {120, 160}};  // on the gray, the paper, and the black
    const auto with = [&](const ColorTones& tones) {
        JobSheets job = plan();
        job.tones = tones;
        return valuesAt(job, 0, false, points);
    };
    const std::uint32_t white = valueOf({255, 255, 255});
    const std::uint32_t black = valueOf({0, 0, 0});
    EXPECT_EQ(with({.contrast = 100}), with({}));
    EXPECT_EQ(with({.lightness = 50}), (std::vector{valueOf({157, 157, 157}), white, black}));
    EXPECT_EQ(with({.lightness = -50, .cyanRed = 100}), (std::vector{valueOf({128, 96, 96}), white, black}));
    EXPECT_EQ(with({.saturation = -100, .yellowBlue = -100}), (std::vector{valueOf({128, 128, 96}), white, black}));
    EXPECT_EQ(curvesOf({.contrast = 100})[0][64], 32);

    // What a queue asks for, and what the user asks for instead.
    printer = *openPPD(sourcePath("resources/ppd/Tavro-ZR840.ppd"));
    const std::string options = choice("TRLightness", "Custom.50") + choice("TRCyanRed", "Custom.100");
    instructions = session("", options)->instructions();
    EXPECT_EQ(plan().tones, (ColorTones{.lightness = 50, .cyanRed = 100}));
    instructions = session(item("FullColorOptions", dictionary(number("FCLightness", -50))), options)->instructions();
    EXPECT_EQ(plan().tones, (ColorTones{.lightness = -50, .cyanRed = 100}));
    printer = *openPPD(sourcePath("resources/ppd/Tavro-ZR420.ppd"));
    EXPECT_EQ(plan().tones, ColorTones()) << "which it has no options for";
    EXPECT_EQ(saturationOf({.saturation = -100}), 0);
}

// The options of the PPD end with their place: "2HolePunchL".
TEST_F(SheetPreview, HasTheMarksOfEachFinishingAtItsPlace) {
    const Size paper{612, 792};
    const auto marksOf = [&](SInt32 value) { return finishMarks({.value = value}, false, paper, true); };
    const auto count = [](const std::vector<FinishMark>& marks, FinishMark::Kind kind) {
        return std::ranges::count(marks, kind, &FinishMark::kind);
    };
    using Kind = FinishMark::Kind;
    for (const Finishing& row : Finishings()) {
        const auto marks = marksOf(row.value);
        const std::string_view option = row.option == nullptr ? "" : row.option;
        SCOPED_TRACE(option);
        if (row.part == FinishingPart::staple || row.part == FinishingPart::punch) {
            EXPECT_EQ(std::ssize(marks), option[0] - '0');
            EXPECT_EQ(count(marks, row.part == FinishingPart::staple ? Kind::staple : Kind::hole), std::ssize(marks));
            const std::string_view place = option.substr(option.find_last_not_of("TRBL") + 1);
            CanvasPoint sum{0, 0};
            for (const FinishMark& mark : marks) {
                const bool isHole = mark.kind == Kind::hole;
                const double x = isHole ? mark.from.x : (mark.from.x + mark.to.x) / 2;
                const double y = isHole ? mark.from.y : (mark.from.y + mark.to.y) / 2;
                EXPECT_TRUE(place.find('L') == place.npos || (x > 0 && x < 50));
                EXPECT_TRUE(place.find('R') == place.npos || (x > paper.width - 50 && x < paper.width));
                EXPECT_TRUE(place.find('B') == place.npos || (y > 0 && y < 50));
                EXPECT_TRUE(place.find('T') == place.npos || (y > paper.height - 50 && y < paper.height));
                sum = {sum.x + x, sum.y + y};
            }
            const bool isAcross = place == "T" || place == "B";
            const auto all = static_cast<double>(marks.size());
            EXPECT_TRUE(place.size() == 2 || std::abs(isAcross ? sum.x / all - 306 : sum.y / all - 396) < 1);
        } else if (option.find("Fold") != option.npos) {
            const bool isBooklet = option.starts_with("Bi") || row.value == kFinishingValueCustom;
            EXPECT_EQ(count(marks, Kind::fold), isBooklet ? 1 : 2);
            EXPECT_EQ(count(marks, Kind::turn), count(marks, Kind::fold));
            EXPECT_EQ(count(marks, Kind::trim), row.value == kFinishingValueCustom ? 2 : 0);
        } else {
            EXPECT_EQ(marks.empty(), row.value == kFinishingValueNone);
        }
    }
    EXPECT_EQ(marksOf(FinishingValueOf({.staple = 20, .punch = 61, .halfSheetFold = 90})).size(), 2u + 3u + 4u);
    EXPECT_TRUE(finishMarks({.value = 90}, false, paper, false).empty()) << "others are not folded";

    // Which way each fold goes, from the left or from below: the part before it, or behind, and to which side.
    const auto turnsOf = [&](SInt32 value, const Size& sheet) {
        std::string turns;
        for (const FinishMark& mark : finishMarks({.value = value}, false, sheet, true)) {
            if (mark.kind == Kind::turn) {
                const bool isForward = mark.to.x + mark.to.y > mark.from.x + mark.from.y;
                turns += std::string(isForward ? ">" : "<") + (mark.isAway ? "behind " : "over ");
            }
        }
        return turns;
    };
    const Size large{1224, 792};
    EXPECT_EQ(turnsOf(82, paper) + turnsOf(83, paper), ">over >behind ");
    EXPECT_EQ(turnsOf(84, paper), ">over <over ") << "C";
    EXPECT_EQ(turnsOf(85, large), ">behind <behind ");
    EXPECT_EQ(turnsOf(86, paper), ">behind <over ") << "Z";
    EXPECT_EQ(turnsOf(87, large), ">over <behind ");
    EXPECT_EQ(turnsOf(90, large) + turnsOf(91, large), ">over >behind <over <behind ") << "half sheets";

    // A screen of more pixels shows no other dashes.
    const auto dashesAt = [&](int scale) {
        const JobSheets job = plan();
        SheetView view = viewOf(job, 0);
        view = {0, false, view.width * scale, view.height * scale, static_cast<double>(scale)};
        const Pixels picture = draw(job, view);
        const FinishMark fold = marksOf(82).front();
        int dashes = 0;
        bool isInDash = false;
        for (double at = 0.1; at < 0.9; at += 0.0002) {
            const double x = fold.from.x + (fold.to.x - fold.from.x) * at;
            const double y = fold.from.y + (fold.to.y - fold.from.y) * at;
            const bool wasInDash =
                std::exchange(isInDash, valueAt(picture, placeSheet(job, view), x, y) << 8 < 0xC0000000);
            dashes += isInDash && !wasInDash ? 1 : 0;
        }
        return dashes;
    };
    instructions.finishing.value = 82;
    EXPECT_GT(dashesAt(1), 20);
    EXPECT_NEAR(dashesAt(2), dashesAt(1), 2);

    // The places are the sheet's, however the pages lie on it.
    const std::vector<CanvasPoint> corners{{26, 766}, {586, 766}, {586, 26}};
    const auto stapled = [&](bool isSide2) {
        std::vector<bool> found;
        for (const std::uint32_t value : valuesAt(plan(), 0, isSide2, corners)) {
            found.push_back(value != valueOf({255, 255, 255}));
        }
        return found;
    };
    instructions.finishing.value = 10;
    for (const Orientation orientation : {Orientation::portrait, Orientation::landscape}) {
        instructions.orientation = orientation;
        instructions.sides = Sides::longEdge;
        EXPECT_EQ(stapled(false), (std::vector<bool>{true, false, false}));
        EXPECT_EQ(stapled(true), (std::vector<bool>{false, true, false}));
        instructions.sides = Sides::shortEdge;
        EXPECT_EQ(stapled(true), (std::vector<bool>{false, false, false})) << "at the lower left";
    }
}

TEST_F(SheetPreview, HasPlacesForPagesThatCannotBeShown) {
    const JobSheets job = plan();
    const SheetView view = viewOf(job, 0);
    const SheetPlace place = placeSheet(job, view);
    const auto valueWith = [&](const PagePicture& found) {
        return valueAt(drawSheet(
                           job, view, [&](const PictureNeed&) { return found; }, bundle.get()),
                       place, 50, 50);
    };
    const std::uint32_t waiting = valueWith({});
    const std::uint32_t faulty = valueWith({nullptr, false, PageFault::crashes});
    EXPECT_NE(waiting, valueOf({255, 255, 255}));
    EXPECT_NE(faulty, valueOf({255, 255, 255}));
    EXPECT_NE(faulty, waiting);
    // A picture of another size does, until the right one comes.
    EXPECT_EQ(valueWith({std::make_shared<const Pixels>(Pixels{1, 1, {0xFF102030}})}), 0xFF102030);
    EXPECT_EQ(faultWords(picturesOf(job, view).at(0), PageFault::takesTooLong, bundle.get()),
              "Page 1 takes too long to draw.");
}

TEST_F(SheetPreview, SaysWhatItShows) {
    instructions.sides = Sides::longEdge;
    instructions.numberUp = 4;
    instructions.inserts = {{5, 1, {.color = "Yellow"}}};
    const JobSheets job = plan();
    const auto settings = session("");
    const auto words = [&](std::size_t sheet, bool isSide2) {
        return sheetWords(job, sheet, isSide2, *settings, bundle.get());
    };
    EXPECT_EQ(words(0, false), "Sheet 1 of 2, front: pages 1 to 4; Letter (8.5 x 11 in)");
    EXPECT_EQ(words(0, true), "Sheet 1 of 2, back: page 5; Letter (8.5 x 11 in)");
    EXPECT_EQ(words(1, false), "Sheet 2 of 2, front: insert, blank; Yellow, Letter (8.5 x 11 in)");
    EXPECT_EQ(sideWords(job, 0, true, bundle.get()), "of 2, back");
    EXPECT_EQ(stackWords(job, *settings, bundle.get()), "5 pages on 2 sheets, 1 of them Yellow");
}

TEST_F(SheetPreview, SaysWhatLiesOffsetAndWhatIsFolded) {
    printer = *openPPD(sourcePath("resources/ppd/Tavro-ZR840.ppd"));
    const auto settings = session("");
    instructions.finishing = {.value = 87, .offset = Offset::subsets, .pagesPerSubset = 2};
    instructions.copies = 3;
    const auto words = [&](std::size_t sheet) { return sheetWords(plan(), sheet, false, *settings, bundle.get()); };
    EXPECT_EQ(words(0), "Sheet 1 of 5, front: page 1; Letter (8.5 x 11 in); Z Fold, Print Outside; subset 1 of 3");
    EXPECT_TRUE(words(4).ends_with("; subset 3 of 3")) << words(4);
    EXPECT_EQ(stackWords(plan(), *settings, bundle.get()),
              "5 pages on 5 sheets, in 3 subsets of 2 pages, in each of 3 copies");
    instructions.finishing = {.value = 90, .offset = Offset::sets};
    instructions.exceptions = {{.pages = {5, 5}, .paper = {.size = "Tabloid"}}};
    EXPECT_EQ(words(0), "Sheet 1 of 5, front: page 1; Letter (8.5 x 11 in)");
    EXPECT_TRUE(words(4).ends_with("; Z Fold Half Sheet, Left")) << words(4);
    EXPECT_TRUE(stackWords(plan(), *settings, bundle.get()).ends_with("in each of 3 copies, each offset"));
}

TEST_F(SheetPreview, HasTheBannerPageInFrontOnce) {
    instructions.hasBanner = true;
    instructions.notes = {"Minutes", "Ann", "", "Third floor", "Mind the ink"};
    instructions.copies = 3;
    const JobSheets job = plan();
    const auto settings = session("");
    EXPECT_EQ(sheetWords(job, 0, false, *settings, bundle.get()),
              "Sheet 1 of 6, front: banner page, Minutes, from Ann, Third floor, Mind the ink");
    EXPECT_EQ(sheetWords(job, 1, false, *settings, bundle.get()), "Sheet 2 of 6, front: page 1; Letter (8.5 x 11 in)");
    EXPECT_EQ(stackWords(job, *settings, bundle.get()), "5 pages on 5 sheets, in each of 3 copies, and a banner page");
    std::set<std::uint32_t> values;
    for (const std::uint32_t value : draw(job, viewOf(job, 0)).values) {
        values.insert(value);
    }
    EXPECT_GT(values.size(), 10u) << "letters";
    EXPECT_EQ(planSheets(instructions, 5).sheets.size(), 5u) << "the printer makes it";
    instructions.kind = JobKind::fax;
    EXPECT_FALSE(plan().plan.hasBanner);
}

TEST_F(SheetPreview, IsTurnedOverSideBySideAndStaysAtItsPage) {
    instructions.sides = Sides::longEdge;
    instructions.inserts = {{2, 1, {.color = "Yellow"}}};
    const SheetPlan before = plan().plan;  // pages 1 and 2, the insert, 3 and 4, 5
    EXPECT_EQ(turned(before, {0, true}, 1), (ShownSide{1, false}));
    EXPECT_EQ(turned(before, {2, false}, -1).sheet, 1u);
    EXPECT_EQ(turned(before, {0, true}, -5), ShownSide());
    EXPECT_EQ(turned(before, {}, 50), lastSide(before));

    instructions.sides = Sides::one;
    const SheetPlan after = plan().plan;
    EXPECT_EQ(sideInstead(before, {2, true}, after), (ShownSide{4, false})) << "page 4";
    EXPECT_EQ(sideInstead(after, {4, false}, before), (ShownSide{2, true}));
    EXPECT_EQ(sideInstead(after, {2, false}, before), (ShownSide{2, false})) << "the insert has no page";
    EXPECT_EQ(sideInstead(before, {2, true}, SheetPlan()), ShownSide());
}
