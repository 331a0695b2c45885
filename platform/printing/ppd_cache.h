// PPDs that are read once for all who look at them at the same time.
#pragma once

#include "platform/printing/ppd_file.h"

#include <memory>

/// The PPD at the path as readPPDFile() reads it; the same object as long as somebody holds it and the file is the
/// same. Null with the reason.
std::shared_ptr<const PPDFile> openPPDFile(const std::string& path, std::string* reason);
