#include "driver/job/prepare_job.h"

#include "driver/instructions/read_instructions.h"
#include "driver/instructions/read_paper.h"
#include "driver/instructions/ticket_values.h"
#include "driver/job/controller_instructions.h"
#include "driver/job/instruction_values.h"
#include "driver/job/output_color.h"
#include "driver/job/page_codes.h"
#include "driver/job/printer_abilities.h"
#include "platform/foundation/message.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr const char* kUniversalExit = "\x1B%-12345X";
/// Of the work: the pages come first, and take less time than their PostScript.
constexpr int kPercentOfPages = 30;

std::string choiceOf(PMTicketRef ticket, const char* mainKeyword) {
    return choiceOf(ticket, makeString(mainKeyword).get());
}

/// Instructions among commands, with the way back to PostScript.
std::string headerOf(const Instructions& instructions) {
    if (instructions.empty()) {
        return {};
    }
    std::string header = kUniversalExit;
    for (const auto& [name, value] : instructions) {
        header += instructionLine(name, value);
    }
    return header + "@PJL ENTER LANGUAGE=POSTSCRIPT\n";
}

std::size_t countSides(const SheetPlan& plan) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < plan.sheets.size(); ++i) {
        count += (plan.isSent(i, false) ? 1U : 0U) + (plan.isSent(i, true) ? 1U : 0U);
    }
    return count;
}

class JobMaker {
public:
    JobMaker(const JobSource& source, const PagesProgress& progress, PreparedJob* job)
        : source_(source),
          progress_(progress),
          abilities_(abilitiesOf(source.printer)),
          instructions_(readInstructions(source.printSettings, source.pageFormat)),
          plan_(planSheets(instructions_, std::ssize(source.pages.sizes))),
          usual_{choiceOf(source.printSettings, kLightnessKeyword), choiceOf(source.printSettings, kTrayKeyword),
                 slipTray(), instructions_.isNegative && abilities_.printsNegatives},
          job_(*job) {}

    bool make() {
        if (plan_.sheets.empty()) {
            return failForPages();
        }
        leaveToPrinter();
        job_.count = countSides(plan_);
        if (!needsPostScript()) {
            return makePDF(&job_.pages, 100);
        }
        PrivateFile pages;
        return makePDF(&pages, kPercentOfPages) && makePostScript(pages);
    }

    bool write(ByteSink& output) {
        if (plan_.sheets.empty()) {
            return failForPages();
        }
        layout_ = usualLayout();
        return makePDF(output, 100);
    }

private:
    /// Blank sheets need not go through the printer.
    [[nodiscard]] std::string slipTray() const {
        return instructions_.finishing.hasSlipSheets &&
                       isInstalled(source_.printer, source_.printerInfo, kTrayKeyword, kInserter)
                   ? kInserter
                   : "";
    }

    bool fail(const std::string& reason) {
        job_.fault = errorLine(source_.document, reason);
        return false;
    }

    bool failForPages() { return fail(messageText("has none of the pages that are chosen")); }

    [[nodiscard]] PageLayout usualLayout() const {
        return layoutOf(instructions_, source_.pages.sizes.at(static_cast<std::size_t>(plan_.firstPage)));
    }

    /// Chooses options of the PPD for what the printer does, and those that would do again what the pages have.
    void leaveToPrinter() {
        const PageLayout usual = usualLayout();
        layout_ = usual;
        layout_.isMirrored = usual.isMirrored && !abilities_.mirrors;
        layout_.isRotated = usual.isRotated && !abilities_.rotates;
        const auto choose = [&](bool isWanted, const char* keyword, const char* option) {
            if (isWanted) {
                job_.settings.choose(keyword, option);
            }
        };
        choose(usual.isMirrored && abilities_.mirrors, kMirrorKeyword, "True");
        choose(usual.isRotated && abilities_.rotates, kRotateKeyword, "True");
        choose(instructions_.isNegative && abilities_.printsNegatives, kNegativeKeyword, "True");
        choose(!choiceOf(job_.settings.get(), kCoversKeyword).empty(), kCoversKeyword, "None");
        for (const auto& [keyword, option] : finishingOptionsOf(instructions_.finishing.value)) {
            choose(hasOption(source_.printer, keyword, option), keyword.c_str(), option.c_str());
        }
        for (const ColorInstruction& color : instructions_.colors) {
            choose(hasOption(source_.printer, color), color.mainKeyword.c_str(), color.option.c_str());
        }
        chooseColorCorrection(source_.printer, instructions_.outputColor, job_.settings.get());
        // A booklet may have paper of its own. It is two-sided whatever the job is, and a fax is not.
        const Paper& paper = plan_.papers[plan_.sheets.front().paper];
        choose(!paper.size.empty(), "PageSize", paper.size.c_str());
        for (const auto& [keyword, option] : paperAttributes(paper)) {
            choose(!option.empty() && hasOption(source_.printer, keyword, option), keyword, option.c_str());
        }
        const Sides sides = plan_.sheets.front().sides;
        choose(sides != instructions_.sides, "Duplex", duplexOption(sides));
        if (const auto passcode = readSecrets(source_.printSettings).passcode) {
            job_.settings.set(kPMJobPasscodeKey, *passcode);
        }
    }

    /// A printer with a filter of its own gets pages only.
    bool needsPostScript() {
        if (PMPrinterReadsPostScript(source_.printer) == 0) {
            return false;
        }
        told_ = controllerInstructions(instructions_, plan_);
        const bool isMoreThanItsKind = told_.size() > 1;
        if (!needsController(instructions_, abilities_.finishes, hasOptions(source_.printer, instructions_.colors)) &&
            !(instructions_.hasJobInstructions && isMoreThanItsKind)) {
            told_.clear();
        }
        std::ranges::move(secretInstructions(readSecrets(source_.printSettings)), std::back_inserter(told_));
        const bool isUncollated = plan_.copies > 1 && !plan_.isCollated;  // which filters of PDF forget
        return !told_.empty() || !isUniform(plan_, usual_) || isUncollated;
    }

    bool makePDF(PrivateFile* pages, int percent) {
        if (!isKept(*pages)) {
            return failAsPlatformSays();
        }
        return makePDF(*pages, percent) || (isKept(*pages) ? false : failAsPlatformSays());
    }

    /// Without a fault when the output took no more.
    bool makePDF(ByteSink& output, int percent) {
        PagesOrder order{source_.content, source_.password, &plan_, layout_, {}, source_.faxCover, source_.mark};
        for (const Paper& paper : plan_.papers) {
            order.papers.push_back(shapeOf(source_.printer, paper));
        }
        std::string reason;
        const auto report = [&](int done) { return !progress_ || progress_(done * percent / 100); };
        return makePages(order, output, report, &reason) || (reason.empty() ? false : fail(reason));
    }

    bool makePostScript(const PrivateFile& pages) {
        if (!isKept(job_.pages)) {
            return failAsPlatformSays();
        }
        PageCodes codes;
        if (!isUniform(plan_, usual_)) {
            codes = pageCodesOf(plan_, source_.printer, usual_);
        }
        while (codes.count() < job_.count) {
            codes.add({});
        }
        const auto report = [&](std::size_t page) {
            constexpr int kRest = 100 - kPercentOfPages;
            return !progress_ || progress_(kPercentOfPages + static_cast<int>(kRest * (page - 1) / job_.count));
        };
        PostScriptEditor editor(headerOf(told_), codes, report, job_.pages);
        const OSStatus status =
            PMWritePostScript(pages.descriptor(), makeFileURL(source_.document).get(),
                              makeString(choiceOf(job_.settings.get(), "Resolution")).get(), &editor);
        if (!isKept(job_.pages) || status != noErr) {
            return failAsPlatformSays();
        }
        job_.arePostScript = true;
        return editor.finish() || fail(messageText("its PostScript has not all of its pages"));
    }

    bool failAsPlatformSays() {
        job_.fault = utf8Text(PMGetLastErrorText());
        return false;
    }

    const JobSource& source_;
    const PagesProgress& progress_;
    PrinterAbilities abilities_;
    JobInstructions instructions_;
    SheetPlan plan_;
    UsualChoices usual_;
    PageLayout layout_;
    Instructions told_;
    PreparedJob& job_;
};

}  // namespace

bool prepareJob(const JobSource& source, const PagesProgress& progress, PreparedJob* job) {
    return JobMaker(source, progress, job).make();
}

bool writePages(const JobSource& source, const PagesProgress& progress, ByteSink& output, std::string* fault) {
    PreparedJob job(source.printSettings);
    const bool isWritten = JobMaker(source, progress, &job).write(output);
    *fault = job.fault;
    return isWritten;
}
