#include "host/dialog/conflict_marks.h"

#include "host/script/panels.h"
#include "host/script/stage.h"
#include "host/settings/texts.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Menus.h"

#include <algorithm>

namespace {

bool isSame(const ControlID& one, const ControlID& other) {
    return one.signature == other.signature && one.id == other.id;
}

/// A control may take part in one conflict with two of its settings.
void addLine(std::string* lines, const std::string& line) {
    if (lines->find(line) == std::string::npos) {
        *lines += (lines->empty() ? "" : "\n") + line;
    }
}

}  // namespace

ControlRef ConflictMarks::find(const ControlID& id) const {
    ControlRef control = nullptr;
    GetControlByID(window_, &id, &control);
    return control;
}

/// Its number in the selector; 0 for none.
SInt32 ConflictMarks::panelOf(const SettingPlace& place) const {
    if (place.panel == nullptr) {
        return 0;
    }
    const MenuRef menu = GetControlPopupMenuHandle(find(script::kPanelSelector));
    const std::string title = utf8Text(localized(texts_, CFStringMakeConstant(place.panel)).get());
    MenuItemIndex item = CountMenuItems(menu);
    while (item > 0 && script::itemText(menu, item) != title) {
        --item;
    }
    return item;
}

void ConflictMarks::show(const std::vector<Conflict>& conflicts) {
    if (conflicts.empty() && marked_.empty()) {
        return;
    }
    Reasons reasons;
    std::map<SInt32, std::string> panels;
    for (const Conflict& conflict : conflicts) {
        for (const auto& [keyword, option] : conflict.chosen) {
            for (const SettingPlace& place : placesOfOption(keyword, option)) {
                const ControlID id{place.signature, place.number};
                auto reason = std::ranges::find_if(reasons, [&](const auto& known) { return isSame(known.first, id); });
                if (reason == reasons.end()) {
                    reason = reasons.insert(reason, {id, std::string()});
                }
                addLine(&reason->second, conflict.sentence);
                if (const SInt32 panel = panelOf(place); panel != 0 && find(id) != nullptr) {
                    addLine(&panels[panel], conflict.sentence);
                }
            }
        }
    }
    showAtControls(reasons);
    showAtPanels(std::move(panels));
}

void ConflictMarks::showAtControls(const Reasons& reasons) {
    for (const ControlID& id : std::exchange(marked_, {})) {
        if (std::ranges::none_of(reasons, [&](const auto& reason) { return isSame(reason.first, id); })) {
            SetControlAlert(find(id), nullptr);
        }
    }
    for (const auto& [id, reason] : reasons) {
        SetControlAlert(find(id), makeString(reason).get());
        marked_.push_back(id);
    }
}

void ConflictMarks::showAtPanels(std::map<SInt32, std::string> reasons) {
    const MenuRef menu = GetControlPopupMenuHandle(find(script::kPanelSelector));
    for (MenuItemIndex item = 1; reasons != panels_ && item <= CountMenuItems(menu); ++item) {
        const auto reason = reasons.find(item);
        SetMenuItemAlert(menu, item, reason != reasons.end());
        HMSetMenuItemHelpContent(menu, item, reason == reasons.end() ? nullptr : makeString(reason->second).get());
    }
    panels_ = std::move(reasons);
}

void ConflictMarks::goTo(const Conflict& conflict) const {
    for (const auto& [keyword, option] : conflict.chosen) {
        for (const SettingPlace& place : placesOfOption(keyword, option)) {
            if (const SInt32 panel = panelOf(place); panel != 0) {
                script::showPanel(window_, panel);
            }
            if (const ControlRef control = find({place.signature, place.number})) {
                SetKeyboardFocus(window_, control);
                return;
            }
        }
    }
}
