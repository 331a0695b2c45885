#include "panels/paper_output/finishing_commands.h"

#include "panels/paper_output/finishing_menu.h"
#include "panels/paper_output/finishing_offset_dialog.h"
#include "panels/paper_output/position_picker.h"
#include "ui/custom_value_dialog.h"

namespace {

constexpr OSType kSignatureBooklet = FourCharCode("Sgbm");
constexpr SInt32 kLongestCustomFinishing = 255;

OSStatus AskForCustomFinishing(CFBundleRef bundle, FinishingSettings* settings) {
    const CustomValueTexts texts{CFSTR("Finishing Name Custom"), CFSTR("Finishing Custom Label"),
                                 CFSTR("Finishing Custom Hint")};
    CFStringRef text = settings->custom.get();
    SInt16 result = kCustomValueCancel;
    const OSStatus status = RunModalCustomValueDialog(bundle, kLongestCustomFinishing, &text, &result, &texts);
    if (result == kCustomValueOK) {
        settings->custom = CFRef<CFStringRef>::adopt(text);
        settings->options = kFinishingValueCustom;
    }
    return status;
}

}  // namespace

OSStatus CarryOutFinishingCommand(CFBundleRef bundle, OSType command, FinishingSettings* settings) {
    switch (command) {
        case kFinishingDefault:
            settings->options = kFinishingValueDefault;
            return noErr;
        case kFinishingNone:
            settings->options = kFinishingValueNone;
            return noErr;
        case kFinishingSignatureBooklet:
        case kSignatureBooklet:
            settings->options = kFinishingValueSignatureBooklet;
            return noErr;
        case kFinishingCustom:
            return AskForCustomFinishing(bundle, settings);
        case kFinishingMultiple:
            return RunModalMultipleFinishingDialog(bundle, &settings->options);
        case kSlipSheetsCommand:
            settings->slipSheet = settings->slipSheet == kSlipSheetsOn ? 0 : kSlipSheetsOn;
            return noErr;
        case kOffsetCommand:
            return RunModalOffsetDialog(bundle, settings);
        default:
            return FindFinishingKind(command) != nullptr ? RunModalPositionPicker(bundle, command, &settings->options)
                                                         : OSStatus{eventNotHandledErr};
    }
}
