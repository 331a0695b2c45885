// Entities in texts: what is replaced, and what stays.

#include "watermark/records/xml_entities.h"

#include "tests/support/cf_values.h"

#include <gtest/gtest.h>

namespace {

std::string unescaped(const std::string& text, CFDictionaryRef entities = nullptr) {
    return textOfCF(
        CFRef<CFStringRef>::adopt(XMLCreateStringByUnescapingEntities(nullptr, makeCFString(text).get(), entities))
            .get());
}

TEST(XmlEntities, AreReplacedOnce) {
    const struct {
        std::string text, result;
    } rows[] = {
        {"", ""},
        {"no entity; at all", "no entity; at all"},
        {"&lt;a b=&quot;c&quot;&gt; &amp; &apos;d&apos;", "<a b=\"c\"> & 'd'"},
        {"&amp;lt;", "&lt;"},
        {"&#65;&#x41;&#x4a;&#x4A;", "AAJJ"},
        {"&#0000065;", "A"},
        {"&#x1F600;&#128512;&#xFFFD;", "😀😀\uFFFD"},
        {"&#9;", "\t"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(unescaped(row.text), row.result) << row.text;
    }
    EXPECT_EQ(XMLCreateStringByUnescapingEntities(nullptr, nullptr, nullptr), nullptr);

    // Around the places where a reader that looks 64 characters ahead begins anew.
    for (std::size_t before = 55; before < 70; ++before) {
        EXPECT_EQ(unescaped(std::string(before, 'x') + "&amp;&#65;y"), std::string(before, 'x') + "&Ay");
    }
}

TEST(XmlEntities, WhatIsNoneStaysAndHidesNoOther) {
    for (const char* text : {"&",
                             "&&",
                             "a & b; c",
                             "&amp",
                             "&;",
                             "&unknown;",
                             "&AMP;",
                             "& amp;",
                             "&#;",
                             "&#x;",
                             "&#X41;",
                             "&#x4G;",
                             "&#6A;",
                             "&#-1;",
                             "&# 65;",
                             "&#0;",
                             "&#xD800;",
                             "&#57343;",
                             "&#x110000;",
                             "&#99999999999999999999999;",
                             "&#x100000041;",
                             "&#\u0661;"}) {
        EXPECT_EQ(unescaped(text), text);
        EXPECT_EQ(unescaped("&lt;" + std::string(text) + "&gt;"), "<" + std::string(text) + ">") << text;
    }
    EXPECT_EQ(unescaped("Smith & Sons &amp; Co"), "Smith & Sons & Co");
    EXPECT_EQ(unescaped("&&amp;"), "&&");

    // Linear: a quadratic scan of this would outlast the test's time limit.
    const std::string many(2'000'000, '&');
    EXPECT_EQ(unescaped(many + ";"), many + ";");
}

TEST(XmlEntities, OfTheCallerGoBeforeTheOwn) {
    const auto entities = makeCFDictionary();
    const auto set = [&](const char* name, CFTypeRef value) {
        CFDictionarySetValue(entities.get(), makeCFString(name).get(), value);
    };
    set("copy", CFSTR("(c) &amp;"));
    set("lt", CFSTR("less"));
    set("größe", CFSTR(""));
    set("number", makeCFNumber(1.0).get());
    set("#name", CFSTR("!"));
    EXPECT_EQ(unescaped("&copy;&lt;&gt;[&größe;]&number;&#name;", entities.get()), "(c) &amp;less>[]&number;!");
    EXPECT_EQ(CFDictionaryGetCount(entities.get()), 5);
}

}  // namespace
