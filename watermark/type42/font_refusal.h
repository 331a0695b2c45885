// Why a font cannot be embedded.
#pragma once

enum class FontRefusal {
    none,
    unusableName,         // the PostScript name is none: empty, too long, or with characters that end a name
    notAFont,             // no font file, or one in a form for the web
    noSuchFace,           // the file has fewer faces
    damaged,              // a table is missing, ends too early, or contradicts another one
    postScriptOutlines,   // outlines that Type 42 cannot hold
    variableOutlines,     // one file for many faces, the outlines of each made by a recipe
    tooLarge,             // a glyph is longer than a string of PostScript can be
    noOutlines,           // bitmaps only
    noCharacters,         // no table of the characters that the font has, or none that we can read
    embeddingRestricted,  // its maker does not allow that it is embedded
    bitmapsOnly,          // its maker allows that bitmaps are embedded, but not outlines
};
