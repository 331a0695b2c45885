#include "platform/foundation/terminal_text.h"

#include <QString>

#include <algorithm>

bool isTerminalCode(char16_t code) {
    const bool turnsOrder = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    const QChar::Category category = QChar(code).category();
    return turnsOrder || category == QChar::Other_Control || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph;
}

std::string terminalText(std::string_view text) {
    QString safe = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    std::replace_if(
        safe.begin(), safe.end(), [](QChar c) { return isTerminalCode(c.unicode()); }, QChar(u' '));
    return safe.toStdString();
}

void printLine(std::FILE* stream, std::string_view text) {
    const std::string line = terminalText(text) + '\n';
    std::fwrite(line.data(), 1, line.size(), stream);
}
