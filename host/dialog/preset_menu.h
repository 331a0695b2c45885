// The menu of settings to start from, the printer's defaults, the last used ones and presets, and beside it the menu of
// what can be done with them.
#pragma once

#include "host/settings/settings_origin.h"
#include "platform/foundation/CFBundle.h"
#include "platform/toolbox/Controls.h"

#include <optional>
#include <string>
#include <vector>

struct PresetMenuContent {
    SettingsOrigin origin;
    bool isChanged = false;               // since they were taken from there
    std::vector<std::string> presets;     // in the order of the menu
    std::vector<std::string> unreadable;  // names of files
    bool hasLastUsed = false;
    bool hasQueue = false;
    bool canGoBack = false;  // to settings that were changed
};

struct PresetMenuItem {
    enum class Kind {
        shown,  // the settings as they are, which no other item stands for
        origin,
        unreadable,
        goBack,
        save,
        rename,
        remove,
        makeDefaults,
        separator,
    } kind;
    SettingsOrigin origin;  // of `shown` and `origin`; for `unreadable` its name is the file's
    bool isEnabled = true;

    bool operator==(const PresetMenuItem&) const = default;
};

/// The menu's items. The settings that are shown are those of the first
/// item of kind `shown`, else those of the item with their origin.
std::vector<PresetMenuItem> presetMenuItems(const PresetMenuContent& content);
/// What can be done, in the order of the other menu.
std::vector<PresetMenuItem> presetActionItems(const PresetMenuContent& content);
/// What the command of one of these items stands for; nothing for any other command.
std::optional<PresetMenuItem::Kind> presetActionOf(OSType command);

class PresetMenu {
public:
    /// The pop-up, the button with the other menu, and the bundle of their texts must outlive this.
    PresetMenu(ControlRef popUp, ControlRef actions, CFBundleRef texts)
        : popUp_(popUp), actions_(actions), texts_(texts) {}

    /// Fills the menus, and shows the settings' origin on the pop-up.
    void show(const PresetMenuContent& content);
    /// What the user has chosen in the pop-up.
    [[nodiscard]] PresetMenuItem chosen() const;
    /// Shows the settings' origin again.
    void revert();

private:
    [[nodiscard]] std::string text(CFStringRef key) const;
    [[nodiscard]] std::string text(CFStringRef key, const std::string& value) const;
    [[nodiscard]] std::string originTitle(const SettingsOrigin& origin, std::size_t most) const;
    [[nodiscard]] std::string title(const PresetMenuItem& item, bool isChanged) const;

    void fill(ControlRef control, const std::vector<PresetMenuItem>& items, bool isChanged) const;

    ControlRef popUp_;
    ControlRef actions_;
    CFBundleRef texts_;
    std::vector<PresetMenuItem> items_;
    SInt32 shownItem_ = 1;  // from 1
};
