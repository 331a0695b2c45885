#pragma once

#include "driver/plan/sheet_stack.h"

/// A booklet: two pages to a side, in the order in which they lie before the sheets are folded together.
void planBooklet(const JobInstructions& job, std::span<const std::int32_t> pages, SheetStack* stack);
