// Saving one watermark in a store that is full of fonts, beside writing that store's bytes as they are.

#include "bench/side_by_side.h"
#include "model/settings/preference_files.h"
#include "platform/files/url_access.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"
#include "watermark/records/watermark_storage.h"

#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>

namespace {

#define kStore CFSTR("bench.plist")

/// Fills a new store with fonts of half a megabyte up to the size; base64 makes four bytes of three.
void fillStore(std::size_t megabytes) {
    ChangeStore(kStore, StoreUse::NewIfNone, [megabytes](CFMutableDictionaryRef root) {
        std::mt19937 random(1);
        std::vector<UInt8> font(384 * 1024);
        for (std::size_t i = 0; i < 2 * megabytes; ++i) {
            std::generate(font.begin(), font.end(), [&random] { return static_cast<UInt8>(random()); });
            const auto name = CFRef<CFStringRef>::adopt(
                CFStringCreateWithCString(nullptr, ("Font" + std::to_string(i)).c_str(), kCFStringEncodingUTF8));
            const auto data =
                CFRef<CFDataRef>::adopt(CFDataCreate(nullptr, font.data(), static_cast<CFIndex>(font.size())));
            CFDictionarySetValue(root, name.get(), data.get());
        }
        return true;
    });
}

void measure(std::size_t megabytes) {
    const auto url = CFRef<CFURLRef>::adopt(CopyPreferenceFileURL(kStore));
    const auto peerURL = CFRef<CFURLRef>::adopt(CopyPreferenceFileURL(CFSTR("peer.plist")));
    fillStore(megabytes);
    CFDataRef read = nullptr;
    CFURLCreateDataAndPropertiesFromResource(nullptr, url.get(), &read, nullptr, nullptr, nullptr);
    const auto bytes = CFRef<CFDataRef>::adopt(read);

    WatermarkRecord record = {};
    record.text[0] = 'x';
    record.kind = kTextWatermark;
    const std::string title = "store of " + std::to_string(CFDataGetLength(bytes.get()) / (1024 * 1024)) + " MB";
    bench::compare(
        title.c_str(), 9, "save",
        [&] {
            ++record.scale;
            saveWatermarkData(kStore, &record);
        },
        "write", [&] { CFURLWriteDataAndPropertiesToResource(peerURL.get(), bytes.get(), nullptr, nullptr); });
}

}  // namespace

int main() {
    std::string folder = (std::filesystem::temp_directory_path() / "tavro-bench-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr) {
        return 1;
    }
    for (const std::size_t megabytes : {1, 10, 50}) {
        setenv("XDG_DATA_HOME", (folder + "/" + std::to_string(megabytes)).c_str(), 1);
        measure(megabytes);
    }
    std::filesystem::remove_all(folder);
}
