#include "host/settings/summary.h"

#include "driver/instructions/panel_items.h"
#include "driver/job/instruction_values.h"
#include "host/settings/choice_words.h"
#include "host/settings/dictionary_values.h"
#include "host/settings/job_hold.h"
#include "host/settings/paper_words.h"
#include "host/settings/setting_words.h"
#include "host/settings/texts.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <set>

namespace {

/// Options of main keywords, in the order of the PPD.
using Options = std::vector<std::pair<std::string, std::string>>;

Options optionsOf(PMTicketRef printSettings) {
    CFMutableDictionaryRef pairs = nullptr;
    PMTicketGetPPDDict(printSettings, kPMTopLevel, &pairs);
    return pairsIn(pairs);
}

struct ColorRow {
    std::string_view name;  // of the instruction
    const char* key;
};
// clang-format off
constexpr ColorRow kColors[] = {
    // name, key
    {"tavro-lightness",                 "Summary Color Lightness"},
    {"tavro-contrast",                  "Summary Color Contrast"},
    {"tavro-saturation",                "Summary Color Saturation"},
    {"tavro-cyan-red",                  "Summary Color Cyan Red"},
    {"tavro-magenta-green",             "Summary Color Magenta Green"},
    {"tavro-yellow-blue",               "Summary Color Yellow Blue"},
    {"tavro-tone-curve",                "Summary Color Tone Curve"},
    {"tavro-rgb-images-profile",        "Summary Color Rgb Images Profile"},
    {"tavro-rgb-text-profile",          "Summary Color Rgb Text Profile"},
    {"tavro-cmyk-images-profile",       "Summary Color Cmyk Images Profile"},
    {"tavro-cmyk-text-profile",         "Summary Color Cmyk Text Profile"},
    {"tavro-gray-images-profile",       "Summary Color Gray Images Profile"},
    {"tavro-gray-text-profile",         "Summary Color Gray Text Profile"},
    {"tavro-destination-profile",       "Summary Color Destination Profile"},
    {"tavro-images-rendering-intent",   "Summary Color Images Rendering Intent"},
    {"tavro-text-rendering-intent",     "Summary Color Text Rendering Intent"},
    {"tavro-graphics-rendering-intent", "Summary Color Graphics Rendering Intent"},
    {"tavro-trapping",                  "Summary Color Trapping"},
    {"tavro-trapping-fast",             "Summary Color Trapping Fast"},
    {"tavro-trapping-slow",             "Summary Color Trapping Slow"},
    {"tavro-black-overprint",           "Summary Color Black Overprint"},
};
// clang-format on

class Summary {
public:
    Summary(const PrintSession& session, std::int64_t pageCount, CFBundleRef texts)
        : session_(session),
          pageCount_(pageCount),
          job_(session.instructions()),
          usual_(session.usual()),
          changed_(optionsOf(session.printSettings())),
          texts_(texts) {
        const std::set<Options::value_type> usual(usual_.options.begin(), usual_.options.end());
        std::erase_if(changed_,
                      [&](const auto& option) { return usual.contains(option) || isBeginningOfPanel(option); });
    }

    std::vector<std::string> make() {
        drop({"PageRegion"});  // the size of the paper once more
        tellPages();
        tellPaper();
        tellSides();
        tellFinishing();
        tellJob();
        tellCovers();
        tellSpecialPages();
        tellImages();
        tellRest();
        if (lines_.empty()) {
            add("Summary Nothing");
        }
        tellSheets();
        return std::move(lines_);
    }

private:
    // ---- Lines

    std::string text(const char* key) const { return utf8Text(localized(texts_, CFStringMakeConstant(key)).get()); }
    void add(const char* key) { lines_.push_back(text(key)); }
    void add(const char* key, const std::vector<std::string>& values) {
        lines_.push_back(utf8Text(localized(texts_, CFStringMakeConstant(key), values).get()));
    }
    void add(const char* one, const char* many, std::size_t count) {
        if (count == 1) {
            add(one);
        } else if (count > 1) {
            add(many, {std::to_string(count)});
        }
    }
    void addIf(bool condition, const char* key) {
        if (condition) {
            add(key);
        }
    }

    std::string list(const std::vector<std::string>& words) const { return joined(texts_, words); }

    // ---- Options of the PPD, each told once

    /// Without a queue the panel of paper begins with plain paper, whatever the PPD's default
    /// (host/settings/panel_defaults.h).
    bool isBeginningOfPanel(const Options::value_type& option) const {
        return option == Options::value_type("MediaType", kPlainType) && session_.printer().queue().empty() &&
               panelPaperType(session_.printSettings()) == kPlainType;
    }

    std::string option(const char* mainKeyword) const { return session_.choice(CFStringMakeConstant(mainKeyword)); }
    bool isChanged(std::string_view mainKeyword) const {
        return std::ranges::find(changed_, mainKeyword, &Options::value_type::first) != changed_.end();
    }
    /// These are told in other words.
    void drop(std::initializer_list<std::string_view> mainKeywords) {
        std::erase_if(changed_, [&](const auto& changed) {
            return std::ranges::find(mainKeywords, changed.first) != mainKeywords.end();
        });
    }
    /// What the printer calls an option; empty for none that it has.
    std::string words(const char* mainKeyword, const std::string& option) const {
        const auto found = option.empty() ? std::nullopt : settingWords(session_, texts_, mainKeyword, option);
        return found ? found->choice : std::string();
    }
    void tell(const Options::value_type& changed) {
        if (const auto found = settingWords(session_, texts_, changed.first, changed.second)) {
            add("Summary Setting", {found->title, found->choice});
        }
    }
    void tell(std::initializer_list<std::string_view> mainKeywords) {
        for (const std::string_view mainKeyword : mainKeywords) {
            const auto found = std::ranges::find(changed_, mainKeyword, &Options::value_type::first);
            if (found != changed_.end()) {
                tell(*found);
                changed_.erase(found);
            }
        }
    }

    // ---- What there is to tell

    void tellPages() {
        if (session_.copies() != usual_.copies) {
            add("Summary Copies", {std::to_string(session_.copies())});
        }
        tell({"Collate"});
        if (const std::string pages = session_.pageRange(); !pages.empty()) {
            add("Summary Pages", {pages});
        }
        tell({"PageSize"});
        if (const SInt32 orientation = session_.orientation(); orientation != usual_.orientation) {
            add(orientation == kPortrait           ? "Summary Portrait"
                : orientation == kReverseLandscape ? "Summary Reverse Landscape"
                                                   : "Summary Landscape");
        }
        addIf(job_.subset == PageSubset::odd, "Summary Odd Pages");
        addIf(job_.subset == PageSubset::even, "Summary Even Pages");
        addIf(job_.isReversed, "Summary Reverse Order");
        tellLayout();
    }

    /// A booklet has a layout of its own.
    void tellLayout() {
        if (job_.numberUp > 1 && !job_.booklet) {
            add(job_.hasBorders ? "Summary Pages per Sheet Borders" : "Summary Pages per Sheet",
                {std::to_string(job_.numberUp)});
            return;  // they are made to fit
        }
        if (job_.booklet) {
            return;
        }
        addIf(job_.hasBorders, "Summary Borders");
        switch (job_.scaling.kind) {
            case Scaling::Kind::actualSize:
                add("Summary Actual Size");
                break;
            case Scaling::Kind::fit:
                add("Summary Fit to Paper");
                break;
            case Scaling::Kind::percent:
                add("Summary Scaled", {std::to_string(std::lround(job_.scaling.percent))});
                break;
            case Scaling::Kind::shrink:
                break;
        }
    }

    void tellPaper() {
        if (!job_.paper.name.empty()) {
            add("Summary Paper Name", {job_.paper.name});
        }
        tell({"InputSlot", "MediaColor", "MediaType"});
        if (job_.paper.weight > 0) {
            add("Summary Paper Weight", {std::to_string(job_.paper.weight)});
        }
        drop({"TRMediaWeight"});
        tell({"TRMediaCoatedSides", "TRMediaCoating", "TRMediaFinish", "TRMediaGrain", "TRMediaPrepunched",
              "TRMediaTabs"});
        if (job_.separators != Separators::none && job_.paper.type == kTransparencyType) {
            const bool arePrinted = job_.separators == Separators::printed;
            add("Summary Separators", {list({text(arePrinted ? "Summary Printed" : "Summary Blank"),
                                             words("MediaColor", job_.separatorColor)})});
        }
    }

    /// A booklet is always printed on both sides, flipped on the short edge.
    void tellSides() {
        if (const auto& booklet = job_.booklet) {
            const std::string parts =
                list({words("PageSize", booklet->paperSize), booklet->hasOutlines ? text("Summary Outlines") : "",
                      booklet->isRightToLeft ? text("Summary Right to Left") : ""});
            if (parts.empty()) {
                add("Summary Booklet");
            } else {
                add("Summary Setting", {text("Summary Booklet"), parts});
            }
            if (option("Duplex") == "DuplexTumble") {
                drop({"Duplex"});
            }
        }
        tell({"Duplex"});
    }

    /// Whether the options of the PPD say what the finishing menu says.
    bool isSaidByOptions(int finishing) const {
        const auto options = finishingOptionsOf(finishing);
        return !options.empty() && std::ranges::all_of(options, [this](const auto& each) {
            return option(each.first.c_str()) == each.second;
        });
    }

    void tellFinishing() {
        tell({"StapleLocation", "TRFoldOptions"});
        const FinishingInstruction& finishing = job_.finishing;
        tell({"TRStaple", "TRPunch", "TRFold", "TRBind", "TRBooklet"});
        const bool isTold = isSaidByOptions(finishing.value);
        const std::string all = finishingWords(finishing, texts_);
        if (!all.empty() && (!isTold || all == finishing.custom)) {
            add("Summary Finishing", {all});
        }
        addIf(finishing.hasSlipSheets, "Summary Slip Sheets");
        if (finishing.offset == Offset::subsets) {
            add("Summary Offset Subsets", {std::to_string(finishing.pagesPerSubset)});
        } else {
            addIf(finishing.offset == Offset::sets && !isChanged("Jog"), "Summary Offset");
        }
        tell({"Jog", "OutputBin"});
        const bool isBlackAndWhite = job_.outputColor == OutputColor::blackAndWhite;
        addIf(isBlackAndWhite, "Summary Black and White");
        if (isBlackAndWhite || option(kColorCorrectionKeyword) == kBlackAndWhiteCorrection) {
            drop({kColorCorrectionKeyword});  // the panel has the last word
        }
    }

    void tellJob() {
        switch (job_.kind) {
            case JobKind::fax:
                addIf(job_.fax->recipients.empty(), "Summary Fax to Nobody");
                add("Summary Fax to One", "Summary Fax to Many", job_.fax->recipients.size());
                addIf(job_.fax->coverSheet.has_value(), "Summary Fax Cover Sheet");
                break;
            case JobKind::delayed: {
                LongDateTime now = 0;
                GetDateTime(&now);
                add("Summary Print Time", {timeOfDay(findPrintTime(job_.printTime.value_or(0), now).moment)});
                break;
            }
            case JobKind::sampleSet:
                add("Summary Sample Set");
                break;
            case JobKind::save:
                add("Summary Save");
                break;
            case JobKind::printAndSave:
                add("Summary Print and Save");
                break;
            case JobKind::print:
            case JobKind::secure:
                break;
        }
        // The option is a secret itself.
        addIf(job_.kind == JobKind::secure || isChanged("JCLPasscode"), "Summary Secure Print");
        drop({"JCLPasscode"});
    }

    void tellCovers() {
        const auto& front = job_.frontCover;
        const auto& back = job_.backCover;
        if (front && back && *front == *back) {
            add("Summary Covers", {coverWords(*front)});
        } else {
            if (front) {
                add("Summary Front Cover", {coverWords(*front)});
            }
            if (back) {
                add("Summary Back Cover", {coverWords(*back)});
            }
        }
        drop({"JCLCovers", "JCLMediaColor", "JCLMediaType", "JCLFrontBackMediaColor", "JCLFrontBackMediaType"});
    }

    std::string coverWords(const CoverInstruction& cover) const {
        const char* const sides = cover.print == CoverPrint::blank  ? "Summary Blank"
                                  : cover.print == CoverPrint::both ? "Summary Printed"
                                                                    : "Summary Printed on One Side";
        return list({text(sides), paperWords(cover.paper)});
    }

    /// What paper has that the job's has not, and its color and type.
    std::string paperWords(const Paper& paper) const {
        std::string all = list({paper.size == job_.paper.size ? "" : words("PageSize", paper.size),
                                words("MediaColor", paper.color), words("MediaType", paper.type)});
        for (const std::string& detail : paperDetailWords(paper, job_.paper, session_, texts_)) {
            all = list({all, detail});
        }
        return all;
    }

    void tellSpecialPages() {
        constexpr std::size_t kMostExceptions = 3;  // one by one; of more only the number matters to people
        add("Summary Insert", "Summary Inserts", job_.inserts.size());
        if (job_.exceptions.size() > kMostExceptions) {
            add("Summary Exceptions", {std::to_string(job_.exceptions.size())});
            return;
        }
        for (const ExceptionInstruction& exception : job_.exceptions) {
            const bool isPage = exception.pages.first == exception.pages.last;
            const int shade = exception.lightenDarken.value_or(0);
            const std::string parts =
                list({paperWords(exception.paper), exception.sides ? sidesWords(*exception.sides) : "",
                      shade == 0  ? ""
                      : shade < 0 ? text("Summary Lighter")
                                  : text("Summary Darker"),
                      exception.shift != ImageShift() ? text("Summary Moved") : ""});
            add(isPage ? "Summary Exception Page" : "Summary Exception Pages",
                {pagesOf(exception.pages), parts.empty() ? text("Summary Exception") : parts});
        }
    }

    std::string sidesWords(Sides sides) const {
        return words("Duplex", sides == Sides::one        ? "None"
                               : sides == Sides::longEdge ? "DuplexNoTumble"
                                                          : "DuplexTumble");
    }

    void tellImages() {
        tell({"Resolution", "TRImageQuality", "TREconomode", "JCLPrintQuality"});
        std::string colors;
        for (const ColorInstruction& color : job_.colors) {
            const auto* const row = std::ranges::find(kColors, color.name, &ColorRow::name);
            colors = list({colors, utf8Text(localized(texts_, CFStringMakeConstant(row->key), color.value).get())});
        }
        if (!colors.empty()) {
            add("Summary Colors", {colors});
        }
        addIf(job_.isNegative, "Summary Negative");
        addIf(job_.isMirrored, "Summary Mirrored");
        addIf(job_.isRotated, "Summary Rotated");
        if (const auto& mark = job_.watermark) {
            add("Summary Watermark", {list({mark->name, mark->isOnFirstPageOnly ? text("Summary First Page Only") : "",
                                            mark->isBehind ? text("Summary Behind the Page") : ""})});
        }
    }

    void tellRest() {
        for (const auto& changed : changed_) {
            tell(changed);
        }
        addIf(!job_.hasJobInstructions, "Summary No Job Instructions");
        addIf(job_.notes && !(job_.notes->bannerMessage + job_.notes->specialInstructions).empty(),
              "Summary Job Notes");
    }

    /// What becomes of it all. A fax has no sheets.
    void tellSheets() {
        const SheetPlan& plan = session_.plan(pageCount_);
        if (job_.kind == JobKind::fax || plan.sheets.empty()) {
            return;
        }
        lines_.push_back(ofCopies(pagesOnSheets(plan, texts_), job_.copies, texts_));
    }

    const PrintSession& session_;
    std::int64_t pageCount_;
    const JobInstructions& job_;
    const UsualSettings& usual_;
    Options changed_;  // not told yet
    CFBundleRef texts_;
    std::vector<std::string> lines_;
};

}  // namespace

std::vector<std::string> summarize(const PrintSession& session, std::int64_t pageCount, CFBundleRef texts) {
    return Summary(session, pageCount, texts).make();
}

std::string pagesOnSheets(const SheetPlan& plan, CFBundleRef texts) {
    const bool isPage = plan.pageCount == 1;
    // A banner page comes once, not with each copy.
    const bool showsBanner = !plan.sheets.empty() && plan.sheets.front().kind == SheetKind::banner;
    const std::size_t sheets = plan.sheets.size() - (showsBanner ? 1 : 0);
    const bool isSheet = sheets == 1;
    const char* const key = isPage && isSheet ? "Summary Page on Sheet"
                            : isPage          ? "Summary Page on Sheets"
                            : isSheet         ? "Summary Pages on Sheet"
                                              : "Summary Pages on Sheets";
    return utf8Text(
        localized(texts, CFStringMakeConstant(key), {std::to_string(plan.pageCount), std::to_string(sheets)}).get());
}

std::string ofCopies(const std::string& sheets, int copies, CFBundleRef texts) {
    return copies <= 1
               ? sheets
               : utf8Text(localized(texts, CFSTR("Summary Sheets of Copies"), {sheets, std::to_string(copies)}).get());
}
