// What the maker's panels leave in the print settings ticket beside the options of the PPD, as values.
//
// The plug-in that writes these items is known by its factory only, so their names and numbers stand here a second
// time; tests hold the two against each other. What is missing, or of another type, is as the panels begin with it.
#pragma once

#include "platform/printing/PMTicket.h"

#include <optional>
#include <string>
#include <vector>

struct PanelChoices {
    /// Numbers that the panels count sizes, colors and types of paper by (host/settings/paper_options.h); 0 for the
    /// job's own.
    static constexpr SInt32 customSize = 75;
    struct Paper {
        SInt32 size = 0;
        SInt32 color = 0;
        SInt32 type = 0;
        SInt32 weight = 0;        // grams per square meter; 0 for any
        bool hasDetails = false;  // weight, coating, a name of its own and the like
        bool operator==(const Paper&) const = default;
    };
    enum Sides : SInt32 { blankSides = 1, bothSides = 4 };
    struct Cover {
        SInt32 sides = blankSides;
        Paper paper;
        bool operator==(const Cover&) const = default;
    };
    struct Exception {
        SInt32 firstPage = 0;
        SInt32 lastPage = 0;
        Paper paper;
        SInt32 duplex = 0;         // 1 one-sided, 2 and 3 two-sided, flipped on the long and short edge; 0 as the job
        SInt32 lightenDarken = 0;  // less than 0 lighter
        bool isMoved = false;      // the image on the page
    };
    enum JobType : SInt32 {
        normalJob = 1,
        savedJob = 3,
        printedAndSavedJob = 4,
        faxJob = 5,
        secureJob = 6,
        delayedJob = 7,
        sampleSetJob = 8,
    };
    enum Separators : SInt32 { noSeparators = 1, blankSeparators = 2, printedSeparators = 3 };

    // Special pages
    std::optional<Cover> frontCover;
    std::optional<Cover> backCover;
    std::size_t insertCount = 0;
    std::size_t exceptionCount = 0;
    std::vector<Exception> exceptions;  // the first kMostExceptions of them

    // Booklet
    bool isBooklet = false;
    bool hasOutlines = false;  // of booklets only
    SInt32 bookletSize = 0;    // a size of paper; 0 for the job's
    bool isRightToLeft = false;

    // Paper and finishing
    Paper paper;                       // its size is the booklet's
    SInt32 separators = noSeparators;  // between transparencies
    SInt32 separatorColor = 1;         // a color of paper
    SInt32 finishing = 0;              // see finishingWords(); 0 and 1 for none
    std::string customFinishing;       // the user's own words
    bool hasSlipSheets = false;
    bool isOffset = false;
    SInt32 pagesPerSubset = 0;  // that are offset; 0 for whole sets
    bool isBlackAndWhite = false;

    // The job
    SInt32 jobType = normalJob;
    std::size_t faxRecipientCount = 0;  // of faxes only, as is the next
    bool hasFaxCoverSheet = false;

    // Images
    bool isNegative = false;
    bool isMirrored = false;
    bool isRotated = false;  // by 180 degrees
    std::string watermark;   // its name; empty for none
    bool isWatermarkOnFirstPageOnly = false;
    bool isWatermarkBehind = false;

    bool hasJobInstructions = true;
    bool hasJobNotes = false;
};

/// Exceptions that are read one by one; of more only the number matters to people.
inline constexpr std::size_t kMostExceptions = 3;

PanelChoices readPanelChoices(PMTicketRef printSettings);
