// What is loaded with the first call of CUPS's library: linked with it, and the way to its functions.

#include "platform/printing/cups_library.h"

#pragma GCC diagnostic ignored "-Wdeprecated-declarations"  // the functions for PPDs

extern "C" __attribute__((visibility("default"))) const CupsFunctions* tavroCupsFunctions() {
#define TAVRO_CUPS_FUNCTION(name) ::name,
    static constexpr CupsFunctions kFunctions{TAVRO_CUPS_FUNCTIONS(TAVRO_CUPS_FUNCTION)};
#undef TAVRO_CUPS_FUNCTION
    return &kFunctions;
}
