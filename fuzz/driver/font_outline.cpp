// Any bytes as a font program that is stored with a watermark.
//
// Contract: the outline of a text, in operators of PDF and nothing else, with a width; or a reason.

#include "driver/pages/font_outlines.h"

#include "fuzz/fuzz_target.h"

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string reason;
    const auto outline =
        outlineText("Az \xC3\xA4", std::string(reinterpret_cast<const char*>(data), size), 72, &reason);
    FUZZ_EXPECT(outline.has_value() == reason.empty());
    if (outline) {
        FUZZ_EXPECT(std::isfinite(outline->width));
        FUZZ_EXPECT(outline->path.find_first_not_of("0123456789.- \nmlchf") == std::string::npos);
    }
    return 0;
}
