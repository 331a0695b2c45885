// Controls as targets of events, and the texts that cross into Qt.

#include "platform/toolbox/objects.h"

#include "platform/foundation/CFString.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/view_classes.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QFile>
#include <QHash>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <algorithm>

namespace {

QHash<const QObject*, OpaqueControlRef*>& controlsByWidget() {
    static QHash<const QObject*, OpaqueControlRef*> controls;
    return controls;
}

/// Connects the signals that a widget sends when its user, not the program, changes it.
void connectUserActions(OpaqueControlRef* control) {
    QWidget* widget = control->widget;
    const auto hit = [control] { control->userHit(); };
    switch (control->kind) {
        case ControlKind::pushButton:
        case ControlKind::checkBox:
        case ControlKind::radioButton:
            QObject::connect(qobject_cast<QAbstractButton*>(widget), &QAbstractButton::clicked, control, hit);
            break;
        case ControlKind::radioGroup:
            for (QRadioButton* button : widget->findChildren<QRadioButton*>(Qt::FindDirectChildrenOnly)) {
                QObject::connect(button, &QRadioButton::clicked, control, hit);
            }
            break;
        case ControlKind::popUp:
        case ControlKind::bevelButton:
            control->menu.reset(new OpaqueMenuRef(control));
            control->menu->attach();
            break;
        case ControlKind::slider:
            QObject::connect(qobject_cast<QSlider*>(widget), &QSlider::valueChanged, control,
                             [control] { control->userSteps(kControlIndicatorPart); });
            break;
        case ControlKind::littleArrows:
            if (auto* spinBox = qobject_cast<QSpinBox*>(widget)) {
                QObject::connect(spinBox, &QSpinBox::valueChanged, control, hit);
            } else {
                // Not by a press: an assistive technology gave them a value.
                QObject::connect(qobject_cast<QAbstractSlider*>(widget), &QAbstractSlider::valueChanged, control,
                                 [control] { control->userSteps(kControlIndicatorPart); });
            }
            break;
        case ControlKind::tabs:
            if (auto* pages = qobject_cast<QTabWidget*>(widget)) {
                QObject::connect(pages, &QTabWidget::currentChanged, control, hit);
            } else {
                QObject::connect(qobject_cast<QTabBar*>(widget), &QTabBar::currentChanged, control, hit);
            }
            break;
        case ControlKind::clock:
            QObject::connect(qobject_cast<QDateTimeEdit*>(widget), &QDateTimeEdit::dateTimeChanged, control, hit);
            break;
        default:
            break;
    }
}

}  // namespace

OpaqueControlRef::OpaqueControlRef(QWidget* ownWidget, ControlKind ownKind, ControlOrigin from)
    : QObject(ownWidget), widget(ownWidget), kind(ownKind), origin(from) {
    controlsByWidget().insert(widget, this);
    if (origin == ControlOrigin::own) {
        connectUserActions(this);
    }
}

OpaqueControlRef::~OpaqueControlRef() {
    detachViewClass(this);
    controlsByWidget().remove(widget);
}

OpaqueControlRef* OpaqueControlRef::of(const QWidget* widget) {
    return controlsByWidget().value(widget, nullptr);
}

OpaqueControlRef* OpaqueControlRef::above(const QWidget* widget) {
    while (widget != nullptr && !widget->isWindow()) {
        widget = widget->parentWidget();
        if (OpaqueControlRef* control = of(widget)) {
            return control;
        }
    }
    return nullptr;
}

OpaqueEventTargetRef* OpaqueControlRef::nextTarget() const {
    if (OpaqueControlRef* parent = above(widget)) {
        return parent;
    }
    if (OpaqueWindowRef* window = OpaqueWindowRef::of(widget->window())) {
        return window;
    }
    return GetApplicationEventTarget();
}

OSStatus OpaqueControlRef::handleByDefault(EventRef event) {
    OpaqueWindowRef* window = OpaqueWindowRef::of(widget->window());
    if (viewClass != nullptr) {
        const OSStatus status = callViewClass(this, event);
        if (status != eventNotHandledErr) {
            return status;
        }
    }
    const OSType eventClass = GetEventClass(event);
    const UInt32 eventKind = GetEventKind(event);
    if (eventClass == kEventClassControl && eventKind == kEventControlHit && command != 0) {
        return ScopedEvent(kEventClassCommand, kEventCommandProcess)
            .with(kEventParamDirectObject, typeHICommand, HICommand{kHICommandFromControl, command, nullptr, 0, this})
            .sendTo(this);
    }
    if (eventClass == kEventClassTextInput && eventKind == kEventTextInputUnicodeForKeyEvent) {
        if (auto* field = dynamic_cast<TextSink*>(widget)) {
            field->takeText(eventText(event, kEventParamTextInputSendText));
            if (const ControlEditTextValidationUPP validate = validation) {
                validate(this);
            }
            return noErr;
        }
    }
    return window != nullptr ? window->handleByDefault(event) : eventNotHandledErr;
}

void OpaqueControlRef::userHit() {
    ScopedEvent(kEventClassControl, kEventControlHit)
        .with(kEventParamDirectObject, typeControlRef, static_cast<ControlRef>(this))
        .sendTo(this);
}

void OpaqueControlRef::userSteps(ControlPartCode part) {
    const DispatchScope dispatching;  // an action may dispose of its window, which must outlive the mouse event
    const QPointer<OpaqueControlRef> alive(this);
    if (action != nullptr) {
        action(this, part);
    } else if (part != kControlIndicatorPart) {
        const auto* arrows = qobject_cast<QAbstractSlider*>(widget);
        const qint64 step = part == kControlUpButtonPart ? arrows->singleStep() : -qint64{arrows->singleStep()};
        SetControl32BitValue(this, static_cast<SInt32>(std::clamp<qint64>(arrows->value() + step, arrows->minimum(),
                                                                          arrows->maximum())));
    }
    if (alive && IsValidWindowPtr(OpaqueWindowRef::of(widget->window()))) {
        userHit();
    }
}

void OpaqueControlRef::userText(const QString& text) {
    ScopedEvent(kEventClassTextInput, kEventTextInputUnicodeForKeyEvent)
        .with(kEventParamDirectObject, typeControlRef, static_cast<ControlRef>(this))
        .withText(kEventParamTextInputSendText, text)
        .sendTo(this);
}

OSType codeOf(const QString& text) {
    const QByteArray letters = text.toLatin1();
    OSType code = 0;
    for (qsizetype i = 0; i < 4 && letters.size() == 4; ++i) {
        code = (code << 8) | static_cast<unsigned char>(letters[i]);
    }
    return code;
}

QString toQString(CFStringRef string) {
    QString text(static_cast<qsizetype>(CFStringGetLength(string)), Qt::Uninitialized);
    if (!text.isEmpty()) {
        CFStringGetCharacters(string, CFRangeMake(0, text.size()), reinterpret_cast<UniChar*>(text.data()));
    }
    return text;
}

CFRef<CFStringRef> toCFString(const QString& string) {
    return CFRef<CFStringRef>::adopt(CFStringCreateWithCharacters(
        kCFAllocatorDefault, reinterpret_cast<const UniChar*>(string.utf16()), string.size()));
}

QString toFilePath(CFURLRef url) {
    return QFile::decodeName(filePath(url).c_str());
}
