#include "platform/contacts/card_library.h"

#include <cstdio>

#include <dlfcn.h>

namespace {

constexpr const char* kFileName = "libtavro_contacts_ebook.so";

/// Beside the library that this function is in.
std::string modulePath() {
    Dl_info self = {};
    const bool known = dladdr(reinterpret_cast<const void*>(&cardLibrary), &self) != 0;
    const std::string path = known ? self.dli_fname : "";
    return path.substr(0, path.rfind('/') + 1) + kFileName;
}

CardLibrary* load() {
    void* module = dlopen(modulePath().c_str(), RTLD_NOW | RTLD_LOCAL);
    void* getter = module ? dlsym(module, "tavroCardLibrary") : nullptr;
    if (!getter) {
        std::fprintf(stderr, "The address book cannot be used: %s\n", dlerror());
        return nullptr;
    }
    return reinterpret_cast<decltype(&tavroCardLibrary)>(getter)();
}

}  // namespace

CardLibrary* cardLibrary() {
    static CardLibrary* const library = load();
    return library;
}
