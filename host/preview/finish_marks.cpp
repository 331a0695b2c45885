#include "host/preview/finish_marks.h"

#include "driver/job/instruction_values.h"
#include "host/preview/paper_look.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>

namespace {

struct OptionRow {
    std::string_view option;  // of StapleLocation or TRFoldOptions
    std::string_view finishing;
};
// What options of the PPD are, in the names of the finishing menu.
// clang-format off
constexpr std::array kOptions{
    // option                         finishing
    OptionRow{"1Staple",              "staple-top-left"},
    OptionRow{"2Staples",             "staple-dual-left"},
    OptionRow{"4Staples",             "staple-quad-left"},
    OptionRow{"HolePunch",            "punch-triple-left"},
    OptionRow{"2HolePunch",           "punch-dual-left"},
    OptionRow{"3HolePunch",           "punch-triple-left"},
    OptionRow{"4HolePunch",           "punch-quad-left"},
    OptionRow{"BookletFoldOpt",       "tavro-fold-booklet"},
    OptionRow{"BookletFoldStapleOpt", "saddle-stitch"},
    OptionRow{"CTriFoldOpt",          "tavro-fold-letter-inside"},
    OptionRow{"ZTriFoldOpt",          "tavro-fold-z-outside"},
};
static_assert(kOptions.size() == 11);

constexpr std::string_view kHalfSheetFold = "tavro-fold-half-z-";
constexpr std::string_view kBookletFold = "tavro-fold-booklet";

enum class Work { halfFold, cFold, zFold, halfSheetFold, booklet, trimmedBooklet, cornerStaple, staples, holes, tape };
struct WorkRow {
    std::string_view start;  // of the finishing; what follows is an edge, a corner, or the way of folding
    Work work;
    int count;               // of staples or holes
};
constexpr std::array kWorks{
    // start                          work                 count
    WorkRow{"tavro-staple-center-",   Work::staples,       1},
    WorkRow{"staple-dual-",           Work::staples,       2},
    WorkRow{"staple-quad-",           Work::staples,       4},
    WorkRow{"staple-",                Work::cornerStaple,  1},
    WorkRow{"bind-",                  Work::tape,          1},
    WorkRow{"punch-dual-",            Work::holes,         2},
    WorkRow{"punch-triple-",          Work::holes,         3},
    WorkRow{"punch-quad-",            Work::holes,         4},
    WorkRow{kHalfSheetFold,           Work::halfSheetFold, 0},
    WorkRow{"tavro-fold-letter-",     Work::cFold,         0},
    WorkRow{"tavro-fold-z-",          Work::zFold,         0},
    WorkRow{"tavro-fold-half-",       Work::halfFold,      0},
    WorkRow{kBookletFold,             Work::halfFold,      0},
    WorkRow{"saddle-stitch",          Work::booklet,       2},
    WorkRow{"booklet-maker",          Work::booklet,       2},
    WorkRow{"tavro-custom",           Work::trimmedBooklet, 2},
};
static_assert(kWorks.size() == 16);
// clang-format on

constexpr std::string_view kPrintInside = "inside";

constexpr double kStapleLength = 34;  // 12 mm
constexpr double kStapleDepth = 20;
constexpr double kTrim = 9;  // 3 mm

class Marks {
public:
    explicit Marks(const Size& paper) : paper_(paper) {}

    void add(std::string_view finishing) {
        const auto* const row =
            std::ranges::find_if(kWorks, [&](const WorkRow& each) { return finishing.starts_with(each.start); });
        if (row == kWorks.end()) {
            return;
        }
        const std::string_view place = finishing.substr(row->start.size());
        switch (row->work) {
            case Work::halfFold:
                return addFold(0.5, place != kPrintInside, true);
            case Work::cFold:
                return addCFold(place != kPrintInside);
            case Work::zFold:
                addFold(1.0 / 3, place == kPrintInside, true);
                return addFold(2.0 / 3, place != kPrintInside, false);
            case Work::halfSheetFold:
                return addHalfSheetFold(place);
            case Work::booklet:
                addFold(0.5, true, true);
                return addStaplesOnFold();
            case Work::trimmedBooklet:
                addFold(0.5, true, true);
                addStaplesOnFold();
                return addTrim();
            case Work::cornerStaple:
                return addCornerStaple(place);
            case Work::staples:
                return addStaples(row->count, place);
            case Work::holes:
                for (const double along : holePlaces(row->count, lengthOf(place))) {
                    add(FinishMark::Kind::hole, at(place, kHoleDepth, along), {});
                }
                return;
            case Work::tape: {
                const double end = lengthOf(place) / 2;
                return add(FinishMark::Kind::tape, at(place, kTapeWidth / 2, -end), at(place, kTapeWidth / 2, end));
            }
        }
    }

    [[nodiscard]] bool hasFold() const {
        return std::ranges::find(marks_, FinishMark::Kind::fold, &FinishMark::kind) != marks_.end();
    }

    std::vector<FinishMark> take() { return std::move(marks_); }

private:
    void add(FinishMark::Kind kind, const CanvasPoint& from, const CanvasPoint& to, bool isAway = false) {
        marks_.push_back({kind, from, to, isAway});
    }

    [[nodiscard]] double lengthOf(std::string_view edge) const {
        return edge == "top" || edge == "bottom" ? paper_.width : paper_.height;
    }
    /// A point as far from an edge, and from the middle of it to the right or upwards.
    [[nodiscard]] CanvasPoint at(std::string_view edge, double depth, double along) const {
        if (edge == "top" || edge == "bottom") {
            return {paper_.width / 2 + along, edge == "top" ? paper_.height - depth : depth};
        }
        return {edge == "right" ? paper_.width - depth : depth, paper_.height / 2 + along};
    }

    void addStaples(int count, std::string_view edge) {
        for (int i = 0; i < count; ++i) {
            const double middle = lengthOf(edge) * ((i + 0.5) / count - 0.5);
            add(FinishMark::Kind::staple, at(edge, kStapleDepth, middle - kStapleLength / 2),
                at(edge, kStapleDepth, middle + kStapleLength / 2));
        }
    }

    /// Across the corner.
    void addCornerStaple(std::string_view corner) {
        const bool isTop = corner.starts_with("top");
        const bool isLeft = corner.ends_with("left");
        constexpr double kNear = kStapleDepth - 6;
        constexpr double kFar = kNear + kStapleLength * 0.7;
        const auto point = [&](double across, double down) {
            return CanvasPoint{isLeft ? across : paper_.width - across, isTop ? paper_.height - down : down};
        };
        add(FinishMark::Kind::staple, point(kNear, kFar), point(kFar, kNear));
    }

    [[nodiscard]] double longSide() const { return std::max(paper_.width, paper_.height); }
    /// A point on the sheet, by its distance from the lower or left end of the long side, and along the other one.
    [[nodiscard]] CanvasPoint onSheet(double across, double along) const {
        return paper_.isLandscape() ? CanvasPoint{across, paper_.height - along} : CanvasPoint{along, across};
    }
    /// Lines across the long side.
    void addAcross(FinishMark::Kind kind, double part, bool isAway = false) {
        const double place = longSide() * part;
        add(kind, onSheet(place, 0), onSheet(place, std::min(paper_.width, paper_.height)), isAway);
    }
    /// What is folded is the part below the line, or left of it; else that above.
    void addFold(double part, bool isAway, bool isOfLowerPart) {
        constexpr double kHalfTurn = 24;
        constexpr double kAlong = 0.12;  // of the line
        addAcross(FinishMark::Kind::fold, part, isAway);
        const double place = longSide() * part;
        const double along = std::min(paper_.width, paper_.height) * kAlong;
        const double back = isOfLowerPart ? -kHalfTurn : kHalfTurn;
        add(FinishMark::Kind::turn, onSheet(place + back, along), onSheet(place - back, along), isAway);
    }
    /// The part that is folded first lies within the others and is shorter.
    void addCFold(bool isAway) {
        constexpr double kShorter = 9;  // 3 mm
        addFold(1.0 / 3 - kShorter * 2 / 3 / longSide(), isAway, true);
        addFold(2.0 / 3 - kShorter / 3 / longSide(), isAway, false);
    }
    /// Of a booklet, whose open edge is both ends of the sheet.
    void addTrim() {
        const double part = kTrim / longSide();
        addAcross(FinishMark::Kind::trim, part);
        addAcross(FinishMark::Kind::trim, 1 - part);
    }
    /// The half that is folded over, and back again, lies at that side, which is up on upright paper.
    void addHalfSheetFold(std::string_view side) {
        const bool isLower = (side == "left") == paper_.isLandscape();
        addFold(0.5, false, isLower);
        addFold(isLower ? 0.25 : 0.75, true, isLower);
    }

    void addStaplesOnFold() {
        for (const double part : {0.25, 0.75}) {
            const double middle = std::min(paper_.width, paper_.height) * part;
            const double half = kStapleLength / 2;
            if (paper_.isLandscape()) {
                add(FinishMark::Kind::staple, {paper_.width / 2, middle - half}, {paper_.width / 2, middle + half});
            } else {
                add(FinishMark::Kind::staple, {middle - half, paper_.height / 2}, {middle + half, paper_.height / 2});
            }
        }
    }

    Size paper_;
    std::vector<FinishMark> marks_;
};

}  // namespace

std::vector<FinishMark> finishMarks(const FinishingInstruction& finishing, bool isBooklet, const Size& paper,
                                    bool isHalfSheet) {
    Marks marks(paper);
    for (const std::string& option : {finishing.staples, finishing.folds}) {
        if (const auto* const row = std::ranges::find(kOptions, std::string_view(option), &OptionRow::option);
            row != kOptions.end()) {
            marks.add(row->finishing);
        }
    }
    for (const std::string& name : finishingsOf(finishing.value)) {
        if (isHalfSheet || !name.starts_with(kHalfSheetFold)) {
            marks.add(name);
        }
    }
    if (isBooklet && !marks.hasFold()) {
        marks.add(kBookletFold);
    }
    return marks.take();
}
