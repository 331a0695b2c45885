// The Paper and Output panel between its controls and the tickets.

#include "panels/paper_output/paper_output_panel.h"
#include "core/features/installable_options.h"
#include "jobtypes/records/job_type.h"
#include "model/settings/ppd_access.h"
#include "panels/paper_output/job_checks.h"
#include "panels/paper_output/paper_output_context.h"
#include "tests/panels/panel_fixture.h"
#include "ui/panel_operations.h"

extern "C" OSStatus GetPaperOutputPanelInterface(PlugInIntf** interface);

namespace {

constexpr OSType kBookletCommand = FourCharCode("Bkcr");

class PaperOutputPanelTest : public PanelTest {
protected:
    PaperOutputPanelTest() : PanelTest(GetPaperOutputPanelInterface) {}
    ~PaperOutputPanelTest() override { UnloadInstallableOptions(); }

    void install() { ASSERT_TRUE(LoadInstallableOptions(printer.info, printer.context, InstalledFeatures)); }
    void openInstalled() {
        install();
        openPanel();
    }
    void setJobType(SInt32 type) {
        JobType job;
        const auto dictionary = job.read(printer.settings);
        job.jobType = type;
        job.write(dictionary.get(), printer.settings);
        PMTicketSetCFDictionary(printer.settings, CFSTR("test"), kJobTypeTicketKey, dictionary.get(), kPMUnlocked);
    }
    void setBooklet(bool booklet) const {
        PMTicketSetCFBoolean(printer.settings, CFSTR("test"), CFSTR("com.tavro.print.BookletLayout"),
                             booklet ? kCFBooleanTrue : kCFBooleanFalse, kPMUnlocked);
    }
    bool has(SInt32 number) const {
        const ControlID id{kPanelSignature, number};
        ControlRef found = nullptr;
        return GetControlByID(window, &id, &found) == noErr;
    }
    std::vector<std::string> texts(SInt32 popup) const {
        std::vector<std::string> names;
        for (const MenuItemContent& item : Items(shell(popup))) {
            names.push_back(item.text);
        }
        return names;
    }
    std::string chosen(SInt32 popup) const {
        const SInt32 item = GetControl32BitValue(shell(popup));
        return item > 0 ? texts(popup)[static_cast<std::size_t>(item) - 1] : "";
    }
    void choose(SInt32 popup, const std::string& name) const {
        const auto names = texts(popup);
        const auto found = std::find(names.begin(), names.end(), name);
        ASSERT_NE(found, names.end()) << name;
        EXPECT_EQ(AutomationSetValue(shell(popup), static_cast<SInt32>(found - names.begin()) + 1), noErr);
    }
    /// Picks an item of the stock menu's submenus.
    void pickStock(OSType command, SInt32 value) const {
        const MenuRef menu = GetControlPopupMenuHandle(shell(kStockButton));
        for (MenuItemIndex above = 1; above <= CountMenuItems(menu); ++above) {
            MenuRef below = nullptr;
            GetMenuItemHierarchicalMenu(menu, above, &below);
            for (MenuItemIndex item = 1; item <= CountMenuItems(below); ++item) {
                OSType code = 0;
                MenuRefCon reference = 0;
                GetMenuItemCommandID(below, item, &code);
                GetMenuItemRefCon(below, item, &reference);
                if (code == command && reference == value) {
                    EXPECT_EQ(AutomationChooseMenuItem(shell(kStockButton), below, item), noErr);
                    return;
                }
            }
        }
        ADD_FAILURE() << "no such item";
    }
    std::string summary() const { return text(shell(kStockSummary)); }
};

TEST_F(PaperOutputPanelTest, RefusesCallsWithoutContextOrSession) {
    expectRefusals(true, kPMInvalidPDEContext);
    EXPECT_TRUE(IsPaperOutputPanel(panel));
    EXPECT_FALSE(IsPaperOutputPanel({}));
}

TEST_F(PaperOutputPanelTest, OffersWhatIsInstalled) {
    openInstalled();
    EXPECT_EQ(texts(kCollateStaplePopup),
              (std::vector<std::string>{"Collated", "Uncollated", "Collated, 1 Staple", "Collated, 2 Staples",
                                        "Collated, 4 Staples", "Hole Punch", "No Folding or Punching"}));
    EXPECT_EQ(texts(kOutputDestinationPopup),
              (std::vector<std::string>{"Automatic", "Top Tray", "Stacker Tray", "Booklet Maker Tray"}));
    EXPECT_EQ(texts(kJobTypePopup).size(), 7u);
    EXPECT_EQ(chosen(kCollateStaplePopup), "Collated");
    EXPECT_EQ(chosen(kOutputDestinationPopup), "Automatic");
    EXPECT_EQ(chosen(kOutputColorPopup), "Color");
    EXPECT_EQ(chosen(kDuplexPopup), "1-Sided");
    EXPECT_EQ(chosen(kJobTypePopup), "Normal Print");
    const UInt16 built = CountSubControls(control(1));
    EXPECT_EQ(panel.Open(context), noErr);
    EXPECT_EQ(CountSubControls(control(1)), built);
}

TEST_F(PaperOutputPanelTest, WithoutPartsLittleIsOffered) {
    openPanel();
    EXPECT_EQ(texts(kCollateStaplePopup), (std::vector<std::string>{"Collated", "Uncollated"}));
    EXPECT_EQ(texts(kOutputDestinationPopup), (std::vector<std::string>{"Automatic", "Side Tray"}));
    EXPECT_EQ(texts(kJobTypePopup).size(), 6u) << "no fax";
    SetTicketNumber(printer.settings, CFSTR("test"), CFSTR("com.tavro.print.FinishingCollateStaple"), 4);
    EXPECT_EQ(sync(true), noErr);
    EXPECT_EQ(chosen(kCollateStaplePopup), "") << "two staples that nobody can choose here";
    setJobType(kJobTypeFax);
    EXPECT_EQ(sync(true), noErr);
    EXPECT_EQ(chosen(kJobTypePopup), "Fax (not installed)");
    EXPECT_FALSE(AskForWhatJobLacks(context)) << "no recipients of what cannot be faxed";
    choose(kJobTypePopup, "Secure Print");
    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(sync(true), noErr);
    EXPECT_EQ(texts(kJobTypePopup).size(), 6u);
    EXPECT_EQ(chosen(kJobTypePopup), "Secure Print");
}

TEST_F(PaperOutputPanelTest, WithoutOptionsInThePPDTheirControlsGo) {
    PPDReleaseGlobalUIDictionary();
    openPanel();
    EXPECT_FALSE(has(kDuplexPopup) || has(kCollateStaplePopup) || has(kOutputDestinationPopup));
    EXPECT_EQ(sync(true), noErr);
    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(choice(CFSTR("Duplex")) + choice(CFSTR("Collate")) + choice(CFSTR("OutputBin")), "");
}

TEST_F(PaperOutputPanelTest, WhatTheUserChoosesReachesTheTicket) {
    openInstalled();
    pickStock(kStockCommandColor, 2);
    pickStock(kStockCommandType, kStockTypeExtraHeavyweight);
    choose(kDuplexPopup, "2-Sided, Flip on Long Edge");
    choose(kCollateStaplePopup, "Collated, 2 Staples");
    choose(kOutputDestinationPopup, "Top Tray");
    choose(kOutputColorPopup, "Black and White");
    PPDSetMainKeyword(printer.settings, CFSTR("JCLColorCorrection"), CFSTR("PressMatch"));
    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(choice(CFSTR("MediaColor")), "Blue");
    EXPECT_EQ(choice(CFSTR("MediaType")), "ExtraHeavyweight");
    EXPECT_EQ(choice(CFSTR("Duplex")), "DuplexNoTumble");
    EXPECT_EQ(choice(CFSTR("StapleLocation")), "2Staples");
    EXPECT_EQ(choice(CFSTR("OutputBin")), "Top");
    EXPECT_EQ(choice(CFSTR("JCLColorCorrection")), "PressMatch") << "what others chose";
    EXPECT_EQ(sync(true), noErr);
    EXPECT_EQ(chosen(kCollateStaplePopup), "Collated, 2 Staples");
    EXPECT_EQ(chosen(kOutputColorPopup), "Black and White");
}

TEST_F(PaperOutputPanelTest, BookletsKeepTheSidesToThemselves) {
    openInstalled();
    setBooklet(true);
    EXPECT_EQ(sync(true), noErr);
    EXPECT_EQ(GetControl32BitValue(shell(kDuplexPopup)), 2);
    EXPECT_FALSE(IsControlEnabled(shell(kDuplexPopup)));
    setBooklet(false);
    EXPECT_EQ(sync(true), noErr);
    EXPECT_EQ(GetControl32BitValue(shell(kDuplexPopup)), 1);
    EXPECT_TRUE(IsControlEnabled(shell(kDuplexPopup)));
    EXPECT_EQ(GetControlCommandID(shell(kBookletButton)), kBookletCommand);
}

TEST_F(PaperOutputPanelTest, TransparenciesHaveSeparatorsInTheirSummary) {
    openInstalled();
    EXPECT_FALSE(IsControlEnabled(shell(kSeparatorsButton)));
    pickStock(kStockCommandType, kStockTypeTransparency);
    EXPECT_TRUE(IsControlEnabled(shell(kSeparatorsButton)));
    EXPECT_NE(summary().find("No Separators"), std::string::npos) << summary();
    pickStock(kStockCommandColor, kStockColorClear);
    EXPECT_NE(summary().find("No Separators"), std::string::npos) << summary();
    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(sync(true), noErr);
    EXPECT_NE(summary().find("No Separators"), std::string::npos) << summary();
    pickStock(kStockCommandType, kStockTypeStandard);
    EXPECT_FALSE(IsControlEnabled(shell(kSeparatorsButton)));
    EXPECT_EQ(summary().find("Separators"), std::string::npos) << summary();
}

TEST_F(PaperOutputPanelTest, JobTypesWithASetupEnableItsButton) {
    openInstalled();
    for (const SInt32 type : {1, 3, 4, 5, 6, 7, 8, kJobTypeOfOtherEditions}) {
        setJobType(type);
        EXPECT_EQ(sync(true), noErr);
        EXPECT_EQ(IsControlEnabled(shell(kJobTypeSetupButton)), JobTypeHasSetup(type)) << type;
        EXPECT_EQ(chosen(kJobTypePopup).empty(), type == kJobTypeOfOtherEditions) << type;
    }
    choose(kJobTypePopup, "Sample Set");
    EXPECT_FALSE(IsControlEnabled(shell(kJobTypeSetupButton)));
    choose(kJobTypePopup, "Delayed Print");
    EXPECT_TRUE(IsControlEnabled(shell(kJobTypeSetupButton)));
    EXPECT_EQ(text(shell(kJobTypeSetupButton)), "Setup…");
}

TEST_F(PaperOutputPanelTest, WithoutItsNibThePanelStaysEmpty) {
    expectEmptyWithoutNib();
}

}  // namespace
