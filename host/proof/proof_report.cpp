#include "host/proof/proof_report.h"

#include "host/settings/texts.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <map>
#include <utility>

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

/// Of "612 792".
Size sizeIn(std::string_view points) {
    Size size{};
    const auto width = std::from_chars(points.data(), points.data() + points.size(), size.width);
    const char* const second = std::find_if(width.ptr, points.data() + points.size(), [](char c) { return c != ' '; });
    std::from_chars(second, points.data() + points.size(), size.height);
    return size;
}

class Reporter {
public:
    Reporter(const Proof& proof, const Printer& printer, CFBundleRef texts)
        : proof_(proof), printer_(printer), session_(printer, {}, nullptr, {}), texts_(texts) {}

    ProofReport make() {
        for (const std::string& command : proof_.commands) {
            addCommand(command);
        }
        for (const auto& [name, value] : proof_.instructions) {
            report_.instructions.push_back(valueOf(name, value));
        }
        report_.copies = proof_.copies;
        report_.isCollated = proof_.isCollated;
        for (const ProofSheet& sheet : proof_.sheets) {
            addSheet(sheet);
        }
        addFinishing();
        report_.errors = proof_.errors;
        return std::move(report_);
    }

private:
    std::string text(const char* key, const std::vector<std::string>& values = {}) const {
        return utf8Text(localized(texts_, CFStringMakeConstant(key), values).get());
    }

    static ProofReport::Value valueOf(const std::string& name, const std::string& value) {
        return {name, isSecret(name) ? std::nullopt : std::optional(value)};
    }

    void addCommand(const std::string& command) {
        constexpr std::string_view kSet = "SET ";
        const std::size_t equals = command.find('=');
        if (command.starts_with(kSet) && equals != std::string::npos) {
            report_.commands.push_back(valueOf(trimmed(command.substr(kSet.size(), equals - kSet.size())),
                                               trimmed(command.substr(equals + 1))));
        }
    }

    PaperFact fact(const char* mainKeyword, const std::string& option) const {
        return paperFact(mainKeyword, option, session_, texts_);
    }

    /// The PPD's name of a size; "100 x 200" (points) for one that it has not.
    PaperFact sizeFact(const Size& size) const {
        for (CFIndex i = 0; i < PMPrinterCountPapers(printer_.get()); ++i) {
            PMPaper paper{};
            if (PMPrinterGetIndPaper(printer_.get(), i, &paper) == noErr && std::abs(paper.width - size.width) < 1 &&
                std::abs(paper.height - size.height) < 1) {
                return {"size", utf8Text(paper.name), utf8Text(paper.title)};
            }
        }
        return {
            "size",
            {},
            text("Proof Size", {std::to_string(std::lround(size.width)), std::to_string(std::lround(size.height))})};
    }

    void addSheet(const ProofSheet& sheet) {
        ProofReport::Sheet& told = report_.sheets.emplace_back(
            ProofReport::Sheet{{}, {}, {}, sheet.isTwoSided, sheet.isTumbled, sheet.side1, sheet.side2});
        if (const std::string points = sheet.value("PageSize"); !points.empty()) {
            told.size = sizeIn(points);
            told.paper.push_back(sizeFact(*told.size));
        }
        for (const char* keyword : {"MediaColor", "MediaType"}) {
            if (const std::string value = sheet.value(keyword); !value.empty()) {
                told.paper.push_back(fact(keyword, value));
            }
        }
        if (const std::string weight = sheet.value("MediaWeight"); !weight.empty()) {
            told.paper.push_back(paperWeightFact(weight, texts_));
        }
        for (const auto& [key, keyword] : kPaperAttributes) {
            if (const std::string value = sheet.value(key); !value.empty()) {
                told.paper.push_back(fact(keyword, value));
            }
        }
        if (const std::string position = sheet.value("MediaPosition"); !position.empty()) {
            told.source = trayAt(position);
        }
    }

    /// The tray whose code asks for a position; the position itself where none does.
    PaperFact trayAt(const std::string& position) {
        constexpr const char* kKeyword = "InputSlot";
        const auto [tray, isNew] = trays_.try_emplace(position, PaperFact{"source", {}, position});
        const std::string wish = "/MediaPosition " + position;
        for (const std::string& slot : isNew ? session_.choices().options(kKeyword) : std::vector<std::string>()) {
            CFStringRef code = nullptr;
            if (PMPrinterCopyOptionCode(printer_.get(), makeString(kKeyword).get(), makeString(slot).get(), &code) !=
                noErr) {
                continue;
            }
            const std::string text = utf8Text(CFRef<CFStringRef>::adopt(code).get());
            const std::size_t end = text.find(wish) + wish.size();
            if (text.find(wish) != text.npos && (end == text.size() || std::isdigit(text[end]) == 0)) {
                tray->second = {"source", slot, fact(kKeyword, slot).words};
                break;
            }
        }
        return tray->second;
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
    void addPlaced(const char* kind, const char* key, const char* countName, const char* words,
                   const char* wordsWithPlace) {
        if (wish(key).empty()) {
            return;
        }
        const std::string details = wish((std::string(key) + "Details").c_str());
        std::string count = detail(details, countName);
        const std::string position = detail(details, "Position");
        count = count.empty() && *countName != '\0' ? wish(key) : count;
        report_.finishing.push_back(
            {kind,
             count,
             position,
             {},
             text(position.empty() ? words : wordsWithPlace, {count, nameIn(kPlaces, position)})});
    }

    void addFinishing() {
        const bool isOneStaple = detail(wish("StapleDetails"), "StapleCount") == "1";
        addPlaced("staple", "Staple", "StapleCount", "Proof Staples",
                  isOneStaple ? "Proof Staple At" : "Proof Staples At");
        addPlaced("punch", "Punch", "HoleCount", "Proof Holes", "Proof Holes At");
        addPlaced("bind", "Bind", "", "Proof Bound At", "Proof Bound At");
        if (!wish("Fold").empty()) {
            const std::string style = detail(wish("FoldDetails"), "FoldStyle");
            report_.finishing.push_back({"fold", {}, {}, style, text("Proof Fold", {nameIn(kFolds, style)})});
        }
        if (!wish("Booklet").empty()) {
            const std::string style = detail(wish("BookletDetails"), "Style");
            report_.finishing.push_back({"booklet", {}, {}, style, nameIn(kBooklets, style)});
        }
        if (!wish("Jog").empty()) {
            report_.finishing.push_back({"offset", {}, {}, {}, text("Proof Offset")});
        }
        if (const std::string tray = wish("OutputType"); !tray.empty()) {
            report_.tray = fact("OutputBin", tray);
        }
    }

    const Proof& proof_;
    const Printer& printer_;
    PrintSession session_;  // what the printer does by itself
    CFBundleRef texts_;
    std::map<std::string, PaperFact> trays_;  // by their positions
    ProofReport report_;
};

}  // namespace

ProofReport reportOf(const Proof& proof, const Printer& printer, CFBundleRef texts) {
    return Reporter(proof, printer, texts).make();
}
