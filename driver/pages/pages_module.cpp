// What a program loads when it first has to do with pages.

#include "driver/pages/pages_library.h"

extern "C" __attribute__((visibility("default"))) const PagesLibrary* tavroPagesLibrary() {
    static constexpr PagesLibrary kLibrary{readDocument, makePages, drawMark};
    return &kLibrary;
}
