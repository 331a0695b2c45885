// Signs at the settings that cannot go together: at their controls, and at the panels in the menu that chooses one.
#pragma once

#include "host/dialog/dialog_controls.h"
#include "host/settings/conflicts.h"
#include "host/settings/setting_place.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

class ConflictMarks {
public:
    /// Both must outlive this.
    ConflictMarks(WindowRef window, CFBundleRef texts) : window_(window), texts_(texts) {}

    /// Marks what takes part in the conflicts, and nothing else. To be called again when other controls are there.
    void show(const std::vector<Conflict>& conflicts);

    /// Brings the user to the conflict: shows the panel of its first setting and gives the focus to the control.
    void goTo(const Conflict& conflict) const;

private:
    using Reasons = std::vector<std::pair<ControlID, std::string>>;

    ControlRef find(const ControlID& id) const;
    SInt32 panelOf(const SettingPlace& place) const;
    void showAtControls(const Reasons& reasons);
    void showAtPanels(std::map<SInt32, std::string> reasons);

    WindowRef window_;
    CFBundleRef texts_;
    std::vector<ControlID> marked_;
    std::map<SInt32, std::string> panels_;  // that are marked, and why
};
