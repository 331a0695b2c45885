#include "host/report/json_document.h"

#include "platform/foundation/terminal_text.h"

#include <QJsonDocument>

#include <cstdio>

namespace {

/// Grows when a field gets another meaning or goes, not when one is added.
constexpr int kVersion = 1;

/// One line of a document, with what a terminal obeys written as numbers.
QByteArray withoutTerminalCodes(QByteArrayView line) {
    QString safe;
    for (const QChar character : QString::fromUtf8(line)) {
        if (isTerminalCode(character.unicode())) {
            safe += QStringLiteral("\\u%1").arg(character.unicode(), 4, 16, QChar(u'0'));
        } else {
            safe += character;
        }
    }
    return safe.toUtf8() + '\n';
}

}  // namespace

QString jsonText(const std::string& text) {
    return QString::fromStdString(text);
}

QJsonArray jsonTexts(const std::vector<std::string>& texts) {
    QJsonArray array;
    for (const std::string& text : texts) {
        array.append(jsonText(text));
    }
    return array;
}

QJsonObject jsonPaper(const std::vector<PaperFact>& facts, const std::optional<Size>& size, CFBundleRef texts) {
    QJsonObject paper{{QStringLiteral("text"), jsonText(wordsOf(facts, texts))}};
    if (size) {
        paper[QStringLiteral("width")] = size->width;
        paper[QStringLiteral("height")] = size->height;
    }
    for (const PaperFact& fact : facts) {
        bool isNumber = false;
        const int number = jsonText(fact.option).toInt(&isNumber);
        if (isNumber && fact.field == "weight") {
            paper[jsonText(fact.field)] = number;
        } else if (!fact.option.empty()) {
            paper[jsonText(fact.field)] = jsonText(fact.option);
        }
    }
    return paper;
}

QJsonValue jsonFlip(bool isTwoSided, bool isTumbled) {
    return !isTwoSided ? QJsonValue(QJsonValue::Null)
           : isTumbled ? QJsonValue(QStringLiteral("shortEdge"))
                       : QJsonValue(QStringLiteral("longEdge"));
}

QJsonObject jsonChoice(const std::string& option, const std::string& words) {
    return {{QStringLiteral("option"), jsonText(option)}, {QStringLiteral("text"), jsonText(words)}};
}

void printDocument(const char* kind, QJsonObject document) {
    document[QStringLiteral("kind")] = QString::fromLatin1(kind);
    document[QStringLiteral("version")] = kVersion;
    const QByteArray text = QJsonDocument(document).toJson(QJsonDocument::Indented);
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype end = text.indexOf('\n', at);
        const QByteArray line = withoutTerminalCodes(QByteArrayView(text).sliced(at, end - at));
        std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
        at = end + 1;
    }
}
