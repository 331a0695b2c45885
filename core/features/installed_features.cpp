#include "core/features/installable_options.h"

#include <iterator>

namespace {

constexpr char kFinisher[] = "Option2";
constexpr char kHolePunch[] = "Option3";
constexpr char kFaxCard[] = "Option5";

}  // namespace

// The stacker of the HCSS finisher is a first of two, all others are the only one: hence its other name.
// clang-format off
const InstalledFeature InstalledFeatures[] = {
    // feature                  main keyword  installed  name                   ticket value
    {"GenericPunchKey",         kHolePunch,   "True",    "HolePunch",           0},
    {"FaxKey",                  kFaxCard,     "True",    nullptr,               0},
    {"SingleStapleKey",         kFinisher,    "BLCSS",   "Collated, 1 Staple",  0},
    {"SingleStapleKey",         kFinisher,    "LCSS",    "Collated, 1 Staple",  0},
    {"SingleStapleKey",         kFinisher,    "HCSS",    "Collated, 1 Staple",  0},
    {"SingleStapleKey",         kFinisher,    "HCSS_BK", "Collated, 1 Staple",  0},
    {"DualStapleKey",           kFinisher,    "BLCSS",   "Collated, 2 Staples", 0},
    {"DualStapleKey",           kFinisher,    "LCSS",    "Collated, 2 Staples", 0},
    {"DualStapleKey",           kFinisher,    "HCSS",    "Collated, 2 Staples", 0},
    {"DualStapleKey",           kFinisher,    "HCSS_BK", "Collated, 2 Staples", 0},
    {"MultipleStapleKey",       kFinisher,    "HCSS",    "Collated, 4 Staples", 0},
    {"MultipleStapleKey",       kFinisher,    "HCSS_BK", "Collated, 4 Staples", 0},
    {"OffsettingCatchTrayKey",  kFinisher,    "OCT",     "OCT",                 0},
    {"TopTrayKey",              kFinisher,    "BLCSS",   "TopTray",             0},
    {"TopTrayKey",              kFinisher,    "LCSS",    "TopTray",             0},
    {"TopTrayKey",              kFinisher,    "HCSS",    "TopTray",             0},
    {"TopTrayKey",              kFinisher,    "HCSS_BK", "TopTray",             0},
    {"StackerTray1Key",         kFinisher,    "BLCSS",   "StackerTray",         0},
    {"StackerTray1Key",         kFinisher,    "LCSS",    "StackerTray",         0},
    {"StackerTray1Key",         kFinisher,    "HCSS",    "StackerTray1",        0},
    {"StackerTray1Key",         kFinisher,    "HCSS_BK", "StackerTray",         0},
    {"StackerTray2Key",         kFinisher,    "HCSS",    "StackerTray2",        0},
    {"BookletBinKey",           kFinisher,    "HCSS_BK", "BookletMakerBin",     0},
    {"BookletFoldKey",          kFinisher,    "HCSS_BK", nullptr,               0},
    {},
};
static_assert(std::size(InstalledFeatures) == 24 + 1);
// clang-format on
