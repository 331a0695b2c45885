// Settings that are kept by name in the user's configuration folder: named presets, and the last used settings of each
// printer.
//
// Each is a settings file of its own (so --ticket-in reads it too) that only the user may read, with its name inside.
// Files are replaced as a whole: several dialogs may read and write at once, and of two that write the same name the
// last one stays. A file that cannot be read is left alone, whatever name is written, and does not keep the others
// from being read.
#pragma once

#include "host/settings/settings_file.h"

#include <string>
#include <vector>

class KeptSettings {
public:
    /// What a list of presets shows.
    struct Names {
        struct Unreadable {
            std::string file;  // its name
            std::string line;  // why; names it, too
        };
        std::vector<std::string> names;  // as the user's language sorts words
        std::vector<Unreadable> unreadable;
    };

    [[nodiscard]] Names list() const;
    /// The failure names the file that cannot be read, or says that there are none of that name.
    [[nodiscard]] Result<JobSettings> read(const std::string& name) const;
    [[nodiscard]] bool contains(const std::string& name) const;

    // Each says why it could not be done, in a line that names the file.
    /// Keeps the settings under a name that is not empty and has no control characters; those of that name before are
    /// replaced.
    [[nodiscard]] std::optional<std::string> write(const std::string& name, const JobSettings& settings) const;
    [[nodiscard]] std::optional<std::string> remove(const std::string& name) const;
    /// Gives the settings another name; those of that name before are replaced.
    [[nodiscard]] std::optional<std::string> rename(const std::string& name, const std::string& newName) const;

private:
    friend KeptSettings namedPresets();
    friend KeptSettings lastUsedSettings();
    using Content = JobSettings (*)(const JobSettings&);
    KeptSettings(const char* folder, const char* kind, Content content)
        : folder_(folder), kind_(kind), content_(content) {}

    /// What a message calls the settings of that name.
    [[nodiscard]] std::string subject(const std::string& name) const;

    const char* folder_;  // its name
    const char* kind_;    // the message that calls them by their name, %1
    Content content_;     // what is kept; nothing else is written, nor taken from a file
};

/// The presets that users name. What is kept: presetContent.
KeptSettings namedPresets();

/// The last used settings, by printerKey. What is kept: lastUsedContent.
KeptSettings lastUsedSettings();

/// A printer's name among the last used settings: its queue, or the place of its PPD.
std::string printerKey(const std::string& queue, const std::string& ppdPath);

/// A name as a user may have typed it: blanks at its ends are gone, control characters have become blanks.
std::string cleanPresetName(const std::string& typed);
