// The line of the dialog that tells of settings that cannot go together, or not with the document or the printer, and
// of what has changed by itself; beside it are the buttons that put it right.
#pragma once

#include "host/dialog/change_watch.h"
#include "host/dialog/conflict_marks.h"
#include "host/dialog/dialog_controls.h"
#include "host/settings/conflicts.h"
#include "host/settings/left_out.h"

#include <array>
#include <utility>

class ConflictLine {
public:
    /// For a document of so many pages, 0 when that is not known. The window and the bundle of its texts must outlive
    /// this.
    ConflictLine(WindowRef window, CFBundleRef texts, std::int64_t pageCount, JobWay way);

    void setPageCount(std::int64_t pageCount) { pageCount_ = pageCount; }
    /// The user has used a control of the window.
    void used(const ControlID& control) { changes_.used(control); }
    /// Looks what has changed by itself since the last time. To be called before the user does anything, too.
    void lookForChanges(const PrintSession& session);
    /// Shows that, what is wrong with the session's settings, and what of them will not be in the job; nothing when all
    /// is well. What changed since the last time is what the user wants; the remedy that is offered first changes
    /// something else.
    void show(const PrintSession& session);
    /// Another session follows.
    void forget();

    const ConflictReport& report() const { return report_; }

    /// Brings the user to the first conflict.
    void goToConflict() const;
    /// The changes that one of the two buttons stands for. The user wants them: what else they bring about is not told.
    std::vector<SettingChange> takeRemedy(HostControl button);
    /// What Undo goes back to.
    ChangeWatch::Before takeBackChange() { return changes_.takeBack(); }

    enum class Answer { goBack, print, printWithRemedy };
    /// Tells the user what is wrong, if anything is, and asks what to do. When it is to go back, the button of the
    /// remedy has the keys; the last answer means the remedy of the whole report.
    Answer askAboutConflicts() const;

private:
    bool takeChanges(const PrintSession& session);
    void showReport() const;
    void showButton(HostControl number, const std::vector<SettingChange>& changes) const;

    WindowRef window_;
    CFBundleRef texts_;
    std::int64_t pageCount_;
    JobWay way_;
    ConflictMarks marks_;
    ChangeWatch changes_;
    OptionsThen options_;                                    // as they were shown
    using JobThen = std::pair<std::uint64_t, std::int64_t>;  // of which instructions, and of how many pages
    JobThen job_;                                            // as they were shown
    bool isSecret_ = false;
    std::vector<std::string> changed_;  // main keywords that changed last
    ConflictReport report_;
    std::array<std::vector<SettingChange>, 2> remedies_;  // of the two buttons; empty for none
    std::vector<std::string> leftOut_;
    std::string told_;  // what has changed by itself
};
