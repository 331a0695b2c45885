#include "driver/job/controller_instructions.h"

#include "driver/job/instruction_values.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

namespace {

struct KindRow {
    JobKind kind;
    const char* name;
    const char* disposition;  // null for a job that is not kept
};
constexpr std::array kKinds{
    // kind, name, disposition
    KindRow{JobKind::print, "print", nullptr},     KindRow{JobKind::save, "save", "save-only"},
    KindRow{JobKind::fax, "fax", nullptr},         KindRow{JobKind::printAndSave, "print-and-save", "print-save"},
    KindRow{JobKind::secure, "secure", nullptr},   KindRow{JobKind::sampleSet, "sample-set", nullptr},
    KindRow{JobKind::delayed, "delayed", nullptr},
};

// The items of the fax dialog's menus, from 1.
constexpr std::array kFaxSpeeds{"4800", "14400", "33600"};
constexpr std::array kFaxResolutions{"200x100dpi", "200x200dpi", "400x400dpi"};

template <std::size_t count>
std::string item(const std::array<const char*, count>& menu, int number) {
    return number >= 1 && static_cast<std::size_t>(number) <= count ? menu[static_cast<std::size_t>(number) - 1] : "";
}

/// Points, to the right, in hundredths of a millimetre.
std::string shiftText(double points) {
    return std::to_string(std::lround(points * 2540 / 72));
}

/// What the options of a printer call nothing.
bool isNothing(const std::string& option) {
    return option.empty() || option == "None" || option == "Auto";
}

/// Whether the options of the PPD say all of it.
bool isPlain(Paper paper) {
    paper.size.clear();
    paper.color.clear();
    paper.type.clear();
    return paper == Paper{};
}

class Writer {
public:
    Writer(const JobInstructions& job, const SheetPlan& plan) : job_(job), plan_(plan) {
        for (const Sheet& sheet : plan.sheets) {
            sheets_.push_back(&sheet);
        }
        if (job.isReversed && job.kind != JobKind::fax) {
            std::ranges::reverse(sheets_);
        }
    }

    Instructions write() {
        writeKind();
        writeFax();
        writeNotes();
        writeSets();
        writeFinishing();
        writePaper();
        writeCovers();
        writeInserts();
        writeExceptions();
        writeImages();
        return std::move(all_);
    }

private:
    void add(const char* name, const std::string& value) {
        if (!value.empty()) {
            all_.emplace_back(name, value);
        }
    }
    void addIf(bool condition, const char* name) { add(name, condition ? "true" : ""); }
    void add(Instructions members) {
        all_.insert(all_.end(), std::move_iterator(members.begin()), std::move_iterator(members.end()));
    }

    void writeKind() {
        const auto* const row = std::ranges::find(kKinds, job_.kind, &KindRow::kind);
        add("tavro-job-kind", row->name);
        add("job-save-disposition", row->disposition != nullptr ? row->disposition : "");
        add("proof-print-copies", job_.kind == JobKind::sampleSet ? "1" : "");
        if (job_.printTime.value_or(0) != 0) {
            add("job-hold-until-time", momentText(*job_.printTime));
        }
    }

    void writeFax() {
        if (!job_.fax) {
            return;
        }
        const FaxInstruction& fax = *job_.fax;
        for (const FaxRecipientInstruction& recipient : fax.recipients) {
            Instructions members{{"number", recipient.number}};
            const auto addMember = [&members](const char* name, const std::string& value) {
                if (!value.empty()) {
                    members.emplace_back(name, value);
                }
            };
            addMember("name", recipient.name);
            addMember("organization", recipient.organization);
            addMember("mailbox", recipient.mailbox);
            add("fax-destination", collectionOf(members));
        }
        add("fax-send-time", fax.sendTime ? momentText(*fax.sendTime) : "");
        add("fax-speed", item(kFaxSpeeds, fax.speed));
        add("fax-resolution", item(kFaxResolutions, fax.resolution));
        add("confirmation-sheet-print", fax.hasConfirmation ? "true" : "false");
        addIf(fax.coverSheet.has_value(), "fax-cover-sheet");
    }

    void writeNotes() {
        if (job_.notes) {
            add("job-name", job_.notes->jobName);
            add("tavro-job-sender", job_.notes->sender);
            add("job-recipient-name", job_.notes->recipient);
            add("job-sheet-message", job_.notes->bannerMessage);
            add("job-message-to-operator", job_.notes->specialInstructions);
        }
    }

    void writeSets() {
        if (plan_.copies > 1) {
            add("copies", std::to_string(plan_.copies));
            add("multiple-document-handling",
                plan_.isCollated ? "separate-documents-collated-copies" : "separate-documents-uncollated-copies");
        }
        const auto body = find(SheetKind::document);
        add("sides", body == sheets_.end() || (*body)->sides == Sides::one ? "" : sidesText((*body)->sides));
    }

    void writeFinishing() {
        const FinishingInstruction& finishing = job_.finishing;
        for (const std::string& name : finishingsOf(finishing.value)) {
            add("finishings", name);
        }
        add("tavro-custom-finishing", finishing.custom);
        add("tavro-staples", isNothing(finishing.staples) ? "" : finishing.staples);
        add("tavro-folds", isNothing(finishing.folds) ? "" : finishing.folds);
        add("output-bin", isNothing(finishing.outputTray) ? "" : finishing.outputTray);
        add("separator-sheets-type", find(SheetKind::slipSheet) != sheets_.end() ? "slip-sheets" : "");
        const bool hasSubsets = finishing.offset == Offset::subsets;
        if (hasSubsets ? areSubsetsTogether() : finishing.offset == Offset::sets) {
            add("tavro-offset", hasSubsets ? "subsets" : "sets");
            add("tavro-pages-in-subset", hasSubsets ? std::to_string(finishing.pagesPerSubset) : "");
        }
        if (job_.booklet) {
            add("imposition-template", "signature");
            add("tavro-booklet-order", job_.booklet->isRightToLeft ? "right-to-left" : "left-to-right");
            add("tavro-booklet-size", job_.booklet->paperSize);
            addIf(job_.booklet->hasOutlines, "tavro-booklet-outlines");
        }
    }

    /// Where the pages of a subset lie together in each set, and are pages.
    [[nodiscard]] bool areSubsetsTogether() const {
        return !job_.booklet && !job_.fax && (plan_.copies == 1 || plan_.isCollated);
    }

    void writePaper() {
        if (!isPlain(job_.paper)) {
            add(paperMembers(job_.paper));
        }
        if (find(SheetKind::separator) != sheets_.end()) {
            add("tavro-separators", job_.separators == Separators::printed ? "printed" : "blank");
            add("tavro-separator-color", job_.separatorColor);
        }
    }

    // ---- What lies in the stack, as it came out of all wishes together

    using SheetIterator = std::vector<const Sheet*>::const_iterator;
    /// The first of its kind.
    [[nodiscard]] SheetIterator find(SheetKind kind) const {
        return std::ranges::find_if(sheets_, [kind](const Sheet* sheet) { return sheet->kind == kind; });
    }

    void writeCovers() {
        const auto front = find(SheetKind::cover);
        if (front == sheets_.end()) {
            return;
        }
        const Sheet* const back = *std::find_if(sheets_.rbegin(), sheets_.rend(),
                                                [](const Sheet* sheet) { return sheet->kind == SheetKind::cover; });
        if (job_.frontCover) {
            writeCover("cover-front-", **front);
        }
        if (job_.backCover && job_.booklet) {  // both are one sheet
            writeCover("cover-back-", **front);
        } else if (job_.backCover && (!job_.frontCover || back != *front)) {
            writeCover("cover-back-", *back);
        }
    }

    void writeCover(const std::string& prefix, const Sheet& sheet) {
        const bool isFront = !plan_.isBlank(sheet.side1);
        const bool isBack = !plan_.isBlank(sheet.side2);
        add((prefix + "type").c_str(), isFront && isBack ? "print-both"
                                       : isFront         ? "print-front"
                                       : isBack          ? "print-back"
                                                         : "print-none");
        add(paperMembers(plan_.papers[sheet.paper], prefix));
    }

    /// Sheets of one paper that lie together are one instruction.
    void writeInserts() {
        std::int32_t page = 0;
        for (std::size_t i = 0; i < sheets_.size(); ++i) {
            const Sheet& sheet = *sheets_[i];
            if (sheet.kind != SheetKind::insert) {
                for (const SheetSide& side : {sheet.side1, sheet.side2}) {
                    for (const std::int32_t cell : plan_.cellsOf(side)) {
                        page = std::max(page, cell + 1);
                    }
                }
                continue;
            }
            std::size_t count = 1;
            for (; i + 1 < sheets_.size() && sheets_[i + 1]->kind == SheetKind::insert &&
                   sheets_[i + 1]->paper == sheet.paper;
                 ++i) {
                ++count;
            }
            Instructions members{{"insert-after-page", std::to_string(page)}, {"insert-count", std::to_string(count)}};
            std::ranges::move(paperMembers(plan_.papers[sheet.paper]), std::back_inserter(members));
            add("insert-sheet", collectionOf(members));
        }
    }

    void writeExceptions() {
        if (job_.booklet || job_.fax) {
            return;  // has none
        }
        const auto last = std::ranges::max_element(plan_.cells);
        const std::int64_t lastPage = last == plan_.cells.end() ? 0 : *last + 1;
        for (const ExceptionInstruction& exception : job_.exceptions) {
            if (exception.pages.first > lastPage) {
                continue;
            }
            Instructions members{{"pages", std::to_string(exception.pages.first) + "-" +
                                               std::to_string(std::min(exception.pages.last, lastPage))}};
            std::ranges::move(paperMembers(exception.paper), std::back_inserter(members));
            if (exception.sides) {
                members.emplace_back("sides", sidesText(*exception.sides));
            }
            if (exception.shift != ImageShift()) {
                members.emplace_back("x-side1-image-shift", shiftText(-exception.shift.side1));
                members.emplace_back("x-side2-image-shift", shiftText(exception.shift.side2));
            }
            if (exception.lightenDarken) {
                members.emplace_back("tavro-lighten-darken", std::to_string(*exception.lightenDarken));
            }
            add("overrides", collectionOf(members));
        }
    }

    void writeImages() {
        addIf(job_.isNegative, "tavro-negative");
        addIf(job_.isMirrored, "tavro-mirror");
        add("tavro-rotate", job_.isRotated ? "180" : "");
        add("tavro-watermark", job_.watermark ? job_.watermark->name : "");
        for (const ColorInstruction& color : job_.colors) {
            add(color.name.c_str(), color.value);
        }
        add("print-color-mode", job_.outputColor == OutputColor::blackAndWhite ? "monochrome" : "");
    }

    const JobInstructions& job_;
    const SheetPlan& plan_;
    std::vector<const Sheet*> sheets_;  // in the order in which they are read
    Instructions all_;
};

}  // namespace

Instructions controllerInstructions(const JobInstructions& job, const SheetPlan& plan) {
    return Writer(job, plan).write();
}

Instructions secretInstructions(const JobSecrets& secrets) {
    Instructions all;
    for (const auto& [name, value] :
         {std::pair{"fax-dialing-prefix", &secrets.dialingPrefix}, {"fax-credit-card", &secrets.creditCard}}) {
        if (!value->empty()) {
            all.emplace_back(name, *value);
        }
    }
    return all;
}

bool needsController(const JobInstructions& job, bool finishesByOptions, bool hasColorOptions) {
    constexpr int kNoFinishing = 1;
    const bool isDoneByController = job.kind == JobKind::fax || job.kind == JobKind::save ||
                                    job.kind == JobKind::printAndSave || job.kind == JobKind::sampleSet;
    const FinishingInstruction& finishing = job.finishing;
    const bool hasFinishing =
        !finishesByOptions && finishing.value > kNoFinishing && !finishingsOf(finishing.value).empty();
    return isDoneByController || hasFinishing || finishing.offset != Offset::none || job.notes.has_value() ||
           (!hasColorOptions && !job.colors.empty());
}
