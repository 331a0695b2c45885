#include "platform/foundation/own_module.h"

#include <dlfcn.h>
#include <gnu/lib-names.h>
#include <unistd.h>
#include <cstdlib>

namespace {

/// Whether something stands before the C library that libraries shall call in its place: what is preloaded, or linked
/// to the program as a sanitizer is.
bool hasStandIns() {
    const char* const preloaded = std::getenv("LD_PRELOAD");
    if ((preloaded != nullptr && *preloaded != '\0') || access("/etc/ld.so.preload", F_OK) == 0) {
        return true;
    }
    void* const library = dlopen(LIBC_SO, RTLD_LAZY | RTLD_NOLOAD);
    return library == nullptr || dlsym(library, "malloc") != dlsym(RTLD_DEFAULT, "malloc");
}

}  // namespace

void* ownModuleAddress(const char* file, const char* function, std::string* reason, ModuleSearch search) {
    Dl_info self = {};
    const bool isKnown = dladdr(reinterpret_cast<const void*>(&ownModuleAddress), &self) != 0;
    const std::string path = isKnown ? self.dli_fname : "";
    // Lazily: else all that the libraries behind it might ever call would be looked up.
    const int order = search == ModuleSearch::ownLibrariesFirst && !hasStandIns() ? RTLD_DEEPBIND : 0;
    void* const module = dlopen((path.substr(0, path.rfind('/') + 1) + file).c_str(), RTLD_LAZY | RTLD_LOCAL | order);
    void* const address = module != nullptr ? dlsym(module, function) : nullptr;
    if (address == nullptr) {
        const char* const error = dlerror();
        *reason = error != nullptr ? error : file;
    }
    return address;
}
