// The line of the dialog that tells of settings that cannot go together, or not with the document or the printer, and
// the button beside it that ends conflicts.
#pragma once

#include "host/dialog/dialog_controls.h"
#include "host/settings/conflicts.h"
#include "host/settings/left_out.h"

class ConflictLine {
public:
    /// For a document of so many pages, 0 when that is not known. The window and the bundle of its texts must outlive
    /// this.
    ConflictLine(WindowRef window, CFBundleRef texts, std::int64_t pageCount, JobWay way);

    /// Shows what is wrong with the session's settings, and what of them will not be in the job; nothing when all is
    /// well. What changed since the last time is what the user wants; the remedy changes something else.
    void show(const PrintSession& session);
    /// Another session follows.
    void forget();

    const ConflictReport& report() const { return report_; }

    /// Tells the user what is wrong, if anything is, and asks whether to print it all the same. When the answer is no,
    /// the button of the remedy has the keys.
    bool acceptConflicts() const;

private:
    using Choices = std::vector<std::pair<std::string, std::string>>;

    bool takeChanges(const PrintSession& session);
    void showReport() const;

    WindowRef window_;
    CFBundleRef texts_;
    std::int64_t pageCount_;
    JobWay way_;
    Choices choices_;  // of the PPD dictionary, as they were shown
    bool isSecret_ = false;
    std::vector<std::string> changed_;  // main keywords that changed last
    ConflictReport report_;
    std::vector<std::string> leftOut_;
};
