#include "platform/contacts/desktop_book.h"

#include "platform/contacts/desktop_session.h"
#include "platform/contacts/ebook_card.h"
#include "platform/contacts/time_limit.h"
#include "platform/foundation/terminal_text.h"

#include <algorithm>
#include <cstdio>
#include <unordered_set>
#include <utility>

namespace {

/// The empty text is in every contact.
constexpr const char* kEverybody = "(contains \"x-evolution-any-field\" \"\")";
constexpr std::chrono::milliseconds kTimeToRead{20000};
constexpr std::chrono::milliseconds kTimeToWrite{60000};

/// A list of contacts, owned with them.
class Contacts {
public:
    Contacts() = default;
    explicit Contacts(GSList* list) : list_(list) {}
    Contacts(Contacts&& other) noexcept : list_(std::exchange(other.list_, nullptr)) {}
    Contacts& operator=(Contacts&&) = delete;
    ~Contacts() { g_slist_free_full(list_, g_object_unref); }

    void add(const Card& card) { list_ = g_slist_prepend(list_, e_contact_new_from_vcard(card.text().c_str())); }
    void putInOrder() { list_ = g_slist_reverse(list_); }
    GSList* get() const { return list_; }

private:
    GSList* list_ = nullptr;
};

CardOwner cardOf(EContact* contact) {
    char* text = e_vcard_to_string(reinterpret_cast<EVCard*>(contact), EVC_FORMAT_VCARD_30);
    auto card = std::make_unique<EbookCard>(text);
    g_free(text);
    return card;
}

/// One condition for each form of each id.
std::string queryFor(const std::vector<std::string>& bareIds) {
    std::vector<EBookQuery*> conditions;
    for (const std::string& id : bareIds) {
        for (const std::string& form : {id, "urn:uuid:" + id}) {
            conditions.push_back(e_book_query_field_test(E_CONTACT_UID, E_BOOK_QUERY_IS, form.c_str()));
        }
    }
    EBookQuery* any = e_book_query_or(int(conditions.size()), conditions.data(), true);
    char* text = e_book_query_to_string(any);
    std::string query = text;
    g_free(text);
    e_book_query_unref(any);
    return query;
}

bool told(GError* error) {
    if (error) {
        printLine(stderr, std::string("The desktop's address book: ") + error->message);
        g_error_free(error);
    }
    return error != nullptr;
}

class DesktopBook final : public CardStore {
public:
    explicit DesktopBook(BookClientOwner client) : client_(std::move(client)) {}

    std::optional<std::vector<CardOwner>> all() override { return read(kEverybody); }

    std::optional<std::vector<CardOwner>> find(const std::vector<std::string>& bareIds) override {
        if (bareIds.empty()) {
            return std::vector<CardOwner>();
        }
        constexpr std::size_t kLongQuery = 100;
        auto cards = bareIds.size() > kLongQuery ? all() : read(queryFor(bareIds).c_str());
        if (cards && bareIds.size() > kLongQuery) {
            const std::unordered_set<std::string_view> wanted(bareIds.begin(), bareIds.end());
            std::erase_if(*cards, [&](const CardOwner& card) { return !wanted.contains(bareId(card->uniqueId())); });
        }
        return cards;
    }

    bool save(const std::vector<Card*>& cards) override {
        const auto known = find(idsOf(cards));
        if (!known) {
            return false;
        }
        std::unordered_set<std::string> knownIds;
        for (const CardOwner& card : *known) {
            knownIds.insert(card->uniqueId());
        }
        std::vector<Card*> people;
        std::vector<Card*> groups;
        std::vector<Card*> changed;
        for (Card* card : cards) {
            auto& list = knownIds.contains(card->uniqueId()) ? changed : card->isGroup() ? groups : people;
            list.push_back(card);
        }
        // The people first: their ids may change, and a contact list names people that are there.
        Added added;
        if (add(people, added) && add(asContactLists(groups, added), added) && modify(changed, added)) {
            return true;
        }
        remove(added);
        return false;
    }

private:
    struct Added {
        std::vector<std::string> ids;
        std::unordered_map<std::string, std::string> newIds;  // by bareId()
    };

    static std::vector<std::string> idsOf(const std::vector<Card*>& cards) {
        std::vector<std::string> ids;
        ids.reserve(cards.size());
        for (const Card* card : cards) {
            ids.emplace_back(bareId(card->uniqueId()));
        }
        return ids;
    }

    std::optional<std::vector<CardOwner>> read(const char* query) {
        const TimeLimit limit(kTimeToRead);
        GSList* list = nullptr;
        GError* error = nullptr;
        e_book_client_get_contacts_sync(client_.get(), query, &list, limit.cancellable(), &error);
        const Contacts contacts(list);
        if (told(error)) {
            return std::nullopt;
        }
        std::vector<CardOwner> cards;
        for (GSList* each = contacts.get(); each; each = each->next) {
            cards.push_back(cardOf(static_cast<EContact*>(each->data)));
        }
        return cards;
    }

    bool add(const std::vector<Card*>& cards, Added& added) {
        if (cards.empty()) {
            return true;
        }
        Contacts contacts;
        for (const Card* card : cards) {
            contacts.add(*card);
        }
        contacts.putInOrder();
        const TimeLimit limit(kTimeToWrite);
        GSList* ids = nullptr;
        GError* error = nullptr;
        e_book_client_add_contacts_sync(client_.get(), contacts.get(), E_BOOK_OPERATION_FLAG_NONE, &ids,
                                        limit.cancellable(), &error);
        auto card = cards.begin();
        for (GSList* each = ids; each && card != cards.end(); each = each->next, ++card) {
            const std::string id = static_cast<const char*>(each->data);
            added.ids.push_back(id);
            if (const std::string old = (*card)->uniqueId(); old != id) {
                added.newIds.emplace(bareId(old), id);
                (*card)->setUniqueId(id);
            }
        }
        g_slist_free_full(ids, g_free);
        return !told(error);
    }

    /// New groups in the form that the clients of this service know.
    std::vector<Card*> asContactLists(const std::vector<Card*>& groups, const Added& added) {
        for (Card* group : groups) {
            group->renameMembers(added.newIds);
            const std::vector<std::string> members = group->members();
            if (const auto people = find(members)) {
                static_cast<EbookCard*>(group)->makeContactList(*people);
            }
        }
        return groups;
    }

    bool modify(const std::vector<Card*>& cards, const Added& added) {
        if (cards.empty()) {
            return true;
        }
        Contacts contacts;
        for (Card* card : cards) {
            card->renameMembers(added.newIds);
            contacts.add(*card);
        }
        contacts.putInOrder();
        const TimeLimit limit(kTimeToWrite);
        GError* error = nullptr;
        e_book_client_modify_contacts_sync(client_.get(), contacts.get(), E_BOOK_OPERATION_FLAG_NONE,
                                           limit.cancellable(), &error);
        return !told(error);
    }

    /// What has been added when something else failed.
    void remove(const Added& added) {
        if (added.ids.empty()) {
            return;
        }
        GSList* ids = nullptr;
        for (const std::string& id : added.ids) {
            ids = g_slist_prepend(ids, const_cast<char*>(id.c_str()));
        }
        const TimeLimit limit(kTimeToWrite);
        GError* error = nullptr;
        e_book_client_remove_contacts_sync(client_.get(), ids, E_BOOK_OPERATION_FLAG_NONE, limit.cancellable(), &error);
        told(error);
        g_slist_free(ids);
    }

    BookClientOwner client_;
};

}  // namespace

std::unique_ptr<CardStore> openDesktopBook() {
    BookClientOwner client = connectToDesktopBook();
    return client ? std::make_unique<DesktopBook>(std::move(client)) : nullptr;
}
