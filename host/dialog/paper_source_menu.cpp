#include "host/dialog/paper_source_menu.h"

#include "host/dialog/option_item.h"
#include "host/settings/setting_words.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Menus.h"

#include <algorithm>

namespace {

constexpr const char* kInputSlot = "InputSlot";

}  // namespace

void PaperSourceMenu::fill(const PrintSession& session) {
    const ControlRef popUp = hostControl(window_, kPaperSource);
    const MenuRef menu = GetControlPopupMenuHandle(popUp);
    DeleteMenuItems(menu, 1, CountMenuItems(menu));
    options_ = session.choices().options(kInputSlot);
    for (const std::string& option : options_) {
        const auto words = settingWords(session, texts_, kInputSlot, option);
        appendOption(menu, makeString(words ? words->choice : option).get(), session, kInputSlot, option, texts_);
    }
    for (const HostControl control : {kPaperSource, kPaperSourceLabel}) {
        SetControlVisibility(hostControl(window_, control), options_.size() > 1, true);
    }
}

void PaperSourceMenu::show(const PrintSession& session) const {
    const auto found = std::ranges::find(options_, session.choice(CFSTR("InputSlot")));
    SetControl32BitValue(hostControl(window_, kPaperSource),
                         found == options_.end() ? 0 : static_cast<SInt32>(found - options_.begin()) + 1);
}

std::string PaperSourceMenu::chosen() const {
    const SInt32 item = GetControl32BitValue(hostControl(window_, kPaperSource));
    return item < 1 ? std::string() : options_.at(static_cast<std::size_t>(item) - 1);
}
