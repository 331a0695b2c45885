// What an item of a ticket is about, for those who keep settings for other jobs.
#pragma once

#include <cstdint>
#include <string>

/// From what nobody keeps to what everybody keeps: one document alone has it, one job, or it is how the printer prints.
enum class ItemUse : std::uint8_t { document, job, printing };

/// Of an item by its key, in whichever dictionary it stands, or of a main keyword of the PPD.
ItemUse useOfItem(const std::string& key);
