// Puts translations into a PPD: tavro-ppd-translator IN.ppd OUT.ppd TABLE_FOLDER LANGUAGE... Run by the build.
//
// Where there are translations, the PPD's own texts must be ASCII: what they have of ISO Latin 1 is in the English
// table. TABLE_FOLDER/LANGUAGE.lproj/PPD.strings has a text for each English one, or for "Keyword/English text" where a
// word means something else in one option than in others. The lines are those of CUPS's PPD extensions:
// "*cupsLanguages" and
// "*LANGUAGE.Keyword choice/text", in UTF-8 whatever the file's own encoding is.
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/objects.h"
#include "platform/foundation/strings_table.h"

#include <QFile>
#include <QRegularExpression>
#include <QStringList>
#include <cstdio>
#include <stdexcept>

namespace {

/// A line that shows a text: an option's own, or one of its choices'.
struct Shown {
    QString keyword;  // main keyword
    QString choice;   // empty for the option's own text
    QString text;
};

QByteArray contentOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error((path + QStringLiteral(": ") + file.errorString()).toStdString());
    }
    return file.readAll();
}

/// The text with hexadecimal substrings, such as "<B2>", resolved.
QString decoded(QString text) {
    static const QRegularExpression kHex(QStringLiteral("<((?:[0-9A-Fa-f]{2})+)>"));
    for (auto match = kHex.match(text); match.hasMatch(); match = kHex.match(text)) {
        text.replace(match.capturedStart(), match.capturedLength(),
                     QString::fromLatin1(QByteArray::fromHex(match.captured(1).toLatin1())));
    }
    return text.trimmed();
}

std::vector<Shown> shownIn(const QString& ppd) {
    static const QRegularExpression kOption(QStringLiteral(R"(^\*(?:JCL)?OpenUI \*(\w+)/([^:]*):)"));
    static const QRegularExpression kGroup(QStringLiteral(R"(^\*OpenGroup: (\w+)/(.*)$)"));
    static const QRegularExpression kChoice(QStringLiteral(R"(^\*(\w+) ([^/:\s]+)/([^:]*):)"));
    std::vector<Shown> shown;
    QStringList options;
    for (const QString& line : ppd.split(u'\n')) {
        if (const auto option = kOption.match(line); option.hasMatch()) {
            options << option.captured(1);
            shown.push_back({option.captured(1), {}, decoded(option.captured(2))});
        } else if (const auto group = kGroup.match(line.trimmed()); group.hasMatch()) {
            shown.push_back({group.captured(1), {}, decoded(group.captured(2))});
        } else if (const auto choice = kChoice.match(line); choice.hasMatch()) {
            const QString keyword = choice.captured(1);
            if (options.contains(keyword) || keyword.startsWith(QLatin1String("ParamCustom"))) {
                shown.push_back({keyword, choice.captured(2), decoded(choice.captured(3))});
            }
        }
    }
    return shown;
}

/// The text of the language; throws when there is none.
QString translated(CFDictionaryRef table, const Shown& shown, const QString& language) {
    for (const QString& key : {shown.keyword + u'/' + shown.text, shown.text}) {
        if (const void* const text = CFDictionaryGetValue(table, makeString(key).get())) {
            return textOf(static_cast<CFStringRef>(text));
        }
    }
    throw std::runtime_error(
        (language + QStringLiteral(": no text for \"%1\" of *%2").arg(shown.text, shown.keyword)).toStdString());
}

QByteArray linesOf(const std::vector<Shown>& shown, const QString& tables, const QString& language) {
    const QString path = tables + u'/' + language + QStringLiteral(".lproj/PPD.strings");
    const QByteArray bytes = contentOf(path);
    CFRef<CFStringRef> fault;
    const auto table = readStringsTable(CFRef<CFDataRef>::adopt(new CFDataObject(bytes)).get(), &fault);
    if (!table) {
        throw std::runtime_error((path + QStringLiteral(": ") + textOf(fault.get())).toStdString());
    }
    QByteArray lines;
    for (const Shown& each : shown) {
        const QString text = translated(table.get(), each, language);
        const QString place = each.choice.isEmpty() ? QStringLiteral("Translation %1").arg(each.keyword)
                                                    : QStringLiteral("%1 %2").arg(each.keyword, each.choice);
        lines += QStringLiteral("*%1.%2/%3: \"\"\n").arg(language, place, text).toUtf8();
    }
    return lines;
}

QByteArray withTranslations(const QByteArray& ppd, const QString& tables, const QStringList& languages) {
    const std::vector<Shown> shown = shownIn(QString::fromLatin1(ppd));
    QByteArray result = ppd.endsWith('\n') ? ppd : ppd + '\n';
    result.replace("<B2>", "2");  // a square
    for (const QString& language : languages) {
        result += linesOf(shown, tables, language);
    }
    const QByteArray after("*LanguageEncoding: ISOLatin1\n");
    const QByteArray all = "*cupsLanguages: \"" + languages.join(u' ').toLatin1() + "\"\n";
    const auto place = result.indexOf(after);
    if (place < 0) {
        throw std::runtime_error("no line says that the encoding is ISOLatin1");
    }
    return languages.isEmpty() ? result : result.insert(place + after.size(), all);
}

}  // namespace

int main(int argc, char** argv) try {
    if (argc < 4) {
        std::fprintf(stderr, "usage: %s IN.ppd OUT.ppd TABLE_FOLDER LANGUAGE...\n", argv[0]);
        return 2;
    }
    QStringList words;
    for (int i = 1; i < argc; ++i) {
        words << QString::fromLocal8Bit(argv[i]);
    }
    const QByteArray made = withTranslations(contentOf(words[0]), words[2], words.mid(3));
    QFile out(words[1]);
    if (!out.open(QIODevice::WriteOnly) || out.write(made) != made.size() || !out.flush()) {
        throw std::runtime_error((words[1] + QStringLiteral(": ") + out.errorString()).toStdString());
    }
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s: %s\n", argv[1], error.what());
    return 1;
}
