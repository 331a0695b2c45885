#include "platform/printing/mac_roman.h"

#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/printing/CompiledPPD.h"

#include <QList>
#include <QString>

#include <algorithm>
#include <optional>
#include <string>

namespace {

constexpr std::size_t kMostBytes = 255;

// Characters that neither Mac Roman nor a decomposition spells.
struct Spelling {
    char32_t character;
    const char* text;
};
constexpr Spelling kSpellings[] = {
    {U'\u00AD', "-"},   // soft hyphen
    {U'\u00D0', "D"},   // Eth
    {U'\u00D7', "x"},   // multiplication sign
    {U'\u00DE', "Th"},  // Thorn
    {U'\u00F0', "d"},   // eth
    {U'\u00FE', "th"},  // thorn
    {U'\u0110', "D"},   // D with stroke
    {U'\u0111', "d"},   // d with stroke
    {U'\u0141', "L"},   // L with stroke
    {U'\u0142', "l"},   // l with stroke
    {U'\u2010', "-"},   // hyphen
    {U'\u2012', "-"},   // figure dash
    {U'\u2015', "-"},   // horizontal bar
    {U'\u2212', "-"},   // minus sign
};

std::optional<std::string> macRoman(const QString& text) {
    const auto string = CFRef<CFStringRef>::adopt(CFStringCreateWithCharacters(
        nullptr, reinterpret_cast<const UniChar*>(text.utf16()), static_cast<CFIndex>(text.size())));
    char bytes[64];
    if (!CFStringGetCString(string.get(), bytes, sizeof bytes, kCFStringEncodingMacRoman)) {
        return std::nullopt;
    }
    return bytes;
}

constexpr std::string_view kNone = "?";

/// Whether the character is a letter of a script whose letters have no spelling. Mac Roman has a few of the Greek ones.
bool isForeignLetter(char32_t character) {
    const QChar::Script script = QChar::script(character);
    return script != QChar::Script_Unknown && script != QChar::Script_Inherited && script != QChar::Script_Common &&
           script != QChar::Script_Latin && script != QChar::Script_Greek && QChar::isLetter(character);
}

/// The nearest spelling of one character outside ASCII; never empty but for bare accents, kNone when there is none.
std::string spell(char32_t character) {
    if (isForeignLetter(character)) {
        return std::string(kNone);
    }
    const QString text = QString::fromUcs4(&character, 1);
    if (auto bytes = macRoman(text)) {
        return *bytes;
    }
    for (const Spelling& spelling : kSpellings) {
        if (spelling.character == character) {
            return spelling.text;
        }
    }
    const QString parts = text.normalized(QString::NormalizationForm_KD);
    if (parts == text) {
        return std::string(text.at(0).isMark() ? "" : kNone);
    }
    std::string spelled;
    for (const char32_t part : parts.toUcs4()) {
        std::string next = part < 0x80 ? std::string(1, static_cast<char>(part)) : spell(part);
        if (part >= 0x80 && next == kNone) {
            return next;
        }
        spelled += next;
    }
    return spelled;
}

std::size_t utf8Length(char32_t character) {
    return character < 0x80 ? 1 : character < 0x800 ? 2 : character < 0x10000 ? 3 : 4;
}

bool isHexDigit(char32_t character) {
    return (character >= U'0' && character <= U'9') || (character >= U'A' && character <= U'F') ||
           (character >= U'a' && character <= U'f');
}

}  // namespace

PPDByteString ppdByteString(std::string_view utf8) {
    // Nearly all of them, and a PPD has a thousand.
    if (utf8.size() <= kMostBytes &&
        std::ranges::all_of(utf8, [](char c) { return static_cast<unsigned char>(c) < 0x80 && c != '<'; })) {
        PPDByteString bytes(utf8.size() + 1);
        bytes[0] = static_cast<UInt8>(utf8.size());
        std::ranges::copy(utf8, bytes.begin() + 1);
        return bytes;
    }
    const QString decoded = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    const std::string valid = decoded.toStdString();
    const auto text = decoded.toUcs4();
    const bool isSpelled =
        std::ranges::none_of(text, [](char32_t character) { return character >= 0x80 && spell(character) == kNone; });
    PPDByteString bytes(1);
    const auto append = [&bytes](std::string_view next) {
        const bool fits = bytes.size() - 1 + next.size() <= kMostBytes;
        if (fits) {
            bytes.insert(bytes.end(), next.begin(), next.end());
        }
        return fits;
    };
    append(isSpelled ? std::string_view() : kPPDTextIsUTF8);
    std::string_view rest = valid;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char32_t character = text[i];
        const std::string_view own = rest.substr(0, utf8Length(character));
        rest.remove_prefix(own.size());
        const bool looksLikeHex = character == U'<' && i + 1 < text.size() && isHexDigit(text[i + 1]);
        const bool isKept = character < 0x80 || !isSpelled;
        if (!append(looksLikeHex ? "<3C>" : isKept ? own : spell(character))) {
            break;
        }
    }
    bytes[0] = static_cast<UInt8>(bytes.size() - 1);
    return bytes;
}
