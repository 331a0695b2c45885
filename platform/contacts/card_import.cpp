// Imported cards on their way into the store.

#include "platform/contacts/AddressBookImport.h"
#include "platform/contacts/address_book.h"
#include "platform/contacts/card_identity.h"
#include "platform/contacts/card_library.h"
#include "platform/contacts/vcard_import.h"
#include "platform/files/url_access.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/CFURL.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>

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
        failure = {kABImportCannotRead, std::strerror(error)};
    } else if (!data || CFDataGetLength(data.get()) > kABMaximumImportBytes) {
        failure = {kABImportTooLarge, "it is larger than 64 MiB"};
        return nullptr;
    }
    return data;
}

/// Gives those cards a new id whose id is that of another card, and drops those that are there already.
class Merge {
public:
    /// Nothing when the store cannot be read.
    static std::optional<std::vector<CardOwner>> into(CardStore& store, std::vector<CardOwner> cards) {
        Merge merge;
        for (const CardOwner& card : cards) {
            merge.texts_.push_back(card->text());
        }
        std::vector<std::string> ids;
        for (std::size_t i = 0; i < cards.size(); ++i) {
            ids.emplace_back(bareId(cards[i]->uniqueId()));
            ids.push_back(idFromBytes(merge.texts_[i]));
        }
        const auto known = store.find(ids);
        if (!known) {
            return std::nullopt;
        }
        for (const CardOwner& card : *known) {
            merge.textsById_.emplace(bareId(card->uniqueId()), card->text());
        }
        return merge.added(std::move(cards));
    }

private:
    std::vector<CardOwner> added(std::vector<CardOwner> cards) {
        std::vector<CardOwner> result;
        for (std::size_t i = 0; i < cards.size(); ++i) {
            const std::string id(bareId(cards[i]->uniqueId()));
            const auto [other, isNew] = textsById_.emplace(id, texts_[i]);
            if (isNew) {
                result.push_back(std::move(cards[i]));
            } else if (other->second != texts_[i]) {
                // The same file imported again comes to the same id.
                const std::string newId = idFromBytes(texts_[i]);
                newIds_.insert_or_assign(id, newId);
                if (textsById_.emplace(newId, texts_[i]).second) {
                    cards[i]->setUniqueId(newId);
                    result.push_back(std::move(cards[i]));
                }
            }
        }
        for (const CardOwner& card : result) {
            if (!newIds_.empty() && card->isGroup()) {
                card->renameMembers(newIds_);
            }
        }
        return result;
    }

    std::vector<std::string> texts_;
    std::unordered_map<std::string, std::string> textsById_;
    std::unordered_map<std::string, std::string> newIds_;
};

bool addCards(CardStore& store, std::vector<CardOwner> cards) {
    const auto added = Merge::into(store, std::move(cards));
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
    ImportedCards read = readImportedCards(
        {reinterpret_cast<const char*>(CFDataGetBytePtr(data.get())), std::size_t(CFDataGetLength(data.get()))});
    count = CFIndex(read.cards.size());
    if (count == 0) {
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
    UInt8 path[PATH_MAX];
    return CFURLGetFileSystemRepresentation(file, true, path, sizeof path) ? reinterpret_cast<const char*>(path)
                                                                           : "the file";
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
        std::fprintf(stderr, "%s: %s\n", nameOf(file).c_str(), failure.reason.c_str());
        return -1;
    }
    return count;
}
