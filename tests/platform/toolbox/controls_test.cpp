// Controls: found, valued, embedded, shown, enabled and active as the platform's are.

#include "platform/toolbox/Menus.h"
#include "platform/toolbox/label_name.h"
#include "platform/toolbox/objects.h"
#include "tests/platform/toolbox/toolbox_fixture.h"

#include <qtestspontaneevent.h>
#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QPlainTextEdit>
#include <QProxyStyle>
#include <QPushButton>
#include <QSpinBox>
#include <QStyleFactory>
#include <QStyleOptionButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimeEdit>
#include <QToolButton>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <array>
#include <memory>

namespace {

class ControlsTest : public NibWindowTest {};

TEST_F(ControlsTest, AreCalledByTheirLabelsWithoutLetterAndColon) {
    for (const auto& [label, name] : {std::pair("From the middle, &right:", "From the middle, right"),
                                      std::pair("À d&roite\u00A0:", "À droite"), std::pair("文字(&T)：", "文字"),
                                      std::pair("Black && &White", "Black & White"), std::pair("ال&نص:", "النص")}) {
        EXPECT_EQ(nameOfLabel(QString::fromUtf8(label)).toStdString(), name);
    }
}

/// Whichever way their own text runs.
TEST_F(ControlsTest, TextsStandAtTheirSideOfAMirroredWindow) {
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    open(widget("QLabel", 1, property("text", "string", "welcome.pdf")) + widget("QPlainTextEdit", 2));
    EXPECT_EQ(qobject_cast<QLabel*>(control(1)->widget)->alignment(),
              Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    EXPECT_EQ(qobject_cast<QPlainTextEdit*>(control(2)->widget)->document()->defaultTextOption().alignment(),
              Qt::AlignRight);
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST_F(ControlsTest, ValuesCountAsThePlatformCounts) {
    open(widget("QComboBox", 1,
                "<item>" + property("text", "string", "A") + "</item><item>" + property("text", "string", "B") +
                    "</item>") +
         widget("QCheckBox", 2) +
         widget("QGroupBox", 3,
                property("kind", "string", "radioGroup") + "<widget class=\"QRadioButton\" name=\"r1\"/>" +
                    "<widget class=\"QRadioButton\" name=\"r2\"/>") +
         widget("QSlider", 4, property("minimum", "number", "-5") + property("maximum", "number", "5")));
    const ControlRef popUp = control(1);
    EXPECT_EQ(GetControl32BitValue(popUp), 1);
    SetControl32BitValue(popUp, 2);
    EXPECT_EQ(GetControl32BitValue(popUp), 2);
    SetControl32BitValue(popUp, 99);
    EXPECT_EQ(GetControl32BitValue(popUp), 2);
    SetControl32BitValue(popUp, 0);
    EXPECT_EQ(GetControl32BitValue(popUp), 0);
    EXPECT_EQ(GetControl32BitMaximum(popUp), 2);

    SetControl32BitValue(control(2), 7);
    EXPECT_EQ(GetControl32BitValue(control(2)), 1);

    const ControlRef group = control(3);
    EXPECT_EQ(GetControl32BitValue(group), 0);
    SetControl32BitValue(group, 2);
    EXPECT_EQ(GetControl32BitValue(group), 2);
    SetControl32BitValue(group, 0);
    EXPECT_EQ(GetControl32BitValue(group), 0);

    SetControl32BitValue(control(4), -9);
    EXPECT_EQ(GetControl32BitValue(control(4)), -5);
    SetControl32BitMinimum(control(4), -2);
    EXPECT_EQ(GetControl32BitValue(control(4)), -2);
}

TEST_F(ControlsTest, TheWheelChangesNothingThatHasNoFocus) {
    const auto items = "<item>" + property("text", "string", "A") + "</item><item>" + property("text", "string", "B") +
                       "</item><item>" + property("text", "string", "C") + "</item>";
    const auto page = [](const std::string& name) {
        return "<widget class=\"QWidget\" name=\"" + name + "\"><attribute name=\"title\"><string>" + name +
               "</string></attribute></widget>";
    };
    open("<layout class=\"QVBoxLayout\" name=\"all\"><item>" + widget("QLineEdit", 1) + "</item><item>" +
         widget("QComboBox", 2, items) + "</item><item>" + widget("QSlider", 3) + "</item><item>" +
         widget("QSpinBox", 4) + "</item><item>" + widget("QTimeEdit", 5) + "</item><item>" +
         widget("QTabWidget", 6, page("one") + page("two")) + "</item><item>" +
         widget("QComboBox", 7, property("actsAtOnce", "bool", "true") + items) + "</item></layout>");
    ShowWindow(window);
    ASSERT_TRUE(QTest::qWaitForWindowActive(window->widget));
    const auto turn = [](QWidget* widget) {
        const QPointF place = widget->rect().center();
        QWheelEvent event(place, widget->mapToGlobal(place), {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&event);  // Qt propagates no other, and gives no focus by it
        QCoreApplication::sendEvent(widget, &event);
    };
    const auto state = [this](SInt32 number) {
        const auto* clock = qobject_cast<QTimeEdit*>(control(number)->widget);
        return clock != nullptr ? clock->time().msecsSinceStartOfDay() : GetControl32BitValue(control(number));
    };
    for (SInt32 number = 2; number <= 7; ++number) {
        auto* tabs = qobject_cast<QTabWidget*>(control(number)->widget);
        QWidget* turned = tabs != nullptr ? tabs->tabBar() : control(number)->widget;
        SCOPED_TRACE(number);
        SetControl32BitValue(control(number), 1);
        control(1)->widget->setFocus();
        const int before = state(number);
        turn(turned);
        EXPECT_EQ(state(number), before);
        EXPECT_TRUE(control(1)->widget->hasFocus());
        turned->setFocus();
        turn(turned);
        EXPECT_EQ(state(number) == before, number == 7) << "and what has it goes on, but for menus of actions";
    }
    auto* list = qobject_cast<QComboBox*>(control(7)->widget)->view();
    QTest::keyClick(control(7)->widget, Qt::Key_B, Qt::AltModifier);
    EXPECT_FALSE(list->isVisible());
    QTest::keyClick(control(7)->widget, Qt::Key_Down);
    EXPECT_EQ(GetControl32BitValue(control(7)), 1);
    EXPECT_TRUE(list->isVisible()) << "its keys open it instead";
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(GetControl32BitValue(control(7)), 2);
}

TEST_F(ControlsTest, TabsAreAsManyAsTheProgramMakesThem) {
    open(widget("QTabBar", 1, rectangle(0, 0, 300, 30)));
    int hits = 0;
    const TestHandler count(GetControlEventTarget(control(1)), kEventClassControl, kEventControlHit,
                            [&hits](EventHandlerCallRef, EventRef) {
                                ++hits;
                                return noErr;
                            });
    const auto name = [this](ControlPartCode tab, CFStringRef text) {
        const ControlTabInfoRecV1 info{kControlTabInfoVersionOne, 0, text};
        return SetControlData(control(1), tab, kControlTabInfoTag, sizeof info, &info);
    };
    SetControl32BitMaximum(control(1), 3);
    EXPECT_EQ(name(1, CFSTR("Features")), noErr);
    EXPECT_EQ(name(3, CFSTR("Notes & names")), noErr);
    EXPECT_EQ(name(4, CFSTR("None")), paramErr);
    SetControl32BitValue(control(1), 3);
    ControlTabInfoRecV1 info{};
    ASSERT_EQ(GetControlData(control(1), 3, kControlTabInfoTag, sizeof info, &info, nullptr), noErr);
    EXPECT_EQ(toQString(CFRef<CFStringRef>::adopt(info.name).get()), "Notes & names");
    EXPECT_EQ(qobject_cast<QTabBar*>(control(1)->widget)->tabText(2), "Notes && names") << "no letter is a key";
    SetControl32BitMaximum(control(1), 1);
    EXPECT_EQ(GetControl32BitValue(control(1)), 1);
    EXPECT_EQ(hits, 0) << "what the program does makes no event";
}

TEST_F(ControlsTest, HelpIsShownAndSpoken) {
    open(widget("QComboBox", 1,
                "<item>" + property("text", "string", "A") + "</item><item>" + property("text", "string", "B") +
                    "</item>") +
         widget("QPushButton", 2));
    const QWidget* button = control(2)->widget;
    EXPECT_EQ(HMSetControlHelpContent(control(2), CFSTR("Changes the staples")), noErr);
    EXPECT_EQ(button->toolTip(), "Changes the staples");
    EXPECT_EQ(button->accessibleDescription(), button->toolTip());
    EXPECT_EQ(HMSetControlHelpContent(control(2), nullptr), noErr);
    EXPECT_EQ(button->toolTip(), "");
    EXPECT_EQ(HMSetControlHelpContent(nullptr, CFSTR("")), controlHandleInvalidErr);

    const MenuRef menu = GetControlPopupMenuHandle(control(1));
    EXPECT_EQ(HMSetMenuItemHelpContent(menu, 2, CFSTR("Not installed")), noErr);
    EXPECT_EQ(HMSetMenuItemHelpContent(menu, 3, CFSTR("Not there")), menuItemNotFoundErr);
    const auto* popUp = qobject_cast<QComboBox*>(control(1)->widget);
    EXPECT_EQ(popUp->itemData(0, Qt::ToolTipRole).toString(), "");
    EXPECT_EQ(popUp->itemData(1, Qt::ToolTipRole).toString(), "Not installed");
    EXPECT_EQ(popUp->itemData(1, Qt::AccessibleDescriptionRole).toString(), "Not installed");

    // An alert stands in front of the help, which may change behind it, and at the item that the pop-up shows.
    EXPECT_EQ(HMSetControlHelpContent(control(2), CFSTR("Changes the staples")), noErr);
    SetControlAlert(control(2), CFSTR("Not with holes"));
    EXPECT_EQ(button->accessibleDescription(), "Not with holes\nChanges the staples");
    EXPECT_EQ(HMSetControlHelpContent(control(2), CFSTR("Staples")), noErr);
    EXPECT_EQ(button->toolTip(), "Not with holes\nStaples");
    EXPECT_FALSE(qobject_cast<const QPushButton*>(button)->icon().isNull());
    SetControlAlert(control(2), nullptr);
    EXPECT_EQ(button->toolTip(), "Staples");
    EXPECT_TRUE(qobject_cast<const QPushButton*>(button)->icon().isNull());
    SetControlAlert(control(1), CFSTR("Not with staples"));
    EXPECT_FALSE(popUp->itemIcon(0).isNull());
    SetControl32BitValue(control(1), 2);
    EXPECT_TRUE(popUp->itemIcon(0).isNull());
    EXPECT_FALSE(popUp->itemIcon(1).isNull());
    SetControlAlert(control(1), nullptr);
    EXPECT_EQ(SetMenuItemAlert(menu, 1, true), noErr);
    EXPECT_FALSE(popUp->itemIcon(0).isNull());
    EXPECT_EQ(SetMenuItemAlert(menu, 3, true), menuItemNotFoundErr);

    // What a printer calls its options is no page that shows other files.
    QToolTip::showText(QPoint(), QStringLiteral("<img src='none.png' width='999' height='999'>"), control(2)->widget);
    const auto windows = QApplication::topLevelWidgets();
    const auto tip = std::ranges::find_if(windows, [](const QWidget* each) { return each->inherits("QTipLabel"); });
    ASSERT_NE(tip, windows.end());
    EXPECT_EQ(qobject_cast<QLabel*>(*tip)->textFormat(), Qt::PlainText);
    EXPECT_LT((*tip)->height(), 900);
}

TEST_F(ControlsTest, WhatTheProgramSetsMakesNoEvent) {
    open(widget("QCheckBox", 1) + widget("QSlider", 2) + widget("QSpinBox", 3) +
         widget("QComboBox", 4,
                "<item>" + property("text", "string", "A") + "</item><item>" + property("text", "string", "B") +
                    "</item>"));
    int hits = 0;
    const TestHandler count(GetWindowEventTarget(window), kEventClassControl, kEventControlHit, [&](auto, auto) {
        ++hits;
        return noErr;
    });
    SetControl32BitValue(control(1), 1);
    SetControl32BitValue(control(2), 50);
    SetControl32BitMaximum(control(3), 10);
    SetControl32BitValue(control(3), 5);
    SetControl32BitValue(control(4), 2);
    EXPECT_EQ(hits, 0);
}

TEST_F(ControlsTest, NumbersTakeNoSignThatPartsThousands) {
    open(widget("QSpinBox", 1, property("maximum", "number", "9999")));
    ShowWindow(window);
    qobject_cast<QSpinBox*>(control(1)->widget)->selectAll();
    QTest::keyClicks(control(1)->widget, QStringLiteral("1,5"));
    EXPECT_EQ(text(control(1)), "15") << "what is read is what stands there";
    EXPECT_EQ(QToolTip::text(), QStringLiteral("0 – 9999")) << "said where it is refused";
    qobject_cast<QSpinBox*>(control(1)->widget)->selectAll();
    QGuiApplication::clipboard()->setText(QStringLiteral(" \uFF14\uFF12\n"));
    QTest::keySequence(control(1)->widget, QKeySequence::Paste);
    EXPECT_EQ(GetControl32BitValue(control(1)), 42) << "as it is copied from a page";
}

TEST_F(ControlsTest, LookUpsFindBothSignaturesAndRefuseTheUnknown) {
    open(widget("QWidget", 1, widget("QLineEdit", 2, property("signature2", "string", "More"))));
    ControlRef found = nullptr;
    EXPECT_EQ(HIViewFindByID(control(1), {FourCharCode("More"), 2}, &found), noErr);
    EXPECT_EQ(found, control(2));
    EXPECT_EQ(HIViewFindByID(control(2), {kTest, 1}, &found), errUnknownControl);
    const ControlID unknown{kTest, 77};
    EXPECT_EQ(GetControlByID(window, &unknown, &found), errUnknownControl);
    EXPECT_EQ(GetControlByID(nullptr, &unknown, &found), errInvalidWindowRef);
    const ControlID none{0, 0};
    EXPECT_EQ(GetControlByID(window, &none, &found), errUnknownControl);
}

TEST_F(ControlsTest, ContentThatWaitsIsMadeOnceWhenAControlIsLookedFor) {
    open(widget("QPushButton", 1) + widget("QWidget", 2));
    static int made = 0;
    made = 0;
    EXPECT_EQ(SetControlContentProc(
                  control(2),
                  [](ControlRef pane, void* owner) {
                      ++made;
                      ControlRef inside = nullptr;
                      const Rect bounds{0, 0, 20, 20};
                      CreateUserPaneControl(static_cast<WindowRef>(owner), &bounds, 0, &inside);
                      const ControlID id{kTest, 3};
                      SetControlID(inside, &id);
                      EmbedControl(inside, pane);
                  },
                  window),
              noErr);
    EXPECT_NE(control(1), nullptr);
    EXPECT_EQ(made, 0) << "what is there is found without it";
    EXPECT_EQ(GetSuperControl(control(3)), control(2));
    MakeControlContent(control(2));
    const ControlID unknown{kTest, 99};
    ControlRef found = nullptr;
    EXPECT_EQ(GetControlByID(window, &unknown, &found), errUnknownControl);
    EXPECT_EQ(made, 1);
    EXPECT_EQ(SetControlContentProc(control(2), nullptr, nullptr), paramErr);
}

TEST_F(ControlsTest, ActiveShownAndEnabledAreThreeStates) {
    open(widget("QWidget", 1, widget("QPushButton", 2)));
    DeactivateControl(control(1));
    EXPECT_FALSE(IsControlActive(control(2)));
    EXPECT_TRUE(IsControlVisible(control(2)));
    EXPECT_TRUE(IsControlEnabled(control(2)));
    ActivateControl(control(1));
    HideControl(control(1));
    DisableControl(control(1));
    EXPECT_TRUE(IsControlActive(control(2)));
    EXPECT_TRUE(IsControlVisible(control(2)));
    EXPECT_FALSE(IsControlVisible(control(1)));
    EXPECT_FALSE(IsControlEnabled(control(2)));
}

TEST_F(ControlsTest, EmbeddingAcrossWindowsKeepsBoundsAndShownState) {
    open(
        property("geometry", "rect", "<x>0</x><y>0</y><width>300</width><height>200</height>") +
        widget("QWidget", 1, property("geometry", "rect", "<x>40</x><y>30</y><width>200</width><height>150</height>")));
    TestBundle otherBundle("com.example.other");
    otherBundle.addNib(
        "Other", "Window",
        property("geometry", "rect", "<x>0</x><y>0</y><width>100</width><height>90</height>") +
            widget("QWidget", 2,
                   property("geometry", "rect", "<x>50</x><y>45</y><width>20</width><height>10</height>") +
                       widget("QPushButton", 3)));
    IBNibRef nib = nullptr;
    WindowRef other = nullptr;
    ASSERT_EQ(CreateNibReferenceWithCFBundle(otherBundle.bundle(), CFSTR("Other"), &nib), noErr);
    ASSERT_EQ(CreateWindowFromNib(nib, CFSTR("Window"), &other), noErr);
    DisposeNibReference(nib);
    const ControlID paneId{kTest, 2};
    ControlRef pane = nullptr;
    ASSERT_EQ(GetControlByID(other, &paneId, &pane), noErr);
    HideControl(pane);

    ASSERT_EQ(EmbedControl(pane, control(1)), noErr);
    DisposeWindow(other);
    EXPECT_EQ(GetControlOwner(pane), window);
    EXPECT_EQ(GetSuperControl(pane), control(1));
    EXPECT_FALSE(IsControlVisible(pane));
    EXPECT_TRUE(IsControlVisible(control(3)));
    Rect bounds{};
    ASSERT_NE(GetControlBounds(pane, &bounds), nullptr);
    EXPECT_EQ(bounds.left, 50);
    EXPECT_EQ(bounds.top, 45);
    EXPECT_EQ(bounds.right - bounds.left, 20);
    MoveControl(pane, 60, 70);
    GetControlBounds(pane, &bounds);
    EXPECT_EQ(bounds.left, 60);
    EXPECT_EQ(bounds.bottom, 80);
    EXPECT_EQ(EmbedControl(control(1), pane), paramErr);
    DisposeControl(pane);
    ControlRef gone = nullptr;
    EXPECT_EQ(GetControlByID(window, &paneId, &gone), errUnknownControl);
}

TEST_F(ControlsTest, BoundsInsideLayoutsAreKnownBeforeTheWindowIsShown) {
    open(property("geometry", "rect", "<x>0</x><y>0</y><width>400</width><height>300</height>") +
         "<layout class=\"QVBoxLayout\" name=\"v\"><item>" + widget("QPushButton", 1) + "</item><item>" +
         widget("QWidget", 2,
                "<layout class=\"QVBoxLayout\" name=\"h\"><item>" + widget("QLineEdit", 3) + "</item></layout>") +
         "</item></layout>");
    Rect button{};
    Rect field{};
    GetControlBounds(control(1), &button);
    GetControlBounds(control(3), &field);
    EXPECT_GT(field.top, button.bottom);
    EXPECT_GT(field.right - field.left, 300);
    EXPECT_LE(field.right, 400);
}

TEST_F(ControlsTest, MenusCarryReferenceValuesAndServeTheirPopUp) {
    open(widget("QComboBox", 1) + widget("QLineEdit", 2));
    const MenuRef menu = GetControlPopupMenuHandle(control(1));
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(GetControlPopupMenuHandle(control(2)), nullptr);
    const int table = 0;
    SetMenuItemRefCon(menu, 0, reinterpret_cast<MenuRefCon>(&table));
    MenuItemIndex item = 0;
    for (const char* text : {"one", "two", "three"}) {
        const auto title = CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, text, kCFStringEncodingUTF8));
        ASSERT_EQ(AppendMenuItemTextWithCFString(menu, title.get(), 0, FourCharCode("Pick"), &item), noErr);
        SetMenuItemRefCon(menu, item, item * 10);
    }
    EXPECT_EQ(item, 3);
    EXPECT_EQ(GetControl32BitMaximum(control(1)), 3);
    SetControl32BitValue(control(1), 3);
    EXPECT_EQ(DeleteMenuItems(menu, 2, 100), noErr);
    EXPECT_EQ(CountMenuItems(menu), 1);
    EXPECT_LE(GetControl32BitValue(control(1)), 1);
    MenuRefCon refCon = 0;
    EXPECT_EQ(GetMenuItemRefCon(menu, 1, &refCon), noErr);
    EXPECT_EQ(refCon, 10);
    EXPECT_EQ(GetMenuItemRefCon(menu, 2, &refCon), menuItemNotFoundErr);
    EXPECT_EQ(GetMenuItemRefCon(menu, 0, &refCon), noErr);
    EXPECT_EQ(refCon, reinterpret_cast<MenuRefCon>(&table));
    DisableMenuItem(menu, 1);
    EXPECT_FALSE(IsMenuItemEnabled(menu, 1));
    EXPECT_EQ(CountMenuItems(nullptr), 0);
    EXPECT_EQ(DeleteMenuItems(nullptr, 1, 1), menuItemNotFoundErr);
}

TEST_F(ControlsTest, PopUpsAreAsWideAsTheirWidestItem) {
    open(widget("QComboBox", 1, property("sizeAdjustPolicy", "enum", "QComboBox::AdjustToContents")));
    QWidget* const fitting = control(1)->widget;
    const MenuRef menu = GetControlPopupMenuHandle(control(1));
    const auto isAsWideAsQts = [&] {
        QComboBox qt;
        qt.setFont(fitting->font());
        for (UInt16 i = 1; i <= CountMenuItems(menu); ++i) {
            qt.addItem(static_cast<QComboBox*>(fitting)->itemText(i - 1));
        }
        return std::abs(fitting->sizeHint().width() - qt.sizeHint().width()) <= 1 &&  // of a letter's slant
               fitting->sizeHint().height() == qt.sizeHint().height() &&
               fitting->minimumSizeHint() == fitting->sizeHint();
    };
    EXPECT_TRUE(isAsWideAsQts());
    AppendMenuItemTextWithCFString(menu, CFSTR("short"), 0, 0, nullptr);
    EXPECT_TRUE(isAsWideAsQts());
    const int width = fitting->sizeHint().width();
    AppendMenuItemTextWithCFString(menu, CFSTR("rather longer than that"), 0, 0, nullptr);
    EXPECT_TRUE(isAsWideAsQts());
    EXPECT_GT(fitting->sizeHint().width(), width);
    SetMenuItemTextWithCFString(menu, 2, CFSTR("so-so"));
    EXPECT_TRUE(isAsWideAsQts());
    QFont large = fitting->font();
    large.setPointSize(2 * large.pointSize());
    fitting->setFont(large);
    EXPECT_TRUE(isAsWideAsQts());
    DeleteMenuItems(menu, 1, 2);
    EXPECT_TRUE(isAsWideAsQts());
}

TEST_F(ControlsTest, ASubmenuBelongsToOneItem) {
    open(widget("QToolButton", 1, property("popupMode", "enum", "QToolButton::InstantPopup")));
    const MenuRef menu = GetControlPopupMenuHandle(control(1));
    for (const CFStringRef text : {CFSTR("second"), CFSTR("third")}) {
        AppendMenuItemTextWithCFString(menu, text, 0, 0, nullptr);
    }
    EXPECT_EQ(InsertMenuItemTextWithCFString(menu, CFSTR("first"), 0, 0, FourCharCode("frst")), noErr);
    EXPECT_EQ(InsertMenuItemTextWithCFString(menu, CFSTR("lost"), 4, 0, 0), paramErr);
    OSType command = 0;
    EXPECT_EQ(GetMenuItemCommandID(menu, 1, &command), noErr);
    EXPECT_EQ(command, FourCharCode("frst"));

    MenuRef outer = nullptr;
    MenuRef inner = nullptr;
    ASSERT_EQ(CreateNewMenu(0, 0, &outer), noErr);
    ASSERT_EQ(CreateNewMenu(0, 0, &inner), noErr);
    AppendMenuItemTextWithCFString(outer, CFSTR("inner"), 0, 0, nullptr);
    AppendMenuItemTextWithCFString(inner, CFSTR("deep"), 0, 0, nullptr);
    EXPECT_EQ(SetMenuItemHierarchicalMenu(outer, 1, inner), noErr);
    EXPECT_EQ(SetMenuItemHierarchicalMenu(inner, 1, outer), paramErr) << "a circle";
    EXPECT_EQ(SetMenuItemHierarchicalMenu(outer, 1, outer), paramErr);
    EXPECT_EQ(SetMenuItemHierarchicalMenu(menu, 1, inner), paramErr) << "in two places";
    EXPECT_EQ(SetMenuItemHierarchicalMenu(outer, 1, menu), paramErr) << "a control's own";
    EXPECT_EQ(SetMenuItemHierarchicalMenu(menu, 4, outer), menuItemNotFoundErr);
    EXPECT_EQ(SetMenuItemHierarchicalMenu(menu, 2, outer), noErr);
    MenuRef found = nullptr;
    EXPECT_EQ(GetMenuItemHierarchicalMenu(menu, 2, &found), noErr);
    EXPECT_EQ(found, outer);
    EXPECT_EQ(GetMenuItemHierarchicalMenu(menu, 1, &found), noErr);
    EXPECT_EQ(found, nullptr);

    // A menu that outlives its item is free to be another item's.
    DeleteMenuItems(menu, 2, 1);
    EXPECT_EQ(SetMenuItemHierarchicalMenu(menu, 1, outer), noErr);
    EXPECT_EQ(SetMenuItemHierarchicalMenu(menu, 1, nullptr), noErr);
    EXPECT_EQ(SetMenuItemHierarchicalMenu(menu, 2, outer), noErr);
    ReleaseMenu(inner);
    ReleaseMenu(outer);
}

TEST_F(ControlsTest, AttributesSayHowAMenuIsShown) {
    open(widget("QToolButton", 1, property("popupMode", "enum", "QToolButton::InstantPopup")));
    const MenuRef menu = GetControlPopupMenuHandle(control(1));
    AppendMenuItemTextWithCFString(menu, CFSTR("-"), kMenuItemAttrSeparator, 0, nullptr);
    AppendMenuItemTextWithCFString(menu, CFSTR("item"), 0, 0, nullptr);
    CheckMenuItem(menu, 2, true);
    auto* shown = static_cast<QToolButton*>(control(1)->widget)->menu();
    Q_EMIT shown->aboutToShow();
    EXPECT_FALSE(shown->separatorsCollapsible());
    EXPECT_TRUE(shown->actions().at(1)->isChecked());
    EXPECT_EQ(ChangeMenuAttributes(menu, kMenuAttrExcludesMarkColumn | kMenuAttrCondenseSeparators, 0), noErr);
    Q_EMIT shown->aboutToShow();
    EXPECT_TRUE(shown->separatorsCollapsible());
    EXPECT_FALSE(shown->actions().at(1)->isCheckable());
    EXPECT_TRUE(IsMenuItemChecked(menu, 2)) << "marked, though not to be seen";
}

TEST_F(ControlsTest, PropertiesAndDataKnowTheirSizes) {
    open(widget("QLineEdit", 1) + widget("QWidget", 2));
    void* pointer = this;
    SetControlProperty(control(1), FourCharCode("TPDE"), FourCharCode("MBND"), sizeof pointer, &pointer);
    void* back = nullptr;
    EXPECT_EQ(GetControlProperty(control(1), FourCharCode("TPDE"), FourCharCode("MBND"), sizeof back, nullptr, &back),
              noErr);
    EXPECT_EQ(back, this);
    EXPECT_EQ(GetControlProperty(control(2), FourCharCode("TPDE"), FourCharCode("MBND"), 0, nullptr, nullptr),
              controlPropertyNotFoundErr);
    CFStringRef string = CFSTR("abc");
    EXPECT_EQ(SetControlData(control(1), 0, kControlEditTextCFStringTag, sizeof string, &string), noErr);
    EXPECT_EQ(SetControlData(control(1), 0, kControlEditTextCFStringTag, 3, &string), paramErr);
    EXPECT_EQ(SetControlData(control(2), 0, kControlEditTextCFStringTag, sizeof string, &string), errDataNotSupported);
    EXPECT_EQ(text(control(1)), "abc");
    EXPECT_EQ(GetControl32BitValue(nullptr), 0);
    EXPECT_EQ(SetControlData(nullptr, 0, kControlEditTextCFStringTag, sizeof string, &string), controlHandleInvalidErr);
}

/// The frame is what makes an empty box a box.
TEST_F(ControlsTest, EmptyBoxesAndFieldsAreSeenInDarkColors) {
    open(widget("QCheckBox", 1) + widget("QRadioButton", 2) + widget("QLineEdit", 3) + widget("QComboBox", 4) +
         widget("QPlainTextEdit", 5));
    for (const QColor color : {QColor(0x2B, 0x2D, 0x30), QColor(Qt::black)}) {
        window->widget->setPalette(QPalette(color));
        for (const int number : {1, 2, 3, 4, 5}) {
            const QImage picture = control(number)->widget->grab().toImage();
            int lightest = 0;
            for (int x = 0; x < picture.width(); ++x) {
                lightest = std::max(lightest, picture.pixelColor(x, picture.height() / 2).lightness());
            }
            EXPECT_GT(lightest, color.lightness() + 40) << number << " on " << color.name().toStdString();
        }
    }
}

/// By how much the red, green or blue of two pictures differ at most, of 255.
int farthest(const QImage& one, const QImage& other) {
    int most = one.size() == other.size() ? 0 : 255;
    for (int y = 0; y < std::min(one.height(), other.height()); ++y) {
        for (int x = 0; x < std::min(one.width(), other.width()); ++x) {
            const QColor left = one.pixelColor(x, y);
            const QColor right = other.pixelColor(x, y);
            most = std::max({most, std::abs(left.red() - right.red()), std::abs(left.green() - right.green()),
                             std::abs(left.blue() - right.blue())});
        }
    }
    return most;
}

/// Buttons are widened from a narrow one, which nobody shall see.
TEST_F(ControlsTest, ButtonsLookAsInQtsOwnStyle) {
    const std::unique_ptr<QStyle> qt(QStyleFactory::create(QStringLiteral("fusion")));
    const auto* const own = qobject_cast<const QProxyStyle*>(QApplication::style());
    ASSERT_TRUE(own != nullptr && own->baseStyle()->name() == qt->name());
    const auto drawn = [](const QStyle& style, const QStyleOptionButton& option, double scale) {
        QImage picture((QSizeF(option.rect.size()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
        picture.setDevicePixelRatio(scale);
        picture.fill(Qt::gray);
        QPainter painter(&picture);
        style.drawPrimitive(QStyle::PE_PanelButtonCommand, &option, &painter);
        return picture;
    };
    QStyleOptionButton option;
    for (const QSize size : {QSize(8, 20), QSize(24, 24), QSize(31, 23), QSize(300, 32)}) {
        option.rect = QRect(QPoint(), size);
        const std::array<QStyle::State, 5> states{
            QStyle::State_None, QStyle::State_Enabled, QStyle::State_Sunken | QStyle::State_Enabled,
            QStyle::State_MouseOver | QStyle::State_Enabled,
            QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange | QStyle::State_Enabled};
        for (const QStyle::State state : states) {
            for (const auto features : {QStyleOptionButton::None, QStyleOptionButton::DefaultButton}) {
                for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
                    option.state = state;
                    option.features = features;
                    EXPECT_LE(farthest(drawn(*QApplication::style(), option, scale), drawn(*qt, option, scale)), 1)
                        << size.width() << " wide, state " << state << ", features " << features << ", at " << scale;
                }
            }
        }
    }
}

}  // namespace
