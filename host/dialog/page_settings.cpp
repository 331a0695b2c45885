#include "host/dialog/page_settings.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr std::array kControls{kPageSubset, kReverseOrder,  kScaling, kScalingPercent,
                               kNumberUp,   kNumberUpOrder, kBorders};
constexpr std::array kNumbersUp{1, 2, 4, 6, 9, 16};  // the menu's items

/// The item of a menu that has the values of an enumeration, in their order; and back.
template <typename Enumeration>
SInt32 itemOf(Enumeration value) {
    return static_cast<SInt32>(value) + 1;
}
template <typename Enumeration>
void readItem(ControlRef menu, Enumeration* value) {
    *value = static_cast<Enumeration>(std::max(GetControl32BitValue(menu), 1) - 1);
}

void enable(ControlRef control, bool isEnabled) {
    isEnabled ? EnableControl(control) : DisableControl(control);
}

}  // namespace

void PageSettings::show(const PrintSession& session) const {
    const JobInstructions& job = session.instructions();
    SetControl32BitValue(control(kPageSubset), itemOf(job.subset));
    SetControl32BitValue(control(kReverseOrder), job.isReversed ? 1 : 0);
    SetControl32BitValue(control(kScaling), itemOf(job.scaling.kind));
    SetControl32BitValue(control(kScalingPercent), static_cast<SInt32>(std::lround(job.scaling.percent)));
    SetControlVisibility(control(kScalingPercent), job.scaling.kind == Scaling::Kind::percent, true);
    const auto* const number = std::ranges::find(kNumbersUp, job.numberUp);
    SetControl32BitValue(control(kNumberUp), static_cast<SInt32>(number - kNumbersUp.begin()) + 1);
    SetControl32BitValue(control(kNumberUpOrder), itemOf(job.numberUpOrder));
    SetControl32BitValue(control(kBorders), job.hasBorders ? 1 : 0);
    // Several pages on a side, of a booklet always two, are made to fit.
    const bool isSingle = job.numberUp == 1 && !job.booklet;
    enable(control(kScaling), isSingle);
    enable(control(kScalingPercent), isSingle);
    enable(control(kNumberUp), !job.booklet);
    enable(control(kNumberUpOrder), job.numberUp > 1 && !job.booklet);
    enable(control(kBorders), !job.booklet);
}

bool PageSettings::handleHit(SInt32 number, PrintSession* session) const {
    if (std::ranges::find(kControls, number) == kControls.end()) {
        return false;
    }
    session->changePages([this](JobInstructions& job) { read(&job); });
    show(*session);
    return true;
}

void PageSettings::read(JobInstructions* job) const {
    readItem(control(kPageSubset), &job->subset);
    job->isReversed = GetControl32BitValue(control(kReverseOrder)) == 1;
    readItem(control(kScaling), &job->scaling.kind);
    job->scaling.percent = GetControl32BitValue(control(kScalingPercent));
    const SInt32 item = GetControl32BitValue(control(kNumberUp));
    job->numberUp = kNumbersUp[static_cast<std::size_t>(std::clamp<SInt32>(item, 1, kNumbersUp.size()) - 1)];
    readItem(control(kNumberUpOrder), &job->numberUpOrder);
    job->hasBorders = GetControl32BitValue(control(kBorders)) == 1;
}
