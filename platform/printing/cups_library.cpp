#include "platform/printing/cups_library.h"

#include "platform/foundation/own_module.h"

#include <stdexcept>
#include <string>

namespace {

const CupsFunctions* load() {
    std::string reason;
    // The main thread waits while this is loaded.
    const auto functions = ownModuleFunction<decltype(tavroCupsFunctions)>("libtavro_cups.so", "tavroCupsFunctions",
                                                                           &reason, ModuleSearch::ownLibrariesFirst);
    if (functions == nullptr) {
        throw std::runtime_error(reason);
    }
    return functions();
}

}  // namespace

const CupsFunctions& cups() {
    static const CupsFunctions* const functions = load();
    return *functions;
}
