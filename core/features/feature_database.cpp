#include "core/features/feature_database.h"

#include "model/settings/plugin_state.h"
#include "platform/files/read_fault.h"
#include "platform/files/url_access.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/CFPropertyList.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"
#include "platform/foundation/terminal_text.h"

#include <cstdio>
#include <string>
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

CFDictionaryRef GetRoot() {
    if (const CFRef<CFURLRef> profile = std::exchange(gProfile, {})) {
        const auto root = CFRef<CFTypeRef>::adopt(CreatePropertiesFromXMLFile(profile.get()));
        if (CFGetTypeID(root.get()) == CFDictionaryGetTypeID()) {
            gDatabase = CFRef<CFDictionaryRef>::retain(static_cast<CFDictionaryRef>(root.get()));
        }
    }
    return gDatabase.get();
}

CFDictionaryRef GetFeatures() {
    return GetDictionary(GetRoot(), CFSTR("Features"));
}

/// The dictionary that a file holds; null, and the reason printed, when it holds none.
CFRef<CFDictionaryRef> ReadProfile(CFURLRef file) {
    CFDataRef data = nullptr;
    CFStringRef error = nullptr;
    SInt32 fault = 0;
    CFRef<CFTypeRef> root;
    if (CFURLCreateDataAndPropertiesFromResource(kCFAllocatorDefault, file, &data, nullptr, nullptr, &fault)) {
        const auto owned = CFRef<CFDataRef>::adopt(data);
        root = CFRef<CFTypeRef>::adopt(
            CFPropertyListCreateFromXMLData(kCFAllocatorDefault, data, kCFPropertyListImmutable, &error));
    }
    const auto reason = CFRef<CFStringRef>::adopt(error);
    if (CFGetTypeID(root.get()) == CFDictionaryGetTypeID()) {
        return CFRef<CFDictionaryRef>::retain(static_cast<CFDictionaryRef>(root.get()));
    }
    UInt8 path[sizeof(FSRef::path)] = {};
    CFURLGetFileSystemRepresentation(file, true, path, sizeof path);
    char text[256] = "it holds no dictionary";
    CFStringGetCString(reason.get(), text, sizeof text, kCFStringEncodingUTF8);
    printLine(stderr, reinterpret_cast<const char*>(path) + std::string(": ") +
                          (fault != 0 ? readFault(fault, kMaximumFileBytes) : text));
    return {};
}

/// A new dictionary of the entries of both; those of `additions` go before.
CFRef<CFMutableDictionaryRef> CopyWith(CFDictionaryRef dictionary, CFDictionaryRef additions) {
    auto all = CFRef<CFMutableDictionaryRef>::adopt(
        dictionary != nullptr ? CFDictionaryCreateMutableCopy(kCFAllocatorDefault, 0, dictionary)
                              : CFDictionaryCreateMutable(kCFAllocatorDefault, 0, &kCFTypeDictionaryKeyCallBacks,
                                                          &kCFTypeDictionaryValueCallBacks));
    for (const Entry& entry : GetEntries(additions)) {
        CFDictionarySetValue(all.get(), entry.key, entry.dictionary);
    }
    return all;
}

}  // namespace

void TDPInitialize() {
    if (!gDatabase && !gProfile) {
        gProfile = CFRef<CFURLRef>::adopt(
            CFBundleCopyResourceURL(GetPDEBundle(), CFSTR("Device Profile"), CFSTR("plist"), nullptr));
    }
}

void TDPInitializeFromFile(CFURLRef file) {
    if (!gDatabase && !gProfile) {
        gProfile = CFRef<CFURLRef>::retain(file);
    }
}

void TDPFinalize() {
    gProfile = nullptr;
    gDatabase = nullptr;
}

bool TDPAddProfile(CFURLRef file) {
    const CFRef<CFDictionaryRef> added = ReadProfile(file);
    if (!added) {
        return false;
    }
    const auto root = CopyWith(GetRoot(), nullptr);
    for (const CFStringRef part : {CFSTR("Features"), CFSTR("Models")}) {
        const auto merged = CopyWith(GetDictionary(root.get(), part), GetDictionary(added.get(), part));
        CFDictionarySetValue(root.get(), part, merged.get());
    }
    gDatabase = CFRef<CFDictionaryRef>::retain(root.get());
    return true;
}

CFDictionaryRef TDPGetModel(CFStringRef name) {
    return GetDictionary(GetDictionary(GetRoot(), CFSTR("Models")), name);
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
