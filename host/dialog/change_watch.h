// What changes by itself with something that the user does: told at once, and it can be taken back.
#pragma once

#include "host/dialog/dialog_controls.h"
#include "host/settings/setting_changes.h"
#include "host/settings/settings_file.h"

#include <optional>
#include <string>
#include <vector>

class ChangeWatch {
public:
    /// The bundle of the texts must outlive this.
    explicit ChangeWatch(CFBundleRef texts) : texts_(texts) {}

    /// The user has used a control.
    void used(const ControlID& control) { used_.push_back(control); }
    /// Looks at what has changed since the last time. `panel` is the number of the maker's panel that is shown, 0 for
    /// none, and `title` what it is called; who hears of no control hears of another panel. What else has changed is
    /// the user's own doing.
    void look(const PrintSession& session, SInt32 panel, const std::string& title);
    /// Other settings follow, which the user has asked for.
    void forget();

    /// A sentence about what has changed by itself; empty when nothing has, or when the user has gone on since.
    const std::string& sentence() const { return sentence_; }

    /// The settings before the change, the panel that was shown, and the control that was used then.
    struct Before {
        JobSettings settings;
        SInt32 panel;
        std::optional<ControlID> control;
    };
    /// Of the sentence; it is not told any more.
    Before takeBack();

private:
    struct Moment {
        OptionsThen options;
        JobSettings settings;
        SInt32 panel;
    };

    CFBundleRef texts_;
    std::vector<ControlID> used_;   // since the last look
    std::optional<Moment> last_;    // as it was at the last look
    std::optional<Before> before_;  // what is told
    std::string sentence_;
};
