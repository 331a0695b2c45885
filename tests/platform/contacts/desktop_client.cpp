// Another program on the desktop: puts contacts into the default address book and shows what it finds there.
//
//   desktop_client add FILE...    adds each file's contact, in one go
//   desktop_client show           one line a contact: name, organization, business fax, and the members of a list or
//                                 "person"; then its whole card

#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include <libebook/libebook.h>

namespace {

constexpr auto kDoNotWait = guint32(-1);
constexpr const char* kEverybody = "(contains \"x-evolution-any-field\" \"\")";

EBookClient* connect() {
    ESourceRegistry* registry = e_source_registry_new_sync(nullptr, nullptr);
    ESource* source = registry ? e_source_registry_ref_default_address_book(registry) : nullptr;
    return source ? reinterpret_cast<EBookClient*>(e_book_client_connect_sync(source, kDoNotWait, nullptr, nullptr))
                  : nullptr;
}

bool add(EBookClient* book, int count, char** files) {
    GSList* contacts = nullptr;
    for (int i = 0; i < count; ++i) {
        std::ifstream stream(files[i], std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(stream), {}};
        contacts = g_slist_append(contacts, e_contact_new_from_vcard(text.c_str()));
    }
    GError* error = nullptr;
    e_book_client_add_contacts_sync(book, contacts, E_BOOK_OPERATION_FLAG_NONE, nullptr, nullptr, &error);
    std::cerr << (error ? error->message : "");
    return !error;
}

std::string fieldOf(EContact* contact, EContactField field) {
    const auto* text = static_cast<const char*>(e_contact_get_const(contact, field));
    return text ? text : "";
}

/// What a program that writes to lists makes of the entries: id, name, address.
std::string membersOf(EContact* list) {
    EDestination* destination = e_destination_new();
    e_destination_set_contact(destination, list, 0);
    std::string members;
    for (const GList* each = e_destination_list_get_dests(destination); each; each = each->next) {
        const auto* member = static_cast<const EDestination*>(each->data);
        const auto add = [&members](const char* text) { members += std::string(text ? text : "") + ","; };
        add(e_destination_get_contact_uid(member));
        add(e_destination_get_name(member));
        add(e_destination_get_email(member));
    }
    g_object_unref(destination);
    return members;
}

bool show(EBookClient* book) {
    GSList* contacts = nullptr;
    if (!e_book_client_get_contacts_sync(book, kEverybody, &contacts, nullptr, nullptr)) {
        return false;
    }
    for (GSList* each = contacts; each; each = each->next) {
        auto* contact = static_cast<EContact*>(each->data);
        const bool isList = e_contact_get(contact, E_CONTACT_IS_LIST) != nullptr;
        char* card = e_vcard_to_string(reinterpret_cast<EVCard*>(contact), EVC_FORMAT_VCARD_30);
        std::cout << fieldOf(contact, E_CONTACT_FULL_NAME) << "|" << fieldOf(contact, E_CONTACT_ORG) << "|"
                  << fieldOf(contact, E_CONTACT_PHONE_BUSINESS_FAX) << "|" << (isList ? membersOf(contact) : "person")
                  << "\n"
                  << card << "\n";
        g_free(card);
    }
    g_slist_free_full(contacts, g_object_unref);
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string verb = argc > 1 ? argv[1] : "";
    EBookClient* book = connect();
    const bool done = book && (verb == "add" ? add(book, argc - 2, argv + 2) : show(book));
    return done ? 0 : 1;
}
