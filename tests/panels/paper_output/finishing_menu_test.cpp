// The finishing menu and the table behind it, on finishers of our own making.

#include "panels/paper_output/finishing_menu.h"
#include "panels/paper_output/finishing_commands.h"
#include "panels/paper_output/finishing_offset_dialog.h"
#include "tests/panels/plugin_fixture.h"
#include "tests/support/finishing_features.h"

#include <QSet>
#include <climits>
#include <optional>

namespace {

using Commands = std::vector<std::string>;

class FinishingMenuTest : public NibWindowTest {
protected:
    void SetUp() override {
        open("<layout class=\"QVBoxLayout\"><item>" +
             widget("QToolButton", 1, property("popupMode", "enum", "QToolButton::InstantPopup")) + "</item><item>" +
             widget("QPushButton", 2) + "</item></layout>");
        menu = GetControlPopupMenuHandle(control(1));
    }

    void install(const std::vector<const char*>& features) {
        finisher.reset();
        finisher.emplace(printer.info, printer.context, features);
    }
    /// The commands of the menu on a printer with the features; "-" for a separator.
    Commands commandsWith(const std::vector<const char*>& features) {
        install(features);
        PopulateFinishingMenu(menu, plugin.bundle());
        return commands();
    }
    Commands commands() const {
        Commands commands;
        for (const MenuItemContent& item : Items(control(1))) {
            EXPECT_NE(item.text, "STRING NOT FOUND");
            commands.push_back(item.command != 0 ? FourCharCodeText(item.command) : item.text);
        }
        return commands;
    }
    Commands marked(const FinishingSettings& settings) const {
        MarkFinishingMenu(menu, settings);
        Commands marked;
        const Commands all = commands();
        for (MenuItemIndex item = 1; item <= CountMenuItems(menu); ++item) {
            if (IsMenuItemChecked(menu, item)) {
                marked.push_back(all[item - 1]);
            }
        }
        return marked;
    }
    std::string summary(const FinishingSettings& settings) {
        CFStringRef text = nullptr;
        CreateFinishingString(plugin.bundle(), settings, &text);
        return Text(CFRef<CFStringRef>::adopt(text).get());
    }

    PluginBundle plugin;
    PluginSession printer;
    std::optional<InstalledFinisher> finisher;
    MenuRef menu = nullptr;
};

TEST_F(FinishingMenuTest, TheTwoModelsHaveTheTwoPlainItems) {
    UnloadInstallableOptions();
    ASSERT_TRUE(LoadInstallableOptions(printer.info, printer.context, InstalledFeatures));
    EXPECT_EQ(InitializeFinishingMenuButton(control(1), plugin.bundle()), noErr);
    EXPECT_EQ(commands(), (Commands{"Pdef", "None", "-", "-"}));
    EXPECT_EQ(InitializeFinishingMenuButton(control(1), plugin.bundle()), noErr);
    EXPECT_EQ(CountMenuItems(menu), 4) << "filled anew, not once more";
    UnloadInstallableOptions();

    EXPECT_EQ(InitializeFinishingMenuButton(control(2), plugin.bundle()), noErr) << "a button without a menu";
    EXPECT_EQ(InitializeFinishingMenuButton(nullptr, plugin.bundle()), noErr);
    EXPECT_EQ(InitializeFinishingMenuButton(control(1), nullptr), noErr);
    EXPECT_EQ(CountMenuItems(menu), 4);
    PopulateFinishingMenu(nullptr, plugin.bundle());
}

TEST_F(FinishingMenuTest, EveryFeatureAloneBringsItsItem) {
    for (const FinishingChoice& choice : FinishingChoices()) {
        if (FeatureOf(choice) == nullptr) {
            continue;
        }
        Commands expected{"Pdef", "None", FourCharCodeText(choice.kind), "-", "-"};
        const std::string feature = FeatureOf(choice);
        if (feature == "BiFoldMultiple" || feature == "BiFoldStapleMultiple") {
            expected.emplace_back("Bkcr");
        }
        EXPECT_EQ(commandsWith({FeatureOf(choice)}), expected) << feature;
    }
    EXPECT_EQ(commandsWith({"SlipSheets"}), (Commands{"Pdef", "None", "-", "Spsh", "-"}));
    EXPECT_EQ(commandsWith({"Offset"}), (Commands{"Pdef", "None", "-", "Ofsb", "-"}));
    EXPECT_EQ(commandsWith({"BindRight", "BindTop", "SingleStapleKey"}), (Commands{"Pdef", "None", "-", "-"}));
}

TEST_F(FinishingMenuTest, EverythingStandsInOrder) {
    EXPECT_EQ(commandsWith(AllFinishingFeatures()),
              (Commands{"Pdef", "None", "Stp1", "Stp2", "CStp", "Bind", "Hpn2", "Hpn3", "Hpn4", "Fold", "Zfol", "FMul",
                        "FSBM", "-", "Spsh", "Ofsb", "-", "Bkcr"}))
        << "the signature booklet takes the place of the custom finishing";
    EXPECT_EQ(Items(control(1))[2].text, "1 Staple…");
    EXPECT_EQ(Items(control(1))[12].text, "Signature Booklet");
}

TEST_F(FinishingMenuTest, SeveralTogetherNeedTwoParts) {
    const auto hasMultiple = [this](const std::vector<const char*>& features) {
        const Commands commands = commandsWith(features);
        return std::ranges::count(commands, "FMul") == 1;
    };
    EXPECT_TRUE(hasMultiple({"1StapleTL", "2HolePunchL"}));
    EXPECT_TRUE(hasMultiple({"1StapleT", "ZFoldHalfLeft"}));
    EXPECT_TRUE(hasMultiple({"4HolePunchB", "ZFoldHalfRight"}));
    EXPECT_FALSE(hasMultiple({"1StapleTL", "2StaplesT", "1StapleT"}));
    EXPECT_FALSE(hasMultiple({"2HolePunchL", "3HolePunchL"}));
    EXPECT_FALSE(hasMultiple({"ZFoldHalfLeft", "ZFoldHalfRight"}));
    EXPECT_FALSE(hasMultiple({"1StapleTL", "BindLeft", "BiFoldMultiple", "ZFoldSingleInside", "SBM"}))
        << "other folds, and binding, go with nothing";
}

// ---- Values

TEST_F(FinishingMenuTest, EveryChoiceHasAValueOfItsOwn) {
    QSet<SInt32> values;
    for (const FinishingChoice& choice : FinishingChoices()) {
        EXPECT_FALSE(values.contains(choice.value)) << choice.value;
        values.insert(choice.value);
        EXPECT_EQ(FinishingKindOfValue(choice.value), choice.kind) << choice.value;
        EXPECT_NE(FindFinishingKind(choice.kind), nullptr) << choice.value;
    }
    EXPECT_EQ(FinishingKindOfValue(0), FourCharCode("Pdef"));
    EXPECT_EQ(FinishingKindOfValue(1), FourCharCode("None"));
    EXPECT_EQ(FinishingKindOfValue(3), FourCharCode("FSBM"));
}

TEST_F(FinishingMenuTest, SeveralTogetherAreOneValueAndComeBackFromIt) {
    install(AllFinishingFeatures());
    const auto valuesOf = [](FinishingPart part) {
        std::vector<SInt32> values{0};
        for (const FinishingChoice* choice : InstalledFinishingChoices(part)) {
            values.push_back(choice->value);
        }
        return values;
    };
    QSet<SInt32> seen;
    int combinations = 0;
    for (const SInt32 staple : valuesOf(FinishingPart::staple)) {
        for (const SInt32 punch : valuesOf(FinishingPart::punch)) {
            for (const SInt32 fold : valuesOf(FinishingPart::halfSheetFold)) {
                const MultipleFinishing parts{staple, punch, fold};
                const SInt32 value = FinishingValueOf(parts);
                seen.insert(value);
                ++combinations;
                if (parts == MultipleFinishing{}) {
                    EXPECT_EQ(value, kFinishingValueNone);
                } else {
                    EXPECT_EQ(SplitFinishingValue(value), parts) << value;
                }
            }
        }
    }
    EXPECT_EQ(combinations, 13 * 13 * 3);
    EXPECT_EQ(seen.size(), combinations);
    EXPECT_EQ(FinishingValueOf({.punch = 51}), 51) << "one alone is what it always is";
    EXPECT_EQ(FinishingKindOfValue(FinishingValueOf({.staple = 10, .punch = 51})), kFinishingMultiple);
}

TEST_F(FinishingMenuTest, ANumberWithoutMeaningIsThePrintersDefault) {
    // Not a choice; one part only; a part that is none, of another kind, out of range; too many digits.
    for (const SInt32 value : {4, 99, -1, -10, 1'000'000, 1'000'010, 1'000'505, 1'005'014, 1'501'050, 1'105'010,
                               91'005'010, 2'005'010, -1'005'010, INT_MAX, INT_MIN}) {
        EXPECT_EQ(FinishingKindOfValue(value), kFinishingDefault) << value;
        EXPECT_EQ(SplitFinishingValue(value), std::nullopt) << value;
        EXPECT_EQ(summary({.options = value, .custom = {}}), "Printer Default") << value;
    }
}

// ---- Marks, words, commands

TEST_F(FinishingMenuTest, MarksWhatIsChosen) {
    commandsWith(AllFinishingFeatures());
    FinishingSettings settings;
    EXPECT_EQ(marked(settings), Commands{"Pdef"});
    settings.options = FinishingValueOf({.staple = 10, .halfSheetFold = 91});
    settings.slipSheet = kSlipSheetsOn;
    settings.offset = kOffsetOn;
    EXPECT_EQ(marked(settings), (Commands{"FMul", "Spsh", "Ofsb"}));
    settings = {};
    settings.options = 73;
    settings.slipSheet = 1;
    EXPECT_EQ(marked(settings), Commands{"Hpn4"}) << "and no mark from before";
}

TEST_F(FinishingMenuTest, SaysInWordsWhatIsChosen) {
    FinishingSettings settings;
    EXPECT_EQ(summary(settings), "Printer Default");
    settings.options = 82;
    EXPECT_EQ(summary(settings), "Fold: Half Fold, Printed Inside");
    settings.options = kFinishingValueCustom;
    EXPECT_EQ(summary(settings), "Square-Fold Trimming");
    settings.custom = String("Tape 7");
    EXPECT_EQ(summary(settings), "Square-Fold Trimming: Tape 7");
    settings.options = FinishingValueOf({.staple = 12, .punch = 51});
    settings.slipSheet = kSlipSheetsOn;
    settings.offset = kOffsetOn;
    EXPECT_EQ(summary(settings), "1 Staple: Bottom Right\n2 Hole Punch: Top\nSlip Sheets\nOffset Each Copy");
    settings = {.options = 3, .offset = kOffsetOn, .enableSubset = 1, .pagesPerSubset = 12, .custom = {}};
    EXPECT_EQ(summary(settings), "Signature Booklet\nOffset, Pages in a Subset: 12");
    for (const FinishingChoice& choice : FinishingChoices()) {
        settings.options = choice.value;
        EXPECT_EQ(summary(settings).find("STRING NOT FOUND"), std::string::npos) << choice.value;
    }
}

TEST_F(FinishingMenuTest, PlainItemsSetTheirValue) {
    FinishingSettings settings;
    const auto after = [&](OSType command) {
        EXPECT_EQ(CarryOutFinishingCommand(plugin.bundle(), command, &settings), noErr);
        return settings.options;
    };
    EXPECT_EQ(after(FourCharCode("FSBM")), 3);
    EXPECT_EQ(after(FourCharCode("None")), 1);
    EXPECT_EQ(after(FourCharCode("Sgbm")), 3);
    EXPECT_EQ(after(FourCharCode("Pdef")), 0);
    after(FourCharCode("Spsh"));
    EXPECT_EQ(settings.slipSheet, 2);
    after(FourCharCode("Spsh"));
    EXPECT_EQ(settings.slipSheet, 0);
    settings.slipSheet = 1;
    after(FourCharCode("Spsh"));
    EXPECT_EQ(settings.slipSheet, 2);

    const FinishingSettings before = settings;
    for (const OSType command : {FourCharCode("Bkcr"), FourCharCode("Coll"), OSType{0}}) {
        EXPECT_EQ(CarryOutFinishingCommand(plugin.bundle(), command, &settings), eventNotHandledErr);
    }
    for (const OSType command : {FourCharCode("Stp1"), FourCharCode("FMul")}) {
        EXPECT_EQ(CarryOutFinishingCommand(plugin.bundle(), command, &settings), paramErr) << "none is installed";
    }
    EXPECT_EQ(settings.options, before.options);
}

TEST_F(FinishingMenuTest, OffsetIsOneOfThreeItems) {
    struct Row {
        SInt32 offset, enableSubset, pages, item, shownPages;
    };
    for (const Row& row : {Row{1, 0, 1, 1, 1}, Row{2, 0, 5, 2, 5}, Row{2, 1, 25, 3, 25}, Row{1, 1, 0, 1, 1},
                           Row{2, -4, 1000, 3, 999}, Row{0, 1, INT_MIN, 1, 1}, Row{INT_MAX, 1, INT_MAX, 1, 999}}) {
        const FinishingSettings settings{
            .offset = row.offset, .enableSubset = row.enableSubset, .pagesPerSubset = row.pages, .custom = {}};
        EXPECT_EQ(OffsetItem(settings), row.item) << row.offset << " " << row.enableSubset;
        EXPECT_EQ(ShownPagesPerSubset(settings), row.shownPages) << row.pages;
    }
    FinishingSettings settings;
    for (const SInt32 item : {kOffsetItemSubsets, kOffsetItemSets, kOffsetItemNone}) {
        SetOffsetItem(&settings, item, 30);
        EXPECT_EQ(OffsetItem(settings), item);
        EXPECT_EQ(settings.pagesPerSubset, item == kOffsetItemSubsets ? 30 : 1);
    }
}

}  // namespace
