// What the sources and the windows ask of the resources, found by reading them.
#pragma once

#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

/// Text keys by table.
using KeysByTable = QMap<QString, QSet<QString>>;

/// The keys that the C++ sources below the folders (from the project's root) ask for: in calls that look a text up,
/// and in the rows of setting maps and of installed features.
KeysByTable TextKeysInSources(const QStringList& folders);

/// The values that the device profile has for a key, such as the text keys of "Name".
QSet<QString> InDeviceProfile(const QString& key);

/// The picture files that the C++ sources below the folders name.
QSet<QString> PicturesInSources(const QStringList& folders);

/// All string literals of the C++ sources below the folders.
QSet<QString> LiteralsInSources(const QStringList& folders);

/// The messages (platform/foundation/message.h) that the sources make of literals.
QSet<QString> MessagesInSources(const QStringList& folders);

/// The literals of several words, whatever they are for.
QSet<QString> SentencesInSources(const QStringList& folders);

/// Those of them that are told as the reason of a failure.
QSet<QString> FaultsInSources(const QStringList& folders);

/// A window of a nib, as its Designer file has it.
struct NibWindow {
    QString nib;
    QString window;
    QString error;         // of the XML, with its line; empty when it parses
    QSet<QString> texts;   // what the user reads; none of them is marked as not to be translated
    QStringList controls;  // "Tshl 16", in the order of the file
};
/// All windows below a folder with NAME.nib folders.
QList<NibWindow> NibWindowsBelow(const QString& folder);

/// The rows of a strings table, key to text; a key that stands twice is in `duplicates`.
struct StringsTable {
    QMap<QString, QString> texts;
    QStringList duplicates;
};
StringsTable ReadStringsTable(const QString& file);
