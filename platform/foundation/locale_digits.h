// Digits in fixed texts.
#pragma once

#include <QString>

/// The text with its Arabic-Indic digits (٠ to ٩) and the decimal sign between them (٫) as the user's locale writes
/// them, so that they agree with numbers that are put in; ar_MA has 0 to 9. All else stays, the digits 0 to 9 of names
/// (A4, ZR840) too.
QString withDigitsOfLocale(QString text);
