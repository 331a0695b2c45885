// The document that is printed.
#pragma once

#include "driver/worker/document_look.h"
#include "host/settings/print_session.h"
#include "host/settings/result.h"

#include <cstdint>
#include <optional>
#include <string>

struct Document {
    std::string name;  // its file name, as people read it
    std::string path;
    DocumentPages pages;
    std::int64_t pageCount = 0;
};

/// Makes the session one for the document, if there is one: its paper may be the document's (document_paper.h).
void followDocument(PrintSession* session, const Document& document);

/// A document that is being looked at, in a process of its own, while the program gets ready.
class OpeningDocument {
public:
    /// Begins with the PDF at the path; an empty path is no document. `pageReader` is the program that looks at it.
    OpeningDocument(const std::string& path, const std::string& pageReader);

    /// Waits for it, once. No document has no name and no pages. The failure says what is wrong with it.
    Result<Document> finish();

private:
    std::string path_;
    std::optional<DocumentLook> look_;
};
