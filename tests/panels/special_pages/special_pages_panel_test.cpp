// The Special Pages panel between its list, its dialogs and the tickets.

#include "model/records/page_range.h"
#include "model/settings/ppd_access.h"
#include "panels/special_pages/exceptions_dialog.h"
#include "panels/special_pages/inserts_dialog.h"
#include "panels/special_pages/page_field.h"
#include "panels/special_pages/special_pages_alerts.h"
#include "panels/special_pages/special_pages_context.h"
#include "platform/toolbox/DataBrowser.h"
#include "platform/toolbox/Notices.h"
#include "platform/toolbox/Windows.h"
#include "tests/panels/panel_fixture.h"

#include <deque>

extern "C" OSStatus GetSpecialPagesPanelInterface(PlugInIntf** interface);

namespace {

#define kInsertListKey CFSTR("com.tavro.print.SpecialPages.InsertList")
#define kExceptionListKey CFSTR("com.tavro.print.SpecialPages.ExceptionList")
#define kFrontCoverKey CFSTR("com.tavro.print.SpecialPages.FrontCover")
#define kBackCoverKey CFSTR("com.tavro.print.SpecialPages.BackCover")

enum : SInt32 { kList = 1000, kAddCovers = 100, kAddInserts = 200, kEdit = 1200, kDelete = 1300, kDeleteAll = 1400 };

class SpecialPagesPanelTest : public PanelTest {
protected:
    using Step = std::function<void(WindowRef)>;

    SpecialPagesPanelTest() : PanelTest(GetSpecialPagesPanelInterface) {
        AutomationSetNoticeListener(
            [](CFStringRef header, CFStringRef, void* self) {
                static_cast<SpecialPagesPanelTest*>(self)->notices.push_back(Text(header));
            },
            this);
    }
    ~SpecialPagesPanelTest() override { AutomationSetNoticeListener(nullptr, nullptr); }

    static ControlRef in(WindowRef where, SInt32 number) {
        const ControlID id{kSpecialPagesSignature, number};
        ControlRef found = nullptr;
        EXPECT_EQ(GetControlByID(where, &id, &found), noErr) << number;
        return found;
    }
    ControlRef mine(SInt32 number) const { return in(window, number); }
    static void clickOK(WindowRef where) {
        ControlRef button = nullptr;
        EXPECT_EQ(GetWindowDefaultButton(where, &button), noErr);
        EXPECT_EQ(AutomationClick(button), noErr);
    }
    static void clickCancel(WindowRef where) {
        ControlRef button = nullptr;
        EXPECT_EQ(GetWindowCancelButton(where, &button), noErr);
        EXPECT_EQ(AutomationClick(button), noErr);
    }

    /// Runs what opens a dialog; the step sees to its end.
    template <typename Run>
    void during(Run run, Step step) {
        step_ = [this, step, turn = 0]() mutable {
            const WindowRef front = FrontNonFloatingWindow();
            if (front == window || front == nullptr) {
                return;
            }
            if (turn++ == 0) {
                step(front);
            } else if (turn > 200) {
                ADD_FAILURE() << "the dialog did not close";
                QuitAppModalLoopForWindow(front);
            }
        };
        EventLoopTimerRef timer = nullptr;
        InstallEventLoopTimer(
            0.005, 0.005, [](EventLoopTimerRef, void* self) { static_cast<SpecialPagesPanelTest*>(self)->step_(); },
            this, &timer);
        run();
        RemoveEventLoopTimer(timer);
    }
    void clickAnd(SInt32 number, const Step& step) {
        during([&] { EXPECT_EQ(AutomationClick(mine(number)), noErr); }, step);
    }

    void select(const std::vector<UInt32>& rows) const {
        EXPECT_EQ(AutomationSelectRows(mine(kList), rows.size(), rows.data()), noErr);
    }
    /// The first two columns of all rows.
    std::string rows() const {
        std::string all;
        for (UInt32 row = 1; row <= AutomationCountRows(mine(kList)); ++row) {
            for (const UInt32 column : {1u, 2u}) {
                const auto text = CFRef<CFStringRef>::adopt(AutomationCopyCellText(mine(kList), row, column));
                all += Text(text.get()) + (column == 1 ? " " : "; ");
            }
        }
        return all;
    }

    // ---- The ticket

    static CFRef<CFMutableArrayRef> arrayOf(const SpecialPages& pages) {
        auto array = CFRef<CFMutableArrayRef>::adopt(
            CFArrayCreateMutable(nullptr, static_cast<CFIndex>(pages.size()), &kCFTypeArrayCallBacks));
        for (const auto& page : pages) {
            CFArrayAppendValue(array.get(), page->asTicket().get());
        }
        return array;
    }
    void put(CFStringRef key, CFArrayRef array) const {
        EXPECT_EQ(PMTicketSetCFArray(printer.settings, CFSTR("test"), key, array, kPMUnlocked), noErr);
    }
    void putCovers() const {
        Cover cover;
        DefaultStock(&cover.stock(), JobContext::cover);
        for (const CFStringRef key : {kFrontCoverKey, kBackCoverKey}) {
            PMTicketSetCFDictionary(printer.settings, CFSTR("test"), key, cover.asTicket().get(), kPMUnlocked);
        }
    }
    /// The number of elements of a list; -1 when there is no such item.
    CFIndex stored(CFStringRef key) const {
        CFArrayRef array = nullptr;
        return PMTicketGetCFArray(printer.settings, kPMTopLevel, kPMTopLevel, key, &array) == noErr
                   ? CFArrayGetCount(array)
                   : -1;
    }
    bool hasCover(CFStringRef key) const {
        CFDictionaryRef cover = nullptr;
        return PMTicketGetCFDictionary(printer.settings, kPMTopLevel, kPMTopLevel, key, &cover) == noErr;
    }
    static SpecialPages inserts(const std::vector<SInt32>& after) {
        SpecialPages pages;
        for (const SInt32 page : after) {
            pages.push_back(std::make_unique<Insert>());
            pages.back()->setStartPage(page);
        }
        return pages;
    }
    static SpecialPages exceptions(SInt32 count) {
        SpecialPages pages;
        for (SInt32 i = 0; i < count; ++i) {
            auto page = std::make_unique<ExceptionPage>();
            page->setStartPage(2 * i + 1);
            page->setEndPage(2 * i + 1);
            pages.push_back(std::move(page));
        }
        return pages;
    }

    std::vector<std::string> notices;

private:
    std::function<void()> step_;
};

TEST_F(SpecialPagesPanelTest, RefusesCallsWithoutContextSessionOrPane) {
    EXPECT_EQ(panelTitle, "Special Pages");
    EXPECT_EQ(panel.Initialize(nullptr, nullptr, nullptr, control(1), printer.session), kPMInvalidPDEContext);
    EXPECT_EQ(panel.Initialize(context, nullptr, nullptr, control(1), nullptr), kPMInvalidPDEContext);
    EXPECT_EQ(panel.Initialize(context, nullptr, nullptr, nullptr, printer.session), kPMInvalidPDEContext);
    EXPECT_EQ(panel.Sync(nullptr, printer.session, true), kPMInvalidPDEContext);
    EXPECT_EQ(panel.Open(nullptr), kPMInvalidPDEContext);
    EXPECT_EQ(panel.Close(nullptr), kPMInvalidPDEContext);
    EXPECT_EQ(panel.Terminate(nullptr, noErr), kPMInvalidPDEContext);
    SInt16 result = 0;
    EXPECT_EQ(RunModalInsertsDialog(plugin.bundle(), DialogMode::edit, nullptr, nullptr, nullptr, &result), paramErr);
    EXPECT_EQ(RunModalExceptionsDialog(plugin.bundle(), DialogMode::edit, nullptr, nullptr, nullptr, &result),
              paramErr);
}

TEST_F(SpecialPagesPanelTest, KeepsWhatIsValidOfATicket) {
    auto array = arrayOf(inserts({5, 2, 5}));
    CFArrayAppendValue(array.get(), CFSTR("no page"));
    CFArrayAppendValue(array.get(), kCFBooleanTrue);
    const auto odd = CFRef<CFMutableDictionaryRef>::adopt(
        CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    CFDictionarySetValue(odd.get(), CFSTR("StartPage"), CFSTR("seven"));
    CFDictionarySetValue(odd.get(), CFSTR("Stock"), kCFBooleanTrue);
    CFArrayAppendValue(array.get(), odd.get());
    put(kInsertListKey, array.get());
    PMTicketSetCFDictionary(printer.settings, CFSTR("test"), kExceptionListKey, odd.get(), kPMUnlocked);
    PMTicketSetCFDictionary(printer.settings, CFSTR("test"), kFrontCoverKey, odd.get(), kPMUnlocked);
    openPanel();
    EXPECT_EQ(rows(), "Front Cover; Before 1 Insert; 2 Insert; 5 Insert; 5 Insert; ");
    sync(false);
    EXPECT_EQ(stored(kInsertListKey), 4);
    EXPECT_EQ(stored(kExceptionListKey), -1);
    EXPECT_TRUE(hasCover(kFrontCoverKey));
    EXPECT_FALSE(hasCover(kBackCoverKey));
}

TEST_F(SpecialPagesPanelTest, DeletesTheSelectedPagesAndNoOthers) {
    putCovers();
    put(kInsertListKey, arrayOf(inserts({1, 2, 3})).get());
    put(kExceptionListKey, arrayOf(exceptions(2)).get());
    openPanel();
    EXPECT_EQ(rows(), "Front Cover; 1 Exception; 1 Insert; 2 Insert; 3 Exception; 3 Insert; Back Cover; ");
    select({1});
    AutomationQueueAnswer(kCFUserNotificationAlternateResponse);
    EXPECT_EQ(AutomationClick(mine(kDelete)), noErr);
    EXPECT_EQ(notices, (std::vector<std::string>{"Delete special pages?"}));
    EXPECT_EQ(rows(), "1 Exception; 1 Insert; 2 Insert; 3 Exception; 3 Insert; Back Cover; ");
    select({2, 4, 6});
    EXPECT_FALSE(IsControlEnabled(mine(kEdit)));
    AutomationQueueAnswer(kCFUserNotificationAlternateResponse);
    EXPECT_EQ(AutomationType(mine(kList), CFSTR("\b")), noErr);
    EXPECT_EQ(rows(), "1 Exception; 2 Insert; 3 Insert; ");
    EXPECT_FALSE(IsControlEnabled(mine(kDelete)));
    EXPECT_TRUE(IsControlEnabled(mine(kDeleteAll)));
    sync(false);
    EXPECT_EQ(stored(kInsertListKey), 2);
    EXPECT_EQ(stored(kExceptionListKey), 1);
    EXPECT_FALSE(hasCover(kFrontCoverKey) || hasCover(kBackCoverKey));

    AutomationQueueAnswer(kCFUserNotificationAlternateResponse);
    EXPECT_EQ(AutomationClick(mine(kDeleteAll)), noErr);
    EXPECT_EQ(rows(), "");
    EXPECT_EQ(sync(false), noErr);
    EXPECT_EQ(stored(kInsertListKey), -1);
    EXPECT_EQ(stored(kExceptionListKey), -1);
    EXPECT_EQ(sync(false), kPMKeyNotFound) << "the last list's item";
}

TEST_F(SpecialPagesPanelTest, KeepsBothOfTwoEqualCovers) {
    putCovers();
    PPDSetMainKeyword(printer.settings, CFSTR("JCLCovers"), CFSTR("BlankFrontBack"));
    PMTicketReleaseItem(printer.settings, kPMTopLevel, kBackCoverKey);  // as the layout panel does
    openPanel();
    EXPECT_EQ(rows(), "Front Cover; Back Cover; ");
    sync(false);
    EXPECT_TRUE(hasCover(kBackCoverKey));
}

TEST_F(SpecialPagesPanelTest, CancelLeavesTheCoversTheVeryObjects) {
    putCovers();
    openPanel();
    const Cover* const front = gSpecialPages->records.frontCover.get();
    select({2});
    clickAnd(kEdit, [](WindowRef dialog) {
        EXPECT_EQ(AutomationSetValue(in(dialog, 2000), 1), noErr);
        clickCancel(dialog);
    });
    EXPECT_EQ(gSpecialPages->records.frontCover.get(), front);
    EXPECT_TRUE(AutomationIsRowSelected(mine(kList), 2)) << "the list was not refilled";
    clickAnd(kEdit, [](WindowRef dialog) {
        EXPECT_EQ(AutomationSetValue(in(dialog, 2000), 2), noErr);
        clickOK(dialog);
    });
    EXPECT_EQ(rows(), "Front Cover; ");
}

TEST_F(SpecialPagesPanelTest, SyncReplacesTheRowsOfOldPages) {
    put(kInsertListKey, arrayOf(inserts({1, 2, 3})).get());
    openPanel();
    select({2});
    put(kInsertListKey, arrayOf(inserts({7})).get());
    EXPECT_EQ(sync(true), noErr);
    EXPECT_EQ(rows(), "7 Insert; ");
    EXPECT_FALSE(IsControlEnabled(mine(kEdit)));
}

TEST_F(SpecialPagesPanelTest, WritesAListAgainWhenItOrItsItemHasChanged) {
    const auto item = [this] {
        CFArrayRef array = nullptr;
        PMTicketGetCFArray(printer.settings, kPMTopLevel, kPMTopLevel, kInsertListKey, &array);
        return CFRef<CFArrayRef>::retain(array);
    };
    put(kInsertListKey, arrayOf(inserts({1, 2, 3})).get());
    openPanel();
    const auto foreign = item();
    sync(false);
    const auto written = item();
    EXPECT_NE(written.get(), foreign.get()) << "what was read is not what the panel writes";
    sync(false);
    EXPECT_EQ(item().get(), written.get());

    select({2});
    AutomationQueueAnswer(kCFUserNotificationAlternateResponse);
    EXPECT_EQ(AutomationClick(mine(kDelete)), noErr);
    sync(false);
    EXPECT_EQ(stored(kInsertListKey), 2);
    put(kInsertListKey, arrayOf(inserts({7})).get());
    sync(false);
    EXPECT_EQ(stored(kInsertListKey), 2) << "another one's item was left";
    PMTicketReleaseItem(printer.settings, kPMTopLevel, kInsertListKey);
    sync(false);
    EXPECT_EQ(stored(kInsertListKey), 2) << "no item was left";
    put(kInsertListKey, arrayOf(inserts({7, 8, 9})).get());
    sync(true);
    sync(false);
    EXPECT_EQ(stored(kInsertListKey), 3);
}

TEST_F(SpecialPagesPanelTest, ADialogRefusesListsThatAreTooLongAsAWhole) {
    openPanel();
    const std::u16string megabyte(1 << 20, u'1');
    clickAnd(kAddInserts, [&](WindowRef dialog) {
        const ControlRef field = in(dialog, 3003);
        const auto paste = [&](const std::u16string& text) {
            EventRef event = nullptr;
            CreateEvent(nullptr, kEventClassTextInput, kEventTextInputUnicodeForKeyEvent, 0, 0, &event);
            SetEventParameter(event, kEventParamDirectObject, typeControlRef, sizeof field, &field);
            SetEventParameter(event, kEventParamTextInputSendText, typeUnicodeText, text.size() * sizeof(char16_t),
                              text.data());
            SendEventToEventTarget(event, GetControlEventTarget(field));
            ReleaseEvent(event);
        };
        paste(megabyte);
        EXPECT_EQ(notices, (std::vector<std::string>{"The list of pages is too long."}));
        EXPECT_TRUE(IsPageFieldEmpty(field));
        std::u16string longest;
        while (longest.size() + 2 <= kLongestPageList) {
            longest += u"1,";
        }
        paste(longest);
        EXPECT_EQ(notices.size(), 1u);
        clickOK(dialog);
        EXPECT_EQ(notices.back(), "These are too many inserts.");
        EXPECT_EQ(AutomationType(field, CFSTR("1-10000")), noErr);
        clickOK(dialog);
    });
    EXPECT_EQ(AutomationCountRows(mine(kList)), kMostInsertsAtOnce);
}

TEST_F(SpecialPagesPanelTest, TakesAHundredThousandExceptions) {
    put(kExceptionListKey, arrayOf(exceptions(100000)).get());
    openPanel();
    EXPECT_EQ(AutomationCountRows(mine(kList)), 100000);
    sync(false);
    EXPECT_EQ(stored(kExceptionListKey), 100000);
    ControlRef list = mine(kList);
    std::vector<DataBrowserItemID> ids(100000);
    GetDataBrowserItems(list, kDataBrowserNoItem, false, kDataBrowserItemAnyState, ids.size(), ids.data());
    SetDataBrowserSelectedItems(list, 99999, ids.data() + 1, kDataBrowserItemsAssign);
    AutomationQueueAnswer(kCFUserNotificationAlternateResponse);
    EXPECT_EQ(AutomationClick(mine(kDelete)), noErr);
    EXPECT_EQ(rows(), "1 Exception; ");
}

TEST_F(SpecialPagesPanelTest, AWindowThatOutlivesThePanelAsksForNothing) {
    put(kInsertListKey, arrayOf(inserts({1, 2})).get());
    openPanel();
    EXPECT_EQ(panel.Terminate(context, noErr), noErr);
    context = nullptr;
    EXPECT_EQ(rows(), " ;  ; ");
    select({1});
}

TEST_F(SpecialPagesPanelTest, AlertsAreThoseOfTheCode) {
    for (const OSStatus code : {1000, 1001, 1002, 1003, 1234, 0, -50, 1004}) {
        SpecialPagesUserNotification(plugin.bundle(), code);
    }
    EXPECT_EQ(notices, (std::vector<std::string>{"A page number is too large.", "The pages cannot be read.",
                                                 "A range ends before it starts.", "There is no page 0.",
                                                 "Pages are named twice."}));
}

}  // namespace
