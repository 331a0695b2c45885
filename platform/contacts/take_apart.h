// vCards as libebook-contacts takes them apart, and what it leaves to be mended.
#pragma once

#include <string>

/// A vCard of version 2.1, 3.0 or 4.0, its texts in UTF-8 and its parameters in their order; anything else gives an
/// empty card. The caller unrefs it.
struct _EVCard* takeApart(const std::string& text);
