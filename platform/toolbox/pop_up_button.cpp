#include "platform/toolbox/pop_up_button.h"

#include "platform/toolbox/objects.h"

#include <QKeyEvent>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace {

// Qt's closed pop-up goes to another item by its place, and by the letter that it begins with, whatever is held down.

bool isPlaceKey(const QKeyEvent& key) {
    switch (key.key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
        case Qt::Key_Home:
        case Qt::Key_End:
            return true;
        default:
            return false;
    }
}

bool isLetterKey(const QKeyEvent& key) {
    return !key.text().isEmpty() && key.text().front().isPrint();
}

bool isCommandKey(const QKeyEvent& key) {
    return key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
}

}  // namespace

void PopUpButton::showPopup() {
    if (OpaqueControlRef* control = OpaqueControlRef::of(this)) {
        control->menu->aboutToShow();
    }
    QComboBox::showPopup();
}

void PopUpButton::setModel(QAbstractItemModel* model) {
    QComboBox::setModel(model);
    if (width_ == Width::fitting) {
        connect(model, &QAbstractItemModel::dataChanged, this, &PopUpButton::forgetContents);
        connect(model, &QAbstractItemModel::rowsInserted, this, &PopUpButton::forgetContents);
        connect(model, &QAbstractItemModel::rowsRemoved, this, &PopUpButton::forgetContents);
        connect(model, &QAbstractItemModel::modelReset, this, &PopUpButton::forgetContents);
    }
}

// As in Qt's own pop-ups.
QSize PopUpButton::ownSize() const {
    constexpr int kLeastHeight = 14;
    constexpr int kAroundText = 2;
    if (!contents_) {
        const int text = static_cast<int>(std::ceil(QFontMetricsF(fontMetrics()).height()));
        contents_ = contentsSize().expandedTo({0, std::max(text, kLeastHeight)}) + QSize(0, kAroundText);
    }
    QStyleOptionComboBox option;
    initStyleOption(&option);
    return style()->sizeFromContents(QStyle::CT_ComboBox, &option, *contents_, this);
}

QSize PopUpButton::contentsSize() const {
    constexpr int kBesideIcon = 4;
    constexpr int kLettersOfNone = 7;
    const QFontMetrics metrics = fontMetrics();
    const QSize icon = iconSize() + QSize(kBesideIcon, 0);
    if (width_ == Width::held) {
        return icon + QSize(metrics.horizontalAdvance(u'X') * minimumContentsLength(), 0);
    }
    QSize widest(count() == 0 ? kLettersOfNone * metrics.horizontalAdvance(u'x') : 0, 0);
    for (int i = 0; i < count(); ++i) {
        const QSize text(metrics.horizontalAdvance(itemText(i)), 0);
        widest = widest.expandedTo(itemIcon(i).isNull() ? text : text + icon);
    }
    return widest;
}

void PopUpButton::forgetContents() {
    contents_.reset();
    updateGeometry();
}

void PopUpButton::changeEvent(QEvent* event) {
    contents_.reset();  // the font may be another
    QComboBox::changeEvent(event);
}

void PopUpButton::keyPressEvent(QKeyEvent* event) {
    if (!actsAtOnce() || !(isPlaceKey(*event) || isLetterKey(*event))) {
        QComboBox::keyPressEvent(event);
    } else if (isLetterKey(*event) && isCommandKey(*event)) {
        event->ignore();
    } else {
        showPopup();
    }
}

void PopUpButton::wheelEvent(QWheelEvent* event) {
    if (actsAtOnce()) {
        event->ignore();
    } else {
        QComboBox::wheelEvent(event);
    }
}
