// Any bytes as the PostScript that comes from the filters, whole and in pieces.
//
// Contract: the pieces change nothing. Without pages of their own, codes and a header are the only things that come
// in, each once.

#include "driver/job/postscript_editor.h"

#include "fuzz/fuzz_target.h"

namespace {

class Text : public ByteSink {
public:
    bool write(std::string_view bytes) override {
        text += bytes;
        return true;
    }
    std::string text;
};

std::size_t countOf(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + part.size())) {
        ++count;
    }
    return count;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    PageCodes codes;
    for (int page = 0; page < 3; ++page) {
        codes.add(page == 1 ? ""
                            : "\x01"
                              "code\n");
    }
    Text whole;
    PostScriptEditor editor("\x01header\n", codes, {}, whole);
    editor.write(text);
    const bool isWhole = editor.finish();

    Text pieces;
    PostScriptEditor again("\x01header\n", codes, {}, pieces);
    const std::size_t piece = std::size_t{1} + data[0] % 16;
    for (std::size_t at = 0; at < text.size(); at += piece) {
        again.write(text.substr(at, piece));
    }
    FUZZ_EXPECT(again.finish() == isWhole && pieces.text == whole.text);
    if (text.find('\x01') == std::string_view::npos) {
        FUZZ_EXPECT(countOf(whole.text, "\x01header\n") <= 1 && countOf(whole.text,
                                                                        "\x01"
                                                                        "code\n") <= 2);
        FUZZ_EXPECT(!isWhole || countOf(whole.text, "\x01header\n") == 1);
    }
    return 0;
}
