#include "host/dialog/window_place.h"

#include "tests/platform/files/temporary_folder.h"
#include "tests/platform/toolbox/toolbox_fixture.h"

namespace {

class WindowPlaceTest : public NibWindowTest {
protected:
    WindowPlaceTest() { setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1); }
    ~WindowPlaceTest() override { unsetenv("XDG_CONFIG_HOME"); }

    Rect bounds() const {
        Rect rect{};
        GetWindowContentBounds(window, &rect);
        return rect;
    }
    void remember(SInt16 left, SInt16 top) const {
        std::filesystem::create_directories(folder.path() / "tavro");
        std::ofstream(folder.path() / "tavro" / "com.tavro.print.dialog.plist")
            << R"(<plist version="1.0"><dict><key>PrintDialogLeft</key><integer>)" << left
            << "</integer><key>PrintDialogTop</key><integer>" << top << "</integer></dict></plist>";
    }

    TemporaryFolder folder;
};

}  // namespace

TEST_F(WindowPlaceTest, IsTheOneOfTheLastTime) {
    open("");
    const Rect place{60, 80, 160, 280};
    SetWindowContentBounds(window, &place);
    rememberPlace(window, false);
    const Rect elsewhere{0, 0, 100, 200};
    SetWindowContentBounds(window, &elsewhere);
    const WindowPlace last = rememberedPlace(window);
    EXPECT_FALSE(last.hasPreview);
    ASSERT_TRUE(last.bounds);
    EXPECT_EQ(last.bounds->left, 80);
    EXPECT_EQ(last.bounds->top, 60);
}

TEST_F(WindowPlaceTest, IsMovedBackFromAScreenThatIsGone) {
    open("");
    const Rect place{0, 0, 100, 200};
    SetWindowContentBounds(window, &place);
    remember(30000, -20000);
    const WindowPlace last = rememberedPlace(window);
    EXPECT_TRUE(last.hasPreview);
    ASSERT_TRUE(last.bounds);
    SetWindowContentBounds(window, &*last.bounds);
    EXPECT_GE(bounds().top, 0);
    EXPECT_LT(bounds().left, 10000);
    EXPECT_EQ(bounds().right - bounds().left, 200);
}
