// The languages that the user reads, by the environment (LANGUAGE, LC_ALL, LC_MESSAGES, LANG).
#pragma once

#include "platform/foundation/CFBundle.h"

#include <QStringList>

/// The names that texts of a language may go by, such as a .lproj folder, from "zh-Hant-TW" over "zh_Hant_TW" to "zh",
/// for each of the user's languages, the first choice first. The last is English, which everything has.
QStringList userLanguages();

/// The one of them in which the bundle has its texts: the first that it has a folder of, else English.
QString languageOfTexts(CFBundleRef bundle);
