// Any bytes as a picture.
//
// Contract: a picture, all pixels of which are there, or a reason. What is made lighter is as large.

#include "fuzz/memory_file.h"
#include "platform/drawing/PDFPage.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (const PictureInk ink : {PictureInk::grays, PictureInk::colors}) {
        std::string reason;
        const auto picture = Picture::read(memoryFile(data, size), ink, &reason);
        FUZZ_EXPECT(picture.has_value() == reason.empty());
        if (!picture) {
            return 0;
        }
        FUZZ_EXPECT(picture->width() > 0 && picture->height() > 0 && picture->reduction() >= 1);
        const Picture lighter = picture->lightened(0.5);
        FUZZ_EXPECT(lighter.width() == picture->width() && lighter.height() == picture->height());
        const std::size_t bytes = static_cast<std::size_t>(picture->width()) * (ink == PictureInk::grays ? 1 : 3);
        for (int y = 0; y < picture->height(); ++y) {
            FUZZ_EXPECT(picture->row(y).size() == bytes && lighter.row(y)[bytes - 1] >= picture->row(y)[bytes - 1]);
        }
    }
    return 0;
}
