// Imported cards on their way into the store.

#include "platform/contacts/AddressBookImport.h"
#include "platform/contacts/address_book.h"
#include "platform/contacts/card_identity.h"
#include "platform/contacts/card_library.h"
#include "platform/contacts/vcard_import.h"
#include "platform/files/plain_file.h"
#include "platform/files/url_access.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/CFURL.h"
#include "platform/foundation/terminal_text.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <sstream>
#include <unordered_set>

namespace {

struct Failure {
    ABImportError error = kABImportNoError;
    std::string reason;
};

CFRef<CFDataRef> readFile(CFURLRef file, Failure& failure) {
    CFDataRef bytes = nullptr;
    SInt32 error = 0;
    CFURLCreateDataAndPropertiesFromResource(kCFAllocatorDefault, file, &bytes, nullptr, nullptr, &error);
    auto data = CFRef<CFDataRef>::adopt(bytes);
    if (!data && error != EFBIG) {
        failure = {kABImportCannotRead, readFault(error, kMaximumFileBytes)};
    } else if (!data || CFDataGetLength(data.get()) > kABMaximumImportBytes) {
        failure = {kABImportTooLarge, "it is larger than 64 MiB"};
        return nullptr;
    }
    return data;
}

/// The line without the parameters that the desktop's address book adds, the others in an order of ours.
std::string comparableLine(const std::string& line) {
    std::vector<std::string> head(1);  // the name, the parameters
    bool isQuoted = false;
    std::size_t at = 0;
    for (; at < line.size() && (isQuoted || line[at] != ':'); ++at) {
        isQuoted ^= line[at] == '"';
        if (line[at] == ';' && !isQuoted) {
            head.emplace_back();
        } else {
            head.back() += line[at];
        }
    }
    std::erase_if(head, [](const std::string& parameter) { return parameter.starts_with("X-EVOLUTION-"); });
    std::sort(head.begin(), head.end());
    std::string result;
    for (const std::string& part : head) {
        result += part + ";";
    }
    return result + line.substr(at);
}

/// The lines of a card that tell two of them apart, unfolded: without those that stores write on their own account.
std::unordered_set<std::string> tellingLines(const std::string& card) {
    constexpr std::string_view kOthers[] = {"BEGIN", "END", "VERSION", "PRODID", "UID", "REV", "PHOTO", "LOGO"};
    std::unordered_set<std::string> lines;
    std::string line;
    const auto take = [&] {
        const std::string_view name = std::string_view(line).substr(0, line.find_first_of(":;"));
        if (!line.empty() && std::find(std::begin(kOthers), std::end(kOthers), name) == std::end(kOthers)) {
            lines.insert(comparableLine(line));
        }
    };
    std::istringstream text(card);
    for (std::string next; std::getline(text, next);) {
        next.erase(next.find_last_not_of('\r') + 1);
        if (next.starts_with(' ')) {
            line += next.substr(1);
        } else {
            take();
            line = next;
        }
    }
    take();
    return lines;
}

template <typename Set>
bool isPartOf(const Set& part, const Set& whole) {
    return std::all_of(part.begin(), part.end(), [&whole](const auto& each) { return whole.contains(each); });
}

/// Whether the known card says all that the card says. Groups may be kept in another form.
bool saysNothingNew(const Card& card, const Card& known) {
    if (!card.isGroup() || !known.isGroup()) {
        const std::string text = card.text();
        const std::string knownText = known.text();
        return text == knownText || isPartOf(tellingLines(text), tellingLines(knownText));
    }
    const auto idsOf = [](const Card& group) {
        const std::vector<std::string> members = group.members();
        return std::unordered_set<std::string>(members.begin(), members.end());
    };
    return card.textOf("FN") == known.textOf("FN") && isPartOf(idsOf(card), idsOf(known));
}

/// Drops the cards that are there already, and gives those a new id whose id is that of another card.
class Merge {
public:
    Merge(CardStore& store, std::vector<CardOwner> cards) : store_(store), cards_(std::move(cards)) {}

    /// The cards to be added; nothing when the store cannot be read.
    std::optional<std::vector<CardOwner>> result() {
        if (!meetKnownCards() || !giveNewIds()) {
            return std::nullopt;
        }
        std::erase(cards_, nullptr);
        for (const CardOwner& card : cards_) {
            if (!newIds_.empty() && card->isGroup()) {
                card->renameMembers(newIds_);
            }
        }
        return std::move(cards_);
    }

private:
    /// Cards by their ids, as bareId() gives them.
    using CardsById = std::unordered_map<std::string, const Card*>;
    struct Renamed {
        std::size_t place;
        std::string newId;
    };

    bool meetKnownCards() {
        std::vector<std::string> ids;
        for (const CardOwner& card : cards_) {
            ids.emplace_back(bareId(card->uniqueId()));
        }
        const auto known = store_.find(ids);
        if (!known) {
            return false;
        }
        CardsById byId;
        for (const CardOwner& card : *known) {
            byId.emplace(bareId(card->uniqueId()), card.get());
        }
        for (std::size_t i = 0; i < cards_.size(); ++i) {
            const auto [other, isNew] = byId.emplace(ids[i], cards_[i].get());
            if (isNew) {
                continue;
            }
            if (saysNothingNew(*cards_[i], *other->second)) {
                cards_[i] = nullptr;
            } else {
                // The same file imported again comes to the same new ids.
                renamed_.push_back({i, idFromBytes(cards_[i]->text())});
                newIds_.insert_or_assign(ids[i], renamed_.back().newId);
            }
        }
        return true;
    }

    /// What has its new id already, was added when the file was imported before.
    bool giveNewIds() {
        std::vector<std::string> ids;
        for (const Renamed& each : renamed_) {
            ids.push_back(each.newId);
        }
        const auto known = ids.empty() ? std::vector<CardOwner>() : store_.find(ids);
        if (!known) {
            return false;
        }
        std::unordered_set<std::string> taken;
        for (const CardOwner& card : *known) {
            taken.emplace(bareId(card->uniqueId()));
        }
        for (const auto& [place, newId] : renamed_) {
            if (taken.insert(newId).second) {
                cards_[place]->setUniqueId(newId);
            } else {
                cards_[place] = nullptr;
            }
        }
        return true;
    }

    CardStore& store_;
    std::vector<CardOwner> cards_;
    std::vector<Renamed> renamed_;
    std::unordered_map<std::string, std::string> newIds_;
};

bool addCards(CardStore& store, std::vector<CardOwner> cards) {
    const auto added = Merge(store, std::move(cards)).result();
    if (!added) {
        return false;
    }
    std::vector<Card*> pointers;
    for (const CardOwner& card : *added) {
        pointers.push_back(card.get());
    }
    return pointers.empty() || store.save(pointers);
}

CFArrayRef createProblems(const std::vector<ImportProblem>& problems) {
    CFMutableArrayRef array = CFArrayCreateMutable(kCFAllocatorDefault, 0, &kCFTypeArrayCallBacks);
    for (const ImportProblem& problem : problems) {
        const auto line = CFIndex(problem.line);
        const CFIndex reason = problem.reason;
        const auto lineNumber =
            CFRef<CFNumberRef>::adopt(CFNumberCreate(kCFAllocatorDefault, kCFNumberCFIndexType, &line));
        const auto reasonNumber =
            CFRef<CFNumberRef>::adopt(CFNumberCreate(kCFAllocatorDefault, kCFNumberCFIndexType, &reason));
        const void* keys[] = {kABImportProblemLine, kABImportProblemReason};
        const void* values[] = {lineNumber.get(), reasonNumber.get()};
        const auto told = CFRef<CFDictionaryRef>::adopt(CFDictionaryCreate(
            kCFAllocatorDefault, keys, values, 2, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
        CFArrayAppendValue(array, told.get());
    }
    return array;
}

/// Nothing, and *failure, when the file or the address book refuses.
std::optional<ImportedCards> import(ABAddressBookRef book, CFURLRef file, Failure& failure, CFIndex& count) {
    const auto data = readFile(file, failure);
    if (!data) {
        return std::nullopt;
    }
    if (!book || !cardLibrary()) {
        failure = {kABImportNotSaved, "there is no address book"};
        return std::nullopt;
    }
    ImportedCards read = readImportedCards(bytesOf(data.get()));
    count = CFIndex(read.cards.size());
    const bool hasBrokenCards = std::any_of(read.problems.begin(), read.problems.end(), [](const ImportProblem& each) {
        return each.reason != kABImportTextOutside;
    });
    if (count == 0 && !hasBrokenCards) {
        failure = {kABImportNoVCard, "there is no vCard in it"};
        return std::nullopt;
    }
    if (!addCards(book->store(), std::move(read.cards))) {
        failure = {kABImportNotSaved, "the address book cannot be written"};
        return std::nullopt;
    }
    return read;
}

std::string nameOf(CFURLRef file) {
    const std::string path = filePath(file);
    return path.empty() ? "the file" : path;
}

}  // namespace

CFIndex ABImportVCardFile(ABAddressBookRef book, CFURLRef file, CFArrayRef* problems, ABImportError* error) {
    Failure failure;
    CFIndex count = 0;
    const std::optional<ImportedCards> read = import(book, file, failure, count);
    if (problems) {
        *problems = read ? createProblems(read->problems) : nullptr;
    }
    if (error) {
        *error = failure.error;
    }
    if (!read) {
        printLine(stderr, nameOf(file) + ": " + failure.reason);
        return -1;
    }
    return count;
}
