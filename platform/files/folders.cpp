#include "platform/files/folders.h"

#include "platform/foundation/CFString.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <sys/stat.h>

namespace {

struct Place {
    OSType kind;
    const char* variable;
    const char* belowHome;
};

// The XDG base directories: kind, the variable that names it, else its place below the user's home.
constexpr Place kPlaces[] = {
    {kPreferencesFolderType, "XDG_CONFIG_HOME", "/.config"},
    {kApplicationSupportFolderType, "XDG_DATA_HOME", "/.local/share"},
};
static_assert(std::size(kPlaces) == 2);

/// The variable's path; empty when it is none, or a relative one, which the XDG rules ask to ignore.
std::string absolutePath(const char* variable) {
    const char* path = std::getenv(variable);
    return path && *path == '/' ? path : "";
}

/// Empty when the user has no home.
std::string folderPath(const Place& place) {
    if (const std::string path = absolutePath(place.variable); !path.empty()) {
        return path + "/tavro";
    }
    const std::string home = absolutePath("HOME");
    return home.empty() ? home : home + place.belowHome + "/tavro";
}

bool isFolder(const std::string& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

/// Makes the folder and those above it that are missing, for the user alone, as the XDG rules ask.
bool makeFolder(const std::string& path) {
    for (std::size_t slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1)) {
        mkdir(path.substr(0, slash).c_str(), 0700);  // most of them exist; the last one tells
    }
    return mkdir(path.c_str(), 0700) == 0 || isFolder(path);
}

bool isPlainFile(const std::string& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

/// Where files of the product's own may lie, the user's first.
std::vector<std::string> dataFolders() {
    std::vector<std::string> folders{folderPath(kPlaces[1])};
    const char* const listed = std::getenv("XDG_DATA_DIRS");
    std::istringstream system(listed != nullptr && *listed != '\0' ? listed : "/usr/local/share:/usr/share");
    for (std::string folder; std::getline(system, folder, ':');) {
        if (folder.starts_with('/')) {
            folders.push_back(folder + "/tavro");
        }
    }
    return folders;
}

}  // namespace

OSStatus FSFindFolder(SInt16 domain, OSType kind, Boolean create, FSRef* folder) {
    const Place* place = std::find_if(std::begin(kPlaces), std::end(kPlaces),
                                      [kind](const Place& candidate) { return candidate.kind == kind; });
    if (domain != kUserDomain || !folder || place == std::end(kPlaces)) {
        return paramErr;
    }
    const std::string path = folderPath(*place);
    if (path.empty() || path.size() >= sizeof folder->path || !(isFolder(path) || (create && makeFolder(path)))) {
        return fnfErr;
    }
    std::copy_n(path.c_str(), path.size() + 1, folder->path);
    return noErr;
}

OSStatus FSpDirCreate(CFURLRef folder) {
    UInt8 path[sizeof(FSRef::path)];
    if (!CFURLGetFileSystemRepresentation(folder, true, path, sizeof path)) {
        return fnfErr;
    }
    const auto* const name = reinterpret_cast<const char*>(path);
    return mkdir(name, 0700) == 0 || isFolder(name) ? noErr : fnfErr;
}

CFURLRef FSCopyDataFileURL(CFStringRef name) {
    char text[sizeof(FSRef::path)];
    if (!CFStringGetCString(name, text, sizeof text, kCFStringEncodingUTF8)) {
        return nullptr;
    }
    for (const std::string& folder : dataFolders()) {
        const std::string path = folder + '/' + text;
        if (!folder.empty() && isPlainFile(path)) {
            return makeFileURL(path).leak();
        }
    }
    return nullptr;
}
