// A document's bytes as they were when it was opened, whatever becomes of its file.
#pragma once

#include "platform/files/descriptor.h"
#include "platform/files/file_stamp.h"

#include <cstdint>
#include <future>
#include <memory>
#include <optional>
#include <string>

class DocumentFile {
public:
    /// What a copy is made of at most. A larger document is read where it is, and is refused once it has been written
    /// to.
    static constexpr std::int64_t kMostCopied = std::int64_t{128} << 20;

    /// Opens the plain file at the path. Null, with errno, as openPlainFile.
    static std::shared_ptr<DocumentFile> open(const std::string& path);
    /// A document that is in no file yet.
    DocumentFile() = default;

    /// The open file, for who reads it while its copy is made.
    [[nodiscard]] int original() const { return original_.get(); }
    /// Begins to copy it, while the program does something else.
    void beginCopy(std::int64_t mostCopied = kMostCopied);
    /// Takes what was made of the document in its place.
    void use(Descriptor made) { copy_ = std::move(made); }
    /// Whether there is something in its place: what was made of it, or its copy.
    [[nodiscard]] bool isMade() const { return static_cast<bool>(copy_); }
    /// Waits for the copy. False when the file was written to since it was opened: what was read of it is of no use.
    bool settle();

    /// Where this program can open the document, as long as this lives; nobody else can. After settle().
    [[nodiscard]] std::string path() const;
    /// Whether what the path has is what it had.
    [[nodiscard]] bool isIntact() const;
    /// Whether there is another file, or none, where the document was.
    [[nodiscard]] bool isOutdated() const;

private:
    [[nodiscard]] std::optional<FileStamp> stampNow() const;

    std::string name_;  // empty for a file that has none
    Descriptor original_;
    std::optional<FileStamp> stamp_;
    std::future<Descriptor> copying_;
    Descriptor copy_;
};
