#include "host/job/mark_program.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <span>
#include <string_view>

namespace {

// The code hangs on the page device: its BeginPage procedure draws what lies behind a page, its EndPage procedure what
// lies in front. The document's comments would show where pages begin, but not where to draw: the filter's PostScript
// chooses the paper, which clears the sheet, after a page's setup, and prints the sheet before the page's trailer. The
// procedures work with every way in which the filters write pages, and are called again by the interpreter when the
// paper has been chosen anew. What they must put up with:
//   - A page is between `save` and `restore`, and BeginPage for the next one is called before the `restore`. So the
//     number of printed pages is in global memory, where `restore` leaves it alone; the count that the interpreter
//     hands over begins anew with each new paper.
//   - The filter's procedures have their own names for everything. So all names are looked up in systemdict.
//   - A sheet can be ended more than once (`copypage`), or be dropped (reason 2).
// PostScript has no transparency: a mark in front covers what is under its letters.
constexpr std::string_view kBegin = R"(userdict/TavroMark 24 dict put
TavroMark begin
/Printed currentglobal true setglobal[0]exch setglobal def
)";

// Page marks: 0 is none, else the number of quarter turns and 1.
constexpr std::string_view kDraw = R"(/Draw{
systemdict begin//TavroMark begin
Pages Printed 0 get Pages length mod get
dup 0 eq{pop}{
gsave initgraphics
currentpagedevice/PageSize get aload pop 2 div exch 2 div exch translate
1 sub 90 mul rotate XOffset YOffset translate Angle rotate
Paint
grestore}ifelse
end end}bind def
/OldBegin currentpagedevice/BeginPage get def
/OldEnd currentpagedevice/EndPage get def
/Begin{//TavroMark/OldBegin get exec//TavroMark/InFront get not{//TavroMark/Draw get exec}if}bind def
/End{dup 2 ne{//TavroMark/InFront get{//TavroMark/Draw get exec}if}if
dup 0 eq{//TavroMark/Printed get 0 2 copy get 1 add put}if
//TavroMark/OldEnd get exec}bind def
<</BeginPage/Begin load/EndPage/End load>>
end setpagedevice
)";

// The glyphs that the font lacks are its empty box. The width is measured where nothing can be drawn.
constexpr std::string_view kText = R"(/Glyphs[Glyphs{dup Font/CharStrings get exch known not{pop/.notdef}if}forall]def
gsave 0 0 0 0 rectclip Font setfont 0 0 moveto Glyphs{glyphshow}forall currentpoint pop/Width exch def grestore
/Paint{Color aload pop setrgbcolor Font setfont
Width -2 div Baseline moveto Glyphs{glyphshow}forall}bind def
)";

constexpr std::string_view kPicture = R"(/Paint{
Scale dup scale
Width -2 div Height -2 div translate
/Row 0 def
/DeviceRGB setcolorspace
<</ImageType 4/Width Width/Height Height/BitsPerComponent 8/Decode[0 1 0 1 0 1]/MaskColor[255 255 255]
/ImageMatrix[1 0 0 -1 0 Height]/DataSource{Rows Row get/Row Row 1 add def}>>image}bind def
)";

/// How far the baseline lies below the middle of a line of text, for a font of size 1: a text's box is 1.17 high and
/// has its baseline 0.265 above the lower edge, whatever the font is. The watermark editor draws the same.
constexpr double kBaselineBelowMiddle = 1.17 / 2 - 0.265;

class Program {
public:
    Program& operator<<(std::string_view text) {
        text_ += text;
        return *this;
    }
    Program& operator<<(double number) {
        std::array<char, 32> digits;
        const auto end = std::to_chars(digits.begin(), digits.end(), number, std::chars_format::fixed, 4);
        text_.append(digits.begin(), end.ptr);
        return *this;
    }
    Program& defineNumber(std::string_view name, double number) {
        return *this << "/" << name << " " << number << " def\n";
    }
    /// A string, in lines that the document's comments allow.
    Program& hex(std::span<const unsigned char> bytes) {
        constexpr std::string_view kDigits = "0123456789abcdef";
        constexpr std::size_t kInLine = 120;
        text_ += '<';
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            text_ += kDigits[bytes[i] >> 4];
            text_ += kDigits[bytes[i] & 0xf];
            if (i % kInLine == kInLine - 1) {
                text_ += '\n';
            }
        }
        text_ += '>';
        return *this;
    }
    std::string take() { return std::move(text_); }

private:
    std::string text_;
};

void beginMark(Program* program, const StoredMark& mark, const MarkPlacement& placement) {
    constexpr std::size_t kLongestString = 65535;
    std::vector<unsigned char> pages;
    for (const PageMark page : placement.pages) {
        pages.push_back(static_cast<unsigned char>(page));
    }
    pages.resize(std::min(pages.size(), kLongestString));
    *program << kBegin << "/Pages";
    program->hex(pages) << "def\n/InFront " << (placement.inFront ? "true" : "false") << " def\n";
    program->defineNumber("XOffset", mark.xOffset)
        .defineNumber("YOffset", mark.yOffset)
        .defineNumber("Angle", mark.angle);
}

/// The characters of a UTF-8 text; what ends lines, and the like, is a blank.
std::vector<char32_t> charactersOf(const std::string& text) {
    std::vector<char32_t> characters;
    for (const char byte : text) {
        const auto value = static_cast<unsigned char>(byte);
        if ((value & 0xC0) == 0x80 && !characters.empty()) {
            characters.back() = characters.back() << 6 | (value & 0x3F);
        } else {
            characters.push_back(value < 0x20    ? U' '
                                 : value < 0x80  ? value
                                 : value >= 0xF0 ? value & 0x07
                                 : value >= 0xE0 ? value & 0x0F
                                                 : value & 0x1F);
        }
    }
    return characters;
}

std::string glyphName(char32_t character) {
    std::array<char, 16> name;
    std::snprintf(name.data(), name.size(), character > 0xFFFF ? "/u%X" : "/uni%04X", static_cast<unsigned>(character));
    return name.data();
}

}  // namespace

std::string textMarkProgram(const StoredMark& mark, const std::string& font, const MarkPlacement& placement) {
    const double size = mark.fontSize * mark.scale / 100;
    Program program;
    program << "%%BeginResource: font " << mark.fontName << "\n" << font << "%%EndResource\n";
    beginMark(&program, mark, placement);
    // The document's own fonts may have the name: it is for the mark alone.
    program << "/" << mark.fontName << " dup findfont " << size << " scalefont/Font exch def undefinefont\n/Glyphs[";
    int inLine = 0;
    for (const char32_t character : charactersOf(mark.text)) {
        program << glyphName(character) << (++inLine % 20 == 0 ? "\n" : "");
    }
    program << "]def\n/Color[" << mark.color.red << " " << mark.color.green << " " << mark.color.blue << "]def\n";
    program.defineNumber("Baseline", -size * kBaselineBelowMiddle) << kText << kDraw;
    return program.take();
}

std::string pictureMarkProgram(const StoredMark& mark, const Picture& picture, const MarkPlacement& placement) {
    Program program;
    beginMark(&program, mark, placement);
    program.defineNumber("Scale", mark.scale / 100 * picture.reduction());
    program << "/Width " << std::to_string(picture.width()) << " def\n/Height " << std::to_string(picture.height())
            << " def\n/Rows[\n";
    for (int row = 0; row < picture.height(); ++row) {
        program.hex(picture.row(row)) << "\n";
    }
    program << "]def\n" << kPicture << kDraw;
    return program.take();
}
