// Converts every installed face, or those of the families that are named, and prints how far Ghostscript's rendering is
// from FreeType's. Fails when a TrueType face differs by more than 2 % of its ink, or cannot be shown.
//
//   compare_fonts [FAMILY]...

#include "platform/fonts/font_faces.h"
#include "tests/watermark/type42/font_rendering.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <string_view>

int main(int argc, char** argv) {
    constexpr double kAllowed = 0.02;
    const std::vector<std::string_view> families(argv + 1, argv + argc);
    std::map<std::string, int> refusals;
    int compared = 0;
    int failed = 0;
    double worst = 0;
    double sum = 0;
    for (const FontFace& face : InstalledFontFaces()) {
        if (!families.empty() && std::find(families.begin(), families.end(), face.family) == families.end()) {
            continue;
        }
        FontRefusal refusal = FontRefusal::none;
        const std::string program = ConvertFontFile(face.path, face.index, face.postScriptName, &refusal);
        if (refusal != FontRefusal::none) {
            ++refusals[NameOfRefusal(refusal)];
            std::printf("%-44s refused: %s\n", face.postScriptName.c_str(), NameOfRefusal(refusal));
            continue;
        }
        const FontComparison result = CompareWithFreeType(face.path, face.index, face.postScriptName, program);
        const bool isFailure = !result.failure.empty() || result.difference > kAllowed;
        failed += isFailure ? 1 : 0;
        ++compared;
        sum += result.difference;
        worst = std::max(worst, result.difference);
        std::printf("%-44s %2d glyphs, %5.2f %% of the ink, worst %s %5.2f %%%s%s\n", face.postScriptName.c_str(),
                    result.glyphs, result.difference * 100, result.worstGlyph.c_str(), result.worstDifference * 100,
                    isFailure ? "  FAILED " : "", result.failure.c_str());
        std::fflush(stdout);
    }
    for (const auto& [reason, count] : refusals) {
        std::printf("%d faces refused: %s\n", count, reason.c_str());
    }
    std::printf("%d faces compared, %d failed; difference %.2f %% of the ink on average, %.2f %% at worst\n", compared,
                failed, compared > 0 ? sum / compared * 100 : 0, worst * 100);
    return failed > 0 ? 1 : 0;
}
