// Any bytes as what the interpreter tells of a job, and the sheets that a printer makes of that.
//
// Contract: a side for each page and no more; only sheets of two sides have something on the second one; texts are in
// one line.

#include "driver/proof/device_events.h"

#include "fuzz/fuzz_target.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::size_t half = std::min(text.find('\0'), size);
    const std::vector<DeviceEvent> events =
        readDeviceEvents(text.substr(0, half), text.substr(std::min(half + 1, size)));
    Proof proof;
    printEvents(events, &proof);
    const auto pages = std::size_t(std::ranges::count(events, DeviceEvent::Kind::page, &DeviceEvent::kind));
    FUZZ_EXPECT(proof.sheets.size() <= pages && pages <= 2 * proof.sheets.size());
    FUZZ_EXPECT(proof.copies >= 1);
    for (const ProofSheet& sheet : proof.sheets) {
        FUZZ_EXPECT(sheet.isTwoSided || (sheet.side2.isBlank && sheet.side2.text.empty()));
        for (const std::string& line : {sheet.side1.text, sheet.side2.text}) {
            FUZZ_EXPECT(line.find_first_of("\n\t\r") == std::string::npos && !line.ends_with(' '));
        }
    }
    return 0;
}
