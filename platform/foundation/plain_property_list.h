// Property lists in the form in which programs write them.
#pragma once

#include "platform/foundation/CFRef.h"

#include <QByteArray>

/// The document type of all property lists.
inline constexpr char kPropertyListDocType[] =
    R"(<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">)";

/// Reads a document of tags, texts and blanks alone, in UTF-8, several times as fast as an XML reader, which turns each
/// character into a QChar and looks at it by itself. Base64 is not even decoded: it stays a piece of the bytes.
///
/// Null for every document that has anything else (comments, attributes, references by number, odd blanks) or is wrong:
/// an XML reader has to decide, and knows the place of a fault. What is read here is what that one would read.
CFRef<CFTypeRef> readPlainPropertyList(const QByteArray& bytes, CFOptionFlags mutability);
