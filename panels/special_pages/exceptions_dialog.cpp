#include "panels/special_pages/exceptions_dialog.h"

#include "model/settings/setting_map.h"
#include "model/stock_dialogs/tab_stock_setup.h"
#include "panels/special_pages/page_field.h"
#include "panels/special_pages/paper_block.h"
#include "panels/special_pages/special_pages_alerts.h"
#include "panels/special_pages/special_pages_descriptions.h"
#include "panels/special_pages/special_pages_list.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Menus.h"
#include "ui/control_utilities.h"
#include "ui/draw_image.h"
#include "ui/help.h"
#include "ui/localization.h"
#include "ui/panel_operations.h"
#include "ui/setting_menus.h"

#include <array>
#include <iterator>

namespace {

enum ControlNumber : SInt32 {
    kPicture = 5000,
    kPagesField = 5001,
    kTabs = 5010,
    kPaperPane = 5011,
    kSidesPane = 5012,
    kPaper = 5020,  // and the two numbers after it
    kImageShiftPicture = 5030,
    kImageShiftText = 5031,
    kPlex = 5040,
    kPlexPicture = 5041,
    kPageColor = 5160,
    kLightenDarken = 5190,
};

struct PlexRow {
    SInt32 plex;
    const char* picture;
};
// clang-format off
constexpr PlexRow kPlexPictures[] = {
    // value of PlexMap  picture
    {1,                  "1 Sided.gif"},
    {2,                  "2 Sided Flip on Long Edge.gif"},
    {3,                  "2 Sided Flip on Short Edge.gif"},
};
static_assert(std::size(kPlexPictures) == std::size(PlexMap) - 1);
// clang-format on

/// Of the job's own sides for every other value.
CFStringRef PlexPicture(SInt32 plex) {
    for (const PlexRow& row : kPlexPictures) {
        if (row.plex == plex) {
            return CFStringMakeConstant(row.picture);
        }
    }
    return CFSTR("2-Sided-PrnDef.gif");
}

struct ExceptionsDialog {
    DialogMode mode;
    ExceptionPageList* exceptions;
    const ExceptionPage* edited;
    ExceptionPage page;  // what the new pages are clones of
    SpecialPagesWindow window;
    PaperBlock paper;
    ControlRef pagesField;
    ControlRef tabs;
    std::array<ControlRef, 2> panes;
    ControlRef plex;
};

/// Sides that have no item show as none of the items.
void ShowPlex(const ExceptionsDialog& dialog) {
    SetControl32BitValue(dialog.plex, 0);
    SetPopupButtonToTicketValue(dialog.plex, dialog.page.plex());
    Draw1Control(dialog.window.find(kPlexPicture));
}

void ShowPaper(ExceptionsDialog* dialog) {
    dialog->paper.show(&dialog->page.stock());
    const CFRef<CFStringRef> shift = CreateImageShiftDescription(dialog->window.bundle(), dialog->page.imageShift());
    const CFStringRef text = shift.get();
    SetControlData(dialog->window.find(kImageShiftText), kControlEntireControl, kControlStaticTextCFStringTag,
                   sizeof text, &text);
}

void ShowPage(ExceptionsDialog* dialog) {
    ShowPaper(dialog);
    ShowPlex(*dialog);
}

void DefaultExceptions(ExceptionsDialog* dialog) {
    DefaultStock(&dialog->page.stock(), JobContext::exception);
    dialog->page.setPlex(kTicketValueUnset);
    SetPageFieldText(dialog->pagesField, CFSTR(""));
    ShowPage(dialog);
}

bool HasTabs(MenuRefCon type) {
    return type == kStockTypeTabStock || type == kStockTypeHeavyTabStock;
}

MenuRefCon TypeOfItem(const HICommand& command) {
    MenuRefCon type = 0;
    GetMenuItemRefCon(command.menu, command.menuItemIndex, &type);
    return type;
}

/// The image is moved away from the tabs of the paper that was just chosen.
void SetUpTabStock(ExceptionsDialog* dialog) {
    SInt16 result = kTabStockSetupCancel;
    RunModalTabStockSetupDialog(dialog->window.bundle(), &dialog->page.stock(), &dialog->page.imageShift(), &result);
    ShowPaper(dialog);
}

OSStatus Accept(ExceptionsDialog* dialog) {
    std::vector<PageRange> ranges;
    OSStatus status = GetPageFieldRanges(dialog->pagesField, &ranges);
    SpecialPages made;
    made.reserve(ranges.size());
    for (const PageRange& range : ranges) {
        auto page = std::make_unique<ExceptionPage>(dialog->page);
        page->setStartPage(range.first);
        page->setEndPage(range.first + range.count - 1);
        made.push_back(std::move(page));
    }
    if (status == noErr) {
        status = dialog->mode == DialogMode::edit ? dialog->exceptions->update(dialog->edited, made)
                                                  : dialog->exceptions->add(made);
    }
    if (status != noErr) {
        SpecialPagesUserNotification(dialog->window.bundle(), status);
        return noErr;
    }
    UpdateSpecialPagesSummary();
    return dialog->window.end(kSpecialPagesOK);
}

OSStatus ExceptionsDialogEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto* dialog = static_cast<ExceptionsDialog*>(userData);
    const HICommand command = GetEventCommand(event);
    switch (command.commandID) {
        case FourCharCode("Etab"):
            UpdateTabControl(dialog->tabs, dialog->panes.size(), dialog->panes.data());
            return noErr;
        case FourCharCode("Eplx"):
            dialog->page.setPlex(GetPopupButtonTicketValue(dialog->plex));
            ShowPlex(*dialog);
            return noErr;
        case kStockCommandType:
            if (HasTabs(TypeOfItem(command))) {
                SetUpTabStock(dialog);
            }
            return noErr;
        case kStockCommandNamed:
            if (HasTabs(dialog->page.stock().type())) {
                SetUpTabStock(dialog);
            }
            return noErr;
        case FourCharCode("ok  "):
            return Accept(dialog);
        case FourCharCode("not!"):
            return dialog->window.end(kSpecialPagesCancel);
        case FourCharCode("rvrt"):
            DefaultExceptions(dialog);
            return noErr;
        case FourCharCode("Thlp"):
            return DisplayHelp(dialog->window.bundle(), nullptr, CFSTR("Mac_topics/m_add_exceptions_paperout.htm"));
        default:
            return eventNotHandledErr;
    }
}

OSStatus DrawPictures(EventHandlerCallRef, EventRef event, void* userData) {
    const auto& dialog = *static_cast<const ExceptionsDialog*>(userData);
    const ControlRef control = GetEventControl(event);
    switch (GetSpecialPagesControlNumber(control)) {
        case kPicture:
            DrawImage(CFSTR("ExceptionOptions.gif"), control, false);
            break;
        case kImageShiftPicture:
            DrawImage(CFSTR("ImageShift.gif"), control, false);
            break;
        case kPlexPicture:
            DrawImage(PlexPicture(dialog.page.plex()), control, false);
            break;
        default:
            break;
    }
    return eventNotHandledErr;
}

/// The sides of the map, below the job's own.
void FillPlex(const ExceptionsDialog& dialog) {
    const CFBundleRef bundle = dialog.window.bundle();
    PopulatePopupButtonFromMap(bundle, dialog.plex, PlexMap, JobContext::exception, 0);
    const MenuRef menu = GetControlPopupMenuHandle(dialog.plex);
    InsertMenuItemTextWithCFString(menu, CopyLocalizedText(bundle, CFSTR("UseJobSetting")).get(), 0, 0, 0);
    SetMenuItemRefCon(menu, 1, kTicketValueUnset);
}

OSStatus InitializeExceptionsDialog(ExceptionsDialog* dialog, CFBundleRef bundle) {
    SpecialPagesWindow& window = dialog->window;
    OSStatus status = window.load(bundle, CFSTR("Office Exceptions"), ExceptionsDialogEventHandler, dialog);
    if (status != noErr) {
        return status;
    }
    window.drawPictures({kPicture, kImageShiftPicture, kPlexPicture}, DrawPictures, dialog);
    dialog->pagesField = window.find(kPagesField);
    dialog->tabs = window.find(kTabs);
    dialog->panes = {window.find(kPaperPane), window.find(kSidesPane)};
    dialog->plex = window.find(kPlex);
    HideControl(window.find(kPageColor));
    HideControl(window.find(kLightenDarken));
    FillPlex(*dialog);
    PreparePageField(dialog->pagesField, bundle);
    UpdateTabControl(dialog->tabs, dialog->panes.size(), dialog->panes.data());
    status = dialog->paper.install(window, kPaper, dialog->mode, JobContext::exception);
    if (status != noErr) {
        return status;
    }
    if (dialog->mode == DialogMode::edit) {
        SetLocalizedWindowTitle(bundle, CFSTR("Edit Exceptions Title"), window.get());
        dialog->page = *dialog->edited;
        SetPageFieldText(dialog->pagesField, CreateExceptionPagesDescription(dialog->page).get());
        ShowPage(dialog);
    } else {
        DefaultExceptions(dialog);
    }
    return noErr;
}

}  // namespace

OSStatus RunModalExceptionsDialog(CFBundleRef bundle, DialogMode mode, const Stock*, ExceptionPageList* exceptions,
                                  const ExceptionPage* edited, SInt16* result) {
    *result = kSpecialPagesCancel;
    if (mode == DialogMode::edit && edited == nullptr) {
        return paramErr;
    }
    ExceptionsDialog dialog{.mode = mode, .exceptions = exceptions, .edited = edited};
    const OSStatus status = InitializeExceptionsDialog(&dialog, bundle);
    if (status == noErr) {
        *result = dialog.window.run();
    }
    return status;
}
