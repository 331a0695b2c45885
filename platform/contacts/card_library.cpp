#include "platform/contacts/card_library.h"

#include "platform/foundation/own_module.h"

#include <cstdio>

namespace {

CardLibrary* load() {
    std::string reason;
    const auto library =
        ownModuleFunction<decltype(tavroCardLibrary)>("libtavro_contacts_ebook.so", "tavroCardLibrary", &reason);
    if (library == nullptr) {
        std::fprintf(stderr, "The address book cannot be used: %s\n", reason.c_str());
    }
    return library != nullptr ? library() : nullptr;
}

}  // namespace

CardLibrary* cardLibrary() {
    static CardLibrary* const library = load();
    return library;
}
