// What a file is: by what is in it and, where that says little, by its name.
#pragma once

#include <string>
#include <vector>

struct FileKind {
    /// MIME types: the file's own first, then what it also is, such as "text/plain" for a page of HTML. The last one is
    /// "application/octet-stream" where nobody knows.
    std::vector<std::string> types;
    std::string words;  // for people: "PNG image"; empty where nobody knows

    [[nodiscard]] const std::string& type() const { return types.front(); }
    [[nodiscard]] bool is(const std::string& type) const;
};

/// The kind of an open plain file that is called so; the name may be empty.
FileKind kindOfFile(int file, const std::string& name);
