// The pages of a PDF document as pictures.
//
// What strangers made may crash the library that draws it, or keep it busy for ever: whoever does not trust a document
// draws it in a process of its own (driver/worker), which is also the only one that loads that library.
#pragma once

#include "platform/drawing/Pixels.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

enum class DocumentFault {
    none,
    needsPassword,  // another one than the one that was given
    isDamaged,      // or is no PDF
};

/// What of a page is drawn, and how large.
struct PageView {
    int page = 0;  // of the document, from 0
    int width = 0;
    int height = 0;         // in pixels; both are from 1 to kLongestPictureSide
    double partWidth = 0;   // of what is shown, around the page's middle, in points; 0 shows all of the page
    double partHeight = 0;  // the same

    bool operator==(const PageView&) const = default;
};

class DocumentPictures {
public:
    /// The document in an open plain file, which stays the caller's and open as long as the object lives. Null with the
    /// fault.
    static std::unique_ptr<DocumentPictures> open(int file, const std::string& password, DocumentFault* fault);
    ~DocumentPictures();

    /// A page on white as its reader sees it, upright and cut to what is shown of it, with the notes and fields that
    /// are printed. It fills the picture; nothing for a page that the document has not, for one that is of quite
    /// another shape than the picture, and for one that cannot be drawn. `isUnwanted` is asked now and then; true ends
    /// the drawing, without a picture. Throws std::bad_alloc when there is too little memory, as far as the library
    /// tells.
    std::optional<Pixels> draw(const PageView& view, const std::function<bool()>& isUnwanted) const;

private:
    struct Source;
    explicit DocumentPictures(std::unique_ptr<Source> source);
    std::unique_ptr<Source> source_;
};
