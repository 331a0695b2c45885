// A finisher that the product line does not have: features of one's own choice in place of the installed ones.
#pragma once

#include "core/features/installable_options.h"
#include "panels/paper_output/finishing_choices.h"

#include <vector>

/// All features that the finishing menu asks for.
inline std::vector<const char*> AllFinishingFeatures() {
    std::vector<const char*> features{"SlipSheets", "Offset"};
    for (const FinishingChoice& choice : FinishingChoices()) {
        if (FeatureOf(choice) != nullptr) {
            features.push_back(FeatureOf(choice));
        }
    }
    return features;
}

/// The features are installed as long as it lives, on a printer with the finisher that a ZR420 comes with. Nothing is
/// afterwards.
class InstalledFinisher {
public:
    InstalledFinisher(PMTicketRef printerInfo, PPDContext ppd, const std::vector<const char*>& features) {
        for (const char* feature : features) {
            table_.push_back({feature, "Option2", "HCSS_BK", nullptr, 0});
        }
        table_.push_back({});
        UnloadInstallableOptions();
        LoadInstallableOptions(printerInfo, ppd, table_.data());
    }
    ~InstalledFinisher() { UnloadInstallableOptions(); }
    InstalledFinisher(const InstalledFinisher&) = delete;
    InstalledFinisher& operator=(const InstalledFinisher&) = delete;

private:
    std::vector<InstalledFeature> table_;
};
