// Settings as the value of a job's option: what a queue's filter hears of that no option of the PPD says.
//
// The value is "1." and, in the alphabet of URLs (RFC 4648), a property list compressed by zlib; its top is a
// dictionary. Whoever may look at a queue's jobs can read it.
#pragma once

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

inline constexpr const char* kSettingsOption = "tavro-settings";
/// The value that asks for nothing.
inline constexpr const char* kNoSettings = "none";

/// The filter that reads it, as the PPDs that have it call it.
inline constexpr const char* kSettingsFilter = "tavro-pages";
/// A type of documents that print servers know where the filter is installed (packaging/queue): that a PPD names a
/// filter does not mean that the server has it.
inline constexpr const char* kSettingsFilterType = "application/vnd.tavro-pages";

/// The print server refuses jobs with longer values.
inline constexpr std::size_t kMostSettingsText = 32700;
/// Of the property list; the largest that anybody has made took a quarter.
inline constexpr std::size_t kMostSettingsBytes = std::size_t{8} << 20;

/// The settings as a value. Nothing, with the reason, for more than a value holds, or what is no property list.
std::optional<std::string> packSettings(CFDictionaryRef settings, std::string* reason);

/// The settings of a value that anybody may have made: a new dictionary, or null with the reason.
CFRef<CFDictionaryRef> unpackSettings(std::string_view text, std::string* reason);
