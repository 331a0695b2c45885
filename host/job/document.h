// The document that is printed.
#pragma once

#include "driver/pages/document.h"
#include "host/settings/result.h"

#include <cstdint>
#include <string>

struct Document {
    std::string name;  // its file name, as people read it
    std::string path;
    DocumentPages pages;
    std::int64_t pageCount = 0;
};

/// The PDF at the path; an empty path gives a document without a name and pages. The failure says what is wrong with
/// it.
Result<Document> openDocument(const std::string& path);
