#include "core/features/installable_options.h"

#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"

#include <string>

namespace {

constexpr int kInstallableOptionCount = 25;

CFRef<CFMutableDictionaryRef> gCache;
const InstalledFeature* gTable = nullptr;

CFRef<CFStringRef> CopyText(ConstPPDString text) {
    return CFRef<CFStringRef>::adopt(
        CFStringCreateWithBytes(kCFAllocatorDefault, text + 1, text[0], kCFStringEncodingMacRoman, false));
}

/// Adds the chosen options of one main keyword to the cache; of several, the first stays.
void ReadInstallableOption(PPDContext context, const std::string& mainKeyword) {
    const std::string prefixed = static_cast<char>(mainKeyword.size()) + mainKeyword;
    const auto* key = reinterpret_cast<ConstPPDString>(prefixed.data());
    UInt32 mainIndex = 0;
    if (ppdGetMainIndex(context, key, &mainIndex) != noErr) {
        return;
    }
    const UInt32 count = ppdCountUIOptions(context, mainIndex);
    for (UInt32 index = 0; index < count; ++index) {
        PPDUIOption option{};
        ConstPPDString optionKeyword = nullptr;
        if (ppdGetIndUIOption(context, mainIndex, index, &option) == noErr && option.isChosen != 0 &&
            ppdGetOptionString(context, mainIndex, option.optionIndex, &optionKeyword) == noErr) {
            CFDictionaryAddValue(gCache.get(), CopyText(key).get(), CopyText(optionKeyword).get());
        }
    }
}

Boolean IsChosen(const char* mainKeyword, const char* optionKeyword) {
    CFStringRef chosen = nullptr;
    return getInstallableOptionValue(CFStringMakeConstant(mainKeyword), &chosen) &&
           CFEqual(chosen, CFStringMakeConstant(optionKeyword));
}

/// The first installed row of a feature that meets the condition; null when there is none.
template <typename Condition>
const InstalledFeature* FindInstalled(CFStringRef featureKey, Condition condition) {
    if (featureKey == nullptr) {
        return nullptr;
    }
    for (const InstalledFeature* row = gTable; row != nullptr && row->featureKey != nullptr; ++row) {
        if (CFEqual(featureKey, CFStringMakeConstant(row->featureKey)) &&
            IsChosen(row->mainKeyword, row->optionKeyword) && condition(*row)) {
            return row;
        }
    }
    return nullptr;
}

const InstalledFeature* FindInstalled(CFStringRef featureKey) {
    return FindInstalled(featureKey, [](const InstalledFeature&) { return true; });
}

}  // namespace

Boolean LoadInstallableOptions(PMTicketRef printerInfo, PPDContext context, const InstalledFeature* table) {
    if (gCache || gTable != nullptr) {
        return false;
    }
    gTable = table;
    gCache = CFRef<CFMutableDictionaryRef>::adopt(CFDictionaryCreateMutable(
        kCFAllocatorDefault, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    setInstallableOptions(context, printerInfo);
    for (int n = 1; n <= kInstallableOptionCount; ++n) {
        ReadInstallableOption(context, "Option" + std::to_string(n));
    }
    return true;
}

void UnloadInstallableOptions() {
    gCache = nullptr;
    gTable = nullptr;
}

Boolean getInstallableOptionValue(CFStringRef mainKeyword, CFStringRef* optionKeyword) {
    if (mainKeyword == nullptr || optionKeyword == nullptr) {
        return false;
    }
    const auto* found = static_cast<CFStringRef>(CFDictionaryGetValue(gCache.get(), mainKeyword));
    if (found != nullptr) {
        *optionKeyword = found;
    }
    return found != nullptr;
}

Boolean getInstalledFeature(CFStringRef featureKey) {
    return FindInstalled(featureKey) != nullptr;
}

Boolean getInstallableOptionTicketValue(CFStringRef featureKey, SInt32* value) {
    const InstalledFeature* row = FindInstalled(featureKey);
    if (row == nullptr || value == nullptr) {
        return false;
    }
    *value = row->ticketValue;
    return true;
}

CFStringRef CopyLocalizedStringForInstalledFeatureFromPlugin(CFStringRef featureKey, CFBundleRef bundle) {
    const CFStringRef notFound = CFSTR("STRING NOT FOUND");
    const InstalledFeature* row =
        FindInstalled(featureKey, [](const InstalledFeature& feature) { return feature.localizationKey != nullptr; });
    if (row == nullptr || bundle == nullptr) {
        return notFound;
    }
    return CFBundleCopyLocalizedString(bundle, CFStringMakeConstant(row->localizationKey), notFound, nullptr);
}
