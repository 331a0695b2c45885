// The help viewer: pages of registered books only, and usable while a dialog is modal.

#include "platform/toolbox/Help.h"

#include "platform/toolbox/automation_input.h"
#include "platform/toolbox/objects.h"
#include "tests/platform/toolbox/toolbox_fixture.h"

#include <QApplication>
#include <QLocale>
#include <QTest>
#include <QTextBrowser>
#include <QTextDocument>
#include <QTimer>

namespace {

class HelpTest : public NibWindowTest {
protected:
    void SetUp() override {
        bundle.add("Info.plist", R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><dict>)"
                                 "<key>CFBundleIdentifier</key><string>com.example.help</string>"
                                 "<key>CFBundleHelpBookName</key><string>Test Help</string>"
                                 "<key>CFBundleHelpBookFolder</key><string>Help</string></dict></plist>");
        bundle.add("Resources/en.lproj/Help/index.html", page("Start"));
        bundle.add("Resources/en.lproj/Help/topics/page.htm", page("Page"));
        bundle.add("Resources/en.lproj/secret.html", page("Secret"));
        std::filesystem::create_symlink(bundle.contents() / "Info.plist",
                                        bundle.contents() / "Resources/en.lproj/Help/link.html");
        FSRef ref{};
        const std::string folder = bundle.contents().parent_path();
        folder.copy(ref.path, sizeof ref.path - 1);
        ASSERT_EQ(AHRegisterHelpBook(&ref), noErr);
    }
    void TearDown() override {
        if (QTextBrowser* shown = browser()) {
            shown->window()->close();
        }
        NibWindowTest::TearDown();
    }

    static std::string page(const std::string& title) {
        return "<html><head><title>" + title + "</title></head><body><a name=\"low\">" + title +
               "</a> <a href=\"../../secret.html\">out</a> <a href=\"../index.html\">start</a></body></html>";
    }
    static QTextBrowser* browser() {
        for (QWidget* top : QApplication::topLevelWidgets()) {
            if (auto* found = top->findChild<QTextBrowser*>(); found && top->isVisible()) {
                return found;
            }
        }
        return nullptr;
    }
};

TEST_F(HelpTest, OneViewerShowsAnchorsAndPages) {
    EXPECT_EQ(AHLookupAnchor(CFSTR("Test Help"), CFSTR("topics/page.htm#low")), noErr);
    QTextBrowser* const first = browser();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->window()->windowTitle(), QStringLiteral("Page"));
    EXPECT_EQ(first->source().fragment(), QStringLiteral("low"));
    EXPECT_EQ(AHGotoPage(CFSTR("Test Help"), nullptr, nullptr), noErr);
    EXPECT_EQ(browser(), first);
    EXPECT_EQ(first->window()->windowTitle(), QStringLiteral("Start"));
    first->backward();
    EXPECT_EQ(first->window()->windowTitle(), QStringLiteral("Page"));
    EXPECT_TRUE(QTest::qWaitForWindowActive(first->window()));
    QTest::keyClick(first->window()->windowHandle(), Qt::Key_Escape);
    EXPECT_EQ(browser(), nullptr);
}

TEST_F(HelpTest, PagesHaveTheDigitsOfTheLocale) {
    QLocale::setDefault(QLocale(QStringLiteral("ar_MA")));
    bundle.add("Resources/en.lproj/Help/topics/page.htm", page("ورق A4، ٢٥٠ غ"));
    EXPECT_EQ(AHLookupAnchor(CFSTR("Test Help"), CFSTR("topics/page.htm#low")), noErr);
    QLocale::setDefault(QLocale::c());
    ASSERT_NE(browser(), nullptr);
    EXPECT_EQ(browser()->window()->windowTitle(), QStringLiteral("ورق A4، 250 غ"));
    EXPECT_TRUE(browser()->toPlainText().startsWith(QStringLiteral("ورق A4، 250 غ")));
}

TEST_F(HelpTest, NothingOutsideOfTheBookIsShown) {
    const std::string absolute = bundle.contents() / "Info.plist";
    const auto path =
        CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, absolute.c_str(), kCFStringEncodingUTF8));
    for (const CFStringRef outside : {CFSTR("../secret.html"), CFSTR("topics/../../secret.html"), CFSTR("link.html"),
                                      CFSTR("missing.htm"), CFSTR("topics"), CFStringRef(path.get())}) {
        EXPECT_EQ(AHGotoPage(CFSTR("Test Help"), outside, nullptr), fnfErr);
    }
    EXPECT_EQ(AHGotoPage(CFSTR("Other Help"), CFSTR("index.html"), nullptr), fnfErr);
    EXPECT_EQ(AHLookupAnchor(CFSTR("Test Help"), nullptr), paramErr);
    EXPECT_EQ(browser(), nullptr) << "no window for a page that is not there";

    ASSERT_EQ(AHGotoPage(CFSTR("Test Help"), CFSTR("topics/page.htm"), nullptr), noErr);
    Q_EMIT browser()->anchorClicked(QUrl(QStringLiteral("../../secret.html")));
    EXPECT_EQ(browser()->documentTitle(), QStringLiteral("Page"));
    Q_EMIT browser()->anchorClicked(QUrl(QStringLiteral("../index.html")));
    EXPECT_EQ(browser()->documentTitle(), QStringLiteral("Start"));

    FSRef none{};
    EXPECT_EQ(AHRegisterHelpBook(&none), fnfErr);
}

TEST_F(HelpTest, StaysUsableWhileDialogsAreModal) {
    open(widget("QPushButton", 1));
    ASSERT_EQ(AHGotoPage(CFSTR("Test Help"), nullptr, nullptr), noErr);
    bool before = false;
    bool anew = false;
    QTimer::singleShot(0, [&] {
        QCoreApplication::processEvents();
        before = browser() && userReaches(browser());
        EXPECT_EQ(AHGotoPage(CFSTR("Test Help"), CFSTR("topics/page.htm"), nullptr), noErr);
        anew = browser() && userReaches(browser());
        QuitAppModalLoopForWindow(window);
    });
    EXPECT_EQ(RunAppModalLoopForWindow(window), noErr);
    EXPECT_TRUE(before) << "opened before the dialog";
    EXPECT_TRUE(anew) << "opened from the dialog";
    DisposeWindow(std::exchange(window, nullptr));
    EXPECT_NE(browser(), nullptr) << "the viewer outlives the dialog";
}

TEST_F(HelpTest, WebAddressesArePrintedInScriptedRuns) {
    const auto url =
        CFRef<CFURLRef>::adopt(CFURLCreateWithString(nullptr, CFSTR("https://example.com/a%20b"), nullptr));
    testing::internal::CaptureStdout();
    CFURLRef launched = nullptr;
    EXPECT_EQ(LSOpenCFURLRef(url.get(), &launched), noErr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "open https://example.com/a%20b\n");
    EXPECT_EQ(CFRef<CFURLRef>::adopt(launched).get(), url.get());
    EXPECT_EQ(LSOpenCFURLRef(nullptr, nullptr), paramErr);
}

}  // namespace
