// What the user, or the system for all users, has saved for the print server's queues (lpoptions(1)).
#pragma once

#include "platform/printing/lpoptions_text.h"

#include "platform/foundation/CFBase.h"

#include <functional>
#include <optional>

/// The part of a destination's name ("queue" or "queue/instance") before the slash, and behind it: the same queue may
/// have several names, with options of their own.
std::string queueOf(const std::string& destination);
std::string instanceOf(const std::string& destination);

class SavedDestinations {
public:
    /// Reads the system's file and the user's own, as far as they are there.
    static SavedDestinations read();

    /// Whether anything is saved for exactly this destination.
    [[nodiscard]] bool knows(const std::string& destination) const;
    /// The options of a destination: those of its queue with the instance's own on top.
    [[nodiscard]] OptionList optionsOf(const std::string& destination) const;
    /// The instances of a queue, as destinations, by their names.
    [[nodiscard]] std::vector<std::string> instancesOf(const std::string& queue) const;
    /// Where the user prints by default: what the environment says (LPDEST, PRINTER), else what is saved; empty when
    /// neither says anything.
    [[nodiscard]] std::string defaultName() const;

private:
    std::vector<SavedDestination> all_;  // the system's before the user's own
};

/// The text of such a file; empty for one that is missing, none, with errno set (plain_file.h), for one that cannot be
/// read.
std::optional<std::string> readOptionsFile(const std::string& path);
/// Makes the text of the user's own file another one, for that destination, which messages name. kPMCannotWriteOutput
/// with the last error.
OSStatus changeUserOptions(const std::string& destination,
                           const std::function<std::string(const std::string& text)>& change);
/// The user's own file; empty without a home folder.
std::string userOptionsPath();
/// The file for all users.
std::string systemOptionsPath();
