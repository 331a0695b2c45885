// How large and how small custom paper may be.
#pragma once

/// The custom page size limits of the current session's printer, in points. 432, 432, 864, 864 (6 by 6 to 12 by 12
/// inches) when there is no session or printer, its PPD cannot be read or allows no custom sizes.
void GetMediaLimits(float* minWidth, float* minHeight, float* maxWidth, float* maxHeight);
