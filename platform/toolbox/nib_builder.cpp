#include "platform/toolbox/nib_builder.h"

#include "platform/toolbox/data_browser_view.h"
#include "platform/toolbox/edit_field.h"
#include "platform/toolbox/little_arrows.h"
#include "platform/toolbox/nib_window.h"
#include "platform/toolbox/number_box.h"
#include "platform/toolbox/pop_up_button.h"
#include "platform/toolbox/text_area.h"
#include "platform/toolbox/view_widget.h"

#include <QCheckBox>
#include <QDateTimeEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QHash>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpacerItem>
#include <QTabBar>
#include <QTabWidget>
#include <QTimeEdit>
#include <QToolButton>
#include <algorithm>
#include <array>

namespace {

using MakeWidget = QWidget* (*)(QWidget*);

template <typename Widget>
QWidget* make(QWidget* parent) {
    return new Widget(parent);
}

/// Our own widgets where the toolbox needs more than Qt's.
struct WidgetClass {
    const char* name;
    MakeWidget make;
};
constexpr std::array kWidgetClasses = {
    WidgetClass{"QLabel", make<QLabel>},
    WidgetClass{"QWidget", make<ViewWidget>},
    WidgetClass{"QPushButton", make<QPushButton>},
    WidgetClass{"QComboBox", make<PopUpButton>},
    WidgetClass{"QLineEdit", make<EditField>},
    WidgetClass{"QCheckBox", make<QCheckBox>},
    WidgetClass{"QRadioButton", make<QRadioButton>},
    WidgetClass{"QToolButton", make<QToolButton>},
    WidgetClass{"LittleArrows", make<LittleArrows>},
    WidgetClass{"QPlainTextEdit", make<TextArea>},
    WidgetClass{"QTreeView", make<DataBrowserView>},
    WidgetClass{"QSpinBox", make<NumberBox>},
    WidgetClass{"QSlider", make<QSlider>},
    WidgetClass{"QProgressBar", make<QProgressBar>},
    WidgetClass{"QDateTimeEdit", make<QDateTimeEdit>},
    WidgetClass{"QTimeEdit", make<QTimeEdit>},
    WidgetClass{"QFrame", make<QFrame>},
    WidgetClass{"QGroupBox", make<QGroupBox>},
    WidgetClass{"QTabBar", make<QTabBar>},
    WidgetClass{"QTabWidget", make<QTabWidget>},
};

/// A widget of a class that nobody knows is a pane.
QWidget* makeWidget(const QByteArray& className, QWidget* parent) {
    const auto* const known =
        std::ranges::find_if(kWidgetClasses, [&](const WidgetClass& each) { return className == each.name; });
    return known == kWidgetClasses.end() ? new ViewWidget(parent) : known->make(parent);
}

/// False where the pop-up goes by Qt's policy.
bool setWidth(QWidget* popUp, int policy) {
    auto* const button = dynamic_cast<PopUpButton*>(popUp);
    if (button == nullptr || policy == QComboBox::AdjustToContentsOnFirstShow) {
        return false;
    }
    if (policy == QComboBox::AdjustToContents) {
        button->fitItems();
    } else {
        button->holdWidth();
    }
    return true;
}

int intOf(const NibElement& element, const char* property, int otherwise) {
    const QVariant* const value = element.find(property);
    return value == nullptr ? otherwise : value->toInt();
}

QList<int> intsOf(const NibElement& element, const char* property) {
    QList<int> numbers;
    if (const QVariant* const list = element.find(property)) {
        for (const QString& each : list->toStringList()) {
            numbers.push_back(each.toInt());
        }
    }
    return numbers;
}

class Builder {
public:
    explicit Builder(const NibBuilding& building) : building_(building) {}

    QWidget* build(const NibWindowTree& tree) {
        auto* const window = new NibWindow;
        fill(window, tree.window);
        for (const auto& [label, field] : buddies_) {
            label->setBuddy(named_.value(field));
        }
        QWidget* before = nullptr;
        for (const QString& name : tree.tabOrder) {
            QWidget* const next = named_.value(name);
            if (before != nullptr && next != nullptr) {
                QWidget::setTabOrder(before, next);
            }
            before = next == nullptr ? before : next;
        }
        for (const auto& [widget, element] : made_) {
            building_.made(widget, *element);
        }
        return window;
    }

private:
    QWidget* widget(const NibElement& element, QWidget* parent) {
        QWidget* const made = makeWidget(element.className, parent);
        fill(made, element);
        return made;
    }

    void fill(QWidget* widget, const NibElement& element) {
        made_.emplace_back(widget, &element);  // parents come before their children
        widget->setObjectName(element.name);
        named_.insert(element.name, widget);
        for (const NibProperty& property : element.properties) {
            set(widget, property);
        }
        auto* const tabs = qobject_cast<QTabWidget*>(widget);
        for (const NibElement& child : element.children) {
            if (child.kind == NibElement::Kind::layout) {
                layout(child, widget, widget);
            } else if (QWidget* const made = this->widget(child, widget); tabs != nullptr) {
                const QVariant* const title = child.find("pageTitle");
                tabs->addTab(made, building_.text(title == nullptr ? QString() : title->toString()));
            }
        }
        if (auto* const popUp = qobject_cast<QComboBox*>(widget)) {
            for (const QString& item : element.items) {
                popUp->addItem(building_.text(item));
            }
        }
        if (const QVariant* const index = element.find("currentIndex")) {
            widget->setProperty("currentIndex", *index);
        }
    }

    void set(QWidget* widget, const NibProperty& property) {
        static constexpr std::array<const char*, 8> kElsewhere = {
            "signature", "signature2", "number", "command", "kind", "viewClass", "pageTitle", "currentIndex"};
        const QByteArray& name = property.name;
        if (std::ranges::any_of(kElsewhere, [&name](const char* each) { return name == each; })) {
            return;
        }
        if (name == "buddy") {
            if (auto* const label = qobject_cast<QLabel*>(widget)) {
                buddies_.emplace_back(label, property.value.toString());
            }
        } else if (name == "geometry") {
            const QRect place = property.value.toRect();
            widget->isWindow() ? widget->resize(place.size()) : widget->setGeometry(place);
        } else if (name == "sizePolicy") {
            const QVariantList parts = property.value.toList();
            QSizePolicy policy(static_cast<QSizePolicy::Policy>(parts.value(0).toInt()),
                               static_cast<QSizePolicy::Policy>(parts.value(1).toInt()));
            policy.setHorizontalStretch(parts.value(2).toInt());
            policy.setVerticalStretch(parts.value(3).toInt());
            widget->setSizePolicy(policy);
        } else if (name == "font") {
            QFont font = widget->font();
            font.setBold(property.value.toBool());
            widget->setFont(font);
        } else if (name != "sizeAdjustPolicy" || !setWidth(widget, property.value.toInt())) {
            widget->setProperty(name.constData(), property.isText ? texts(property.value) : property.value);
        }
    }

    QVariant texts(const QVariant& keys) const {
        if (keys.typeId() != QMetaType::QStringList) {
            const QString key = keys.toString();
            return key.isEmpty() ? key : building_.text(key);
        }
        QStringList list = keys.toStringList();
        std::ranges::transform(list, list.begin(), building_.text);
        return list;
    }

    /// `owner` is the widget that the children belong to, `parent` it or null, for a layout in another one.
    QLayout* layout(const NibElement& element, QWidget* owner, QWidget* parent) {
        if (element.className == "QGridLayout") {
            auto* const grid = new QGridLayout(parent);
            prepare(grid, element);
            grid->setHorizontalSpacing(intOf(element, "horizontalSpacing", grid->horizontalSpacing()));
            grid->setVerticalSpacing(intOf(element, "verticalSpacing", grid->verticalSpacing()));
            for (const NibElement& child : element.children) {
                addToGrid(grid, child, owner);
            }
            setStretches(grid, element);
            return grid;
        }
        auto* const box = element.className == "QHBoxLayout" ? static_cast<QBoxLayout*>(new QHBoxLayout(parent))
                                                             : new QVBoxLayout(parent);
        prepare(box, element);
        for (const NibElement& child : element.children) {
            addToBox(box, child, owner);
        }
        const QList<int> stretches = intsOf(element, "stretch");
        for (int i = 0; i < stretches.size(); ++i) {
            box->setStretch(i, stretches[i]);
        }
        return box;
    }

    static void prepare(QLayout* layout, const NibElement& element) {
        layout->setObjectName(element.name);
        const QMargins usual = layout->contentsMargins();
        layout->setContentsMargins(intOf(element, "leftMargin", usual.left()), intOf(element, "topMargin", usual.top()),
                                   intOf(element, "rightMargin", usual.right()),
                                   intOf(element, "bottomMargin", usual.bottom()));
        for (const char* const name : {"spacing", "sizeConstraint"}) {
            if (const QVariant* const value = element.find(name)) {
                layout->setProperty(name, *value);
            }
        }
    }

    static void setStretches(QGridLayout* grid, const NibElement& element) {
        struct Row {
            const char* property;
            void (QGridLayout::*set)(int, int);
        };
        static constexpr std::array kRows = {Row{"rowstretch", &QGridLayout::setRowStretch},
                                             Row{"columnstretch", &QGridLayout::setColumnStretch},
                                             Row{"rowminimumheight", &QGridLayout::setRowMinimumHeight},
                                             Row{"columnminimumwidth", &QGridLayout::setColumnMinimumWidth}};
        for (const Row& row : kRows) {
            const QList<int> numbers = intsOf(element, row.property);
            for (int i = 0; i < numbers.size(); ++i) {
                (grid->*row.set)(i, numbers[i]);
            }
        }
    }

    void addToGrid(QGridLayout* grid, const NibElement& child, QWidget* owner) {
        const NibPlace& at = child.place;
        const auto alignment = Qt::Alignment(QFlag(at.alignment));
        switch (child.kind) {
            case NibElement::Kind::widget:
                grid->addWidget(widget(child, owner), at.row, at.column, at.rowSpan, at.columnSpan, alignment);
                break;
            case NibElement::Kind::layout:
                grid->addLayout(layout(child, owner, nullptr), at.row, at.column, at.rowSpan, at.columnSpan, alignment);
                break;
            case NibElement::Kind::spacer:
                grid->addItem(spacer(child), at.row, at.column, at.rowSpan, at.columnSpan, alignment);
                break;
        }
    }

    void addToBox(QBoxLayout* box, const NibElement& child, QWidget* owner) {
        switch (child.kind) {
            case NibElement::Kind::widget:
                box->addWidget(widget(child, owner), 0, Qt::Alignment(QFlag(child.place.alignment)));
                break;
            case NibElement::Kind::layout:
                box->addLayout(layout(child, owner, nullptr));
                break;
            case NibElement::Kind::spacer:
                box->addItem(spacer(child));
                break;
        }
    }

    static QSpacerItem* spacer(const NibElement& element) {
        const QVariant* const hint = element.find("sizeHint");
        const QSize size = hint == nullptr ? QSize() : hint->toSize();
        const auto along = static_cast<QSizePolicy::Policy>(intOf(element, "sizeType", QSizePolicy::Expanding));
        const bool stands = intOf(element, "orientation", Qt::Horizontal) == Qt::Vertical;
        return new QSpacerItem(size.width(), size.height(), stands ? QSizePolicy::Minimum : along,
                               stands ? along : QSizePolicy::Minimum);
    }

    const NibBuilding& building_;
    QHash<QString, QWidget*> named_;
    std::vector<std::pair<QLabel*, QString>> buddies_;
    std::vector<std::pair<QWidget*, const NibElement*>> made_;
};

}  // namespace

QWidget* buildNibWindow(const NibWindowTree& tree, const NibBuilding& building) {
    return Builder(building).build(tree);
}
