// A job as it was read back, in a line, for people who read tests.
#pragma once

#include "driver/proof/proof.h"

#include <cmath>
#include <string>

/// "Blue CardStock[Hello|-]s": a sheet is its paper, unless that is white Letter of no special type, and what its sides
/// show, "-" where that is nothing; one that is printed on one side only has no bar, and "s" stands behind one that is
/// turned over its short edge. Other paper sizes are "595x842", in points, and "tray1" is a certain tray.
inline std::string wordsOf(const Proof& proof) {
    const auto side = [](const ProofSide& printed) { return printed.isBlank ? "-" : printed.text; };
    const auto sizeOf = [](const std::string& points) {
        const std::size_t blank = points.find(' ');
        const auto rounded = [](const std::string& number) { return std::to_string(std::lround(std::stod(number))); };
        const std::string size = blank == std::string::npos
                                     ? points
                                     : rounded(points.substr(0, blank)) + "x" + rounded(points.substr(blank + 1));
        return size == "612x792" ? std::string() : size;
    };
    std::string words;
    for (const ProofSheet& sheet : proof.sheets) {
        const std::string color = sheet.value("MediaColor");
        const std::string type = sheet.value("MediaType");
        const std::string tray = sheet.value("MediaPosition");
        std::string paper;
        for (const std::string& part : {tray.empty() ? "" : "tray" + tray, sizeOf(sheet.value("PageSize")),
                                        color == "White" ? "" : color, type == "Standard" ? "" : type}) {
            paper += (paper.empty() || part.empty() ? "" : " ") + part;
        }
        for (const char* key : {"Weight", "CoatedSides", "Coating", "Finish", "Grain", "Prepunched", "Tabs"}) {
            const std::string value = sheet.value(std::string("Media") + key);
            paper += value.empty() ? "" : (paper.empty() ? "" : " ") + std::string(key) + "=" + value;
        }
        words += (words.empty() ? "" : " ") + paper + "[" + side(sheet.side1);
        words += (sheet.isTwoSided ? "|" + side(sheet.side2) : "") + (sheet.isTumbled ? "]s" : "]");
    }
    return words;
}
