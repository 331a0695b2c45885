#include "host/preview/job_sheets.h"

#include <algorithm>

bool JobSheets::isFinished(const Sheet& sheet) const {
    return sheet.kind != SheetKind::slipSheet && sheet.kind != SheetKind::faxCover && sheet.kind != SheetKind::banner;
}

bool JobSheets::isHalfSheet(const Sheet& sheet) const {
    const auto areaOf = [](const PaperShape& paper) { return paper.size.width * paper.size.height; };
    const auto [smallest, largest] = std::ranges::minmax_element(papers, {}, areaOf);
    return areaOf(*smallest) == areaOf(*largest) || areaOf(papers[sheet.paper]) > areaOf(*smallest);
}

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
    job.tones = tonesOf(instructions, printer);
    job.mark = instructions.watermark;
    return job;
}
