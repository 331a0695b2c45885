// Arrays, dictionaries and data by value.

#include "tests/support/cf_values.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

std::vector<std::string> keysOf(CFDictionaryRef dictionary) {
    std::vector<const void*> keys(std::size_t(CFDictionaryGetCount(dictionary)));
    CFDictionaryGetKeysAndValues(dictionary, keys.data(), nullptr);
    std::vector<std::string> texts;
    for (const void* key : keys) {
        texts.push_back(textOfCF(static_cast<CFStringRef>(key)));
    }
    return texts;
}

TEST(Dictionaries, KeepTheOrderInWhichKeysCame) {
    const auto dictionary = makeCFDictionary();
    for (const char* key : {"zebra", "apple", "mango", "fig"}) {
        CFDictionaryAddValue(dictionary.get(), makeCFString(key).get(), CFSTR("first"));
    }
    CFDictionaryAddValue(dictionary.get(), CFSTR("zebra"), CFSTR("second"));
    CFDictionarySetValue(dictionary.get(), CFSTR("mango"), CFSTR("second"));
    CFDictionaryRemoveValue(dictionary.get(), CFSTR("apple"));
    CFDictionaryRemoveValue(dictionary.get(), CFSTR("absent"));
    CFDictionaryAddValue(dictionary.get(), CFSTR("apple"), CFSTR("third"));
    EXPECT_EQ(keysOf(dictionary.get()), (std::vector<std::string>{"zebra", "mango", "fig", "apple"}));
    EXPECT_EQ(CFDictionaryGetValue(dictionary.get(), makeCFString("zebra").get()), CFSTR("first"));
    EXPECT_EQ(CFDictionaryGetValue(dictionary.get(), makeCFString("mango").get()), CFSTR("second"));
}

TEST(Dictionaries, AreEqualByContentWhateverTheOrder) {
    const auto build = [](std::vector<std::pair<const char*, double>> pairs) {
        auto dictionary = makeCFDictionary();
        for (const auto& [key, value] : pairs) {
            CFDictionarySetValue(dictionary.get(), makeCFString(key).get(), makeCFNumber(value).get());
        }
        return dictionary;
    };
    const auto left = build({{"a", 1}, {"b", 2}});
    EXPECT_TRUE(CFEqual(left.get(), build({{"b", 2}, {"a", 1}}).get()));
    EXPECT_FALSE(CFEqual(left.get(), build({{"a", 1}, {"b", 3}}).get()));
    EXPECT_FALSE(CFEqual(left.get(), build({{"a", 1}, {"c", 2}}).get()));
    EXPECT_FALSE(CFEqual(left.get(), build({{"a", 1}}).get()));
}

TEST(Dictionaries, WithBarePointersCompareThePointer) {
    const auto dictionary =
        CFRef<CFMutableDictionaryRef>::adopt(CFDictionaryCreateMutable(nullptr, 0, nullptr, nullptr));
    const auto key = makeCFString("key");
    CFDictionarySetValue(dictionary.get(), key.get(), nullptr);
    EXPECT_TRUE(CFDictionaryContainsKey(dictionary.get(), key.get()));
    EXPECT_FALSE(CFDictionaryContainsKey(dictionary.get(), makeCFString("key").get()));
    EXPECT_EQ(CFGetRetainCount(key.get()), 1);
}

TEST(Dictionaries, CreatedFromListsKeepTheFirstOfEqualKeysAndDoNotChange) {
    const auto again = makeCFString("a");
    const void* keys[] = {CFSTR("a"), again.get(), CFSTR("b"), nullptr};
    const void* values[] = {CFSTR("1"), CFSTR("2"), CFSTR("3"), CFSTR("4")};
    const auto dictionary = CFRef<CFDictionaryRef>::adopt(
        CFDictionaryCreate(nullptr, keys, values, 4, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    EXPECT_EQ(keysOf(dictionary.get()), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(CFDictionaryGetValue(dictionary.get(), CFSTR("a")), CFSTR("1"));
    EXPECT_EQ(CFDictionaryGetValue(dictionary.get(), nullptr), nullptr);

    testing::internal::CaptureStderr();
    CFDictionarySetValue(const_cast<CFMutableDictionaryRef>(dictionary.get()), CFSTR("a"), CFSTR("9"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "CFDictionarySetValue: this dictionary cannot be changed\n");
    EXPECT_EQ(CFDictionaryGetValue(dictionary.get(), CFSTR("a")), CFSTR("1"));

    const auto copy = CFRef<CFMutableDictionaryRef>::adopt(CFDictionaryCreateMutableCopy(nullptr, 0, dictionary.get()));
    EXPECT_TRUE(CFEqual(copy.get(), dictionary.get()));
    CFDictionarySetValue(copy.get(), CFSTR("a"), CFSTR("9"));
    EXPECT_FALSE(CFEqual(copy.get(), dictionary.get()));
}

TEST(Arrays, HoldElementsInOrder) {
    const void* values[] = {CFSTR("b"), CFSTR("a"), CFSTR("b")};
    const auto array = CFRef<CFArrayRef>::adopt(CFArrayCreate(nullptr, values, 3, &kCFTypeArrayCallBacks));
    EXPECT_EQ(CFArrayGetCount(array.get()), 3);
    EXPECT_EQ(CFArrayGetValueAtIndex(array.get(), 1), CFSTR("a"));
    EXPECT_EQ(CFArrayGetValueAtIndex(array.get(), 3), nullptr);
    EXPECT_EQ(CFArrayGetValueAtIndex(array.get(), -1), nullptr);

    const auto same = makeCFArray();
    for (const char* text : {"b", "a", "b"}) {
        EXPECT_FALSE(CFEqual(array.get(), same.get()));
        CFArrayAppendValue(same.get(), makeCFString(text).get());
    }
    EXPECT_TRUE(CFEqual(array.get(), same.get()));

    values[1] = nullptr;
    EXPECT_EQ(CFArrayCreate(nullptr, values, 3, &kCFTypeArrayCallBacks), nullptr);
}

TEST(Data, KeepsItsBytes) {
    std::string source("a\0b", 3);
    const auto data = makeCFData(source);
    source[0] = 'x';
    EXPECT_EQ(bytesOfCF(data.get()), std::string("a\0b", 3));
    EXPECT_TRUE(CFEqual(data.get(), makeCFData({"a\0b", 3}).get()));
    EXPECT_FALSE(CFEqual(data.get(), makeCFData("a").get()));
    EXPECT_EQ(CFDataGetBytePtr(makeCFData("").get()), nullptr);
    EXPECT_EQ(CFDataCreate(nullptr, nullptr, 4), nullptr);
}

TEST(Data, GrowsByZerosThatCanBeChanged) {
    const auto data = CFRef<CFMutableDataRef>::adopt(CFDataCreateMutable(nullptr, 0));
    EXPECT_EQ(CFDataGetMutableBytePtr(data.get()), nullptr);
    CFDataAppendBytes(data.get(), reinterpret_cast<const UInt8*>("a"), 1);
    const CFRef<CFDataRef> copy = makeCFData("a");
    CFDataIncreaseLength(data.get(), 2);
    CFDataGetMutableBytePtr(data.get())[1] = 'b';
    EXPECT_EQ(bytesOfCF(data.get()), std::string("ab\0", 3));

    testing::internal::CaptureStderr();
    auto* const fixed = const_cast<CFMutableDataRef>(copy.get());
    CFDataIncreaseLength(fixed, 1);
    EXPECT_EQ(CFDataGetMutableBytePtr(fixed), nullptr);
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(bytesOfCF(fixed), "a");
}

}  // namespace
