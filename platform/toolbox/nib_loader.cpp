// From a Designer file to a window with controls.

#include "platform/toolbox/nib_loader.h"

#include "platform/foundation/CFBundle.h"
#include "platform/toolbox/clock.h"
#include "platform/toolbox/data_browser_view.h"
#include "platform/toolbox/edit_field.h"
#include "platform/toolbox/little_arrows.h"
#include "platform/toolbox/nib_keys.h"
#include "platform/toolbox/nib_window.h"
#include "platform/toolbox/number_box.h"
#include "platform/toolbox/objects.h"
#include "platform/toolbox/pop_up_button.h"
#include "platform/toolbox/text_area.h"
#include "platform/toolbox/view_classes.h"
#include "platform/toolbox/view_widget.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDateTimeEdit>
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
#include <QUiLoader>
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

/// Makes our own widgets where the toolbox needs more than Qt's.
class NibLoader final : public QUiLoader {
public:
    /// One loader serves all nibs. A new one loads every Designer plug-in that it finds in the library paths, and with
    /// one of those comes Qt Quick, which takes longer than our windows; they need none, so it finds none.
    static NibLoader& shared() {
        static NibLoader* loader = [] {
            const QStringList paths = QCoreApplication::libraryPaths();
            QCoreApplication::setLibraryPaths({});
            auto* made = new NibLoader;
            QCoreApplication::setLibraryPaths(paths);
            return made;
        }();
        return *loader;
    }

    QWidget* createWidget(const QString& className, QWidget* parent, const QString& name) override {
        QWidget* widget = nullptr;
        if (parent == nullptr) {
            widget = new NibWindow;
        } else if (className == QLatin1String("QWidget")) {
            widget = new ViewWidget(parent);
        } else if (className == QLatin1String("QLineEdit")) {
            widget = new EditField(parent);
        } else if (className == QLatin1String("QPlainTextEdit")) {
            widget = new TextArea(parent);
        } else if (className == QLatin1String("QComboBox")) {
            widget = new PopUpButton(parent);
        } else if (className == QLatin1String("QSpinBox")) {
            widget = new NumberBox(parent);
        } else if (className == QLatin1String("QTreeView")) {
            widget = new DataBrowserView(parent);
        } else if (className == QLatin1String("QTabBar")) {
            widget = new QTabBar(parent);
        } else if (className == QLatin1String("LittleArrows")) {
            widget = new LittleArrows(parent);
        } else {
            return QUiLoader::createWidget(className, parent, name);
        }
        widget->setObjectName(name);
        return widget;
    }

private:
    NibLoader() { setTranslationEnabled(false); }
};

OSType codeOf(const QVariant& property) {
    return codeOf(property.toString());
}

ControlKind kindOf(const QWidget* widget) {
    const QByteArray named = widget->property("kind").toString().toLatin1();
    for (const KindName& row : kKindNames) {
        if (named == row.name) {
            return row.kind;
        }
    }
    return widget->property("viewClass").isValid() ? ControlKind::customView : kindOfClass(widget);
}

/// Makes the widget a control when the nib says that it is one.
void makeControl(QWidget* widget) {
    // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): a child that Qt lists is there, whatever casts say of it
    const bool isControl = widget->property("signature").isValid() || widget->property("command").isValid() ||
                           widget->property("viewClass").isValid();
    if (!isControl) {
        return;
    }
    auto* control = new OpaqueControlRef(widget, kindOf(widget));
    control->id = {codeOf(widget->property("signature")), widget->property("number").toInt()};
    control->secondSignature = codeOf(widget->property("signature2"));
    control->command = codeOf(widget->property("command"));
    if (control->kind == ControlKind::customView) {
        attachViewClass(control, widget->property("viewClass").toString());
    }
    connectKeys(control);
}

/// Return presses the button that has the focus, else 'ok  '; buttons take the focus by Tab only, so that a click on
/// one does not make a field give up what is being typed.
void prepareButton(QPushButton* button) {
    button->setAutoDefault(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setDefault(codeOf(button->property("command")) == FourCharCode("ok  "));
}

/// Replaces the keys in a widget's texts by the texts of the strings table.
class Localizer {
public:
    Localizer(CFBundleRef bundle, const QString& table) : bundle_(bundle), table_(toCFString(table)) {}

    void localize(QWidget* widget) const {
        static constexpr std::array kProperties = {
            "text",      "title",          "windowTitle",           "toolTip",
            "whatsThis", "accessibleName", "accessibleDescription", "placeholderText"};
        for (const char* name : kProperties) {
            const QString key = widget->property(name).toString();
            if (!key.isEmpty()) {
                widget->setProperty(name, text(key));
            }
        }
        if (QStringList headers = widget->property("headers").toStringList(); !headers.isEmpty()) {
            std::ranges::transform(headers, headers.begin(), [this](const QString& key) { return text(key); });
            widget->setProperty("headers", headers);
        }
        if (auto* popUp = qobject_cast<QComboBox*>(widget)) {
            for (int i = 0; i < popUp->count(); ++i) {
                popUp->setItemText(i, text(popUp->itemText(i)));
            }
        }
        if (auto* tabs = qobject_cast<QTabWidget*>(widget)) {
            for (int i = 0; i < tabs->count(); ++i) {
                tabs->setTabText(i, text(tabs->tabText(i)));
            }
        }
    }

private:
    QString text(const QString& key) const {
        return toQString(CFRef<CFStringRef>::adopt(
                             CFBundleCopyLocalizedString(bundle_, toCFString(key).get(), nullptr, table_.get()))
                             .get());
    }

    CFBundleRef bundle_;
    CFRef<CFStringRef> table_;
};

/// A list is called by the label that leads to it, as Qt has it for fields and pop-ups.
void nameByLabels(const QWidget* window) {
    for (const QLabel* label : window->findChildren<QLabel*>()) {
        if (auto* list = qobject_cast<QAbstractItemView*>(label->buddy());
            list != nullptr && list->accessibleName().isEmpty()) {
            QString name = label->text();
            name.remove(u'&');
            name.remove(u':');
            list->setAccessibleName(name);
        }
    }
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
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *reason = file.errorString();
        return nullptr;
    }
    NibLoader& loader = NibLoader::shared();
    QWidget* window = loader.load(&file);
    if (window == nullptr) {
        *reason = loader.errorString();
        return nullptr;
    }
    const Localizer localizer(bundle, table);
    localizer.localize(window);
    for (QWidget* widget : window->findChildren<QWidget*>()) {
        localizer.localize(widget);
        if (auto* button = qobject_cast<QPushButton*>(widget)) {
            prepareButton(button);
        } else if (auto* browser = dynamic_cast<DataBrowserView*>(widget)) {
            browser->readColumns();
        } else if (auto* clock = qobject_cast<QDateTimeEdit*>(widget)) {
            prepareClock(clock);
        }
        makeControl(widget);
    }
    nameByLabels(window);
    connectKeys(new OpaqueControlRef(window, ControlKind::userPane));
    return window;
}
