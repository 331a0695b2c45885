#include "platform/drawing/text_lines.h"
#include "platform/drawing/units.h"

#include <QFontMetricsF>

#include <algorithm>
#include <numeric>

namespace {

constexpr QChar kEllipsis(0x2026);

/// More than a page and a line have room for; the rest is not even laid out.
constexpr qsizetype kMostCharacters = 20'000;
constexpr qsizetype kMostCharactersInLine = 400;

/// Line breaks of all kinds as '\n', other control characters as blanks.
QString cleanText(const std::string& utf8) {
    QString text = textOf(utf8);
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    for (QChar& character : text) {
        switch (character.unicode()) {
            case '\n':
                break;
            case '\r':
            case QChar::LineSeparator:
            case QChar::ParagraphSeparator:
                character = QLatin1Char('\n');
                break;
            default:
                if (character.category() == QChar::Other_Control) {
                    character = QLatin1Char(' ');
                }
        }
    }
    return text;
}

}  // namespace

bool RunsRightToLeft(const std::string& text) {
    return textOf(text).isRightToLeft();
}

// ---- The lines

TextBlock::Lines::Lines(const QString& usedText, const QFont& usedFont, double usedWidth, TextSide usedSide)
    : font(usedFont), width(usedWidth), side(usedSide), text(usedText) {
    for (qsizetype start = 0; start <= text.size();) {
        const qsizetype lineBreak = text.indexOf(QLatin1Char('\n'), start);
        const qsizetype end = lineBreak < 0 ? text.size() : lineBreak;
        addParagraph(start, end - start);
        start = end + 1;
    }
}

void TextBlock::Lines::addParagraph(qsizetype start, qsizetype length) {
    const QString part = text.mid(start, length);
    const bool isRightToLeft = part.isRightToLeft();
    const bool toTheRight = side == TextSide::right || (side == TextSide::natural && isRightToLeft);
    QTextOption option((toTheRight ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute);
    option.setTextDirection(isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setUseDesignMetrics(true);
    QTextLayout& paragraph = *paragraphs.emplace_back(std::make_unique<QTextLayout>(part, font));
    paragraph.setTextOption(option);
    paragraph.beginLayout();
    for (QTextLine line = paragraph.createLine(); line.isValid(); line = paragraph.createLine()) {
        line.setLeadingIncluded(true);
        line.setLineWidth(width);
        line.setPosition({0, 0});
        lines.push_back({line, start + line.textStart()});
    }
    paragraph.endLayout();
}

void TextBlock::Lines::draw(QPainter* painter, QPointF place) const {
    for (const Line& line : lines) {
        line.set.draw(painter, place);
        place.ry() += line.set.height();
    }
}

void TextBlock::Lines::keep(int count) {
    if (static_cast<std::size_t>(count) < lines.size()) {
        lines.erase(lines.begin() + count, lines.end());
    }
}

void TextBlock::Lines::shortenTo(int count) {
    if (count < 1 || static_cast<std::size_t>(count) >= lines.size()) {
        return;
    }
    const qsizetype start = lines[static_cast<std::size_t>(count) - 1].start;
    keep(count - 1);
    // What follows the last line's text moves up into it, so that the ellipsis stands where the line is full.
    QString rest = text.mid(start);
    rest.replace(QLatin1Char('\n'), QLatin1Char(' '));
    rest = QFontMetricsF(font).elidedText(rest + kEllipsis, Qt::ElideRight, width);
    text = text.left(start) + rest;
    addParagraph(start, rest.size());
    keep(count);
}

// ---- The block

TextBlock::TextBlock(const std::string& text, const TextStyle& style, double width, TextSide side, int mostLines) {
    const qsizetype mostCharacters = mostLines == kAnyLines ? kMostCharacters : mostLines * kMostCharactersInLine;
    lines_ = std::make_unique<Lines>(cleanText(text).left(mostCharacters), pageFont(style.size, style.bold),
                                     width * kUnitsPerPoint, side);
    lines_->shortenTo(mostLines);
}

TextBlock::TextBlock(TextBlock&& other) noexcept = default;
TextBlock& TextBlock::operator=(TextBlock&& other) noexcept = default;
TextBlock::~TextBlock() = default;

double TextBlock::height() const {
    return std::accumulate(lines_->lines.begin(), lines_->lines.end(), 0.0,
                           [](double height, const Lines::Line& line) { return height + line.set.height(); }) /
           kUnitsPerPoint;
}

int TextBlock::linesWithin(double height) const {
    double rest = height * kUnitsPerPoint;
    const auto first = lines_->lines.begin();
    const auto outside = std::find_if(first, lines_->lines.end(), [&rest](const Lines::Line& line) {
        rest -= line.set.height();
        return rest < 0;
    });
    return static_cast<int>(outside - first);
}

double TextBlock::widestLine() const {
    double widest = 0;
    for (const Lines::Line& line : lines_->lines) {
        widest = std::max(widest, line.set.naturalTextWidth());
    }
    return widest / kUnitsPerPoint;
}

void TextBlock::keep(int lines) {
    lines_->keep(std::max(0, lines));
}
