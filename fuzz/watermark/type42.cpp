// Any bytes as a font file, all its faces (the first few of a collection).
//
// Contract: a program that is built as Type 42 asks, or the reason why there is none.

#include "watermark/type42/type42.h"

#include "fuzz/fuzz_target.h"
#include "platform/foundation/CFString.h"
#include "tests/watermark/type42/font_program.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto font = makeData(data, size);
    for (UInt32 face = 0; face < 3; ++face) {
        FontRefusal refusal = FontRefusal::none;
        const auto program = convertTTFtoPS42(font.get(), CFSTR("Fuzz-Font"), face, &refusal);
        FUZZ_EXPECT(bool(program) == (refusal == FontRefusal::none));
        if (program) {
            std::string fault;
            const std::string_view text(reinterpret_cast<const char*>(CFDataGetBytePtr(program.get())),
                                        static_cast<std::size_t>(CFDataGetLength(program.get())));
            FUZZ_EXPECT(ReadFontProgram(text, &fault));
        }
    }
    return 0;
}
