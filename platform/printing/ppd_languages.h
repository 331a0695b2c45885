// The lines of a PPD for other languages than its own, as "*de.PageSize A4/…" of CUPS's extensions to PPDs.
#pragma once

#include <QStringList>
#include <string>
#include <string_view>

/// Stands for the language's name in the lines that are kept.
inline constexpr std::string_view kUserLanguagePrefix = "u.";

struct PPDInLanguage {
    std::string text;
    bool isTranslated = false;  // whether the PPD has the language
};

/// The PPD for the first of these languages that it has: its lines with the prefix above, and empty lines for those of
/// all other languages, so that the numbers of lines stay. libcups would keep the lines of the C library's locale,
/// which is not always what the user reads, and takes long to skip the others.
PPDInLanguage ppdInLanguage(std::string_view ppd, const QStringList& languages);
