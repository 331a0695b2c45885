// Paths of file addresses as Qt has them.
#pragma once

#include "platform/foundation/CFURL.h"
#include "platform/foundation/objects.h"

/// The absolute path of a file address, without a slash at the end; empty when it is no file's or cannot be a path.
/// Bytes that are no UTF-8 are lost in it.
QString filePathOf(CFURLRef url);

CFRef<CFURLRef> makeFileURL(const QString& path, bool isDirectory);
