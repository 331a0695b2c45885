// Who owns what: counts, constants, and references of a wrong kind.

#include "platform/foundation/CFUUID.h"
#include "tests/support/cf_values.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

// Read before main() runs, as the tables of a plug-in do.
const bool kTruthAtStart = CFBooleanGetValue(kCFBooleanTrue) && !CFBooleanGetValue(kCFBooleanFalse);
const CFStringRef kNameAtStart = CFSTR("name");

TEST(Ownership, ReferencesCountOwners) {
    auto first = makeCFString("text");
    const CFStringRef object = first.get();
    EXPECT_EQ(CFGetRetainCount(object), 1);
    {
        CFRef<CFStringRef> second = first;
        EXPECT_EQ(CFGetRetainCount(object), 2);
        CFRef<CFStringRef> third = std::move(second);
        EXPECT_EQ(CFGetRetainCount(object), 2);
        third = first;
        EXPECT_EQ(CFGetRetainCount(object), 2);
        const auto lent = CFRef<CFStringRef>::retain(third.get());
        EXPECT_EQ(CFGetRetainCount(object), 3);
    }
    EXPECT_EQ(CFGetRetainCount(object), 1);

    first = *&first;  // to itself
    EXPECT_EQ(CFGetRetainCount(object), 1);

    const auto owned = CFRef<CFStringRef>::adopt(first.leak());
    EXPECT_FALSE(first);
    EXPECT_EQ(CFGetRetainCount(object), 1);
}

TEST(Ownership, CollectionsOwnTheirObjectsUntilTheyGo) {
    const auto key = makeCFString("key");
    const auto old = makeCFString("old");
    const auto value = makeCFString("new");
    {
        const auto dictionary = makeCFDictionary();
        CFDictionarySetValue(dictionary.get(), key.get(), old.get());
        EXPECT_EQ(CFGetRetainCount(old.get()), 2);
        CFDictionarySetValue(dictionary.get(), key.get(), value.get());
        EXPECT_EQ(CFGetRetainCount(old.get()), 1);
        CFDictionarySetValue(dictionary.get(), key.get(), CFDictionaryGetValue(dictionary.get(), key.get()));
        EXPECT_EQ(CFGetRetainCount(key.get()), 2);
        EXPECT_EQ(CFGetRetainCount(value.get()), 2);

        const auto array = makeCFArray();
        CFArrayAppendValue(array.get(), dictionary.get());
        CFArrayAppendValue(array.get(), value.get());
        const auto copy =
            CFRef<CFMutableDictionaryRef>::adopt(CFDictionaryCreateMutableCopy(nullptr, 0, dictionary.get()));
        EXPECT_EQ(CFGetRetainCount(value.get()), 4);
        CFDictionaryRemoveValue(copy.get(), key.get());
        EXPECT_EQ(CFGetRetainCount(value.get()), 3);
        EXPECT_EQ(CFGetRetainCount(dictionary.get()), 2);
    }
    EXPECT_EQ(CFGetRetainCount(key.get()), 1);
    EXPECT_EQ(CFGetRetainCount(value.get()), 1);
}

TEST(Ownership, BarePointersAreNeverCounted) {
    const auto string = makeCFString("text");
    const auto array = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, nullptr));
    CFArrayAppendValue(array.get(), string.get());
    int local = 0;
    CFArrayAppendValue(array.get(), &local);
    CFArrayAppendValue(array.get(), nullptr);
    EXPECT_EQ(CFGetRetainCount(string.get()), 1);
    EXPECT_EQ(CFArrayGetCount(array.get()), 3);
    EXPECT_EQ(CFArrayGetValueAtIndex(array.get(), 1), &local);
}

TEST(Ownership, ConstantsOutliveEveryRelease) {
    EXPECT_TRUE(kTruthAtStart);
    EXPECT_EQ(kNameAtStart, CFSTR("name"));
    const std::string sameTextElsewhere = "name";
    EXPECT_EQ(CFStringMakeConstant(sameTextElsewhere.c_str()), kNameAtStart);
    EXPECT_TRUE(CFEqual(kNameAtStart, makeCFString("name").get()));

    const auto constantUUID = [](UInt8 last) {
        return CFUUIDGetConstantUUIDWithBytes(nullptr, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, last);
    };
    EXPECT_EQ(constantUUID(16), constantUUID(16));
    EXPECT_FALSE(CFEqual(constantUUID(16), constantUUID(17)));

    for (const CFTypeRef constant : {CFTypeRef(kCFBooleanTrue), CFTypeRef(kNameAtStart), CFTypeRef(constantUUID(16))}) {
        CFRelease(constant);
        CFRelease(constant);
        CFRetain(constant);
        EXPECT_EQ(CFGetRetainCount(constant), std::numeric_limits<CFIndex>::max());
    }
}

// A settings file may hold a string where the code expects a number.
TEST(Ownership, AnObjectOfAnotherKindReadsAsNone) {
    const auto dictionary = makeCFDictionary();
    CFDictionarySetValue(dictionary.get(), CFSTR("copies"), CFSTR("three"));
    const void* value = CFDictionaryGetValue(dictionary.get(), CFSTR("copies"));
    int copies = 7;
    EXPECT_FALSE(CFNumberGetValue(static_cast<CFNumberRef>(value), kCFNumberSInt32Type, &copies));
    EXPECT_EQ(copies, 7);
    EXPECT_FALSE(CFBooleanGetValue(static_cast<CFBooleanRef>(value)));
    EXPECT_EQ(CFArrayGetCount(static_cast<CFArrayRef>(value)), 0);
    EXPECT_EQ(CFDictionaryGetValue(static_cast<CFDictionaryRef>(value), CFSTR("x")), nullptr);
    EXPECT_EQ(CFStringGetLength(static_cast<CFStringRef>(CFTypeRef(kCFBooleanTrue))), 0);
    EXPECT_FALSE(CFEqual(value, kCFBooleanTrue));
    EXPECT_FALSE(CFEqual(value, nullptr));
    EXPECT_TRUE(CFEqual(nullptr, nullptr));
    EXPECT_EQ(CFGetTypeID(value), CFStringGetTypeID());
    EXPECT_EQ(CFGetTypeID(nullptr), 0u);
}

}  // namespace
