#include "model/stock/media_limits.h"

#include "model/settings/plugin_state.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"

namespace {

struct Limits {
    float minWidth;
    float minHeight;
    float maxWidth;
    float maxHeight;
};
constexpr Limits kDefaultLimits{432, 432, 864, 864};

bool ReadLimits(Limits* limits) {
    PMPrinter printer = nullptr;
    CFURLRef url = nullptr;
    UInt8 path[1025];
    return GetCurrentPrintSession() != nullptr &&
           PMSessionGetCurrentPrinter(GetCurrentPrintSession(), &printer) == noErr &&
           PMPrinterGetDescriptionURL(printer, kPMPPDDescriptionType, &url) == noErr &&
           CFURLGetFileSystemRepresentation(url, true, path, sizeof path) &&
           PMCopyCustomPaperLimits(reinterpret_cast<const char*>(path), &limits->minWidth, &limits->minHeight,
                                   &limits->maxWidth, &limits->maxHeight) &&
           limits->minWidth > 0 && limits->minHeight > 0 && limits->maxWidth > 0 && limits->maxHeight > 0;
}

}  // namespace

void GetMediaLimits(float* minWidth, float* minHeight, float* maxWidth, float* maxHeight) {
    Limits limits{};
    if (!ReadLimits(&limits)) {
        limits = kDefaultLimits;
    }
    *minWidth = limits.minWidth;
    *minHeight = limits.minHeight;
    *maxWidth = limits.maxWidth;
    *maxHeight = limits.maxHeight;
}
