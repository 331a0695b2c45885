// Any bytes as a strings table.
//
// Contract: a dictionary of strings, or none and the reason with its place.

#include "platform/foundation/strings_table.h"

#include "fuzz/fuzz_target.h"
#include "platform/foundation/CFString.h"

#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CFRef<CFStringRef> reason;
    const auto table = readStringsTable(makeData(data, size).get(), &reason);
    if (!table) {
        FUZZ_EXPECT(CFStringGetLength(reason.get()) > 0);
        return 0;
    }
    const auto count = static_cast<std::size_t>(CFDictionaryGetCount(table.get()));
    std::vector<const void*> keys(count);
    std::vector<const void*> values(count);
    CFDictionaryGetKeysAndValues(table.get(), keys.data(), values.data());
    for (std::size_t i = 0; i < count; ++i) {
        FUZZ_EXPECT(CFGetTypeID(keys[i]) == CFStringGetTypeID() && CFGetTypeID(values[i]) == CFStringGetTypeID());
        FUZZ_EXPECT(CFDictionaryGetValue(table.get(), keys[i]) == values[i]);
    }
    return 0;
}
