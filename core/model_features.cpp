#include "core/model_features.h"

#include "core/feature_database.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/CFString.h"

#include <algorithm>
#include <cstring>
#include <tuple>

namespace {

CFDictionaryRef DictionaryOf(CFTypeRef value) {
    return CFGetTypeID(value) == CFDictionaryGetTypeID() ? static_cast<CFDictionaryRef>(value) : nullptr;
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

}  // namespace

ModelFeatures::ModelFeatures(CFStringRef model) : model_(CFRef<CFStringRef>::retain(model)) {
    const auto features = CFRef<CFArrayRef>::adopt(TDPGetFeaturesWithProperty(CFSTR("Models")));
    for (CFIndex i = 0; i < CFArrayGetCount(features.get()); ++i) {
        const auto* const feature = static_cast<CFDictionaryRef>(CFArrayGetValueAtIndex(features.get(), i));
        if (isOfModel(feature)) {
            isKnown_ = true;
            addOption(feature);
        }
    }
    const auto order = [](const InstalledFeature& left, const InstalledFeature& right) {
        return std::tuple(std::string_view(left.mainKeyword), std::string_view(left.optionKeyword),
                          std::string_view(left.featureKey)) < std::tuple(std::string_view(right.mainKeyword),
                                                                          std::string_view(right.optionKeyword),
                                                                          std::string_view(right.featureKey));
    };
    std::ranges::sort(rows_, order);
    rows_.push_back({});
}

bool ModelFeatures::has(CFStringRef feature) const {
    return isOfModel(TDPGetFeature(feature));
}

bool ModelFeatures::isOfModel(CFDictionaryRef feature) const {
    const CFTypeRef models = TDPGetFeatureProperty(feature, CFSTR("Models"));
    if (CFGetTypeID(models) != CFArrayGetTypeID()) {
        return false;
    }
    const auto* const list = static_cast<CFArrayRef>(models);
    for (CFIndex i = 0; i < CFArrayGetCount(list); ++i) {
        if (CFEqual(CFArrayGetValueAtIndex(list, i), model_.get())) {
            return true;
        }
    }
    return false;
}

void ModelFeatures::addOption(CFDictionaryRef feature) {
    const CFTypeRef isInstallable = TDPGetFeatureProperty(feature, CFSTR("Installable"));
    const char* const mainKeyword = keep(TDPGetFeatureProperty(feature, CFSTR("MainKeyword")));
    const CFDictionaryRef keywords = TDPGetFeatureSyntax(feature, kTDPSyntaxKeyword);
    if (isInstallable != kCFBooleanTrue || mainKeyword == nullptr || keywords == nullptr) {
        return;
    }
    ForEach(keywords, [this, mainKeyword](CFStringRef keyword, CFTypeRef described) {
        const CFDictionaryRef installs =
            DictionaryOf(TDPGetFeatureProperty(DictionaryOf(described), CFSTR("Installs")));
        addKeyword(mainKeyword, keyword, installs);
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
    if (CFGetTypeID(string) != CFStringGetTypeID()) {
        return nullptr;
    }
    const auto* const text = static_cast<CFStringRef>(string);
    std::string kept(static_cast<std::size_t>(CFStringGetLength(text)) * 3 + 1, '\0');
    CFStringGetCString(text, kept.data(), static_cast<CFIndex>(kept.size()), kCFStringEncodingUTF8);
    kept.resize(std::strlen(kept.c_str()));
    return texts_.emplace_back(std::move(kept)).c_str();
}
