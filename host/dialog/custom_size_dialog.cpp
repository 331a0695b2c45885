#include "host/dialog/custom_size_dialog.h"

#include "host/dialog/dialog_controls.h"
#include "host/settings/custom_paper.h"
#include "host/settings/texts.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Events.h"
#include "platform/toolbox/Menus.h"
#include "platform/toolbox/Windows.h"

#include <utility>

namespace {

struct UnitTexts {
    const char* title;  // in the menu
    const char* name;   // behind a number
};
constexpr std::array kUnitTexts{
    // in the order of LengthUnit
    UnitTexts{"Custom Size Millimeters", "Custom Size mm"},
    UnitTexts{"Custom Size Inches", "Custom Size in"},
    UnitTexts{"Custom Size Points", "Custom Size pt"},
};
static_assert(kUnitTexts.size() == 3);

const UnitTexts& textsOf(LengthUnit unit) {
    return kUnitTexts[static_cast<std::size_t>(unit)];
}

const char* sentenceOf(LengthFault fault) {
    switch (fault) {
        case LengthFault::none:
            return "Custom Size Limits";
        case LengthFault::noNumber:
            return "Custom Size Not a Number";
        case LengthFault::tooSmall:
            return "Custom Size Too Small";
        case LengthFault::tooLarge:
            break;
    }
    return "Custom Size Too Large";
}

class SizeDialog {
public:
    SizeDialog(CFBundleRef bundle, WindowRef window, const CustomPaperLimits& limits)
        : bundle_(bundle),
          window_(window),
          limits_(limits),
          width_{kCustomWidth, &limits_.width},
          length_{kCustomLength, &limits_.length} {
        const MenuRef menu = GetControlPopupMenuHandle(hostControl(window_, kCustomUnit));
        for (const LengthUnit unit : units_) {
            const auto title = localized(bundle_, CFStringMakeConstant(textsOf(unit).title));
            AppendMenuItemTextWithCFString(menu, title.get(), 0, 0, nullptr);
        }
        SetControl32BitValue(hostControl(window_, kCustomUnit), 1);
        static constexpr std::array kEvents{EventTypeSpec{kEventClassCommand, kEventCommandProcess},
                                            EventTypeSpec{kEventClassControl, kEventControlHit}};
        InstallWindowEventHandler(window_, handleEvent, kEvents.size(), kEvents.data(), this, nullptr);
        static constexpr EventTypeSpec kTyping{kEventClassTextInput, kEventTextInputUnicodeForKeyEvent};
        for (const Side& side : {width_, length_}) {
            InstallControlEventHandler(hostControl(window_, side.field), handleTyping, 1, &kTyping, this, nullptr);
        }
    }

    /// Points.
    std::optional<std::string> run(double width, double length) {
        show(width_, width);
        show(length_, length);
        update();
        SetKeyboardFocus(window_, hostControl(window_, kCustomWidth));
        RunAppModalLoopForWindow(window_);
        return answer_;
    }

private:
    struct Side {
        HostControl field;
        const PaperSide* limits;
    };

    static OSStatus handleEvent(EventHandlerCallRef, EventRef event, void* self) {
        auto& dialog = *static_cast<SizeDialog*>(self);
        if (GetEventClass(event) == kEventClassControl) {
            dialog.takeUnit();
            return eventNotHandledErr;
        }
        HICommand command{};
        GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command);
        if (command.commandID == FourCharCode("ok  ")) {
            dialog.accept();
            return noErr;
        }
        return eventNotHandledErr;
    }

    static OSStatus handleTyping(EventHandlerCallRef next, EventRef event, void* self) {
        const OSStatus status = CallNextEventHandler(next, event);  // the field takes the text
        static_cast<SizeDialog*>(self)->update();
        return status;
    }

    std::string typed(const Side& side) const { return fieldText(hostControl(window_, side.field)); }

    void show(const Side& side, double points) const {
        setFieldText(hostControl(window_, side.field), makeString(lengthText(unit_, points)));
    }

    /// Says beside the field what may stand in it, and what is wrong with what does.
    bool check(const Side& side) const {
        const LengthFault fault = checkLength(typed(side), unit_, *side.limits);
        const auto text = localized(bundle_, CFStringMakeConstant(sentenceOf(fault)),
                                    {lengthText(unit_, side.limits->minimum, LengthRounding::up),
                                     lengthText(unit_, side.limits->maximum, LengthRounding::down),
                                     utf8Text(localized(bundle_, CFStringMakeConstant(textsOf(unit_).name)).get())});
        HIViewSetFieldMessage(hostControl(window_, side.field), text.get(), fault != LengthFault::none);
        return fault == LengthFault::none;
    }

    bool update() const {
        const bool isWidthGood = check(width_);
        const bool isGood = check(length_) && isWidthGood;
        const ControlRef button = hostControl(window_, kCustomOK);
        isGood ? EnableControl(button) : DisableControl(button);
        return isGood;
    }

    /// The paper stays as large as it is; what is no number stays as it is typed.
    void takeUnit() {
        const auto item = static_cast<std::size_t>(GetControl32BitValue(hostControl(window_, kCustomUnit)));
        const LengthUnit before = std::exchange(unit_, units_.at(item - 1));
        for (const Side& side : {width_, length_}) {
            const auto length = readLength(typed(side));
            if (length && unit_ != before) {
                show(side, inPoints(before, *length));
            }
        }
        update();
    }

    void accept() {
        if (update()) {
            answer_ = customPaperOption(*readLength(typed(width_)), *readLength(typed(length_)), unit_);
            QuitAppModalLoopForWindow(window_);
        }
    }

    CFBundleRef bundle_;
    WindowRef window_;
    const CustomPaperLimits limits_;
    const Side width_;
    const Side length_;
    const std::array<LengthUnit, 3> units_ = unitsOfLocale();  // in the order of the menu
    LengthUnit unit_ = units_.front();
    std::optional<std::string> answer_;
};

}  // namespace

std::optional<std::string> askCustomSize(CFBundleRef bundle, const PrintSession& session) {
    const auto limits = customPaperLimits(session.printer());
    const WindowRef window = limits ? makeWindow(bundle, CFSTR("CustomSize")) : nullptr;
    if (window == nullptr) {
        return std::nullopt;
    }
    PMPaper paper{.width = limits->width.minimum, .height = limits->length.minimum};
    PMPrinterGetPaper(session.printer().get(), makeString(session.choice(CFSTR("PageSize"))).get(), &paper);
    SizeDialog dialog(bundle, window, *limits);
    auto answer = dialog.run(paper.width, paper.height);
    DisposeWindow(window);
    return answer;
}
