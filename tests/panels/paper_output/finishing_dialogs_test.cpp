// The dialogs that the finishing menu opens, used while their modal loop runs; and separators between transparencies.

#include "model/records/booklet_fold.h"
#include "panels/paper_output/booklet_creation_dialog.h"
#include "panels/paper_output/finishing_commands.h"
#include "panels/paper_output/position_picker.h"
#include "panels/paper_output/separators_dialog.h"
#include "tests/model/stock_dialogs/stock_fixture.h"
#include "tests/support/finishing_features.h"
#include "ui/setting_menus.h"

#include <climits>
#include <optional>

namespace {

class FinishingDialogTest : public StockDialogTest {
protected:
    void install(const std::vector<const char*>& features) {
        finisher.reset();
        finisher.emplace(printer.info, printer.context, features);
    }
    OSStatus command(OSType command, const Step& step) {
        return during([&] { return CarryOutFinishingCommand(plugin.bundle(), command, &settings); }, {step});
    }
    static std::vector<MenuRefCon> values(WindowRef window, SInt32 number) {
        std::vector<MenuRefCon> values;
        for (const MenuItemContent& item : Items(control(window, number))) {
            EXPECT_NE(item.text, "STRING NOT FOUND");
            values.push_back(item.refCon);
        }
        return values;
    }
    static bool visible(WindowRef window, SInt32 number) { return IsControlVisible(control(window, number)); }

    StockPrinter printer;
    std::optional<InstalledFinisher> finisher;
    FinishingSettings settings;
};

TEST_F(FinishingDialogTest, OffersInstalledPositionsOnly) {
    install({"1StapleTL", "1StapleBL", "2StaplesL"});
    settings.options = 13;
    command(FourCharCode("Stp1"), [&](WindowRef window) {
        EXPECT_EQ(values(window, 1001), (std::vector<MenuRefCon>{10, 13}));
        EXPECT_EQ(value(window, 1001), 2) << "what is chosen";
        const QImage before = snapshot(window);
        choose(window, 1001, 10);
        EXPECT_NE(snapshot(window), before) << "the picture follows";
        clickCancel(window);
    });
    EXPECT_EQ(settings.options, 13);
    command(FourCharCode("Stp2"), [](WindowRef window) {
        EXPECT_EQ(values(window, 1001), std::vector<MenuRefCon>{23});
        clickOK(window);
    });
    EXPECT_EQ(settings.options, 23);
}

TEST_F(FinishingDialogTest, SeveralTogetherNeedAPrinterThatCan) {
    install({"1StapleTL", "1StapleT", "2HolePunchL", "4HolePunchL"});
    settings.options = 50;
    command(kFinishingMultiple, [](WindowRef window) {
        EXPECT_FALSE(visible(window, 1300)) << "no fold";
        EXPECT_EQ(values(window, 1102), (std::vector<MenuRefCon>{0, 10, 30}));
        EXPECT_EQ(values(window, 1202), (std::vector<MenuRefCon>{0, 50, 70}));
        EXPECT_EQ(value(window, 1102), 1);
        EXPECT_EQ(value(window, 1202), 2);
        choose(window, 1102, 30);
        clickOK(window);
    });
    EXPECT_EQ(settings.options, FinishingValueOf({.staple = 30, .punch = 50}));

    settings.options = FinishingValueOf({.staple = 12, .punch = 61, .halfSheetFold = 90});
    command(kFinishingMultiple, [](WindowRef window) {
        EXPECT_EQ(value(window, 1102) + value(window, 1202), 2) << "another printer's choices are not to be had here";
        clickOK(window);
    });
    EXPECT_EQ(settings.options, kFinishingValueNone);
}

TEST_F(FinishingDialogTest, CustomFinishingIsAText) {
    install({"Custom"});
    settings.options = 1;
    command(kFinishingCustom, [](WindowRef window) {
        type(window, 123456, "Tape");
        clickCancel(window);
    });
    EXPECT_EQ(settings.options, 1);
    command(kFinishingCustom, [](WindowRef window) {
        type(window, 123456, "Tape 7");
        clickOK(window);
    });
    EXPECT_EQ(settings.options, kFinishingValueCustom);
    EXPECT_EQ(Text(settings.custom.get()), "Tape 7");
}

// ---- Booklets

class BookletCreationTest : public FinishingDialogTest {
protected:
    void run(const Step& step) {
        EXPECT_EQ(during([&] { return RunModalBookletCreationDialog(plugin.bundle(), &booklet); }, {step}), noErr);
    }
    BookletCreation booklet{.on = false, .drawOutlines = 0, .foldOption = 1, .forceNewSize = false, .size = 0};
};

TEST_F(BookletCreationTest, ABookletThatIsTurnedOffLosesItsFoldAndSize) {
    install({"BookletFoldKey"});
    booklet = {.on = true, .drawOutlines = 1, .foldOption = kFoldAndStapleBooklet, .forceNewSize = true, .size = 5};
    const auto expectShown = [](WindowRef window) {
        EXPECT_EQ(value(window, 1001) + value(window, 1003) + value(window, 1007), 3);
        EXPECT_EQ(GetPopupButtonTicketValue(control(window, 1005)), kFoldAndStapleBooklet);
        EXPECT_EQ(GetPopupButtonTicketValue(control(window, 1008)), 5);
        set(window, 1001, 0);
        EXPECT_FALSE(enabled(window, 1003) || enabled(window, 1005) || enabled(window, 1008));
    };
    run([&](WindowRef window) {
        expectShown(window);
        clickCancel(window);
    });
    EXPECT_TRUE(booklet.on && booklet.forceNewSize);
    run([&](WindowRef window) {
        expectShown(window);
        clickOK(window);
    });
    EXPECT_FALSE(booklet.on || booklet.forceNewSize);
    EXPECT_EQ(booklet.foldOption, kFoldNone);

    booklet.foldOption = 3;  // two holes
    run(clickOK);
    EXPECT_EQ(booklet.foldOption, 3) << "no matter of booklets";
}

TEST_F(BookletCreationTest, FoldsAreThoseThatThePrinterCanDo) {
    install({"BiFoldMultiple"});
    booklet.foldOption = kFoldAndStapleBooklet;
    run([](WindowRef window) {
        EXPECT_EQ(values(window, 1005), (std::vector<MenuRefCon>{kFoldNone, kFoldBooklet}));
        set(window, 1001, 1);
        choose(window, 1005, kFoldBooklet);
        for (const MenuRefCon size : values(window, 1008)) {
            EXPECT_TRUE(size > 0 && size != kStockSizeCustom) << size;
        }
        clickOK(window);
    });
    EXPECT_EQ(booklet.foldOption, kFoldBooklet);
    install({});
    run([](WindowRef window) {
        EXPECT_FALSE(visible(window, 1004));
        clickOK(window);
    });
    EXPECT_EQ(booklet.foldOption, kFoldNone);
}

// ---- Separators

class SeparatorsTest : public FinishingDialogTest {
protected:
    void sync() { SyncSeparatorsFromTicket(printer.settings, &option, &color); }

    SInt32 option = 0;
    SInt32 color = 0;
};

TEST_F(SeparatorsTest, LastInTheTicket) {
    sync();
    EXPECT_EQ(option, kSeparatorsNone);
    EXPECT_EQ(color, kStockColorWhite);
    SyncSeparatorsToTicket(printer.settings, kSeparatorsPrinted, 2);
    sync();
    EXPECT_EQ(option, kSeparatorsPrinted);
    EXPECT_EQ(color, 2);
    for (const SInt32 nonsense : {0, 4, 99, -1, INT_MAX, INT_MIN}) {
        SyncSeparatorsToTicket(printer.settings, nonsense, nonsense == 4 ? 0 : nonsense);
        sync();
        EXPECT_EQ(option, kSeparatorsNone) << nonsense;
        EXPECT_EQ(color, kStockColorWhite) << nonsense;
    }
}

TEST_F(SeparatorsTest, AreOneLineOfTheSummary) {
    EXPECT_EQ(Text(CopySeparatorText(plugin.bundle(), kSeparatorsNone, 2).get()), "No Separators");
    EXPECT_EQ(Text(CopySeparatorText(plugin.bundle(), kSeparatorsBlank, 2).get()), "Blank Separators, Blue");
}

TEST_F(SeparatorsTest, NeedAColorWhereThePrinterHasColors) {
    const auto run = [&](const Step& step) {
        EXPECT_EQ(during([&] { return RunModalSeparatorsDialog(plugin.bundle(), &option, &color); }, {step}), noErr);
    };
    option = kSeparatorsBlank;
    color = 2;
    run([](WindowRef window) {
        EXPECT_EQ(GetPopupButtonTicketValue(control(window, 1002)), 2);
        choose(window, 1000, kSeparatorsNone);
        EXPECT_FALSE(enabled(window, 1002));
        choose(window, 1000, kSeparatorsPrinted);
        choose(window, 1002, 3);
        clickOK(window);
    });
    EXPECT_EQ(option, kSeparatorsPrinted);
    EXPECT_EQ(color, 3);

    PPDReleaseGlobalUIDictionary();
    run([](WindowRef window) {
        EXPECT_FALSE(visible(window, 1001) || visible(window, 1002));
        choose(window, 1000, kSeparatorsBlank);
        clickOK(window);
    });
    EXPECT_EQ(option, kSeparatorsBlank);
    EXPECT_EQ(color, 3);
    EXPECT_EQ(Text(CopySeparatorText(plugin.bundle(), option, color).get()), "Blank Separators") << "without a name";
}

}  // namespace
