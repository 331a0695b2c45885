#include "platform/toolbox/tab_order.h"

#include <QPlainTextEdit>

namespace {

bool isStop(const QWidget* widget) {
    return widget->focusPolicy() != Qt::NoFocus && widget->focusProxy() == nullptr;
}

}  // namespace

QWidgetList tabStopsIn(QWidget* widget) {
    QWidgetList stops;
    if (isStop(widget)) {
        stops.append(widget);
    }
    for (QWidget* step = widget->nextInFocusChain(); step != widget; step = step->nextInFocusChain()) {
        if (isStop(step) && widget->isAncestorOf(step)) {
            stops.append(step);
        }
    }
    return stops;
}

void orderTabStops(const QWidgetList& stops) {
    for (qsizetype i = 1; i < stops.size(); ++i) {
        QWidget::setTabOrder(stops[i - 1], stops[i]);
    }
}

QWidget* tabStopBeforeNextIn(QWidget* container) {
    if (const QWidgetList stops = tabStopsIn(container); !stops.isEmpty()) {
        return stops.last();
    }
    // Qt keeps no place in its order for a widget that takes no focus: the widgets before it in the tree tell.
    for (const QWidget* step = container; !step->isWindow(); step = step->parentWidget()) {
        QWidget* before = nullptr;
        for (QWidget* sibling : step->parentWidget()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
            if (sibling == step) {
                break;
            }
            const QWidgetList stops = sibling->isWindow() ? QWidgetList() : tabStopsIn(sibling);
            before = stops.isEmpty() ? before : stops.last();
        }
        if (before != nullptr) {
            return before;
        }
    }
    return nullptr;
}

void putTabStopsBehind(QWidget* before, QWidget* widget) {
    for (QWidget* stop : tabStopsIn(widget)) {
        if (before != nullptr) {
            QWidget::setTabOrder(before, stop);
        }
        before = stop;
    }
}

void focusFirstTabStop(QWidget* window) {
    for (QWidget* step = window->nextInFocusChain(); step != window; step = step->nextInFocusChain()) {
        const auto* text = qobject_cast<const QPlainTextEdit*>(step);
        const bool isReadOnly = text != nullptr && text->isReadOnly();
        const bool isUsable = (step->focusPolicy() & Qt::TabFocus) != 0 && step->isEnabled();
        if (isUsable && step->isVisibleTo(window) && !isReadOnly) {
            step->setFocus();
            return;
        }
    }
}
