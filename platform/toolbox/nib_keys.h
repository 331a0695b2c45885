// The keys that a nib gives its controls. Private to this folder.
#pragma once

struct OpaqueControlRef;

/// Connects the keys of the control's properties "keys" and "itemKeys", which Windows.h describes. They work while the
/// window that the control lies in has the keyboard and the control can be used.
void connectKeys(OpaqueControlRef* control);
