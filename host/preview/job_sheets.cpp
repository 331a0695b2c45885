#include "host/preview/job_sheets.h"

#include "driver/job/printer_abilities.h"

JobSheets sheetsOfJob(const JobInstructions& instructions, SheetPlan plan,
                      std::shared_ptr<const std::vector<Size>> pages, PMPrinter printer) {
    JobSheets job;
    job.plan = std::move(plan);
    const auto firstPage = static_cast<std::size_t>(job.plan.firstPage);
    job.layout = layoutOf(instructions, firstPage < pages->size() ? (*pages)[firstPage] : kUsualPage);
    job.pages = std::move(pages);
    if (job.plan.hasBanner) {
        Sheet banner;
        banner.kind = SheetKind::banner;
        job.plan.sheets.insert(job.plan.sheets.begin(), banner);
        job.notes = instructions.notes.value_or(JobNotesInstruction());
    }
    for (const Paper& paper : job.plan.papers) {
        job.papers.push_back(shapeOf(printer, paper));
    }
    job.finishing = instructions.finishing;
    job.isNegative = instructions.isNegative && abilitiesOf(printer).printsNegatives;
    job.isBlackAndWhite = instructions.outputColor == OutputColor::blackAndWhite;
    job.mark = instructions.watermark;
    return job;
}
    job.tones = tonesOf(instructions.colors, printer);
