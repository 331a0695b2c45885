// Any bytes as an XML property list.
//
// Contract: a tree, or none and the reason. A tree is written as XML that reads back as an equal tree, and so is its
// deep copy.

#include "platform/foundation/CFPropertyList.h"

#include "fuzz/fuzz_target.h"
#include "platform/foundation/CFString.h"

namespace {

CFRef<CFTypeRef> read(CFDataRef data, CFOptionFlags mutability, CFRef<CFStringRef>* reason) {
    CFStringRef error = nullptr;
    auto tree = CFRef<CFTypeRef>::adopt(CFPropertyListCreateFromXMLData(nullptr, data, mutability, &error));
    *reason = CFRef<CFStringRef>::adopt(error);
    return tree;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CFRef<CFStringRef> reason;
    const auto tree = read(makeData(data, size).get(), kCFPropertyListImmutable, &reason);
    if (!tree) {
        FUZZ_EXPECT(CFStringGetLength(reason.get()) > 0);
        return 0;
    }
    const auto xml = CFRef<CFDataRef>::adopt(CFPropertyListCreateXMLData(nullptr, tree.get()));
    FUZZ_EXPECT(xml);
    const auto again = read(xml.get(), kCFPropertyListMutableContainersAndLeaves, &reason);
    FUZZ_EXPECT(again);
    const auto copy =
        CFRef<CFTypeRef>::adopt(CFPropertyListCreateDeepCopy(nullptr, again.get(), kCFPropertyListImmutable));
    const auto xmlOfCopy = CFRef<CFDataRef>::adopt(CFPropertyListCreateXMLData(nullptr, copy.get()));
    // By their text: a real that is no number equals nothing.
    FUZZ_EXPECT(CFEqual(xml.get(), xmlOfCopy.get()));
    return 0;
}
