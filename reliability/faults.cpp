#include "reliability/faults.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

const std::array<NamedCall, 9> kCalls{{
    {Call::open, "open", EMFILE},
    {Call::write, "write", ENOSPC},
    {Call::chmod, "fchmod", EPERM},
    {Call::link, "linkat", EDQUOT},
    {Call::rename, "rename", ENOSPC},
    {Call::sync, "fsync", EIO},
    {Call::unlink, "unlink", EIO},
    {Call::lock, "flock", ENOLCK},
    {Call::memory, "malloc", ENOMEM},
}};

namespace {

bool armed = false;
Call failingCall = Call::open;
long failingNumber = 0;
std::array<long, kCalls.size()> counts{};

bool fails(Call call) {
    if (!armed) {
        return false;
    }
    const long number = ++counts[static_cast<std::size_t>(call)];
    if (call != failingCall || number != failingNumber) {
        return false;
    }
    errno = kCalls[static_cast<std::size_t>(call)].error;
    return true;
}

/// The C library's own.
template <typename Function>
Function* behind(const char* name) {
    void* const found = dlsym(RTLD_NEXT, name);
    if (found == nullptr) {
        std::fprintf(stderr, "reliability: the C library has no %s\n", name);
        std::abort();
    }
    Function* function = nullptr;
    std::memcpy(&function, &found, sizeof function);
    return function;
}

}  // namespace

void armFault(Call call, long number) {
    counts.fill(0);
    failingCall = call;
    failingNumber = number;
    armed = true;
}

long disarmFault(Call call) {
    armed = false;
    return counts[static_cast<std::size_t>(call)];
}

// What the libraries call. The names, and those of the parameters, are the C library's.
extern "C" {

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    static auto* const next = behind<int(const char*, int, ...)>("open");
    return fails(Call::open) ? -1 : next(path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    static auto* const next = behind<int(const char*, int, ...)>("open64");
    return fails(Call::open) ? -1 : next(path, flags, mode);
}

ssize_t write(int file, const void* bytes, size_t size) {
    static auto* const next = behind<ssize_t(int, const void*, size_t)>("write");
    return file > STDERR_FILENO && fails(Call::write) ? -1 : next(file, bytes, size);
}

int fchmod(int file, mode_t mode) noexcept {
    static auto* const next = behind<int(int, mode_t)>("fchmod");
    return fails(Call::chmod) ? -1 : next(file, mode);
}

int linkat(int from, const char* path, int to, const char* name, int flags) noexcept {
    static auto* const next = behind<int(int, const char*, int, const char*, int)>("linkat");
    return fails(Call::link) ? -1 : next(from, path, to, name, flags);
}

int rename(const char* from, const char* to) noexcept {
    static auto* const next = behind<int(const char*, const char*)>("rename");
    return fails(Call::rename) ? -1 : next(from, to);
}

int fsync(int file) {
    static auto* const next = behind<int(int)>("fsync");
    struct stat status {};
    const bool isFolder = fstat(file, &status) == 0 && S_ISDIR(status.st_mode);
    return !isFolder && fails(Call::sync) ? -1 : next(file);
}

int unlink(const char* path) noexcept {
    static auto* const next = behind<int(const char*)>("unlink");
    return fails(Call::unlink) ? -1 : next(path);
}

int flock(int file, int operation) noexcept {
    static auto* const next = behind<int(int, int)>("flock");
    return fails(Call::lock) ? -1 : next(file, operation);
}

// A sanitizer has an allocator of its own, which must not be stood in for.
#ifndef TAVRO_SANITIZED

void* __libc_malloc(size_t size);                // NOLINT(bugprone-reserved-identifier)
void* __libc_calloc(size_t count, size_t size);  // NOLINT(bugprone-reserved-identifier)
void* __libc_realloc(void* block, size_t size);  // NOLINT(bugprone-reserved-identifier)

void* malloc(size_t size) noexcept {
    return fails(Call::memory) ? nullptr : __libc_malloc(size);
}

void* calloc(size_t count, size_t size) noexcept {
    return fails(Call::memory) ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* block, size_t size) noexcept {
    return fails(Call::memory) ? nullptr : __libc_realloc(block, size);
}

#endif
}
