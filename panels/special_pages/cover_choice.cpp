#include "panels/special_pages/cover_choice.h"

#include "platform/foundation/CFString.h"

#include <array>

namespace {

std::unique_ptr<Cover> NewCover() {
    auto cover = std::make_unique<Cover>();
    DefaultStock(&cover->stock(), JobContext::cover);
    return cover;
}

void MakeOrDelete(std::unique_ptr<Cover>* cover, bool wanted) {
    if (!wanted) {
        cover->reset();
    } else if (*cover == nullptr) {
        *cover = NewCover();
    }
}

// clang-format off
constexpr std::array kOptionPictures = {
    // by option, from 1
    "None.gif", "FrontOnly.gif", "BackOnly.gif", "Same.gif", "Different.gif",
};
static_assert(kOptionPictures.size() == kCoversDifferent);

struct SidesRow {
    SInt32 sides;
    const char* paper;
    const char* print;
};
constexpr SidesRow kSidesRows[] = {
    // sides          paper                 print
    {kCoverSide1,     "Standard-White.gif", "PrintOnSide1.gif"},
    {kCoverSide2,     "Side2-White.gif",    "PrintOnSide2.gif"},
    {kCoverBothSides, "Side2-White.gif",    "PrintOnBoth.gif"},
};
static_assert(std::size(kSidesRows) == 3);
// clang-format on

}  // namespace

CoverOption CoverOptionOf(const Cover* front, const Cover* back) {
    if (front == nullptr) {
        return back == nullptr ? kCoversNone : kCoversBackOnly;
    }
    if (back == nullptr) {
        return kCoversFrontOnly;
    }
    return *front == *back ? kCoversSame : kCoversDifferent;
}

void ApplyCoverOption(CoverOption option, std::unique_ptr<Cover>* front, std::unique_ptr<Cover>* back) {
    MakeOrDelete(front, option == kCoversFrontOnly || option == kCoversSame || option == kCoversDifferent);
    MakeOrDelete(back, option == kCoversBackOnly || option == kCoversSame || option == kCoversDifferent);
    if (option == kCoversSame) {
        **back = **front;
    }
}

void TakeJobSize(Cover* cover, const Stock* jobStock) {
    const Stock defaultStock;
    const Stock& job = jobStock != nullptr ? *jobStock : defaultStock;
    cover->stock().setSize(job.size());
    if (job.size() == kStockSizeCustom) {
        cover->stock().setWidth(job.width());
        cover->stock().setLength(job.length());
    }
}

CFStringRef CoverOptionPicture(CoverOption option) {
    return CFStringMakeConstant(kOptionPictures[static_cast<std::size_t>(option) - 1]);
}

CoverSidesPictures PicturesOfCoverSides(SInt32 sidesImaged) {
    for (const SidesRow& row : kSidesRows) {
        if (row.sides == sidesImaged) {
            return {CFStringMakeConstant(row.paper), CFStringMakeConstant(row.print)};
        }
    }
    return {CFSTR("Standard-White.gif"), nullptr};
}
