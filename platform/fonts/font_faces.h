// The faces of the installed fonts, as the desktop's font cache knows them: no font file is opened.
#pragma once

#include "platform/foundation/CFBase.h"

#include <optional>
#include <string>
#include <thread>
#include <vector>

/// How a face's outlines are kept.
enum class FontOutlines {
    trueType,
    variableTrueType,  // an instance of a variable font: its outlines are made of the file's by a recipe
    other,             // PostScript outlines, bitmaps
};

/// Texts are UTF-8.
struct FontFace {
    std::string postScriptName;  // never empty
    std::string family;
    std::string style;
    std::string path;  // of its file
    UInt32 index = 0;  // of the face in its file: 0 unless the file is a collection
    FontOutlines outlines = FontOutlines::other;
};

/// The installed face of that PostScript name, outlines of TrueType first. When there is none of a name that the fonts
/// of other desktops made common, such as "ArialMT", the face that the user's font settings put in its place; nothing
/// for any other name.
std::optional<FontFace> FindFontFace(const std::string& postScriptName);

/// Every face that has a PostScript name, sorted by family, style and PostScript name. A name that several files have
/// is there once, with the face that FindFontFace takes.
std::vector<FontFace> InstalledFontFaces();

/// The families in which text of that family is shown, as the user's font settings choose them. First the installed one
/// that stands for it, which has the letters and digits of English: itself, or another where the name is none of an
/// installed font ("Sans Serif"). Behind it, when it lacks the letters of the language (such as "ja" or "zh_TW"), the
/// one for these. Empty when there are no fonts at all. From any thread; a question is answered once in a process.
std::vector<std::string> FamiliesForText(const std::string& family, const std::string& language);

/// Begins to read the desktop's font cache, which whoever shows text waits for, and then to find the families for text
/// of that family in that language, unless it is "", in a thread of its own. The end of the object's life waits for it.
class FontsAhead {
public:
    FontsAhead(std::string family, std::string language);

private:
    std::jthread reader_;
};
