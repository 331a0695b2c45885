#include "host/settings/page_range.h"

#include <gtest/gtest.h>

namespace {

std::string pages(std::string_view text) {
    const PageRange range = readPageRange(text, 12);
    EXPECT_EQ(range.fault, PageRangeFault::none) << text;
    return range.pages + " = " + std::to_string(range.count);
}

PageRangeFault fault(std::string_view text) {
    const PageRange range = readPageRange(text, 12);
    EXPECT_TRUE(range.pages.empty()) << text;
    return range.fault;
}

}  // namespace

TEST(PageRange, IsPutInOrder) {
    EXPECT_EQ(pages("3"), "3 = 1");
    EXPECT_EQ(pages(" 1 - 3 , 7 "), "1-3,7 = 4");
    EXPECT_EQ(pages("7,1-3"), "1-3,7 = 4");
    EXPECT_EQ(pages("4-6,1-3,5-8,8"), "1-8 = 8");
    EXPECT_EQ(pages("1-12,3"), "1-12 = 12");
    EXPECT_EQ(pages("10-"), "10-12 = 3");
    EXPECT_EQ(pages("-3"), "1-3 = 3");
    EXPECT_EQ(pages("1 2,, 5,"), "1-2,5 = 3");
    EXPECT_EQ(pages("\u0661\u2013\u0663\u060C \u0667"), "1-3,7 = 4") << "Arabic digits and comma, en dash";
    EXPECT_EQ(pages("\uFF11\uFF5E\uFF13\u3001\uFF17"), "1-3,7 = 4") << "as Japanese keyboards type it";
}

TEST(PageRange, IsRefusedForAReason) {
    for (const char* text : {"", " ", ",", "-", "a", "1-2-3", "1--2", "1;2", "+1", "1.2", "\u00BD"}) {
        EXPECT_EQ(fault(text), PageRangeFault::syntax) << text;
    }
    for (const char* text : {"0", "13", "1-13", "13-", "99999999999999999999", "1-99999999999999999999"}) {
        EXPECT_EQ(fault(text), PageRangeFault::beyondDocument) << text;
    }
    EXPECT_EQ(fault("7-3"), PageRangeFault::order);
}
