// Any bytes as a PPD text with hexadecimal substrings.
//
// Contract: the text never grows, its new length counts up to a terminating zero, and a text without '<' stays as it
// is.

#include "model/settings/ppd_decode.h"

#include "fuzz/fuzz_target.h"

#include <cstring>
#include <memory>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string before(reinterpret_cast<const char*>(data), strnlen(reinterpret_cast<const char*>(data), size));
    // A buffer of exactly this size, so that a step too far is seen.
    const auto buffer = std::make_unique<char[]>(before.size() + 1);
    std::memcpy(buffer.get(), before.c_str(), before.size() + 1);
    const std::size_t length = ppd_decode(buffer.get());
    FUZZ_EXPECT(length <= before.size());
    FUZZ_EXPECT(buffer[length] == '\0');
    FUZZ_EXPECT(before.find('<') != std::string::npos || std::string(buffer.get(), length) == before);
    return 0;
}
