// A window of a nib as a tree: what its Designer file says, with names resolved. Private to this folder and to the
// program that makes compiled windows.
//
// A compiled window (NAME.window beside where NAME.ui would be) is this tree as a QDataStream of Qt 6.0, after the
// bytes "TVNW" and the number of the format. It is made by the build and read by the same version of the toolbox only.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <optional>
#include <vector>

class QIODevice;

/// One property as QObject::setProperty takes it; enumerators and flags are numbers, a text is the key of one.
struct NibProperty {
    QByteArray name;
    QVariant value;  // bool, int, double, QString, QStringList, QSize, QRect or, for a font, whether it is bold
    bool isText = false;
};

/// Where a child stands in the layout of its parent.
struct NibPlace {
    int row = 0;
    int column = 0;
    int rowSpan = 1;
    int columnSpan = 1;
    int alignment = 0;  // Qt::Alignment
};

struct NibElement {
    enum class Kind : quint8 { widget, layout, spacer };

    Kind kind = Kind::widget;
    QByteArray className;  // of Qt's or the toolbox's; empty for a spacer
    QString name;
    QList<NibProperty> properties;  // in their order in the file
    NibPlace place;
    QStringList items;                 // keys of a pop-up's texts
    std::vector<NibElement> children;  // a widget's layout is one of them

    const QVariant* find(const char* property) const;
};

struct NibWindowTree {
    NibElement window;
    QStringList tabOrder;  // names
};

/// Reads a Designer file. Nothing, with the reason and the line, when it does not parse or says what is not known here.
std::optional<NibWindowTree> readDesignerFile(QIODevice* file, QString* reason);

/// The same tree, compiled. Nothing, with the reason, when that is damaged or of another version.
QByteArray compiledWindow(const NibWindowTree& tree);
std::optional<NibWindowTree> readCompiledWindow(const QByteArray& data, QString* reason);
