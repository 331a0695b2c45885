#include "core/feature_database.h"

#include "model/plugin_state.h"
#include "platform/files/url_access.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/CFPropertyList.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"

#include <utility>
#include <vector>

namespace {

CFRef<CFURLRef> gProfile;  // which the first query reads: many printers have none
CFRef<CFDictionaryRef> gDatabase;

/// A dictionary inside another one; null when the key holds none.
CFDictionaryRef GetDictionary(CFDictionaryRef dictionary, CFStringRef key) {
    const void* value = CFDictionaryGetValue(dictionary, key);
    return CFGetTypeID(value) == CFDictionaryGetTypeID() ? static_cast<CFDictionaryRef>(value) : nullptr;
}

/// The values of a dictionary that are dictionaries, with their keys.
struct Entry {
    CFTypeRef key;
    CFDictionaryRef dictionary;
};
std::vector<Entry> GetEntries(CFDictionaryRef dictionary) {
    const auto count = static_cast<std::size_t>(CFDictionaryGetCount(dictionary));
    std::vector<const void*> keys(count);
    std::vector<const void*> values(count);
    CFDictionaryGetKeysAndValues(dictionary, keys.data(), values.data());
    std::vector<Entry> entries;
    for (std::size_t i = 0; i < count; ++i) {
        if (CFGetTypeID(values[i]) == CFDictionaryGetTypeID()) {
            entries.push_back({keys[i], static_cast<CFDictionaryRef>(values[i])});
        }
    }
    return entries;
}

/// The value of a property of a feature or keyword; null when it has none.
CFTypeRef GetProperty(CFDictionaryRef described, CFStringRef property) {
    return CFDictionaryGetValue(GetDictionary(described, CFSTR("Properties")), property);
}

/// A new array of the dictionaries inside `all` whose property meets the condition.
template <typename Condition>
CFArrayRef CreateSelection(CFDictionaryRef all, CFStringRef property, Condition condition) {
    const CFMutableArrayRef selection = CFArrayCreateMutable(kCFAllocatorDefault, 0, &kCFTypeArrayCallBacks);
    for (const Entry& entry : GetEntries(all)) {
        if (condition(GetProperty(entry.dictionary, property))) {
            CFArrayAppendValue(selection, entry.dictionary);
        }
    }
    return selection;
}

CFDictionaryRef GetFeatures() {
    if (const CFRef<CFURLRef> profile = std::exchange(gProfile, {})) {
        const auto root = CFRef<CFTypeRef>::adopt(CreatePropertiesFromXMLFile(profile.get()));
        if (CFGetTypeID(root.get()) == CFDictionaryGetTypeID()) {
            gDatabase = CFRef<CFDictionaryRef>::retain(static_cast<CFDictionaryRef>(root.get()));
        }
    }
    return GetDictionary(gDatabase.get(), CFSTR("Features"));
}

}  // namespace

void TDPInitialize() {
    if (!gDatabase && !gProfile) {
        gProfile = CFRef<CFURLRef>::adopt(
            CFBundleCopyResourceURL(GetPDEBundle(), CFSTR("Device Profile"), CFSTR("plist"), nullptr));
    }
}

void TDPFinalize() {
    gProfile = nullptr;
    gDatabase = nullptr;
}

CFDictionaryRef TDPGetFeature(CFStringRef name) {
    return GetDictionary(GetFeatures(), name);
}

CFArrayRef TDPGetFeaturesWithPropertyAndValue(CFStringRef property, CFTypeRef value) {
    return CreateSelection(GetFeatures(), property, [value](CFTypeRef present) {
        return present != nullptr && (value == nullptr || CFEqual(present, value));
    });
}

CFArrayRef TDPGetFeaturesWithProperty(CFStringRef property) {
    return TDPGetFeaturesWithPropertyAndValue(property, nullptr);
}

CFDictionaryRef TDPGetFeatureSyntax(CFDictionaryRef feature, CFStringRef syntaxKind) {
    return GetDictionary(GetDictionary(feature, CFSTR("Syntax")), syntaxKind);
}

CFTypeRef TDPGetFeatureProperty(CFDictionaryRef feature, CFStringRef property) {
    return GetProperty(feature, property);
}

CFArrayRef TDPGetKeywordsWithPropertyAndValue(CFDictionaryRef feature, CFStringRef property, CFTypeRef value) {
    return CreateSelection(TDPGetFeatureSyntax(feature, kTDPSyntaxKeyword), property,
                           [value](CFTypeRef present) { return present != nullptr && CFEqual(present, value); });
}

Boolean TDPGetFeatureDefaultValue(CFDictionaryRef feature, CFStringRef* syntaxKind, CFTypeRef* value) {
    for (const Entry& keyword : GetEntries(TDPGetFeatureSyntax(feature, kTDPSyntaxKeyword))) {
        if (CFDictionaryGetValue(keyword.dictionary, CFSTR("Default")) == kCFBooleanTrue) {
            *syntaxKind = kTDPSyntaxKeyword;
            *value = keyword.key;
            return true;
        }
    }
    for (const CFStringRef kind : {kTDPSyntaxName, kTDPSyntaxNumber}) {
        const void* found = CFDictionaryGetValue(TDPGetFeatureSyntax(feature, kind), CFSTR("Default"));
        if (found != nullptr) {
            *syntaxKind = kind;
            *value = found;
            return true;
        }
    }
    return false;
}

CFTypeRef CreatePropertiesFromXMLFile(CFURLRef url) {
    CFDataRef data = nullptr;
    SInt32 error = 0;
    if (!CFURLCreateDataAndPropertiesFromResource(kCFAllocatorDefault, url, &data, nullptr, nullptr, &error)) {
        return nullptr;
    }
    const auto owned = CFRef<CFDataRef>::adopt(data);
    return CFPropertyListCreateFromXMLData(kCFAllocatorDefault, data, kCFPropertyListImmutable, nullptr);
}
