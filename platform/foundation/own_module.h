// Modules of ours that lie beside the platform's libraries, for what brings much along and is not always needed.
#pragma once

#include <string>

/// Where what the module and its libraries call is looked for: in all libraries of the program first, as is usual, or
/// in their own, which takes half as long. That is for libraries in C: of two equal objects of C++ each side would
/// have its own. Where something is loaded before the program's libraries, such as another allocator, it stays first.
enum class ModuleSearch : unsigned char { programFirst, ownLibrariesFirst };

/// The address of a function that the module exports; a file such as "libtavro_contacts_ebook.so". The module is loaded
/// by its first call and stays. Null, with the reason, where that fails. Any thread may call it.
void* ownModuleAddress(const char* file, const char* function, std::string* reason,
                       ModuleSearch search = ModuleSearch::programFirst);

/// The same as a function: ownModuleFunction<decltype(tavroCardLibrary)>(...).
template <typename Function>
Function* ownModuleFunction(const char* file, const char* function, std::string* reason,
                            ModuleSearch search = ModuleSearch::programFirst) {
    return reinterpret_cast<Function*>(ownModuleAddress(file, function, reason, search));
}
