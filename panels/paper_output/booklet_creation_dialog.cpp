#include "panels/paper_output/booklet_creation_dialog.h"

#include "core/features/installable_options.h"
#include "model/records/booklet_fold.h"
#include "model/settings/ppd_option_maps.h"
#include "model/settings/ppd_ui_dictionary.h"
#include "model/stock/stock.h"
#include "panels/paper_output/finishing_window.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Menus.h"
#include "ui/localization.h"
#include "ui/ppd_menus.h"
#include "ui/setting_menus.h"

#include <iterator>

namespace {

constexpr SInt32 kPicture = 1000;
constexpr SInt32 kOn = 1001;
constexpr SInt32 kDetails = 1002;
constexpr SInt32 kOutlines = 1003;
constexpr SInt32 kFoldPane = 1004;
constexpr SInt32 kFold = 1005;
constexpr SInt32 kSizePane = 1006;
constexpr SInt32 kNewSize = 1007;
constexpr SInt32 kSize = 1008;

struct FoldRow {
    SInt32 foldOption;
    const char* text;
    const char* feature;  // one of the features that offer it; null for the choice that needs none
};
// clang-format off
constexpr FoldRow kFolds[] = {
    // fold option          text                     feature, beside the booklet folder
    {kFoldNone,             "Booklet Fold None",     nullptr},
    {kFoldBooklet,          "Booklet Fold",          "BiFoldMultiple"},
    {kFoldAndStapleBooklet, "Booklet Fold Staple",   "BiFoldStapleMultiple"},
};
static_assert(std::size(kFolds) == 3);
// clang-format on

bool CanFold(const FoldRow& row) {
    return row.feature == nullptr || getInstalledFeature(CFSTR("BookletFoldKey")) ||
           getInstalledFeature(CFStringMakeConstant(row.feature));
}

class BookletCreationDialog : public FinishingWindow {
public:
    explicit BookletCreationDialog(CFBundleRef bundle) : FinishingWindow(bundle) {}

    OSStatus ask(BookletCreation* booklet);

private:
    void changed() override;
    CFStringRef picture(SInt32) const override {
        return isOn(kOn) ? BookletFoldPicture(GetPopupButtonTicketValue(control(kFold)), isOn(kOutlines))
                         : CFSTR("Booklet Creation/None.gif");
    }
    bool isOn(SInt32 number) const { return value(number) != 0; }
    void fillFolds(SInt32 foldOption);
    void fillSizes(SInt32 size);
    void show(const BookletCreation& booklet);
    BookletCreation read(SInt32 foldOptionBefore) const;
};

void BookletCreationDialog::changed() {
    enable(kDetails, isOn(kOn));
    enable(kSize, isOn(kNewSize));
    Draw1Control(control(kPicture));
}

void BookletCreationDialog::fillFolds(SInt32 foldOption) {
    const MenuRef menu = GetControlPopupMenuHandle(control(kFold));
    for (const FoldRow& row : kFolds) {
        if (CanFold(row)) {
            MenuItemIndex item = 0;
            AppendMenuItemTextWithCFString(menu, CopyLocalizedText(bundle(), CFStringMakeConstant(row.text)).get(), 0,
                                           0, &item);
            SetMenuItemRefCon(menu, item, row.foldOption);
        }
    }
    setValue(kFold, 1);
    SetPopupButtonToTicketValue(control(kFold), foldOption);
    if (CountMenuItems(menu) == 1) {
        HideControl(control(kFoldPane));
    }
}

/// Sizes that are a number in the ticket by themselves.
void BookletCreationDialog::fillSizes(SInt32 size) {
    const ControlRef popup = control(kSize);
    PopulatePopupButtonFromPPDOptions(popup, PPDGetGlobalOptions(CFSTR("PageSize")), 0);
    const MenuRef menu = GetControlPopupMenuHandle(popup);
    for (MenuItemIndex item = CountMenuItems(menu); item > 0; --item) {
        MenuRefCon value = 0;
        GetMenuItemRefCon(menu, item, &value);
        if (value == kNoTicketValue || value == kStockSizeCustom) {
            DeleteMenuItems(menu, item, 1);
        }
    }
    if (CountMenuItems(menu) == 0) {
        HideControl(control(kSizePane));
    }
    SetControl32BitValue(popup, 1);
    SetPopupButtonToTicketValue(popup, size);
}

void BookletCreationDialog::show(const BookletCreation& booklet) {
    fillFolds(booklet.foldOption);
    fillSizes(booklet.size);
    setValue(kOn, booklet.on ? 1 : 0);
    setValue(kOutlines, booklet.drawOutlines != 0 ? 1 : 0);
    setValue(kNewSize, booklet.forceNewSize && IsControlVisible(control(kSizePane)) ? 1 : 0);
    changed();
}

/// Without a booklet nothing folds one; holes stay.
BookletCreation BookletCreationDialog::read(SInt32 foldOptionBefore) const {
    const bool on = isOn(kOn);
    const bool foldedBooklet = foldOptionBefore == kFoldBooklet || foldOptionBefore == kFoldAndStapleBooklet;
    const SInt32 foldOptionWithout = foldedBooklet ? SInt32{kFoldNone} : foldOptionBefore;
    const bool forceNewSize = on && isOn(kNewSize);
    return {.on = on,
            .drawOutlines = isOn(kOutlines) ? 1 : 0,
            .foldOption = on ? GetPopupButtonTicketValue(control(kFold)) : foldOptionWithout,
            .forceNewSize = forceNewSize,
            .size = forceNewSize ? GetPopupButtonTicketValue(control(kSize)) : 0};
}

OSStatus BookletCreationDialog::ask(BookletCreation* booklet) {
    if (const OSStatus status = load(CFSTR("BookletCreation")); status != noErr) {
        return status;
    }
    show(*booklet);
    showPictureOf(kPicture);
    focus(kOn);
    if (run()) {
        *booklet = read(booklet->foldOption);
    }
    return noErr;
}

}  // namespace

OSStatus RunModalBookletCreationDialog(CFBundleRef bundle, BookletCreation* booklet) {
    return BookletCreationDialog(bundle).ask(booklet);
}
