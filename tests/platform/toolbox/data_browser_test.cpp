// Data browsers: rows and their texts, selection, order, and what the user does with mouse and keys.

#include "platform/toolbox/DataBrowser.h"

#include "platform/toolbox/Automation.h"
#include "platform/toolbox/automation_input.h"
#include "platform/toolbox/data_browser_view.h"
#include "platform/toolbox/objects.h"
#include "tests/platform/toolbox/toolbox_fixture.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <deque>

namespace {

constexpr DataBrowserPropertyID kName = FourCharCode("NAME");
constexpr DataBrowserPropertyID kFax = FourCharCode("FAX ");

struct Person {
    std::string name;
    const char* fax = nullptr;
};

DataBrowserItemID idOf(const Person& person) {
    return reinterpret_cast<DataBrowserItemID>(&person);
}
const Person& personOf(DataBrowserItemID item) {
    return *reinterpret_cast<const Person*>(item);
}

std::string* told = nullptr;                                     // what the notification callback heard
std::function<void(ControlRef, DataBrowserItemID)> onSelection;  // what it does then

OSStatus giveText(ControlRef, DataBrowserItemID item, DataBrowserPropertyID property, DataBrowserItemDataRef data,
                  Boolean) {
    if (property != kName && property != kFax) {
        return errDataBrowserPropertyNotSupported;
    }
    const char* text = property == kName ? personOf(item).name.c_str() : personOf(item).fax;
    if (text == nullptr) {
        return errDataBrowserPropertyNotFound;
    }
    const auto string = CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, text, kCFStringEncodingUTF8));
    return SetDataBrowserItemDataText(data, string.get());
}

Boolean compare(ControlRef, DataBrowserItemID one, DataBrowserItemID two, DataBrowserPropertyID property) {
    return property == kName && personOf(one).name < personOf(two).name;
}

void notified(ControlRef browser, DataBrowserItemID item, DataBrowserItemNotification message) {
    if (told != nullptr) {
        *told += " " + std::to_string(message) + (item != kDataBrowserNoItem ? personOf(item).name : "");
    }
    if (message == kDataBrowserItemSelected && onSelection) {
        onSelection(browser, item);
    }
}

class DataBrowserTest : public NibWindowTest {
protected:
    void SetUp() override {
        bundle.add("Resources/en.lproj/Nib.strings", "\"NameKey\" = \"Full name\";");
        open(widget("QTreeView", 1,
                    rectangle(10, 10, 400, 200) + property("columns", "string", "NAME FAX  NONE") +
                        property("widths", "string", "90 70") +
                        property("headers", "stringlist", "<string>NameKey</string><string>FaxKey</string>")));
        browser = control(1);
        setCallbacks(compare);
        ShowWindow(window);
        told = &heard;
    }
    void TearDown() override {
        told = nullptr;
        onSelection = nullptr;
        NibWindowTest::TearDown();
    }

    void setCallbacks(DataBrowserItemCompareUPP sorter) {
        DataBrowserCallbacks callbacks{kDataBrowserLatestCallbacks, {}};
        ASSERT_EQ(InitDataBrowserCallbacks(&callbacks), noErr);
        callbacks.u.v1 = {giveText, sorter, notified};
        ASSERT_EQ(SetDataBrowserCallbacks(browser, &callbacks), noErr);
    }

    std::vector<DataBrowserItemID> ids(const std::string& names) const {
        std::vector<DataBrowserItemID> found;
        for (const char name : names) {
            found.push_back(idOf(*std::ranges::find(people, std::string(1, name), &Person::name)));
        }
        return found;
    }
    OSStatus add(const std::string& names) {
        for (const char name : names) {
            if (std::ranges::find(people, std::string(1, name), &Person::name) == people.end()) {
                people.push_back({std::string(1, name)});
            }
        }
        const auto items = ids(names);
        return AddDataBrowserItems(browser, kDataBrowserNoItem, static_cast<ItemCount>(items.size()), items.data(), 0);
    }
    OSStatus remove(const std::string& names) {
        const auto items = ids(names);
        return RemoveDataBrowserItems(browser, kDataBrowserNoItem, static_cast<ItemCount>(items.size()), items.data(),
                                      0);
    }
    OSStatus select(const std::string& names, DataBrowserSetOption how = kDataBrowserItemsAssign) {
        const auto items = ids(names);
        return SetDataBrowserSelectedItems(browser, static_cast<ItemCount>(items.size()), items.data(), how);
    }
    /// The first letters of the rows in that state.
    std::string rows(DataBrowserItemState state = kDataBrowserItemAnyState) const {
        ItemCount count = 0;
        EXPECT_EQ(GetDataBrowserItemCount(browser, kDataBrowserNoItem, false, state, &count), noErr);
        std::vector<DataBrowserItemID> items(count);
        EXPECT_EQ(GetDataBrowserItems(browser, kDataBrowserNoItem, false, state, count, items.data()), noErr);
        std::string names;
        for (const DataBrowserItemID item : items) {
            names += personOf(item).name.front();
        }
        return names;
    }
    std::string selected() const { return rows(kDataBrowserItemIsSelected); }
    std::string taken() { return std::exchange(heard, {}); }
    DataBrowserView& view() const { return *DataBrowserView::of(browser); }
    void pressKey(Qt::Key key, const QString& text = {}) {
        ASSERT_TRUE(userFocuses(&view()));
        userPresses(&view(), key, Qt::NoModifier, text);
    }

    ControlRef browser = nullptr;
    std::deque<Person> people;
    std::string heard;
};

TEST_F(DataBrowserTest, AsksForItsTextsAndTakesItsTitlesFromTheNib) {
    add("ab");
    people[0].fax = "555";
    EXPECT_EQ(view().rows().text(0, 1), "555");
    EXPECT_EQ(view().rows().text(1, 1), "") << "the value is missing";
    EXPECT_EQ(view().rows().text(0, 2), "") << "the column is unknown";
    people[0].name = "changed";
    EXPECT_EQ(view().rows().text(0, 0), "changed");
    EXPECT_EQ(view().rows().headerData(0, Qt::Horizontal, Qt::DisplayRole), "Full name");
    EXPECT_EQ(view().header()->sectionSize(0), 90);
    EXPECT_EQ(SetDataBrowserTableViewNamedColumnWidth(browser, kFax, 123), noErr);
    EXPECT_EQ(view().header()->sectionSize(1), 123);
    EXPECT_EQ(SetDataBrowserTableViewNamedColumnWidth(browser, FourCharCode("????"), 1),
              errDataBrowserPropertyNotFound);
}

TEST_F(DataBrowserTest, AddsAndRemovesEachRowOnce) {
    EXPECT_EQ(add("cab"), noErr);
    EXPECT_EQ(rows(), "cab") << "unsorted: as they were added";
    EXPECT_EQ(taken(), " 1c 1a 1b");
    EXPECT_EQ(add("a"), errDataBrowserItemNotAdded);
    EXPECT_EQ(add("dad"), errDataBrowserItemNotAdded);
    EXPECT_EQ(rows(), "cabd");
    taken();
    EXPECT_EQ(remove("ad"), noErr);
    EXPECT_EQ(rows(), "cb");
    EXPECT_EQ(taken(), " 2a 2d");
    EXPECT_EQ(remove("ab"), errDataBrowserItemNotFound);
    EXPECT_EQ(rows(), "c");
    EXPECT_EQ(RemoveDataBrowserItems(browser, kDataBrowserNoItem, 0, nullptr, 0), noErr);
    EXPECT_EQ(rows(), "");
}

TEST_F(DataBrowserTest, TellsOfEverySelection) {
    add("abcd");
    taken();
    EXPECT_EQ(select("ca"), noErr);
    EXPECT_EQ(selected(), "ac");
    EXPECT_EQ(taken(), " 5a 5c 14");
    select("cd");
    EXPECT_EQ(taken(), " 6a 5d 14");
    select("cd");
    EXPECT_EQ(taken(), "") << "nothing changed";
    select("a", kDataBrowserItemsAdd);
    EXPECT_EQ(selected(), "acd");
    taken();
    remove("bd");
    EXPECT_EQ(selected(), "ac");
    EXPECT_EQ(taken(), " 6d 14 2b 2d");
    EXPECT_EQ(view().header()->sectionSize(0), 90) << "scattered rows went, the columns stay";
    select("");
    EXPECT_EQ(taken(), " 6a 6c 14");
}

/// Qt selects the next row by itself when the selected one is removed.
TEST_F(DataBrowserTest, SingleChoiceKeepsToTheProgramsSelection) {
    ASSERT_EQ(SetDataBrowserSelectionFlags(browser, kDataBrowserSelectOnlyOne | kDataBrowserNeverEmptySelectionSet),
              noErr);
    add("abc");
    select("bc");
    EXPECT_EQ(selected(), "b");
    select("c", kDataBrowserItemsAdd);
    EXPECT_EQ(selected(), "c");
    select("b");
    taken();
    remove("b");
    EXPECT_EQ(selected(), "");
    EXPECT_EQ(taken(), " 6b 14 2b");
}

TEST_F(DataBrowserTest, UserCannotEmptyASelectionThatIsNeverEmpty) {
    SetDataBrowserSelectionFlags(browser, kDataBrowserNeverEmptySelectionSet);
    add("abc");
    const UInt32 one[] = {2};
    EXPECT_EQ(AutomationSelectRows(browser, 1, one), noErr);
    EXPECT_EQ(selected(), "b");
    taken();
    const QRect row = view().visualRect(view().rows().index(1, 0));
    userClicks(view().viewport(), row.center(), Qt::ControlModifier);
    userClicks(view().viewport(), QPoint(5, view().viewport()->height() - 3));
    EXPECT_EQ(selected(), "b");
    EXPECT_EQ(taken(), "");
    select("");
    EXPECT_EQ(selected(), "") << "the program may";
    select("ac");
    taken();
    userClicks(view().viewport(), QPoint(5, view().viewport()->height() - 3));
    EXPECT_EQ(selected().size(), 1U);
    EXPECT_EQ(taken(), " 6a 14");
}

TEST_F(DataBrowserTest, SortsByItsColumnsAndKeepsTheSelection) {
    add("cadb");
    select("ad");
    taken();
    EXPECT_EQ(SetDataBrowserSortProperty(browser, kName), noErr);
    EXPECT_EQ(rows(), "abcd");
    EXPECT_EQ(selected(), "ad");
    EXPECT_EQ(SetDataBrowserSortOrder(browser, kDataBrowserOrderDecreasing), noErr);
    EXPECT_EQ(rows(), "dcba");
    EXPECT_EQ(selected(), "da");
    EXPECT_EQ(taken(), "") << "no selection changed";
    add("x");
    add("0");
    add("mk");
    EXPECT_EQ(rows(), "xmkdcba0");
    std::ranges::find(people, "c", &Person::name)->name = "z";
    UpdateDataBrowserItems(browser, kDataBrowserNoItem, 0, nullptr, 0, kFax);
    EXPECT_EQ(rows(), "xmkdzba0") << "not sorted by what changed";
    UpdateDataBrowserItems(browser, kDataBrowserNoItem, 0, nullptr, 0, kDataBrowserItemNoProperty);
    EXPECT_EQ(rows(), "zxmkdba0");
    EXPECT_EQ(SetDataBrowserSortProperty(browser, FourCharCode("????")), errDataBrowserPropertyNotFound);
    EXPECT_EQ(SetDataBrowserSortProperty(browser, kDataBrowserItemNoProperty), noErr);
    add("y");
    EXPECT_EQ(rows(), "zxmkdba0y");
}

TEST_F(DataBrowserTest, UserSortsByTheHeader) {
    add("bca");
    const auto clickTitle = [&](int section) {
        const QHeaderView* header = view().header();
        const QPoint place(header->sectionViewportPosition(section) + 20, header->height() / 2);
        EXPECT_TRUE(userClicks(header->viewport(), place));
    };
    clickTitle(0);
    EXPECT_EQ(rows(), "abc");
    clickTitle(0);
    EXPECT_EQ(rows(), "cba");
    const auto sortByKey = [&](Qt::Key key) { userPresses(&view(), key, Qt::ControlModifier, {}); };
    sortByKey(Qt::Key_1);
    EXPECT_EQ(rows(), "abc");
    sortByKey(Qt::Key_1);
    sortByKey(Qt::Key_9);
    EXPECT_EQ(rows(), "cba") << "there is no such column";
    setCallbacks(nullptr);
    clickTitle(0);
    sortByKey(Qt::Key_1);
    EXPECT_EQ(rows(), "cba") << "it cannot be sorted";
}

TEST_F(DataBrowserTest, DoubleClickAndReturnAreTheSame) {
    add("abc");
    const UInt32 one[] = {2};
    AutomationSelectRows(browser, 1, one);
    taken();
    EXPECT_EQ(AutomationClick(browser), noErr);
    EXPECT_EQ(taken(), " 7b");
    pressKey(Qt::Key_Return, QStringLiteral("\r"));
    pressKey(Qt::Key_Enter, QStringLiteral("\r"));
    EXPECT_EQ(taken(), " 7b 7b");
    select("ab");
    taken();
    pressKey(Qt::Key_Return, QStringLiteral("\r"));
    EXPECT_EQ(taken(), "") << "which one?";
    EXPECT_EQ(AutomationClick(browser), paramErr);
}

TEST_F(DataBrowserTest, HandlersHaveKeysBeforeTheList) {
    add("abc");
    select("a");
    taken();
    std::string keys;
    OSStatus answer = eventNotHandledErr;
    const TestHandler handler(
        GetWindowEventTarget(window), kEventClassKeyboard, kEventRawKeyDown, [&](EventHandlerCallRef, EventRef event) {
            UniChar key = 0;
            ByteCount size = 0;
            GetEventParameter(event, kEventParamKeyUnicodes, typeUnicodeText, nullptr, sizeof key, &size, &key);
            keys += size > 0 ? std::to_string(key) + " " : "- ";
            return answer;
        });
    pressKey(Qt::Key_Delete);
    pressKey(Qt::Key_Backspace);
    pressKey(Qt::Key_Down);
    EXPECT_EQ(keys, "127 8 - ");
    EXPECT_EQ(selected(), "b") << "keys that nobody took move in the list";
    pressKey(Qt::Key_C, QStringLiteral("c"));
    EXPECT_EQ(selected(), "c") << "letters search";
    answer = noErr;
    pressKey(Qt::Key_Up);
    EXPECT_EQ(selected(), "c");
}

TEST_F(DataBrowserTest, ScriptsPressKeysAndReadCells) {
    add("abc");
    people[1].fax = "42";
    EXPECT_EQ(AutomationType(browser, CFSTR("b")), noErr);
    EXPECT_EQ(selected(), "b");
    taken();
    EXPECT_EQ(AutomationType(browser, CFSTR("\n")), noErr);
    EXPECT_EQ(taken(), " 7b");
    std::string keys;
    const TestHandler handler(GetControlEventTarget(browser), kEventClassKeyboard, kEventRawKeyDown,
                              [&](EventHandlerCallRef, EventRef event) {
                                  UniChar key = 0;
                                  GetEventParameter(event, kEventParamKeyUnicodes, typeUnicodeText, nullptr, sizeof key,
                                                    nullptr, &key);
                                  keys += std::to_string(key);
                                  return noErr;
                              });
    EXPECT_EQ(AutomationType(browser, CFSTR("\b")), noErr);
    EXPECT_EQ(keys, "127");
    const auto cell = CFRef<CFStringRef>::adopt(AutomationCopyCellText(browser, 2, 2));
    EXPECT_TRUE(CFEqual(cell.get(), CFSTR("42")));
    EXPECT_EQ(AutomationCopyCellText(browser, 2, 4), nullptr);
    EXPECT_EQ(AutomationCopyCellText(browser, 4, 1), nullptr);
    EXPECT_TRUE(AutomationIsRowSelected(browser, 2));
    EXPECT_FALSE(AutomationIsRowSelected(browser, 1));
}

TEST_F(DataBrowserTest, CallbacksMayChangeOrEndTheBrowser) {
    add("abc");
    onSelection = [&](ControlRef, DataBrowserItemID) {
        onSelection = nullptr;
        remove("b");
    };
    select("ab");
    EXPECT_EQ(rows(), "ac");
    EXPECT_EQ(selected(), "a");

    onSelection = [&](ControlRef gone, DataBrowserItemID) { DisposeControl(gone); };
    taken();
    const UInt32 last[] = {2};
    AutomationSelectRows(browser, 1, last);
    EXPECT_EQ(taken(), " 6a 5c") << "nothing is told of a browser that is gone";
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const ControlID id{kTest, 1};
    ControlRef found = nullptr;
    EXPECT_EQ(GetControlByID(window, &id, &found), errUnknownControl);
}

TEST_F(DataBrowserTest, RevealsAndScrolls) {
    for (int i = 0; i < 200; ++i) {
        people.push_back({std::to_string(i)});
        const DataBrowserItemID item = idOf(people.back());
        AddDataBrowserItems(browser, kDataBrowserNoItem, 1, &item, 0);
    }
    const auto seen = [&](int row) {
        return view().viewport()->rect().contains(view().visualRect(view().rows().index(row, 0)));
    };
    EXPECT_TRUE(seen(0));
    EXPECT_EQ(RevealDataBrowserItem(browser, idOf(people[150]), kDataBrowserItemNoProperty,
                                    kDataBrowserRevealAndCenterInView),
              noErr);
    EXPECT_TRUE(seen(150));
    EXPECT_FALSE(seen(0));
    EXPECT_EQ(SetDataBrowserScrollPosition(browser, 0, 0), noErr);
    EXPECT_TRUE(seen(0));
    RemoveDataBrowserItems(browser, kDataBrowserNoItem, 0, nullptr, 0);
    EXPECT_EQ(RevealDataBrowserItem(browser, idOf(people[150]), 0, kDataBrowserRevealOnly), errDataBrowserItemNotFound);
}

TEST_F(DataBrowserTest, RefusesWhatIsNoBrowserAndNoRow) {
    ControlRef root = nullptr;
    ASSERT_EQ(GetRootControl(window, &root), noErr);
    for (ControlRef wrong : {ControlRef(nullptr), root}) {
        DataBrowserItemID item = 1;
        ItemCount count = 0;
        EXPECT_EQ(AddDataBrowserItems(wrong, 0, 1, &item, 0), controlHandleInvalidErr);
        EXPECT_EQ(RemoveDataBrowserItems(wrong, 0, 0, nullptr, 0), controlHandleInvalidErr);
        EXPECT_EQ(UpdateDataBrowserItems(wrong, 0, 0, nullptr, 0, 0), controlHandleInvalidErr);
        EXPECT_EQ(GetDataBrowserItemCount(wrong, 0, false, 0, &count), controlHandleInvalidErr);
        EXPECT_EQ(SetDataBrowserSortProperty(wrong, kName), controlHandleInvalidErr);
        EXPECT_EQ(SetDataBrowserScrollPosition(wrong, 0, 0), controlHandleInvalidErr);
    }
    const DataBrowserItemID none = kDataBrowserNoItem;
    EXPECT_EQ(AddDataBrowserItems(browser, kDataBrowserNoItem, 1, &none, 0), paramErr);
    EXPECT_EQ(AddDataBrowserItems(browser, kDataBrowserNoItem, 1, nullptr, 0), paramErr);
    EXPECT_EQ(AddDataBrowserItems(browser, 7, 0, nullptr, 0), paramErr) << "there are no containers";
    EXPECT_EQ(SetDataBrowserCallbacks(browser, nullptr), paramErr);
    EXPECT_EQ(SetDataBrowserItemDataText(nullptr, CFSTR("x")), paramErr);
}

}  // namespace
