#include "tests/resources/source_scan.h"
#include "tests/support/places.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QXmlStreamReader>

namespace {

const QString kDefaultTable = QStringLiteral("Localizable");

QString Read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The text of all sources below the folders, without comments. A literal in several pieces is one.
QString CodeOf(const QStringList& folders) {
    static const QRegularExpression seam(QStringLiteral(R"re((?<!\\)"\s*\n\s*")re"));
    static const QRegularExpression comments(QStringLiteral(R"(("(?:\\.|[^"\\\n])*")|//[^\n]*|/\*.*?\*/)"),
                                             QRegularExpression::DotMatchesEverythingOption);
    QString code;
    for (const QString& folder : folders) {
        QDirIterator files(QString::fromStdString(sourcePath("")) + folder,
                           {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            code += Read(files.next()).replace(comments, QStringLiteral("\\1")) + QLatin1Char('\n');
        }
    }
    return code.remove(seam);
}

QStringList LiteralsIn(const QString& code) {
    static const QRegularExpression literal(QStringLiteral(R"re("((?:\\.|[^"\\\n])*)")re"));
    QStringList found;
    for (auto matches = literal.globalMatch(code); matches.hasNext();) {
        found += matches.next().captured(1);
    }
    return found;
}

/// The arguments of a call, from behind its opening parenthesis.
QStringList ArgumentsAt(const QString& code, qsizetype position) {
    QStringList arguments{QString()};
    int depth = 0;
    bool quoted = false;
    for (; position < code.size(); ++position) {
        const QChar c = code[position];
        if (quoted) {
            if (c == QLatin1Char('\\')) {
                arguments.last() += c;
                arguments.last() += code[++position];
                continue;
            }
            quoted = c != QLatin1Char('"');
        } else if (c == QLatin1Char('"')) {
            quoted = true;
        } else if (c == QLatin1Char('(') || c == QLatin1Char('{')) {
            ++depth;
        } else if (c == QLatin1Char(')') || c == QLatin1Char('}')) {
            if (depth-- == 0) {
                break;
            }
        } else if (c == QLatin1Char(',') && depth == 0) {
            arguments += QString();
            continue;
        }
        arguments.last() += c;
    }
    return arguments;
}

QString Unescaped(QString text) {
    static const QRegularExpression escape(QStringLiteral(R"(\\(.))"));
    qsizetype from = 0;
    for (auto match = escape.match(text); match.hasMatch(); match = escape.match(text, from)) {
        const QString meant = match.captured(1) == QLatin1String("n") ? QStringLiteral("\n") : match.captured(1);
        text.replace(match.capturedStart(), 2, meant);
        from = match.capturedStart() + 1;
    }
    return text;
}

/// The literals of the text, with blanks between letters: more than a name.
QSet<QString> SentencesIn(const QString& code) {
    static const QRegularExpression words(QStringLiteral("[a-z]{2}[,;:]? [a-z(]"));
    QSet<QString> sentences;
    for (const QString& literal : LiteralsIn(code)) {
        if (literal.contains(words)) {
            sentences.insert(Unescaped(literal));
        }
    }
    return sentences;
}

}  // namespace

QSet<QString> MessagesInSources(const QStringList& folders) {
    static const QRegularExpression made(QStringLiteral(R"(\bmessage(?:Text|Of)\()"));
    const QString code = CodeOf(folders);
    QSet<QString> messages;
    for (auto calls = made.globalMatch(code); calls.hasNext();) {
        for (const QString& key : LiteralsIn(ArgumentsAt(code, calls.next().capturedEnd()).value(0))) {
            messages.insert(Unescaped(key));
        }
    }
    return messages;
}

QSet<QString> SentencesInSources(const QStringList& folders) {
    return SentencesIn(CodeOf(folders));
}

QSet<QString> FaultsInSources(const QStringList& folders) {
    // What is thrown, returned as a failure or put where a reason goes.
    static const QRegularExpression told(QStringLiteral(
        R"(\b(?:failWith|fail|refuse|raise|unusable|Refusal|Fault|runtime_error|errorLine)\s*[({]|\*?\b(?:reason|fault_?)\s*=[^=])"));
    const QString code = CodeOf(folders);
    QSet<QString> faults;
    for (auto places = told.globalMatch(code); places.hasNext();) {
        const qsizetype start = places.next().capturedEnd();
        const QString rest = code.mid(start, 2000);
        const QStringList arguments = ArgumentsAt(rest, 0);
        // An assignment ends with its semicolon, which may come before a bracket that closes.
        faults += SentencesIn(arguments.join(QLatin1Char(',')).section(QStringLiteral(";\n"), 0, 0));
    }
    return faults;
}

KeysByTable TextKeysInSources(const QStringList& folders) {
    const QString code = CodeOf(folders);
    KeysByTable keys;

    // bundle, key, [fallback, table]
    static const QRegularExpression lookUp(QStringLiteral(
        R"(\b(?:CFBundleCopyLocalizedString|CopyLocalizedText|CopyPanelTitle|localized|SetLocalized(?:StaticText|ControlTitle|WindowTitle|MenuTitle))\()"));
    for (auto calls = lookUp.globalMatch(code); calls.hasNext();) {
        const QStringList arguments = ArgumentsAt(code, calls.next().capturedEnd());
        const QStringList table = arguments.size() == 4 ? LiteralsIn(arguments[3]) : QStringList();
        for (const QString& key : LiteralsIn(arguments.value(1))) {
            keys[table.value(0, kDefaultTable)].insert(key);
        }
    }

    // Texts of the fax dialogs: bundle, key, and for messages what stands in them.
    static const QRegularExpression faxLookUp(QStringLiteral(R"(\b(?:CopyFaxText|CopyFaxMessage)\()"));
    for (auto calls = faxLookUp.globalMatch(code); calls.hasNext();) {
        for (const QString& key : LiteralsIn(ArgumentsAt(code, calls.next().capturedEnd()).value(1))) {
            keys[QStringLiteral("LANFax")].insert(key);
        }
    }

    // Tables of rows, with the column that holds the key.
    struct RowType {
        QLatin1String name;
        qsizetype keyColumn;
    };
    for (const RowType& type :
         {RowType{QLatin1String("SettingMap"), 0}, RowType{QLatin1String("InstalledFeature"), 3},
          RowType{QLatin1String("FinishingKind"), 1}, RowType{QLatin1String("FinishingKind"), 2},
          RowType{QLatin1String("FinishingChoice"), 2}, RowType{QLatin1String("ColorChoice"), 0}}) {
        const QRegularExpression table(QStringLiteral(R"(\b%1\s+\w+\[\]\s*=\s*\{)").arg(type.name));
        for (auto tables = table.globalMatch(code); tables.hasNext();) {
            for (const QString& row : ArgumentsAt(code, tables.next().capturedEnd())) {
                const qsizetype brace = row.indexOf(QLatin1Char('{'));
                const QStringList columns = brace < 0 ? QStringList() : ArgumentsAt(row, brace + 1);
                for (const QString& key : LiteralsIn(columns.value(type.keyColumn))) {
                    keys[kDefaultTable].insert(key);
                }
            }
        }
    }
    return keys;
}

QSet<QString> LiteralsInSources(const QStringList& folders) {
    QSet<QString> literals;
    for (const QString& literal : LiteralsIn(CodeOf(folders))) {
        literals.insert(Unescaped(literal));
    }
    return literals;
}

QSet<QString> InDeviceProfile(const QString& key) {
    const QRegularExpression entry(QStringLiteral("<key>%1</key><string>([^<]*)</string>").arg(key));
    const QString profile = Read(QString::fromStdString(sourcePath("resources/device/Device Profile.plist")));
    QSet<QString> values;
    for (auto matches = entry.globalMatch(profile); matches.hasNext();) {
        values.insert(matches.next().captured(1));
    }
    return values;
}

QSet<QString> PicturesInSources(const QStringList& folders) {
    static const QRegularExpression picture(QStringLiteral(R"(.\.(gif|png)$)"));
    QSet<QString> pictures = LiteralsInSources(folders);
    pictures.removeIf([](const QString& literal) { return !literal.contains(picture); });
    return pictures;
}

QList<NibWindow> NibWindowsBelow(const QString& folder) {
    QList<NibWindow> windows;
    for (const QFileInfo& nib : QDir(folder).entryInfoList({QStringLiteral("*.nib")}, QDir::Dirs, QDir::Name)) {
        for (const QFileInfo& file :
             QDir(nib.filePath()).entryInfoList({QStringLiteral("*.ui")}, QDir::Files, QDir::Name)) {
            NibWindow window{nib.completeBaseName(), file.completeBaseName(), {}, {}, {}};
            QXmlStreamReader xml(Read(file.filePath()));
            QString property;
            QString signature;
            while (!xml.atEnd()) {
                if (xml.readNext() != QXmlStreamReader::StartElement) {
                    continue;
                }
                if (xml.name() == QLatin1String("property") || xml.name() == QLatin1String("attribute")) {
                    property = xml.attributes().value(QLatin1String("name")).toString();
                } else if (xml.name() == QLatin1String("string")) {
                    const bool translated = xml.attributes().value(QLatin1String("notr")) != QLatin1String("true");
                    const QString text = xml.readElementText();
                    if (property == QLatin1String("signature")) {
                        signature = text;
                    } else if (translated && !text.isEmpty()) {
                        window.texts.insert(text);
                    }
                } else if (xml.name() == QLatin1String("number") && property == QLatin1String("number")) {
                    window.controls += signature + QLatin1Char(' ') + xml.readElementText();
                }
            }
            if (xml.hasError()) {
                window.error = QStringLiteral("line %1: %2").arg(xml.lineNumber()).arg(xml.errorString());
            }
            windows += window;
        }
    }
    return windows;
}

StringsTable ReadStringsTable(const QString& file) {
    static const QRegularExpression row(QStringLiteral(R"re(^\s*"((?:\\.|[^"\\])*)"\s*=\s*"((?:\\.|[^"\\])*)"\s*;)re"),
                                        QRegularExpression::MultilineOption);
    StringsTable table;
    const QString text = Read(file);
    for (auto rows = row.globalMatch(text); rows.hasNext();) {
        const QRegularExpressionMatch match = rows.next();
        const QString key = Unescaped(match.captured(1));
        if (table.texts.contains(key)) {
            table.duplicates += key;
        }
        table.texts.insert(key, Unescaped(match.captured(2)));
    }
    return table;
}
