// Modules of ours that lie beside the platform's libraries, for what brings much along and is not always needed.
#pragma once

#include <string>

/// The address of a function that the module exports; a file such as "libtavro_contacts_ebook.so". The module is loaded
/// by its first call and stays. Null, with the reason, where that fails. Any thread may call it.
void* ownModuleAddress(const char* file, const char* function, std::string* reason);

/// The same as a function: ownModuleFunction<decltype(tavroCardLibrary)>(...).
template <typename Function>
Function* ownModuleFunction(const char* file, const char* function, std::string* reason) {
    return reinterpret_cast<Function*>(ownModuleAddress(file, function, reason));
}
