// Windows on screens that are smaller than they are.

#include "platform/toolbox/screen_fit.h"

#include "platform/toolbox/tab_order.h"

#include <QBoxLayout>
#include <QGuiApplication>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QWidget>
#include <QWindow>
#include <algorithm>

namespace {

constexpr int kFrame = 2;         // what a window manager puts beside a window
constexpr int kTitleBar = 36;     // and above it
constexpr int kNarrowMargin = 6;  // around a window that has no room to give away

bool fits(const QSize& size, const QSize& room) {
    return size.width() <= room.width() && size.height() <= room.height();
}

void moveItem(QLayoutItem* item, Qt::Alignment alignment, QBoxLayout* to) {
    if (QLayout* const layout = item->layout()) {
        layout->setParent(nullptr);
        to->addLayout(layout);
        to->setAlignment(layout, alignment);
    } else if (QWidget* const widget = item->widget()) {
        to->addWidget(widget, 0, alignment);
        delete item;
    } else {
        to->addItem(item);
    }
}

/// Puts everything but the last row into an area that scrolls.
void makeScrolling(QWidget* window, QBoxLayout* rows) {
    // Widgets that get another parent lose focus and place.
    const QWidgetList stops = tabStopsIn(window);
    QWidget* const focused = window->focusWidget();
    auto* const content = new QWidget;
    auto* const contentRows = new QVBoxLayout(content);
    contentRows->setContentsMargins(0, 0, 0, 0);
    contentRows->setSpacing(rows->spacing());
    while (rows->count() > 1) {
        const int stretch = rows->stretch(0);
        QLayoutItem* const item = rows->takeAt(0);
        moveItem(item, item->alignment(), contentRows);
        contentRows->setStretch(contentRows->count() - 1, stretch);
    }
    auto* const area = new QScrollArea(window);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    area->setWidget(content);
    rows->insertWidget(0, area, 1);
    // The last row as well: what stays where it is would come first.
    auto* const footer = new QWidget;
    auto* const footerRows = new QVBoxLayout(footer);
    footerRows->setContentsMargins(0, 0, 0, 0);
    QLayoutItem* const last = rows->takeAt(1);
    moveItem(last, last->alignment(), footerRows);
    rows->addWidget(footer);
    orderTabStops(stops);
    if (focused != nullptr) {
        focused->setFocus();
    } else if (QWidget* const other = window->focusWidget()) {
        other->clearFocus();
    }
    const QMargins margins = rows->contentsMargins();
    rows->setContentsMargins(std::min(margins.left(), kNarrowMargin), std::min(margins.top(), kNarrowMargin),
                             std::min(margins.right(), kNarrowMargin), std::min(margins.bottom(), kNarrowMargin));
}

/// No larger than its screen.
void fit(QWidget* window) {
    auto* const rows = qobject_cast<QVBoxLayout*>(window->layout());
    const QSize room = roomOnScreen(window).size();
    QSize wanted = window->testAttribute(Qt::WA_Resized) ? window->size() : window->sizeHint();
    if (rows == nullptr || fits(wanted, room)) {
        return;
    }
    rows->setSizeConstraint(QLayout::SetMinimumSize);
    if (!fits(rows->totalMinimumSize(), room) && rows->count() > 1) {
        makeScrolling(window, rows);
        wanted.rwidth() += window->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, window);
    }
    window->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    rows->activate();  // which gives up the smallest size that the window had
    window->resize(wanted.boundedTo(room));
}

/// Over the middle of the parent, as far as the screen goes.
void centerOver(QWidget* window, const QWidget* parent) {
    const QRect place = parent->screen()->availableGeometry();
    QRect rect(QPoint(0, 0), window->testAttribute(Qt::WA_Resized) ? window->size() : window->sizeHint());
    rect.moveCenter(parent->frameGeometry().center());
    window->move(movedInto(place.adjusted(0, 0, -kFrame, -kTitleBar), rect).topLeft());
}

}  // namespace

QRect movedInto(const QRect& place, QRect rect) {
    rect.moveLeft(std::max(place.left(), std::min(rect.left(), place.right() + 1 - rect.width())));
    rect.moveTop(std::max(place.top(), std::min(rect.top(), place.bottom() + 1 - rect.height())));
    return rect;
}

bool isScreenSeen() {
    return QGuiApplication::platformName() != QLatin1String("offscreen") ||
           qgetenv("QT_QPA_PLATFORM").contains("configfile");
}

QRect roomOnScreen(const QWidget* window) {
    constexpr int kEndless = 30000;
    return isScreenSeen() ? window->screen()->availableGeometry().adjusted(kFrame, kTitleBar, -kFrame, -kFrame)
                          : QRect(0, 0, kEndless, kEndless);
}

void placeOnScreen(QWidget* window, const QWidget* parent) {
    if (parent != nullptr) {
        window->setScreen(parent->screen());
        window->winId();  // makes its handle
        window->windowHandle()->setTransientParent(parent->windowHandle());
    }
    if (!isScreenSeen()) {
        return;
    }
    fit(window);
    if (parent != nullptr && !window->testAttribute(Qt::WA_Moved)) {
        centerOver(window, parent);
    }
}

void scrollTo(QWidget* widget) {
    for (QWidget* above = widget->parentWidget(); above && !widget->isWindow(); above = above->parentWidget()) {
        if (auto* area = qobject_cast<QScrollArea*>(above)) {
            area->ensureWidgetVisible(widget);
        }
    }
}
