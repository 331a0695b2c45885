#include "panels/paper_output/finishing_offset_dialog.h"

#include "panels/paper_output/finishing_window.h"
#include "ui/spin_control.h"
#include "ui/text_input.h"

#include <algorithm>

namespace {

constexpr SInt32 kChoice = 1000;
constexpr SInt32 kPagesField = 1001;
constexpr SInt32 kPages = 1002;

class OffsetDialog : public FinishingWindow {
public:
    explicit OffsetDialog(CFBundleRef bundle) : FinishingWindow(bundle) {}

    OSStatus ask(FinishingSettings* settings);

private:
    void changed() override {
        const bool asksForPages = value(kChoice) == kOffsetItemSubsets;
        enable(kPagesField, asksForPages);
        enable(kPages, asksForPages);
        ControlRef okButton = nullptr;
        GetWindowDefaultButton(get(), &okButton);
        mayEnd() ? EnableControl(okButton) : DisableControl(okButton);
    }
    bool mayEnd() const override {
        return value(kChoice) != kOffsetItemSubsets || SpinControlIsInputValid(control(kPages));
    }
    static OSStatus pagesTyped(EventHandlerCallRef, EventRef, void* self) {
        static_cast<OffsetDialog*>(self)->changed();
        return eventNotHandledErr;
    }
};

void SetNumberProperty(ControlRef control, OSType tag, SInt32 number) {
    SetControlProperty(control, kSpinControlCreator, tag, sizeof number, &number);
}

OSStatus OffsetDialog::ask(FinishingSettings* settings) {
    if (const OSStatus status = load(CFSTR("Offset")); status != noErr) {
        return status;
    }
    const ControlRef pages = control(kPages);
    SetNumberProperty(pages, kSpinControlFieldTag, kPagesField);
    SetNumberProperty(control(kPagesField), kSpinControlArrowsTag, kPages);
    SetControl32BitMinimum(pages, 1);
    SetControl32BitMaximum(pages, kMostPagesPerSubset);
    if (const OSStatus status = CreateSpinControl(pages); status != noErr) {
        return status;
    }
    handle({kEventClassTextInputChange, kEventInputIsEmpty}, pagesTyped, this);
    handle({kEventClassTextInputChange, kEventInputHasText}, pagesTyped, this);
    SetSpinControlValue(pages, ShownPagesPerSubset(*settings), true);
    setValue(kChoice, OffsetItem(*settings));
    changed();
    if (run()) {
        SetOffsetItem(settings, value(kChoice), GetControl32BitValue(pages));
    }
    return noErr;
}

}  // namespace

SInt32 OffsetItem(const FinishingSettings& settings) {
    if (settings.offset != kOffsetOn) {
        return kOffsetItemNone;
    }
    return settings.enableSubset != 0 ? kOffsetItemSubsets : kOffsetItemSets;
}

SInt32 ShownPagesPerSubset(const FinishingSettings& settings) {
    return std::clamp(settings.pagesPerSubset, SInt32{1}, kMostPagesPerSubset);
}

void SetOffsetItem(FinishingSettings* settings, SInt32 item, SInt32 pagesPerSubset) {
    settings->offset = item == kOffsetItemNone ? kOffsetOff : kOffsetOn;
    settings->enableSubset = item == kOffsetItemSubsets ? 1 : 0;
    settings->pagesPerSubset = item == kOffsetItemSubsets ? pagesPerSubset : FinishingSettings{}.pagesPerSubset;
}

OSStatus RunModalOffsetDialog(CFBundleRef bundle, FinishingSettings* settings) {
    return OffsetDialog(bundle).ask(settings);
}
