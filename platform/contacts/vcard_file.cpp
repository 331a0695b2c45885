#include "platform/contacts/vcard_file.h"

#include "platform/contacts/card_identity.h"
#include "platform/contacts/card_library.h"
#include "platform/contacts/vcard_split.h"
#include "platform/files/folder_lock.h"
#include "platform/files/folders.h"
#include "platform/files/url_access.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/terminal_text.h"
#include "platform/foundation/text.h"

#include <cerrno>
#include <cstdio>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace {

/// Nothing when the user has no data folder and none can be made, or when nobody could read the cards.
std::optional<std::string> storePath() {
    FSRef folder;
    if (!cardLibrary() || FSFindFolder(kUserDomain, kApplicationSupportFolderType, true, &folder) != noErr) {
        return std::nullopt;
    }
    return std::string(folder.path) + "/contacts.vcf";
}

/// Nothing, with the reason in *error, when the file cannot be read.
std::optional<std::string> read(const std::string& path, SInt32* error) {
    CFDataRef bytes = nullptr;
    if (!CFURLCreateDataAndPropertiesFromResource(kCFAllocatorDefault, makeFileURL(path).get(), &bytes, nullptr,
                                                  nullptr, error)) {
        return std::nullopt;
    }
    const auto data = CFRef<CFDataRef>::adopt(bytes);
    return std::string(bytesOf(bytes));
}

bool write(const std::string& path, const std::string& bytes) {
    const auto data = CFRef<CFDataRef>::adopt(
        CFDataCreate(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(bytes.data()), CFIndex(bytes.size())));
    return CFURLWriteDataAndPropertiesToResource(makeFileURL(path).get(), data.get(), nullptr, nullptr);
}

/// The file's bytes; none for a file that is not there yet.
std::optional<std::string> readCards(const std::string& path) {
    SInt32 error = 0;
    std::optional<std::string> bytes = read(path, &error);
    return bytes || error != ENOENT ? bytes : std::string();
}

/// Writes a damaged file's bytes to a new file beside it.
bool keepBeside(const std::string& path, const std::string& bytes) {
    for (int number = 1;; ++number) {
        const std::string kept = path + ".damaged-" + std::to_string(number);
        SInt32 error = 0;
        if (read(kept, &error)) {
            continue;
        }
        if (error != ENOENT || !write(kept, bytes)) {
            return false;
        }
        printLine(stderr, std::string(path).append(": not all of it is vCards; a copy is kept in ").append(kept));
        return true;
    }
}

}  // namespace

std::optional<std::vector<CardOwner>> VCardFile::all() {
    const std::optional<std::string> path = storePath();
    const std::optional<std::string> bytes = path ? readCards(*path) : std::nullopt;
    if (!bytes) {
        return std::nullopt;
    }
    std::vector<CardOwner> cards;
    for (const std::string& text : splitCards(*bytes).cards) {
        cards.push_back(readIdentifiedCard(text));
    }
    return cards;
}

std::optional<std::vector<CardOwner>> VCardFile::find(const std::vector<std::string>& bareIds) {
    const std::optional<std::string> path = storePath();
    const std::optional<std::string> bytes = path ? readCards(*path) : std::nullopt;
    if (!bytes) {
        return std::nullopt;
    }
    const std::unordered_set<std::string_view> wanted(bareIds.begin(), bareIds.end());
    std::vector<CardOwner> cards;
    for (const std::string& text : splitCards(*bytes).cards) {
        if (wanted.contains(bareId(uniqueIdOf(text)))) {
            cards.push_back(readIdentifiedCard(text));
        }
    }
    return cards;
}

bool VCardFile::save(const std::vector<Card*>& cards) {
    const std::optional<std::string> path = storePath();
    if (!path) {
        return false;
    }
    const FolderLock lock(path->substr(0, path->rfind('/')));
    if (!lock) {
        printLine(stderr, *path + ": another program keeps it locked");
        return false;
    }
    const std::optional<std::string> old = readCards(*path);
    if (!old) {
        return false;
    }
    const SplitCards split = splitCards(*old);
    if (!split.problems.empty() && !keepBeside(*path, *old)) {
        return false;
    }
    std::unordered_map<std::string, const Card*> newer;
    for (const Card* card : cards) {
        newer.emplace(bareId(card->uniqueId()), card);
    }
    std::string bytes;
    for (const std::string& text : split.cards) {
        const auto found = newer.find(std::string(bareId(uniqueIdOf(text))));
        if (found == newer.end()) {
            bytes += text;
        } else if (const Card* card = std::exchange(found->second, nullptr)) {
            bytes += card->text();
        }
    }
    for (const Card* card : cards) {
        if (newer.at(std::string(bareId(card->uniqueId())))) {
            bytes += card->text();
        }
    }
    return write(*path, bytes);
}
