// Where the pictures of a job's sheets come from.
#pragma once

#include "host/preview/sheet_picture.h"

#include <memory>
#include <string>

/// Those that there are none of are null.
struct PageSources {
    std::shared_ptr<const DrawnDocument> document;
    std::shared_ptr<const DrawnDocument> mark;
    std::shared_ptr<const DrawnDocument> faxCover;
};

/// A job's watermark as a document. Null, with the reason, for one that is not stored or cannot be drawn.
std::shared_ptr<const DrawnDocument> drawnWatermark(const WatermarkInstruction& watermark, std::string* reason);

/// What to ask a drawer for.
PageWish wishFor(const PictureNeed& need, const PageSources& sources);

/// A drawer's pictures. Both stay as long as it is asked.
PictureFinder picturesIn(const PageDrawer& drawer, const PageSources& sources);
