#include "host/preview/sheet_picture.h"

#include "host/preview/color_curves.h"
#include "host/preview/finish_marks.h"
#include "host/preview/sheet_words.h"
#include "host/settings/texts.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <cmath>

namespace {

using What = PictureNeed::What;

constexpr CanvasColor kClear{0, 0, 0, 0};
constexpr CanvasColor kWhite{255, 255, 255};
constexpr CanvasColor kWaiting{238, 238, 238};
constexpr CanvasColor kEdge{128, 128, 128};
constexpr CanvasColor kOutline{0, 0, 0};
constexpr CanvasColor kHole{88, 88, 88};
constexpr CanvasColor kStaple{70, 74, 84};
constexpr CanvasColor kStapleLight{216, 220, 228};
constexpr CanvasColor kFold{60, 110, 190};
constexpr CanvasColor kTrim{178, 40, 32};
constexpr CanvasColor kTape{60, 64, 78, 200};
constexpr CanvasColor kFault{178, 40, 32};
constexpr CanvasColor kFaultGround{253, 240, 238};

CanvasPoint through(const Matrix& matrix, double x, double y) {
    return {matrix.a * x + matrix.c * y + matrix.e, matrix.b * x + matrix.d * y + matrix.f};
}

CanvasShape through(const Matrix& matrix, CanvasShape shape) {
    std::ranges::transform(shape, shape.begin(),
                           [&matrix](const CanvasPoint& point) { return through(matrix, point.x, point.y); });
    return shape;
}

/// A picture on its sheet: what of it, and from its corners to pixels.
struct PlacedPicture {
    PictureNeed need;
    Matrix unit;  // from a square of 1
    bool hasOutline = false;
    Matrix matrix;  // from the page

    [[nodiscard]] CanvasShape corners() const { return through(unit, {{0, 0}, {1, 0}, {1, 1}, {0, 1}}); }
};

/// The rectangle that a page takes up has its corners on whole pixels, so that its picture is shown as it was drawn.
/// Pages lie at right angles.
PlacedPicture placedOn(const Matrix& toPicture, double left, double bottom, const Size& size) {
    const auto corner = [&](double x, double y) {
        const CanvasPoint exact = through(toPicture, x, y);
        return CanvasPoint{std::round(exact.x), std::round(exact.y)};
    };
    const CanvasPoint origin = corner(left, bottom);
    const CanvasPoint right = corner(left + size.width, bottom);
    const CanvasPoint top = corner(left, bottom + size.height);
    PlacedPicture placed{};
    placed.unit = {right.x - origin.x, right.y - origin.y, top.x - origin.x, top.y - origin.y, origin.x, origin.y};
    placed.matrix = toPicture;
    const auto pixels = [](double x, double y) {
        return std::clamp(static_cast<int>(std::lround(std::hypot(x, y))), 1, kLongestPictureSide);
    };
    placed.need.view.width = pixels(placed.unit.a, placed.unit.b);
    placed.need.view.height = pixels(placed.unit.c, placed.unit.d);
    return placed;
}

/// From the bottom to the top.
std::vector<PlacedPicture> placePictures(const JobSheets& job, const SheetView& view, const SheetPlace& place) {
    const Sheet& sheet = job.plan.sheets[view.sheet];
    const PaperShape& paper = job.papers[sheet.paper];
    std::vector<PlacedPicture> all;
    if (sheet.kind == SheetKind::faxCover) {
        if (!view.isSide2 && job.faxCover.width > 0) {
            const Matrix matrix = placeWholePage(job.faxCover, job.layout, paper) * place.toPicture;
            all.push_back(placedOn(matrix, 0, 0, job.faxCover));
            all.back().need.what = What::faxCover;
        }
        return all;
    }
    for (const PlacedPage& page : placePages(job.plan, sheet, view.isSide2, job.layout, *job.pages, paper)) {
        PlacedPicture placed =
            placedOn(page.matrix * place.toPicture, 0, 0, (*job.pages)[static_cast<std::size_t>(page.page)]);
        placed.need.view.page = page.page;
        placed.hasOutline = page.hasOutline;
        if (!job.mark || (job.mark->isOnFirstPageOnly && page.page != job.plan.firstPage)) {
            all.push_back(placed);
            continue;
        }
        // What of it can be on the paper.
        const double longest = std::max(paper.size.width, paper.size.height);
        PlacedPicture mark = placedOn(page.mark * place.toPicture, -longest / 2, -longest / 2, {longest, longest});
        mark.need.what = What::mark;
        mark.need.view.partWidth = longest;
        mark.need.view.partHeight = longest;
        all.push_back(mark);
        all.push_back(placed);
    }
    return all;
}

CanvasMatrix canvasMatrix(const Matrix& matrix) {
    return {matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f};
}

class SheetPainter {
public:
    SheetPainter(const JobSheets& job, const SheetView& view, const PictureFinder& find, CFBundleRef texts)
        : job_(job),
          view_(view),
          find_(find),
          texts_(texts),
          sheet_(job.plan.sheets[view.sheet]),
          place_(placeSheet(job, view)),
          outline_(through(place_.toPicture, place_.look.outline)),
          canvas_(view.width, view.height, kClear) {}

    Pixels draw() {
        canvas_.fill(outline_, place_.look.color);
        printPages();
        canvas_.outline(outline_, view_.scale, kEdge);
        if (sheet_.kind == SheetKind::banner) {
            drawBanner();
            return canvas_.finish();
        }
        for (const CanvasPoint& hole : place_.look.holes) {
            drawHole(through(place_.toPicture, hole.x, hole.y));
        }
        finish();
        return canvas_.finish();
    }

private:
    void printPages() {
        const std::vector<PlacedPicture> pictures = placePictures(job_, view_, place_);
        if (pictures.empty()) {
            return;
        }
        PixelCanvas ink(view_.width, view_.height, kWhite);
        std::vector<std::pair<PlacedPicture, PageFault>> faults;
        for (const PlacedPicture& placed : pictures) {
            const PagePicture found = find_(placed.need);
            if (found.pixels) {
                ink.print(*found.pixels, canvasMatrix(placed.unit));
            } else if (found.fault != PageFault::none) {
                faults.emplace_back(placed, found.fault);
            } else if (placed.need.what != What::mark) {
                ink.fill(placed.corners(), kWaiting);
            }
            if (placed.hasOutline) {
                drawOutline(&ink, placed);
            }
        }
        changeColors(&ink);
        // A side on which nothing is printed stays as it is.
        if (job_.isNegative && !job_.plan.isBlank(view_.isSide2 ? sheet_.side2 : sheet_.side1)) {
            ink.invert();
        }
        const auto width = static_cast<double>(view_.width);
        const auto height = static_cast<double>(view_.height);
        canvas_.print(ink.finish(), {width, 0, 0, -height, 0, height}, outline_);
        for (const auto& [placed, fault] : faults) {
            drawFault(placed, fault);
        }
    }

    void changeColors(PixelCanvas* ink) const {
        if (job_.tones.saturation != 0) {
            ink->saturate(saturationOf(job_.tones));
        }
        if (job_.isBlackAndWhite) {
            ink->makeGray();
        }
        ColorTones tones = job_.tones;
        if (job_.isBlackAndWhite) {  // no colors are left that a cast could change
            tones.cyanRed = tones.magentaGreen = tones.yellowBlue = 0;
        }
        if (tones != ColorTones()) {
            ink->bend(curvesOf(tones));
        }
    }

    void drawOutline(PixelCanvas* ink, const PlacedPicture& placed) const {
        const Size& page = (*job_.pages)[static_cast<std::size_t>(placed.need.view.page)];
        // The matrix leads to pixels, of which `factor` are one of the paper's points.
        const PageOutline line = outlineOf(placed.matrix);
        const double inset = line.inset * place_.factor;
        const double thickness = line.thickness * place_.factor * std::hypot(placed.matrix.a, placed.matrix.b);
        const CanvasShape box{{inset, inset},
                              {page.width - inset, inset},
                              {page.width - inset, page.height - inset},
                              {inset, page.height - inset}};
        ink->outline(through(placed.matrix, box), std::max(thickness, view_.scale / 2), kOutline);
    }

    /// A sign, and words where there is room for them.
    void drawFault(const PlacedPicture& placed, PageFault fault) {
        if (placed.need.what == What::mark) {
            return;  // the dialog tells of it before it prints
        }
        const CanvasShape corners = placed.corners();
        canvas_.fill(corners, kFaultGround);
        canvas_.outline(corners, view_.scale, kFault);
        const auto [left, right] = std::ranges::minmax(corners, {}, &CanvasPoint::x);
        const auto [top, bottom] = std::ranges::minmax(corners, {}, &CanvasPoint::y);
        const CanvasPoint middle{(left.x + right.x) / 2, (top.y + bottom.y) / 2};
        const double size = std::min({right.x - left.x, bottom.y - top.y, 72 * view_.scale}) / 4;
        const CanvasPoint sign{middle.x, middle.y - size * 1.6};
        canvas_.fill({{sign.x, sign.y - size}, {sign.x + size, sign.y + size}, {sign.x - size, sign.y + size}}, kFault);
        canvas_.fill({{sign.x - size * 0.1, sign.y - size * 0.4},
                      {sign.x + size * 0.1, sign.y - size * 0.4},
                      {sign.x + size * 0.06, sign.y + size * 0.35},
                      {sign.x - size * 0.06, sign.y + size * 0.35}},
                     kWhite);
        canvas_.disk({sign.x, sign.y + size * 0.65}, size * 0.13, kWhite);
        drawWords(placed, fault, (right.x - left.x) * 0.9, {middle.x, middle.y});
    }

    void drawWords(const PlacedPicture& placed, PageFault fault, double width, const CanvasPoint& top) {
        constexpr double kTextSize = 9;
        constexpr double kLeastWidth = 60;
        constexpr int kMostLines = 4;
        if (texts_ == nullptr || width < kLeastWidth * view_.scale) {
            return;
        }
        const TextBlock text(faultWords(placed.need, fault, texts_), {kTextSize}, width / view_.scale,
                             TextSide::natural, kMostLines);
        canvas_.draw(text, top.x - text.widestLine() * view_.scale / 2, top.y, view_.scale);
    }

    /// The printer's own page is not known, only what it says; the texts are as large as can be read.
    void drawBanner() {
        constexpr double kTitleSize = 14;
        constexpr double kTextSize = 10;
        constexpr double kGap = 8;
        constexpr double kMargin = 0.08;
        if (texts_ == nullptr) {
            return;
        }
        const auto across = std::ranges::minmax(outline_, {}, &CanvasPoint::x);
        const auto down = std::ranges::minmax(outline_, {}, &CanvasPoint::y);
        const double margin = (across.max.x - across.min.x) * kMargin;
        const double width = (across.max.x - across.min.x - 2 * margin) / view_.scale;
        double at = down.min.y + margin;
        const auto add = [&](const std::string& words, const TextStyle& style) {
            TextBlock text(words, style, width, TextSide::natural);
            text.keep(std::max(0, text.linesWithin((down.max.y - margin - at) / view_.scale)));
            canvas_.draw(text, across.min.x + margin, at, view_.scale);
            at += (text.height() + kGap) * view_.scale;
        };
        add(utf8Text(localized(texts_, CFSTR("Preview Banner Title")).get()), {kTitleSize, true});
        for (const std::string& words : bannerWords(job_, texts_)) {
            add(words, {kTextSize});
        }
    }

    void drawHole(const CanvasPoint& middle) { canvas_.disk(middle, kHoleRadius * place_.factor, kHole); }

    void finish() {
        if (!job_.isFinished(sheet_)) {
            return;
        }
        const Size& paper = job_.papers[sheet_.paper].size;
        for (const FinishMark& mark :
             finishMarks(job_.finishing, job_.layout.isBooklet, paper, job_.isHalfSheet(sheet_))) {
            const auto seen = [&](const CanvasPoint& point) {
                const CanvasPoint side = view_.isSide2 ? turnedOver(point, paper, sheet_.sides) : point;
                return through(place_.toPicture, side.x, side.y);
            };
            drawMark(mark.kind, seen(mark.from), seen(mark.to), mark.isAway != view_.isSide2);
        }
    }

    /// `isBehind` is the part that is folded, as the sheet is seen.
    void drawMark(FinishMark::Kind kind, const CanvasPoint& from, const CanvasPoint& to, bool isBehind) {
        constexpr double kStapleThickness = 2.5;
        constexpr double kDashes = 4;
        constexpr double kDots = 1.5;
        const double scale = view_.scale;
        switch (kind) {
            case FinishMark::Kind::staple:
                canvas_.line({from, to}, (kStapleThickness + 1) * scale, kStaple);
                canvas_.line({from, to}, (kStapleThickness - 1) * scale, kStapleLight);
                break;
            case FinishMark::Kind::hole:
                drawHole(from);
                break;
            case FinishMark::Kind::fold:
                canvas_.line({from, to}, scale, kFold, (isBehind ? kDots : kDashes) * scale);
                break;
            case FinishMark::Kind::turn:
                drawArrow(from, to, isBehind);
                break;
            case FinishMark::Kind::trim:
                canvas_.line({from, to}, scale, kTrim);
                break;
            case FinishMark::Kind::tape:
                canvas_.line({from, to}, kTapeWidth * place_.factor, kTape);
                break;
        }
    }

    /// In front of the sheet with a full head, behind it with an open one.
    void drawArrow(const CanvasPoint& from, const CanvasPoint& to, bool isBehind) {
        constexpr double kHead = 0.4;
        constexpr double kThickness = 1.5;
        constexpr double kDots = 1.5;
        const double scale = view_.scale;
        const CanvasPoint way{to.x - from.x, to.y - from.y};
        const CanvasPoint neck{to.x - way.x * kHead, to.y - way.y * kHead};
        const CanvasPoint half{-way.y * kHead / 2, way.x * kHead / 2};
        const CanvasShape head{{neck.x + half.x, neck.y + half.y}, to, {neck.x - half.x, neck.y - half.y}};
        canvas_.line({from, isBehind ? to : neck}, kThickness * scale, kFold, isBehind ? kDots * scale : 0);
        if (isBehind) {
            canvas_.line(head, kThickness * scale, kFold);
        } else {
            canvas_.fill(head, kFold);
        }
    }

    const JobSheets& job_;
    const SheetView& view_;
    const PictureFinder& find_;
    CFBundleRef texts_;
    const Sheet& sheet_;
    SheetPlace place_;
    CanvasShape outline_;
    PixelCanvas canvas_;
};

}  // namespace

std::vector<PictureNeed> picturesOf(const JobSheets& job, const SheetView& view) {
    std::vector<PictureNeed> needs;
    for (const PlacedPicture& placed : placePictures(job, view, placeSheet(job, view))) {
        if (std::ranges::find(needs, placed.need) == needs.end()) {
            needs.push_back(placed.need);
        }
    }
    return needs;
}

Pixels drawSheet(const JobSheets& job, const SheetView& view, const PictureFinder& find, CFBundleRef texts) {
    return SheetPainter(job, view, find, texts).draw();
}
