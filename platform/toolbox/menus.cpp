// Menus: one list of items that serves as the model of a pop-up and as the source of a button's menu.

#include "platform/toolbox/Menus.h"

#include "platform/foundation/CFString.h"
#include "platform/toolbox/alerts.h"
#include "platform/toolbox/objects.h"

#include <QAction>
#include <QComboBox>
#include <QIcon>
#include <QMenu>
#include <QToolButton>
#include <algorithm>

namespace {

/// The item at a number from 1, null when there is none.
MenuItem* itemAt(MenuRef menu, MenuItemIndex item) {
    return menu != nullptr && item >= 1 && item <= menu->items.size() ? &menu->items[item - 1u] : nullptr;
}

/// Changes an item and shows the change.
template <typename Change>
OSStatus changeItem(MenuRef menu, MenuItemIndex item, Change change) {
    MenuItem* record = itemAt(menu, item);
    if (record == nullptr) {
        return menuItemNotFoundErr;
    }
    change(*record);
    menu->changed(item - 1);
    return noErr;
}

void show(QMenu* shown, OpaqueMenuRef* menu);

/// Fills a shown menu from the items, just before it opens.
void rebuild(QMenu* shown, OpaqueMenuRef* menu) {
    shown->clear();
    shown->setToolTipsVisible(true);
    qDeleteAll(shown->findChildren<QMenu*>(Qt::FindDirectChildrenOnly));
    shown->setSeparatorsCollapsible((menu->attributes & kMenuAttrCondenseSeparators) != 0);
    const bool marks = (menu->attributes & kMenuAttrExcludesMarkColumn) == 0;
    for (std::size_t i = 0; i < menu->items.size(); ++i) {
        const MenuItem& item = menu->items[i];
        if (item.separator) {
            shown->addSeparator();
            continue;
        }
        if (item.submenu) {
            QMenu* below = shown->addMenu(item.text);
            below->menuAction()->setEnabled(item.enabled);
            show(below, item.submenu.get());
            continue;
        }
        QAction* action = shown->addAction(item.text);
        action->setEnabled(item.enabled);
        action->setToolTip(item.help);
        action->setCheckable(item.checked && marks);
        action->setChecked(item.checked && marks);
        const auto number = static_cast<MenuItemIndex>(i + 1);
        QObject::connect(action, &QAction::triggered, menu, [menu, number] { menu->userPicked(number); });
    }
}

/// Lets the shown menu follow the items: it is filled anew each time that it opens.
void show(QMenu* shown, OpaqueMenuRef* menu) {
    QObject::connect(shown, &QMenu::aboutToShow, menu, [shown, menu] {
        menu->aboutToShow();
        rebuild(shown, menu);
    });
}

bool isAtOrAbove(const OpaqueMenuRef* upper, const OpaqueMenuRef* menu) {
    while (menu != nullptr && menu != upper) {
        menu = menu->parentMenu();
    }
    return menu != nullptr;
}

MenuItem newItem(CFStringRef text, MenuItemAttributes attributes, OSType command) {
    return {.text = toQString(text),
            .command = command,
            .enabled = (attributes & kMenuItemAttrDisabled) == 0,
            .separator = (attributes & kMenuItemAttrSeparator) != 0};
}

}  // namespace

OpaqueMenuRef::~OpaqueMenuRef() {
    for (const MenuItem& item : items) {
        if (item.submenu) {
            item.submenu->setParentMenu(nullptr);
        }
    }
}

void OpaqueMenuRef::attach() {
    if (auto* popUp = qobject_cast<QComboBox*>(control_->widget)) {
        for (int i = 0; i < popUp->count(); ++i) {
            items.push_back({.text = popUp->itemText(i)});
        }
        const int current = popUp->currentIndex();
        popUp->setModel(this);
        popUp->setCurrentIndex(current);
        QObject::connect(popUp, &QComboBox::activated, this,
                         [this](int row) { userPicked(static_cast<MenuItemIndex>(row + 1)); });
    } else if (auto* button = qobject_cast<QToolButton*>(control_->widget)) {
        if (button->popupMode() != QToolButton::InstantPopup) {
            QObject::connect(button, &QToolButton::clicked, control_, [control = control_] { control->userHit(); });
            return;
        }
        auto* shown = new QMenu(button);
        button->setMenu(shown);
        show(shown, this);
    }
}

void OpaqueMenuRef::aboutToShow() {
    ScopedEvent(kEventClassMenu, kEventMenuEnableItems)
        .with(kEventParamDirectObject, typeMenuRef, static_cast<MenuRef>(this))
        .sendTo(this);
}

bool OpaqueMenuRef::hasAlert(std::size_t row) const {
    return items[row].alert || (control_ != nullptr && !control_->alert.isEmpty() &&
                                GetControl32BitValue(control_) == static_cast<SInt32>(row + 1));
}

int OpaqueMenuRef::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(items.size());
}

QVariant OpaqueMenuRef::data(const QModelIndex& index, int role) const {
    const auto row = static_cast<std::size_t>(index.row());
    if (!index.isValid() || row >= items.size()) {
        return {};
    }
    if (role == Qt::DisplayRole) {
        return items[row].text;
    }
    if (role == Qt::DecorationRole && hasAlert(row)) {
        return alertSign();
    }
    // The role by which a pop-up's view recognises a separator.
    if (role == Qt::AccessibleDescriptionRole && items[row].separator) {
        return QStringLiteral("separator");
    }
    if (role == Qt::ToolTipRole || role == Qt::AccessibleDescriptionRole) {
        return items[row].help;
    }
    return {};
}

Qt::ItemFlags OpaqueMenuRef::flags(const QModelIndex& index) const {
    const auto row = static_cast<std::size_t>(index.row());
    const bool usable = row < items.size() && items[row].enabled && !items[row].separator;
    return usable ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}

void OpaqueMenuRef::insert(int row, MenuItem item) {
    beginInsertRows({}, row, row);
    items.insert(items.begin() + row, std::move(item));
    endInsertRows();
}

void OpaqueMenuRef::remove(int first, int count) {
    for (int row = first; row < first + count; ++row) {
        if (const MenuHold& submenu = items[static_cast<std::size_t>(row)].submenu) {
            submenu->setParentMenu(nullptr);
        }
    }
    beginRemoveRows({}, first, first + count - 1);
    items.erase(items.begin() + first, items.begin() + first + count);
    endRemoveRows();
}

void OpaqueMenuRef::changed(int row) {
    Q_EMIT dataChanged(index(row), index(row));
}

void OpaqueMenuRef::userPicked(MenuItemIndex number) {
    const MenuItem* item = itemAt(this, number);
    const QPointer<OpaqueControlRef> control(owner());
    if (item == nullptr || !control) {
        return;
    }
    if (item->command != 0) {
        ScopedEvent(kEventClassCommand, kEventCommandProcess)
            .with(kEventParamDirectObject, typeHICommand,
                  HICommand{kHICommandFromMenu, item->command, this, number, control})
            .sendTo(control);
    }
    if (control) {
        control->userHit();
    }
}

OSStatus CreateNewMenu(MenuID, MenuAttributes attributes, MenuRef* menu) {
    if (menu == nullptr) {
        return paramErr;
    }
    *menu = new OpaqueMenuRef(nullptr);
    (*menu)->attributes = attributes;
    return noErr;
}

void ReleaseMenu(MenuRef menu) {
    if (menu == nullptr || --menu->references > 0) {
        return;
    }
    if (isDispatching()) {
        menu->deleteLater();
    } else {
        delete menu;
    }
}

OSStatus ChangeMenuAttributes(MenuRef menu, MenuAttributes set, MenuAttributes clear) {
    if (menu == nullptr) {
        return paramErr;
    }
    menu->attributes = (menu->attributes | set) & ~clear;
    return noErr;
}

EventTargetRef GetMenuEventTarget(MenuRef menu) {
    return menu;
}

UInt16 CountMenuItems(MenuRef menu) {
    return menu != nullptr ? static_cast<UInt16>(menu->items.size()) : 0;
}

OSStatus AppendMenuItemTextWithCFString(MenuRef menu, CFStringRef text, MenuItemAttributes attributes, OSType command,
                                        MenuItemIndex* item) {
    if (menu == nullptr || menu->items.size() >= UINT16_MAX) {
        return paramErr;
    }
    menu->insert(CountMenuItems(menu), newItem(text, attributes, command));
    if (item != nullptr) {
        *item = CountMenuItems(menu);
    }
    return noErr;
}

OSStatus InsertMenuItemTextWithCFString(MenuRef menu, CFStringRef text, MenuItemIndex afterItem,
                                        MenuItemAttributes attributes, OSType command) {
    if (menu == nullptr || afterItem > menu->items.size() || menu->items.size() >= UINT16_MAX) {
        return paramErr;
    }
    menu->insert(afterItem, newItem(text, attributes, command));
    return noErr;
}

OSStatus DeleteMenuItems(MenuRef menu, MenuItemIndex first, ItemCount count) {
    if (menu != nullptr && count == 0) {
        return noErr;
    }
    if (itemAt(menu, first) == nullptr) {
        return menuItemNotFoundErr;
    }
    const auto rest = static_cast<ItemCount>(menu->items.size()) - first + 1;
    menu->remove(first - 1, static_cast<int>(std::min(count, rest)));
    return noErr;
}

OSStatus SetMenuItemTextWithCFString(MenuRef menu, MenuItemIndex item, CFStringRef text) {
    return changeItem(menu, item, [text](MenuItem& record) { record.text = toQString(text); });
}

OSStatus CopyMenuItemTextAsCFString(MenuRef menu, MenuItemIndex item, CFStringRef* text) {
    const MenuItem* record = itemAt(menu, item);
    if (record == nullptr || text == nullptr) {
        return menuItemNotFoundErr;
    }
    *text = toCFString(record->text).leak();
    return noErr;
}

OSStatus GetMenuItemCommandID(MenuRef menu, MenuItemIndex item, OSType* command) {
    const MenuItem* record = itemAt(menu, item);
    if (record == nullptr || command == nullptr) {
        return menuItemNotFoundErr;
    }
    *command = record->command;
    return noErr;
}

OSStatus SetMenuItemRefCon(MenuRef menu, MenuItemIndex item, MenuRefCon refCon) {
    if (menu != nullptr && item == 0) {
        menu->refCon = refCon;
        return noErr;
    }
    MenuItem* record = itemAt(menu, item);
    if (record == nullptr) {
        return menuItemNotFoundErr;
    }
    record->refCon = refCon;
    return noErr;
}

OSStatus GetMenuItemRefCon(MenuRef menu, MenuItemIndex item, MenuRefCon* refCon) {
    if (refCon == nullptr) {
        return paramErr;
    }
    if (menu != nullptr && item == 0) {
        *refCon = menu->refCon;
        return noErr;
    }
    const MenuItem* record = itemAt(menu, item);
    if (record == nullptr) {
        return menuItemNotFoundErr;
    }
    *refCon = record->refCon;
    return noErr;
}

OSStatus SetMenuItemHierarchicalMenu(MenuRef menu, MenuItemIndex item, MenuRef submenu) {
    MenuItem* record = itemAt(menu, item);
    if (record == nullptr) {
        return menuItemNotFoundErr;
    }
    if (submenu != nullptr) {
        if (submenu->owner() != nullptr || submenu->parentMenu() != nullptr || isAtOrAbove(submenu, menu)) {
            return paramErr;
        }
        ++submenu->references;
        submenu->setParentMenu(menu);
    }
    if (record->submenu) {
        record->submenu->setParentMenu(nullptr);
    }
    record->submenu.reset(submenu);
    menu->changed(item - 1);
    return noErr;
}

OSStatus GetMenuItemHierarchicalMenu(MenuRef menu, MenuItemIndex item, MenuRef* submenu) {
    const MenuItem* record = itemAt(menu, item);
    if (record == nullptr || submenu == nullptr) {
        return menuItemNotFoundErr;
    }
    *submenu = record->submenu.get();
    return noErr;
}

void EnableMenuItem(MenuRef menu, MenuItemIndex item) {
    changeItem(menu, item, [](MenuItem& record) { record.enabled = true; });
}

void DisableMenuItem(MenuRef menu, MenuItemIndex item) {
    changeItem(menu, item, [](MenuItem& record) { record.enabled = false; });
}

Boolean IsMenuItemEnabled(MenuRef menu, MenuItemIndex item) {
    const MenuItem* record = itemAt(menu, item);
    return record != nullptr && record->enabled;
}

OSStatus HMSetMenuItemHelpContent(MenuRef menu, MenuItemIndex item, CFStringRef content) {
    return changeItem(menu, item, [content](MenuItem& record) { record.help = toQString(content); });
}

OSStatus SetMenuItemAlert(MenuRef menu, MenuItemIndex item, Boolean alert) {
    const MenuItem* const record = itemAt(menu, item);
    const bool isSame = record != nullptr && record->alert == (alert != 0);
    return isSame ? noErr : changeItem(menu, item, [alert](MenuItem& changed) { changed.alert = alert != 0; });
}

void CheckMenuItem(MenuRef menu, MenuItemIndex item, Boolean checked) {
    changeItem(menu, item, [checked](MenuItem& record) { record.checked = checked; });
}

Boolean IsMenuItemChecked(MenuRef menu, MenuItemIndex item) {
    const MenuItem* record = itemAt(menu, item);
    return record != nullptr && record->checked;
}
