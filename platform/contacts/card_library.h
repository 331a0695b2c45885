// The library that reads and writes vCards. It brings some fifty others along, so it is loaded when the address book is
// first asked for something, and not when the program starts.
#pragma once

#include "platform/contacts/card_store.h"

class CardLibrary {
public:
    virtual ~CardLibrary() = default;

    /// A card with a new unique id and nothing else.
    virtual CardOwner make() = 0;
    /// Reads a vCard of version 2.1, 3.0 or 4.0. Anything else gives an empty card.
    virtual CardOwner read(const std::string& text) = 0;
    /// The address book of the session's desktop; null when there is none. See desktop_book.h.
    virtual std::unique_ptr<CardStore> openDesktopBook() = 0;
};

/// The library; null, with one line on standard error for the process, when it cannot be loaded.
CardLibrary* cardLibrary();

/// What the loaded object exports.
extern "C" __attribute__((visibility("default"))) CardLibrary* tavroCardLibrary();
