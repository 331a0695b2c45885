// What a PPD file says, as plain values. The only way into the CUPS PPD functions.
#pragma once

#include "platform/foundation/CFBase.h"

#include "platform/printing/option_list.h"

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// One option of a main keyword. Keywords are the PPD's own bytes, titles UTF-8.
struct PPDChoice {
    std::string keyword;
    std::string title;
    bool marked;             // chosen when nothing else is asked for
    std::string code;        // as the PPD has it
    bool isNothing = false;  // of what may be installed: nothing is. "False" may also be "Two Trays"
};

struct PPDOption {
    std::string keyword;
    std::string title;
    UInt32 type;  // kPPDUIBoolean, kPPDUIPickOne, kPPDUIPickMany
    bool installable;
    std::vector<PPDChoice> choices;
    std::optional<std::size_t> defaultChoice;  // position of the *Default... of the PPD; none when it names none
    bool hasSecretCustom = false;              // its custom choice takes a passcode or password
    bool hasTextCustom = false;                // or any other text
    bool hasNumberCustom = false;              // or one whole number
    bool isCommand = false;                    // its code is one of the printer's commands, not PostScript

    /// The position of a choice, in upper or lower case; none when the option has no such choice.
    [[nodiscard]] std::optional<std::size_t> findChoice(std::string_view choice) const;
};

/// A paper size in points, origin at the lower left corner.
struct PPDPaper {
    std::string keyword;
    std::string title;
    double width, height;
    double left, bottom, right, top;
};

/// Points.
struct PPDCustomSizes {
    float minWidth, minHeight, maxWidth, maxHeight;
    float left, bottom, right, top;  // margins, which nothing is printed on
    /// Where the code takes the numbers of a size, from 0: its width, its height, two offsets, the orientation.
    std::array<std::size_t, 5> order;
};

/// Choices of which a job has all but one at the most, in the PPD's own spelling, a choice of the job's among them:
/// what is installed and cannot be installed together is no fault of the job's.
struct PPDConstraint {
    struct Side {
        std::string keyword;
        std::string choice;  // empty for any but "None", "Off" and "False"
    };
    std::vector<Side> sides;
};

/// A constraint of either of the two keywords of the paper's size is one of the size.
[[nodiscard]] std::string_view settingOf(std::string_view keyword);

struct PPDFile {
    std::string name;                                                 // short nickname; empty when it has none
    std::vector<PPDOption> options;                                   // added by addOption
    std::map<std::string, std::size_t, OptionOrder> placesOfOptions;  // by main keyword, the first of each
    std::map<std::string, std::string, std::less<>> attributes;  // main keywords without options, the first of each
    std::vector<PPDPaper> papers;                                // without the "Custom" pseudo size
    std::optional<PPDCustomSizes> customSizes;
    std::vector<PPDConstraint> constraints;
    /// Which of them, in their order, a job can only break by its choice of a main keyword. "PageSize" is also
    /// "PageRegion".
    std::map<std::string, std::vector<std::size_t>, std::less<>> constraintsOf;
    std::vector<std::string> filters;  // the print server's lines that say which filters make what the printer reads
    std::string passcodeKeyword;       // of the custom option that takes a passcode; empty when there is none

    void addOption(PPDOption option);
    /// The option of a main keyword, in upper or lower case. Null when the PPD has none.
    [[nodiscard]] const PPDOption* findOption(std::string_view keyword) const;
    /// The value of a main keyword without options; empty when there is none.
    [[nodiscard]] std::string attribute(std::string_view keyword) const;
};

/// Larger files are refused.
inline constexpr std::int64_t kPPDMaximumBytes = 8 * 1024 * 1024;

/// Reads a PPD, its defaults marked. None when it is missing, no plain file, too large, compressed or no PPD, with
/// the reason in *reason.
std::optional<PPDFile> readPPDFile(const std::string& path, std::string* reason);

/// Whether CUPS takes the option, which is not of the PPD's own, for choices in it: "media", "sides" and their kin.
bool isStandardOption(std::string_view name);

/// The choices that such options make in the PPD at the path, as far as they are others than its defaults.
OptionList chooseByStandardOptions(const std::string& path, const OptionList& options);
