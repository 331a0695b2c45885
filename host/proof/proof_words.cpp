#include "host/proof/proof_words.h"

#include "host/settings/texts.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <array>
#include <functional>

namespace {

class Words {
public:
    Words(const ProofReport& report, CFBundleRef texts) : report_(report), texts_(texts) {}

    std::vector<std::string> make() {
        tellValues("Proof Command", report_.commands);
        tellValues("Proof Instruction", report_.instructions);
        if (report_.copies > 1) {
            add(report_.isCollated ? "Proof Copies" : "Proof Copies Uncollated", {std::to_string(report_.copies)});
        }
        for (const ProofReport::Sheet& sheet : report_.sheets) {
            tellSheet(sheet);
        }
        for (const ProofReport::Finishing& finishing : report_.finishing) {
            lines_.push_back(finishing.words);
        }
        if (report_.tray) {
            add("Proof Tray", {report_.tray->words});
        }
        return std::move(lines_);
    }

private:
    std::string text(const char* key, const std::vector<std::string>& values = {}) const {
        return utf8Text(localized(texts_, CFStringMakeConstant(key), values).get());
    }
    void add(const char* key, const std::vector<std::string>& values) { lines_.push_back(text(key, values)); }

    void tellValues(const char* key, const std::vector<ProofReport::Value>& values) {
        for (const ProofReport::Value& each : values) {
            add(key, {each.name, each.value.value_or(text("Proof Secret"))});
        }
    }

    std::string sideWords(const ProofSide& side) const {
        constexpr std::size_t kMostText = 60;
        const std::string ink = side.isBlank        ? text("Proof Blank")
                                : side.text.empty() ? text("Proof Without Text")
                                                    : text("Proof Text", {shortened(side.text, kMostText)});
        return side.tones == kUsualTones || side.isBlank ? ink : text("Proof With Tones", {ink, toneWords(side.tones)});
    }

    /// How lighter, darker, negative and tinted pages come out.
    std::string toneWords(const Tones& tones) const {
        const auto words = [this](const std::array<int, kToneSteps.size()>& tone) {
            return text("Proof Tone", {std::to_string(tone[0]), std::to_string(tone[1]), std::to_string(tone[2])});
        };
        const bool isOfAll = std::ranges::adjacent_find(tones, std::not_equal_to()) == tones.end();
        return isOfAll ? text("Proof Tones", {words(kToneSteps), words(tones[0])})
                       : text("Proof Tones of Colors",
                              {words(kToneSteps), words(tones[0]), words(tones[1]), words(tones[2]), words(tones[3])});
    }

    void tellSheet(const ProofReport::Sheet& sheet) {
        const std::string number = std::to_string(++sheets_);
        std::string paper = wordsOf(sheet.paper, texts_);
        if (sheet.source) {
            paper = joined(texts_, {paper, text("Proof From Tray", {sheet.source->words})});
        }
        paper = paper.empty() ? text("Proof Any Paper") : paper;
        if (sheet.isTwoSided) {
            add(sheet.isTumbled ? "Proof Sheet Tumbled" : "Proof Sheet Two Sides",
                {number, paper, sideWords(sheet.side1), sideWords(sheet.side2)});
        } else {
            add("Proof Sheet", {number, paper, sideWords(sheet.side1)});
        }
    }

    const ProofReport& report_;
    CFBundleRef texts_;
    std::size_t sheets_ = 0;
    std::vector<std::string> lines_;
};

}  // namespace

std::vector<std::string> proofWords(const ProofReport& report, CFBundleRef texts) {
    return Words(report, texts).make();
}
