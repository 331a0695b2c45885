#include "model/records/page_range.h"

#include "tests/platform/printing/printing_fixture.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

struct Parsed {
    OSStatus status;
    std::vector<PageRange> ranges;

    bool operator==(const Parsed&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Parsed& parsed) {
    out << parsed.status << ':';
    for (const PageRange& range : parsed.ranges) {
        out << " {" << range.first << ',' << range.count << '}';
    }
    return out;
}

Parsed parse(const std::string& list, bool asRanges) {
    Parsed parsed{};
    parsed.status = CreatePageRangesBySeparatingString(cf(list).get(), asRanges, &parsed.ranges);
    return parsed;
}

Parsed ranges(const std::string& list) {
    return parse(list, true);
}

TEST(PageRange, ReadsWhatPeopleType) {
    EXPECT_EQ(ranges("1, 3-5"), (Parsed{noErr, {{1, 1}, {3, 3}}}));
    EXPECT_EQ(parse("1, 3-5", false), (Parsed{noErr, {{1, 1}, {3, 1}, {4, 1}, {5, 1}}}));
    EXPECT_EQ(ranges("-5"), (Parsed{noErr, {{1, 5}}}));
    EXPECT_EQ(ranges("7-"), (Parsed{noErr, {{7, 9999993}}}));
    EXPECT_EQ(ranges("9999999"), (Parsed{noErr, {{9999999, 1}}}));
    EXPECT_EQ(ranges("0"), (Parsed{noErr, {{0, 1}}})) << "for the caller to refuse";
    EXPECT_EQ(ranges(",, 3 ,"), (Parsed{noErr, {{3, 1}}}));
    EXPECT_EQ(ranges("5,5,1-9"), (Parsed{noErr, {{5, 1}, {5, 1}, {1, 9}}})) << "as typed";
}

TEST(PageRange, ReadsWhatPeopleMistype) {
    EXPECT_EQ(ranges("a7b"), (Parsed{noErr, {{7, 1}}}));
    EXPECT_EQ(ranges("5 6"), (Parsed{noErr, {{5, 1}, {6, 1}}}));
    EXPECT_EQ(ranges("1.5"), (Parsed{noErr, {{1, 1}, {5, 1}}}));
    EXPECT_EQ(ranges("3 -5"), (Parsed{noErr, {{3, 3}}}));
    EXPECT_EQ(ranges("1-2-3"), (Parsed{noErr, {{1, 2}, {1, 3}}}));
    EXPECT_EQ(ranges("1-2 3"), (Parsed{noErr, {{1, 2}, {3, 1}}}));
    EXPECT_EQ(ranges("0000000000000000000012"), (Parsed{noErr, {{12, 1}}}));
    // A digit of another script continues a number, counts for nothing and starts none.
    EXPECT_EQ(ranges("1\u0663"
                     "2 \u0664"),
              (Parsed{noErr, {{1, 1}}}));
    EXPECT_EQ(ranges("4\U0001D7D0"
                     "5"),
              (Parsed{noErr, {{4, 1}, {5, 1}}}))
        << "beyond 16 bits it is no digit";
}

TEST(PageRange, RefusesTheRest) {
    for (const char* list : {"", ",,,", "-", "1--3", "--3", "a;b", "5-, -", "-,3"}) {
        EXPECT_EQ(ranges(list), (Parsed{kPageRangeErrSyntax, {}})) << list;
    }
    for (const char* list : {"10000000", "12345678-", "1,99999999999", "-4294967297", "18446744073709551617"}) {
        EXPECT_EQ(ranges(list), (Parsed{kPageRangeErrTooLarge, {}})) << list;
    }
    testing::internal::CaptureStderr();
    EXPECT_EQ(ranges("2,5-3,9"), (Parsed{kPageRangeErrOrder, {}}));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "5-3\n");
    testing::internal::CaptureStderr();
    EXPECT_EQ(ranges("-0"), (Parsed{kPageRangeErrOrder, {}}));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "1-0\n");
}

TEST(PageRange, LeavesTheResultAloneOnFailure) {
    std::vector<PageRange> kept{{8, 1}};
    const CFRef<CFStringRef> bad = cf("1,2-3,-");
    EXPECT_EQ(CreatePageRangesBySeparatingString(bad.get(), true, &kept), kPageRangeErrSyntax);
    EXPECT_EQ(CreatePageRangesBySeparatingString(nullptr, true, &kept), paramErr);
    EXPECT_EQ(CreatePageRangesBySeparatingString(bad.get(), true, nullptr), paramErr);
    EXPECT_EQ(kept, (std::vector<PageRange>{{8, 1}}));
    EXPECT_EQ(CreatePageRangesBySeparatingString(cf("4").get(), true, &kept), noErr);
    EXPECT_EQ(kept, (std::vector<PageRange>{{4, 1}}));
}

TEST(PageRange, ReadsLongTexts) {
    std::string list;
    std::vector<PageRange> expected;
    for (SInt32 page = 1; page <= 2000; ++page) {
        list += std::to_string(page) + ",";
        expected.push_back({page, 1});
        // Every length around that of the buffer.
        if (list.size() < 900 || (list.size() > 1100 && page < 2000)) {
            continue;
        }
        EXPECT_EQ(ranges(list), (Parsed{noErr, expected})) << list.size();
    }
}

}  // namespace
