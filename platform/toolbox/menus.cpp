// Menus: one list of items that serves as the model of a pop-up and as the source of a button's menu.

#include "platform/toolbox/Menus.h"

#include "platform/foundation/CFString.h"
#include "platform/toolbox/objects.h"

#include <QAction>
#include <QComboBox>
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

void sendPopulate(OpaqueMenuRef* menu) {
    ScopedEvent(kEventClassMenu, kEventMenuPopulate)
        .with(kEventParamDirectObject, typeMenuRef, static_cast<MenuRef>(menu))
        .sendTo(menu->owner);
}

/// Fills a button's menu from the items, just before it opens.
void rebuild(QMenu* shown, OpaqueMenuRef* menu) {
    shown->clear();
    for (std::size_t i = 0; i < menu->items.size(); ++i) {
        const MenuItem& item = menu->items[i];
        if (item.separator) {
            shown->addSeparator();
            continue;
        }
        QAction* action = shown->addAction(item.text);
        action->setEnabled(item.enabled);
        action->setCheckable(item.checked);
        action->setChecked(item.checked);
        const auto number = static_cast<MenuItemIndex>(i + 1);
        QObject::connect(action, &QAction::triggered, menu, [menu, number] { menu->userPicked(number); });
    }
}

}  // namespace

void OpaqueMenuRef::attach() {
    if (auto* popUp = qobject_cast<QComboBox*>(owner->widget)) {
        for (int i = 0; i < popUp->count(); ++i) {
            items.push_back({.text = popUp->itemText(i)});
        }
        const int current = popUp->currentIndex();
        popUp->setModel(this);
        popUp->setCurrentIndex(current);
        QObject::connect(popUp, &QComboBox::activated, this,
                         [this](int row) { userPicked(static_cast<MenuItemIndex>(row + 1)); });
    } else if (auto* button = qobject_cast<QToolButton*>(owner->widget)) {
        if (button->popupMode() != QToolButton::InstantPopup) {
            QObject::connect(button, &QToolButton::clicked, owner, [control = owner] { control->userHit(); });
            return;
        }
        auto* shown = new QMenu(button);
        button->setMenu(shown);
        QObject::connect(shown, &QMenu::aboutToShow, this, [this, shown] {
            sendPopulate(this);
            rebuild(shown, this);
        });
    }
}

void OpaqueMenuRef::aboutToShow() {
    sendPopulate(this);
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
    // The role by which a pop-up's view recognises a separator.
    if (role == Qt::AccessibleDescriptionRole && items[row].separator) {
        return QStringLiteral("separator");
    }
    return {};
}

Qt::ItemFlags OpaqueMenuRef::flags(const QModelIndex& index) const {
    const auto row = static_cast<std::size_t>(index.row());
    const bool usable = row < items.size() && items[row].enabled && !items[row].separator;
    return usable ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}

void OpaqueMenuRef::insert(MenuItem item) {
    const int row = static_cast<int>(items.size());
    beginInsertRows({}, row, row);
    items.push_back(std::move(item));
    endInsertRows();
}

void OpaqueMenuRef::remove(int first, int count) {
    beginRemoveRows({}, first, first + count - 1);
    items.erase(items.begin() + first, items.begin() + first + count);
    endRemoveRows();
}

void OpaqueMenuRef::changed(int row) {
    Q_EMIT dataChanged(index(row), index(row));
}

void OpaqueMenuRef::userPicked(MenuItemIndex number) {
    const MenuItem* item = itemAt(this, number);
    if (item == nullptr) {
        return;
    }
    if (item->command != 0) {
        ScopedEvent(kEventClassCommand, kEventCommandProcess)
            .with(kEventParamDirectObject, typeHICommand,
                  HICommand{kHICommandFromMenu, item->command, this, number, owner})
            .sendTo(owner);
    }
    owner->userHit();
}

UInt16 CountMenuItems(MenuRef menu) {
    return menu != nullptr ? static_cast<UInt16>(menu->items.size()) : 0;
}

OSStatus AppendMenuItemTextWithCFString(MenuRef menu, CFStringRef text, MenuItemAttributes attributes, OSType command,
                                        MenuItemIndex* item) {
    if (menu == nullptr || menu->items.size() >= UINT16_MAX) {
        return paramErr;
    }
    menu->insert({.text = toQString(text),
                  .command = command,
                  .enabled = (attributes & kMenuItemAttrDisabled) == 0,
                  .separator = (attributes & kMenuItemAttrSeparator) != 0});
    if (item != nullptr) {
        *item = CountMenuItems(menu);
    }
    return noErr;
}

OSStatus DeleteMenuItems(MenuRef menu, MenuItemIndex first, ItemCount count) {
    if (itemAt(menu, first) == nullptr) {
        return menuItemNotFoundErr;
    }
    const auto rest = static_cast<ItemCount>(menu->items.size()) - first + 1;
    if (count > 0) {
        menu->remove(first - 1, static_cast<int>(std::min(count, rest)));
    }
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

void CheckMenuItem(MenuRef menu, MenuItemIndex item, Boolean checked) {
    changeItem(menu, item, [checked](MenuItem& record) { record.checked = checked; });
}

Boolean IsMenuItemChecked(MenuRef menu, MenuItemIndex item) {
    const MenuItem* record = itemAt(menu, item);
    return record != nullptr && record->checked;
}
