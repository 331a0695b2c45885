#include "host/settings/left_out.h"

#include "driver/job/controller_instructions.h"
#include "driver/job/output_color.h"
#include "driver/job/page_codes.h"
#include "driver/job/printer_abilities.h"
#include "host/settings/document_paper.h"
#include "host/settings/job_hold.h"
#include "host/settings/texts.h"
#include "platform/foundation/text.h"
#include "platform/printing/PMPrinter.h"

#include <algorithm>
#include <array>
#include <set>

namespace {

struct NoteRow {
    PlanNote::Kind kind;
    const char* text;
    const char* textOfMany;  // null when it says the same of many
};
constexpr std::array kNotes{
    NoteRow{PlanNote::Kind::noPages, "Sheets No Pages", nullptr},
    NoteRow{PlanNote::Kind::tooManySheets, "Sheets Too Many Sheets", nullptr},
    NoteRow{PlanNote::Kind::specialPagesInFax, "Sheets Special Pages in Fax", nullptr},
    NoteRow{PlanNote::Kind::insertBeyondDocument, "Sheets Insert Beyond", "Sheets Inserts Beyond"},
    NoteRow{PlanNote::Kind::insertNotPrinted, "Sheets Insert Not Printed", "Sheets Inserts Not Printed"},
    NoteRow{PlanNote::Kind::insertBesideCover, "Sheets Insert Beside Cover", nullptr},
    NoteRow{PlanNote::Kind::exceptionBeyondDocument, "Sheets Exception Beyond", "Sheets Exceptions Beyond"},
    NoteRow{PlanNote::Kind::exceptionOnCover, "Sheets Exception on Cover", nullptr},
    NoteRow{PlanNote::Kind::coverWithoutPages, "Sheets Cover without Pages", nullptr},
    NoteRow{PlanNote::Kind::insertInBooklet, "Sheets Inserts in Booklet", nullptr},
    NoteRow{PlanNote::Kind::exceptionInBooklet, "Sheets Exceptions in Booklet", nullptr},
    NoteRow{PlanNote::Kind::coversDifferInBooklet, "Sheets Covers Differ in Booklet", nullptr},
    NoteRow{PlanNote::Kind::separatorsInBooklet, "Sheets Separators in Booklet", nullptr},
    NoteRow{PlanNote::Kind::slipSheetsInBooklet, "Sheets Slip Sheets in Booklet", nullptr},
    NoteRow{PlanNote::Kind::subsetsInBooklet, "Sheets Subsets in Booklet", nullptr},
    NoteRow{PlanNote::Kind::numberUpInBooklet, "Sheets Pages per Sheet in Booklet", nullptr},
    NoteRow{PlanNote::Kind::separatorsUncollated, "Sheets Separators Uncollated", nullptr},
    NoteRow{PlanNote::Kind::slipSheetsUncollated, "Sheets Slip Sheets Uncollated", nullptr},
    NoteRow{PlanNote::Kind::subsetsUncollated, "Sheets Subsets Uncollated", nullptr},
};

class Sentences {
public:
    Sentences(const PrintSession& session, std::int64_t pageCount, JobWay way, CFBundleRef texts)
        : session_(session),
          job_(session.instructions()),
          printer_(abilitiesOf(session.printer().get())),
          pageCount_(pageCount),
          way_(way),
          texts_(texts) {}

    std::vector<std::string> make() {
        if (pageCount_ > 0) {
            const SheetPlan& plan = session_.plan(pageCount_);
            std::ranges::for_each(plan.notes, [this](const PlanNote& note) { tellNote(note); });
            if (way_ == JobWay::pdf) {
                tellColors();
                return std::move(sentences_);
            }
            tellPapers(plan);
            if (!isUniform(plan, {}) && !readsPostScript()) {
                add("Left Out Other Papers");
            }
            tellShrinking();
        }
        if (job_.isNegative && !printer_.printsNegatives) {
            add("Left Out Negative");
        }
        if (job_.outputColor == OutputColor::blackAndWhite && !offersBlackAndWhite(session_.printer().get())) {
            add("Left Out Black and White");
        }
        if (const char* const text = controllersShare(); text != nullptr && !readsPostScript()) {
            add(text);
        }
        if (job_.notes && !job_.notes->bannerMessage.empty() && !job_.hasBanner) {
            add("Left Out Banner Message");
        }
        tellPrintTime();
        return std::move(sentences_);
    }

private:
    void add(const char* text, const std::vector<std::string>& values = {}) {
        sentences_.push_back(utf8Text(localized(texts_, CFStringMakeConstant(text), values).get()));
    }

    void tellNote(const PlanNote& note) {
        const auto* const row = std::ranges::find(kNotes, note.kind, &NoteRow::kind);
        const bool isOfMany = note.count > 1 && row->textOfMany != nullptr;
        add(isOfMany ? row->textOfMany : row->text,
            {std::to_string(note.page), std::to_string(pageCount_), std::to_string(note.count)});
    }

    void tellColors() {
        if (job_.isNegative || job_.outputColor == OutputColor::blackAndWhite || !job_.colors.empty()) {
            add("Left Out Colors of PDF");
        }
    }

    /// Other settings' papers, or other printers'.
    void tellPapers(const SheetPlan& plan) {
        std::set<std::string> missing;
        for (const Paper& paper : plan.papers) {
            for (const auto& [keyword, option] :
                 {std::pair{"PageSize", &paper.size}, {"MediaType", &paper.type}, {"MediaColor", &paper.color}}) {
                if (!option->empty() && !hasOption(session_.printer().get(), keyword, *option)) {
                    missing.insert(*option);
                }
            }
        }
        for (const std::string& option : missing) {
            add("Left Out Paper", {option});
        }
    }

    /// What the user could only change by another printer. Smaller paper than there is was chosen.
    void tellShrinking() {
        const bool isSingle = job_.numberUp <= 1 && !job_.booklet;
        const bool isShrunk = isSingle && job_.scaling.kind == Scaling::Kind::shrink;
        if (isShrunk && session_.firstPage() && !hasPaperFor(session_, *session_.firstPage())) {
            add("Left Out Page Size");
        }
    }

    /// Asks the print system which filters there are: after what else has to be.
    bool readsPostScript() const { return PMPrinterReadsPostScript(session_.printer().get()) != 0; }

    /// The text about what stands in the instructions for the printer's controller, which a printer without PostScript
    /// does not get; null when nothing does.
    const char* controllersShare() const {
        switch (job_.kind) {
            case JobKind::fax:
                return "Left Out Fax";
            case JobKind::sampleSet:
                return "Left Out Sample Set";
            case JobKind::printAndSave:
                return "Left Out Saving";
            case JobKind::save:
                return "Left Out Saving Only";
            default:
                return needsController(job_, printer_.finishes, hasOptions(session_.printer().get(), job_.colors))
                           ? "Left Out Instructions"
                           : nullptr;
        }
    }

    void tellPrintTime() {
        if (job_.printTime && way_ == JobWay::file) {
            LongDateTime now = 0;
            GetDateTime(&now);
            add("Left Out Print Time", {timeOfDay(findPrintTime(*job_.printTime, now).moment)});
        }
    }

    const PrintSession& session_;
    const JobInstructions& job_;
    PrinterAbilities printer_;
    std::int64_t pageCount_;
    JobWay way_;
    CFBundleRef texts_;
    std::vector<std::string> sentences_;
};

}  // namespace

std::vector<std::string> tellLeftOut(const PrintSession& session, std::int64_t pageCount, JobWay way,
                                     CFBundleRef texts) {
    return Sentences(session, pageCount, way, texts).make();
}
