#include "model/records/booklet_fold.h"

#include "platform/foundation/CFString.h"

#include <iterator>

namespace {

struct FoldPicture {
    SInt32 foldOption;
    const char* withOutlines;
    const char* plain;
};
// clang-format off
constexpr FoldPicture kPictures[] = {
    // fold option          with outlines                                       without
    {kFoldBooklet,          "Booklet Creation/Booklet-Fold-Outlines.gif",        "Booklet Creation/Booklet-Fold.gif"},
    {kFoldAndStapleBooklet, "Booklet Creation/Booklet-Fold-Staple-Outlines.gif", "Booklet Creation/Booklet-Fold-Staple.gif"},
    {kFoldNone,             "Booklet Creation/Booklet-Outlines.gif",             "Booklet Creation/Booklet.gif"},
};
static_assert(std::size(kPictures) == 3);
// clang-format on

}  // namespace

CFStringRef BookletFoldPicture(SInt32 foldOption, bool drawOutlines) {
    const FoldPicture* row = std::begin(kPictures);
    while (row->foldOption != foldOption && row->foldOption != kFoldNone) {
        ++row;
    }
    return CFStringMakeConstant(drawOutlines ? row->withOutlines : row->plain);
}
