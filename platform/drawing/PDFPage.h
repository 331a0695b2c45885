// A page of its own making: vector text with its fonts, lines and pictures, written as a PDF document.
//
// Lengths are in points; places are counted from the page's upper left corner, to the right and downwards. Texts are
// UTF-8, of any script and direction: what the page's font lacks comes from another one. Everything is drawn without
// transparency, which would turn a whole page into one picture on its way to a PostScript printer. The fonts are the
// toolbox's, so ToolboxInitialize() comes first.
#pragma once

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"

#include <memory>
#include <optional>
#include <span>
#include <string>

struct DrawingRect {
    double left;
    double top;
    double width;
    double height;
};

struct TextStyle {
    double size;
    bool bold = false;
};

enum class TextSide {
    left,
    right,
    natural,  // each paragraph at the side where its script begins
};

/// Whether a text's first letter belongs to a script that runs from right to left.
bool RunsRightToLeft(const std::string& text);

inline constexpr int kAnyLines = -1;

/// Text in lines of at most a width. A line break begins a paragraph; other control characters are blanks.
class TextBlock {
public:
    /// Text that needs more than `mostLines` has an ellipsis at the end of the last one.
    TextBlock(const std::string& text, const TextStyle& style, double width, TextSide side, int mostLines = kAnyLines);
    TextBlock(TextBlock&& other) noexcept;
    TextBlock& operator=(TextBlock&& other) noexcept;
    ~TextBlock();

    [[nodiscard]] double height() const;
    /// The number of lines that a height has room for.
    [[nodiscard]] int linesWithin(double height) const;
    /// The width of the longest line.
    [[nodiscard]] double widestLine() const;
    /// Leaves the first lines and takes the others away.
    void keep(int lines);

private:
    friend class PDFPage;
    friend class PixelCanvas;
    struct Lines;
    std::unique_ptr<Lines> lines_;
};

enum class PictureInk {
    grays,
    colors,
};

/// A picture on white, with at most as many pixels as a sheet needs.
class Picture {
public:
    /// Reads a file of any common kind. Nothing, with the reason, for one that is missing, no picture, or has more
    /// pixels than any camera makes.
    static std::optional<Picture> read(const std::string& path, PictureInk ink, std::string* reason);
    Picture(Picture&& other) noexcept;
    Picture& operator=(Picture&& other) noexcept;
    ~Picture();

    /// In pixels; both are at least 1.
    [[nodiscard]] int width() const;
    [[nodiscard]] int height() const;
    /// The same in less ink: 1 leaves it as it is, 0 is white.
    [[nodiscard]] Picture lightened(double ink) const;
    /// How many pixels of the file one pixel stands for, in each direction; at least 1.
    [[nodiscard]] double reduction() const;
    /// The pixels of a row, the top one is 0: a byte from 0, black, to 255 for a gray, three of red, green and blue for
    /// a color. They live as long as the picture.
    [[nodiscard]] std::span<const unsigned char> row(int index) const;

private:
    friend class PDFPage;
    struct Pixels;
    explicit Picture(std::unique_ptr<Pixels> pixels);
    std::unique_ptr<Pixels> pixels_;
};

class PDFPage {
public:
    PDFPage(const std::string& title, double width, double height);
    ~PDFPage();
    PDFPage(const PDFPage&) = delete;
    PDFPage& operator=(const PDFPage&) = delete;

    void draw(const TextBlock& block, double left, double top);
    /// Draws one line of text around a point, turned to the left by `degrees`, in an ink from 0 (white) to 1 (black).
    /// It is made smaller when it would be longer than `longest`. A font that is not there gives way to the page's own.
    void drawAround(const std::string& text, const std::string& fontPostScriptName, double size, double x, double y,
                    double degrees, double ink, double longest);
    /// Draws a picture around a point, turned to the left by `degrees`.
    void drawAround(const Picture& picture, double width, double height, double x, double y, double degrees);
    void draw(const Picture& picture, const DrawingRect& place);
    /// A black line from left to right; `top` is its upper edge.
    void drawRule(double left, double top, double width, double thickness);

    /// Ends the page: the document, as the bytes of its file.
    CFRef<CFDataRef> finish();

private:
    struct Canvas;
    std::unique_ptr<Canvas> canvas_;
};
