#include "platform/printing/saved_options.h"

#include "platform/files/pending_file.h"
#include "platform/files/plain_file.h"
#include "platform/foundation/message.h"
#include "platform/foundation/text.h"
#include "platform/printing/PMPrinter.h"
#include "platform/printing/last_error.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <set>

namespace {

std::string environmentText(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

}  // namespace

std::string queueOf(const std::string& destination) {
    return destination.substr(0, destination.find('/'));
}

std::string instanceOf(const std::string& destination) {
    const std::size_t slash = destination.find('/');
    return slash == std::string::npos ? std::string() : destination.substr(slash + 1);
}

SavedDestinations SavedDestinations::read() {
    SavedDestinations saved;
    for (const std::string& path : {systemOptionsPath(), userOptionsPath()}) {
        std::ranges::move(destinationsInText(readOptionsFile(path).value_or("")), std::back_inserter(saved.all_));
    }
    return saved;
}

bool SavedDestinations::knows(const std::string& destination) const {
    return std::ranges::any_of(all_, [&](const auto& each) { return isSameOption(each.name, destination); });
}

OptionList SavedDestinations::optionsOf(const std::string& destination) const {
    OptionList options;
    for (const std::string& name : std::set{queueOf(destination), destination}) {  // the shorter name first
        for (const SavedDestination& each : all_) {
            if (isSameOption(each.name, name)) {
                setOptions(&options, each.options);
            }
        }
    }
    return options;
}

std::vector<std::string> SavedDestinations::instancesOf(const std::string& queue) const {
    std::set<std::string> instances;
    for (const SavedDestination& each : all_) {
        if (const std::string instance = instanceOf(each.name);
            !instance.empty() && isSameOption(queueOf(each.name), queue)) {
            instances.insert(std::string(queue).append("/").append(instance));
        }
    }
    return {instances.begin(), instances.end()};
}

std::string SavedDestinations::defaultName() const {
    if (std::string name = environmentText("LPDEST"); !name.empty()) {
        return name;
    }
    // "lp" is what some systems set for everybody.
    if (std::string name = environmentText("PRINTER"); !name.empty() && name != "lp") {
        return name;
    }
    const auto found = std::ranges::find_if(all_.rbegin(), all_.rend(), &SavedDestination::isDefault);
    return found == all_.rend() ? std::string() : found->name;
}

std::optional<std::string> readOptionsFile(const std::string& path) {
    const auto bytes = readPlainFile(path, kKeptFileMaximumBytes);
    if (!bytes) {
        return errno == ENOENT || errno == ENOTDIR ? std::optional(std::string()) : std::nullopt;
    }
    return std::string(bytesOf(bytes.get()));
}

OSStatus changeUserOptions(const std::string& destination,
                           const std::function<std::string(const std::string& text)>& change) {
    namespace fs = std::filesystem;
    const fs::path path = userOptionsPath();
    if (path.empty()) {
        return failWith(kPMCannotWriteOutput, destination, messageText("you have no home folder to keep them in"));
    }
    const auto text = readOptionsFile(path.string());
    if (!text) {
        return failWith(kPMCannotWriteOutput, path.string(), readFault(errno, kKeptFileMaximumBytes));
    }
    std::error_code error;
    if (const fs::path folder = path.parent_path(); fs::create_directory(folder, error)) {
        fs::permissions(folder, fs::perms::owner_all, error);
    }
    PendingFile file(path.string());
    return file.write(change(*text)) && file.commit()
               ? noErr
               : failWith(kPMCannotWriteOutput, path.string(), systemMessage(file.error()));
}

std::string userOptionsPath() {
    const std::string home = environmentText("HOME");
    return home.empty() ? std::string() : home + "/.cups/lpoptions";
}

std::string systemOptionsPath() {
    const std::string folder = environmentText("CUPS_SERVERROOT");
    return (folder.empty() ? "/etc/cups" : folder) + "/lpoptions";
}
