// Paper as a picture: which picture files make it.
#pragma once

#include "model/stock/stock.h"

#include <string>
#include <vector>

/// The names of the picture files, among the bundle's resources, that are drawn over each other, the first one at the
/// bottom. There are two families: one for the job's own paper and one for special pages.
[[nodiscard]] std::vector<std::string> StockIconFiles(const Stock& stock, JobContext context);
