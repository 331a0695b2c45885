#include "panels/paper_output/finishing_menu.h"

#include "core/features/installable_options.h"
#include "panels/paper_output/finishing_offset_dialog.h"
#include "ui/localization.h"

namespace {

void AppendItem(MenuRef menu, CFBundleRef bundle, const char* key, OSType command) {
    AppendMenuItemTextWithCFString(menu, CopyLocalizedText(bundle, CFStringMakeConstant(key)).get(), 0, command,
                                   nullptr);
}

void AppendSeparator(MenuRef menu) {
    AppendMenuItemTextWithCFString(menu, CFSTR("-"), kMenuItemAttrSeparator, 0, nullptr);
}

bool IsMarked(OSType command, const FinishingSettings& settings) {
    switch (command) {
        case kSlipSheetsCommand:
            return settings.slipSheet == kSlipSheetsOn;
        case kOffsetCommand:
            return OffsetItem(settings) != kOffsetItemNone;
        default:
            return command == FinishingKindOfValue(settings.options);
    }
}

}  // namespace

OSStatus InitializeFinishingMenuButton(ControlRef button, CFBundleRef bundle) {
    MenuRef menu = nullptr;
    if (button != nullptr && bundle != nullptr && GetBevelButtonMenuHandle(button, &menu) == noErr) {
        PopulateFinishingMenu(menu, bundle);
    }
    return noErr;
}

void FinalizeFinishingMenuButton(ControlRef) {}

void PopulateFinishingMenu(MenuRef menu, CFBundleRef bundle) {
    if (DeleteMenuItems(menu, 1, CountMenuItems(menu)) != noErr) {
        return;
    }
    // What is not installed leaves separators behind that have nothing to separate.
    ChangeMenuAttributes(menu, kMenuAttrCondenseSeparators, kMenuAttrExcludesMarkColumn);
    for (const FinishingKind& kind : FinishingKinds()) {
        if (IsFinishingOffered(kind.command)) {
            AppendItem(menu, bundle, kind.menuText, kind.command);
        }
    }
    AppendSeparator(menu);
    if (getInstalledFeature(CFSTR("SlipSheets"))) {
        AppendItem(menu, bundle, "Slip Sheets", kSlipSheetsCommand);
    }
    if (getInstalledFeature(CFSTR("Offset"))) {
        AppendItem(menu, bundle, "Offset/Subset...", kOffsetCommand);
    }
    AppendSeparator(menu);
    if (getInstalledFeature(CFSTR("BiFoldMultiple")) || getInstalledFeature(CFSTR("BiFoldStapleMultiple"))) {
        AppendItem(menu, bundle, "Booklet Creation...", kBookletCreationCommand);
    }
}

void MarkFinishingMenu(MenuRef menu, const FinishingSettings& settings) {
    for (MenuItemIndex item = 1; item <= CountMenuItems(menu); ++item) {
        OSType command = 0;
        GetMenuItemCommandID(menu, item, &command);
        CheckMenuItem(menu, item, command != 0 && IsMarked(command, settings));
    }
}
