#include "platform/contacts/desktop_session.h"

#include "platform/contacts/time_limit.h"

#include <algorithm>
#include <cstdio>
#include <future>
#include <string_view>

namespace {

constexpr std::chrono::milliseconds kTimeToAnswer{3000};
/// For a call that has been cancelled to come back.
constexpr std::chrono::milliseconds kTimeToGiveUp{500};

struct Answer {
    BookClientOwner client;
    bool isExpected = false;  // whether the session says that there is an address book
};

/// Whether the bus could start the service of the address books.
bool offersAddressBooks(GDBusConnection* bus, GCancellable* cancellable) {
    GVariant* reply = g_dbus_connection_call_sync(
        bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "ListActivatableNames", nullptr,
        G_VARIANT_TYPE("(as)"), G_DBUS_CALL_FLAGS_NONE, -1, cancellable, nullptr);
    if (!reply) {
        return false;
    }
    const gchar** names = nullptr;
    g_variant_get(reply, "(^a&s)", &names);
    bool found = false;
    for (const gchar** name = names; *name; ++name) {
        found |= g_str_has_prefix(*name, "org.gnome.evolution.dataserver.AddressBook") != 0;
    }
    g_free(names);
    g_variant_unref(reply);
    return found;
}

/// Null when it cannot be had.
BookClientOwner connectToDefault(GCancellable* cancellable) {
    const std::unique_ptr<ESourceRegistry, ObjectReleaser> registry(e_source_registry_new_sync(cancellable, nullptr));
    if (!registry) {
        return nullptr;
    }
    const std::unique_ptr<ESource, ObjectReleaser> source(e_source_registry_ref_default_address_book(registry.get()));
    if (!source) {
        return nullptr;
    }
    // Not until the book's own server, if it has one, is reached: what it has kept can be read without.
    constexpr auto kDoNotWait = guint32(-1);
    return BookClientOwner(
        reinterpret_cast<EBookClient*>(e_book_client_connect_sync(source.get(), kDoNotWait, cancellable, nullptr)));
}

Answer ask() {
    Answer answer;
    const TimeLimit limit(kTimeToAnswer);
    const std::unique_ptr<GDBusConnection, ObjectReleaser> bus(
        g_bus_get_sync(G_BUS_TYPE_SESSION, limit.cancellable(), nullptr));
    if (!bus) {
        answer.isExpected = g_cancellable_is_cancelled(limit.cancellable()) != 0;
        return answer;
    }
    // The end of the session's bus is no reason to end a print dialog.
    g_dbus_connection_set_exit_on_close(bus.get(), false);
    answer.isExpected = offersAddressBooks(bus.get(), limit.cancellable());
    if (answer.isExpected) {
        answer.client = connectToDefault(limit.cancellable());
    }
    return answer;
}

}  // namespace

BookClientOwner connectToDesktopBook() {
    // In a thread that can be left alone, should a call not even heed being cancelled.
    std::packaged_task<Answer()> task(&ask);
    std::future<Answer> future = task.get_future();
    std::thread(std::move(task)).detach();
    Answer answer;
    answer.isExpected = true;
    if (future.wait_for(kTimeToAnswer + kTimeToGiveUp) == std::future_status::ready) {
        answer = future.get();
    }
    if (answer.isExpected && !answer.client) {
        std::fprintf(stderr, "The desktop's address book does not answer; the file contacts.vcf is used instead.\n");
    }
    return std::move(answer.client);
}
