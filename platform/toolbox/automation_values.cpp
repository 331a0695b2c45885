// How a user gives a control a value: by a click where one click does it, by keys otherwise.

#include "platform/toolbox/Automation.h"
#include "platform/toolbox/automation_input.h"
#include "platform/toolbox/little_arrows.h"
#include "platform/toolbox/objects.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QMenu>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolButton>
#include <algorithm>
#include <cstdlib>

namespace {

OSStatus clickTab(QWidget* widget, int index) {
    auto* pages = qobject_cast<QTabWidget*>(widget);
    QTabBar* bar = pages ? pages->tabBar() : qobject_cast<QTabBar*>(widget);
    if (index < 0 || index >= bar->count()) {
        return paramErr;
    }
    const bool clicked = bar->isTabEnabled(index) && userClicks(bar, bar->tabRect(index).center());
    return clicked ? noErr : kControlNotUsableErr;
}

OSStatus clickRadio(const QWidget* group, int index) {
    const auto buttons = group->findChildren<QRadioButton*>(Qt::FindDirectChildrenOnly);
    if (index < 0 || index >= buttons.size()) {
        return paramErr;
    }
    return userReaches(buttons[index]) && userClicks(buttons[index]) ? noErr : kControlNotUsableErr;
}

OSStatus clickTo(ControlRef control, SInt32 value) {
    const bool possible = value == 1 || (value == 0 && control->kind == ControlKind::checkBox);
    if (!possible) {
        return paramErr;
    }
    return GetControl32BitValue(control) == value || userClicks(control->widget) ? noErr : kControlNotUsableErr;
}

/// Presses Up or Down, or clicks the arrow, until the value is there; paramErr when the control's steps do not lead to
/// it.
OSStatus stepTo(ControlRef control, SInt32 value) {
    const auto* arrows = dynamic_cast<const LittleArrows*>(control->widget);
    if (arrows == nullptr && !userFocuses(control->widget)) {
        return kControlNotUsableErr;
    }
    const QPointer<OpaqueControlRef> alive(control);
    SInt32 now = GetControl32BitValue(control);
    const bool upwards = now < value;
    while (now != value) {
        if (arrows == nullptr) {
            userPresses(control->widget, upwards ? Qt::Key_Up : Qt::Key_Down);
        } else if (!userClicks(control->widget,
                               arrows->partRect(upwards ? kControlUpButtonPart : kControlDownButtonPart).center())) {
            return kControlNotUsableErr;
        }
        const SInt32 next = alive ? GetControl32BitValue(control) : value;
        const bool closer = upwards ? next > now && next <= value : next < now && next >= value;
        if (!closer) {
            return paramErr;
        }
        now = next;
    }
    return noErr;
}

/// Types the number, as one does into a field with arrows.
OSStatus typeNumber(ControlRef control, SInt32 value) {
    const QPointer<OpaqueControlRef> alive(control);
    const OSStatus status = AutomationType(control, toCFString(QString::number(value)).get());
    return status == noErr && alive && GetControl32BitValue(control) != value ? OSStatus{paramErr} : status;
}

/// In the opened list or menu: walks to the row with the arrow keys and takes it, or closes it again.
template <typename Row>
OSStatus take(QWidget* opened, int row, bool usable, Row currentRow) {
    int current = currentRow();
    while (usable && current != row) {
        userPresses(opened, current < row ? Qt::Key_Down : Qt::Key_Up);
        const int next = currentRow();
        usable = std::abs(row - next) < std::abs(row - current);  // a menu goes round in circles
        current = next;
    }
    userPresses(opened, usable ? Qt::Key_Return : Qt::Key_Escape);
    return usable ? noErr : kControlNotUsableErr;
}

OSStatus pickFromPopUp(QComboBox* popUp, int row) {
    if (!userFocuses(popUp)) {
        return kControlNotUsableErr;
    }
    userPresses(popUp, Qt::Key_Space);
    QAbstractItemView* list = popUp->view();
    if (!list->isVisible()) {
        return kControlNotUsableErr;
    }
    const QModelIndex item = popUp->model()->index(row, 0);
    return take(list, row, item.flags() & Qt::ItemIsEnabled, [list] { return list->currentIndex().row(); });
}

/// A refused pick must leave no menu open, or the button would never come back.
void closeMenus() {
    while (QWidget* popup = QApplication::activePopupWidget()) {
        popup->close();
    }
}

/// The rows by which an item is reached from the control's own menu; empty when the menu is none of the control's.
QList<int> rowsTo(const OpaqueControlRef& control, const OpaqueMenuRef* menu, MenuItemIndex item) {
    QList<int> rows{item - 1};
    while (menu != nullptr && menu != control.menu.get()) {
        const OpaqueMenuRef* above = menu->parentMenu();
        if (above != nullptr) {
            const auto place =
                std::ranges::find_if(above->items, [menu](const MenuItem& each) { return each.submenu.get() == menu; });
            rows.prepend(static_cast<int>(place - above->items.begin()));
        }
        menu = above;
    }
    return menu != nullptr ? rows : QList<int>();
}

/// In the opened menu: takes the first row, and the others one by one in the submenus that this opens.
OSStatus pickFromMenu(QMenu* menu, const QList<int>& rows) {
    OSStatus status = kControlNotUsableErr;
    for (const int row : rows) {
        if (!menu || !menu->isVisible()) {
            return kControlNotUsableErr;
        }
        const QList<QAction*> actions = menu->actions();
        const bool usable =
            row >= 0 && row < actions.size() && actions[row]->isEnabled() && !actions[row]->isSeparator();
        const QPointer<QMenu> below = usable ? actions[row]->menu() : nullptr;
        status = take(menu, row, usable, [menu] { return menu->actions().indexOf(menu->activeAction()); });
        if (status != noErr) {
            closeMenus();
            return status;
        }
        menu = below;
    }
    return status;
}

/// The button runs its menu until that closes, so the hand that picks comes from a timer.
OSStatus pickFromButton(QToolButton* button, const QList<int>& rows) {
    QMenu* menu = button->menu();
    OSStatus status = kControlNotUsableErr;
    QTimer hand;
    hand.setSingleShot(true);
    QObject::connect(&hand, &QTimer::timeout, menu, [&status, menu, rows] { status = pickFromMenu(menu, rows); });
    hand.start(0);
    userClicks(button);
    return status;
}

}  // namespace

OSStatus AutomationSetValue(ControlRef control, SInt32 value) {
    if (!control) {
        return paramErr;
    }
    const SInt32 place = std::max(value, SInt32{0}) - 1;  // of an item; -1 for none
    if (!userReaches(control->widget)) {
        return kControlNotUsableErr;
    }
    switch (control->kind) {
        case ControlKind::checkBox:
        case ControlKind::radioButton:
            return clickTo(control, value);
        case ControlKind::radioGroup:
            return clickRadio(control->widget, place);
        case ControlKind::popUp:
            return pickFromPopUp(static_cast<QComboBox*>(control->widget), place);
        case ControlKind::slider:
        case ControlKind::littleArrows:
            return control->origin == ControlOrigin::adopted && qobject_cast<QAbstractSpinBox*>(control->widget)
                       ? typeNumber(control, value)
                       : stepTo(control, value);
        case ControlKind::tabs:
            return clickTab(control->widget, place);
        default:
            return paramErr;
    }
}

void AutomationPrepareMenu(MenuRef menu) {
    if (menu != nullptr) {
        menu->aboutToShow();
    }
}

OSStatus AutomationChooseMenuItem(ControlRef control, MenuRef menu, MenuItemIndex item) {
    const QList<int> rows = control && menu ? rowsTo(*control, menu, item) : QList<int>();
    if (control == nullptr || rows.isEmpty()) {
        return paramErr;
    }
    if (!userReaches(control->widget)) {
        return kControlNotUsableErr;
    }
    if (auto* popUp = qobject_cast<QComboBox*>(control->widget)) {
        return rows.size() == 1 ? pickFromPopUp(popUp, rows.front()) : paramErr;
    }
    auto* button = qobject_cast<QToolButton*>(control->widget);
    return button && button->menu() ? pickFromButton(button, rows) : paramErr;
}

OSStatus AutomationChooseText(ControlRef control, CFStringRef text) {
    auto* popUp = control && !control->menu ? qobject_cast<QComboBox*>(control->widget) : nullptr;
    const int row = popUp ? popUp->findText(toQString(text)) : -1;
    if (row < 0) {
        return paramErr;
    }
    return userReaches(popUp) ? pickFromPopUp(popUp, row) : OSStatus{kControlNotUsableErr};
}

Boolean AutomationIsMenuOpen() {
    return qobject_cast<QMenu*>(QApplication::activePopupWidget()) != nullptr;
}
