#include "panels/paper_output/separators_dialog.h"

#include "model/settings/ppd_option_maps.h"
#include "model/settings/ppd_ui_dictionary.h"
#include "model/settings/setting_map.h"
#include "model/settings/ticket_access.h"
#include "model/settings/ticket_items.h"
#include "model/stock/stock.h"
#include "panels/paper_output/finishing_window.h"
#include "ui/control_utilities.h"
#include "ui/localization.h"
#include "ui/ppd_menus.h"
#include "ui/setting_menus.h"

#include <string>

namespace {

#define kCreator CFSTR("com.tavro.printingmanager")
#define kColorMainKeyword CFSTR("MediaColor")

constexpr SInt32 kOption = 1000;
constexpr SInt32 kColorLabel = 1001;
constexpr SInt32 kColor = 1002;

bool IsColor(SInt32 color) {
    return GetPPDOptionKeywordForTicketValue(GetPPDOptionMapForMainKeyword(kColorMainKeyword), color) != nullptr;
}

void AppendText(std::u16string* to, CFStringRef string) {
    const CFIndex length = string != nullptr ? CFStringGetLength(string) : 0;
    if (length > 0) {
        const std::size_t end = to->size();
        to->resize(end + static_cast<std::size_t>(length));
        CFStringGetCharacters(string, {0, length}, to->data() + end);
    }
}

CFRef<CFStringRef> CopyString(const std::u16string& text) {
    return CFRef<CFStringRef>::adopt(
        CFStringCreateWithCharacters(kCFAllocatorDefault, text.data(), static_cast<CFIndex>(text.size())));
}

class SeparatorsDialog : public FinishingWindow {
public:
    explicit SeparatorsDialog(CFBundleRef bundle) : FinishingWindow(bundle) {}

    OSStatus ask(SInt32* option, SInt32* color);

private:
    void changed() override {
        const bool hasColor = GetPopupButtonTicketValue(control(kOption)) != kSeparatorsNone;
        enable(kColorLabel, hasColor);
        enable(kColor, hasColor);
    }
};

OSStatus SeparatorsDialog::ask(SInt32* option, SInt32* color) {
    if (const OSStatus status = load(CFSTR("Separators")); status != noErr) {
        return status;
    }
    PopulatePopupButtonFromMap(bundle(), control(kOption), SeparatorOptionMap, JobContext::job, 0);
    setValue(kOption, 1);
    SetPopupButtonToTicketValue(control(kOption), *option);
    const bool hasColors =
        PopulatePopupButtonFromPPDOptions(control(kColor), PPDGetGlobalOptions(kColorMainKeyword), 0) > 0;
    if (hasColors) {
        setValue(kColor, 1);
        SetPopupButtonToTicketValue(control(kColor), *color);
    } else {
        HideControl(control(kColorLabel));
        HideControl(control(kColor));
    }
    changed();
    focus(kOption);
    if (run()) {
        *option = GetPopupButtonTicketValue(control(kOption));
        if (const SInt32 chosen = GetPopupButtonTicketValue(control(kColor)); hasColors && IsColor(chosen)) {
            *color = chosen;
        }
    }
    return noErr;
}

}  // namespace

void SyncSeparatorsFromTicket(PMTicketRef ticket, SInt32* option, SInt32* color) {
    *option = GetTicketNumber(ticket, kSeparatorOptionItem, kSeparatorsNone);
    if (TicketToUI(SeparatorOptionMap, *option) < 1) {
        *option = kSeparatorsNone;
    }
    *color = GetTicketNumber(ticket, kSeparatorColorItem, kStockColorWhite);
    if (!IsColor(*color)) {
        *color = kStockColorWhite;
    }
}

void SyncSeparatorsToTicket(PMTicketRef ticket, SInt32 option, SInt32 color) {
    SetTicketNumber(ticket, kCreator, kSeparatorOptionItem, option);
    SetTicketNumber(ticket, kCreator, kSeparatorColorItem, color);
}

CFRef<CFStringRef> CopySeparatorText(CFBundleRef bundle, SInt32 option, SInt32 color) {
    CFRef<CFStringRef> name = CopyLocalizedText(bundle, LocalizedKeyForTicketValue(SeparatorOptionMap, option));
    const CFStringRef colorName = GetPPDOptionAliasForTicketValue(kColorMainKeyword, color);
    if (option == kSeparatorsNone || CFStringGetLength(colorName) == 0) {
        return name;
    }
    std::u16string text;
    AppendText(&text, name.get());
    AppendText(&text, CopyLocalizedText(bundle, CFSTR("List Comma")).get());
    AppendText(&text, colorName);
    return CopyString(text);
}

void AppendSeparatorSummary(ControlRef textView, CFBundleRef bundle, SInt32 option, SInt32 color) {
    CFStringRef shown = nullptr;
    GetControlData(textView, kControlEntireControl, kControlEditTextCFStringTag, sizeof shown, &shown, nullptr);
    const auto before = CFRef<CFStringRef>::adopt(shown);
    std::u16string text;
    AppendText(&text, before.get());
    if (!text.empty()) {
        text += u'\n';
    }
    AppendText(&text, CopySeparatorText(bundle, option, color).get());
    UpdateSummaryTextView(textView, CopyString(text).get());
}

OSStatus RunModalSeparatorsDialog(CFBundleRef bundle, SInt32* option, SInt32* color) {
    return SeparatorsDialog(bundle).ask(option, color);
}
