// Menus made from setting maps and from the options of real PPDs, and their choice as a ticket value.

#include "tests/support/places.h"
#include "ui/ppd_menus.h"
#include "ui/setting_menus.h"

#include "model/stock/stock.h"
#include "platform/toolbox/objects.h"
#include "tests/panels/plugin_fixture.h"
#include "ui/localization.h"

#include <QComboBox>
#include <algorithm>

namespace {

constexpr SettingMap kMap[] = {
    {"Ignored", kTicketValueUnset, FourCharCode("Mdef")},
    {"Simplex", 1, 0},
    {"Duplex", 2, FourCharCode("Mdup")},
    {"No such key", 0, 0},
    {},
};

class MenusTest : public NibWindowTest {
protected:
    void SetUp() override {
        open("<layout class=\"QVBoxLayout\"><item>" + widget("QComboBox", 1) + "</item></layout>");
        popup = control(1);
    }
    std::vector<MenuItemContent> itemsOfMap(JobContext context, OSType command) {
        EXPECT_EQ(PopulatePopupButtonFromMap(plugin.bundle(), popup, kMap, context, command), 4u);
        return Items(popup);
    }

    PluginBundle plugin;
    ControlRef popup = nullptr;
};

TEST_F(MenusTest, MapRowsBecomeItems) {
    EXPECT_EQ(itemsOfMap(JobContext::job, 0), (std::vector<MenuItemContent>{
                                                  {"Printer Default", kTicketValueUnset, FourCharCode("Mdef")},
                                                  {"1-Sided", 1, 0},
                                                  {"2-Sided", 2, FourCharCode("Mdup")},
                                                  {"STRING NOT FOUND", 0, 0},
                                              }));
    for (const JobContext part : {JobContext::cover, JobContext::insert, JobContext::exception}) {
        const auto items = itemsOfMap(part, FourCharCode("Mall"));
        EXPECT_EQ(items.front(), (MenuItemContent{"Same as Job", kTicketValueUnset, FourCharCode("Mall")}));
        EXPECT_EQ(items.at(2).command, FourCharCode("Mall"));
    }
    MenuRefCon map = 0;
    EXPECT_EQ(GetMenuItemRefCon(GetControlPopupMenuHandle(popup), 0, &map), noErr);
    EXPECT_EQ(map, reinterpret_cast<MenuRefCon>(kMap));

    constexpr SettingMap kEmpty[] = {{}};
    EXPECT_EQ(PopulatePopupButtonFromMap(plugin.bundle(), popup, kEmpty, JobContext::job, 0), 0u);
    EXPECT_TRUE(Items(popup).empty());
    EXPECT_EQ(PopulatePopupButtonFromMap(plugin.bundle(), nullptr, kMap, JobContext::job, 0), 0u);
}

TEST_F(MenusTest, TheChoiceIsATicketValue) {
    EXPECT_EQ(GetPopupButtonTicketValue(popup), kTicketValueUnset);
    itemsOfMap(JobContext::job, 0);
    SetPopupButtonToTicketValue(popup, 2);
    EXPECT_EQ(GetControl32BitValue(popup), 3);
    SetPopupButtonToTicketValue(popup, 77);
    EXPECT_EQ(GetPopupButtonTicketValue(popup), 2);
    SetPopupButtonToTicketValue(popup, 0);
    EXPECT_EQ(GetPopupButtonTicketValue(popup), 0);
    SetPopupButtonToTicketValue(popup, kTicketValueUnset);
    EXPECT_EQ(GetControl32BitValue(popup), 1);
    SetPopupButtonToTicketValue(nullptr, 1);
}

TEST_F(MenusTest, EveryOptionOfOurPrintersHasItsTicketValue) {
    for (const char* name : {"Tavro-ZR410.ppd", "Tavro-ZR420.ppd"}) {
        const PluginSession printer(sourcePath("resources/ppd/") + name);
        for (const char* keyword : {"PageSize", "MediaType", "MediaColor", "Duplex", "JCLBanner", "Jog", "OutputBin"}) {
            const CFArrayRef options = PPDGetGlobalOptions(String(keyword).get());
            if (options == nullptr) {
                continue;  // the smaller printer lacks some
            }
            EXPECT_EQ(PopulatePopupButtonFromPPDOptions(popup, options, FourCharCode("Pick")),
                      CFArrayGetCount(options));
            for (const auto& [text, value, command] : Items(popup)) {
                EXPECT_NE(value, -1) << name << " " << keyword << " " << text;
                EXPECT_FALSE(text.empty()) << name << " " << keyword;
                EXPECT_EQ(command, FourCharCode("Pick"));
            }
        }
    }
}

TEST_F(MenusTest, OptionsOutsideTheMapStandForNothingAndCannotBeChosen) {
    const auto options = [](const char* mainKeyword, std::initializer_list<const char*> keywords) {
        auto list = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
        for (const char* keyword : keywords) {
            const CFRef<CFStringRef> main = String(mainKeyword);
            const CFRef<CFStringRef> option = String(keyword);
            const void* row[] = {main.get(),     option.get(),   option.get(),
                                 CFSTR("false"), CFSTR("false"), CFSTR("false")};
            const auto info =
                CFRef<CFArrayRef>::adopt(CFArrayCreate(nullptr, row, std::size(row), &kCFTypeArrayCallBacks));
            CFArrayAppendValue(list.get(), info.get());
        }
        return list;
    };
    const auto values = [&](CFArrayRef list) {
        PopulatePopupButtonFromPPDOptions(popup, list, 0);
        std::vector<MenuRefCon> result;
        for (const MenuItemContent& item : Items(popup)) {
            result.push_back(item.refCon);
        }
        return result;
    };
    EXPECT_EQ(values(options("PageSize", {"Letter", "Napkin", "Custom"}).get()),
              (std::vector<MenuRefCon>{1, -1, kStockSizeCustom}));
    auto* shown = qobject_cast<QComboBox*>(popup->widget);
    for (const MenuItemIndex item : {1, 2, 3}) {
        const bool isUnknown = item == 2;
        EXPECT_EQ(IsMenuItemEnabled(GetControlPopupMenuHandle(popup), item), !isUnknown) << item;
        EXPECT_EQ(shown->itemData(item - 1, Qt::ToolTipRole).toString().isEmpty(), !isUnknown) << "says why not";
    }
    EXPECT_EQ(values(options("Jog", {"None", "Custom"}).get()), (std::vector<MenuRefCon>{0, -1}));
    EXPECT_EQ(values(options("NoSuchKeyword", {"None", "Custom"}).get()), (std::vector<MenuRefCon>{0, 0}));

    EXPECT_EQ(PopulatePopupButtonFromPPDOptions(popup, nullptr, 0), 0u);
    EXPECT_EQ(Items(popup).size(), 2u);
    EXPECT_EQ(PopulateMenuFromPPDOptions(nullptr, options("Jog", {"None"}).get(), 0), 0u);
}

}  // namespace
