#include "host/dialog/printer_menu.h"

#include "host/settings/texts.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Menus.h"

#include <algorithm>
#include <utility>

namespace {

constexpr UInt32 kServerPatience = 3000;  // milliseconds; nobody waits for it
constexpr double kSecondsBetweenLooks = 0.01;

}  // namespace

Result<Printer> openPrinter(const PrinterChoice& choice) {
    return choice.kind == PrinterChoice::Kind::queue ? openQueue(choice.name) : openPPD(choice.name);
}

PrinterMenu::PrinterMenu(ControlRef popUp, CFBundleRef texts, PrinterChoice choice, const std::string& title)
    : popUp_(popUp), texts_(texts) {
    add(std::move(choice), title);
    revert();
}

PrinterMenu::~PrinterMenu() {
    RemoveEventLoopTimer(timer_);
    PMPrinterListRelease(queues_);
}

void PrinterMenu::fill(std::function<void()> filled) {
    filled_ = std::move(filled);
    PMPrinterListBegin(kServerPatience, &queues_);
    InstallEventLoopTimer(
        0, kSecondsBetweenLooks,
        [](EventLoopTimerRef, void* self) { static_cast<PrinterMenu*>(self)->lookForAnswer(); }, this, &timer_);
}

void PrinterMenu::lookForAnswer() {
    if (!PMPrinterListIsComplete(queues_)) {
        return;
    }
    RemoveEventLoopTimer(std::exchange(timer_, nullptr));
    takeAnswer();
    PMPrinterListRelease(std::exchange(queues_, nullptr));
    std::exchange(filled_, nullptr)();
}

void PrinterMenu::takeAnswer() {
    CFArrayRef names = nullptr;
    if (PMPrinterListCopyPrinterIDs(queues_, &names) != noErr) {
        const MenuRef menu = GetControlPopupMenuHandle(popUp_);
        MenuItemIndex item = 0;
        AppendMenuItemTextWithCFString(menu, localized(texts_, CFSTR("No Print Server")).get(), kMenuItemAttrDisabled,
                                       0, &item);
        return;
    }
    const auto owner = CFRef<CFArrayRef>::adopt(names);
    for (CFIndex i = 0; i < CFArrayGetCount(names); ++i) {
        std::string name = utf8Text(static_cast<CFStringRef>(CFArrayGetValueAtIndex(names, i)));
        PrinterChoice choice{PrinterChoice::Kind::queue, name};
        if (std::ranges::find(choices_, choice) == choices_.end()) {
            add(std::move(choice), name);
        }
    }
}

const PrinterChoice& PrinterMenu::chosen() const {
    const SInt32 item = GetControl32BitValue(popUp_);
    return item >= 1 ? choices_.at(static_cast<std::size_t>(item) - 1) : settled();
}

void PrinterMenu::settle() {
    settled_ = static_cast<std::size_t>(std::ranges::find(choices_, chosen()) - choices_.begin());
}

void PrinterMenu::revert() {
    SetControl32BitValue(popUp_, static_cast<SInt32>(settled_) + 1);
}

void PrinterMenu::add(PrinterChoice choice, const std::string& title) {
    choices_.push_back(std::move(choice));
    AppendMenuItemTextWithCFString(GetControlPopupMenuHandle(popUp_), makeString(title).get(), 0, 0, nullptr);
}
