// A sheet of a job as a picture, as it will lie in the output tray: its paper, its pages, and what the finisher does.
#pragma once

#include "driver/worker/page_drawer.h"
#include "host/preview/sheet_place.h"
#include "platform/foundation/CFBundle.h"

#include <functional>
#include <vector>

/// A picture that a sheet is made of.
struct PictureNeed {
    enum class What : std::uint8_t {
        page,  // of the document
        /// Of the watermark (driver/pages/mark_drawing.h), opaque: what is screened on paper to be read through, in
        /// front of the pages, has that color from afar, and is read through in a picture too.
        mark,
        faxCover,
    } what = What::page;
    PageView view;

    bool operator==(const PictureNeed&) const = default;
};

/// What there is of a picture now.
using PictureFinder = std::function<PagePicture(const PictureNeed&)>;

/// The pictures that a side is made of, each once, in the order of the pages. Other sizes of them would do, too, but
/// be less sharp.
std::vector<PictureNeed> picturesOf(const JobSheets& job, const SheetView& view);

/// The side as a picture of exactly that size, clear beside the sheet. Pages whose pictures are not there yet are light
/// places; those that cannot be drawn say so, in the words of `texts`, the program's own bundle (null for none).
Pixels drawSheet(const JobSheets& job, const SheetView& view, const PictureFinder& find, CFBundleRef texts);
