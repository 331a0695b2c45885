// The texts and other data of controls.

#include "platform/foundation/CFString.h"
#include "platform/toolbox/alerts.h"
#include "platform/toolbox/clock.h"
#include "platform/toolbox/little_arrows.h"
#include "platform/toolbox/objects.h"
#include "platform/toolbox/pictures.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QToolButton>
#include <QToolTip>
#include <cstring>
#include <optional>

namespace {

constexpr int kPictureButtonSize = 16;

template <typename T>
std::optional<T> valueOf(ByteCount size, const void* data) {
    if (data == nullptr || size != sizeof(T)) {
        return std::nullopt;
    }
    T value;
    std::memcpy(&value, data, sizeof value);
    return value;
}

template <typename T>
OSStatus giveOut(const T& value, ByteCount bufferSize, void* buffer, ByteCount* actualSize) {
    if (actualSize != nullptr) {
        *actualSize = sizeof value;
    }
    if (buffer == nullptr) {
        return noErr;
    }
    if (bufferSize < sizeof value) {
        return paramErr;
    }
    std::memcpy(buffer, &value, sizeof value);
    return noErr;
}

/// The text that a user reads or edits in the widget.
std::optional<QString> textOf(const QWidget* widget) {
    if (const auto* field = qobject_cast<const QLineEdit*>(widget)) {
        return field->text();
    }
    if (const auto* area = qobject_cast<const QPlainTextEdit*>(widget)) {
        return area->toPlainText();
    }
    if (const auto* label = qobject_cast<const QLabel*>(widget)) {
        return label->text();
    }
    if (const auto* number = qobject_cast<const QAbstractSpinBox*>(widget)) {  // and clocks
        return number->text();
    }
    if (const auto* popUp = qobject_cast<const QComboBox*>(widget)) {
        return popUp->currentText();
    }
    return std::nullopt;
}

bool setText(QWidget* widget, const QString& text) {
    if (auto* field = qobject_cast<QLineEdit*>(widget)) {
        field->setText(text);
    } else if (auto* area = qobject_cast<QPlainTextEdit*>(widget)) {
        area->setPlainText(text);
    } else if (auto* label = qobject_cast<QLabel*>(widget)) {
        label->setText(text);
    } else {
        return false;
    }
    return true;
}

OSStatus setTextViewData(QPlainTextEdit* area, OSType tag, ByteCount size, const void* data) {
    if (tag == kControlTextFontSizeTag) {
        const auto points = valueOf<SInt16>(size, data);
        if (!points || *points <= 0) {
            return paramErr;
        }
        QFont font = area->font();
        font.setPointSize(*points);
        area->setFont(font);
        return noErr;
    }
    const auto flag = valueOf<Boolean>(size, data);
    if (!flag) {
        return paramErr;
    }
    if (tag == kControlTextReadOnlyTag) {
        area->setReadOnly(*flag);
    } else {
        area->setLineWrapMode(*flag ? QPlainTextEdit::WidgetWidth : QPlainTextEdit::NoWrap);
    }
    return noErr;
}

OSStatus setPicture(QWidget* widget, CGImageRef image) {
    if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
        button->setIcon(iconOf(image));
        button->setIconSize(QSize(kPictureButtonSize, kPictureButtonSize));
        return noErr;
    }
    return errDataNotSupported;
}

OSStatus setTab(QTabBar* tabs, ControlPartCode tab, ByteCount size, const void* data) {
    const auto info = valueOf<ControlTabInfoRecV1>(size, data);
    if (!info || info->version != kControlTabInfoVersionOne || tab < 1 || tab > tabs->count()) {
        return paramErr;
    }
    tabs->setTabText(tab - 1, toQString(info->name).replace(u'&', QLatin1String("&&")));
    return noErr;
}

QString withoutMnemonic(QString text) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'&') {
            text.remove(i, 1);  // of "&&" the second one stays
        }
    }
    return text;
}

}  // namespace

OSStatus SetControlTitleWithCFString(ControlRef control, CFStringRef title) {
    if (control == nullptr) {
        return controlHandleInvalidErr;
    }
    const QString text = toQString(title);
    if (auto* button = qobject_cast<QAbstractButton*>(control->widget)) {
        button->setText(text);
    } else if (auto* group = qobject_cast<QGroupBox*>(control->widget)) {
        group->setTitle(text);
    } else if (control->kind == ControlKind::customView) {
        control->widget->setAccessibleName(text);
    } else if (!setText(control->widget, text)) {
        return errDataNotSupported;
    }
    return noErr;
}

OSStatus HMSetControlHelpContent(ControlRef control, CFStringRef content) {
    if (control == nullptr) {
        return controlHandleInvalidErr;
    }
    const QString text = toQString(content);
    setHelp(*control, {text, text});
    return noErr;
}

OSStatus HMDisplayTag(ControlRef control, CFStringRef content) {
    if (control == nullptr) {
        return controlHandleInvalidErr;
    }
    // Qt takes a tag away when the focus moves, and a focus that moves is what tells of wrong input.
    QWidget* widget = control->widget;
    QMetaObject::invokeMethod(
        widget,
        [widget, text = toQString(content)] {
            if (widget->isVisible()) {
                // Above the control: below it is where the user goes on.
                QToolTip::showText(widget->mapToGlobal(QPoint(0, -2 * widget->height())), text, widget);
            }
        },
        Qt::QueuedConnection);
    return noErr;
}

OSStatus CopyControlTitleAsCFString(ControlRef control, CFStringRef* title) {
    if (control == nullptr || title == nullptr) {
        return controlHandleInvalidErr;
    }
    QString text;
    if (const auto* button = qobject_cast<const QAbstractButton*>(control->widget)) {
        text = withoutMnemonic(button->text());
    } else if (const auto* group = qobject_cast<const QGroupBox*>(control->widget)) {
        text = withoutMnemonic(group->title());
    } else if (control->kind == ControlKind::customView) {
        text = control->widget->accessibleName();
    } else {
        text = textOf(control->widget).value_or(QString());
    }
    *title = toCFString(text).leak();
    return noErr;
}

OSStatus SetControlData(ControlRef control, ControlPartCode part, OSType tag, ByteCount size, const void* data) {
    if (control == nullptr) {
        return controlHandleInvalidErr;
    }
    switch (tag) {
        case kControlEditTextCFStringTag: {
            const auto text = valueOf<CFStringRef>(size, data);
            if (!text) {
                return paramErr;
            }
            return setText(control->widget, toQString(*text)) ? noErr : errDataNotSupported;
        }
        case kControlEditTextSelectionTag: {
            const auto selection = valueOf<ControlEditTextSelectionRec>(size, data);
            auto* field = dynamic_cast<TextSink*>(control->widget);
            if (!selection || field == nullptr) {
                return selection ? errDataNotSupported : paramErr;
            }
            field->setSelection(*selection);
            return noErr;
        }
        case kControlEditTextValidationProcTag: {
            const auto routine = valueOf<ControlEditTextValidationUPP>(size, data);
            if (!routine) {
                return paramErr;
            }
            control->validation = *routine;
            return noErr;
        }
        case kControlContentTag: {
            const auto image = valueOf<CGImageRef>(size, data);
            return image ? setPicture(control->widget, *image) : paramErr;
        }
        case kControlLittleArrowsIncrementValueTag: {
            const auto increment = valueOf<SInt32>(size, data);
            auto* arrows = dynamic_cast<LittleArrows*>(control->widget);
            if (!increment || *increment <= 0 || arrows == nullptr) {
                return arrows != nullptr ? paramErr : errDataNotSupported;
            }
            arrows->setSingleStep(*increment);
            return noErr;
        }
        case kControlClockLongDateTag: {
            const auto date = valueOf<LongDateRec>(size, data);
            auto* clock = qobject_cast<QDateTimeEdit*>(control->widget);
            if (clock == nullptr) {
                return errDataNotSupported;
            }
            return date && setClockDate(clock, *date) ? noErr : paramErr;
        }
        case kControlTabInfoTag: {
            auto* tabs = qobject_cast<QTabBar*>(control->widget);
            return tabs != nullptr ? setTab(tabs, part, size, data) : errDataNotSupported;
        }
        case kControlTextReadOnlyTag:
        case kControlTextWordWrapTag:
        case kControlTextFontSizeTag: {
            auto* area = qobject_cast<QPlainTextEdit*>(control->widget);
            return area != nullptr ? setTextViewData(area, tag, size, data) : errDataNotSupported;
        }
        default:
            return errDataNotSupported;
    }
}

OSStatus GetControlData(ControlRef control, ControlPartCode part, OSType tag, ByteCount bufferSize, void* buffer,
                        ByteCount* actualSize) {
    if (control == nullptr) {
        return controlHandleInvalidErr;
    }
    if (tag == kControlEditTextCFStringTag) {
        const std::optional<QString> text = textOf(control->widget);
        if (!text) {
            return errDataNotSupported;
        }
        CFRef<CFStringRef> copy = toCFString(*text);
        const OSStatus status = giveOut(copy.get(), bufferSize, buffer, actualSize);
        if (status == noErr && buffer != nullptr) {
            static_cast<void>(copy.leak());
        }
        return status;
    }
    if (tag == kControlEditTextSelectionTag) {
        const auto* field = dynamic_cast<const TextSink*>(control->widget);
        return field != nullptr ? giveOut(field->selection(), bufferSize, buffer, actualSize) : errDataNotSupported;
    }
    if (tag == kControlClockLongDateTag) {
        const auto* clock = qobject_cast<const QDateTimeEdit*>(control->widget);
        return clock != nullptr ? giveOut(clockDate(*clock), bufferSize, buffer, actualSize) : errDataNotSupported;
    }
    if (tag == kControlLittleArrowsIncrementValueTag) {
        const auto* arrows = dynamic_cast<const LittleArrows*>(control->widget);
        return arrows != nullptr ? giveOut(SInt32{arrows->singleStep()}, bufferSize, buffer, actualSize)
                                 : errDataNotSupported;
    }
    if (const auto* tabs = qobject_cast<const QTabBar*>(control->widget);
        tabs != nullptr && tag == kControlTabInfoTag) {
        if (part < 1 || part > tabs->count()) {
            return paramErr;
        }
        auto name = toCFString(withoutMnemonic(tabs->tabText(part - 1)));
        const OSStatus status =
            giveOut(ControlTabInfoRecV1{kControlTabInfoVersionOne, 0, name.get()}, bufferSize, buffer, actualSize);
        if (status == noErr && buffer != nullptr) {
            static_cast<void>(name.leak());
        }
        return status;
    }
    return errDataNotSupported;
}

void SetControlAction(ControlRef control, ControlActionUPP action) {
    if (control != nullptr) {
        control->action = action;
    }
}

OSStatus HIViewSimulateClick(ControlRef view, ControlPartCode part, UInt32, ControlPartCode* clicked) {
    if (view == nullptr) {
        return controlHandleInvalidErr;
    }
    const bool steps = part == kControlUpButtonPart || part == kControlDownButtonPart;
    if (!steps || dynamic_cast<LittleArrows*>(view->widget) == nullptr) {
        return paramErr;
    }
    if (clicked != nullptr) {
        *clicked = view->widget->isEnabled() ? part : ControlPartCode{0};
    }
    if (view->widget->isEnabled()) {
        view->userSteps(part);
    }
    return noErr;
}

MenuRef GetControlPopupMenuHandle(ControlRef control) {
    return control != nullptr ? control->menu.get() : nullptr;
}

OSStatus GetBevelButtonMenuHandle(ControlRef button, MenuRef* menu) {
    if (button == nullptr || button->kind != ControlKind::bevelButton || !button->menu) {
        return errDataNotSupported;
    }
    *menu = button->menu.get();
    return noErr;
}
