// What was asked for: the one value that everything which prints, previews or tells a job is made from.
//
// Paper, sides and trays are named as the printer's PPD names them; numbers of tickets end where this value is read
// (read_instructions.h). Nothing here is a secret: passcodes and card numbers are read where they are needed.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Which sides of a sheet are printed, and how the sheet is turned between them.
enum class Sides : std::uint8_t { one, longEdge, shortEdge };

/// Paper of a job or of a part of one. An empty text, and 0, say nothing: a part is then like its job, a job like the
/// printer's default.
struct Paper {
    std::string size;    // PageSize: "Letter", "Custom.612x792" (points)
    std::string color;   // MediaColor
    std::string type;    // MediaType
    int tabsInBank = 0;  // of tab stock
    int weight = 0;      // grams per square metre
    bool isPunched = false;
    int sidesCoated = 0;  // these three as the printer counts them
    int coating = 0;
    int finish = 0;
    int grain = 0;
    std::string colorName;  // of a custom color
    std::string typeName;   // of a custom type
    std::string name;       // of named paper

    auto operator<=>(const Paper&) const = default;
};

/// Pages of the document, counted from 1, both included.
struct PageSpan {
    std::int64_t first;
    std::int64_t last;  // may be beyond the document's end

    bool operator==(const PageSpan&) const = default;
};

/// What of a cover is printed. For a front cover side 1 is the outside; for a back cover it is the inside.
enum class CoverPrint : std::uint8_t { blank, side1, side2, both };

struct CoverInstruction {
    CoverPrint print = CoverPrint::blank;
    Paper paper;

    bool operator==(const CoverInstruction&) const = default;
};

/// Blank sheets behind a page of the document.
struct InsertInstruction {
    std::int64_t page = 0;  // 0: before page 1
    int sheets = 1;
    Paper paper;

    bool operator==(const InsertInstruction&) const = default;
};

/// How far the image moves away from the tabs, in points: on side 1 to the left, on side 2 to the right.
struct ImageShift {
    double side1 = 0;
    double side2 = 0;

    auto operator<=>(const ImageShift&) const = default;
};

/// Pages of the document that are printed in another way.
struct ExceptionInstruction {
    PageSpan pages{0, 0};
    Paper paper;
    std::optional<Sides> sides;
    ImageShift shift;
    std::optional<int> lightenDarken;  // -3 lightest to 3 darkest

    bool operator==(const ExceptionInstruction&) const = default;
};

struct BookletInstruction {
    bool hasOutlines = false;
    bool isRightToLeft = false;
    std::string paperSize;  // of the sheet; empty for the job's

    bool operator==(const BookletInstruction&) const = default;
};

enum class Separators : std::uint8_t { none, blank, printed };

/// What lies offset in the output tray.
enum class Offset : std::uint8_t { none, sets, subsets };

/// What the finisher does with each set; the values are those of the finishing menu (0 the printer's default, 1 none).
struct FinishingInstruction {
    int value = 0;
    std::string custom;  // the user's words for a finisher of its own kind
    bool hasSlipSheets = false;
    Offset offset = Offset::none;
    int pagesPerSubset = 1;
    std::string outputTray;  // OutputBin; these three as the PPD names them
    std::string staples;     // StapleLocation
    std::string folds;       // TRFoldOptions: folds and holes

    bool operator==(const FinishingInstruction&) const = default;
};

enum class JobKind : std::uint8_t { print, save, printAndSave, fax, secure, delayed, sampleSet };

struct FaxRecipientInstruction {
    std::string name;
    std::string number;  // what is dialled
    std::string organization;
    std::string mailbox;
    std::string typedNumber;  // the number as people read it

    bool operator==(const FaxRecipientInstruction&) const = default;
};

/// What stands on a fax's cover sheet.
struct FaxCoverInstruction {
    struct Sender {
        std::string name;
        std::string organization;
        std::string phone;
        std::string fax;
        std::string email;

        bool operator==(const Sender&) const = default;
    };
    /// In the user's language; empty when the ticket has none.
    struct Labels {
        std::string to;
        std::string from;
        std::string phone;
        std::string fax;
        std::string notes;

        bool operator==(const Labels&) const = default;
    };

    std::string paperSize;  // PageSize
    Labels labels;
    std::optional<Sender> sender;
    bool hasRecipients = true;  // names the fax's
    std::string recipientText;  // the sender's own words in their place
    std::string notes;
    std::string watermark;  // the name of a stored one; empty for none
    std::string image;      // the same

    bool operator==(const FaxCoverInstruction&) const = default;
};

struct FaxInstruction {
    std::vector<FaxRecipientInstruction> recipients;
    std::optional<FaxCoverInstruction> coverSheet;
    bool hasConfirmation = true;
    int speed = 3;                         // item of its menu
    int resolution = 2;                    // the same
    std::optional<std::int64_t> sendTime;  // seconds since 1904, local time

    bool operator==(const FaxInstruction&) const = default;
};

struct JobNotesInstruction {
    std::string jobName;
    std::string sender;
    std::string recipient;
    std::string bannerMessage;
    std::string specialInstructions;

    bool operator==(const JobNotesInstruction&) const = default;
};

/// An adjustment of the job's colors, by the name and in the words of the printer's controller.
struct ColorInstruction {
    std::string name;
    std::string value;
    std::string mainKeyword;  // of the PPD's option that says the same; empty where only the controller can be told
    std::string option;

    bool operator==(const ColorInstruction&) const = default;
};

struct WatermarkInstruction {
    std::string name;
    bool isOnFirstPageOnly = false;
    bool isBehind = false;

    bool operator==(const WatermarkInstruction&) const = default;
};

/// The page on its paper.
enum class Orientation : std::uint8_t { portrait, landscape, reverseLandscape };

/// The order of several pages on a side.
enum class NumberUpOrder : std::uint8_t {
    rightDown,  // to the right, then down
    downRight,
    leftDown,
    downLeft,
    rightUp,
    upRight,
    leftUp,
    upLeft,
};

/// How a page is made to fit its paper.
struct Scaling {
    enum class Kind : std::uint8_t { shrink, actualSize, fit, percent } kind = Kind::shrink;
    double percent = 100;

    bool operator==(const Scaling&) const = default;
};

/// What was asked for; color goes with any color correction of the printer's but the one to black and white.
enum class OutputColor : std::uint8_t { asPrinter, color, blackAndWhite };

enum class PageSubset : std::uint8_t { all, odd, even };

struct JobInstructions {
    // The document's pages
    std::vector<PageSpan> pages;  // none for all; printed once each, in ascending order
    PageSubset subset = PageSubset::all;
    bool isReversed = false;  // the last sheet comes out first
    int copies = 1;
    bool isCollated = true;

    // The page on the sheet
    Orientation orientation = Orientation::portrait;
    Scaling scaling;
    int numberUp = 1;  // 1, 2, 4, 6, 9 or 16
    NumberUpOrder numberUpOrder = NumberUpOrder::rightDown;
    bool hasBorders = false;  // around each of several pages
    std::optional<BookletInstruction> booklet;
    bool isMirrored = false;
    bool isNegative = false;
    bool isRotated = false;  // by 180 degrees
    std::optional<WatermarkInstruction> watermark;

    // Paper
    Paper paper;  // with its size
    Sides sides = Sides::one;
    std::optional<CoverInstruction> frontCover;
    std::optional<CoverInstruction> backCover;
    std::vector<InsertInstruction> inserts;        // ascending; those of a page in their order
    std::vector<ExceptionInstruction> exceptions;  // ascending, without overlaps
    Separators separators = Separators::none;      // between transparencies
    std::string separatorColor;                    // MediaColor

    FinishingInstruction finishing;
    OutputColor outputColor = OutputColor::asPrinter;
    std::vector<ColorInstruction> colors;       // where they are not the printer's own
    std::vector<ColorInstruction> usualColors;  // those of the queue's or the user's options, which give way to these

    // The job
    JobKind kind = JobKind::print;
    std::optional<FaxInstruction> fax;         // of faxes
    std::optional<std::int64_t> printTime;     // of delayed jobs: seconds since 1904, local time
    std::optional<JobNotesInstruction> notes;  // when there is one
    bool hasBanner = false;                    // the printer puts a page with the notes in front of the job
    bool hasJobInstructions = true;            // are sent to the printer's controller

    bool operator==(const JobInstructions&) const = default;
};

/// MediaTypes: transparencies, and what their separators are made of.
inline constexpr const char* kTransparencyType = "Transparency";
inline constexpr const char* kPlainType = "Standard";

/// The main keyword of color corrections, and two of its options.
inline constexpr const char* kColorCorrectionKeyword = "JCLColorCorrection";
inline constexpr const char* kBlackAndWhiteCorrection = "BlackWhite";
inline constexpr const char* kAutomaticCorrection = "Auto";
