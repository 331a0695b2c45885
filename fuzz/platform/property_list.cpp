// Any bytes as an XML property list.
//
// Contract: a tree, or none and the reason. A tree is written as XML that reads back as an equal tree, and so is its
// deep copy. A comment at the end changes nothing, although the plain documents have a road of their own.

#include "platform/foundation/CFPropertyList.h"

#include "fuzz/fuzz_target.h"
#include "platform/foundation/CFString.h"

#include <string>
#include <string_view>

namespace {

CFRef<CFTypeRef> read(CFDataRef data, CFOptionFlags mutability, CFRef<CFStringRef>* reason) {
    CFStringRef error = nullptr;
    auto tree = CFRef<CFTypeRef>::adopt(CFPropertyListCreateFromXMLData(nullptr, data, mutability, &error));
    *reason = CFRef<CFStringRef>::adopt(error);
    return tree;
}

bool hasSameXML(CFTypeRef left, CFTypeRef right) {
    const auto ofLeft = CFRef<CFDataRef>::adopt(CFPropertyListCreateXMLData(nullptr, left));
    const auto ofRight = CFRef<CFDataRef>::adopt(CFPropertyListCreateXMLData(nullptr, right));
    // By their text: a real that is no number equals nothing.
    return CFEqual(ofLeft.get(), ofRight.get());
}

/// Whether a comment behind the text is one: not in another encoding.
bool canTakeComment(const std::string& xml) {
    return xml.starts_with('<') && xml.find('\0') > 4 && xml.find("encoding=\"UTF-8\"") == 20;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CFRef<CFStringRef> reason;
    const auto tree = read(makeData(data, size).get(), kCFPropertyListImmutable, &reason);

    const std::string text(reinterpret_cast<const char*>(data), size);
    if (canTakeComment(text)) {
        const std::string other = text + "<!-- -->";
        const auto bytes = makeData(reinterpret_cast<const std::uint8_t*>(other.data()), other.size());
        CFRef<CFStringRef> otherReason;
        const auto otherTree = read(bytes.get(), kCFPropertyListImmutable, &otherReason);
        FUZZ_EXPECT(bool(tree) == bool(otherTree));
        FUZZ_EXPECT(!tree || CFEqual(tree.get(), otherTree.get()));
    }
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
    FUZZ_EXPECT(hasSameXML(again.get(), copy.get()));
    return 0;
}
