#include "host/dialog/preset_menu.h"

#include "host/script/text.h"
#include "host/settings/texts.h"
#include "platform/toolbox/Menus.h"

#include <algorithm>

namespace {

using Item = PresetMenuItem;
using Origin = SettingsOrigin;

bool isBefore(const std::string& left, const std::string& right) {
    const auto order = CFStringCompare(cfString(left).get(), cfString(right).get(), kCFCompareLocalized);
    return order == kCFCompareEqualTo ? left < right : order == kCFCompareLessThan;
}

/// Whether the menu has an item for the settings' origin; another dialog may have deleted the preset.
bool hasItem(const PresetMenuContent& content) {
    switch (content.origin.kind) {
        case Origin::Kind::printerDefaults:
            return true;
        case Origin::Kind::lastUsed:
            return content.hasLastUsed;
        case Origin::Kind::preset:
            return std::ranges::find(content.presets, content.origin.name) != content.presets.end();
        case Origin::Kind::elsewhere:
            break;
    }
    return false;
}

}  // namespace

std::vector<Item> presetMenuItems(const PresetMenuContent& content) {
    const bool isPreset = content.origin.kind == Origin::Kind::preset;
    std::vector<Item> items;
    if (content.isChanged || !hasItem(content)) {
        items.push_back({Item::Kind::shown, content.origin});
        items.push_back({Item::Kind::separator, {}});
    }
    items.push_back({Item::Kind::origin, {Origin::Kind::printerDefaults, {}}});
    items.push_back({Item::Kind::origin, {Origin::Kind::lastUsed, {}}, content.hasLastUsed});
    items.push_back({Item::Kind::separator, {}});
    std::vector<std::string> names = content.presets;
    std::ranges::sort(names, isBefore);
    for (const std::string& name : names) {
        items.push_back({Item::Kind::origin, {Origin::Kind::preset, name}});
    }
    for (const std::string& file : content.unreadable) {
        items.push_back({Item::Kind::unreadable, {Origin::Kind::elsewhere, file}, false});
    }
    if (items.back().kind != Item::Kind::separator) {
        items.push_back({Item::Kind::separator, {}});
    }
    items.push_back({Item::Kind::save, {}});
    items.push_back({Item::Kind::rename, {}, isPreset});
    items.push_back({Item::Kind::remove, {}, isPreset});
    items.push_back({Item::Kind::makeDefaults, {}, content.hasQueue});
    return items;
}

std::string PresetMenu::text(CFStringRef key) const {
    return utf8(localized(texts_, key).get());
}

std::string PresetMenu::text(CFStringRef key, const std::string& value) const {
    return utf8(localized(texts_, key, value).get());
}

std::string PresetMenu::originTitle(const Origin& origin, std::size_t most) const {
    switch (origin.kind) {
        case Origin::Kind::printerDefaults:
            return text(CFSTR("Preset Printer's Defaults"));
        case Origin::Kind::lastUsed:
            return text(CFSTR("Preset Last Used"));
        case Origin::Kind::preset:
            return shortened(origin.name, most);
        case Origin::Kind::elsewhere:
            break;
    }
    return origin.name.empty() ? text(CFSTR("Preset Unsaved"))
                               : text(CFSTR("Preset From"), shortened(origin.name, most));
}

std::string PresetMenu::title(const Item& item, bool isChanged) const {
    // The pop-up is narrower than its menu, and that something is changed must be seen.
    constexpr std::size_t kMostOfChanged = 18;
    switch (item.kind) {
        case Item::Kind::shown:
            return isChanged ? text(CFSTR("Preset Changed"), originTitle(item.origin, kMostOfChanged))
                             : originTitle(item.origin, kOneLine);
        case Item::Kind::origin:
            return originTitle(item.origin, kOneLine);
        case Item::Kind::unreadable:
            return text(CFSTR("Preset Unreadable"), shortened(item.origin.name));
        case Item::Kind::save:
            return text(CFSTR("Preset Save"));
        case Item::Kind::rename:
            return text(CFSTR("Preset Rename"));
        case Item::Kind::remove:
            return text(CFSTR("Preset Delete"));
        case Item::Kind::makeDefaults:
            return text(CFSTR("Preset Make Defaults"));
        case Item::Kind::separator:
            break;
    }
    return {};
}

void PresetMenu::show(const PresetMenuContent& content) {
    items_ = presetMenuItems(content);
    const Item shown{Item::Kind::origin, content.origin};
    const auto place = std::ranges::find_if(items_, [&](const Item& item) {
        return item.kind == Item::Kind::shown || (item.kind == shown.kind && item.origin == shown.origin);
    });
    shownItem_ = static_cast<SInt32>(place - items_.begin()) + 1;

    const MenuRef menu = GetControlPopupMenuHandle(popUp_);
    DeleteMenuItems(menu, 1, CountMenuItems(menu));
    for (const Item& item : items_) {
        const MenuItemAttributes attributes = (item.isEnabled ? 0 : kMenuItemAttrDisabled) |
                                              (item.kind == Item::Kind::separator ? kMenuItemAttrSeparator : 0);
        AppendMenuItemTextWithCFString(menu, cfString(title(item, content.isChanged)).get(), attributes, 0, nullptr);
    }
    revert();
}

Item PresetMenu::chosen() const {
    const SInt32 value = GetControl32BitValue(popUp_);
    return items_.at(static_cast<std::size_t>(value >= 1 ? value : shownItem_) - 1);
}

void PresetMenu::revert() {
    SetControl32BitValue(popUp_, shownItem_);
}
