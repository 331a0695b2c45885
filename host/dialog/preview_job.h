// The job that the preview shows: its sheets, and where their pictures come from.
#pragma once

#include "host/job/document.h"
#include "host/preview/page_sources.h"
#include "host/settings/print_session.h"
#include "platform/files/file_stamp.h"

#include <memory>
#include <optional>
#include <utility>

class PreviewJob {
public:
    /// The document and the bundle of texts must outlive this.
    PreviewJob(const Document& document, CFBundleRef texts) : document_(document), texts_(texts) {}

    /// Makes the sheets anew when the session's instructions, the document's file or the watermark are others than the
    /// last time, and costs next to nothing otherwise. The instructions are those that the session was last asked for.
    /// The plan of before when there is something new.
    std::optional<SheetPlan> update(const PrintSession& session);
    /// Another session follows.
    void forget() { version_.reset(); }

    const JobSheets& sheets() const { return sheets_; }
    const PageSources& sources() const { return sources_; }
    /// A drawer's pictures, or why there is none. Both stay as long as it is asked.
    PictureFinder picturesIn(const PageDrawer& drawer) const;

private:
    bool openDocument();
    void drawMark();
    void drawFaxCover(const JobInstructions& job);

    const Document& document_;
    CFBundleRef texts_;
    JobSheets sheets_;
    PageSources sources_;
    std::optional<std::uint64_t> version_;  // of the instructions
    std::optional<FileStamp> file_;         // of the document
    bool isOpened_ = false;
    std::optional<FileStamp> marks_;                              // of the store
    std::optional<std::string> mark_;                             // by its name, as it was drawn
    std::optional<std::pair<FaxInstruction, std::int64_t>> fax_;  // whose cover sheet is drawn, and its pages
};
