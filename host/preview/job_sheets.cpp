#include "host/preview/job_sheets.h"

#include "driver/job/printer_abilities.h"

JobSheets planJobSheets(const JobInstructions& instructions, std::shared_ptr<const std::vector<Size>> pages,
                        PMPrinter printer) {
    JobSheets job;
    job.plan = planSheets(instructions, std::ssize(*pages));
    const auto firstPage = static_cast<std::size_t>(job.plan.firstPage);
    job.layout = layoutOf(instructions, firstPage < pages->size() ? (*pages)[firstPage] : kUsualPage);
    job.pages = std::move(pages);
    for (const Paper& paper : job.plan.papers) {
        job.papers.push_back(shapeOf(printer, paper));
    }
    job.finishing = instructions.finishing;
    job.isNegative = instructions.isNegative && abilitiesOf(printer).printsNegatives;
    job.isBlackAndWhite = instructions.outputColor == OutputColor::blackAndWhite;
    job.mark = instructions.watermark;
    return job;
}
