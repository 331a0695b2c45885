// The toolbox's own objects: what stands behind its opaque references. Private to this folder.
//
// A control is an object beside one widget: it adds what the widget does not have (signature and number, command code,
// properties, handlers, "active") and reads everything else (value, text, enabled, shown, place) from the widget, so
// that there is no second copy of the state. The widget owns its control object and deletes it.
#pragma once

#include "platform/foundation/CFRef.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Events.h"
#include "platform/toolbox/Menus.h"
#include "platform/toolbox/Windows.h"

#include <QAbstractListModel>
#include <QByteArray>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

class QEventLoop;
class QMenu;
class QPainter;

// ---- Events

/// One installed handler. Journeys under way share it, so that a handler may be removed while it runs.
struct OpaqueEventHandlerRef {
    EventHandlerUPP proc;
    void* userData;
    std::vector<EventTypeSpec> types;
    struct OpaqueEventTargetRef* target;  // null once removed
};

/// Anything that handlers can be installed on.
struct OpaqueEventTargetRef {
    OpaqueEventTargetRef() = default;
    OpaqueEventTargetRef(const OpaqueEventTargetRef&) = delete;
    OpaqueEventTargetRef& operator=(const OpaqueEventTargetRef&) = delete;
    virtual ~OpaqueEventTargetRef();

    /// Where an event goes that nobody here took; null at the application.
    virtual OpaqueEventTargetRef* nextTarget() const { return nullptr; }
    /// What happens when nobody at all took the event that was sent to this target.
    virtual OSStatus handleByDefault(EventRef event);

    bool hasHandlerFor(OSType eventClass, UInt32 kind) const;

    std::vector<std::shared_ptr<OpaqueEventHandlerRef>> handlers;  // oldest first
};

/// An event under construction or on its way, for use inside the toolbox: released with the scope.
class ScopedEvent {
public:
    ScopedEvent(OSType eventClass, UInt32 kind) { CreateEvent(nullptr, eventClass, kind, 0, 0, &event_); }
    ~ScopedEvent() { ReleaseEvent(event_); }
    ScopedEvent(const ScopedEvent&) = delete;
    ScopedEvent& operator=(const ScopedEvent&) = delete;

    template <typename T>
    ScopedEvent& with(EventParamName name, EventParamType type, const T& value) {
        SetEventParameter(event_, name, type, sizeof value, &value);
        return *this;
    }
    ScopedEvent& withText(EventParamName name, const QString& text);
    EventRef get() const { return event_; }
    OSStatus sendTo(EventTargetRef target) const { return SendEventToEventTarget(event_, target); }

private:
    EventRef event_ = nullptr;
};

/// The text of a typeUnicodeText parameter; empty when there is none.
QString eventText(EventRef event, EventParamName name);

/// True while an event is on its way: objects are then deleted later, not at once.
bool isDispatching();

/// The same for the time that a program's routine is called by other means than an event.
class DispatchScope {
public:
    DispatchScope();
    ~DispatchScope();
    DispatchScope(const DispatchScope&) = delete;
    DispatchScope& operator=(const DispatchScope&) = delete;
};

// ---- Controls

/// A field that takes text itself once its handlers let it pass.
class TextSink {
public:
    virtual ~TextSink() = default;
    /// Does what the user asked for: puts the text in place of the selection, or, when `text` is a control character
    /// that stands for an editing action, performs that.
    virtual void takeText(const QString& text) = 0;
    virtual ControlEditTextSelectionRec selection() const = 0;
    virtual void setSelection(ControlEditTextSelectionRec selection) = 0;
};

/// A class of custom views.
struct OpaqueHIObjectClassRef {
    QString id;
    EventHandlerUPP handler;
    std::vector<EventTypeSpec> types;
    void* constructData;
};

/// Keeps a menu: its control does, and the item that it is a submenu of.
struct MenuRelease {
    void operator()(OpaqueMenuRef* menu) const { ReleaseMenu(menu); }
};
using MenuHold = std::unique_ptr<OpaqueMenuRef, MenuRelease>;

/// What stands beside the pointer, and is said by assistive technologies.
struct ControlHelp {
    QString tip;
    QString description;
};

/// Whose widget a control is: a nib's or the toolbox's own, or that of a window that was adopted for a script
/// (AutomationAdoptFrontWindow), which nobody here listens to.
enum class ControlOrigin { own, adopted };

struct OpaqueControlRef final : QObject, OpaqueEventTargetRef {
    /// Makes a widget a control and connects what the user does with it. One widget is at most one control.
    OpaqueControlRef(QWidget* ownWidget, ControlKind ownKind, ControlOrigin from = ControlOrigin::own);
    ~OpaqueControlRef() override;

    /// The control of a widget, null when it is none.
    static OpaqueControlRef* of(const QWidget* widget);
    /// The nearest control above a widget; null when there is none up to its window.
    static OpaqueControlRef* above(const QWidget* widget);

    OpaqueEventTargetRef* nextTarget() const override;
    OSStatus handleByDefault(EventRef event) override;

    /// Tells the handlers that the user pressed or changed the control.
    void userHit();
    /// Tells the handlers that the user is about to put text into the field; TextSink::takeText follows when they
    /// agree, and then the validation routine.
    void userText(const QString& text);
    /// The user moves the value by this part: its action procedure does it, or the control itself when it has none.
    void userSteps(ControlPartCode part);

    QWidget* const widget;
    const ControlKind kind;
    const ControlOrigin origin;
    ControlID id{0, 0};
    OSType secondSignature = 0;
    OSType command = 0;
    bool active = true;
    ControlActionUPP action = nullptr;  // arrows and sliders
    std::map<std::pair<OSType, OSType>, QByteArray> properties;
    ControlEditTextValidationUPP validation = nullptr;
    MenuHold menu;                      // pop-ups and bevel buttons
    std::function<void()> makeContent;  // empty when nothing waits
    // While there is an alert: its reason, and the help that the widget shows behind that.
    QString alert;
    ControlHelp help;
    // Custom views: the class, and the record that its construct handler made.
    const OpaqueHIObjectClassRef* viewClass = nullptr;
    void* viewRecord = nullptr;
    CGContextRef drawContext = nullptr;  // while the control is being drawn
};

/// Sends kEventControlDraw with a context over the painter. True when a handler drew.
bool drawControl(ControlRef control, QPainter& painter);

// ---- Menus

struct MenuItem {
    QString text;
    OSType command = 0;
    MenuRefCon refCon = 0;
    bool enabled = true;
    bool separator = false;
    bool checked = false;
    MenuHold submenu = nullptr;
    QString help = {};
    bool alert = false;
};

/// A menu is the model of its pop-up, or the source of its button's menu: the items exist once.
struct OpaqueMenuRef final : QAbstractListModel, OpaqueEventTargetRef {
    /// A submenu has no control of its own.
    explicit OpaqueMenuRef(OpaqueControlRef* control) : control_(control) {}
    ~OpaqueMenuRef() override;

    OpaqueEventTargetRef* nextTarget() const override { return owner(); }
    /// The control that shows the menu, be it as a submenu; null for a menu that belongs to no control yet.
    OpaqueControlRef* owner() const { return parent_ != nullptr ? parent_->owner() : control_; }
    /// The menu that this one is a submenu of, null for none.
    OpaqueMenuRef* parentMenu() const { return parent_; }
    void setParentMenu(OpaqueMenuRef* menu) { parent_ = menu; }

    int rowCount(const QModelIndex& parent) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    /// Takes over the items that the nib gave the owner's widget and becomes its menu.
    void attach();
    /// The menu is about to open.
    void aboutToShow();
    /// Whether the item carries the sign of an alert: its own, or its pop-up's, which shows it.
    bool hasAlert(std::size_t row) const;

    /// Puts the item before the row.
    void insert(int row, MenuItem item);
    void remove(int first, int count);
    void changed(int row);
    /// The user picked an item (from 1): sends the item's command, if it has one, and then the owner's hit.
    void userPicked(MenuItemIndex item);

    std::vector<MenuItem> items;
    MenuRefCon refCon = 0;
    MenuAttributes attributes = 0;
    int references = 1;

private:
    OpaqueControlRef* const control_;
    OpaqueMenuRef* parent_ = nullptr;
};

// ---- Windows

struct OpaqueWindowRef final : QObject, OpaqueEventTargetRef {
    explicit OpaqueWindowRef(QWidget* ownWidget);
    ~OpaqueWindowRef() override;

    static OpaqueWindowRef* of(const QWidget* widget);

    OpaqueEventTargetRef* nextTarget() const override;
    OSStatus handleByDefault(EventRef event) override;
    /// The user closes the window: presses its cancel button, or sends 'not!'.
    void userCloses();
    /// The user asks for what no control stands for.
    OSStatus sendCommand(OSType command);

    QWidget* const widget;
    std::vector<QEventLoop*> modalLoops;  // innermost last
};

/// All windows that live, the one that was in front last at the end.
std::vector<OpaqueWindowRef*>& livingWindows();

// ---- State of the process

struct ToolboxState {
    bool scripted = false;
    UInt32 beeps = 0;
};
ToolboxState& toolboxState();

// ---- Text

QString toQString(CFStringRef string);
CFRef<CFStringRef> toCFString(const QString& string);
/// The code of four characters; 0 for a text of another length.
OSType codeOf(const QString& text);
QString toFilePath(CFURLRef url);
