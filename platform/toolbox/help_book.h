// Registered help books: their folders, and pages that cannot lie outside of them.
#pragma once

#include "platform/foundation/CFBase.h"

#include <QUrl>
#include <optional>

/// The address of a page of the book: "folder/page.htm", "folder/page.htm#name" or, for the start page, nothing.
/// Nothing for an unknown book, a missing page or one outside of the book's folder.
std::optional<QUrl> helpPage(const QString& book, const QString& page);
/// The same for a link inside a book: true when it leads to a file of some registered book.
bool isHelpFile(const QUrl& url);
