#include "platform/printing/page_options.h"

#include "platform/printing/job_options.h"

#include <algorithm>
#include <array>

namespace {

struct PageOption {
    const char* name;
    const char* value;  // that leaves pages as they are; null for one that has no such value
};
constexpr std::array kPageOptions{
    PageOption{kNumberUpOption, "1"},
    PageOption{kScalingOption, "none"},
    PageOption{kAutorotateOption, "false"},
    PageOption{kOrientationOption, kPortraitRequested},
    PageOption{"booklet", "off"},
    PageOption{"page-border", "none"},
    PageOption{"page-set", "all"},
    PageOption{"outputorder", "normal"},
    PageOption{"mirror", "false"},
    PageOption{"fit-to-page", "false"},
    PageOption{"number-up-layout", nullptr},
    PageOption{"landscape", nullptr},
    PageOption{"fitplot", nullptr},
    PageOption{"fill", nullptr},
    PageOption{"scaling", nullptr},
    PageOption{"natural-scaling", nullptr},
    PageOption{"position", nullptr},
    PageOption{"page-left", nullptr},
    PageOption{"page-right", nullptr},
    PageOption{"page-top", nullptr},
    PageOption{"page-bottom", nullptr},
};

}  // namespace

bool isPageOption(std::string_view name) {
    return std::ranges::any_of(kPageOptions, [&](const PageOption& each) { return isSameOption(each.name, name); });
}

OptionList pagesAsTheyAre() {
    OptionList options;
    for (const auto& [name, value] : kPageOptions) {
        if (value != nullptr) {
            options.emplace_back(name, value);
        }
    }
    return options;
}
