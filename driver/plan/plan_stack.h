#pragma once

#include "driver/plan/sheet_stack.h"

/// A stack of sheets: covers around the pages, inserts between them, exceptions on paper of their own.
void planStack(const JobInstructions& job, std::span<const std::int32_t> pages, std::int64_t pageCount,
               SheetStack* stack);
