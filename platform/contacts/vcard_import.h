// The cards of a file that another program has exported.
#pragma once

#include "platform/contacts/AddressBookImport.h"
#include "platform/contacts/card.h"

#include <string_view>

struct ImportProblem {
    ABImportReason reason;
    /// Counted from 1.
    std::size_t line;
};

struct ImportedCards {
    /// Each with a unique id.
    std::vector<CardOwner> cards;
    /// In the order of their lines, at most kABMaximumImportProblems.
    std::vector<ImportProblem> problems;
};

/// Any bytes. The library for cards must be there.
ImportedCards readImportedCards(std::string_view file);
