// Taking an exported address book over into the user's own.
#pragma once

#include "platform/foundation/CFBase.h"

/// Asks for a vCard file and adds what is in it to the user's address book; a notice says how much that was and what
/// could not be read. False when nothing was read: the address book is then as it was.
bool RunModalFaxABImport(CFBundleRef bundle);
