// The document that is printed.
#pragma once

#include "driver/worker/document_conversion.h"
#include "driver/worker/document_look.h"
#include "host/job/document_file.h"
#include "host/settings/print_session.h"
#include "host/settings/result.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

struct Document {
    std::string name;  // its file name, as people read it
    std::string path;  // what lines call it
    std::shared_ptr<const DocumentFile> file;
    std::string password;  // of the PDF; empty for none
    DocumentPages pages;
    std::int64_t pageCount = 0;  // 0 as long as they are not known

    /// The path of its PDF, for this program.
    [[nodiscard]] std::string content() const { return file ? file->path() : path; }
};

/// Makes the session one for the document, if there is one: its paper may be the document's (document_paper.h).
void followDocument(PrintSession* session, const Document& document);

/// How often a password is asked for.
inline constexpr int kMostPasswords = 3;

/// The programs that read what strangers made.
struct DocumentPrograms {
    std::string pageReader;  // tavro-look
    std::string converter;   // tavro-convert
};

/// A document on its way: what is no PDF is made into one, which may take minutes, and it is looked at, in processes of
/// their own, while the program does something else.
class OpeningDocument {
public:
    /// Standard input, where a path is asked for.
    static constexpr const char* kStandardInput = "-";

    /// An empty path is no document. One whose path says nothing to people is called by the name.
    OpeningDocument(const std::string& path, DocumentPrograms programs, const std::string& name = {});

    /// What is there of it already: its name.
    [[nodiscard]] const Document& document() const { return document_; }
    /// Whether it has to be made into a PDF, which prepare() begins. Else it will soon be there, or be refused.
    [[nodiscard]] bool isToBePrepared() const { return isToBePrepared_; }
    /// Whether that was begun.
    [[nodiscard]] bool isPrepared() const { return isPrepared_; }
    /// For paper of that size, in points, if it has none of its own.
    void prepare(const Size& paper);

    /// Goes on with what is there, and waits so long for it; without a limit for a negative number. Whether finish()
    /// would wait no more.
    bool advance(std::chrono::milliseconds patience);

    /// Waits for it. No document has no name and no pages. The failure says what is wrong with it. It may be asked for
    /// again.
    Result<Document> finish();

    /// Whether it failed because it needs a password, or another one.
    [[nodiscard]] bool isLocked() const { return isLocked_; }
    /// Begins to look at it with that password.
    void unlock(const std::string& password);

private:
    void look();
    void fail(const std::string& reason);
    void endConversion();
    void endLook();

    DocumentPrograms programs_;
    bool isNamed_;  // by its path
    Document document_;
    std::shared_ptr<DocumentFile> file_;
    bool isToBePrepared_ = false;
    bool isPrepared_ = false;
    bool isLocked_ = false;
    std::unique_ptr<DocumentConversion> conversion_;
    std::unique_ptr<DocumentLook> look_;
    std::optional<Failure> failure_;
};
