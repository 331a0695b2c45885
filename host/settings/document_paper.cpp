#include "host/settings/document_paper.h"

#include "driver/job/job_ticket.h"
#include "driver/pages/document.h"
#include "host/settings/custom_paper.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <cmath>

namespace {

// Points. Programs write the sizes of paper in their own ways, up to a millimetre apart.
constexpr double kSamePaper = 3;
constexpr double kSameSide = 0.5;

Size upright(const Size& size) {
    return {std::min(size.width, size.height), std::max(size.width, size.height)};
}

bool isSame(const Size& page, const PMPaper& paper) {
    const Size sheet = upright({paper.width, paper.height});
    return std::abs(page.width - sheet.width) <= kSamePaper && std::abs(page.height - sheet.height) <= kSamePaper;
}

bool isWithin(const Size& page, const Size& sheet) {
    return page.width <= sheet.width + kSameSide && page.height <= sheet.height + kSameSide;
}

/// With what is installed.
bool isPrintable(const PrintSession& session, CFStringRef paper) {
    const JobTicket settings;
    CFMutableDictionaryRef pairs = nullptr;
    PMTicketGetPPDDict(settings.get(), kPMTopLevel, &pairs);
    CFDictionarySetValue(pairs, CFSTR("PageSize"), paper);
    CFArrayRef conflicts = nullptr;
    PMPrinterCopyConflicts(session.printer().get(), settings.get(), session.printerInfo(), &conflicts);
    return CFArrayGetCount(CFRef<CFArrayRef>::adopt(conflicts).get()) == 0;
}

template <typename Condition>
CFStringRef findPaper(const PrintSession& session, Condition condition) {
    const PMPrinter printer = session.printer().get();
    for (CFIndex i = 0; i < PMPrinterCountPapers(printer); ++i) {
        PMPaper paper{};
        PMPrinterGetIndPaper(printer, i, &paper);
        if (condition(paper)) {
            return paper.name;
        }
    }
    return nullptr;
}

}  // namespace

void followDocument(PrintSession* session, const Size& firstPage) {
    session->setFirstPage(firstPage);
    if (session->isPaperChosen() || !session->printer().queue().empty()) {
        return;
    }
    const Size page = upright(firstPage);
    PMPaper now{};
    PMPrinterGetPaper(session->printer().get(), makeString(session->choice(CFSTR("PageSize"))).get(), &now);
    if (isSame(page, now)) {
        return;  // PPDs have papers of one size for different edges
    }
    const CFStringRef paper =
        findPaper(*session, [&](const PMPaper& one) { return isSame(page, one) && isPrintable(*session, one.name); });
    if (paper != nullptr) {
        session->setChoice(CFSTR("PageSize"), paper);
        session->updatePaperRectangle();
    }
}

Size paperOf(const PrintSession& session) {
    PMPaper paper{};
    PMPrinterGetPaper(session.printer().get(), makeString(session.choice(CFSTR("PageSize"))).get(), &paper);
    return paper.width > 0 && paper.height > 0 ? Size{paper.width, paper.height} : kUsualPage;
}

bool hasPaperFor(const PrintSession& session, const Size& page) {
    const Size size = upright(page);
    const auto limits = customPaperLimits(session.printer());
    return (limits && isWithin(size, upright({limits->width.maximum, limits->length.maximum}))) ||
           findPaper(session, [&](const PMPaper& paper) {
               return isWithin(size, upright({paper.width, paper.height}));
           }) != nullptr;
}
