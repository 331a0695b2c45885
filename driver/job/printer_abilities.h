// What a printer can do by itself, so that the pages need not.
#pragma once

#include "driver/instructions/job_instructions.h"
#include "driver/job/job_ticket.h"
#include "driver/pages/document.h"
#include "platform/printing/PMPrinter.h"

#include <string>
#include <vector>

// Main keywords of the maker's PPDs that the driver chooses options of.
inline constexpr const char* kMirrorKeyword = "TRMirrorPrint";
inline constexpr const char* kNegativeKeyword = "TRNegativePrint";
inline constexpr const char* kRotateKeyword = "TRRotate180";
inline constexpr const char* kLightnessKeyword = "TRImageQuality";
inline constexpr const char* kCoversKeyword = "JCLCovers";
inline constexpr const char* kTrayKeyword = "InputSlot";
inline constexpr const char* kAnyTray = "AutoSelect";  // of InputSlot: the one that has the paper
inline constexpr const char* kInserter = "Inserter";   // of InputSlot: whose sheets nothing is printed on

/// Whether the PPD has the option.
bool hasOption(PMPrinter printer, const std::string& mainKeyword, const std::string& option);

/// Whether the PPD has the option that says the same as the adjustment, or those of all of them.
bool hasOption(PMPrinter printer, const ColorInstruction& color);
bool hasOptions(PMPrinter printer, const std::vector<ColorInstruction>& colors);

/// Whether the printer has the option, with what the printer info ticket says is installed.
bool isInstalled(PMPrinter printer, PMTicketRef printerInfo, const std::string& mainKeyword, const std::string& option);

/// A paper as the printer has it; of a size that it does not know, the usual page, all of which can be printed on.
PaperShape shapeOf(PMPrinter printer, const Paper& paper);

/// What its PPD says that it does by itself.
struct PrinterAbilities {
    bool mirrors = false;
    bool rotates = false;
    bool printsNegatives = false;
    bool finishes = false;  // as the finishing menu says, by options of the PPD
};
PrinterAbilities abilitiesOf(PMPrinter printer);

/// What of a job's adjustments changes how its pages look, each from -100 to 100; 0 for not at all.
struct ColorTones {
    int lightness = 0;
    int contrast = 0;
    int saturation = 0;
    int cyanRed = 0;  // towards red when positive, as the others towards the second color
    int magentaGreen = 0;
    int yellowBlue = 0;

    bool operator==(const ColorTones&) const = default;
};
/// Those that the printer makes by options of its PPD, whoever set them.
ColorTones tonesOf(const JobInstructions& job, PMPrinter printer);
