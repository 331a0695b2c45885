#include "host/proof/proof_words.h"

#include "host/script/text.h"
#include "host/settings/setting_words.h"
#include "host/settings/texts.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <map>

namespace {

/// Parts of names of commands and instructions whose values are secret, as HOLDKEY is.
constexpr std::array<std::string_view, 6> kSecrets{"KEY", "PASS", "CARD", "PREFIX", "card", "prefix"};

bool isSecret(std::string_view name) {
    return std::ranges::any_of(kSecrets, [name](std::string_view part) { return name.find(part) != name.npos; });
}

/// Names of the PPDs to their texts.
struct NameRow {
    std::string_view name;
    const char* text;
};
// clang-format off
constexpr std::array kFolds{
    // style                      text
    NameRow{"Booklet",            "Proof Fold Booklet"},
    NameRow{"BookletSet",         "Proof Fold Booklet"},
    NameRow{"BookletStaple",      "Proof Fold Booklet Staple"},
    NameRow{"BookletStapleSet",   "Proof Fold Booklet Staple"},
    NameRow{"CTri",               "Proof Fold C"},
    NameRow{"ZTri",               "Proof Fold Z"},
    NameRow{"HalfInside",         "Proof Fold Half Inside"},
    NameRow{"HalfOutside",        "Proof Fold Half Outside"},
    NameRow{"CTriInside",         "Proof Fold C Inside"},
    NameRow{"CTriOutside",        "Proof Fold C Outside"},
    NameRow{"ZTriInside",         "Proof Fold Z Inside"},
    NameRow{"ZTriOutside",        "Proof Fold Z Outside"},
    NameRow{"HalfZLeft",          "Proof Fold Half Z Left"},
    NameRow{"HalfZRight",         "Proof Fold Half Z Right"},
};
constexpr std::array kPlaces{
    // position                   text
    NameRow{"TopLeft",            "Proof Top Left"},
    NameRow{"TopRight",           "Proof Top Right"},
    NameRow{"BottomLeft",         "Proof Bottom Left"},
    NameRow{"BottomRight",        "Proof Bottom Right"},
    NameRow{"Top",                "Proof Top"},
    NameRow{"Left",               "Proof Left"},
    NameRow{"Right",              "Proof Right"},
    NameRow{"Bottom",             "Proof Bottom"},
    NameRow{"TopCenter",          "Proof Top Center"},
    NameRow{"LeftCenter",         "Proof Left Center"},
    NameRow{"RightCenter",        "Proof Right Center"},
    NameRow{"BottomCenter",       "Proof Bottom Center"},
};
constexpr std::array kBooklets{
    // style                      text
    NameRow{"Signature",          "Proof Signature"},
    NameRow{"SquareFoldTrim",     "Proof Square Fold"},
};
// clang-format on

/// Keys of the page device for what paper is, beside its weight, to the main keywords that set them.
struct PaperAttributeRow {
    const char* key;
    const char* mainKeyword;
};
constexpr std::array kPaperAttributes{
    // key, main keyword
    PaperAttributeRow{"MediaCoatedSides", "TRMediaCoatedSides"}, PaperAttributeRow{"MediaCoating", "TRMediaCoating"},
    PaperAttributeRow{"MediaFinish", "TRMediaFinish"},           PaperAttributeRow{"MediaGrain", "TRMediaGrain"},
    PaperAttributeRow{"MediaPrepunched", "TRMediaPrepunched"},   PaperAttributeRow{"MediaTabs", "TRMediaTabs"},
};

bool isNothing(const std::string& value) {
    return value.empty() || value == "0" || value == "false" || value == "null" || value == "--nostringval--";
}

/// One line that does nothing to a terminal.
std::string plain(const std::string& text) {
    std::string line = readable(text);
    std::ranges::replace_if(
        line, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }, ' ');
    return line;
}

std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? std::string() : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// "2" of "Type=1 StapleCount=2" and "StapleCount"; empty when it is not there.
std::string detail(const std::string& details, const std::string& name) {
    const std::string all = " " + details + " ";
    const std::size_t at = all.find(" " + name + "=");
    return at == std::string::npos ? std::string()
                                   : all.substr(at + name.size() + 2, all.find(' ', at + 1) - at - name.size() - 2);
}

class Words {
public:
    Words(const Proof& proof, const Printer& printer, CFBundleRef texts)
        : proof_(proof), printer_(printer), session_(printer, {}, nullptr, {}), texts_(texts) {}

    std::vector<std::string> make() {
        for (const std::string& command : proof_.commands) {
            tellCommand(command);
        }
        for (const auto& [name, value] : proof_.instructions) {
            add("Proof Instruction", {name, isSecret(name) ? text("Proof Secret") : value});
        }
        tellCopies();
        for (const ProofSheet& sheet : proof_.sheets) {
            tellSheet(sheet);
        }
        tellFinishing();
        return std::move(lines_);
    }

private:
    std::string text(const char* key, const std::vector<std::string>& values = {}) const {
        return utf8(localized(texts_, CFStringMakeConstant(key), values).get());
    }
    void add(const char* key, const std::vector<std::string>& values) { lines_.push_back(plain(text(key, values))); }

    /// Only settings: all other commands say where the job begins and ends.
    void tellCommand(const std::string& command) {
        constexpr std::string_view kSet = "SET ";
        const std::size_t equals = command.find('=');
        if (!command.starts_with(kSet) || equals == std::string::npos) {
            return;
        }
        const std::string name = trimmed(command.substr(kSet.size(), equals - kSet.size()));
        add("Proof Command", {name, isSecret(name) ? text("Proof Secret") : trimmed(command.substr(equals + 1))});
    }

    void tellCopies() {
        if (proof_.copies > 1) {
            add(proof_.isCollated ? "Proof Copies" : "Proof Copies Uncollated", {std::to_string(proof_.copies)});
        }
    }

    /// What the printer calls an option; one that it does not have as it stands.
    std::string option(const char* mainKeyword, const std::string& value) const {
        const auto words = settingWords(session_, texts_, mainKeyword, value);
        return words ? words->choice : value;
    }

    /// The PPD's name of a size; "100 x 200" (points) for one that it has not.
    std::string sizeWords(const std::string& points) const {
        char* end = nullptr;
        const double width = std::strtod(points.c_str(), &end);
        const double height = std::strtod(end, nullptr);
        for (CFIndex i = 0; i < PMPrinterCountPapers(printer_.get()); ++i) {
            PMPaper paper{};
            if (PMPrinterGetIndPaper(printer_.get(), i, &paper) == noErr && std::abs(paper.width - width) < 1 &&
                std::abs(paper.height - height) < 1) {
                return utf8(paper.title);
            }
        }
        return text("Proof Size", {std::to_string(std::lround(width)), std::to_string(std::lround(height))});
    }

    /// What the printer calls the tray whose code asks for a position; the position where none does.
    std::string trayWords(const std::string& position) {
        const auto [tray, isNew] = trays_.try_emplace(position, position);
        constexpr const char* kKeyword = "InputSlot";
        const std::string wish = "/MediaPosition " + position;
        for (const std::string& slot : isNew ? session_.choices().options(kKeyword) : std::vector<std::string>()) {
            CFStringRef code = nullptr;
            if (PMPrinterCopyOptionCode(printer_.get(), cfString(kKeyword).get(), cfString(slot).get(), &code) !=
                noErr) {
                continue;
            }
            const std::string text = utf8(CFRef<CFStringRef>::adopt(code).get());
            const std::size_t end = text.find(wish) + wish.size();
            if (text.find(wish) != text.npos && (end == text.size() || std::isdigit(text[end]) == 0)) {
                tray->second = option(kKeyword, slot);
                break;
            }
        }
        return tray->second;
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

    void tellSheet(const ProofSheet& sheet) {
        std::string paper;
        const auto join = [&paper](const std::string& words) { paper += (paper.empty() ? "" : ", ") + words; };
        if (const std::string size = sheet.value("PageSize"); !size.empty()) {
            join(sizeWords(size));
        }
        for (const char* keyword : {"MediaColor", "MediaType"}) {
            if (const std::string value = sheet.value(keyword); !value.empty()) {
                join(option(keyword, value));
            }
        }
        if (const std::string weight = sheet.value("MediaWeight"); !weight.empty()) {
            join(text("Paper Weight", {weight}));
        }
        for (const auto& [key, keyword] : kPaperAttributes) {
            if (const std::string value = sheet.value(key); !value.empty()) {
                join(option(keyword, value));
            }
        }
        if (const std::string tray = sheet.value("MediaPosition"); !tray.empty()) {
            join(text("Proof From Tray", {trayWords(tray)}));
        }
        const std::string number = std::to_string(++sheets_);
        paper = paper.empty() ? text("Proof Any Paper") : paper;
        if (sheet.isTwoSided) {
            add(sheet.isTumbled ? "Proof Sheet Tumbled" : "Proof Sheet Two Sides",
                {number, paper, sideWords(sheet.side1), sideWords(sheet.side2)});
        } else {
            add("Proof Sheet", {number, paper, sideWords(sheet.side1)});
        }
    }

    /// What the page device was asked for; empty for nothing.
    std::string wish(const char* key) const {
        const auto found = proof_.finishing.find(key);
        return found == proof_.finishing.end() || isNothing(found->second) ? std::string() : found->second;
    }

    /// What our texts call a name of the PPDs; the name itself when it is none of ours.
    template <typename Names>
    std::string nameIn(const Names& names, const std::string& name) const {
        const auto* const row = std::ranges::find(names, std::string_view(name), &NameRow::name);
        return row == names.end() ? name : text(row->text);
    }

    /// What is done so many times, at a place where the printer was told one.
    void tellPlaced(const char* key, const char* countName, const char* words, const char* wordsWithPlace) {
        if (wish(key).empty()) {
            return;
        }
        const std::string details = wish((std::string(key) + "Details").c_str());
        const std::string count = detail(details, countName);
        const std::string place = nameIn(kPlaces, detail(details, "Position"));
        add(place.empty() ? words : wordsWithPlace, {count.empty() ? wish(key) : count, place});
    }

    void tellFinishing() {
        const bool isOneStaple = detail(wish("StapleDetails"), "StapleCount") == "1";
        tellPlaced("Staple", "StapleCount", "Proof Staples", isOneStaple ? "Proof Staple At" : "Proof Staples At");
        tellPlaced("Punch", "HoleCount", "Proof Holes", "Proof Holes At");
        tellPlaced("Bind", "", "Proof Bound At", "Proof Bound At");
        if (!wish("Fold").empty()) {
            add("Proof Fold", {nameIn(kFolds, detail(wish("FoldDetails"), "FoldStyle"))});
        }
        if (!wish("Booklet").empty()) {
            lines_.push_back(plain(nameIn(kBooklets, detail(wish("BookletDetails"), "Style"))));
        }
        if (!wish("Jog").empty()) {
            add("Proof Offset", {});
        }
        if (!wish("OutputType").empty()) {
            add("Proof Tray", {option("OutputBin", wish("OutputType"))});
        }
    }

    const Proof& proof_;
    const Printer& printer_;
    PrintSession session_;  // what the printer does by itself
    CFBundleRef texts_;
    std::size_t sheets_ = 0;
    std::map<std::string, std::string> trays_;  // by their positions
    std::vector<std::string> lines_;
};

}  // namespace

std::vector<std::string> proofWords(const Proof& proof, const Printer& printer, CFBundleRef texts) {
    return Words(proof, printer, texts).make();
}
