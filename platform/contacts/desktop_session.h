// The way to the desktop's address book.
#pragma once

#include <memory>

#include <libebook/libebook.h>

struct ObjectReleaser {
    void operator()(void* object) const { g_object_unref(object); }
};
using BookClientOwner = std::unique_ptr<EBookClient, ObjectReleaser>;

/// The session's default address book, connected. Null when the session has none, and, with a line on standard error,
/// when it does not answer in time.
BookClientOwner connectToDesktopBook();
