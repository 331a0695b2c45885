// The line of the dialog that tells of settings that cannot go together, and the button beside it that ends that.
#pragma once

#include "host/dialog/dialog_controls.h"
#include "host/settings/conflicts.h"

class ConflictLine {
public:
    /// The window and the bundle of its texts must outlive this.
    ConflictLine(WindowRef window, CFBundleRef texts);

    /// Shows what is wrong with the session's settings, nothing when they go together. What changed since the last time
    /// is what the user wants; the remedy changes something else.
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
    Choices choices_;  // of the PPD dictionary, as they were shown
    bool isSecret_ = false;
    std::vector<std::string> changed_;  // main keywords that changed last
    ConflictReport report_;
};
