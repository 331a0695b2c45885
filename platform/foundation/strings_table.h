// Strings tables: the texts of one language, as files of `"key" = "text";` entries.
#pragma once

#include "platform/foundation/CFRef.h"

/// The dictionary of a table in UTF-8. Between entries may stand blanks, /* comments */ and comments from // to the
/// end of the line; quoted text knows the escapes \" \\ \n \t and \uXXXX, a UTF-16 code unit in four hexadecimal
/// digits. Nothing, with the reason in *error ("line 3, column 7: …"; may be null), when the bytes are anything else
/// or a key stands there twice.
CFRef<CFDictionaryRef> readStringsTable(CFDataRef data, CFRef<CFStringRef>* error);
