// Where the tests find what was checked out and what was built. One object knows it, so that all other sources compile
// to the same in every checkout, and the compiler's cache serves them all.
#pragma once

#include <string>
#include <string_view>

/// The path of something in the source tree: sourcePath("tests/data/ten-pages.pdf").
std::string sourcePath(std::string_view relative);

/// The path of something that was built, as it lies in the stage: stagePath("bin/tavro-print").
std::string stagePath(std::string_view relative);
