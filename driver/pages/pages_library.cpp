#include "driver/pages/pages_library.h"

#include "platform/foundation/CFBase.h"

#include <dlfcn.h>

namespace {

constexpr const char* kFileName = "libtavro_driver_pages.so";

struct Loaded {
    const PagesLibrary* library = nullptr;
    std::string fault;  // why there is none
};

/// Beside the platform's libraries.
std::string modulePath() {
    Dl_info platform = {};
    const bool known = dladdr(reinterpret_cast<const void*>(&CFRetain), &platform) != 0;
    const std::string path = known ? platform.dli_fname : "";
    return path.substr(0, path.rfind('/') + 1) + kFileName;
}

Loaded load() {
    void* const module = dlopen(modulePath().c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const getter = module != nullptr ? dlsym(module, "tavroPagesLibrary") : nullptr;
    if (getter == nullptr) {
        const char* const error = dlerror();
        return {nullptr, std::string("cannot be read: ") + (error != nullptr ? error : kFileName)};
    }
    return {reinterpret_cast<decltype(&tavroPagesLibrary)>(getter)(), {}};
}

/// Null, with the reason, where it cannot be loaded.
const PagesLibrary* pagesLibrary(std::string* reason) {
    static const Loaded loaded = load();
    if (loaded.library == nullptr) {
        *reason = loaded.fault;
    }
    return loaded.library;
}

}  // namespace

std::optional<DocumentPages> readDocument(int file, std::string* reason, const std::string& password) {
    const PagesLibrary* const library = pagesLibrary(reason);
    return library != nullptr ? library->read(file, reason, password) : std::nullopt;
}

bool makePages(const PagesOrder& order, ByteSink& output, const PagesProgress& progress, std::string* reason) {
    const PagesLibrary* const library = pagesLibrary(reason);
    return library != nullptr && library->make(order, output, progress, reason);
}

std::optional<std::string> drawMark(const StoredMark& mark, MarkInk ink, double scale, std::string* reason) {
    const PagesLibrary* const library = pagesLibrary(reason);
    return library != nullptr ? library->draw(mark, ink, scale, reason) : std::nullopt;
}
