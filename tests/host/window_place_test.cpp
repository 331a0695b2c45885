#include "host/dialog/window_place.h"

#include "tests/files/temporary_folder.h"
#include "tests/toolbox/toolbox_fixture.h"

namespace {

class WindowPlace : public NibWindowTest {
protected:
    WindowPlace() { setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1); }
    ~WindowPlace() override { unsetenv("XDG_CONFIG_HOME"); }

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

TEST_F(WindowPlace, IsTheOneOfTheLastTime) {
    open("");
    const Rect place{60, 80, 160, 280};
    SetWindowContentBounds(window, &place);
    rememberWindowPlace(window);
    const Rect elsewhere{0, 0, 100, 200};
    SetWindowContentBounds(window, &elsewhere);
    restoreWindowPlace(window);
    EXPECT_EQ(bounds().left, 80);
    EXPECT_EQ(bounds().top, 60);
}

TEST_F(WindowPlace, IsMovedBackFromAScreenThatIsGone) {
    open("");
    const Rect place{0, 0, 100, 200};
    SetWindowContentBounds(window, &place);
    remember(30000, -20000);
    restoreWindowPlace(window);
    EXPECT_GE(bounds().top, 0);
    EXPECT_LT(bounds().left, 10000);
    EXPECT_EQ(bounds().right - bounds().left, 200);
}
