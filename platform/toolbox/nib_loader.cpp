// From a Designer file to a window with controls.

#include "platform/toolbox/nib_loader.h"

#include "platform/foundation/CFBundle.h"
#include "platform/toolbox/clock.h"
#include "platform/toolbox/data_browser_view.h"
#include "platform/toolbox/label_name.h"
#include "platform/toolbox/little_arrows.h"
#include "platform/toolbox/nib_builder.h"
#include "platform/toolbox/nib_keys.h"
#include "platform/toolbox/objects.h"
#include "platform/toolbox/text_scale.h"
#include "platform/toolbox/view_classes.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QEvent>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <algorithm>
#include <array>
#include <optional>

namespace {

// kind, name
struct KindName {
    ControlKind kind;
    const char* name;
};
constexpr std::array kKindNames = {
    KindName{ControlKind::userPane, "userPane"},
    KindName{ControlKind::customView, "customView"},
    KindName{ControlKind::pushButton, "pushButton"},
    KindName{ControlKind::bevelButton, "bevelButton"},
    KindName{ControlKind::popUp, "popUp"},
    KindName{ControlKind::checkBox, "checkBox"},
    KindName{ControlKind::radioGroup, "radioGroup"},
    KindName{ControlKind::radioButton, "radioButton"},
    KindName{ControlKind::editText, "editText"},
    KindName{ControlKind::passwordText, "passwordText"},
    KindName{ControlKind::staticText, "staticText"},
    KindName{ControlKind::textView, "textView"},
    KindName{ControlKind::littleArrows, "littleArrows"},
    KindName{ControlKind::slider, "slider"},
    KindName{ControlKind::tabs, "tabs"},
    KindName{ControlKind::groupBox, "groupBox"},
    KindName{ControlKind::list, "list"},
    KindName{ControlKind::clock, "clock"},
    KindName{ControlKind::picture, "picture"},
    KindName{ControlKind::progressBar, "progressBar"},
};
static_assert(kKindNames.size() == static_cast<std::size_t>(ControlKind::progressBar) + 1);

OSType codeIn(const NibElement& element, const char* property) {
    const QVariant* const code = element.find(property);
    return code == nullptr ? 0 : codeOf(code->toString());
}

ControlKind kindOf(const QWidget* widget, const NibElement& element) {
    if (const QVariant* const named = element.find("kind")) {
        const QByteArray name = named->toString().toLatin1();
        for (const KindName& row : kKindNames) {
            if (name == row.name) {
                return row.kind;
            }
        }
    }
    return element.find("viewClass") != nullptr ? ControlKind::customView : kindOfClass(widget);
}

/// Hits a static text when the user clicks it.
class TextClick final : public QObject {
public:
    explicit TextClick(OpaqueControlRef* control) : QObject(control), control_(control) {}

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonRelease) {
            control_->userHit();
        }
        return false;
    }

private:
    OpaqueControlRef* const control_;
};

/// Makes the widget a control when the nib says that it is one.
void makeControl(QWidget* widget, const NibElement& element) {
    const QVariant* const number = element.find("number");
    const QVariant* const viewClass = element.find("viewClass");
    if (element.find("signature") == nullptr && element.find("command") == nullptr && viewClass == nullptr) {
        return;
    }
    auto* control = new OpaqueControlRef(widget, kindOf(widget, element));
    control->id = {codeIn(element, "signature"), number == nullptr ? 0 : number->toInt()};
    control->secondSignature = codeIn(element, "signature2");
    control->command = codeIn(element, "command");
    if (control->kind == ControlKind::staticText && control->command != 0) {
        widget->installEventFilter(new TextClick(control));
    }
    if (control->kind == ControlKind::customView) {
        attachViewClass(control, viewClass == nullptr ? QString() : viewClass->toString());
    }
    connectKeys(control);
}

/// Return presses the button that has the focus, else 'ok  '; buttons take the focus by Tab only, so that a click on
/// one does not make a field give up what is being typed.
void prepareButton(QPushButton* button, const NibElement& element) {
    button->setAutoDefault(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setDefault(codeIn(element, "command") == FourCharCode("ok  "));
}

/// The text of a key in a bundle's strings table.
QString textOf(CFBundleRef bundle, CFStringRef table, const QString& key) {
    return toQString(
        CFRef<CFStringRef>::adopt(CFBundleCopyLocalizedString(bundle, toCFString(key).get(), nullptr, table)).get());
}

/// A label stands at its side of the window, whichever way its own text runs: a document's name is often Latin.
void alignLabels(const QWidget* window) {
    if (!window->isRightToLeft()) {
        return;
    }
    for (QLabel* label : window->findChildren<QLabel*>()) {
        label->setAlignment(QStyle::visualAlignment(Qt::RightToLeft, label->alignment()) | Qt::AlignAbsolute);
    }
}

/// A list is called by the label that leads to it, as Qt has it for fields and pop-ups.
void nameByLabels(const QWidget* window) {
    for (const QLabel* label : window->findChildren<QLabel*>()) {
        if (auto* list = qobject_cast<QAbstractItemView*>(label->buddy());
            list != nullptr && list->accessibleName().isEmpty()) {
            list->setAccessibleName(nameOfLabel(label->text()));
        }
    }
}

/// The window's tree: compiled by the build, else from its Designer file. `path` has neither's ending; the reason
/// begins with that of the file.
std::optional<NibWindowTree> readNibWindow(const QString& path, QString* reason) {
    std::optional<NibWindowTree> tree;
    QFile file(path + QStringLiteral(".window"));
    if (file.open(QIODevice::ReadOnly)) {
        tree = readCompiledWindow(file.readAll(), reason);
    } else {
        file.setFileName(path + QStringLiteral(".ui"));
        if (file.open(QIODevice::ReadOnly)) {
            tree = readDesignerFile(&file, reason);
        } else {
            *reason = file.errorString();
        }
    }
    reason->prepend(file.fileName() + QStringLiteral(": "));
    return tree;
}

}  // namespace

ControlKind kindOfClass(const QWidget* widget) {
    if (qobject_cast<const QPushButton*>(widget) != nullptr) {
        return ControlKind::pushButton;
    }
    if (qobject_cast<const QToolButton*>(widget) != nullptr) {
        return ControlKind::bevelButton;
    }
    if (qobject_cast<const QComboBox*>(widget) != nullptr) {
        return ControlKind::popUp;
    }
    if (qobject_cast<const QCheckBox*>(widget) != nullptr) {
        return ControlKind::checkBox;
    }
    if (qobject_cast<const QRadioButton*>(widget) != nullptr) {
        return ControlKind::radioButton;
    }
    if (const auto* field = qobject_cast<const QLineEdit*>(widget)) {
        return field->echoMode() == QLineEdit::Normal ? ControlKind::editText : ControlKind::passwordText;
    }
    if (const auto* area = qobject_cast<const QPlainTextEdit*>(widget)) {
        return area->isReadOnly() ? ControlKind::textView : ControlKind::editText;
    }
    if (qobject_cast<const QLabel*>(widget) != nullptr) {
        return ControlKind::staticText;
    }
    if (qobject_cast<const QSpinBox*>(widget) != nullptr || dynamic_cast<const LittleArrows*>(widget) != nullptr) {
        return ControlKind::littleArrows;
    }
    if (qobject_cast<const QSlider*>(widget) != nullptr) {
        return ControlKind::slider;
    }
    if (qobject_cast<const QProgressBar*>(widget) != nullptr) {
        return ControlKind::progressBar;
    }
    if (qobject_cast<const QTabBar*>(widget) != nullptr || qobject_cast<const QTabWidget*>(widget) != nullptr) {
        return ControlKind::tabs;
    }
    if (qobject_cast<const QGroupBox*>(widget) != nullptr) {
        return ControlKind::groupBox;
    }
    if (qobject_cast<const QAbstractItemView*>(widget) != nullptr) {
        return ControlKind::list;
    }
    if (qobject_cast<const QDateTimeEdit*>(widget) != nullptr) {
        return ControlKind::clock;
    }
    return ControlKind::userPane;
}

const char* ControlKindName(ControlKind kind) {
    return kKindNames[static_cast<std::size_t>(kind)].name;
}

QWidget* loadNibWindow(const QString& path, CFBundleRef bundle, const QString& table, QString* reason) {
    const std::optional<NibWindowTree> tree = readNibWindow(path, reason);
    if (!tree) {
        return nullptr;
    }
    const CFRef<CFStringRef> tableName = toCFString(table);
    QWidget* const window =
        buildNibWindow(*tree, {[&](const QString& key) { return textOf(bundle, tableName.get(), key); },
                               [](QWidget* widget, const NibElement& element) {
                                   if (widget->isWindow()) {
                                       return;
                                   }
                                   if (auto* button = qobject_cast<QPushButton*>(widget)) {
                                       prepareButton(button, element);
                                   } else if (auto* browser = dynamic_cast<DataBrowserView*>(widget)) {
                                       browser->readColumns();
                                   } else if (auto* clock = qobject_cast<QDateTimeEdit*>(widget)) {
                                       prepareClock(clock);
                                   }
                                   makeControl(widget, element);
                               }});
    followTextSize(window);
    nameByLabels(window);
    alignLabels(window);
    connectKeys(new OpaqueControlRef(window, ControlKind::userPane));
    return window;
}
