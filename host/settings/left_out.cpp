#include "host/settings/left_out.h"

#include "host/script/text.h"
#include "host/settings/choice_words.h"
#include "host/settings/job_hold.h"
#include "host/settings/output_color.h"
#include "host/settings/panel_choices.h"
#include "host/settings/paper_options.h"
#include "host/settings/texts.h"

namespace {

constexpr const char* kFold = "BookletFoldOpt";
constexpr const char* kFoldAndStaple = "BookletFoldStapleOpt";

class Sentences {
public:
    Sentences(const PrintSession& session, JobWay way, CFBundleRef texts)
        : session_(session), chosen_(readPanelChoices(session.printSettings())), way_(way), texts_(texts) {}

    std::vector<std::string> make() {
        tellCovers();
        tellSpecialPages();
        tellBooklet();
        tellPaper();
        tellFinishing();
        tellImages();
        tellJob();
        return std::move(sentences_);
    }

private:
    /// Of the PPD; empty when the printer has no such setting.
    std::string option(const char* mainKeyword) const { return session_.choice(CFStringMakeConstant(mainKeyword)); }

    void add(const char* text) { sentences_.push_back(utf8(localized(texts_, CFStringMakeConstant(text)).get())); }
    void add(const char* text, const std::string& value) {
        sentences_.push_back(utf8(localized(texts_, CFStringMakeConstant(text), value).get()));
    }
    void add(const char* one, const char* many, std::size_t count) {
        if (count == 1) {
            add(one);
        } else if (count > 1) {
            add(many, std::to_string(count));
        }
    }

    /// Whether paper has a size that is not the job's.
    bool isOfAnotherSize(SInt32 paperSize) const {
        return paperSize != 0 && paperSizeOption(paperSize) != option("PageSize");
    }

    /// The printer is told one kind for both covers, and the paper of the front one.
    void tellCovers() {
        const auto& front = chosen_.frontCover;
        const auto& back = chosen_.backCover;
        const std::string covers = option("JCLCovers");
        const bool hasFront = front && !covers.empty() && covers != "None";
        const bool hasBack = hasFront && back && covers.ends_with("Back");
        if (front && !hasFront) {
            add(back ? "Left Out Covers" : "Left Out Front Cover");
        } else if (back && !hasBack) {
            add(front ? "Left Out Back Cover" : "Left Out Back Cover Alone");
        } else if (hasBack && *front != *back) {
            add("Left Out Difference of Covers");
        }
        if ((hasFront && isOfAnotherSize(front->paper.size)) || (hasBack && isOfAnotherSize(back->paper.size))) {
            add("Left Out Cover Size");
        }
        if ((hasFront && front->paper.hasDetails) || (hasBack && back->paper.hasDetails)) {
            add("Left Out Cover Paper Details");
        }
    }

    void tellSpecialPages() {
        add("Left Out Insert", "Left Out Inserts", chosen_.insertCount);
        if (chosen_.exceptionCount == 1) {
            const PanelChoices::Exception& exception = chosen_.exceptions.front();
            add(exception.firstPage == exception.lastPage ? "Left Out Exception Page" : "Left Out Exception Pages",
                pagesOf(exception));
        } else if (chosen_.exceptionCount > 1) {
            add("Left Out Exceptions", std::to_string(chosen_.exceptionCount));
        }
    }

    /// The pages are not put together; outlines and their order have no meaning then.
    void tellBooklet() {
        if (leavesOutFold(session_)) {
            add(session_.choice(kFoldKeyword) == kFoldAndStaple ? "Left Out Folded and Stapled Booklet"
                                                                : "Left Out Folded Booklet");
        } else if (chosen_.isBooklet) {
            add("Left Out Booklet");
        }
        if (isOfAnotherSize(chosen_.bookletSize)) {
            add("Left Out Booklet Size");
        }
    }

    void tellPaper() {
        if (chosen_.paper.hasDetails) {
            add("Left Out Paper Details");
        }
        if (chosen_.separators != PanelChoices::noSeparators && option("MediaType") == "Transparency") {
            add("Left Out Separators");
        }
    }

    void tellFinishing() {
        if (const std::string finishing = finishingWords(chosen_, texts_); !finishing.empty()) {
            add("Left Out Finishing", finishing);
        }
        if (chosen_.hasSlipSheets) {
            add("Left Out Slip Sheets");
        }
        if (chosen_.pagesPerSubset > 0) {
            add("Left Out Subsets");
        } else if (chosen_.isOffset && option("Jog") != "EndOfSet") {
            add("Left Out Offset");
        }
        if (chosen_.isBlackAndWhite && !offersBlackAndWhite(session_.choices())) {
            add("Left Out Black and White");
        }
    }

    void tellImages() {
        if (chosen_.isNegative) {
            add("Left Out Negative");
        }
        if (chosen_.isMirrored) {
            add("Left Out Mirror");
        }
        if (chosen_.isRotated) {
            add("Left Out Rotation");
        }
    }

    void tellJob() {
        switch (chosen_.jobType) {
            case PanelChoices::normalJob:
            case PanelChoices::secureJob:  // held by the printer, or not sent at all
                break;
            case PanelChoices::faxJob:
                tellFax();
                break;
            case PanelChoices::delayedJob:
                tellPrintTime();
                break;
            case PanelChoices::sampleSetJob:
                add("Left Out Sample Set");
                break;
            case PanelChoices::printedAndSavedJob:
                add("Left Out Saving");
                break;
            default:  // one that other editions of the panels know is printed, too
                add("Left Out Saving Only");
                break;
        }
        if (chosen_.hasJobNotes) {
            add("Left Out Job Notes");
        }
    }

    void tellFax() {
        if (chosen_.faxRecipientCount > 1) {
            add("Left Out Fax to Many", std::to_string(chosen_.faxRecipientCount));
        } else {
            add("Left Out Fax");
        }
    }

    void tellPrintTime() {
        LongDateTime now = 0;
        GetDateTime(&now);
        if (const auto time = readPrintTime(session_.printSettings(), now); time && way_ == JobWay::file) {
            add("Left Out Print Time", timeOfDay(time->moment));
        }
    }

    const PrintSession& session_;
    PanelChoices chosen_;
    JobWay way_;
    CFBundleRef texts_;
    std::vector<std::string> sentences_;
};

}  // namespace

bool leavesOutFold(const PrintSession& session) {
    const std::string fold = session.choice(kFoldKeyword);
    return (fold == kFold || fold == kFoldAndStaple) && readPanelChoices(session.printSettings()).isBooklet;
}

std::vector<std::string> tellLeftOut(const PrintSession& session, JobWay way, CFBundleRef texts) {
    return Sentences(session, way, texts).make();
}
