#include "jobtypes/dialogs/fax_cover_setup.h"

#include "jobtypes/dialogs/fax_cover_picture.h"
#include "jobtypes/dialogs/fax_texts.h"
#include "jobtypes/dialogs/fax_window.h"
#include "jobtypes/records/fax_cover_options.h"
#include "model/settings/setting_map.h"
#include "platform/toolbox/Menus.h"
#include "ui/help.h"
#include "ui/setting_menus.h"
#include "watermark/records/watermark_storage.h"

#include <algorithm>
#include <vector>

namespace {

enum ControlNumber : SInt32 {
    kShowSender = 1000,
    kSenderName = 1001,
    kSenderOrganization = 1002,
    kSenderEmail = 1003,
    kSenderPhone = 1004,
    kSenderFax = 1005,
    kSenderSummary = 1006,
    kRecipients = 1010,
    kRecipientText = 1011,
    kRecipientCount = 1012,
    kNotes = 1020,
    kSize = 1030,
    kWatermark = 1031,
    kImage = 1032,
    kAddPicture = 1033,
};

struct FieldRow {
    SInt32 field;
    FaxCoverOptions::Text FaxCoverOptions::*text;
};
constexpr FieldRow kSenderFields[] = {
    // field, text
    {kSenderName, &FaxCoverOptions::senderName},          {kSenderOrganization, &FaxCoverOptions::senderOrganization},
    {kSenderEmail, &FaxCoverOptions::senderEmailAddress}, {kSenderPhone, &FaxCoverOptions::senderPhoneNumber},
    {kSenderFax, &FaxCoverOptions::senderFaxNumber},
};

constexpr OSType kPropertyCreator = FourCharCode("TPDE");
constexpr OSType kContextTag = FourCharCode("FCvr");

/// The names behind the items of a pop-up; the first item stands for none.
using MarkNames = std::vector<CFRef<CFStringRef>>;

struct FaxCoverSetupContext {
    CFMutableDictionaryRef options;
    FaxRecipientList* list;
    FaxWindow window;
    MarkNames watermarks = {};
    MarkNames images = {};
    SInt16 result = kFaxDialogCancel;
};

// ---- Pop-ups of stored names

MarkNames ReadMarkNames(CFStringRef store) {
    CFMutableArrayRef list = nullptr;
    loadWatermarkList(store, &list);
    const auto names = CFRef<CFMutableArrayRef>::adopt(list);
    MarkNames read;
    for (CFIndex i = 0; i < CFArrayGetCount(names.get()); ++i) {
        const void* name = CFArrayGetValueAtIndex(names.get(), i);
        if (CFGetTypeID(name) == CFStringGetTypeID() && CFStringGetLength(static_cast<CFStringRef>(name)) > 0) {
            read.push_back(CFRef<CFStringRef>::retain(static_cast<CFStringRef>(name)));
        }
    }
    return read;
}

/// Fills the pop-up and chooses the name, which the store may have lost meanwhile; null chooses none.
void ShowMarkNames(const FaxWindow& window, SInt32 popup, MarkNames& names, CFStringRef chosen) {
    const auto isChosen = [chosen](const CFRef<CFStringRef>& name) {
        return CFStringCompare(name.get(), chosen, 0) == kCFCompareEqualTo;
    };
    const bool choosesOne = CFStringGetLength(chosen) > 0;
    if (choosesOne && std::ranges::none_of(names, isChosen)) {
        names.push_back(CFRef<CFStringRef>::retain(chosen));
    }
    const MenuRef menu = GetControlPopupMenuHandle(window.control(popup));
    DeleteMenuItems(menu, 1, CountMenuItems(menu));
    AppendMenuItemTextWithCFString(menu, CopyFaxText(window.bundle(), CFSTR("Cover None")).get(), 0, 0, nullptr);
    for (const CFRef<CFStringRef>& name : names) {
        AppendMenuItemTextWithCFString(menu, name.get(), 0, 0, nullptr);
    }
    const auto place = choosesOne ? std::ranges::find_if(names, isChosen) - names.begin() + 1 : 0;
    window.setValue(popup, static_cast<SInt32>(place) + 1);
}

/// Null for none.
CFRef<CFStringRef> ChosenMarkName(const FaxWindow& window, SInt32 popup, const MarkNames& names) {
    const SInt32 item = window.value(popup);
    return item > 1 ? names[static_cast<std::size_t>(item) - 2] : nullptr;
}

// ---- What depends on something else

void UpdateSenderSummary(const FaxWindow& window) {
    const auto text = [&](SInt32 field) { return window.copyText(field); };
    const CFRef<CFStringRef> information = CreateLANFaxSenderInformation(
        text(kSenderName).get(), text(kSenderOrganization).get(), text(kSenderEmail).get(),
        CopyFaxText(window.bundle(), CFSTR("Sender Phone")).get(), text(kSenderPhone).get(),
        CopyFaxText(window.bundle(), CFSTR("Sender Fax")).get(), text(kSenderFax).get());
    window.setText(kSenderSummary, window.value(kShowSender) != 0 ? information.get() : nullptr);
}

void UpdateSenderControls(const FaxWindow& window) {
    for (const FieldRow& row : kSenderFields) {
        window.enable(row.field, window.value(kShowSender) != 0);
    }
    UpdateSenderSummary(window);
}

void UpdateRecipientControls(const FaxCoverSetupContext& context) {
    const FaxWindow& window = context.window;
    const SInt32 choice = window.value(kRecipients);
    window.enable(kRecipientText, choice == kFaxCoverRecipientText);
    const CFRef<CFStringRef> count =
        CopyFaxMessage(window.bundle(), CFSTR("Cover Recipient Count"), {CopyNumberText(context.list->count()).get()});
    window.setText(kRecipientCount, choice == kFaxCoverRecipientList ? count.get() : nullptr);
}

// ---- The options and the controls

void ShowOptions(FaxCoverSetupContext& context) {
    const FaxCoverOptions options = FaxCoverOptions::fromDictionary(context.options);
    const FaxWindow& window = context.window;
    window.setValue(kShowSender, options.showSender ? 1 : 0);
    for (const FieldRow& row : kSenderFields) {
        window.setText(row.field, (options.*row.text).get());
    }
    window.setValue(kRecipients, static_cast<SInt32>(options.showRecipients));
    window.setText(kRecipientText, options.customRecipientText.get());
    window.setText(kNotes, options.notes.get());
    PopulatePopupButtonFromMap(window.bundle(), window.control(kSize), FaxCoverSizeMap, JobContext::job, 0);
    window.setValue(kSize, static_cast<SInt32>(options.size));
    context.watermarks = ReadMarkNames(kWatermarkStore);
    ShowMarkNames(window, kWatermark, context.watermarks, options.watermarkName.get());
    context.images = ReadMarkNames(kFaxImageStore);
    ShowMarkNames(window, kImage, context.images, options.imageName.get());
    UpdateSenderControls(window);
    UpdateRecipientControls(context);
}

void TakeOptions(const FaxCoverSetupContext& context) {
    const FaxWindow& window = context.window;
    FaxCoverOptions options;
    options.showSender = window.value(kShowSender) != 0;
    for (const FieldRow& row : kSenderFields) {
        options.*row.text = window.copyText(row.field);
    }
    options.showRecipients = window.value(kRecipients);
    options.customRecipientText = window.copyText(kRecipientText);
    options.notes = window.copyText(kNotes);
    options.size = window.value(kSize);
    options.watermarkName = ChosenMarkName(window, kWatermark, context.watermarks);
    options.imageName = ChosenMarkName(window, kImage, context.images);

    const CFBundleRef bundle = window.bundle();
    options.toDictionary(context.options, {.from = CopyFaxText(bundle, CFSTR("From Label")),
                                           .phone = CopyFaxText(bundle, CFSTR("Phone Label")),
                                           .fax = CopyFaxText(bundle, CFSTR("Fax Label")),
                                           .to = CopyFaxText(bundle, CFSTR("To Label")),
                                           .notes = CopyFaxText(bundle, CFSTR("Notes Label"))});
}

// ---- What the user does

void AddPicture(FaxCoverSetupContext& context) {
    if (const CFRef<CFStringRef> name = RunModalFaxCoverPictureChooser(context.window.bundle())) {
        context.images = ReadMarkNames(kFaxImageStore);
        ShowMarkNames(context.window, kImage, context.images, name.get());
    }
}

OSStatus FaxCoverSetupEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto& context = *static_cast<FaxCoverSetupContext*>(userData);
    switch (CommandOf(event)) {
        case FourCharCode("CSsn"):
            UpdateSenderControls(context.window);
            return noErr;
        case FourCharCode("CSre"):
            UpdateRecipientControls(context);
            if (context.window.value(kRecipients) == kFaxCoverRecipientText) {
                context.window.focus(kRecipientText);
            }
            return noErr;
        case FourCharCode("CSim"):
            AddPicture(context);
            return noErr;
        case FourCharCode("ok  "):
            TakeOptions(context);
            context.result = kFaxDialogOK;
            return QuitAppModalLoopForWindow(context.window.get());
        case FourCharCode("not!"):
            return QuitAppModalLoopForWindow(context.window.get());
        case FourCharCode("Thlp"):
            return DisplayHelp(context.window.bundle(), CFSTR("fax-cover-sheet.html"), nullptr);
        default:
            return eventNotHandledErr;
    }
}

void SummarizeWhileTyping(FaxCoverSetupContext& context) {
    const ControlEditTextValidationUPP typed = [](ControlRef field) {
        FaxCoverSetupContext* found = nullptr;
        GetControlProperty(field, kPropertyCreator, kContextTag, sizeof(FaxCoverSetupContext*), nullptr, &found);
        UpdateSenderSummary(found->window);
    };
    FaxCoverSetupContext* pointer = &context;
    for (const FieldRow& row : kSenderFields) {
        const ControlRef field = context.window.control(row.field);
        SetControlProperty(field, kPropertyCreator, kContextTag, sizeof pointer, &pointer);
        SetControlData(field, kControlEntireControl, kControlEditTextValidationProcTag, sizeof typed, &typed);
    }
}

}  // namespace

SInt16 RunModalFaxCoverSheetSetup(CFBundleRef bundle, CFMutableDictionaryRef options, FaxRecipientList* list) {
    FaxCoverSetupContext context{options, list, FaxWindow(bundle)};
    if (context.window.load(CFSTR("CoverSheet")) != noErr) {
        return kFaxDialogCancel;
    }
    ShowOptions(context);
    SummarizeWhileTyping(context);
    context.window.handleCommands(FaxCoverSetupEventHandler, &context);
    context.window.focus(kShowSender);
    RunAppModalLoopForWindow(context.window.get());
    return context.result;
}
