// The Watermark panel between its list, the tickets, the store and the editor.

#include "platform/foundation/CFNumber.h"
#include "platform/printing/PMPrinter.h"
#include "platform/toolbox/Notices.h"
#include "tests/panels/panel_fixture.h"
#include "tests/platform/files/temporary_folder.h"
#include "watermark/panel/watermark_editor.h"
#include "watermark/records/watermark_font.h"
#include "watermark/records/watermark_storage.h"

#include <array>
#include <fstream>
#include <functional>
#include <optional>

extern "C" OSStatus GetWatermarkPanelInterface(PlugInIntf** interface);

namespace {

#define kChosenKey CFSTR("com.tavro.print.watermark.Watermark")
#define kFirstPageOnlyKey CFSTR("com.tavro.print.watermark.FirstPageOnly")
#define kOptionKey CFSTR("com.tavro.print.watermark.Option")

enum : SInt32 { kBrowser = 100, kFirstPageOnly = 200, kOption = 300, kEdit = 400, kNew = 500, kDelete = 600 };

using Names = std::vector<std::string>;
using Edits = std::vector<std::function<bool(WatermarkRecord&)>>;  // true: accepted

class WatermarkPanelTest : public PanelTest {
protected:
    WatermarkPanelTest()
        : PanelTest(GetWatermarkPanelInterface, kZR420, {"com.tavro.print.pde.WatermarkKind", 540, 491}) {
        signature = FourCharCode("TVRw");
        setenv("XDG_DATA_HOME", folder.path().c_str(), 1);
        EXPECT_EQ(PMTicketCreate(nullptr, kPDE_PMPageFormatKey, &pageFormat), noErr);
        const auto number = CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberSInt32Type, &pageFormat));
        PMSessionSetDataInSession(printer.session, kPDE_PMPageFormatKey, number.get());
        AutomationSetNoticeListener(
            [](CFStringRef header, CFStringRef message, void* self) {
                static_cast<WatermarkPanelTest*>(self)->notices.push_back(Text(header) + " " + Text(message));
            },
            this);
    }
    ~WatermarkPanelTest() override {
        AutomationSetNoticeListener(nullptr, nullptr);
        PMTicketReleaseAndClear(&pageFormat);
        unsetenv("XDG_DATA_HOME");
        test_ = nullptr;
    }

    void setPaper(double width, double height, SInt32 orientation) const {
        const auto sides = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
        for (const double side : {0.0, 0.0, height, width}) {
            CFArrayAppendValue(sides.get(),
                               CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberDoubleType, &side)).get());
        }
        PMTicketSetCFArray(pageFormat, CFSTR("test"), kPMUnadjustedPaperRectKey, sides.get(), kPMUnlocked);
        SetTicketNumber(pageFormat, CFSTR("test"), kPMOrientationKey, orientation);
    }
    /// Puts an editor into the plug-in, and the panel on the screen.
    void openWithEditor() {
        const auto contents = plugin.contents() / "PlugIns/WatermarkEditor.bundle/Contents";
        std::filesystem::create_directories(contents / "Linux");
        std::filesystem::copy_file(TEST_EDITOR, contents / "Linux/WatermarkEditor");
        std::ofstream(contents / "Info.plist")
            << "<plist version=\"1.0\"><dict><key>CFBundleIdentifier</key><string>com.example.editor</string>"
               "<key>CFBundleExecutable</key><string>WatermarkEditor</string></dict></plist>";
        openPanel();
        ASSERT_NE(CocoaEditWatermark, nullptr);
        const auto url = CFRef<CFURLRef>::adopt(
            CFURLCreateWithFileSystemPath(nullptr, String(contents.parent_path()).get(), kCFURLPOSIXPathStyle, true));
        editor = CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, url.get()));
        ASSERT_TRUE(CFBundleLoadExecutable(editor.get()));
        const auto setUser = reinterpret_cast<int (*)(EditWatermarkProc)>(
            CFBundleGetFunctionPointerForName(editor.get(), CFSTR("SetTestUser")));
        test_ = this;
        EXPECT_EQ(setUser(editAsTest), 1) << "initialised once";
    }
    /// Clicks the button, with these edits for each time that the editor comes.
    void edit(SInt32 button, Edits edits) {
        edits_ = std::move(edits);
        edited_ = 0;
        EXPECT_EQ(AutomationClick(shell(button)), noErr);
        EXPECT_EQ(edited_, edits_.size());
    }
    static std::function<bool(WatermarkRecord&)> retext(const std::string& text) {
        return [text](WatermarkRecord& record) {
            record.kind = kTextWatermark;
            *std::ranges::copy(text, record.text).out = '\0';
            return true;
        };
    }

    Names rows() const {
        Names names;
        const ControlRef browser = shell(kBrowser);
        for (UInt32 row = 1; row <= AutomationCountRows(browser); ++row) {
            names.push_back(Text(CFRef<CFStringRef>::adopt(AutomationCopyCellText(browser, row, 1)).get()));
        }
        return names;
    }
    std::string selected() const {
        const Names names = rows();
        for (UInt32 row = 1; row <= names.size(); ++row) {
            if (AutomationIsRowSelected(shell(kBrowser), row)) {
                return names[row - 1];
            }
        }
        return "-";
    }
    void select(UInt32 row) const { EXPECT_EQ(AutomationSelectRows(shell(kBrowser), 1, &row), noErr); }
    bool dependentsAreEnabled() const {
        const bool enabled = IsControlEnabled(shell(kEdit));
        for (const SInt32 number : {kFirstPageOnly, kOption, kDelete}) {
            EXPECT_EQ(IsControlEnabled(shell(number)), enabled) << number;
        }
        EXPECT_TRUE(IsControlEnabled(shell(kNew)));
        return enabled;
    }
    std::optional<std::string> chosen() const {
        CFStringRef name = nullptr;
        const OSStatus status = PMTicketGetCFString(printer.settings, kPMTopLevel, kPMTopLevel, kChosenKey, &name);
        return status == noErr ? std::optional(Text(name)) : std::nullopt;
    }
    void choose(CFStringRef name) const {
        PMTicketSetCFString(printer.settings, CFSTR("test"), kChosenKey, name, kPMUnlocked);
    }
    SInt32 number(CFStringRef key) const { return GetTicketNumber(printer.settings, key, -99); }
    static bool isStored(const std::string& name) {
        WatermarkRecord record = {};
        return loadWatermarkData(kWatermarkStore, String(name).get(), &record);
    }
    static Names stored() {
        CFMutableArrayRef list = nullptr;
        loadWatermarkList(kWatermarkStore, &list);
        const auto owner = CFRef<CFMutableArrayRef>::adopt(list);
        Names names;
        for (CFIndex i = 0; i < CFArrayGetCount(list); ++i) {
            names.push_back(Text(static_cast<CFStringRef>(CFArrayGetValueAtIndex(list, i))));
        }
        return names;
    }

    TemporaryFolder folder;
    PMTicketRef pageFormat = 0;
    CFRef<CFBundleRef> editor;
    Names notices;

private:
    static SInt32 editAsTest(WatermarkRecord* record, SInt32 unused1, CFBundleRef plugIn, SInt32 unused2) {
        EXPECT_EQ(plugIn, test_->plugin.bundle());
        EXPECT_EQ(unused1, 0);
        EXPECT_EQ(unused2, 0);
        if (test_->edited_ >= test_->edits_.size()) {
            ADD_FAILURE() << "the editor came once more";
            return 1;
        }
        return test_->edits_[test_->edited_++](*record) ? 0 : 1;
    }
    inline static WatermarkPanelTest* test_ = nullptr;
    Edits edits_;
    std::size_t edited_ = 0;
};

TEST_F(WatermarkPanelTest, RefusesWhatItHasNoContextFor) {
    EXPECT_EQ(panelTitle, "Watermark");
    EXPECT_EQ(panel.Initialize(nullptr, nullptr, nullptr, nullptr, printer.session), kPMInvalidPDEContext);
    EXPECT_EQ(panel.Initialize(context, nullptr, nullptr, nullptr, nullptr), kPMInvalidPDEContext);
    EXPECT_EQ(panel.Open(nullptr), kPMInvalidPDEContext);
    EXPECT_EQ(panel.Sync(nullptr, printer.session, true), kPMInvalidPrintSession);
    EXPECT_EQ(panel.Sync(context, nullptr, false), kPMInvalidPrintSession);
    CFArrayRef titles = nullptr;
    EXPECT_EQ(panel.GetSummaryText(nullptr, &titles, &titles), kPMInvalidPDEContext);
}

TEST_F(WatermarkPanelTest, AFirstStartChoosesNone) {
    openPanel();
    EXPECT_EQ(rows(), (Names{"None", "Draft", "Confidential", "Copy"}));
    EXPECT_EQ(selected(), "None");
    EXPECT_FALSE(dependentsAreEnabled());
    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(chosen(), std::nullopt);
    EXPECT_EQ(number(kFirstPageOnlyKey), 0);
    EXPECT_EQ(number(kOptionKey), 2);
}

TEST_F(WatermarkPanelTest, WhatIsChosenGoesIntoTheTicketAndComesBack) {
    openPanel();
    select(2);
    EXPECT_TRUE(dependentsAreEnabled());
    EXPECT_EQ(AutomationClick(shell(kFirstPageOnly)), noErr);
    EXPECT_EQ(AutomationSetValue(shell(kOption), 1), noErr);
    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(chosen(), "Draft");
    EXPECT_EQ(number(kFirstPageOnlyKey), 1);
    EXPECT_EQ(number(kOptionKey), 1);
    const auto font = CFRef<CFMutableDataRef>::adopt(CFDataCreateMutable(nullptr, 0));
    loadFontData(kWatermarkStore, CFSTR("ArialMT"), font.get());
    EXPECT_GT(CFDataGetLength(font.get()), 1000) << "its font is kept for printing";

    select(1);
    EXPECT_FALSE(dependentsAreEnabled());
    EXPECT_EQ(sync(true), noErr);
    EXPECT_EQ(selected(), "Draft");
    EXPECT_EQ(GetControl32BitValue(shell(kFirstPageOnly)), 1);
    EXPECT_EQ(GetControl32BitValue(shell(kOption)), 1);

    for (const CFStringRef unknown : {CFSTR("draft"), CFSTR("None"), CFSTR("Deleted")}) {
        choose(unknown);
        EXPECT_EQ(sync(true), noErr);
        EXPECT_EQ(selected(), "None") << Text(unknown);
        EXPECT_FALSE(dependentsAreEnabled());
    }
    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(chosen(), std::nullopt);
}

TEST_F(WatermarkPanelTest, ATicketIsKeptByAPanelThatIsNeverOpened) {
    choose(CFSTR("Copy"));
    SetTicketNumber(printer.settings, CFSTR("test"), kOptionKey, 3);
    SetTicketNumber(printer.settings, CFSTR("test"), kFirstPageOnlyKey, -7);
    ASSERT_EQ(initialize(), noErr);
    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(chosen(), "Copy");
    EXPECT_EQ(number(kOptionKey), 3) << "whatever another edition means by it";
    EXPECT_EQ(number(kFirstPageOnlyKey), -7);
}

TEST_F(WatermarkPanelTest, Summary) {
    choose(CFSTR("Copy"));
    SetTicketNumber(printer.settings, CFSTR("test"), kFirstPageOnlyKey, 1);
    ASSERT_EQ(initialize(), noErr);
    CFArrayRef titles = nullptr;
    CFArrayRef summaries = nullptr;
    EXPECT_EQ(panel.GetSummaryText(context, &titles, &summaries), noErr);
    const auto at = [](CFArrayRef array, CFIndex i) {
        return Text(static_cast<CFStringRef>(CFArrayGetValueAtIndex(array, i)));
    };
    EXPECT_EQ(CFArrayGetCount(titles), 3);
    EXPECT_EQ(at(titles, 0) + at(summaries, 0), "Watermark On");
    EXPECT_EQ(at(titles, 1) + at(summaries, 1), " First page only Yes");
    EXPECT_EQ(at(titles, 2) + at(summaries, 2), " In front of the page Yes");
}

TEST_F(WatermarkPanelTest, DeletesAfterAsking) {
    openPanel();
    select(3);
    AutomationQueueAnswer(kCFUserNotificationAlternateResponse);
    EXPECT_EQ(AutomationClick(shell(kDelete)), noErr);
    EXPECT_EQ(selected(), "Confidential");
    AutomationQueueAnswer(kCFUserNotificationDefaultResponse);
    EXPECT_EQ(AutomationClick(shell(kDelete)), noErr);
    ASSERT_EQ(notices.size(), 2u);
    EXPECT_NE(notices[1].find("“Confidential”"), std::string::npos) << notices[1];
    EXPECT_EQ(rows(), (Names{"None", "Draft", "Copy"}));
    EXPECT_EQ(stored(), (Names{"Draft", "Copy"}));
    EXPECT_FALSE(isStored("Confidential"));
    EXPECT_EQ(selected(), "None");
    EXPECT_FALSE(dependentsAreEnabled());
}

TEST_F(WatermarkPanelTest, WithoutAnEditorNothingIsMade) {
    testing::internal::CaptureStderr();
    openPanel();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Bundle didn't load\n");
    EXPECT_EQ(CocoaInitializeCocoa, nullptr);
    EXPECT_EQ(AutomationClick(shell(kNew)), noErr);
    select(2);
    EXPECT_EQ(AutomationClick(shell(kEdit)), noErr);
    EXPECT_EQ(rows().size(), 4u);
    EXPECT_TRUE(notices.empty());
}

TEST_F(WatermarkPanelTest, ANewWatermarkIsListedAndSelected) {
    setPaper(612, 792, 1);
    openWithEditor();
    edit(kNew, {[](WatermarkRecord& record) {
             EXPECT_EQ(record.paperExtentA, 792);
             EXPECT_EQ(record.paperExtentB, 612);
             EXPECT_EQ(record.angle + record.kind + record.text[0] + record.fileName[0], 0);
             return retext("Ärger & <Co>")(record);
         }});
    EXPECT_EQ(rows(), (Names{"None", "Draft", "Confidential", "Copy", "Ärger & <Co>"}));
    EXPECT_EQ(selected(), "Ärger & <Co>");
    EXPECT_TRUE(dependentsAreEnabled());
    EXPECT_EQ(stored().back(), "Ärger & <Co>");
    EXPECT_TRUE(isStored("Ärger & <Co>"));

    edit(kNew, {[](WatermarkRecord& record) {
             std::ranges::copy("logo.png", record.fileName);
             std::ranges::copy("/tmp/logo.png", record.filePath);
             return true;
         }});
    EXPECT_EQ(selected(), "logo.png");
    edit(kNew, {[](WatermarkRecord& record) { return !retext("Cancelled")(record); }});
    EXPECT_EQ(stored().size(), 5u);
    EXPECT_FALSE(isStored("Cancelled"));
}

TEST_F(WatermarkPanelTest, EditingRenamesInPlace) {
    setPaper(612, 792, 2);
    openWithEditor();
    select(2);
    edit(kEdit, {[](WatermarkRecord& record) {
             EXPECT_STREQ(record.text, "Draft");
             EXPECT_EQ(record.angle, 45);
             EXPECT_EQ(record.paperExtentA, 612) << "a landscape page";
             EXPECT_EQ(record.paperExtentB, 792);
             record.angle = 30;
             return retext("Second Draft")(record);
         }});
    EXPECT_EQ(rows(), (Names{"None", "Second Draft", "Confidential", "Copy"}));
    EXPECT_EQ(selected(), "Second Draft");
    EXPECT_EQ(stored(), (Names{"Second Draft", "Confidential", "Copy"}));
    EXPECT_FALSE(isStored("Draft"));
    WatermarkRecord record = {};
    EXPECT_TRUE(loadWatermarkData(kWatermarkStore, CFSTR("Second Draft"), &record));
    EXPECT_EQ(record.angle, 30);

    edit(kEdit, {[](WatermarkRecord& edited) {
             edited.angle = 0;
             return false;
         }});
    EXPECT_TRUE(loadWatermarkData(kWatermarkStore, CFSTR("Second Draft"), &record));
    EXPECT_EQ(record.angle, 30) << "cancelled";
    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(chosen(), "Second Draft");
}

TEST_F(WatermarkPanelTest, ANameInUseAsksAndAnEmptyOneIsRefused) {
    openWithEditor();
    select(2);
    AutomationQueueAnswer(kCFUserNotificationDefaultResponse);  // there is no other button
    AutomationQueueAnswer(kCFUserNotificationAlternateResponse);
    edit(kEdit, {retext(""), retext("Copy"), [](WatermarkRecord& record) {
                     EXPECT_STREQ(record.text, "Copy") << "what was edited is still there";
                     return false;
                 }});
    ASSERT_EQ(notices.size(), 2u);
    EXPECT_NE(notices[1].find("“Copy”"), std::string::npos) << notices[1];
    EXPECT_EQ(rows(), (Names{"None", "Draft", "Confidential", "Copy"}));

    AutomationQueueAnswer(kCFUserNotificationDefaultResponse);
    edit(kEdit, {retext("Copy")});
    EXPECT_EQ(rows(), (Names{"None", "Copy", "Confidential"})) << "it has replaced the other one";
    EXPECT_EQ(stored(), (Names{"Copy", "Confidential"}));
    EXPECT_FALSE(isStored("Draft"));
    EXPECT_TRUE(isStored("Copy"));

    AutomationQueueAnswer(kCFUserNotificationDefaultResponse);
    edit(kNew, {retext("Copy")});
    EXPECT_EQ(rows(), (Names{"None", "Confidential", "Copy"}));
    EXPECT_EQ(selected(), "Copy");
}

TEST_F(WatermarkPanelTest, NamesOfOtherEntriesAreRefused) {
    openWithEditor();
    select(2);
    EXPECT_EQ(sync(false), noErr);  // stores the font of the three
    edit(kNew, {retext("WatermarkListEntries"), retext("ArialMT"),
                [](WatermarkRecord& record) {
                    std::ranges::copy("DejaVuSans", record.fontName);
                    return retext("DejaVuSans")(record);
                },
                retext("None")});
    ASSERT_EQ(notices.size(), 3u);
    EXPECT_NE(notices[0].find("“WatermarkListEntries”"), std::string::npos) << notices[0];
    EXPECT_NE(notices[1].find("“ArialMT”"), std::string::npos) << notices[1];
    EXPECT_NE(notices[2].find("“DejaVuSans”"), std::string::npos) << notices[2];
    EXPECT_EQ(selected(), "None");
    EXPECT_TRUE(dependentsAreEnabled()) << "a watermark that is called like the row for none";
    EXPECT_EQ(stored(), (Names{"Draft", "Confidential", "Copy", "None"}));
    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(chosen(), "None");

    // Nor may a font take the place of a watermark.
    edit(kNew, {[](WatermarkRecord& record) {
                    std::ranges::copy("None", record.fontName);
                    return retext("Late")(record);
                },
                [](WatermarkRecord&) { return false; }});
    EXPECT_NE(notices.back().find("“None”"), std::string::npos) << notices.back();

    // A store that others have made has such names.
    const WatermarkRecord record = [] {
        WatermarkRecord made = {};
        retext("ArialMT")(made);
        return made;
    }();
    saveWatermarkData(kWatermarkStore, &record);
    convertFont(CFSTR("Draft"));
    EXPECT_TRUE(isStored("ArialMT"));
}

TEST_F(WatermarkPanelTest, KeepsWhatOtherDialogsStore) {
    openWithEditor();
    const auto storeInAnotherDialog = [&](const Names& names, const std::string& changed) {
        WatermarkRecord record = {};
        retext(changed)(record);
        saveWatermarkData(kWatermarkStore, &record);
        const auto list = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
        for (const std::string& name : names) {
            CFArrayAppendValue(list.get(), String(name).get());
        }
        saveWatermarkList(kWatermarkStore, list.get());
    };
    storeInAnotherDialog({"Draft", "Copy", "Theirs"}, "Theirs");
    edit(kNew, {retext("Ours")});
    EXPECT_EQ(rows(), (Names{"None", "Draft", "Copy", "Theirs", "Ours"}));
    EXPECT_EQ(stored(), (Names{"Draft", "Copy", "Theirs", "Ours"}));
    EXPECT_EQ(selected(), "Ours");

    storeInAnotherDialog({"Draft", "Theirs", "Ours", "Both"}, "Both");
    AutomationQueueAnswer(kCFUserNotificationAlternateResponse);
    edit(kEdit, {retext("Both"), retext("Ours too")});
    EXPECT_EQ(notices.size(), 1u) << "it is asked for";
    EXPECT_EQ(stored(), (Names{"Draft", "Theirs", "Ours too", "Both"}));
    EXPECT_TRUE(isStored("Both"));
    storeInAnotherDialog({"Draft", "Theirs", "Ours too", "Last"}, "Last");
    EXPECT_EQ(AutomationClick(shell(kDelete)), noErr);
    EXPECT_EQ(stored(), (Names{"Draft", "Theirs", "Last"}));
    EXPECT_EQ(rows().size(), 4u);
    EXPECT_EQ(selected(), "None");
}

TEST_F(WatermarkPanelTest, TellsWhatCouldNotBeSaved) {
    openWithEditor();
    const auto file = folder.path() / "tavro/Tavro/com.tavro.printing.watermarks.plist";
    std::filesystem::rename(file, folder.path() / "aside");
    std::filesystem::create_directory(file);
    select(2);
    testing::internal::CaptureStderr();
    EXPECT_EQ(AutomationClick(shell(kDelete)), noErr);  // asked first
    edit(kNew, {retext("Lost"), [](WatermarkRecord& record) {
                    EXPECT_STREQ(record.text, "Lost") << "what was edited is still there";
                    return false;
                }});
    testing::internal::GetCapturedStderr();
    ASSERT_EQ(notices.size(), 3u);
    for (const std::size_t notice : {1, 2}) {
        EXPECT_NE(notices[notice].find("com.tavro.printing.watermarks.plist"), std::string::npos) << notices[notice];
        EXPECT_NE(notices[notice].find("Is a directory"), std::string::npos) << notices[notice];
    }
    EXPECT_EQ(rows(), (Names{"None", "Draft", "Confidential", "Copy"}));
    EXPECT_EQ(selected(), "Draft");
    std::filesystem::remove(file);
    std::filesystem::rename(folder.path() / "aside", file);
    edit(kNew, {retext("Kept")});
    EXPECT_EQ(stored().size(), 4u);
}

TEST_F(WatermarkPanelTest, TenThousandWatermarks) {
    const auto list = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
    WatermarkRecord first = {};
    ASSERT_TRUE(retext("0")(first));
    saveWatermarkData(kWatermarkStore, &first);
    for (int i = 0; i < 10'000; ++i) {
        CFArrayAppendValue(list.get(), String(std::to_string(i)).get());
    }
    saveWatermarkList(kWatermarkStore, list.get());
    choose(CFSTR("9999"));
    openWithEditor();
    EXPECT_EQ(AutomationCountRows(shell(kBrowser)), 10'001);
    EXPECT_TRUE(AutomationIsRowSelected(shell(kBrowser), 10'001));
    AutomationQueueAnswer(kCFUserNotificationDefaultResponse);
    EXPECT_EQ(AutomationClick(shell(kDelete)), noErr);
    edit(kNew, {retext("New")});
    EXPECT_EQ(stored().size(), 10'000u);
    EXPECT_EQ(stored().back(), "New");
}

}  // namespace
