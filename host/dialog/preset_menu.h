// The menu of settings to start from: the printer's defaults, the last used ones, presets, and what can be done with
// them.
#pragma once

#include "host/settings/settings_origin.h"
#include "platform/foundation/CFBundle.h"
#include "platform/toolbox/Controls.h"

#include <string>
#include <vector>

struct PresetMenuContent {
    SettingsOrigin origin;
    bool isChanged = false;  // since they were taken from there
    std::vector<std::string> presets;
    std::vector<std::string> unreadable;  // names of files
    bool hasLastUsed = false;
    bool hasQueue = false;
};

struct PresetMenuItem {
    enum class Kind {
        shown,  // the settings as they are, which no other item stands for
        origin,
        unreadable,
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

/// The menu's items, presets sorted as the user's language has it. The settings that are shown are those of the first
/// item of kind `shown`, else those of the item with their origin.
std::vector<PresetMenuItem> presetMenuItems(const PresetMenuContent& content);

class PresetMenu {
public:
    /// The control and the bundle of its texts must outlive this.
    PresetMenu(ControlRef popUp, CFBundleRef texts) : popUp_(popUp), texts_(texts) {}

    /// Fills the menu, and shows the settings' origin on the control.
    void show(const PresetMenuContent& content);
    /// What the user has chosen.
    [[nodiscard]] PresetMenuItem chosen() const;
    /// Shows the settings' origin again.
    void revert();

private:
    [[nodiscard]] std::string text(CFStringRef key) const;
    [[nodiscard]] std::string text(CFStringRef key, const std::string& value) const;
    [[nodiscard]] std::string originTitle(const SettingsOrigin& origin, std::size_t most) const;
    [[nodiscard]] std::string title(const PresetMenuItem& item, bool isChanged) const;

    ControlRef popUp_;
    CFBundleRef texts_;
    std::vector<PresetMenuItem> items_;
    SInt32 shownItem_ = 1;  // from 1
};
