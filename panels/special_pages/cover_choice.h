// Which covers a job has, and what follows from it.
#pragma once

#include "model/records/special_page.h"

#include <memory>

/// Ticket values of CoverOptionMap (model/settings/setting_map.h), and two that it does not offer: a job has such
/// covers only when its settings came with them.
enum CoverOption : SInt32 {
    kCoversNone = 1,
    kCoversFrontOnly = 2,
    kCoversBackOnly = 3,
    kCoversSame = 4,       // the back cover is a copy of the front cover
    kCoversDifferent = 5,  // each has settings of its own
};

/// The option that a pair of covers stands for; null is no cover.
[[nodiscard]] CoverOption CoverOptionOf(const Cover* front, const Cover* back);

/// Makes the covers that the option asks for, blank and on the default paper of covers, and deletes the others. A cover
/// that is there already stays as it is; for kCoversSame the back cover becomes a copy of the front cover.
void ApplyCoverOption(CoverOption option, std::unique_ptr<Cover>* front, std::unique_ptr<Cover>* back);

/// Whether the back cover has settings that can be changed apart from the front cover's.
[[nodiscard]] constexpr bool HasOwnBackCover(CoverOption option) {
    return option == kCoversBackOnly || option == kCoversDifferent;
}

/// Whether the document prints on the cover, whose paper then has the size of the job's.
[[nodiscard]] inline bool IsPrinted(const Cover& cover) {
    return cover.sidesImaged() != kCoverBlank;
}
/// Gives the cover the size of the job's paper; no stock is the default paper of jobs.
void TakeJobSize(Cover* cover, const Stock* jobStock);

// Names of picture files, constant.

[[nodiscard]] CFStringRef CoverOptionPicture(CoverOption option);
/// The paper, and over it what is printed there; null for nothing.
struct CoverSidesPictures {
    CFStringRef paper;
    CFStringRef print;
};
[[nodiscard]] CoverSidesPictures PicturesOfCoverSides(SInt32 sidesImaged);
