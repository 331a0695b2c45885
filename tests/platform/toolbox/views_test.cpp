// Pictures, custom views and the tracking of the mouse.

#include "platform/toolbox/Views.h"

#include "platform/toolbox/Automation.h"
#include "platform/toolbox/objects.h"
#include "platform/toolbox/pictures.h"
#include "tests/platform/toolbox/toolbox_fixture.h"

#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <QWindow>
#include <span>

namespace {

CFRef<CFURLRef> urlOf(const std::filesystem::path& path) {
    const auto text =
        CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, path.c_str(), kCFStringEncodingUTF8));
    return CFRef<CFURLRef>::adopt(CFURLCreateWithFileSystemPath(nullptr, text.get(), kCFURLPOSIXPathStyle, false));
}

void sendMouse(WindowRef window, QEvent::Type type, QPoint place) {
    const bool move = type == QEvent::MouseMove;
    QMouseEvent event(type, place, place, move ? Qt::NoButton : Qt::LeftButton,
                      type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window->widget->windowHandle(), &event);
}

// ---- Pictures

/// Stripes of one pixel, so that any scaling or shift shows.
QImage stripes(int size, QColor first, QColor second) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    for (int x = 0; x < size; ++x) {
        for (int y = 0; y < size; ++y) {
            image.setPixelColor(x, y, x % 2 ? first : second);
        }
    }
    return image;
}

class PicturesTest : public NibWindowTest {
protected:
    void SetUp() override {
        bundle.add("Resources/keep", "");
        const std::filesystem::path folder = bundle.contents() / "Resources";
        normal.save(QString::fromStdString(folder / "a.b.png"));
        dense.save(QString::fromStdString(folder / "a.b@2x.png"));
        picture = CGImageCreateWithURL(urlOf(folder / "a.b.png").get());
        ASSERT_NE(picture, nullptr);
        open(widget("QWidget", 1));
    }
    void TearDown() override {
        CGImageRelease(picture);
        NibWindowTest::TearDown();
    }

    /// What a handler of the control's draw event paints on a screen of that density.
    QImage drawn(int ratio, TestHandler::Function draw) {
        QImage screen(4 * ratio, 4 * ratio, QImage::Format_ARGB32_Premultiplied);
        screen.fill(Qt::yellow);
        screen.setDevicePixelRatio(ratio);
        const TestHandler handler(GetControlEventTarget(control(1)), kEventClassControl, kEventControlDraw,
                                  std::move(draw));
        QPainter painter(&screen);
        drawControl(control(1), painter);
        painter.end();
        screen.setDevicePixelRatio(1);
        return screen;
    }

    const QImage normal = stripes(4, Qt::red, Qt::black);
    const QImage dense = stripes(8, Qt::blue, Qt::white);
    const HIRect bounds{{0, 0}, {4, 4}};
    CGImageRef picture = nullptr;
};

TEST_F(PicturesTest, AreDrawnPixelByPixelAndSharpOnDenseScreens) {
    EXPECT_EQ(CGImageGetWidth(picture), 4u);
    const auto draw = [this](EventHandlerCallRef, EventRef event) {
        CGContextRef context = nullptr;
        GetEventParameter(event, kEventParamCGContextRef, typeCGContextRef, nullptr, sizeof context, nullptr, &context);
        EXPECT_EQ(context, HIViewGetDrawContext(control(1)));
        EXPECT_EQ(HIViewDrawCGImage(context, &bounds, nullptr), paramErr);
        return HIViewDrawCGImage(context, &bounds, picture);
    };
    EXPECT_EQ(drawn(1, draw), normal);
    EXPECT_EQ(drawn(2, draw), dense);
    EXPECT_EQ(HIViewGetDrawContext(control(1)), nullptr) << "the event is over";
    EXPECT_FALSE(iconOf(picture).isNull());

    std::filesystem::remove(bundle.contents() / "Resources/a.b@2x.png");
    CGImageRelease(picture);
    picture = CGImageCreateWithURL(urlOf(bundle.contents() / "Resources/a.b.png").get());
    EXPECT_GT(drawn(2, draw).pixelColor(6, 1).red(), 100) << "the one picture there is, at twice its size";
}

TEST_F(PicturesTest, CanBeMadeOfPixels) {
    const std::vector<UInt32> pixels{0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0x00000000};
    CGImageRelease(picture);
    picture = CGImageCreate(2, 2, pixels.data());
    const HIRect corner{{0, 0}, {1, 1}};
    const QImage screen =
        drawn(2, [&](auto, auto) { return HIViewDrawCGImage(HIViewGetDrawContext(control(1)), &corner, picture); });
    EXPECT_EQ(screen.pixelColor(0, 0), QColor(Qt::red));
    EXPECT_EQ(screen.pixelColor(1, 0), QColor(Qt::green));
    EXPECT_EQ(screen.pixelColor(0, 1), QColor(Qt::blue));
    EXPECT_EQ(screen.pixelColor(1, 1), QColor(Qt::yellow)) << "clear";
}

TEST_F(PicturesTest, ErasingUncoversWhatLiesBehindTheView) {
    const QColor back = control(1)->widget->palette().window().color();
    const auto draw = [this](bool first) {
        return [this, first](EventHandlerCallRef, EventRef) {
            const CGContextRef context = HIViewGetDrawContext(control(1));
            if (first) {
                HIViewDrawCGImage(context, &bounds, picture);
            }
            HIThemeEraseBackground(context, &bounds);
            return noErr;
        };
    };
    EXPECT_EQ(drawn(1, draw(true)).pixelColor(1, 1), back);
    EXPECT_EQ(drawn(1, draw(false)).pixelColor(1, 1), QColor(Qt::yellow)) << "a tab page's own colour, say";
}

TEST_F(PicturesTest, UnreadableFilesAndNullAreNoPictures) {
    bundle.add("Resources/broken.gif", "GIF89a, or so it says");
    EXPECT_EQ(CGImageCreateWithURL(urlOf(bundle.contents() / "Resources/broken.gif").get()), nullptr);
    EXPECT_EQ(CGImageCreateWithURL(nullptr), nullptr);
    EXPECT_EQ(CGImageGetWidth(nullptr), 0u);
    EXPECT_TRUE(iconOf(nullptr).isNull());
    CGImageRelease(nullptr);
}

// ---- Custom views

/// A class whose views are hot in their left half and log what happens to them.
struct ViewLog {
    std::vector<std::string> lines;
    int views = 0;

    static OSStatus handle(EventHandlerCallRef, EventRef event, void* data) {
        if (GetEventClass(event) == kEventClassHIObject && GetEventKind(event) == kEventHIObjectConstruct) {
            void* record = new View{static_cast<ViewLog*>(data)};
            ++static_cast<ViewLog*>(data)->views;
            return SetEventParameter(event, kEventParamHIObjectInstance, typeVoidPtr, sizeof record, &record);
        }
        auto* view = static_cast<View*>(data);
        if (GetEventClass(event) == kEventClassHIObject) {
            const bool ends = GetEventKind(event) == kEventHIObjectDestruct;
            view->log->lines.emplace_back(ends ? "destruct" : "initialize");
            if (ends) {
                --view->log->views;
                delete view;
            }
            return noErr;
        }
        if (GetEventKind(event) == kEventControlHitTest) {
            HIPoint at{};
            GetEventParameter(event, kEventParamMouseLocation, typeHIPoint, nullptr, sizeof at, nullptr, &at);
            const ControlPartCode part = at.x <= 50 ? 10 : 0;
            return SetEventParameter(event, kEventParamControlPart, typeControlPartCode, sizeof part, &part);
        }
        view->log->lines.emplace_back("draw");
        return noErr;
    }

private:
    struct View {
        ViewLog* log;
    };
};

class CustomViewTest : public NibWindowTest {
protected:
    void SetUp() override {
        static ViewLog shared;  // classes are registered for the life of the process
        log = &shared;
        log->lines.clear();
        constexpr EventTypeSpec kTypes[] = {{kEventClassHIObject, kEventHIObjectConstruct},
                                            {kEventClassHIObject, kEventHIObjectInitialize},
                                            {kEventClassHIObject, kEventHIObjectDestruct},
                                            {kEventClassControl, kEventControlHitTest},
                                            {kEventClassControl, kEventControlDraw}};
        static const OSStatus first = registerClass(kTypes);
        EXPECT_EQ(first, noErr);
        EXPECT_EQ(registerClass(kTypes), hiObjectClassExistsErr);
        open(rectangle(0, 0, 300, 200) +
             widget("QWidget", 1,
                    property("viewClass", "string", "com.example.view") + property("command", "string", "hit!") +
                        rectangle(10, 10, 100, 40)) +
             widget("QWidget", 2, property("viewClass", "string", "com.example.unknown") + rectangle(10, 60, 100, 40)));
        ShowWindow(window);
    }
    OSStatus registerClass(std::span<const EventTypeSpec> types) {
        return HIObjectRegisterSubclass(CFSTR("com.example.view"), kHIViewClassID, 0, &ViewLog::handle,
                                        static_cast<ItemCount>(types.size()), types.data(), log, nullptr);
    }

    ViewLog* log = nullptr;
};

TEST_F(NibWindowTest, PanesHearKeysAndTheWheelAndNumbersReturn) {
    open(widget("QPushButton", 1, property("command", "string", "ok  ")) + widget("QLineEdit", 2) +
         widget("QWidget", 3, property("kind", "string", "customView")) + widget("QSpinBox", 4));
    std::vector<int> heard;
    const auto listen = [&](EventHandlerCallRef, EventRef event) {
        UniChar key = 0;
        SInt32 notch = 0;
        GetEventParameter(event, kEventParamKeyUnicodes, typeUnicodeText, nullptr, sizeof key, nullptr, &key);
        GetEventParameter(event, kEventParamMouseWheelDelta, typeSInt32, nullptr, sizeof notch, nullptr, &notch);
        heard.push_back(key + notch);
        return noErr;
    };
    const TestHandler keys(GetControlEventTarget(control(3)), kEventClassKeyboard, kEventRawKeyDown, listen);
    const TestHandler wheel(GetControlEventTarget(control(3)), kEventClassMouse, kEventMouseWheelMoved, listen);
    const TestHandler number(GetControlEventTarget(control(4)), kEventClassKeyboard, kEventRawKeyDown, listen);
    int pressed = 0;
    const TestHandler button(GetControlEventTarget(control(1)), kEventClassControl, kEventControlHit,
                             [&](auto, auto) { return ++pressed, noErr; });
    ShowWindow(window);
    SetKeyboardFocus(window, control(2));
    const auto turn = [&](int angle) {
        QWheelEvent event(QPointF(1, 1), QPointF(1, 1), {}, {0, angle}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(control(3)->widget, &event);
    };
    turn(-60);
    turn(-60);
    EXPECT_EQ(heard, std::vector{-1}) << "two halves of a notch, without the focus";
    heard.clear();
    sendMouse(window, QEvent::MouseButtonPress, control(3)->widget->geometry().center());
    ControlRef focused = nullptr;
    GetKeyboardFocus(window, &focused);
    EXPECT_EQ(focused, control(3));
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_PageDown, Qt::Key_End, Qt::Key_A}) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(control(3)->widget, &event);
    }
    EXPECT_EQ(heard, (std::vector<int>{kLeftArrowCharCode, kPageDownCharCode, kEndCharCode}));
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(control(4)->widget, &event);
    EXPECT_EQ(heard.back(), kReturnCharCode);
    EXPECT_EQ(pressed, 0);
    EXPECT_EQ(SetControlTitleWithCFString(control(3), CFSTR("Sheet 1")), noErr);
    EXPECT_EQ(control(3)->widget->accessibleName(), QStringLiteral("Sheet 1"));
}

TEST_F(CustomViewTest, LivesAndDrawsAsItsClassWants) {
    EXPECT_EQ(log->views, 1);
    EXPECT_EQ(log->lines, std::vector<std::string>{"initialize"});
    window->widget->grab();
    EXPECT_EQ(log->lines.back(), "draw");
    {
        const TestHandler own(GetControlEventTarget(control(1)), kEventClassControl, kEventControlDraw,
                              [](EventHandlerCallRef, EventRef) { return noErr; });
        log->lines.clear();
        window->widget->grab();
        EXPECT_TRUE(log->lines.empty()) << "a handler of the view itself comes first";
    }
    DisposeWindow(std::exchange(window, nullptr));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(log->lines, std::vector<std::string>{"destruct"});
    EXPECT_EQ(log->views, 0);
}

TEST_F(CustomViewTest, IsPressedWhereItsHitTestSaysSo) {
    int commands = 0;
    const TestHandler handler(GetWindowEventTarget(window), kEventClassCommand, kEventCommandProcess,
                              [&](EventHandlerCallRef, EventRef event) {
                                  commands += commandOf(event) == FourCharCode("hit!");
                                  return noErr;
                              });
    const QPoint hot(30, 30);
    const QPoint cold(90, 30);
    const auto click = [&](QPoint down, QPoint up) {
        commands = 0;
        sendMouse(window, QEvent::MouseButtonPress, down);
        EXPECT_EQ(commands, 0) << "only when released";
        sendMouse(window, QEvent::MouseButtonRelease, up);
        return commands;
    };
    EXPECT_EQ(click(hot, hot), 1);
    EXPECT_EQ(click(cold, cold), 0);
    EXPECT_EQ(click(hot, cold), 0);
    EXPECT_EQ(click(cold, hot), 0);
    EXPECT_EQ(click({30, 80}, {30, 80}), 0) << "a view of no class is a plain pane";

    for (const int key : {Qt::Key_Space, Qt::Key_Return}) {
        commands = 0;
        QWidget* view = control(1)->widget;
        view->setFocus(Qt::TabFocusReason);
        EXPECT_EQ(window->widget->focusWidget(), view);
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(window->widget->windowHandle(), &press);
        EXPECT_EQ(commands, 1);
    }
    EXPECT_EQ(control(2)->widget->focusPolicy(), Qt::NoFocus);
}

TEST_F(CustomViewTest, MayCloseItsWindowWhenPressed) {
    const TestHandler handler(GetControlEventTarget(control(1)), kEventClassControl, kEventControlHit,
                              [&](EventHandlerCallRef, EventRef) {
                                  DisposeWindow(std::exchange(window, nullptr));
                                  return noErr;
                              });
    EXPECT_EQ(AutomationClick(control(1)), noErr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(log->views, 0);
}

// ---- Tracking

class TrackingTest : public NibWindowTest {
protected:
    void SetUp() override {
        open(rectangle(0, 0, 300, 200) + widget("QWidget", 1, rectangle(0, 0, 50, 50)));
        ShowWindow(window);
    }
    MouseTrackingRef track(EventTargetRef target) const {
        const RgnHandle region = NewRgn();
        const Rect rect{10, 10, 20, 30};
        RectRgn(region, &rect);
        MouseTrackingRef ref = nullptr;
        EXPECT_EQ(CreateMouseTrackingRegion(window, region, nullptr, 0, {kTest, 1}, nullptr, target, &ref), noErr);
        DisposeRgn(region);
        return ref;
    }
    void move(int x, int y) const { sendMouse(window, QEvent::MouseMove, {x, y}); }
};

TEST_F(TrackingTest, TellsOfEveryCrossingOfTheEdgeWhileEnabled) {
    std::string seen;
    const auto log = [&](char mark) {
        return [&seen, mark](EventHandlerCallRef, EventRef) {
            seen += mark;
            return noErr;
        };
    };
    const EventTargetRef target = GetControlEventTarget(control(1));
    const TestHandler entered(target, kEventClassMouse, kEventMouseEntered, log('('));
    const TestHandler exited(target, kEventClassMouse, kEventMouseExited, log(')'));
    const MouseTrackingRef ref = track(target);
    move(15, 15);
    EXPECT_EQ(seen, "") << "disabled at first";
    SetMouseTrackingRegionEnabled(ref, true);
    for (const int x : {9, 10, 20, 29, 30, 40, 15}) {
        move(x, 15);
    }
    EXPECT_EQ(seen, "()(");
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(window->widget->windowHandle(), &leave);
    EXPECT_EQ(seen, "()()");
    EXPECT_EQ(ReleaseMouseTrackingRegion(ref), noErr);
    move(15, 15);
    EXPECT_EQ(seen, "()()");
    EXPECT_EQ(ReleaseMouseTrackingRegion(nullptr), noErr);
}

TEST_F(TrackingTest, CursorOfARegionGoesWithIt) {
    const TestHandler entered(GetWindowEventTarget(window), kEventClassMouse, kEventMouseEntered,
                              [](EventHandlerCallRef, EventRef) { return SetThemeCursor(kThemePointingHandCursor); });
    const MouseTrackingRef ref = track(nullptr);
    SetMouseTrackingRegionEnabled(ref, true);
    move(15, 15);
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::PointingHandCursor);
    SetMouseTrackingRegionEnabled(ref, false);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    ReleaseMouseTrackingRegion(ref);
    EXPECT_EQ(SetThemeCursor(4711), paramErr);
}

TEST_F(TrackingTest, OutlivesItsTargetAndItsWindow) {
    const MouseTrackingRef ref = track(GetControlEventTarget(control(1)));
    SetMouseTrackingRegionEnabled(ref, true);
    DisposeControl(control(1));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    move(15, 15);
    DisposeWindow(std::exchange(window, nullptr));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(ReleaseMouseTrackingRegion(ref), noErr);
}

}  // namespace
