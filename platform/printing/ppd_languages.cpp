#include "platform/printing/ppd_languages.h"

#include <QByteArrayView>
#include <QString>
#include <algorithm>

namespace {

bool isSmall(char c) {
    return c >= 'a' && c <= 'z';
}

bool isCapital(char c) {
    return c >= 'A' && c <= 'Z';
}

/// The name of the language that a line begins with behind its '*', such as "de" or "zh_CN"; empty when none does.
std::string_view languageOf(std::string_view line) {
    if (line.size() > 3 && line[0] == '*' && isSmall(line[1]) && isSmall(line[2])) {
        if (line[3] == '.') {
            return line.substr(1, 2);
        }
        if (line.size() > 6 && line[3] == '_' && isCapital(line[4]) && isCapital(line[5]) && line[6] == '.') {
            return line.substr(1, 5);
        }
    }
    return {};
}

/// Whether the value that a line begins, or goes on with, goes on in the next one: only quotes behind a colon count.
bool isOpenAfter(std::string_view line, bool wasOpen) {
    if (!wasOpen && line.starts_with("*%")) {
        return false;
    }
    const std::size_t colon = wasOpen ? 0 : line.find(':');
    const std::string_view value = line.substr(std::min(colon, line.size()));
    return (std::ranges::count(value, '"') % 2 == 1) != wasOpen;
}

/// Calls `use` with each line of the PPD without its end, the character that ends it, and whether a value is open
/// there, until it returns false.
template <typename Use>
void forEachLine(std::string_view ppd, const Use& use) {
    const bool hasReturns = ppd.find('\r') != std::string_view::npos;  // one character is found faster than one of two
    for (bool isOpen = false; !ppd.empty();) {
        const std::string_view line = ppd.substr(0, hasReturns ? ppd.find_first_of("\r\n") : ppd.find('\n'));
        const std::string_view end = ppd.substr(line.size(), 1);
        if (!use(line, end, isOpen)) {
            break;
        }
        isOpen = isOpenAfter(line, isOpen);
        ppd.remove_prefix(line.size() + end.size());
    }
}

/// The first of the languages that is among the PPD's; empty when none is.
std::string chosenLanguage(std::string_view ppd, const QStringList& languages) {
    static constexpr std::string_view kKeyword = "*cupsLanguages:";
    QStringList present;
    forEachLine(ppd, [&present](std::string_view line, std::string_view, bool isOpen) {
        const bool isFound = !isOpen && line.starts_with(kKeyword);
        if (isFound) {
            line.remove_prefix(kKeyword.size());
            present = QString::fromUtf8(QByteArrayView(line.data(), static_cast<qsizetype>(line.size())))
                          .remove(u'"')
                          .simplified()
                          .split(u' ');
        }
        return !isFound;
    });
    const auto found =
        std::ranges::find_if(languages, [&present](const QString& language) { return present.contains(language); });
    return found == languages.end() ? std::string() : found->toStdString();
}

}  // namespace

PPDInLanguage ppdInLanguage(std::string_view ppd, const QStringList& languages) {
    const std::string chosen = chosenLanguage(ppd, languages);
    PPDInLanguage made{{}, !chosen.empty()};
    made.text.reserve(ppd.size());
    bool isLeftOut = false;
    forEachLine(ppd, [&](std::string_view line, std::string_view end, bool isOpen) {
        const std::string_view language = isOpen ? std::string_view() : languageOf(line);
        isLeftOut = isOpen ? isLeftOut : !language.empty() && language != chosen;
        if (!language.empty() && !isLeftOut) {
            made.text.append("*").append(kUserLanguagePrefix);
            line.remove_prefix(1 + language.size() + 1);  // "*de."
        }
        made.text.append(isLeftOut ? std::string_view() : line).append(end);
        return true;
    });
    return made;
}
