#include "panels/paper_output/position_picker.h"

#include "panels/paper_output/finishing_window.h"
#include "platform/toolbox/Menus.h"
#include "ui/localization.h"
#include "ui/setting_menus.h"

namespace {

using Choices = std::vector<const FinishingChoice*>;

void AppendChoice(ControlRef popup, CFStringRef text, SInt32 value) {
    const MenuRef menu = GetControlPopupMenuHandle(popup);
    MenuItemIndex item = 0;
    AppendMenuItemTextWithCFString(menu, text, 0, 0, &item);
    SetMenuItemRefCon(menu, item, value);
}

/// Selects the item with that value, the first one when there is none.
void Select(ControlRef popup, SInt32 value) {
    SetControl32BitValue(popup, 1);
    SetPopupButtonToTicketValue(popup, value);
}

// ---- One kind

constexpr SInt32 kPicture = 1000;
constexpr SInt32 kPosition = 1001;
constexpr SInt32 kPositionLabel = 1002;

class PositionPicker : public FinishingWindow {
public:
    explicit PositionPicker(CFBundleRef bundle) : FinishingWindow(bundle) {}

    OSStatus pick(const FinishingKind& kind, const Choices& choices, SInt32* value);

private:
    void changed() override { Draw1Control(control(kPicture)); }
    CFStringRef picture(SInt32) const override {
        const FinishingChoice* choice = FindFinishingChoice(GetPopupButtonTicketValue(control(kPosition)));
        return choice != nullptr ? CFStringMakeConstant(choice->picture) : nullptr;
    }
};

OSStatus PositionPicker::pick(const FinishingKind& kind, const Choices& choices, SInt32* value) {
    if (const OSStatus status = load(CFSTR("Position")); status != noErr) {
        return status;
    }
    SetLocalizedWindowTitle(bundle(), CFStringMakeConstant(kind.name), get());
    SetLocalizedStaticText(
        bundle(), kind.command == kFinishingFold ? CFSTR("Finishing Fold Label") : CFSTR("Finishing Position Label"),
        control(kPositionLabel));
    const ControlRef popup = control(kPosition);
    for (const FinishingChoice* choice : choices) {
        AppendChoice(popup, CopyLocalizedText(bundle(), CFStringMakeConstant(choice->position)).get(), choice->value);
    }
    Select(popup, *value);
    showPictureOf(kPicture);
    focus(kPosition);
    if (run()) {
        *value = GetPopupButtonTicketValue(popup);
    }
    return noErr;
}

// ---- Several together

struct PartControls {
    FinishingPart part;
    SInt32 pane;
    SInt32 picture;
    SInt32 choice;
    SInt32 MultipleFinishing::*value;
};
// clang-format off
constexpr PartControls kParts[] = {
    // part                        pane  picture choice value
    {FinishingPart::staple,        1100, 1101,   1102,  &MultipleFinishing::staple},
    {FinishingPart::punch,         1200, 1201,   1202,  &MultipleFinishing::punch},
    {FinishingPart::halfSheetFold, 1300, 1301,   1302,  &MultipleFinishing::halfSheetFold},
};
// clang-format on

class MultipleFinishingDialog : public FinishingWindow {
public:
    explicit MultipleFinishingDialog(CFBundleRef bundle) : FinishingWindow(bundle) {}

    OSStatus ask(SInt32* value);

private:
    void changed() override {
        for (const PartControls& part : kParts) {
            Draw1Control(control(part.picture));
        }
    }
    CFStringRef picture(SInt32 number) const override;
    void fill(const PartControls& part, SInt32 value);
};

CFStringRef MultipleFinishingDialog::picture(SInt32 number) const {
    for (const PartControls& part : kParts) {
        if (part.picture == number) {
            const SInt32 value = GetPopupButtonTicketValue(control(part.choice));
            return value != 0 ? CFStringMakeConstant(FindFinishingChoice(value)->picture) : CFSTR("Finishing/None.gif");
        }
    }
    return nullptr;
}

void MultipleFinishingDialog::fill(const PartControls& part, SInt32 value) {
    const Choices choices = InstalledFinishingChoices(part.part);
    if (choices.empty()) {
        HideControl(control(part.pane));
    }
    const ControlRef popup = control(part.choice);
    AppendChoice(popup, CopyLocalizedText(bundle(), CFSTR("None")).get(), 0);
    for (const FinishingChoice* choice : choices) {
        AppendChoice(popup, CopyFinishingChoiceText(bundle(), *choice).get(), choice->value);
    }
    Select(popup, value);
    showPictureOf(part.picture);
}

OSStatus MultipleFinishingDialog::ask(SInt32* value) {
    if (const OSStatus status = load(CFSTR("Multiple")); status != noErr) {
        return status;
    }
    MultipleFinishing parts = SplitFinishingValue(*value).value_or(MultipleFinishing{});
    for (const PartControls& part : kParts) {
        fill(part, parts.*part.value);
    }
    if (run()) {
        for (const PartControls& part : kParts) {
            parts.*part.value = GetPopupButtonTicketValue(control(part.choice));
        }
        *value = FinishingValueOf(parts);
    }
    return noErr;
}

}  // namespace

OSStatus RunModalPositionPicker(CFBundleRef bundle, OSType kind, SInt32* value) {
    const FinishingKind* row = FindFinishingKind(kind);
    const Choices choices = InstalledFinishingChoices(kind);
    if (row == nullptr || choices.empty() || choices.front()->position == nullptr) {
        return paramErr;
    }
    return PositionPicker(bundle).pick(*row, choices, value);
}

OSStatus RunModalMultipleFinishingDialog(CFBundleRef bundle, SInt32* value) {
    return IsFinishingOffered(kFinishingMultiple) ? MultipleFinishingDialog(bundle).ask(value) : paramErr;
}
