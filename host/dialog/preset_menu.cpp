#include "host/dialog/preset_menu.h"

#include "host/settings/texts.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Menus.h"

#include <algorithm>
#include <array>

namespace {

using Item = PresetMenuItem;
using Origin = SettingsOrigin;

struct ActionRow {
    Item::Kind kind;
    OSType command;
    const char* title;
};
constexpr std::array kActions{
    // kind, command, title
    ActionRow{Item::Kind::goBack, FourCharCode("PSbk"), "Preset Go Back"},
    ActionRow{Item::Kind::save, FourCharCode("PSsv"), "Preset Save"},
    ActionRow{Item::Kind::rename, FourCharCode("PSrn"), "Preset Rename"},
    ActionRow{Item::Kind::remove, FourCharCode("PSdl"), "Preset Delete"},
    ActionRow{Item::Kind::makeDefaults, FourCharCode("PSdf"), "Preset Make Defaults"},
};
static_assert(kActions.size() == 5);

OSType commandOf(Item::Kind kind) {
    const auto* const row = std::ranges::find(kActions, kind, &ActionRow::kind);
    return row == kActions.end() ? 0 : row->command;
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
    std::vector<Item> items;
    if (content.isChanged || !hasItem(content)) {
        items.push_back({Item::Kind::shown, content.origin});
        items.push_back({Item::Kind::separator, {}});
    }
    items.push_back({Item::Kind::origin, {Origin::Kind::printerDefaults, {}}});
    items.push_back({Item::Kind::origin, {Origin::Kind::lastUsed, {}}, content.hasLastUsed});
    if (!content.presets.empty() || !content.unreadable.empty()) {
        items.push_back({Item::Kind::separator, {}});
    }
    for (const std::string& name : content.presets) {
        items.push_back({Item::Kind::origin, {Origin::Kind::preset, name}});
    }
    for (const std::string& file : content.unreadable) {
        items.push_back({Item::Kind::unreadable, {Origin::Kind::elsewhere, file}, false});
    }
    return items;
}

std::vector<Item> presetActionItems(const PresetMenuContent& content) {
    const bool isPreset = content.origin.kind == Origin::Kind::preset;
    std::vector<Item> items;
    if (content.canGoBack) {
        items.push_back({Item::Kind::goBack, {}});
        items.push_back({Item::Kind::separator, {}});
    }
    items.push_back({Item::Kind::save, {}});
    items.push_back({Item::Kind::rename, {}, isPreset});
    items.push_back({Item::Kind::remove, {}, isPreset});
    items.push_back({Item::Kind::makeDefaults, {}, content.hasQueue});
    return items;
}

std::optional<Item::Kind> presetActionOf(OSType command) {
    const auto* const row = std::ranges::find(kActions, command, &ActionRow::command);
    return row == kActions.end() ? std::nullopt : std::optional(row->kind);
}

std::string PresetMenu::text(CFStringRef key) const {
    return utf8Text(localized(texts_, key).get());
}

std::string PresetMenu::text(CFStringRef key, const std::string& value) const {
    return utf8Text(localized(texts_, key, value).get());
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
        case Item::Kind::separator:
            return {};
        default:
            return text(CFStringMakeConstant(std::ranges::find(kActions, item.kind, &ActionRow::kind)->title));
    }
}

void PresetMenu::show(const PresetMenuContent& content) {
    items_ = presetMenuItems(content);
    const Item shown{Item::Kind::origin, content.origin};
    const auto place = std::ranges::find_if(items_, [&](const Item& item) {
        return item.kind == Item::Kind::shown || (item.kind == shown.kind && item.origin == shown.origin);
    });
    shownItem_ = static_cast<SInt32>(place - items_.begin()) + 1;

    fill(popUp_, items_, content.isChanged);
    revert();
    fill(actions_, presetActionItems(content), content.isChanged);
}

void PresetMenu::fill(ControlRef control, const std::vector<Item>& items, bool isChanged) const {
    const MenuRef menu = GetControlPopupMenuHandle(control);
    DeleteMenuItems(menu, 1, CountMenuItems(menu));
    for (const Item& item : items) {
        const MenuItemAttributes attributes = (item.isEnabled ? 0 : kMenuItemAttrDisabled) |
                                              (item.kind == Item::Kind::separator ? kMenuItemAttrSeparator : 0);
        AppendMenuItemTextWithCFString(menu, makeString(title(item, isChanged)).get(), attributes, commandOf(item.kind),
                                       nullptr);
    }
}

Item PresetMenu::chosen() const {
    const SInt32 value = GetControl32BitValue(popUp_);
    return items_.at(static_cast<std::size_t>(value >= 1 ? value : shownItem_) - 1);
}

void PresetMenu::revert() {
    SetControl32BitValue(popUp_, shownItem_);
}
