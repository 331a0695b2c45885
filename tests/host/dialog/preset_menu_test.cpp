// The menu of settings, without a window.
#include "host/dialog/preset_menu.h"

#include <gtest/gtest.h>

namespace {

using Item = PresetMenuItem;
using Kind = PresetMenuItem::Kind;
using Origin = SettingsOrigin;

const Item kSeparator{Kind::separator, {}};

Item originItem(Origin::Kind kind, const std::string& name = {}, bool isEnabled = true) {
    return {Kind::origin, {kind, name}, isEnabled};
}

}  // namespace

TEST(PresetMenu, HasWhatThereIs) {
    const std::vector<Item> none{originItem(Origin::Kind::printerDefaults),
                                 originItem(Origin::Kind::lastUsed, {}, false)};
    EXPECT_EQ(presetMenuItems({}), none);

    const std::vector<Item> some{originItem(Origin::Kind::printerDefaults),
                                 originItem(Origin::Kind::lastUsed),
                                 kSeparator,
                                 originItem(Origin::Kind::preset, "A4"),
                                 originItem(Origin::Kind::preset, "Draft"),
                                 Item{Kind::unreadable, {Origin::Kind::elsewhere, "x.plist"}, false}};
    PresetMenuContent content{.origin = {Origin::Kind::preset, "Draft"},
                              .presets = {"A4", "Draft"},
                              .unreadable = {"x.plist"},
                              .hasLastUsed = true,
                              .hasQueue = true};
    EXPECT_EQ(presetMenuItems(content), some);

    // Settings that no item stands for stand on top.
    const auto withTop = [&](const Origin& origin) {
        std::vector<Item> items{{Kind::shown, origin}, kSeparator};
        items.insert(items.end(), some.begin(), some.end());
        return items;
    };
    content.isChanged = true;
    EXPECT_EQ(presetMenuItems(content), withTop({Origin::Kind::preset, "Draft"}));
    content.isChanged = false;
    for (const Origin& origin :
         {Origin{Origin::Kind::elsewhere, "settings.plist"}, Origin{Origin::Kind::preset, "deleted meanwhile"}}) {
        content.origin = origin;
        EXPECT_EQ(presetMenuItems(content), withTop(origin));
    }
}
