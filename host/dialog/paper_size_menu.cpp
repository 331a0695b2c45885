#include "host/dialog/paper_size_menu.h"

#include "host/dialog/option_item.h"
#include "host/settings/custom_paper.h"
#include "host/settings/setting_words.h"
#include "host/settings/texts.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Menus.h"

#include <algorithm>

namespace {

constexpr const char* kPageSize = "PageSize";

}  // namespace

void PaperSizeMenu::fill(const PrintSession& session) {
    const MenuRef menu = GetControlPopupMenuHandle(popUp_);
    DeleteMenuItems(menu, 1, CountMenuItems(menu));
    options_.clear();
    const PMPrinter printer = session.printer().get();
    for (CFIndex i = 0; i < PMPrinterCountPapers(printer); ++i) {
        PMPaper paper{};
        PMPrinterGetIndPaper(printer, i, &paper);
        options_.push_back(utf8Text(paper.name));
        appendOption(menu, paper.title, session, kPageSize, options_.back(), texts_);
    }
    sizesOfPrinter_ = options_.size();
    takesCustom_ = customPaperLimits(session.printer()).has_value();
    addSizeItem();
}

void PaperSizeMenu::show(const PrintSession& session) {
    const std::string option = session.choice(CFSTR("PageSize"));
    if (std::ranges::find(options_, option) == options_.end()) {
        addCustom(session, option);
    }
    const auto found = std::ranges::find(options_, option);
    SetControl32BitValue(popUp_, found == options_.end() ? 0 : static_cast<SInt32>(found - options_.begin()) + 1);
}

std::string PaperSizeMenu::chosen() const {
    const SInt32 item = GetControl32BitValue(popUp_);
    const bool isSize = item >= 1 && static_cast<std::size_t>(item) <= options_.size();
    return isSize ? options_[static_cast<std::size_t>(item) - 1] : std::string();
}

bool PaperSizeMenu::isSizeWanted() const {
    return takesCustom_ && GetControl32BitValue(popUp_) == static_cast<SInt32>(options_.size()) + 1;
}

/// Takes the place of the one before.
void PaperSizeMenu::addCustom(const PrintSession& session, const std::string& option) {
    const auto words = settingWords(session, texts_, kPageSize, option);
    if (!words) {
        return;
    }
    const MenuRef menu = GetControlPopupMenuHandle(popUp_);
    const auto last = static_cast<MenuItemIndex>(sizesOfPrinter_);
    DeleteMenuItems(menu, last + 1, CountMenuItems(menu) - last);
    options_.resize(sizesOfPrinter_);
    AppendMenuItemTextWithCFString(menu, makeString(words->choice).get(), 0, 0, nullptr);
    options_.push_back(option);
    addSizeItem();
}

void PaperSizeMenu::addSizeItem() {
    if (takesCustom_) {
        AppendMenuItemTextWithCFString(GetControlPopupMenuHandle(popUp_),
                                       localized(texts_, CFSTR("Custom Size Item")).get(), 0, 0, nullptr);
    }
}
