// Property lists: the round trip, what is refused and where, and the limits.

#include "platform/foundation/CFPropertyList.h"
#include "tests/support/cf_values.h"

#include <gtest/gtest.h>

#include <QLocale>

#include <clocale>
#include <limits>

namespace {

const std::string kHead =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n";

struct Result {
    CFRef<CFTypeRef> value;
    std::string error;
};

Result readXML(std::string_view xml, CFOptionFlags mutability = kCFPropertyListImmutable) {
    CFStringRef error = nullptr;
    auto value =
        CFRef<CFTypeRef>::adopt(CFPropertyListCreateFromXMLData(nullptr, makeCFData(xml).get(), mutability, &error));
    const auto owned = CFRef<CFStringRef>::adopt(error);
    EXPECT_NE(bool(value), bool(owned)) << xml.substr(0, 500);
    return {std::move(value), owned ? textOfCF(owned.get()) : std::string()};
}

/// A value between the tags of a document that has a DOCTYPE.
Result readValue(const std::string& xml) {
    return readXML(kHead + "<plist version=\"1.0\">" + xml + "</plist>");
}

std::string writeXML(CFTypeRef value) {
    const auto data = CFRef<CFDataRef>::adopt(CFPropertyListCreateXMLData(nullptr, value));
    return data ? bytesOfCF(data.get()) : "(null)";
}

std::string nested(int depth) {
    std::string xml;
    for (int i = 0; i < depth; ++i) {
        xml += i % 2 ? "<dict><key>k</key>" : "<array>";
    }
    for (int i = depth; i-- > 0;) {
        xml += i % 2 ? "</dict>" : "</array>";
    }
    return depth % 2 ? xml : "<array>" + xml + "</array>";
}

CFRef<CFMutableDictionaryRef> sampleSettings() {
    auto settings = makeCFDictionary();
    const auto set = [&](const char* key, CFTypeRef value) {
        CFDictionarySetValue(settings.get(), makeCFString(key).get(), value);
    };
    set("com.tavro.print.JobNotes", makeCFString(" <tab>\t&amp; \"q\" ]]> \r\n Größe 😀 ").get());
    set("empty", CFSTR(""));
    set("unset", makeCFNumber(std::int64_t{std::numeric_limits<SInt32>::min()}).get());
    set("lowest", makeCFNumber(std::numeric_limits<std::int64_t>::min()).get());
    set("tenth", makeCFNumber(0.1).get());
    set("tiny", makeCFNumber(std::numeric_limits<double>::denorm_min()).get());
    set("huge", makeCFNumber(-std::numeric_limits<double>::max()).get());
    set("whole", makeCFNumber(3.0).get());
    set("on & off", kCFBooleanTrue);
    set("data", makeCFData({"\0\x01\xFF", 3}).get());
    const auto list = makeCFArray();
    CFArrayAppendValue(list.get(), kCFBooleanFalse);
    CFArrayAppendValue(list.get(), makeCFDictionary().get());
    CFArrayAppendValue(list.get(), makeCFArray().get());
    CFArrayAppendValue(list.get(), makeCFData("").get());
    set("list", list.get());
    return settings;
}

TEST(PropertyList, ComesBackAsItWasWritten) {
    const auto settings = sampleSettings();
    const std::string xml = writeXML(settings.get());
    EXPECT_EQ(xml.substr(0, kHead.size()), kHead);
    const Result read = readXML(xml);
    EXPECT_EQ(read.error, "");
    EXPECT_TRUE(CFEqual(read.value.get(), settings.get())) << xml;
    EXPECT_EQ(writeXML(read.value.get()), xml) << "another order or form";
}

TEST(PropertyList, IsTheSameInEveryLocale) {
    const std::string plain = writeXML(sampleSettings().get());
    EXPECT_NE(plain.find("<real>0.1</real>"), std::string::npos) << plain;
    QLocale::setDefault(QLocale(QLocale::German));
    // Not every machine has the C library's German; there Qt's alone is tried.
    setlocale(LC_ALL, "de_DE.UTF-8");
    const std::string german = writeXML(sampleSettings().get());
    const Result read = readXML(plain);
    const Result grouped = readValue("<real>1.234,5</real>");
    setlocale(LC_ALL, "C");
    QLocale::setDefault(QLocale::c());
    EXPECT_EQ(german, plain);
    EXPECT_TRUE(CFEqual(read.value.get(), sampleSettings().get()));
    EXPECT_FALSE(grouped.value);
}

TEST(PropertyList, NumbersAreReadStrictly) {
    const struct {
        const char* xml;
        CFRef<CFNumberRef> value;
    } good[] = {
        {"<integer>-9223372036854775808</integer>", makeCFNumber(std::numeric_limits<std::int64_t>::min())},
        {"<integer> +7\n</integer>", makeCFNumber(std::int64_t{7})},
        {"<integer>0x1f</integer>", makeCFNumber(std::int64_t{31})},
        {"<integer>-0X10</integer>", makeCFNumber(std::int64_t{-16})},
        {"<real>1e-3</real>", makeCFNumber(0.001)},
        {"<real> +.5 </real>", makeCFNumber(0.5)},
    };
    for (const auto& row : good) {
        EXPECT_TRUE(CFEqual(readValue(row.xml).value.get(), row.value.get())) << row.xml;
    }
    for (const char* text : {"", "9223372036854775808", "-9223372036854775809", "99999999999999999999", "1.0", "1e3",
                             "- 1", "--1", "+-1", "0x", "0xG", "-", "1,000", "٣"}) {
        EXPECT_FALSE(readValue("<integer>" + std::string(text) + "</integer>").value) << text;
    }
    for (const char* text :
         {"", "1,5", "1 000", "1e999", "1e-999", "nan", "-inf", "infinity", "0x10", "+-1", "1.5mm"}) {
        EXPECT_FALSE(readValue("<real>" + std::string(text) + "</real>").value) << text;
    }
}

TEST(PropertyList, FaultsNameTheirPlace) {
    const struct {
        std::string xml;
        std::string error;
    } rows[] = {
        {"", "line 1, column 1: "},
        {"bplist00\x01", "line 1, column 1: "},
        {kHead + "<dict/>", "line 3, column 7: not a property list: <plist> is missing"},
        {kHead + "<plist>\n</plist>", "line 4, column 8: the property list is empty"},
        {kHead + "<plist><true/><true/></plist>", "line 3, column 21: a second value in the property list"},
        {kHead + "<plist><true/></plist>x", "line 3, column 23: "},
        {kHead + "<plist>\n  <strin>a</strin></plist>", "line 4, column 9: unknown element <strin>"},
        {kHead + "<plist><date>2026-01-01T00:00:00Z</date></plist>", "line 3, column 13: dates are not supported"},
        {kHead + "<plist><string>a<b/></string></plist>", "line 3, column 20: <b> inside <string>"},
        {kHead + "<plist><string>&copy;</string></plist>", "line 3, column 21: unknown entity &copy;"},
        {kHead + "<plist>&copy;<true/></plist>", "line 3, column 13: unknown entity &copy;"},
        {kHead + "<plist><array>x</array></plist>", "line 3, column 16: text between elements"},
        {kHead + "<plist><true>x</true></plist>", "line 3, column 21: text inside a boolean"},
        {kHead + "<plist><data>A$==</data></plist>", "line 3, column 24: data that is no base64"},
        {kHead + "<plist><integer>1\n2</integer></plist>", "line 4, column 11: \"1 2\" is no integer"},
        {kHead + "<plist><dict><true/></dict></plist>", "line 3, column 20: <true> where a <key> belongs"},
        {kHead + "<plist><dict>\n<key>a</key>\n</dict></plist>", "line 5, column 7: the key \"a\" has no value"},
        {kHead + "<plist><dict><key>a</key><true/><key>a</key><true/></dict></plist>",
         "line 3, column 44: the key \"a\" stands there twice"},
        {kHead + "<plist><array><true/></plist>", "line 3, column "},
        {kHead + "<plist><string>\x01</string></plist>", "line 3, column "},
        {kHead + "<plist><string>\xFF</string></plist>", "line 1, column "},
        {"<?xml version=\"1.0\"?>\n<!DOCTYPE plist [<!ENTITY a \"aaaa\"><!ENTITY b \"&a;&a;\">]>\n"
         "<plist><string>&b;</string></plist>",
         "line 2, column 57: entities must not be declared"},
    };
    for (const auto& row : rows) {
        const Result result = readXML(row.xml);
        EXPECT_FALSE(result.value) << row.xml;
        EXPECT_EQ(result.error.substr(0, row.error.size()), row.error) << row.xml;
        EXPECT_EQ(result.error.find('\n'), row.error.find('\n')) << result.error;
    }
}

TEST(PropertyList, EveryBeginningOfAFileIsRefusedWithoutHarm) {
    const std::string xml = writeXML(sampleSettings().get());
    for (std::size_t length = 0; length + 2 < xml.size(); ++length) {
        EXPECT_FALSE(readXML(std::string_view(xml).substr(0, length)).value) << length;
    }
}

TEST(PropertyList, IsReadTheSameByEveryRoad) {
    const auto of = [](const char* element, std::initializer_list<std::string> texts) {
        std::vector<std::string> values;
        for (const std::string& text : texts) {
            values.push_back(std::string("<") + element + ">" + text + "</" + element + ">");
        }
        return values;
    };
    const std::vector<std::string> rows[] = {
        of("data", {"", "YWJj", "YWI=", "YQ==", " Y\n\tQ = =\r\n", std::string(100'000, '/') + "+A==", "YQ", "YQ=", "Y",
                    "=", "====", "YQ==YQ==", "YWJj-_==", "YQ==\v", "Y\xC3\xA9==", "<!-- YWJj -->YWJj",
                    "YWJj<![CDATA[YWJj]]>", "Y&#87;Jj", "YWJj<b/>"}),
        of("string", {"",
                      " a\n\tb ",
                      "a\rb",
                      "a\r\nb",
                      "\xC3\xBC\xF0\x9F\x98\x80\xE6\xBC\xA2",
                      "\xEF\xBB\xBFmark",
                      "\xEF\xBF\xBF",
                      "\xEF\xBC\xA1",
                      "\xC3",
                      "\xED\xA0\x80",
                      "\xC0\x80",
                      "\x01",
                      "\x7F",
                      std::string("a\0b", 3),
                      "a&amp;&lt;&gt;&quot;&apos;b",
                      "&amp",
                      "&amp;lt;",
                      "&#13;",
                      "&x;",
                      "&",
                      "a>b",
                      "]]>",
                      "<b/>",
                      "<!-- c -->",
                      "<![CDATA[&]]>"}),
        of("integer", {"0", "-0", "007", "-1", "9223372036854775807", "-9223372036854775808", "9223372036854775808", "",
                       " 5", "5 ", "+5", "--5", "-+5", "0x1F", "5.0", "1e3", "5&#53;", "\xD9\xA5"}),
        of("real", {"0", "-0.5", ".5", "5.", "1e-320", "1e308", "1e309", "-1E5", "+1", "+-1", " 1", "", "nan", "-inf",
                    "0x1p3", "1,5", "1.5f"}),
        of("dict", {"", " \n", "<key>a</key><true/>", "<key>a</key><key>b</key>", "<key>a</key>", "<true/>",
                    "<key>a</key><true/><key>a</key><true/>", "<key>a&amp;b</key><dict/>", "<key></key><array/>",
                    "<key>\xEF\xBB\xBF</key><true/>", "x<key>a</key><true/>", "<key>a<true/></key>"}),
        of("array", {"<true></true><false/>", "<true>x</true>", "<string/><data/>", "<true", "<date>1</date>", "<x/>",
                     "<string a=\"b\">c</string>", "<true/></array><array>", "<array/></dict>", "\r\n<true/>", "a"}),
    };
    for (const auto& row : rows) {
        for (const std::string& value : row) {
            const std::string document = kHead + "<plist version=\"1.0\">\n" + value + "\n</plist>\n";
            const Result plain = readXML(document);
            const Result other = readXML(document + "<!-- not plain -->");
            ASSERT_EQ(bool(plain.value), bool(other.value)) << value.substr(0, 80);
            EXPECT_TRUE(!plain.value || CFEqual(plain.value.get(), other.value.get())) << value.substr(0, 80);
            EXPECT_EQ(plain.error, other.error);
            EXPECT_TRUE(!plain.value || writeXML(plain.value.get()) == writeXML(other.value.get()));
        }
    }
    EXPECT_FALSE(readXML(kHead + "<plist version=\"1.0\"><true/></plist><true/>").value);
    EXPECT_FALSE(readXML(kHead + "<plist version=\"1.0\"></plist>").value);
    // In an encoding that turns letters into others the base64 is what the letters say, not the bytes.
    const Result rot = readXML("<?xml version=\"1.0\" encoding=\"UTF-7\"?><plist><data>+AFkAUQ-==</data></plist>");
    EXPECT_EQ(bytesOfCF(static_cast<CFDataRef>(rot.value.get())), "a") << rot.error;
    EXPECT_FALSE(readXML(kHead + "<plist><data>YQ==</data></plist><!-- <data> --><data>YQ==</data>").value);
}

TEST(PropertyList, DepthIsBounded) {
    EXPECT_TRUE(readValue(nested(kPropertyListMaximumDepth - 1)).value);
    const Result deep = readValue(nested(kPropertyListMaximumDepth + 1));
    EXPECT_NE(deep.error.find("more than 64 levels deep"), std::string::npos) << deep.error;
    EXPECT_FALSE(readValue(nested(100'001)).value);

    // What is written can be read, and a container that holds itself ends.
    auto value = CFRef<CFMutableArrayRef>(makeCFArray());
    for (int depth = 1; depth < kPropertyListMaximumDepth; ++depth) {
        auto outer = makeCFArray();
        CFArrayAppendValue(outer.get(), value.get());
        value = std::move(outer);
    }
    EXPECT_TRUE(CFEqual(readXML(writeXML(value.get())).value.get(), value.get()));
    const auto tooDeep = makeCFArray();
    CFArrayAppendValue(tooDeep.get(), value.get());
    EXPECT_EQ(writeXML(tooDeep.get()), "(null)");
    EXPECT_EQ(CFPropertyListCreateDeepCopy(nullptr, tooDeep.get(), kCFPropertyListImmutable), nullptr);

    const auto circle = makeCFDictionary();
    CFDictionarySetValue(circle.get(), CFSTR("me"), circle.get());
    EXPECT_EQ(writeXML(circle.get()), "(null)");
    CFDictionaryRemoveValue(circle.get(), CFSTR("me"));
}

TEST(PropertyList, WhatXMLCannotHoldIsNotWritten) {
    const auto pointers = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, nullptr));
    CFArrayAppendValue(pointers.get(), &pointers);
    const auto numbered = makeCFDictionary();
    CFDictionarySetValue(numbered.get(), makeCFNumber(1.0).get(), CFSTR("x"));
    const auto controlKey = makeCFDictionary();
    CFDictionarySetValue(controlKey.get(), CFSTR("a\x1b"), CFSTR("x"));
    const auto url = makeCFURL("/tmp");
    const UniChar half[] = {u'a', 0xDC00};
    const auto broken = CFRef<CFStringRef>::adopt(CFStringCreateWithCharacters(nullptr, half, 2));
    for (const CFTypeRef value :
         {CFTypeRef(pointers.get()), CFTypeRef(numbered.get()), CFTypeRef(controlKey.get()), CFTypeRef(url.get()),
          CFTypeRef(broken.get()), CFTypeRef(CFSTR("\x01")), CFTypeRef(CFSTR("\uFFFE")), CFTypeRef()}) {
        const auto holder = makeCFArray();
        CFArrayAppendValue(holder.get(), value);
        EXPECT_EQ(writeXML(value ? holder.get() : nullptr), "(null)");
    }
    EXPECT_EQ(writeXML(makeCFNumber(std::numeric_limits<double>::quiet_NaN()).get()), "(null)");
}

TEST(PropertyList, CopiesShareNoContainer) {
    const auto settings = sampleSettings();
    const auto copy = CFRef<CFMutableDictionaryRef>::adopt(static_cast<CFMutableDictionaryRef>(
        const_cast<void*>(CFPropertyListCreateDeepCopy(nullptr, settings.get(), kCFPropertyListMutableContainers))));
    EXPECT_TRUE(CFEqual(copy.get(), settings.get()));
    const auto* inner = static_cast<CFArrayRef>(CFDictionaryGetValue(copy.get(), CFSTR("list")));
    CFArrayAppendValue(const_cast<CFMutableArrayRef>(inner), CFSTR("more"));
    EXPECT_EQ(CFArrayGetCount(inner), 5);
    EXPECT_EQ(CFArrayGetCount(static_cast<CFArrayRef>(CFDictionaryGetValue(settings.get(), CFSTR("list")))), 4);

    const auto url = makeCFURL("/tmp");
    CFDictionarySetValue(settings.get(), CFSTR("url"), url.get());
    EXPECT_EQ(CFPropertyListCreateDeepCopy(nullptr, settings.get(), kCFPropertyListImmutable), nullptr);
    EXPECT_EQ(CFPropertyListCreateDeepCopy(nullptr, nullptr, kCFPropertyListImmutable), nullptr);
}

TEST(PropertyList, MutabilityIsAsAsked) {
    for (const auto mutability : {kCFPropertyListImmutable, kCFPropertyListMutableContainers}) {
        const Result read = readXML("<plist><dict><key>a</key><array/></dict></plist>", mutability);
        const auto* dictionary = static_cast<CFDictionaryRef>(read.value.get());
        const auto* inner = static_cast<CFArrayRef>(CFDictionaryGetValue(dictionary, CFSTR("a")));
        testing::internal::CaptureStderr();
        CFArrayAppendValue(const_cast<CFMutableArrayRef>(inner), CFSTR("x"));
        CFDictionarySetValue(const_cast<CFMutableDictionaryRef>(dictionary), CFSTR("b"), CFSTR("x"));
        const std::string complaints = testing::internal::GetCapturedStderr();
        const bool changed = mutability != kCFPropertyListImmutable;
        EXPECT_EQ(complaints.empty(), changed);
        EXPECT_EQ(CFArrayGetCount(inner), changed ? 1 : 0);
        EXPECT_EQ(CFDictionaryGetCount(dictionary), changed ? 2 : 1);
    }
}

TEST(PropertyList, MutableLeavesChangeWhereTheyAre) {
    const Result read = readXML("<plist><array><string>Draft</string><data>YQ==</data></array></plist>",
                                kCFPropertyListMutableContainersAndLeaves);
    const auto* list = static_cast<CFArrayRef>(read.value.get());
    const auto name = [](CFArrayRef array) { return static_cast<CFStringRef>(CFArrayGetValueAtIndex(array, 0)); };
    const auto data = [](CFArrayRef array) { return static_cast<CFDataRef>(CFArrayGetValueAtIndex(array, 1)); };
    // A ticket's copy, for one: it must not change when the list does.
    const auto copy = CFRef<CFTypeRef>::adopt(CFPropertyListCreateDeepCopy(nullptr, list, kCFPropertyListImmutable));
    const auto* copied = static_cast<CFArrayRef>(copy.get());

    CFStringReplaceAll(const_cast<CFMutableStringRef>(name(list)), CFSTR("Copy"));
    CFDataAppendBytes(const_cast<CFMutableDataRef>(data(list)), reinterpret_cast<const UInt8*>("b"), 1);
    EXPECT_EQ(textOfCF(name(list)), "Copy");
    EXPECT_EQ(bytesOfCF(data(list)), "ab");

    testing::internal::CaptureStderr();
    CFStringReplaceAll(const_cast<CFMutableStringRef>(name(copied)), CFSTR("x"));
    CFStringReplaceAll(const_cast<CFMutableStringRef>(CFSTR("constant")), CFSTR("x"));
    CFDataAppendBytes(const_cast<CFMutableDataRef>(data(copied)), reinterpret_cast<const UInt8*>("b"), 1);
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(textOfCF(name(copied)), "Draft");
    EXPECT_EQ(textOfCF(CFSTR("constant")), "constant");
    EXPECT_EQ(bytesOfCF(data(copied)), "a");
}

}  // namespace
