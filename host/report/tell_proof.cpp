#include "host/proof/proof_words.h"
#include "host/report/json_document.h"
#include "host/report/report.h"
#include "platform/foundation/terminal_text.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace {

QJsonArray jsonValues(const std::vector<ProofReport::Value>& values) {
    QJsonArray array;
    for (const ProofReport::Value& each : values) {
        array.append(each.value ? QJsonObject{{QStringLiteral("name"), jsonText(each.name)},
                                              {QStringLiteral("value"), jsonText(*each.value)}}
                                : QJsonObject{{QStringLiteral("name"), jsonText(each.name)},
                                              {QStringLiteral("isSecret"), true}});
    }
    return array;
}

QJsonObject jsonSide(const ProofSide& side) {
    QJsonObject object{{QStringLiteral("isBlank"), side.isBlank}};
    if (!side.isBlank) {
        object[QStringLiteral("text")] = jsonText(side.text);
        object[QStringLiteral("ink")] = QJsonArray{side.left, side.bottom, side.right, side.top};
        if (side.tones != kUsualTones) {
            QJsonArray tones;
            for (const auto& tone : side.tones) {
                tones.append(QJsonArray{tone[0], tone[1], tone[2]});
            }
            object[QStringLiteral("tones")] = tones;
        }
    }
    return object;
}

QJsonObject jsonSheet(const ProofReport::Sheet& sheet, CFBundleRef texts) {
    QJsonArray sides{jsonSide(sheet.side1)};
    if (sheet.isTwoSided) {
        sides.append(jsonSide(sheet.side2));
    }
    QJsonObject object{{QStringLiteral("paper"), jsonPaper(sheet.paper, sheet.size, texts)},
                       {QStringLiteral("sides"), sides},
                       {QStringLiteral("flip"), jsonFlip(sheet.isTwoSided, sheet.isTumbled)}};
    if (sheet.source) {
        object[QStringLiteral("source")] = jsonChoice(sheet.source->option, sheet.source->words);
    }
    return object;
}

QJsonObject jsonFinishing(const ProofReport::Finishing& finishing) {
    QJsonObject object{{QStringLiteral("kind"), QString::fromLatin1(finishing.kind)},
                       {QStringLiteral("text"), jsonText(finishing.words)}};
    int count = 0;
    std::from_chars(finishing.count.data(), finishing.count.data() + finishing.count.size(), count);
    if (count > 0) {
        object[QStringLiteral("count")] = count;
    }
    if (!finishing.position.empty()) {
        object[QStringLiteral("position")] = jsonText(finishing.position);
    }
    if (!finishing.style.empty()) {
        object[QStringLiteral("style")] = jsonText(finishing.style);
    }
    return object;
}

QJsonObject jsonProof(const ProofReport& report, CFBundleRef texts) {
    QJsonArray sheets;
    for (const ProofReport::Sheet& sheet : report.sheets) {
        sheets.append(jsonSheet(sheet, texts));
    }
    QJsonArray finishing;
    for (const ProofReport::Finishing& each : report.finishing) {
        finishing.append(jsonFinishing(each));
    }
    return {{QStringLiteral("commands"), jsonValues(report.commands)},
            {QStringLiteral("instructions"), jsonValues(report.instructions)},
            {QStringLiteral("copies"), report.copies},
            {QStringLiteral("isCollated"), report.isCollated},
            {QStringLiteral("sheetCount"), static_cast<qint64>(report.sheets.size())},
            {QStringLiteral("sheets"), sheets},
            {QStringLiteral("finishing"), finishing},
            {QStringLiteral("tray"),
             report.tray ? jsonChoice(report.tray->option, report.tray->words) : QJsonValue(QJsonValue::Null)},
            {QStringLiteral("errors"), jsonTexts(report.errors)}};
}

}  // namespace

Failure reportProof(const std::string& path, const Printer& printer, CFBundleRef texts, ReportForm form) {
    std::string reason;
    const auto proof = readProof(path, &reason);
    if (!proof) {
        return unusable(path, reason);
    }
    const ProofReport report = reportOf(*proof, printer, texts);
    if (form == ReportForm::json) {
        printDocument("proof", jsonProof(report, texts));
    } else {
        for (const std::string& line : proofWords(report, texts)) {
            printLine(stdout, readable(line));
        }
    }
    return proof->errors.empty() ? Failure{ExitStatus::success, {}} : unusable(path, proof->errors.front());
}
