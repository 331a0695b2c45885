#pragma once

#include "driver/plan/sheet_stack.h"

/// A fax: its cover sheet, and the pages.
void planFax(const JobInstructions& job, std::span<const std::int32_t> pages, SheetStack* stack);
