#include "jobtypes/dialogs/fax_ab_picker.h"

#include "jobtypes/dialogs/fax_ab_import.h"
#include "jobtypes/dialogs/fax_list_editing.h"
#include "jobtypes/dialogs/fax_texts.h"
#include "jobtypes/dialogs/fax_window.h"
#include "jobtypes/records/fax_address_book.h"
#include "platform/toolbox/DataBrowser.h"
#include "ui/help.h"
#include "ui/list_control.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace {

enum ControlNumber : SInt32 {
    kGroups = 1000,
    kPeople = 1001,
    kSearch = 1002,
    kImport = 1003,
    kOK = 1004,
    kCancel = 1005,
    kStatus = 1006,
};

constexpr DataBrowserPropertyID kNameColumn = FourCharCode("NAME");
constexpr DataBrowserPropertyID kFaxColumn = FourCharCode("FAX ");
constexpr DataBrowserPropertyID kLabelColumn = FourCharCode("LABL");
constexpr DataBrowserPropertyID kOrganizationColumn = FourCharCode("ORG ");

constexpr OSType kPropertyCreator = FourCharCode("TPDE");
constexpr OSType kContextTag = FourCharCode("ABpk");

struct FaxABPickerContext {
    FaxRecipientList* list;
    FaxAddressBook book = {};
    std::vector<std::size_t> shown = {};  // contacts
    bool isFilling = false;               // what the browsers tell is our own doing
    SInt16 result = kFaxDialogCancel;
    FaxWindow window;  // goes first: its rows are places in the book
};

// ---- Rows: places in the address book, counted from 1 because 0 is no row.

DataBrowserItemID RowOf(std::size_t place) {
    return place + 1;
}

std::size_t PlaceOf(DataBrowserItemID row) {
    return row - 1;
}

std::vector<DataBrowserItemID> RowsOf(const std::vector<std::size_t>& places) {
    std::vector<DataBrowserItemID> rows;
    std::ranges::transform(places, std::back_inserter(rows), RowOf);
    return rows;
}

std::vector<std::size_t> SelectedPlaces(ControlRef browser) {
    std::vector<std::size_t> places;
    std::ranges::transform(SelectedRows(browser), std::back_inserter(places), PlaceOf);
    return places;
}

void ReplaceRows(ControlRef browser, const std::vector<std::size_t>& places) {
    const std::vector<DataBrowserItemID> rows = RowsOf(places);
    RemoveDataBrowserItems(browser, kDataBrowserNoItem, 0, nullptr, kDataBrowserItemNoProperty);
    AddDataBrowserItems(browser, kDataBrowserNoItem, static_cast<ItemCount>(rows.size()), rows.data(),
                        kDataBrowserItemNoProperty);
}

// ---- What is shown

std::vector<std::size_t> ChosenContacts(const FaxABPickerContext& context) {
    return ChosenFaxContacts(SelectedPlaces(context.window.control(kGroups)).size(), context.shown,
                             SelectedPlaces(context.window.control(kPeople)));
}

CFRef<CFStringRef> CopyStatusText(const FaxABPickerContext& context, std::size_t chosen) {
    const CFBundleRef bundle = context.window.bundle();
    if (!context.book.isReadable) {
        return CopyFaxText(bundle, CFSTR("Picker Unreadable"));
    }
    if (context.book.contacts.empty()) {
        return CopyFaxText(bundle, CFSTR("Picker Empty"));
    }
    if (chosen == 0) {
        return CopyFaxText(bundle, CFSTR("Picker Nobody"));
    }
    const bool areSelected = chosen < context.shown.size() || context.shown.size() == 1;
    return CopyFaxMessage(bundle, areSelected ? CFSTR("Picker Selected") : CFSTR("Picker All Shown"),
                          {CopyNumberText(static_cast<CFIndex>(chosen)).get()});
}

void UpdateChoice(const FaxABPickerContext& context) {
    const std::size_t chosen = ChosenContacts(context).size();
    context.window.setText(kStatus, CopyStatusText(context, chosen).get());
    context.window.enable(kOK, chosen > 0);
}

/// Shows who is in the selected groups and found by the search. Who was selected stays so.
void UpdatePersonBrowser(FaxABPickerContext& context) {
    const ControlRef people = context.window.control(kPeople);
    const std::vector<std::size_t> selected = SelectedPlaces(people);
    context.shown = FindFaxContacts(context.book, SelectedPlaces(context.window.control(kGroups)),
                                    context.window.copyText(kSearch).get());
    std::vector<std::size_t> stillSelected;
    std::ranges::copy_if(selected, std::back_inserter(stillSelected),
                         [&](std::size_t contact) { return std::ranges::binary_search(context.shown, contact); });
    context.isFilling = true;
    ReplaceRows(people, context.shown);
    const std::vector<DataBrowserItemID> rows = RowsOf(stillSelected);
    SetDataBrowserSelectedItems(people, static_cast<ItemCount>(rows.size()), rows.data(), kDataBrowserItemsAssign);
    context.isFilling = false;
    UpdateChoice(context);
}

/// Reads the address book and shows everybody.
void ShowAddressBook(FaxABPickerContext& context) {
    context.isFilling = true;
    ReplaceRows(context.window.control(kPeople), {});  // they are the former book's
    context.book = ReadFaxAddressBook(ABGetSharedAddressBook());
    std::vector<std::size_t> groups(context.book.groups.size());
    for (std::size_t i = 0; i < groups.size(); ++i) {
        groups[i] = i;
    }
    ReplaceRows(context.window.control(kGroups), groups);
    const DataBrowserItemID everybody = RowOf(0);
    SetDataBrowserSelectedItems(context.window.control(kGroups), 1, &everybody, kDataBrowserItemsAssign);
    context.isFilling = false;
    UpdatePersonBrowser(context);
}

// ---- The browsers' callbacks

FaxABPickerContext* ContextOf(ControlRef control) {
    FaxABPickerContext* context = nullptr;
    GetControlProperty(control, kPropertyCreator, kContextTag, sizeof(FaxABPickerContext*), nullptr, &context);
    return context;
}

CFRef<CFStringRef> CopyLabelText(CFBundleRef bundle, CFStringRef label) {
    struct LabelText {
        CFStringRef label;
        CFStringRef key;
    };
    const LabelText texts[] = {
        // label, key
        {kABPhoneWorkFAXLabel, CFSTR("Work Fax")},
        {kABPhoneHomeFAXLabel, CFSTR("Home Fax")},
        {kABPhoneOtherFAXLabel, CFSTR("Other Fax")},
    };
    const auto* row = std::ranges::find_if(
        texts, [label](const LabelText& text) { return CFStringCompare(text.label, label, 0) == kCFCompareEqualTo; });
    return row != std::end(texts) ? CopyFaxText(bundle, row->key) : CFRef<CFStringRef>::retain(label);
}

/// Null where there is no such text.
CFRef<CFStringRef> CopyCell(const FaxABPickerContext& context, std::size_t place, DataBrowserPropertyID column) {
    const FaxRecipient* recipient = context.book.contacts[place].recipient.get();
    switch (column) {
        case kNameColumn:
            return DisplayNameFromRecipient(recipient);
        case kFaxColumn:
            return CFRef<CFStringRef>::retain(recipient->faxNumber());
        case kLabelColumn:
            return CopyLabelText(context.window.bundle(), recipient->faxNumberLabel());
        case kOrganizationColumn:
            return CFRef<CFStringRef>::retain(recipient->organization());
        default:
            return nullptr;
    }
}

OSStatus PersonData(ControlRef browser, DataBrowserItemID row, DataBrowserPropertyID column,
                    DataBrowserItemDataRef itemData, Boolean) {
    const CFRef<CFStringRef> text = CopyCell(*ContextOf(browser), PlaceOf(row), column);
    return text ? SetDataBrowserItemDataText(itemData, text.get()) : errDataBrowserPropertyNotFound;
}

Boolean ComparePersons(ControlRef browser, DataBrowserItemID one, DataBrowserItemID two, DataBrowserPropertyID column) {
    if (column == kNameColumn) {
        return one < two;  // the address book is sorted by name
    }
    const FaxABPickerContext& context = *ContextOf(browser);
    return CFStringCompare(CopyCell(context, PlaceOf(one), column).get(), CopyCell(context, PlaceOf(two), column).get(),
                           kCFCompareCaseInsensitive) == kCFCompareLessThan;
}

OSStatus GroupData(ControlRef browser, DataBrowserItemID row, DataBrowserPropertyID, DataBrowserItemDataRef itemData,
                   Boolean) {
    const FaxABPickerContext& context = *ContextOf(browser);
    const std::size_t place = PlaceOf(row);
    const CFRef<CFStringRef> name =
        place == 0 ? CopyFaxText(context.window.bundle(), CFSTR("Picker All")) : context.book.groups[place].name;
    return name ? SetDataBrowserItemDataText(itemData, name.get()) : errDataBrowserPropertyNotFound;
}

void GroupNotification(ControlRef browser, DataBrowserItemID, DataBrowserItemNotification message) {
    FaxABPickerContext& context = *ContextOf(browser);
    if (message == kDataBrowserSelectionSetChanged && !context.isFilling) {
        UpdatePersonBrowser(context);
    }
}

// ---- What the user does

/// Adds whom the user chose and ends the dialog, unless the list has no room for them.
void AddChosen(FaxABPickerContext& context) {
    const std::vector<std::size_t> chosen = ChosenContacts(context);
    if (!HasRoomForRecipients(*context.list, static_cast<CFIndex>(chosen.size()), CFSTR("Max Recipients Header"))) {
        return;
    }
    ForgetAnswerForDuplicates();
    for (const std::size_t contact : chosen) {
        AddRecipient(context.list, context.book.contacts[contact].recipient.get(), chosen.size() > 1);
    }
    ForgetAnswerForDuplicates();
    context.result = kFaxDialogOK;
    QuitAppModalLoopForWindow(context.window.get());
}

void PersonNotification(ControlRef browser, DataBrowserItemID, DataBrowserItemNotification message) {
    FaxABPickerContext& context = *ContextOf(browser);
    if (message == kDataBrowserSelectionSetChanged && !context.isFilling) {
        UpdateChoice(context);
    } else if (message == kDataBrowserItemDoubleClicked &&
               SelectedPlaces(context.window.control(kGroups)).size() == 1) {
        AddChosen(context);
    }
}

OSStatus FaxABPickerEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto& context = *static_cast<FaxABPickerContext*>(userData);
    switch (CommandOf(event)) {
        case FourCharCode("LFim"):
            if (RunModalFaxABImport(context.window.bundle())) {
                ShowAddressBook(context);
            }
            return noErr;
        case FourCharCode("ok  "):
            AddChosen(context);
            return noErr;
        case FourCharCode("not!"):
            return QuitAppModalLoopForWindow(context.window.get());
        case FourCharCode("Thlp"):
            return DisplayHelp(context.window.bundle(), CFSTR("fax-address-book.html"), nullptr);
        default:
            return eventNotHandledErr;
    }
}

void InitializeFaxABPicker(FaxABPickerContext& context) {
    for (const SInt32 list : {kGroups, kPeople}) {
        FaxABPickerContext* pointer = &context;
        SetControlProperty(context.window.control(list), kPropertyCreator, kContextTag, sizeof pointer, &pointer);
    }
    SetListCallbacks(context.window.control(kGroups), GroupData, GroupNotification);
    SetListCallbacks(context.window.control(kPeople), PersonData, PersonNotification, ComparePersons);

    const ControlRef search = context.window.control(kSearch);
    FaxABPickerContext* pointer = &context;
    SetControlProperty(search, kPropertyCreator, kContextTag, sizeof pointer, &pointer);
    const ControlEditTextValidationUPP searchAgain = [](ControlRef field) { UpdatePersonBrowser(*ContextOf(field)); };
    SetControlData(search, kControlEntireControl, kControlEditTextValidationProcTag, sizeof searchAgain, &searchAgain);

    ShowAddressBook(context);
    context.window.handleCommands(FaxABPickerEventHandler, &context);
    context.window.focus(kSearch);
}

}  // namespace

SInt16 RunModalFaxABPicker(CFBundleRef bundle, FaxRecipientList* list) {
    FaxABPickerContext context{.list = list, .window = FaxWindow(bundle)};
    if (context.window.load(CFSTR("Picker")) != noErr) {
        return kFaxDialogCancel;
    }
    InitializeFaxABPicker(context);
    RunAppModalLoopForWindow(context.window.get());
    return context.result;
}
