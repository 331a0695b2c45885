// A call of the system that fails, once, where somebody asks for it.
//
// The program that links this answers the calls of its libraries itself and hands them on, all but one. Only what goes
// through the dynamic linker is seen: the calls of the project's libraries, Qt's and the C++ library's, and none inside
// of the C library.
#pragma once

#include <array>

/// The kinds of calls; `sync` is fsync of a file, not of a folder, and `memory` malloc, calloc and realloc.
enum class Call { open, write, chmod, link, rename, sync, unlink, lock, memory };

struct NamedCall {
    Call call;
    const char* name;
    int error;  // errno.h: what such a call meets in life
};
extern const std::array<NamedCall, 9> kCalls;

/// Counts calls from now on, and fails the one of that number (from 1) and kind; 0 fails none.
void armFault(Call call, long number);
/// How many of that kind there were since then. Ends the counting.
long disarmFault(Call call);
