// A print session with its three tickets: what the dialog and the plug-in work on together.
#pragma once

#include "driver/instructions/read_instructions.h"
#include "driver/pages/sheet_geometry.h"
#include "driver/plan/sheet_plan.h"
#include "host/settings/ppd_choices.h"
#include "host/settings/printer.h"
#include "host/settings/settings_file.h"
#include "platform/printing/PMSession.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Orientations of the page, as the page format ticket counts them.
inline constexpr SInt32 kPortrait = 1;
inline constexpr SInt32 kReverseLandscape = 3;

inline constexpr SInt32 kMostCopies = 9999;

/// What a printer does when nobody chooses.
struct UsualSettings {
    std::vector<std::pair<std::string, std::string>> options;  // main keyword and option, in the order of the PPD
    SInt32 copies;
    SInt32 orientation;
    CFRef<CFDictionaryRef> pageOptions;  // null for none
};

/// The tickets begin as copies of the settings, completed by what the printer does by default, so nothing that happens
/// here reaches the settings that they were made from. The getters read an item of a wrong kind, or a number out of
/// range, as missing.
class PrintSession {
public:
    /// `installedOptions` (main keyword to option keyword) may be null: the printer's own.
    PrintSession(const Printer& printer, const JobSettings& settings, CFDictionaryRef installedOptions,
                 const std::string& jobName);
    ~PrintSession();
    PrintSession(const PrintSession&) = delete;
    PrintSession& operator=(const PrintSession&) = delete;

    PMPrintSession get() const { return session_; }
    const Printer& printer() const { return printer_; }
    PMTicketRef printSettings() const { return printSettings_; }
    PMTicketRef pageFormat() const { return pageFormat_; }
    PMTicketRef printerInfo() const { return printerInfo_; }
    const PPDChoices& choices() const { return *choices_; }
    /// What the settings chose and the printer does not offer, as "keyword=option": its default stands instead.
    const std::vector<std::string>& choicesNotOffered() const { return choicesNotOffered_; }

    /// Whether the settings say which paper the job is on; else it is the printer's default, or the document's.
    bool isPaperChosen() const { return isPaperChosen_; }
    /// Of the document, as a reader sees it; nothing as long as no document is known.
    const std::optional<Size>& firstPage() const { return firstPage_; }
    void setFirstPage(const Size& size) { firstPage_ = size; }

    /// What the job is called.
    void setJobName(const std::string& name);

    const UsualSettings& usual() const;

    /// The tickets as they are now.
    JobSettings copySettings() const;
    /// What they ask for. Lent: other instructions take their place with the next call.
    const JobInstructions& instructions() const;
    /// Another number than before when the instructions, as they were when last asked for, are others.
    std::uint64_t version() const { return reader_.version(); }
    /// The sheets that the instructions, as they were when last asked for, make of a document of so many pages. Lent
    /// like them; takes time that grows with the document when they, or the number, are others than the last time.
    const SheetPlan& plan(std::int64_t pageCount) const;

    SInt32 copies() const;  // 1 to kMostCopies
    void setCopies(SInt32 copies);
    /// The pages to print ("1-3,7"); empty for all.
    std::string pageRange() const;
    void setPageRange(const std::string& range);
    SInt32 orientation() const;
    void setOrientation(SInt32 orientation);
    /// Changes how the pages lie on their sheets, and which they are: what the page options hold.
    void changePages(const std::function<void(JobInstructions& job)>& change);
    /// The chosen option of a PPD main keyword; empty when none is.
    std::string choice(CFStringRef mainKeyword) const;
    void setChoice(CFStringRef mainKeyword, CFStringRef option);

    /// Writes the rectangle of the chosen paper size into the page format ticket. A size that the printer does not have
    /// leaves it as it is.
    void updatePaperRectangle();

private:
    void dropChoicesNotOffered();

    Printer printer_;
    PMPrintSession session_ = nullptr;
    PMTicketRef printSettings_ = 0;
    PMTicketRef pageFormat_ = 0;
    PMTicketRef printerInfo_ = 0;
    std::optional<PPDChoices> choices_;
    std::vector<std::string> choicesNotOffered_;
    bool isPaperChosen_ = false;
    std::optional<Size> firstPage_;

    struct Planned {
        std::uint64_t version;
        std::int64_t pageCount;
        SheetPlan plan;
    };
    mutable std::optional<UsualSettings> usual_;  // read when it is first asked for
    mutable InstructionsReader reader_;
    mutable std::optional<Planned> planned_;
};
