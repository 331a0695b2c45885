// What programs that were killed have left behind: files and folders that are for a while only.
#pragma once

#include <string>

/// How the names of such files and folders begin.
inline constexpr const char* kLitterPrefix = ".tavro-";

/// Marks an open file or folder as one that is still used, as long as it is open.
void claimLitter(int file);

/// Removes the user's own files and folders of such a name from the folder, but for those that are claimed, or so new
/// that they may be about to be.
void sweepLitter(const std::string& folder);
