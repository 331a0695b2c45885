// Counted objects from and to C++ values, for tests.
#pragma once

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"

#include <string>
#include <string_view>

inline CFRef<CFStringRef> makeCFString(std::string_view utf8) {
    return CFRef<CFStringRef>::adopt(CFStringCreateWithBytes(nullptr, reinterpret_cast<const UInt8*>(utf8.data()),
                                                             CFIndex(utf8.size()), kCFStringEncodingUTF8, false));
}

inline CFRef<CFDataRef> makeCFData(std::string_view bytes) {
    return CFRef<CFDataRef>::adopt(
        CFDataCreate(nullptr, reinterpret_cast<const UInt8*>(bytes.data()), CFIndex(bytes.size())));
}

inline CFRef<CFNumberRef> makeCFNumber(std::int64_t value) {
    return CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberSInt64Type, &value));
}

inline CFRef<CFNumberRef> makeCFNumber(double value) {
    return CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberDoubleType, &value));
}

inline CFRef<CFURLRef> makeCFURL(const std::string& path) {
    return CFRef<CFURLRef>::adopt(
        CFURLCreateWithFileSystemPath(nullptr, makeCFString(path).get(), kCFURLPOSIXPathStyle, false));
}

inline CFRef<CFMutableDictionaryRef> makeCFDictionary() {
    return CFRef<CFMutableDictionaryRef>::adopt(
        CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
}

inline CFRef<CFMutableArrayRef> makeCFArray() {
    return CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
}

/// UTF-8, or "(null)".
inline std::string textOfCF(CFStringRef string) {
    if (!string) {
        return "(null)";
    }
    std::string buffer(std::size_t(CFStringGetLength(string)) * 3 + 1, '\0');
    CFStringGetCString(string, buffer.data(), CFIndex(buffer.size()), kCFStringEncodingUTF8);
    return buffer.c_str();
}

inline std::string bytesOfCF(CFDataRef data) {
    return {reinterpret_cast<const char*>(CFDataGetBytePtr(data)), std::size_t(CFDataGetLength(data))};
}

/// The path of a file address, or "(none)".
inline std::string pathOfCF(CFURLRef url) {
    UInt8 path[4096];
    return CFURLGetFileSystemRepresentation(url, true, path, sizeof path) ? reinterpret_cast<const char*>(path)
                                                                          : "(none)";
}
