#include "host/printer_menu.h"

#include "host/script/text.h"
#include "platform/toolbox/Menus.h"

#include <algorithm>

Result<Printer> openPrinter(const PrinterChoice& choice) {
    return choice.kind == PrinterChoice::Kind::queue ? openQueue(choice.name) : openPPD(choice.name);
}

PrinterMenu::PrinterMenu(ControlRef popUp, PrinterChoice choice, const std::string& title) : popUp_(popUp) {
    add(std::move(choice), title);
    revert();
}

void PrinterMenu::addQueues() {
    for (const std::string& queue : listQueueNames()) {
        PrinterChoice choice{PrinterChoice::Kind::queue, queue};
        if (std::ranges::find(choices_, choice) == choices_.end()) {
            add(std::move(choice), queue);
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
    AppendMenuItemTextWithCFString(GetControlPopupMenuHandle(popUp_), cfString(title).get(), 0, 0, nullptr);
}
