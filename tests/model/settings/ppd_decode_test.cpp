#include "model/settings/ppd_decode.h"

#include <gtest/gtest.h>
#include <string>

namespace {

struct Case {
    std::string text;
    std::string decoded;
};

class PPDDecode : public testing::TestWithParam<Case> {};

TEST_P(PPDDecode, DecodesInPlace) {
    std::string text = GetParam().text;
    text.resize(ppd_decode(text.data()));
    EXPECT_EQ(text, GetParam().decoded);
    EXPECT_EQ(text.c_str()[text.size()], '\0');
}

INSTANTIATE_TEST_SUITE_P(Substrings, PPDDecode,
                         testing::Values(Case{"", ""}, Case{"plain", "plain"}, Case{"Letter<20>Size", "Letter Size"},
                                         Case{"<4a4B>", "JK"}, Case{"<aF>", "\xAF"},
                                         // an odd last digit is dropped
                                         Case{"<4>", ""}, Case{"<414>!", "A!"},
                                         // only the first run of digits counts
                                         Case{"<41 42>", "A"}, Case{"<41zz>b", "Ab"}, Case{"<4 1>b", "b"},
                                         // all the closing brackets go
                                         Case{"<41>>>b", "Ab"}, Case{"a>b", "a>b"},
                                         // an open end
                                         Case{"a<b", "a"}, Case{"a<41", "aA"}, Case{"a<", "a<"},
                                         // no substring
                                         Case{"a<zz", "a<zz"}, Case{"<>", "<>"}, Case{"<<41>", "<A"},
                                         Case{"<41><42>", "AB"}, Case{std::string("<00>a"), std::string("\0a", 2)}));

}  // namespace
