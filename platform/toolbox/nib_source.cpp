// Designer files.

#include "platform/toolbox/nib_element.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDialog>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMetaEnum>
#include <QMetaProperty>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QRect>
#include <QSize>
#include <QSlider>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTimeEdit>
#include <QToolButton>
#include <QTreeView>
#include <QXmlStreamReader>
#include <algorithm>
#include <array>

namespace {

/// Whose enumerators a property may have.
struct KnownClass {
    const char* name;
    const QMetaObject* meta;
};
const std::array kKnownClasses = {
    KnownClass{"QWidget", &QWidget::staticMetaObject},
    KnownClass{"QDialog", &QDialog::staticMetaObject},
    KnownClass{"QLabel", &QLabel::staticMetaObject},
    KnownClass{"QPushButton", &QPushButton::staticMetaObject},
    KnownClass{"QToolButton", &QToolButton::staticMetaObject},
    KnownClass{"QCheckBox", &QCheckBox::staticMetaObject},
    KnownClass{"QRadioButton", &QRadioButton::staticMetaObject},
    KnownClass{"QComboBox", &QComboBox::staticMetaObject},
    KnownClass{"QLineEdit", &QLineEdit::staticMetaObject},
    KnownClass{"QPlainTextEdit", &QPlainTextEdit::staticMetaObject},
    KnownClass{"QSpinBox", &QSpinBox::staticMetaObject},
    KnownClass{"QSlider", &QSlider::staticMetaObject},
    KnownClass{"QProgressBar", &QProgressBar::staticMetaObject},
    KnownClass{"QDateTimeEdit", &QDateTimeEdit::staticMetaObject},
    KnownClass{"QTimeEdit", &QTimeEdit::staticMetaObject},
    KnownClass{"QFrame", &QFrame::staticMetaObject},
    KnownClass{"QGroupBox", &QGroupBox::staticMetaObject},
    KnownClass{"QTabBar", &QTabBar::staticMetaObject},
    KnownClass{"QTabWidget", &QTabWidget::staticMetaObject},
    KnownClass{"QTreeView", &QTreeView::staticMetaObject},
    KnownClass{"LittleArrows", &QWidget::staticMetaObject},
    KnownClass{"QHBoxLayout", &QHBoxLayout::staticMetaObject},
    KnownClass{"QVBoxLayout", &QVBoxLayout::staticMetaObject},
    KnownClass{"QGridLayout", &QGridLayout::staticMetaObject},
};

constexpr std::array<const char*, 8> kTextProperties = {
    "text",      "title",          "windowTitle",           "toolTip",
    "whatsThis", "accessibleName", "accessibleDescription", "placeholderText"};

class Parser {
public:
    explicit Parser(QIODevice* file) : xml_(file) {}

    std::optional<NibWindowTree> parse(QString* reason) {
        NibWindowTree tree;
        if (xml_.readNextStartElement() && xml_.name() != QLatin1String("ui")) {
            refuse(QStringLiteral("it is not a Designer file"));
        }
        bool hasWindow = false;
        while (xml_.readNextStartElement()) {
            if (xml_.name() == QLatin1String("widget")) {
                tree.window = widget();
                hasWindow = true;
            } else if (xml_.name() == QLatin1String("tabstops")) {
                while (xml_.readNextStartElement()) {
                    tree.tabOrder.push_back(xml_.readElementText());
                }
            } else {
                xml_.skipCurrentElement();
            }
        }
        if (!hasWindow && !xml_.hasError()) {
            refuse(QStringLiteral("it has no window"));
        }
        if (xml_.hasError()) {
            *reason = QStringLiteral("line %1: %2").arg(xml_.lineNumber()).arg(xml_.errorString());
            return std::nullopt;
        }
        return tree;
    }

private:
    QString attribute(const char* name) const { return xml_.attributes().value(QLatin1String(name)).toString(); }
    int number(const char* name, int otherwise) const {
        const auto text = xml_.attributes().value(QLatin1String(name));
        return text.isEmpty() ? otherwise : text.toInt();
    }

    void refuse(const QString& reason) {
        if (!xml_.hasError()) {
            xml_.raiseError(reason);
        }
    }

    const QMetaObject* metaOf(const QByteArray& className) {
        const auto* const known = std::ranges::find_if(
            kKnownClasses, [&className](const KnownClass& each) { return className == each.name; });
        if (known == kKnownClasses.end()) {
            refuse(QStringLiteral("the class %1 is not known").arg(QString::fromLatin1(className)));
            return &QWidget::staticMetaObject;
        }
        return known->meta;
    }

    int valueOf(const QMetaEnum& enumeration, const QString& keys) {
        bool isKnown = false;
        const int value = enumeration.isValid() ? enumeration.keysToValue(keys.toLatin1().constData(), &isKnown) : 0;
        if (!isKnown) {
            refuse(QStringLiteral("%1 is not known").arg(keys));
        }
        return value;
    }

    NibElement widget() {
        NibElement made;
        made.className = attribute("class").toLatin1();
        made.name = attribute("name");
        const bool isLine = made.className == "Line";
        if (isLine) {
            made.className = "QFrame";
        }
        const QMetaObject* const meta = metaOf(made.className);
        while (xml_.readNextStartElement()) {
            if (xml_.name() == QLatin1String("property")) {
                made.properties.push_back(property(isLine ? &QSlider::staticMetaObject : meta));
            } else if (xml_.name() == QLatin1String("attribute")) {
                NibProperty title = property(meta);
                title.name = "pageTitle";
                made.properties.push_back(title);
            } else if (xml_.name() == QLatin1String("item")) {
                made.items.push_back(popUpItem(meta));
            } else if (xml_.name() == QLatin1String("widget")) {
                made.children.push_back(widget());
            } else if (xml_.name() == QLatin1String("layout")) {
                made.children.push_back(layout());
            } else {
                refuse(QStringLiteral("<%1> is not known").arg(xml_.name()));
            }
        }
        if (isLine) {
            makeLine(&made);
        }
        return made;
    }

    /// Designer's lines are frames of one edge.
    static void makeLine(NibElement* made) {
        const QVariant* const orientation = made->find("orientation");
        const bool stands = orientation != nullptr && orientation->toInt() == Qt::Vertical;
        made->properties.removeIf([](const NibProperty& each) { return each.name == "orientation"; });
        made->properties.push_back({"frameShape", static_cast<int>(stands ? QFrame::VLine : QFrame::HLine), false});
        made->properties.push_back({"frameShadow", static_cast<int>(QFrame::Sunken), false});
    }

    QString popUpItem(const QMetaObject* meta) {
        QString text;
        while (xml_.readNextStartElement()) {
            text = property(meta).value.toString();
        }
        return text;
    }

    NibElement layout() {
        NibElement made;
        made.kind = NibElement::Kind::layout;
        made.className = attribute("class").toLatin1();
        made.name = attribute("name");
        const QMetaObject* const meta = metaOf(made.className);
        for (const char* name : {"stretch", "rowstretch", "columnstretch", "rowminimumheight", "columnminimumwidth"}) {
            if (const QString list = attribute(name); !list.isEmpty()) {
                made.properties.push_back({name, list.split(u','), false});
            }
        }
        while (xml_.readNextStartElement()) {
            if (xml_.name() == QLatin1String("property")) {
                made.properties.push_back(property(meta));
            } else if (xml_.name() == QLatin1String("item")) {
                made.children.push_back(layoutItem());
            } else {
                refuse(QStringLiteral("<%1> is not known").arg(xml_.name()));
            }
        }
        return made;
    }

    NibElement layoutItem() {
        const NibPlace place = {number("row", 0), number("column", 0), number("rowspan", 1), number("colspan", 1),
                                attribute("alignment").isEmpty()
                                    ? 0
                                    : valueOf(QMetaEnum::fromType<Qt::Alignment>(), attribute("alignment"))};
        NibElement made;
        while (xml_.readNextStartElement()) {
            if (xml_.name() == QLatin1String("widget")) {
                made = widget();
            } else if (xml_.name() == QLatin1String("layout")) {
                made = layout();
            } else if (xml_.name() == QLatin1String("spacer")) {
                made = spacer();
            } else {
                refuse(QStringLiteral("<%1> is not known").arg(xml_.name()));
            }
        }
        made.place = place;
        return made;
    }

    NibElement spacer() {
        NibElement made;
        made.kind = NibElement::Kind::spacer;
        while (xml_.readNextStartElement()) {
            made.properties.push_back(property(&QSlider::staticMetaObject));
        }
        return made;
    }

    /// `meta` knows the property's enumeration.
    NibProperty property(const QMetaObject* meta) {
        NibProperty made{attribute("name").toLatin1(), {}, false};
        made.isText = std::ranges::any_of(kTextProperties, [&made](const char* name) { return made.name == name; }) ||
                      made.name == "headers";
        while (xml_.readNextStartElement()) {
            made.value = value(made.name, meta);
        }
        return made;
    }

    QVariant value(const QByteArray& property, const QMetaObject* meta) {
        const auto type = xml_.name().toString();
        if (type == QLatin1String("string") || type == QLatin1String("cstring")) {
            return xml_.readElementText();
        }
        if (type == QLatin1String("number")) {
            return xml_.readElementText().toInt();
        }
        if (type == QLatin1String("double")) {
            return xml_.readElementText().toDouble();
        }
        if (type == QLatin1String("bool")) {
            return xml_.readElementText() == QLatin1String("true");
        }
        if (type == QLatin1String("enum") || type == QLatin1String("set")) {
            const QMetaEnum enumeration =
                property == "sizeType" ? QMetaEnum::fromType<QSizePolicy::Policy>()
                                       : meta->property(meta->indexOfProperty(property.constData())).enumerator();
            return valueOf(enumeration, xml_.readElementText());
        }
        if (type == QLatin1String("sizepolicy")) {
            return sizePolicy();
        }
        if (type == QLatin1String("stringlist")) {
            QStringList list;
            while (xml_.readNextStartElement()) {
                list.push_back(xml_.readElementText());
            }
            return list;
        }
        if (type == QLatin1String("size")) {
            const auto [width, height] = numbers<2>({"width", "height"});
            return QSize(width, height);
        }
        if (type == QLatin1String("rect")) {
            const auto [x, y, width, height] = numbers<4>({"x", "y", "width", "height"});
            return QRect(x, y, width, height);
        }
        if (type == QLatin1String("font")) {
            bool isBold = false;
            while (xml_.readNextStartElement()) {
                if (xml_.name() != QLatin1String("bold")) {
                    refuse(QStringLiteral("a font may be bold, and nothing else"));
                }
                isBold = xml_.readElementText() == QLatin1String("true");
            }
            return isBold;
        }
        refuse(QStringLiteral("<%1> is not known").arg(type));
        return {};
    }

    template <std::size_t Count>
    std::array<int, Count> numbers(const std::array<const char*, Count>& names) {
        std::array<int, Count> found{};
        while (xml_.readNextStartElement()) {
            const auto name = xml_.name().toString();
            const int number = xml_.readElementText().toInt();
            const auto place = std::ranges::find(names, name, [](const char* each) { return QLatin1String(each); });
            if (place != names.end()) {
                found[static_cast<std::size_t>(place - names.begin())] = number;
            }
        }
        return found;
    }

    /// Horizontal and vertical policy, and stretches.
    QVariant sizePolicy() {
        const auto policies = QMetaEnum::fromType<QSizePolicy::Policy>();
        QVariantList policy{valueOf(policies, attribute("hsizetype")), valueOf(policies, attribute("vsizetype"))};
        const auto [horizontal, vertical] = numbers<2>({"horstretch", "verstretch"});
        policy << horizontal << vertical;
        return policy;
    }

    QXmlStreamReader xml_;
};

}  // namespace

std::optional<NibWindowTree> readDesignerFile(QIODevice* file, QString* reason) {
    return Parser(file).parse(reason);
}
