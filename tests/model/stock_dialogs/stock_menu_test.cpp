// The stock menu on a button, picked from as a user would.

#include "model/stock_dialogs/stock_menu.h"
#include "model/settings/ticket_access.h"
#include "model/stock/stock_library.h"
#include "model/stock_dialogs/stock_view.h"
#include "tests/model/stock_dialogs/stock_fixture.h"

namespace {

constexpr SInt32 kButton = 1;
constexpr SInt32 kStockSummary = 2;
constexpr SInt32 kStockIcon = 3;

MenuRef submenu(MenuRef menu, OSType itemCommand) {
    for (MenuItemIndex item = 1; item <= CountMenuItems(menu); ++item) {
        MenuRef below = nullptr;
        OSType command = 0;
        GetMenuItemHierarchicalMenu(menu, item, &below);
        if (below != nullptr && GetMenuItemCommandID(below, 1, &command) == noErr && command == itemCommand) {
            return below;
        }
    }
    return nullptr;
}

class StockMenuTest : public StockDialogTest {
protected:
    void open(JobContext context) {
        ASSERT_NO_FATAL_FAILURE(window_.show());
        DefaultStock(&stock, context);
        stock.setCustomName(CFSTR("Old name"));
        stock.setCustomNameOnly(true);
        data.bundle = plugin.bundle();
        data.stock = &stock;
        data.context = context;
        data.summaryView = window_.find(kStockSummary);
        data.icon = window_.find(kStockIcon);
        ASSERT_EQ(InitializeStockMenuButton(button(), &data), noErr);
        owner_ = std::make_unique<TestHandler>(window_.target(), kEventClassCommand, kEventCommandProcess,
                                               [this](EventHandlerCallRef, EventRef event) {
                                                   seenByOwner.push_back(commandOf(event));
                                                   return noErr;
                                               });
    }
    void TearDown() override { FinalizeStockMenuButton(button(), &data); }

    ControlRef button() const { return window_.find(kButton); }
    std::string summary() const { return window_.text(kStockSummary); }

    /// Picks the item of a command and ticket value, from the menu or a submenu.
    OSStatus pick(OSType command, SInt32 ticketValue = 0) {
        for (const MenuRef menu : {data.menu, submenu(data.menu, command)}) {
            for (MenuItemIndex item = 1; item <= CountMenuItems(menu); ++item) {
                OSType itemCommand = 0;
                MenuRefCon reference = 0;
                MenuRef below = nullptr;
                GetMenuItemCommandID(menu, item, &itemCommand);
                GetMenuItemRefCon(menu, item, &reference);
                GetMenuItemHierarchicalMenu(menu, item, &below);
                if (below == nullptr && itemCommand == command && reference == ticketValue) {
                    return AutomationChooseMenuItem(button(), menu, item);
                }
            }
        }
        ADD_FAILURE() << "no item " << FourCharCodeText(command) << " " << ticketValue;
        return paramErr;
    }

    /// A window with a stock button, as a panel has it.
    class ButtonWindow : public NibWindowTest {
    public:
        ~ButtonWindow() override { NibWindowTest::TearDown(); }
        void show() {
            open("<layout class=\"QVBoxLayout\"><item>" +
                 widget("QToolButton", kButton, property("popupMode", "enum", "QToolButton::InstantPopup")) +
                 "</item><item>" + widget("QPlainTextEdit", kStockSummary, property("readOnly", "bool", "true")) +
                 "</item><item>" + widget("QWidget", kStockIcon) + "</item></layout>");
            ShowWindow(window);
        }
        ControlRef find(SInt32 number) const { return control(number); }
        std::string text(SInt32 number) const {
            CFStringRef shown = nullptr;
            GetControlData(control(number), kControlEntireControl, kControlEditTextCFStringTag, sizeof shown, &shown,
                           nullptr);
            return Text(CFRef<CFStringRef>::adopt(shown).get());
        }
        EventTargetRef target() const { return GetWindowEventTarget(window); }
        void TestBody() override {}
    };

    Stock stock;
    std::vector<OSType> seenByOwner;

private:
    ButtonWindow window_;
    std::unique_ptr<TestHandler> owner_;

protected:
    _StockMenuCommandEventHandlerData data{};
};

std::vector<std::string> texts(MenuRef menu) {
    std::vector<std::string> all;
    for (MenuItemIndex item = 1; item <= CountMenuItems(menu); ++item) {
        CFStringRef text = nullptr;
        CopyMenuItemTextAsCFString(menu, item, &text);
        all.push_back(Text(CFRef<CFStringRef>::adopt(text).get()));
    }
    return all;
}

struct FirstItem {
    std::string text;
    MenuRefCon value;
    bool operator==(const FirstItem&) const = default;
};
FirstItem first(MenuRef menu) {
    MenuRefCon value = 0;
    GetMenuItemRefCon(menu, 1, &value);
    return {texts(menu).at(0), value};
}

TEST_F(StockMenuTest, TheJobHasNoSizesAndPartsMayFollowTheJob) {
    const StockPrinter printer;
    open(JobContext::job);
    EXPECT_EQ(texts(data.menu),
              (std::vector<std::string>{"Default Paper", "-", "Color", "Type", "-", "More Paper Settings…"}));
    EXPECT_EQ(submenu(data.menu, kStockCommandSize), nullptr);
    EXPECT_EQ(first(submenu(data.menu, kStockCommandColor)), (FirstItem{"White", 1}));

    PopulateStockMenu(data.menu, plugin.bundle(), JobContext::cover, &data);
    EXPECT_EQ(texts(data.menu),
              (std::vector<std::string>{"Default Paper", "-", "Size", "Color", "Type", "-", "More Paper Settings…"}));
    EXPECT_EQ(first(submenu(data.menu, kStockCommandSize)), (FirstItem{"Letter (8.5 x 11 in)", 1}));
    EXPECT_EQ(first(submenu(data.menu, kStockCommandType)), (FirstItem{"Printer Default", kStockTypeSystemDefault}));

    for (const JobContext context : {JobContext::insert, JobContext::exception}) {
        PopulateStockMenu(data.menu, plugin.bundle(), context, &data);
        EXPECT_EQ(texts(data.menu).at(0), "Same as Job");
        for (const OSType command : {kStockCommandSize, kStockCommandColor, kStockCommandType}) {
            EXPECT_EQ(first(submenu(data.menu, command)), (FirstItem{"Same as Job", kTicketValueUnset}));
        }
        EXPECT_EQ(std::ranges::count(texts(submenu(data.menu, kStockCommandType)), "Same as Job"), 1);
    }
}

TEST_F(StockMenuTest, PicksEditTheStockAndTheOwnerSeesThem) {
    const StockPrinter printer;
    open(JobContext::insert);
    EXPECT_EQ(pick(kStockCommandColor, 2), noErr);
    EXPECT_EQ(stock.color(), 2);
    EXPECT_EQ(Text(stock.customName()), "");
    EXPECT_FALSE(stock.customNameOnly());
    EXPECT_EQ(summary(), "Color: Blue");
    EXPECT_EQ(pick(kStockCommandType, kStockTypeTransparency), noErr);
    EXPECT_EQ(summary(), "Color: Clear\nType: Transparency");
    EXPECT_EQ(pick(kStockCommandSize, 4), noErr);
    EXPECT_EQ(stock.size(), 4);
    EXPECT_EQ(pick(kStockCommandColor, kTicketValueUnset), noErr);
    EXPECT_EQ(stock.color(), kTicketValueUnset);
    EXPECT_EQ(pick(kStockCommandDefault), noErr);
    EXPECT_EQ(summary(), "Same as Job");
    EXPECT_EQ(seenByOwner, (std::vector<OSType>{kStockCommandColor, kStockCommandType, kStockCommandSize,
                                                kStockCommandColor, kStockCommandDefault}));

    FinalizeStockMenuButton(button(), &data);
    EXPECT_EQ(pick(kStockCommandColor, 3), noErr);
    EXPECT_EQ(stock.color(), kTicketValueUnset) << "the menu is nobody's now";
}

TEST_F(StockMenuTest, ACustomSizeIsAskedForAndGivenUpQuietly) {
    const StockPrinter printer;
    open(JobContext::cover);
    during([&] { return pick(kStockCommandSize, kStockSizeCustom); }, {[](WindowRef custom) { clickCancel(custom); }});
    EXPECT_EQ(stock.size(), 1);
    EXPECT_EQ(Text(stock.customName()), "") << "even so";
    EXPECT_EQ(summary(), "Size: Letter (8.5 x 11 in)\nColor: White\nType: Plain Paper");
    EXPECT_TRUE(seenByOwner.empty());

    for (const char* typed : {"6.25", "7"}) {
        during([&] { return pick(kStockCommandSize, kStockSizeCustom); }, {[&](WindowRef custom) {
                   EXPECT_EQ(text(custom, 1006), typed == std::string("7") ? "6.25" : "8.50") << "the stock's own";
                   type(custom, 1006, typed);
                   clickOK(custom);
               }});
    }
    EXPECT_EQ(stock.size(), kStockSizeCustom);
    EXPECT_EQ(stock.width(), 17780);
    EXPECT_EQ(stock.length(), 27940);
    EXPECT_EQ(summary(), "Size: Custom (7 × 11 in)\nColor: White\nType: Plain Paper");
    EXPECT_EQ(seenByOwner, (std::vector<OSType>{kStockCommandSize, kStockCommandSize}));
}

TEST_F(StockMenuTest, TheAdvancedSelectionKeepsTheNameWhenGivenUp) {
    const StockPrinter printer;
    open(JobContext::job);
    during([&] { return pick(kStockCommandAdvanced); }, {[](WindowRef advanced) { clickCancel(advanced); }});
    EXPECT_EQ(Text(stock.customName()), "Old name");
    during([&] { return pick(kStockCommandAdvanced); }, {[](WindowRef advanced) {
               choose(advanced, 22003, kStockTypeRecycled);
               clickOK(advanced);
           }});
    EXPECT_EQ(stock.type(), kStockTypeRecycled);
    EXPECT_EQ(summary(), "Color: White\nType: Recycled");
    EXPECT_EQ(seenByOwner.size(), 2u);
}

TEST_F(StockMenuTest, WhatThePrinterLacksCannotBePicked) {
    const StockPrinter printer(ppdWithout({"*MediaColor", "*OpenUI *MediaColor", "*CloseUI: *MediaColor",
                                           "*DefaultMediaColor", "*OrderDependency: 20.0 AnySetup *MediaColor"}));
    open(JobContext::job);
    EXPECT_FALSE(IsMenuItemEnabled(data.menu, 3));
    EXPECT_TRUE(IsMenuItemEnabled(data.menu, 4));
    // Following the job is a choice all the same.
    PopulateStockMenu(data.menu, plugin.bundle(), JobContext::insert, &data);
    EXPECT_EQ(texts(submenu(data.menu, kStockCommandColor)), std::vector<std::string>{"Same as Job"});
}

TEST_F(StockMenuTest, SummariesSayWhoDecidesWhenNothingIsSet) {
    const StockPrinter printer;
    open(JobContext::job);
    EXPECT_EQ(ShowStockSummary(nullptr, data.summaryView, &stock, JobContext::job), paramErr);
    EXPECT_EQ(ShowStockSummary(plugin.bundle(), nullptr, &stock, JobContext::job), paramErr);
    EXPECT_EQ(ShowStockSummary(plugin.bundle(), data.summaryView, &stock, JobContext::job), noErr);
    EXPECT_EQ(summary(), "Printer Default") << "known by its name alone";
    DefaultStock(&stock, JobContext::exception);
    ShowStockSummary(plugin.bundle(), data.summaryView, &stock, JobContext::exception);
    EXPECT_EQ(summary(), "Same as Job");
    ShowStockSummary(plugin.bundle(), data.summaryView, nullptr, JobContext::exception);
    EXPECT_EQ(summary(), "");
}

TEST_F(StockMenuTest, APaperOfTheLibraryComesWithItsName) {
    const StockPrinter printer;
    setenv("XDG_DATA_HOME", plugin.contents().c_str(), 1);
    std::filesystem::create_directories(plugin.contents() / "tavro");
    SetShowsStockDetails(true);
    open(JobContext::job);
    const MenuRef named = submenu(data.menu, kStockCommandNamed);
    ASSERT_NE(named, nullptr);
    Stock paper;
    paper.setSize(4);
    paper.setType(kStockTypeHeavyGlossy);
    paper.setWeight(250);
    for (const char* name : {"Cover", "Gone & forgotten"}) {
        paper.setCustomName(String(name).get());
        EXPECT_EQ(StoreStock(paper, nullptr, false).fault, StockLibraryFault::none);
    }
    AutomationPrepareMenu(named);  // as the user sees it: with what was stored since the panel was opened
    EXPECT_EQ(texts(named), (std::vector<std::string>{"Cover", "Gone & forgotten", "-", "Paper Library…"}));

    EXPECT_EQ(pick(kStockCommandNamed, 1), noErr);
    EXPECT_EQ(summary(), "Paper: Cover\nColor: White\nType: Heavyweight Glossy\n250 g/m²");
    EXPECT_EQ(stock.size(), 1) << "the page setup's matter";
    EXPECT_EQ(seenByOwner, std::vector<OSType>{kStockCommandNamed});
    EXPECT_EQ(pick(kStockCommandColor, 2), noErr);
    EXPECT_EQ(Text(stock.customName()), "") << "it is another paper now";
    SetShowsStockDetails(false);
    unsetenv("XDG_DATA_HOME");
}

}  // namespace
