#include "platform/foundation/terminal_text.h"

#include <QString>

#include <algorithm>

namespace {

bool isUnsafe(QChar c) {
    const char16_t code = c.unicode();
    const bool turnsOrder = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    return turnsOrder || c.category() == QChar::Other_Control || c.category() == QChar::Separator_Line ||
           c.category() == QChar::Separator_Paragraph;
}

}  // namespace

std::string terminalText(std::string_view text) {
    QString safe = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    std::replace_if(safe.begin(), safe.end(), isUnsafe, QChar(u' '));
    return safe.toStdString();
}

void printLine(std::FILE* stream, std::string_view text) {
    const std::string line = terminalText(text) + '\n';
    std::fwrite(line.data(), 1, line.size(), stream);
}
