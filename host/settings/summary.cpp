#include "host/settings/summary.h"

#include "driver/instructions/read_instructions.h"
#include "host/script/text.h"
#include "host/settings/choice_words.h"
#include "host/settings/job_hold.h"
#include "host/settings/panel_choices.h"
#include "host/settings/paper_options.h"
#include "host/settings/setting_words.h"
#include "host/settings/texts.h"
#include "host/settings/ticket_items.h"
#include "platform/foundation/CFCollections.h"

#include <algorithm>
#include <initializer_list>

namespace {

/// Options of main keywords, in the order of the PPD.
using Options = std::vector<std::pair<std::string, std::string>>;

Options optionsOf(PMTicketRef printSettings) {
    CFMutableDictionaryRef pairs = nullptr;
    PMTicketGetPPDDict(printSettings, kPMTopLevel, &pairs);
    const auto count = static_cast<std::size_t>(CFDictionaryGetCount(pairs));
    std::vector<const void*> keys(count);
    std::vector<const void*> values(count);
    CFDictionaryGetKeysAndValues(pairs, keys.data(), values.data());
    Options options;
    for (std::size_t i = 0; i < count; ++i) {
        options.emplace_back(utf8(static_cast<CFStringRef>(keys[i])), utf8(static_cast<CFStringRef>(values[i])));
    }
    return options;
}

/// What a printer does when nobody chooses.
struct Usual {
    Options options;
    SInt32 copies;
    SInt32 orientation;
};

Usual usualOf(const Printer& printer) {
    PMTicketRef settings = 0;
    PMTicketRef format = 0;
    PMTicketCreate(nullptr, kPDE_PMPrintSettingsKey, &settings);
    PMTicketCreate(nullptr, kPDE_PMPageFormatKey, &format);
    PMPrinterWriteDefaultSettings(printer.get(), settings, format);
    Usual usual{optionsOf(settings), numberItem(settings, kPMCopiesKey, 1),
                numberItem(format, kPMOrientationKey, kPortrait)};
    PMTicketReleaseAndClear(&settings);
    PMTicketReleaseAndClear(&format);
    return usual;
}

class Summary {
public:
    Summary(const PrintSession& session, CFBundleRef texts)
        : session_(session),
          chosen_(readPanelChoices(session.printSettings())),
          usual_(usualOf(session.printer())),
          changed_(optionsOf(session.printSettings())),
          texts_(texts) {
        std::erase_if(changed_, [this](const auto& option) {
            return std::ranges::find(usual_.options, option) != usual_.options.end() || isBeginningOfPanel(option);
        });
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
        return std::move(lines_);
    }

private:
    // ---- Lines

    std::string text(const char* key) const { return utf8(localized(texts_, CFStringMakeConstant(key)).get()); }
    void add(const char* key) { lines_.push_back(text(key)); }
    void add(const char* key, const std::vector<std::string>& values) {
        lines_.push_back(utf8(localized(texts_, CFStringMakeConstant(key), values).get()));
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

    /// Words with commas between them; empty ones are left out.
    static std::string list(std::initializer_list<std::string> words) {
        std::string all;
        for (const std::string& word : words) {
            all += all.empty() || word.empty() ? word : ", " + word;
        }
        return all;
    }

    // ---- Options of the PPD, each told once

    /// Without a queue the panel of paper begins with plain paper, whatever the PPD's default
    /// (host/settings/panel_defaults.h).
    bool isBeginningOfPanel(const Options::value_type& option) const {
        constexpr SInt32 kPlain = 1;
        return session_.printer().queue().empty() && chosen_.paper.type == kPlain &&
               option == Options::value_type("MediaType", paperTypeOption(kPlain));
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
    }

    void tellPaper() {
        tell({"InputSlot", "MediaColor", "MediaType"});
        if (chosen_.paper.weight > 0) {
            add("Summary Paper Weight", {std::to_string(chosen_.paper.weight)});
        }
        if (chosen_.separators != PanelChoices::noSeparators && option("MediaType") == "Transparency") {
            const bool arePrinted = chosen_.separators == PanelChoices::printedSeparators;
            add("Summary Separators", {list({text(arePrinted ? "Summary Printed" : "Summary Blank"),
                                             words("MediaColor", paperColorOption(chosen_.separatorColor))})});
        }
    }

    /// A booklet is always printed on both sides, flipped on the short edge.
    void tellSides() {
        if (chosen_.isBooklet) {
            const std::string parts = list({words("PageSize", paperSizeOption(chosen_.bookletSize)),
                                            chosen_.hasOutlines ? text("Summary Outlines") : "",
                                            chosen_.isRightToLeft ? text("Summary Right to Left") : ""});
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

    void tellFinishing() {
        tell({"StapleLocation", "TRFoldOptions"});
        if (const std::string finishing = finishingWords(chosen_, texts_); !finishing.empty()) {
            add("Summary Finishing", {finishing});
        }
        addIf(chosen_.hasSlipSheets, "Summary Slip Sheets");
        if (chosen_.pagesPerSubset > 0) {
            add("Summary Offset Subsets", {std::to_string(chosen_.pagesPerSubset)});
        } else {
            addIf(chosen_.isOffset && !isChanged("Jog"), "Summary Offset");
        }
        tell({"Jog", "OutputBin"});
        addIf(chosen_.isBlackAndWhite, "Summary Black and White");
        if (chosen_.isBlackAndWhite || option("JCLColorCorrection") == "BlackWhite") {
            drop({"JCLColorCorrection"});  // the panel has the last word
        }
    }

    void tellJob() {
        switch (chosen_.jobType) {
            case PanelChoices::faxJob:
                addIf(chosen_.faxRecipientCount == 0, "Summary Fax to Nobody");
                add("Summary Fax to One", "Summary Fax to Many", chosen_.faxRecipientCount);
                addIf(chosen_.hasFaxCoverSheet, "Summary Fax Cover Sheet");
                break;
            case PanelChoices::delayedJob: {
                LongDateTime now = 0;
                GetDateTime(&now);
                const auto time =
                    chosen_.jobType == PanelChoices::delayedJob
                        ? std::optional(findPrintTime(
                              readInstructions(session_.printSettings(), session_.pageFormat()).printTime.value_or(0),
                              now))
                        : std::nullopt;
                add("Summary Print Time", {time ? timeOfDay(time->moment) : std::string()});
                break;
            }
            case PanelChoices::sampleSetJob:
                add("Summary Sample Set");
                break;
            case PanelChoices::savedJob:
                add("Summary Save");
                break;
            case PanelChoices::printedAndSavedJob:
                add("Summary Print and Save");
                break;
            default:
                break;
        }
        // The option is a secret itself.
        addIf(chosen_.jobType == PanelChoices::secureJob || isChanged("JCLPasscode"), "Summary Secure Print");
        drop({"JCLPasscode"});
    }

    /// An item that the panels leave says more than the options that go with it.
    void tellCovers() {
        const auto& front = chosen_.frontCover;
        const auto& back = chosen_.backCover;
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
        const std::string covers = option("JCLCovers");
        if (front || back || covers.empty() || covers == "None") {
            drop({"JCLCovers", "JCLMediaColor", "JCLMediaType", "JCLFrontBackMediaColor", "JCLFrontBackMediaType"});
        } else if (covers.ends_with("Back")) {
            drop({"JCLMediaColor", "JCLMediaType"});
        } else {
            drop({"JCLFrontBackMediaColor", "JCLFrontBackMediaType"});
        }
        tell({"JCLCovers", "JCLMediaColor", "JCLMediaType", "JCLFrontBackMediaColor", "JCLFrontBackMediaType"});
    }

    std::string coverWords(const PanelChoices::Cover& cover) const {
        const char* const sides = cover.sides == PanelChoices::blankSides  ? "Summary Blank"
                                  : cover.sides == PanelChoices::bothSides ? "Summary Printed"
                                                                           : "Summary Printed on One Side";
        return list({text(sides), paperWords(cover.paper)});
    }

    /// What paper has that the job's has not, and its color and type.
    std::string paperWords(const PanelChoices::Paper& paper) const {
        const std::string size = paperSizeOption(paper.size);
        return list({paper.size == PanelChoices::customSize ? text("Summary Custom Size")
                     : size == option("PageSize")           ? ""
                                                            : words("PageSize", size),
                     words("MediaColor", paperColorOption(paper.color)),
                     words("MediaType", paperTypeOption(paper.type))});
    }

    void tellSpecialPages() {
        add("Summary Insert", "Summary Inserts", chosen_.insertCount);
        if (chosen_.exceptionCount > chosen_.exceptions.size()) {
            add("Summary Exceptions", {std::to_string(chosen_.exceptionCount)});
            return;
        }
        for (const PanelChoices::Exception& exception : chosen_.exceptions) {
            const bool isPage = exception.firstPage == exception.lastPage;
            const std::string shade = exception.lightenDarken == 0  ? ""
                                      : exception.lightenDarken < 0 ? text("Summary Lighter")
                                                                    : text("Summary Darker");
            const std::string parts = list({paperWords(exception.paper), sidesWords(exception.duplex), shade,
                                            exception.isMoved ? text("Summary Moved") : ""});
            add(isPage ? "Summary Exception Page" : "Summary Exception Pages",
                {pagesOf(exception), parts.empty() ? text("Summary Exception") : parts});
        }
    }

    std::string sidesWords(SInt32 duplex) const {
        static constexpr const char* kSides[] = {"", "None", "DuplexNoTumble", "DuplexTumble"};
        return duplex < static_cast<SInt32>(std::size(kSides)) ? words("Duplex", kSides[duplex]) : std::string();
    }

    void tellImages() {
        tell({"Resolution", "TRImageQuality", "TREconomode", "JCLPrintQuality"});
        addIf(chosen_.isNegative, "Summary Negative");
        addIf(chosen_.isMirrored, "Summary Mirrored");
        addIf(chosen_.isRotated, "Summary Rotated");
        if (!chosen_.watermark.empty()) {
            add("Summary Watermark",
                {list({chosen_.watermark, chosen_.isWatermarkOnFirstPageOnly ? text("Summary First Page Only") : "",
                       chosen_.isWatermarkBehind ? text("Summary Behind the Page") : ""})});
        }
    }

    void tellRest() {
        for (const auto& changed : changed_) {
            tell(changed);
        }
        addIf(!chosen_.hasJobInstructions, "Summary No Job Instructions");
        addIf(chosen_.hasJobNotes, "Summary Job Notes");
    }

    const PrintSession& session_;
    PanelChoices chosen_;
    Usual usual_;
    Options changed_;  // not told yet
    CFBundleRef texts_;
    std::vector<std::string> lines_;
};

}  // namespace

std::vector<std::string> summarize(const PrintSession& session, CFBundleRef texts) {
    return Summary(session, texts).make();
}
