#include "platform/foundation/own_module.h"

#include <dlfcn.h>

void* ownModuleAddress(const char* file, const char* function, std::string* reason) {
    Dl_info self = {};
    const bool isKnown = dladdr(reinterpret_cast<const void*>(&ownModuleAddress), &self) != 0;
    const std::string path = isKnown ? self.dli_fname : "";
    // Lazily: else all that the libraries behind it might ever call would be looked up.
    void* const module = dlopen((path.substr(0, path.rfind('/') + 1) + file).c_str(), RTLD_LAZY | RTLD_LOCAL);
    void* const address = module != nullptr ? dlsym(module, function) : nullptr;
    if (address == nullptr) {
        const char* const error = dlerror();
        *reason = error != nullptr ? error : file;
    }
    return address;
}
