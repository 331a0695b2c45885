// The units in which pages are laid out inside: fine enough for fonts to need no rounding.
#pragma once

#include <QFont>
#include <QString>

#include <string>

inline constexpr int kUnitsPerPoint = 10;

/// The page's font. Fonts of other scripts stand in by themselves where it has no glyphs.
QFont pageFont(double size, bool bold);
/// The font of a PostScript name, if there is one, else the page's own.
QFont fontByPostScriptName(const std::string& name, double size);

QString textOf(const std::string& utf8);
