// What all fuzz targets have: the fuzzer's entry point, and a way to say that a contract is broken.
#pragma once

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// Called by the fuzzer, or with each file of the corpus by the tests. Always returns 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Ends the process when the condition, a part of the target's contract, does not hold.
#define FUZZ_EXPECT(condition)                                                   \
    do {                                                                         \
        if (!(condition)) {                                                      \
            std::fprintf(stderr, "%s:%d: %s\n", __FILE__, __LINE__, #condition); \
            std::abort();                                                        \
        }                                                                        \
    } while (false)

inline CFRef<CFDataRef> makeData(const std::uint8_t* data, std::size_t size) {
    return CFRef<CFDataRef>::adopt(CFDataCreate(nullptr, data, static_cast<CFIndex>(size)));
}
