#include "core/features/model_features.h"

#include "core/features/feature_database.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <string_view>
#include <tuple>

namespace {

template <typename Ref>
Ref As(CFTypeRef value, CFTypeID type) {
    return CFGetTypeID(value) == type ? static_cast<Ref>(value) : nullptr;
}

CFDictionaryRef DictionaryOf(CFTypeRef value) {
    return As<CFDictionaryRef>(value, CFDictionaryGetTypeID());
}

bool Holds(CFArrayRef list, CFStringRef text) {
    for (CFIndex i = 0; i < CFArrayGetCount(list); ++i) {
        if (CFEqual(CFArrayGetValueAtIndex(list, i), text)) {
            return true;
        }
    }
    return false;
}

constexpr std::size_t kLongestLineage = 32;

/// The model and those that it is like, one behind the other. A ring of them ends where it closes.
std::vector<CFStringRef> LineageOf(CFStringRef model) {
    std::vector<CFStringRef> lineage;
    const auto isNew = [&lineage](CFStringRef name) {
        return std::ranges::none_of(lineage, [name](CFStringRef known) { return CFEqual(known, name); });
    };
    while (model != nullptr && lineage.size() < kLongestLineage && isNew(model)) {
        lineage.push_back(model);
        model = As<CFStringRef>(CFDictionaryGetValue(TDPGetModel(model), CFSTR("Like")), CFStringGetTypeID());
    }
    return lineage;
}

/// Calls `use` with each key of the dictionary that is a string, and its value.
template <typename Use>
void ForEach(CFDictionaryRef dictionary, Use use) {
    const auto count = static_cast<std::size_t>(CFDictionaryGetCount(dictionary));
    std::vector<const void*> keys(count);
    std::vector<const void*> values(count);
    CFDictionaryGetKeysAndValues(dictionary, keys.data(), values.data());
    for (std::size_t i = 0; i < count; ++i) {
        if (CFGetTypeID(keys[i]) == CFStringGetTypeID()) {
            use(static_cast<CFStringRef>(keys[i]), values[i]);
        }
    }
}

struct InstallableFeature {
    std::size_t distance;
    CFDictionaryRef feature;
};

}  // namespace

ModelFeatures::ModelFeatures(CFStringRef model) : lineage_(LineageOf(model)) {
    isKnown_ = TDPGetModel(model) != nullptr;
    const auto features = CFRef<CFArrayRef>::adopt(TDPGetFeaturesWithProperty(CFSTR("Models")));
    std::multimap<std::string_view, InstallableFeature> installable;  // by main keyword
    for (CFIndex i = 0; i < CFArrayGetCount(features.get()); ++i) {
        const auto* const feature = static_cast<CFDictionaryRef>(CFArrayGetValueAtIndex(features.get(), i));
        const auto found = distance(feature);
        isKnown_ = isKnown_ || found;
        const char* const mainKeyword = keep(TDPGetFeatureProperty(feature, CFSTR("MainKeyword")));
        if (found && mainKeyword != nullptr && TDPGetFeatureProperty(feature, CFSTR("Installable")) == kCFBooleanTrue) {
            installable.emplace(mainKeyword, InstallableFeature{*found, feature});
        }
    }
    for (auto option = installable.begin(); option != installable.end();) {
        const auto end = installable.upper_bound(option->first);
        const std::size_t nearest = std::min_element(option, end, [](const auto& left, const auto& right) {
                                        return left.second.distance < right.second.distance;
                                    })->second.distance;
        for (; option != end; ++option) {
            if (option->second.distance == nearest) {
                options_.push_back(option->second.feature);
                addOption(option->first.data(), option->second.feature);
            }
        }
    }
    std::ranges::sort(rows_, [](const InstalledFeature& left, const InstalledFeature& right) {
        const auto order = [](const InstalledFeature& row) {
            return std::tuple(std::string_view(row.mainKeyword), std::string_view(row.optionKeyword),
                              std::string_view(row.featureKey));
        };
        return order(left) < order(right);
    });
    rows_.push_back({});
}

bool ModelFeatures::has(CFStringRef feature) const {
    const auto found = distance(TDPGetFeature(feature));
    if (!found) {
        return false;
    }
    return std::none_of(
        lineage_.begin(), lineage_.begin() + static_cast<std::ptrdiff_t>(*found), [feature](CFStringRef model) {
            const auto* const lacks =
                As<CFArrayRef>(CFDictionaryGetValue(TDPGetModel(model), CFSTR("Lacks")), CFArrayGetTypeID());
            return Holds(lacks, feature);
        });
}

CFDictionaryRef ModelFeatures::feature(CFStringRef mainKeyword) const {
    const auto features =
        CFRef<CFArrayRef>::adopt(TDPGetFeaturesWithPropertyAndValue(CFSTR("MainKeyword"), mainKeyword));
    CFDictionaryRef nearest = nullptr;
    for (CFIndex i = 0; i < CFArrayGetCount(features.get()); ++i) {
        const auto* const feature = static_cast<CFDictionaryRef>(CFArrayGetValueAtIndex(features.get(), i));
        if (distance(feature) && (nearest == nullptr || *distance(feature) < *distance(nearest))) {
            nearest = feature;
        }
    }
    return nearest;
}

CFArrayRef ModelFeatures::list(CFStringRef key) const {
    for (const CFStringRef model : lineage_) {
        const auto* const found = As<CFArrayRef>(CFDictionaryGetValue(TDPGetModel(model), key), CFArrayGetTypeID());
        if (found != nullptr) {
            return found;
        }
    }
    return nullptr;
}

/// How many steps along the lineage the first model is that has the feature; nothing when none of them has it.
std::optional<std::size_t> ModelFeatures::distance(CFDictionaryRef feature) const {
    const auto* const models = As<CFArrayRef>(TDPGetFeatureProperty(feature, CFSTR("Models")), CFArrayGetTypeID());
    const auto found = std::ranges::find_if(lineage_, [models](CFStringRef model) { return Holds(models, model); });
    return found != lineage_.end() ? std::optional(static_cast<std::size_t>(found - lineage_.begin())) : std::nullopt;
}

void ModelFeatures::addOption(const char* mainKeyword, CFDictionaryRef feature) {
    ForEach(TDPGetFeatureSyntax(feature, kTDPSyntaxKeyword),
            [this, mainKeyword](CFStringRef keyword, CFTypeRef described) {
                addKeyword(mainKeyword, keyword,
                           DictionaryOf(TDPGetFeatureProperty(DictionaryOf(described), CFSTR("Installs"))));
            });
}

void ModelFeatures::addKeyword(const char* mainKeyword, CFStringRef keyword, CFDictionaryRef installs) {
    const char* const optionKeyword = keep(keyword);
    ForEach(installs, [&](CFStringRef featureKey, CFTypeRef value) {
        const CFDictionaryRef described = DictionaryOf(value);
        if (described == nullptr) {
            return;
        }
        SInt32 ticketValue = 0;
        const CFTypeRef number = CFDictionaryGetValue(described, CFSTR("TicketValue"));
        if (CFGetTypeID(number) == CFNumberGetTypeID()) {
            CFNumberGetValue(static_cast<CFNumberRef>(number), kCFNumberSInt32Type, &ticketValue);
        }
        rows_.push_back({keep(featureKey), mainKeyword, optionKeyword,
                         keep(CFDictionaryGetValue(described, CFSTR("Name"))), ticketValue});
    });
}

const char* ModelFeatures::keep(CFTypeRef string) {
    const auto* const text = As<CFStringRef>(string, CFStringGetTypeID());
    if (text == nullptr) {
        return nullptr;
    }
    std::string kept(static_cast<std::size_t>(CFStringGetLength(text)) * 3 + 1, '\0');
    CFStringGetCString(text, kept.data(), static_cast<CFIndex>(kept.size()), kCFStringEncodingUTF8);
    kept.resize(std::strlen(kept.c_str()));
    return texts_.emplace_back(std::move(kept)).c_str();
}
