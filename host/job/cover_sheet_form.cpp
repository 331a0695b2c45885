#include "host/job/cover_sheet_form.h"

#include <algorithm>

namespace {

constexpr double kMargin = 54;
constexpr double kColumnGap = 12;
constexpr double kAsideWidth = 176;
constexpr double kLeastLabelWidth = 54;
constexpr double kMostLabelWidth = 130;
constexpr double kRowGap = 3;
constexpr double kSectionGap = 11;  // above and below a rule

constexpr double kTitleSize = 38;
constexpr double kPictureWidth = 220;
constexpr double kPictureHeight = 76;
constexpr double kThickRule = 2.5;
constexpr double kThinRule = 1;  // more than a line of the coarse mode, so that it is never lost

}  // namespace

double CoverSheetForm::Row::height() const {
    return std::max({label.height(), value.height(), aside ? aside->height() : 0});
}

CoverSheetForm::CoverSheetForm(const std::string& title, double width, double height, bool fromRightToLeft)
    : page_(title, width, height),
      width_(width),
      height_(height),
      fromRightToLeft_(fromRightToLeft),
      labelWidth_(kLeastLabelWidth),
      top_(kMargin) {}

double CoverSheetForm::formWidth() const {
    return width_ - 2 * kMargin;
}

double CoverSheetForm::room() const {
    return height_ - kMargin - top_;
}

TextBlock CoverSheetForm::makeBlock(const std::string& text, const TextStyle& style, double width,
                                    int mostLines) const {
    return {text, style, width, fromRightToLeft_ ? TextSide::right : TextSide::left, mostLines};
}

void CoverSheetForm::place(const TextBlock& block, double indent, double width, double top) {
    page_.draw(block, fromRightToLeft_ ? width_ - kMargin - indent - width : kMargin + indent, top);
}

// ---- Making

void CoverSheetForm::fitLabels(const std::vector<std::string>& labels) {
    for (const std::string& label : labels) {
        labelWidth_ = std::max(labelWidth_, makeBlock(label, {kTextSize, true}, kMostLabelWidth, 2).widestLine() + 1);
    }
}

CoverSheetForm::Row CoverSheetForm::makeRow(const std::string& label, const std::string& value, int mostLines) const {
    const double width = formWidth() - labelWidth_ - kColumnGap;
    return {makeBlock(label, {kTextSize, true}, labelWidth_, 2), makeBlock(value, {kTextSize}, width, mostLines), {}};
}

CoverSheetForm::Row CoverSheetForm::makeRow(const std::string& label, const std::string& value,
                                            const std::string& aside, int mostLines) const {
    const double width = formWidth() - labelWidth_ - kAsideWidth - 2 * kColumnGap;
    return {makeBlock(label, {kTextSize, true}, labelWidth_, 2), makeBlock(value, {kTextSize}, width, mostLines),
            makeBlock(aside, {kTextSize}, kAsideWidth, 1)};
}

TextBlock CoverSheetForm::makeHeading(const std::string& label) const {
    return makeBlock(label, {kTextSize, true}, formWidth(), 1);
}

TextBlock CoverSheetForm::makeText(const std::string& text, double size) const {
    return {text, {size}, formWidth(), TextSide::natural};
}

// ---- Drawing

void CoverSheetForm::drawHead(const std::string& title, const Picture* picture) {
    const double width = formWidth() - (picture != nullptr ? kPictureWidth + kColumnGap : 0);
    const TextBlock words = makeBlock(title, {kTitleSize, true}, width, 1);
    const double height = picture != nullptr ? kPictureHeight : words.height();
    place(words, 0, width, top_ + height - words.height());
    if (picture != nullptr) {
        const double scale = std::min(kPictureWidth / picture->width(), kPictureHeight / picture->height());
        const double pictureWidth = picture->width() * scale;
        page_.draw(*picture, {fromRightToLeft_ ? kMargin : width_ - kMargin - pictureWidth, top_, pictureWidth,
                              picture->height() * scale});
    }
    top_ += height + kSectionGap;
    page_.drawRule(kMargin, top_, formWidth(), kThickRule);
    top_ += kThickRule + kSectionGap;
}

double CoverSheetForm::heightOf(const Section& section) {
    double height = section.empty() ? 0 : 2 * kSectionGap + kThinRule - kRowGap;
    for (const Row& row : section) {
        height += row.height() + kRowGap;
    }
    return height;
}

void CoverSheetForm::draw(const Section& section, bool isLast) {
    if (section.empty()) {
        return;
    }
    const double bottom = top_ + heightOf(section);
    for (const Row& row : section) {
        const double valueIndent = labelWidth_ + kColumnGap;
        place(row.label, 0, labelWidth_, top_);
        if (row.aside) {
            place(row.value, valueIndent, formWidth() - valueIndent - kAsideWidth - kColumnGap, top_);
            place(*row.aside, formWidth() - kAsideWidth, kAsideWidth, top_);
        } else {
            place(row.value, valueIndent, formWidth() - valueIndent, top_);
        }
        top_ += row.height() + kRowGap;
    }
    if (!isLast) {
        page_.drawRule(kMargin, bottom - kSectionGap - kThinRule, formWidth(), kThinRule);
    }
    top_ = bottom;
}

void CoverSheetForm::draw(const TextBlock& text) {
    page_.draw(text, kMargin, top_);
    top_ += text.height() + kRowGap;
}
