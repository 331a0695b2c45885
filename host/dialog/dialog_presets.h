// What the dialog's menus of settings do: they start from kept settings, keep those that are shown, go back to those
// that were changed, and say whether they have been changed since.
#pragma once

#include "host/dialog/preset_menu.h"
#include "host/settings/presets.h"
#include "host/settings/print_session.h"

#include <functional>

class DialogPresets {
public:
    /// What the dialog does for it.
    struct Dialog {
        /// The session, with what the window shows taken into its tickets.
        std::function<PrintSession&()> session;
        /// Begins a new session for the same printer, which starts from the settings.
        std::function<void(const JobSettings&)> start;
        /// Lets the printer read its own defaults anew.
        std::function<void()> renewPrinter;
    };

    /// The dialog's window and the bundle of its texts and windows must outlive this. `origin` is that of the first
    /// session.
    DialogPresets(WindowRef window, CFBundleRef bundle, Dialog dialog, SettingsOrigin origin);

    /// Fills the menu with the presets that there are now; those that cannot be read are told on standard error.
    void refresh();
    /// A session has begun: with the settings of the origin, nothing is changed yet.
    void begin(const PrintSession& session);
    /// The user has done something that may change settings.
    void touch() { isTouched_ = true; }
    /// Compares the session's settings with those that it began with. `panel` is the number of the maker's panel that
    /// is shown: a panel that is shown for the first time may write its settings in other words, which is no change.
    void settle(const PrintSession& session, SInt32 panel);

    /// Starts from what the user has chosen in the pop-up.
    void choose();
    /// Does what the user has picked in the other menu; false for a command that is none of its items'.
    bool act(OSType command);
    /// Goes back to settings that this session had before.
    void putBack(const JobSettings& settings);
    /// What another printer starts from: the same preset or its own defaults, or, when the settings are others, these.
    [[nodiscard]] JobSettings settingsForOtherPrinter(const PrintSession& session);
    /// The job has been sent: its settings are the printer's last used ones.
    void rememberSent(const PrintSession& session) const;

private:
    /// Begins anew with settings of the origin; false when they cannot be read, which the user is then told.
    bool startFrom(const SettingsOrigin& origin);
    [[nodiscard]] Result<JobSettings> settingsOf(const SettingsOrigin& origin, const PrintSession& session) const;
    /// The settings that are shown are those of the origin now.
    void adopt(const SettingsOrigin& origin);

    /// The settings are shown as a change of others.
    void showAsChangeOf(const JobSettings& unchanged, const JobSettings& settings);
    void forgetChanged();

    // What the items of the other menu do
    void goBack();
    void save();
    void rename();
    void remove();
    void makeDefaults();

    /// The settings as the user has changed them, and what they were before.
    struct Changed {
        SettingsOrigin origin;
        JobSettings settings;
        JobSettings unchanged;
    };

    void tell(CFStringRef header, const std::string& line) const;

    CFBundleRef bundle_;
    Dialog dialog_;
    PresetMenu menu_;
    PresetMenuContent content_;
    std::string printer_;  // printerKey of the session's
    const KeptSettings presets_ = namedPresets();
    const KeptSettings lastUsed_ = lastUsedSettings();
    std::optional<JobSettings> unchanged_;  // what the session began with; none before it has settled once
    std::optional<Changed> left_;           // for others, and not changed since
    SInt32 panel_ = 0;                      // that was shown when it settled last
    bool isTouched_ = false;                // since then
};
