#include "panels/special_pages/special_pages_commands.h"

#include "panels/special_pages/covers_dialog.h"
#include "panels/special_pages/dialog_window.h"
#include "panels/special_pages/exceptions_dialog.h"
#include "panels/special_pages/inserts_dialog.h"
#include "panels/special_pages/special_pages_alerts.h"
#include "panels/special_pages/special_pages_list.h"
#include "platform/foundation/CFString.h"
#include "ui/draw_image.h"
#include "ui/list_control.h"
#include "ui/panel_operations.h"

#include <algorithm>
#include <optional>

namespace {

enum Button : SInt32 {
    kAddCovers = 100,
    kAddInserts = 200,
    kAddExceptions = 300,
    kEdit = 1200,
    kDelete = 1300,
    kDeleteAll = 1400,
};

/// The job's paper for a dialog, by value: the panel's own goes at every Sync.
class JobStock {
public:
    JobStock() {
        if (const auto& stock = gSpecialPages->records.jobStock) {
            stock_.emplace(*stock);
        }
    }
    [[nodiscard]] const Stock* get() const { return stock_ ? &*stock_ : nullptr; }

private:
    std::optional<Stock> stock_;
};

void RunCovers(DialogMode mode) {
    SpecialPageRecords& records = gSpecialPages->records;
    SInt16 result = kSpecialPagesCancel;
    RunModalCoversDialog(gSpecialPages->bundle, mode, JobStock().get(), &records.frontCover, &records.backCover,
                         &result);
}

void RunInserts(DialogMode mode, const Insert* edited) {
    SInt16 result = kSpecialPagesCancel;
    RunModalInsertsDialog(gSpecialPages->bundle, mode, JobStock().get(), &gSpecialPages->records.inserts, edited,
                          &result);
}

void RunExceptions(DialogMode mode, const ExceptionPage* edited) {
    SInt16 result = kSpecialPagesCancel;
    RunModalExceptionsDialog(gSpecialPages->bundle, mode, JobStock().get(), &gSpecialPages->records.exceptions, edited,
                             &result);
}

void EditSelectedSpecialPage() {
    const std::vector<const SpecialPage*> selected = SelectedSpecialPages();
    if (selected.empty()) {
        return;
    }
    const SpecialPage* const page = selected.front();
    if (const auto* insert = dynamic_cast<const Insert*>(page)) {
        RunInserts(DialogMode::edit, insert);
    } else if (const auto* exception = dynamic_cast<const ExceptionPage*>(page)) {
        RunExceptions(DialogMode::edit, exception);
    } else {
        RunCovers(DialogMode::edit);
    }
}

void DeleteSelectedSpecialPages() {
    if (!AskToDeleteSpecialPages(gSpecialPages->bundle, CFSTR("Delete Selected Special Pages"))) {
        return;
    }
    SpecialPageRecords& records = gSpecialPages->records;
    const std::vector<const SpecialPage*> selected = SelectedSpecialPages();
    for (auto* cover : {&records.frontCover, &records.backCover}) {
        if (*cover && std::ranges::find(selected, cover->get()) != selected.end()) {
            cover->reset();
        }
    }
    records.inserts.remove(selected);
    records.exceptions.remove(selected);
    UpdateSpecialPagesSummary();
}

void DeleteAllSpecialPages() {
    if (!AskToDeleteSpecialPages(gSpecialPages->bundle, CFSTR("Delete All Special Pages"))) {
        return;
    }
    SpecialPageRecords& records = gSpecialPages->records;
    records.frontCover.reset();
    records.backCover.reset();
    records.inserts.clear();
    records.exceptions.clear();
    UpdateSpecialPagesSummary();
}

void Draw(ControlRef control) {
    if (gSpecialPages == nullptr) {
        return;  // the window outlives the panel
    }
    if (control == gSpecialPages->addCoversImage) {
        DrawImage(CFSTR("AddCovers.gif"), control, false);
    } else if (control == gSpecialPages->addInsertsImage) {
        DrawImage(CFSTR("AddInserts.gif"), control, false);
    } else if (control == gSpecialPages->addExceptionsImage) {
        DrawImage(CFSTR("AddExceptions.gif"), control, false);
    }
}

void Hit(SInt32 button) {
    switch (button) {
        case kAddCovers:
            return RunCovers(DialogMode::add);
        case kAddInserts:
            return RunInserts(DialogMode::add, nullptr);
        case kAddExceptions:
            return RunExceptions(DialogMode::add, nullptr);
        case kEdit:
            return EditSelectedSpecialPage();
        case kDelete:
            return DeleteSelectedSpecialPages();
        case kDeleteAll:
            return DeleteAllSpecialPages();
        default:
            return;
    }
}

}  // namespace

OSStatus SpecialPagesEventHandler(EventHandlerCallRef, EventRef event, void*) {
    const ControlRef control = GetEventControl(event);
    if (GetEventKind(event) == kEventControlDraw) {
        Draw(control);
    } else {
        Hit(GetSpecialPagesControlNumber(control));
    }
    return eventNotHandledErr;
}

OSStatus SpecialPagesListKeyHandler(EventHandlerCallRef, EventRef event, void*) {
    if (!IsDeleteKey(event) || !IsControlEnabled(gSpecialPages->deleteButton)) {
        return eventNotHandledErr;
    }
    DeleteSelectedSpecialPages();
    return noErr;
}

void SpecialPagesListItemNotificationCallback(ControlRef, DataBrowserItemID, DataBrowserItemNotification message) {
    if (message == kDataBrowserSelectionSetChanged) {
        UpdateSpecialPagesCommandButtons();
    } else if (message == kDataBrowserItemDoubleClicked && gSpecialPages != nullptr) {
        EditSelectedSpecialPage();
    }
}
