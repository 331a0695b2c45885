#include "host/settings/presets.h"

#include "host/script/quoted.h"
#include "host/settings/preset_content.h"
#include "platform/files/folders.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/message.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <numeric>
#include <set>

namespace {

namespace fs = std::filesystem;

constexpr const char* kSuffix = ".plist";

bool isControl(char c) {
    return (static_cast<unsigned char>(c) < ' ') || c == '\x7F';
}

/// Empty when the user has no such folder, or none can be made.
fs::path folderPath(const char* name, bool make) {
    FSRef folder{};
    if (FSFindFolder(kUserDomain, kPreferencesFolderType, make, &folder) != noErr) {
        return {};
    }
    const fs::path path = fs::path(folder.path) / name;
    return make && FSpDirCreate(makeFileURL(path.string(), true).get()) != noErr ? fs::path() : path;
}

/// A file's name may be 255 bytes long and has no slash, and on some file systems letters have no case. So it is made
/// of the beginning of the settings' name, for people, and a number that stands for all of it (FNV-1a).
std::string fileStem(const std::string& name) {
    constexpr std::size_t kMostForPeople = 32;
    std::string stem;
    std::uint64_t number = 0xcbf29ce484222325;
    for (const char c : name) {
        number = (number ^ static_cast<unsigned char>(c)) * 0x100000001b3;
        const bool isPlain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (stem.size() < kMostForPeople && (isPlain || (!stem.empty() && stem.back() != '-'))) {
            stem += isPlain ? c : '-';
        }
    }
    std::array<char, 17> digits{};
    std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(number));
    return stem + (stem.empty() || stem.back() == '-' ? "" : "-") + digits.data();
}

struct KeptFile {
    fs::path path;
    std::string name;  // empty for a file that cannot be read
    Result<JobSettings> settings;
};

KeptFile readFile(const fs::path& path) {
    std::string name;
    Result<JobSettings> settings = readSettingsFile(path.string(), &name);
    // A settings file that somebody has put there is called like the file.
    return {path, settings && name.empty() ? path.stem().string() : name, std::move(settings)};
}

/// Hands over the plain files in the folder one by one, in the order of their names.
template <typename Take>
void readFolder(const fs::path& folder, Take take) {
    std::vector<fs::path> paths;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        std::error_code ignored;
        if (entry->path().extension() == kSuffix && entry->is_regular_file(ignored)) {
            paths.push_back(entry->path());
        }
    }
    std::ranges::sort(paths);
    for (const fs::path& path : paths) {
        take(readFile(path));
    }
}

/// The files with settings of that name: one, unless somebody has put another one there.
std::vector<KeptFile> filesNamed(const fs::path& folder, const std::string& name) {
    const fs::path usual = folder / (fileStem(name) + kSuffix);
    std::error_code ignored;
    if (fs::is_regular_file(usual, ignored)) {
        if (KeptFile file = readFile(usual); file.name == name) {
            return {std::move(file)};
        }
    }
    std::vector<KeptFile> files;
    readFolder(folder, [&](KeptFile file) {
        if (file.name == name) {
            files.push_back(std::move(file));
        }
    });
    return files;
}

/// Names that the user's language takes for equal stay in their order.
std::vector<std::string> inUsersOrder(std::vector<std::string> names) {
    std::vector<CFRef<CFStringRef>> texts;
    std::vector<CFStringRef> lent;
    texts.reserve(names.size());
    lent.reserve(names.size());
    for (const std::string& name : names) {
        lent.push_back(texts.emplace_back(makeString(name)).get());
    }
    std::vector<UInt32> ranks(names.size());
    CFStringGetLocalizedRanks(lent.data(), static_cast<CFIndex>(lent.size()), ranks.data());
    std::vector<std::size_t> order(names.size());
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order, {}, [&](std::size_t place) { return ranks[place]; });
    std::vector<std::string> sorted;
    sorted.reserve(names.size());
    for (const std::size_t place : order) {
        sorted.push_back(std::move(names[place]));
    }
    return sorted;
}

/// A place for new settings: the usual file, or one beside it when settings of another name or unreadable ones are
/// there.
fs::path freePath(const fs::path& folder, const std::string& name) {
    const std::string stem = fileStem(name);
    fs::path path = folder / (stem + kSuffix);
    std::error_code ignored;
    for (int copy = 2; fs::exists(fs::symlink_status(path, ignored)); ++copy) {
        path = folder / (stem + "-" + std::to_string(copy) + kSuffix);
    }
    return path;
}

}  // namespace

std::string KeptSettings::subject(const std::string& name) const {
    return messageText(kind_, {quoted(name)});
}

KeptSettings::Names KeptSettings::list() const {
    Names found;
    std::set<std::string> names;
    readFolder(folderPath(folder_, false), [&](const KeptFile& file) {
        if (file.name.empty()) {
            found.unreadable.push_back({file.path.filename().string(), file.settings.failure().line});
        } else {
            names.insert(file.name);
        }
    });
    found.names = inUsersOrder({names.begin(), names.end()});
    return found;
}

Result<JobSettings> KeptSettings::read(const std::string& name) const {
    const fs::path folder = folderPath(folder_, false);
    for (KeptFile& file : filesNamed(folder, name)) {
        return content_(*file.settings);
    }
    // Settings of that name whose file is damaged have lost it; their place still says whose they were.
    std::error_code ignored;
    if (const fs::path usual = folder / (fileStem(name) + kSuffix); fs::is_regular_file(usual, ignored)) {
        if (Result<JobSettings> settings = readSettingsFile(usual.string()); !settings) {
            return Failure{ExitStatus::unusableInput, subject(name) + ": " + settings.failure().line};
        }
    }
    return Failure{ExitStatus::unusableInput, subject(name) + ": " + messageText("there is none of that name")};
}

bool KeptSettings::contains(const std::string& name) const {
    return !filesNamed(folderPath(folder_, false), name).empty();
}

std::optional<std::string> KeptSettings::write(const std::string& name, const JobSettings& settings) const {
    const fs::path folder = folderPath(folder_, true);
    if (folder.empty()) {
        return subject(name) + ": " + messageText("your configuration folder cannot be made");
    }
    const std::vector<KeptFile> files = filesNamed(folder, name);
    const fs::path path = files.empty() ? freePath(folder, name) : files.front().path;
    return writeSettingsFile(content_(settings), path.string(), name);
}

std::optional<std::string> KeptSettings::remove(const std::string& name) const {
    const std::vector<KeptFile> files = filesNamed(folderPath(folder_, false), name);
    if (files.empty()) {
        return subject(name) + ": " + messageText("there is none of that name");
    }
    for (const KeptFile& file : files) {
        if (std::error_code error; !fs::remove(file.path, error) && error) {
            return file.path.string() + ": " + systemMessage(error.value());
        }
    }
    return std::nullopt;
}

std::optional<std::string> KeptSettings::rename(const std::string& name, const std::string& newName) const {
    Result<JobSettings> settings = read(name);
    if (!settings) {
        return settings.failure().line;
    }
    if (name == newName) {
        return std::nullopt;
    }
    // In this order, so that a crash leaves both and not none.
    if (auto reason = write(newName, *settings)) {
        return reason;
    }
    return remove(name);
}

KeptSettings namedPresets() {
    return {"presets", "preset %1", presetContent};
}

KeptSettings lastUsedSettings() {
    return {"last-used", "last used settings of %1", lastUsedContent};
}

std::string printerKey(const std::string& queue, const std::string& ppdPath) {
    if (!queue.empty()) {
        return queue;  // never begins with a slash
    }
    std::error_code ignored;
    const fs::path path = fs::weakly_canonical(fs::absolute(ppdPath, ignored), ignored);
    return path.empty() ? ppdPath : path.string();
}

std::string cleanPresetName(const std::string& typed) {
    std::string name = typed;
    std::ranges::replace_if(name, isControl, ' ');
    name.erase(0, std::min(name.find_first_not_of(' '), name.size()));
    name.erase(name.find_last_not_of(' ') + 1);
    return name;
}
