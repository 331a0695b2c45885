// Where the print dialog was on the screen the last time, and how large.
#pragma once

#include "platform/toolbox/Windows.h"

/// Moves the window to where it was left, in its size; leaves it alone when nothing is known.
void restoreWindowPlace(WindowRef window);
/// Remembers where the window is, and its size. A place that cannot be written is forgotten without a word.
void rememberWindowPlace(WindowRef window);
