#include "host/places.h"

#include <cstdlib>
#include <filesystem>
#include <initializer_list>

namespace {

namespace fs = std::filesystem;

/// The first of the places, relative to the executable's folder, that exists; the first one when none does, so that a
/// message can name it.
std::string firstExisting(std::initializer_list<const char*> places) {
    std::error_code ignored;
    const fs::path folder = fs::read_symlink("/proc/self/exe", ignored).parent_path();
    for (const char* place : places) {
        if (const fs::path path = folder / place; fs::exists(path, ignored)) {
            return path.lexically_normal().string();
        }
    }
    return (folder / *places.begin()).lexically_normal().string();
}

}  // namespace

std::string pluginPath() {
    if (const char* folder = std::getenv("TAVRO_PLUGIN_DIR"); folder != nullptr && *folder != '\0') {
        return (fs::path(folder) / "TavroFeatures.plugin").string();
    }
    return firstExisting({"../plugins/TavroFeatures.plugin", TAVRO_LIBRARY_PLACE "/plugins/TavroFeatures.plugin"});
}

std::string deviceProfilePath() {
    return pluginPath() + "/Contents/Resources/Device Profile.plist";
}

std::string hostBundlePath() {
    return firstExisting({"../TavroPrint.bundle", TAVRO_LIBRARY_PLACE "/TavroPrint.bundle"});
}

std::string pageReaderPath() {
    return firstExisting({"../lib/tavro-look", TAVRO_LIBRARY_PLACE "/tavro-look"});
}

std::string converterPath() {
    return firstExisting({"../lib/tavro-convert", TAVRO_LIBRARY_PLACE "/tavro-convert"});
}

std::string pageDrawerPath() {
    return firstExisting({"../lib/tavro-pictures", TAVRO_LIBRARY_PLACE "/tavro-pictures"});
}

std::string samplePPDPath() {
    return firstExisting({"../ppd/Tavro-ZR420.ppd", TAVRO_DATA_PLACE "/ppd/tavro/Tavro-ZR420.ppd"});
}
