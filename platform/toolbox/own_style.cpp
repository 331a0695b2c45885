#include "platform/toolbox/own_style.h"

#include <qdrawutil.h>
#include <QApplication>
#include <QGroupBox>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QProxyStyle>
#include <QStyleOption>
#include <QTextLayout>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace {

constexpr std::array kFrames{QStyle::PE_IndicatorCheckBox,  QStyle::PE_IndicatorRadioButton,
                             QStyle::PE_FrameLineEdit,      QStyle::PE_Frame,
                             QStyle::PE_PanelButtonCommand, QStyle::PE_PanelButtonTool};
constexpr std::array kControls{QStyle::CC_ComboBox, QStyle::CC_SpinBox, QStyle::CC_Slider};

constexpr int kWhite = 255;

bool isDark(const QPalette& palette) {
    return palette.window().color().lightness() < palette.windowText().color().lightness();
}

/// Whether the colors are those of somebody who needs all the contrast that there is: a theme of black and white.
bool hasHighContrast(const QPalette& palette) {
    return std::abs(palette.window().color().lightness() - palette.windowText().color().lightness()) == kWhite;
}

QColor outlineIn(const QPalette& palette) {
    constexpr int kTextParts = 9;  // of 20; the rest is the window's
    const QColor window = palette.window().color();
    const QColor text = palette.windowText().color();
    if (hasHighContrast(palette)) {
        return text;
    }
    const auto mix = [](int one, int other) { return (one * kTextParts + other * (20 - kTextParts)) / 20; };
    return {mix(text.red(), window.red()), mix(text.green(), window.green()), mix(text.blue(), window.blue())};
}

/// Whether Qt's own outlines would hardly be seen.
bool needsOutlines(const QPalette& palette) {
    return isDark(palette) || hasHighContrast(palette);
}

/// Qt's style makes an outline of the window's color, darkened by this.
constexpr int kDarkening = 140;

constexpr int kAlignments = Qt::AlignHorizontal_Mask | Qt::AlignVertical_Mask;

constexpr int kMenuArrow = 8;
// Whole pixels on screens of any usual scale:
constexpr int kButtonEnd = 8;
constexpr int kNarrowButton = 20;
constexpr int kBelowTitle = 3;

/// The place of the letter for the keyboard in the text without ampersands; -1 when there is none.
qsizetype takeLetter(QString* text) {
    qsizetype letter = -1;
    for (qsizetype i = 0; i < text->size(); ++i) {
        if ((*text)[i] == u'&') {
            text->remove(i, 1);
            letter = letter < 0 && i < text->size() && (*text)[i] != u'&' ? i : letter;
        }
    }
    return letter;
}

class OwnStyle final : public QProxyStyle {
public:
    /// Qt draws an underlined letter by itself, which tears words apart whose letters join. Here the word is drawn
    /// whole, and the line below it.
    void drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette, bool isEnabled,
                      const QString& text, QPalette::ColorRole role) const override {
        QString plain = text;
        const qsizetype letter = (flags & Qt::TextShowMnemonic) != 0 ? takeLetter(&plain) : -1;
        if (letter < 0 || plain[letter].joiningType() == QChar::Joining_None) {
            QProxyStyle::drawItemText(painter, rect, flags, palette, isEnabled, text, role);
            return;
        }
        const int hidden = (flags & ~int(Qt::TextShowMnemonic)) | Qt::TextHideMnemonic;
        QProxyStyle::drawItemText(painter, rect, hidden, palette, isEnabled, text, role);
        QTextLayout layout(plain, painter->font(), painter->device());
        layout.beginLayout();
        const QTextLine line = layout.createLine();
        layout.endLayout();
        const QSize size(int(std::ceil(line.naturalTextWidth())), int(std::ceil(line.height())));
        if (size.width() > rect.width()) {
            return;  // in several lines, or cut
        }
        const QRect place = alignedRect(painter->layoutDirection(), Qt::Alignment(flags & kAlignments), size, rect);
        const auto [left, right] = std::minmax({line.cursorToX(int(letter)), line.cursorToX(int(letter) + 1)});
        const QFontMetricsF metrics(painter->font(), painter->device());
        painter->fillRect(QRectF(place.left() + left, place.top() + metrics.ascent() + metrics.underlinePos(),
                                 right - left, metrics.lineWidth()),
                          role != QPalette::NoRole ? palette.brush(role) : painter->pen().brush());
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        if (option != nullptr && needsOutlines(option->palette) && element == PE_FrameGroupBox) {
            // The title stands above the frame, as far as Qt's style has it.
            const auto* const box = qobject_cast<const QGroupBox*>(widget);
            const int title = std::max(pixelMetric(PM_IndicatorHeight, option, widget), option->fontMetrics.height());
            const int top = box != nullptr && !box->title().isEmpty() ? title + kBelowTitle : 0;
            painter->setPen(outlineIn(option->palette));
            painter->drawRect(option->rect.adjusted(0, top, -1, -1));
            return;
        }
        const bool isFrame = std::ranges::find(kFrames, element) != kFrames.end();
        const Outlined outlined(isFrame ? option : nullptr, &palettes_);
        const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(option);
        if (element == PE_PanelButtonCommand && button != nullptr && canBeWidened(*button, *painter)) {
            drawButton(*button, painter, widget);
            return;
        }
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        const auto* const frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
        const bool isLine = element == CE_ShapedFrame && frame != nullptr &&
                            (frame->frameShape == QFrame::HLine || frame->frameShape == QFrame::VLine);
        if (isLine && hasHighContrast(frame->palette)) {
            const QPoint middle = frame->rect.center();
            painter->setPen(outlineIn(frame->palette));
            if (frame->frameShape == QFrame::HLine) {
                painter->drawLine(frame->rect.left(), middle.y(), frame->rect.right(), middle.y());
            } else {
                painter->drawLine(middle.x(), frame->rect.top(), middle.x(), frame->rect.bottom());
            }
            return;
        }
        QProxyStyle::drawControl(element, option, painter, widget);
    }

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override {
        const bool isFrame = std::ranges::find(kControls, control) != kControls.end();
        const Outlined outlined(isFrame ? option : nullptr, &palettes_);
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    }

    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override {
        QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        const auto* const button = qstyleoption_cast<const QStyleOptionToolButton*>(option);
        if (type == CT_ToolButton && button != nullptr && (button->features & QStyleOptionToolButton::HasMenu) &&
            !button->text.isEmpty()) {
            size.rwidth() += 2 * kMenuArrow;  // the text stands in the middle
        }
        return size;
    }

private:
    /// Two that belong together: what Qt draws is kept by the palette, so each gets one other only.
    using Palettes = std::pair<QPalette, QPalette>;

    /// An option with a window's color from which Qt makes the outline that is wanted, for a scope.
    class Outlined {
    public:
        Outlined(const QStyleOption* option, Palettes* palettes)
            : option_(const_cast<QStyleOption*>(option)) {  // its owner's, and given back as it was
            if (option_ == nullptr || !needsOutlines(option_->palette) ||
                option_->palette.cacheKey() == palettes->second.cacheKey()) {
                option_ = nullptr;
                return;
            }
            if (option_->palette.cacheKey() != palettes->first.cacheKey()) {
                *palettes = {option_->palette, option_->palette};
                palettes->second.setColor(QPalette::Window, outlineIn(option_->palette).lighter(kDarkening));
            }
            kept_ = std::exchange(option_->palette, palettes->second);
        }
        ~Outlined() {
            if (option_ != nullptr) {
                option_->palette = kept_;
            }
        }
        Outlined(const Outlined&) = delete;
        Outlined& operator=(const Outlined&) = delete;

    private:
        QStyleOption* option_;
        QPalette kept_;
    };

    static bool canBeWidened(const QStyleOptionButton& option, const QPainter& painter) {
        const QRectF pixels = painter.deviceTransform().mapRect(QRectF(option.rect));
        return option.rect.width() > kNarrowButton && !(option.features & QStyleOptionButton::Flat) &&
               pixels == QRectF(pixels.toRect());
    }

    /// Qt's button is the same all along but for its ends, and its smooth corners take longest to draw of all that a
    /// window shows. So a narrow one is drawn, once for buttons that look the same, and put as wide as it has to be.
    void drawButton(const QStyleOptionButton& option, QPainter* painter, const QWidget* widget) const {
        const double scale = painter->device()->devicePixelRatio();
        const QString key = QStringLiteral("tavro-button-%1-%2-%3-%4-%5")
                                .arg(option.palette.cacheKey())
                                .arg(QStyle::State::Int(option.state))
                                .arg(option.features.toInt())
                                .arg(option.rect.height())
                                .arg(scale);
        QPixmap narrow;
        if (!QPixmapCache::find(key, &narrow)) {
            QStyleOptionButton drawn(option);
            drawn.rect = {0, 0, kNarrowButton, option.rect.height()};
            narrow = QPixmap((QSizeF(drawn.rect.size()) * scale).toSize());
            narrow.setDevicePixelRatio(scale);
            narrow.fill(Qt::transparent);
            QPainter narrowPainter(&narrow);
            QProxyStyle::drawPrimitive(PE_PanelButtonCommand, &drawn, &narrowPainter, widget);
            narrowPainter.end();
            QPixmapCache::insert(key, narrow);
        }
        const int end = qRound(kButtonEnd * scale);
        qDrawBorderPixmap(painter, option.rect, {kButtonEnd, 0, kButtonEnd, 0}, narrow, narrow.rect(),
                          {end, 0, end, 0});
    }

    mutable Palettes palettes_;
};

}  // namespace

void improveOwnStyle(QApplication* application) {
    if (QApplication::style()->name() == QLatin1String("fusion")) {
        application->setStyle(new OwnStyle);
    }
}
