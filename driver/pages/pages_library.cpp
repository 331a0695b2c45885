#include "driver/pages/pages_library.h"

#include "platform/foundation/own_module.h"

namespace {

struct Loaded {
    const PagesLibrary* library = nullptr;
    std::string fault;  // why there is none
};

Loaded load() {
    std::string reason;
    const auto library =
        ownModuleFunction<decltype(tavroPagesLibrary)>("libtavro_driver_pages.so", "tavroPagesLibrary", &reason);
    return library != nullptr ? Loaded{library(), {}} : Loaded{nullptr, "cannot be read: " + reason};
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
