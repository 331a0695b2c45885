#include "host/dialog/preview_job.h"

#include "driver/pages/document.h"
#include "driver/pages/stored_mark.h"
#include "host/job/cover_sheet.h"

namespace {

/// The document's pages live as long as it does, which is longer than the preview.
std::shared_ptr<const std::vector<Size>> lentPages(const Document& document) {
    return {std::shared_ptr<void>(), &document.pages.sizes};
}

}  // namespace

std::optional<SheetPlan> PreviewJob::update(const PrintSession& session) {
    const bool isOtherFile = openDocument();
    const bool hasMark = sheets_.mark.has_value() || mark_.has_value() || fax_.has_value();
    const auto marks = hasMark ? stampOfStore(MarkStore::watermarks) : std::nullopt;
    const bool isOtherStore = hasMark && marks != marks_;
    if (version_ == session.version() && !isOtherFile && !isOtherStore) {
        return std::nullopt;
    }
    if (isOtherStore) {
        mark_.reset();
        fax_.reset();
    }
    const JobInstructions& job = session.instructions();
    SheetPlan before = std::move(sheets_.plan);
    sheets_ = sheetsOfJob(job, session.plan(document_.pageCount), lentPages(document_), session.printer().get());
    version_ = session.version();
    drawMark();
    drawFaxCover(job);
    marks_ = mark_ || fax_ ? stampOfStore(MarkStore::watermarks) : std::nullopt;
    return before;
}

/// True when the file is another one than before.
bool PreviewJob::openDocument() {
    const auto file = stampOf(document_.content());
    if (isOpened_ && file == file_) {
        return false;
    }
    std::string reason;
    sources_.document = DrawnDocument::open(document_.content(), document_.password, &reason);
    file_ = file;
    isOpened_ = true;
    return true;
}

/// One that cannot be drawn is left out: when the job is made, its user is told why.
void PreviewJob::drawMark() {
    if (!sheets_.mark) {
        mark_.reset();
        sources_.mark = nullptr;
        return;
    }
    if (mark_ != sheets_.mark->name) {
        mark_ = sheets_.mark->name;
        std::string reason;
        sources_.mark = drawnWatermark(*sheets_.mark, &reason);
    }
    if (!sources_.mark) {
        sheets_.mark.reset();
    }
}

void PreviewJob::drawFaxCover(const JobInstructions& job) {
    if (!job.fax || !job.fax->coverSheet) {
        fax_.reset();
        sources_.faxCover = nullptr;
        return;
    }
    const std::pair asked{*job.fax, sheets_.plan.pageCount};
    std::string reason;
    if (fax_ != asked) {
        fax_ = asked;
        const CoverSheet cover = drawCoverSheet(*job.fax, sheets_.plan.pageCount + 1, texts_);
        sources_.faxCover = DrawnDocument::keep(bytesOf(cover.pdf.get()), &reason);
    }
    const auto pages = sources_.faxCover ? readDocument(sources_.faxCover->descriptor(), &reason) : std::nullopt;
    sheets_.faxCover = pages ? pages->sizes.front() : Size{};
}

PictureFinder PreviewJob::picturesIn(const PageDrawer& drawer) const {
    return [find = ::picturesIn(drawer, sources_), this](const PictureNeed& need) {
        if (need.what == PictureNeed::What::page && !sources_.document) {
            return PagePicture{nullptr, false, PageFault::isGone};
        }
        return find(need);
    };
}
