#include "watermark/records/watermark_font.h"

#include "model/settings/preference_files.h"
#include "model/settings/record_ticket.h"
#include "platform/files/url_access.h"
#include "platform/fonts/ATSFont.h"
#include "watermark/records/watermark_storage.h"
#include "watermark/type42/type42.h"

#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

namespace {

struct FontSource {
    CFRef<CFDataRef> bytes;  // the whole file; null when there is none
    UInt32 face;             // its place in a collection
};

FontSource ReadFont(CFStringRef postScriptName) {
    const FMFont font = FMGetFontFromATSFontRef(ATSFontFindFromPostScriptName(postScriptName, kATSOptionFlagsDefault));
    FSRef file = {};
    if (FMGetFontContainer(font, &file) != noErr) {
        return {};
    }
    const auto path = CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, file.path, kCFStringEncodingUTF8));
    const auto url =
        CFRef<CFURLRef>::adopt(CFURLCreateWithFileSystemPath(nullptr, path.get(), kCFURLPOSIXPathStyle, false));
    CFDataRef bytes = nullptr;
    CFURLCreateDataAndPropertiesFromResource(nullptr, url.get(), &bytes, nullptr, nullptr, nullptr);
    return {CFRef<CFDataRef>::adopt(bytes), FMGetFontIndex(font)};
}

/// FNV-1a, eight bytes at a time.
std::uint64_t Fingerprint(CFDataRef data) {
    std::uint64_t hash = 0xCBF29CE484222325;
    const UInt8* bytes = CFDataGetBytePtr(data);
    for (CFIndex left = CFDataGetLength(data); left > 0; left -= 8, bytes += 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes, left < 8 ? static_cast<std::size_t>(left) : 8);
        hash = (hash ^ word) * 0x100000001B3;
        hash ^= hash >> 32;
    }
    return hash;
}

/// The last line of a font made of this source. The number in front is the form's: a new one makes all fonts anew.
std::string SourceLine(const FontSource& source) {
    char line[80];
    std::snprintf(line, sizeof line, "%%TavroFontSource: 1 %016llx %lld %u\n",
                  static_cast<unsigned long long>(Fingerprint(source.bytes.get())),
                  static_cast<long long>(CFDataGetLength(source.bytes.get())), source.face);
    return line;
}

/// Whether the store's root has a font under the name that ends in the line.
bool IsStored(CFDictionaryRef root, CFStringRef postScriptName, const std::string& sourceLine) {
    const void* stored = CFDictionaryGetValue(root, postScriptName);
    if (CFGetTypeID(stored) != CFDataGetTypeID()) {
        return false;
    }
    const auto* font = static_cast<CFDataRef>(stored);
    const std::string_view program(reinterpret_cast<const char*>(CFDataGetBytePtr(font)),
                                   static_cast<std::size_t>(CFDataGetLength(font)));
    return program.ends_with(sourceLine);
}

}  // namespace

CFRef<CFDataRef> CopyInstalledFont(CFStringRef postScriptName) {
    const FontSource source = ReadFont(postScriptName);
    FontRefusal refusal = FontRefusal::none;
    return source.bytes && CFDataGetLength(source.bytes.get()) > 0
               ? convertTTFtoPS42(source.bytes.get(), postScriptName, source.face, &refusal)
               : CFRef<CFDataRef>();
}

void convertFont(CFStringRef watermark) {
    // Read once: a store holds as many watermarks as the user likes.
    const auto root = CFRef<CFMutableDictionaryRef>::adopt(CopyXMLData(kWatermarkStore));
    const CFDictionaryRef stored = GetRecordDictionary(root.get(), watermark);
    WatermarkRecord record = {};
    if (stored != nullptr) {
        ReadWatermarkDictionary(stored, watermark, &record);
    }
    if (record.kind == kImageWatermark) {
        return;
    }
    const auto name =
        CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, record.fontName, kCFStringEncodingUTF8));
    if (GetRecordDictionary(root.get(), name.get()) != nullptr) {
        return;  // a watermark is called like the font, and would be lost
    }
    const FontSource source = ReadFont(name.get());
    if (!source.bytes || CFDataGetLength(source.bytes.get()) == 0) {
        return;
    }
    const std::string line = SourceLine(source);
    if (IsStored(root.get(), name.get(), line)) {
        return;
    }
    FontRefusal refusal = FontRefusal::none;
    const CFRef<CFDataRef> program = convertTTFtoPS42(source.bytes.get(), name.get(), source.face, &refusal);
    if (!program) {
        return;
    }
    const auto font = CFRef<CFMutableDataRef>::adopt(CFDataCreateMutable(nullptr, 0));
    CFDataAppendBytes(font.get(), CFDataGetBytePtr(program.get()), CFDataGetLength(program.get()));
    CFDataAppendBytes(font.get(), reinterpret_cast<const UInt8*>(line.data()), static_cast<CFIndex>(line.size()));
    if (const FolderLock lock = LockStores(); lock) {
        storeFontData(kWatermarkStore, name.get(), font.get());
    }
}
