// A stock dialog used as a user would while its modal loop runs: real windows, real PPDs, a country to be in.
#pragma once

#include "model/stock/stock.h"
#include "platform/toolbox/Automation.h"
#include "tests/panels/plugin_fixture.h"

#include <QImage>
#include <QLocale>
#include <algorithm>
#include <deque>
#include <fstream>
#include <functional>

/// A session whose current printer is that of the PPD file.
class StockPrinter : public PluginSession {
public:
    explicit StockPrinter(const std::string& ppd = kZR420) : PluginSession(ppd) {
        const auto url = CFRef<CFURLRef>::adopt(
            CFURLCreateWithFileSystemPath(nullptr, String(ppd).get(), kCFURLPOSIXPathStyle, false));
        EXPECT_EQ(PMPrinterCreateFromPPDFile(url.get(), &printer_), noErr);
        EXPECT_EQ(PMSessionSetCurrentPMPrinter(session, printer_), noErr);
        SetCurrentPrintSession(session);
    }
    ~StockPrinter() {
        SetCurrentPrintSession(nullptr);
        PMPrinterRelease(printer_);
    }

private:
    PMPrinter printer_ = nullptr;
};

class StockDialogTest : public testing::Test {
protected:
    using Step = std::function<void(WindowRef)>;

    StockDialogTest() {
        live("en_US");
        AutomationSetNoticeListener(
            [](CFStringRef header, CFStringRef message, void* self) {
                static_cast<StockDialogTest*>(self)->notices.push_back(Text(header));
                EXPECT_FALSE(Text(message).empty());
                EXPECT_EQ(Text(message).find("STRING NOT FOUND"), std::string::npos);
            },
            this);
    }
    ~StockDialogTest() override {
        AutomationSetNoticeListener(nullptr, nullptr);
        EXPECT_TRUE(steps_.empty()) << "a window did not come up";
    }

    static void live(const char* locale) { QLocale::setDefault(QLocale(QString::fromLatin1(locale))); }

    /// Runs what opens a window. Each step gets the next window that comes to the front, and must see to its end.
    template <typename Run>
    auto during(Run run, std::initializer_list<Step> steps) {
        steps_ = steps;
        seen_ = {FrontNonFloatingWindow()};
        EventLoopTimerRef timer = nullptr;
        InstallEventLoopTimer(
            0.005, 0.005, [](EventLoopTimerRef, void* self) { static_cast<StockDialogTest*>(self)->takeStep(); }, this,
            &timer);
        const auto result = run();
        RemoveEventLoopTimer(timer);
        return result;
    }

    // ---- A window of the dialogs

    static ControlRef control(WindowRef window, SInt32 number) {
        const ControlID id{FourCharCode("TPDE"), number};
        ControlRef found = nullptr;
        EXPECT_EQ(GetControlByID(window, &id, &found), noErr) << number;
        return found;
    }
    static std::string text(WindowRef window, SInt32 number) {
        CFStringRef shown = nullptr;
        EXPECT_EQ(GetControlData(control(window, number), kControlEntireControl, kControlEditTextCFStringTag,
                                 sizeof shown, &shown, nullptr),
                  noErr)
            << number;
        return Text(CFRef<CFStringRef>::adopt(shown).get());
    }
    static void type(WindowRef window, SInt32 number, const char* typed) {
        EXPECT_EQ(AutomationType(control(window, number), String(typed).get()), noErr) << number;
    }
    static void set(WindowRef window, SInt32 number, SInt32 value) {
        EXPECT_EQ(AutomationSetValue(control(window, number), value), noErr) << number;
    }
    static SInt32 value(WindowRef window, SInt32 number) { return GetControl32BitValue(control(window, number)); }
    static bool enabled(WindowRef window, SInt32 number) { return IsControlEnabled(control(window, number)); }
    static void click(ControlRef control) { EXPECT_EQ(AutomationClick(control), noErr); }
    static void clickOK(WindowRef window) {
        ControlRef button = nullptr;
        EXPECT_EQ(GetWindowDefaultButton(window, &button), noErr);
        click(button);
    }
    static void clickCancel(WindowRef window) {
        ControlRef button = nullptr;
        EXPECT_EQ(GetWindowCancelButton(window, &button), noErr);
        click(button);
    }
    /// The only button of the window with that command.
    static void clickCommand(WindowRef window, OSType command) {
        ControlRef root = nullptr;
        GetRootControl(window, &root);
        for (UInt16 i = 1; i <= CountSubControls(root); ++i) {
            ControlRef child = nullptr;
            GetIndexedSubControl(root, i, &child);
            if (GetControlCommandID(child) == command) {
                click(child);
                return;
            }
        }
        ADD_FAILURE() << "no button for " << FourCharCodeText(command);
    }
    /// Picks the pop-up's item of a ticket value.
    static void choose(WindowRef window, SInt32 number, SInt32 ticketValue) {
        const std::vector<MenuItemContent> items = Items(control(window, number));
        for (std::size_t i = 0; i < items.size(); ++i) {
            if (items[i].refCon == ticketValue) {
                EXPECT_EQ(AutomationChooseMenuItem(control(window, number),
                                                   GetControlPopupMenuHandle(control(window, number)),
                                                   static_cast<MenuItemIndex>(i + 1)),
                          noErr);
                return;
            }
        }
        ADD_FAILURE() << number << " has no item " << ticketValue;
    }

    static std::string title(WindowRef window, SInt32 number) {
        CFStringRef shown = nullptr;
        EXPECT_EQ(CopyControlTitleAsCFString(control(window, number), &shown), noErr) << number;
        return Text(CFRef<CFStringRef>::adopt(shown).get());
    }
    QImage snapshot(WindowRef window) {
        const std::string file = (plugin.contents() / "window.png").string();
        const auto url = CFRef<CFURLRef>::adopt(
            CFURLCreateWithFileSystemPath(nullptr, String(file).get(), kCFURLPOSIXPathStyle, false));
        EXPECT_EQ(AutomationSnapshot(window, url.get()), noErr);
        return QImage(QString::fromStdString(file));
    }

    /// The ZR420's PPD without the lines that begin so.
    std::string ppdWithout(const std::vector<std::string>& beginnings) const {
        std::ifstream all(kZR420);
        std::string rest;
        for (std::string line; std::getline(all, line);) {
            const auto isGone = [&line](const std::string& beginning) { return line.starts_with(beginning); };
            if (std::ranges::none_of(beginnings, isGone)) {
                rest += line + "\n";
            }
        }
        plugin.add("changed.ppd", rest);
        return (plugin.contents() / "changed.ppd").string();
    }

    std::vector<std::string> notices;
    PluginBundle plugin;

private:
    void takeStep() {
        const WindowRef front = FrontNonFloatingWindow();
        if (steps_.empty() || front == nullptr || std::ranges::count(seen_, front) > 0) {
            return;
        }
        seen_.push_back(front);
        const Step step = std::move(steps_.front());
        steps_.pop_front();
        step(front);
        std::erase(seen_, front);
        if (IsValidWindowPtr(front)) {
            seen_.push_back(front);
            QuitAppModalLoopForWindow(front);  // a dialog that did not let itself be closed counts as cancelled
        }
    }

    std::deque<Step> steps_;
    std::vector<WindowRef> seen_;
};
