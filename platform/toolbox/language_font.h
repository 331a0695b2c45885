// The application's font and the letters of the user's language. Private to this folder.
#pragma once

#include <string>

/// The user's first language, such as "ja_JP", when it has other letters than Latin ones; "" when not.
std::string languageOfOtherLetters();

/// The family of a desktop that says nothing of fonts, as Qt has it.
inline constexpr const char* kFamilyWithoutDesktop = "Sans Serif";

/// Has the application show the letters of that language, unless it is "", in the font that the user's settings choose
/// for it, behind the desktop's own where that lacks them. Qt alone asks for the letters of a script: it shows the
/// marks of a Japanese sentence in the first font that has some, a Korean one, say.
void useFontOf(const std::string& language);
