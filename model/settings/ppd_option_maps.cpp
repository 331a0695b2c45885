#include "model/settings/ppd_option_maps.h"

#include "platform/foundation/CFString.h"

#include <cstring>
#include <iterator>

namespace {

// clang-format off
constexpr PPDOptionMap MediaColorMap[] = {
    // keyword      ticket value
    {"Buff",        7},
    {"Blue",        2},
    {"Clear",       6},
    {"Gray",        12},
    {"Green",       4},
    {"Ivory",       11},
    {"Orange",      13},
    {"Other",       14},
    {"Pink",        5},
    {"Red",         9},
    {"White",       1},
    {"Yellow",      3},
    {"Goldenrod",   8},
    {"Unspecified", 22},
    {"Custom1",     15},
    {"Custom2",     16},
    {"Custom3",     17},
    {"Custom4",     18},
    {"Custom5",     19},
    {"Custom6",     20},
    {"Custom7",     21},
    {},
};
static_assert(std::size(MediaColorMap) == 21 + 1);

constexpr PPDOptionMap MediaTypeMap[] = {
    // keyword            ticket value
    {"SystemDefault",     23},
    {"Transparency",      2},
    {"Labels",            9},
    {"Punched",           11},
    {"Recycled",          10},
    {"PrePrinted",        3},
    {"Bond",              13},
    {"Letterhead",        14},
    {"TabStock",          24},
    {"Envelopes",         8},
    {"Other",             22},
    {"Custom1",           15},
    {"Custom2",           16},
    {"Custom3",           17},
    {"Custom4",           18},
    {"Custom5",           19},
    {"Custom6",           20},
    {"Custom7",           21},
    {"Standard",          1},
    {"CardStock",         12},
    {"CardStock2",        26},
    {"HeavyweightLabels", 25},
    {"ExtraHeavyweight",  27},
    {"ExtraHeavyweight2", 28},
    {"LightGlossy",       29},
    {"LightGlossy2",      30},
    {"HeavyGlossy",       31},
    {"HeavyGlossy2",      32},
    {"HeavyTabStock",     33},
    {"Unspecified",       34},
    {"ExtraHeavyPlus",    35},
    {"ExtraHeavyPlus2",   36},
    {"ExtraHeavyGlossy",  37},
    {"ExtraHeavyGlossy2", 38},
    {"ExtraHeavyLabels",  39},
    {},
};
static_assert(std::size(MediaTypeMap) == 35 + 1);

constexpr PPDOptionMap PageSizeMap[] = {
    // keyword             ticket value
    {"Letter",             1},
    {"Legal",              2},
    {"Tabloid",            3},
    {"A4",                 4},
    {"A3",                 5},
    {"FanFoldGermanLegal", 16},
    {"Statement",          17},
    {"A5",                 18},
    {"A6",                 40},
    {"Executive",          21},
    {"B5",                 6},
    {"A4Cover",            7},
    {"9x11",               8},
    {"B4",                 14},
    {"5x7",                41},
    {"B6",                 42},
    {"8x10",               10},
    {"4x6Pcard",           43},
    {"EnvMonarch",         44},
    {"Env10",              45},
    {"EnvDL",              46},
    {"EnvC5",              20},
    {"JISB5",              55},
    {"JISB4",              56},
    {"JISB6",              57},
    {"SpanishFolio",       22},
    {"EnvC4",              58},
    {"4x6",                59},
    {"100x148Postcard",    60},
    {"148x200Postcard",    61},
    {"TabloidExtra",       11},
    {"12x19",              71},
    {"13x19",              66},
    {"SRA3",               15},
    {"220x330",            24},
    {"815",                23},
    {"EnvB5",              73},
    {"EnvC6",              74},
    {},
};
static_assert(std::size(PageSizeMap) == 38 + 1);

constexpr PPDOptionMap PPDDuplexMap[] = {
    // keyword         ticket value
    {"None",           1},
    {"DuplexNoTumble", 2},
    {"DuplexTumble",   3},
    {},
};
static_assert(std::size(PPDDuplexMap) == 3 + 1);

constexpr PPDOptionMap BannerPageMap[] = {
    // keywordticket value
    {"True",  1},
    {"False", 0},
    {},
};
static_assert(std::size(BannerPageMap) == 2 + 1);

constexpr PPDOptionMap RequestOffsetMap[] = {
    // keyword   ticket value
    {"EndOfSet", 1},
    {"None",     0},
    {},
};
static_assert(std::size(RequestOffsetMap) == 2 + 1);

constexpr PPDOptionMap OutputBinMap[] = {
    // keyword  ticket value
    {"Auto",    1},
    {"Side",    3},
    {"Top",     2},
    {"Stacker", 4},
    {"Upper",   5},
    {"Lower",   6},
    {"Booklet", 7},
    {},
};
static_assert(std::size(OutputBinMap) == 7 + 1);

constexpr PPDOptionMap TRFoldOptionsMap[] = {
    // keyword               ticket value
    {"None",                 1},
    {"HolePunch",            2},
    {"2HolePunch",           3},
    {"3HolePunch",           4},
    {"4HolePunch",           5},
    {"CTriFoldOpt",          9},
    {"ZTriFoldOpt",          10},
    {"BookletFoldOpt",       7},
    {"BookletFoldStapleOpt", 8},
    {},
};
static_assert(std::size(TRFoldOptionsMap) == 9 + 1);

constexpr PPDOptionMap JCLPrintQualityMap[] = {
    // keyword     ticket value
    {"TonerSaver", 1},
    {"Standard",   2},
    {"Enhanced",   3},
    {},
};
static_assert(std::size(JCLPrintQualityMap) == 3 + 1);

constexpr PPDOptionMap TRRGBColorSpaceMap[] = {
    // keyword   ticket value
    {"TavroRGB", 1},
    {"sRGB",     2},
    {"AppleRGB", 3},
    {},
};
static_assert(std::size(TRRGBColorSpaceMap) == 3 + 1);

constexpr PPDOptionMap TRCMYKColorSpaceMap[] = {
    // keyword     ticket value
    {"SNAP",       1},
    {"SWOP",       2},
    {"EuroScale",  3},
    {"Commercial", 4},
    {"JapanColor", 5},
    {},
};
static_assert(std::size(TRCMYKColorSpaceMap) == 5 + 1);

constexpr PPDOptionMap JCLColorCorrectionMap[] = {
    // keyword     ticket value
    {"Auto",       1},
    {"sRGB",       2},
    {"BlackWhite", 3},
    {"PressMatch", 4},
    {"None",       5},
    {},
};
static_assert(std::size(JCLColorCorrectionMap) == 5 + 1);

constexpr PPDOptionMap JCLTrueGrayGraphicsMap[] = {
    // keywordticket value
    {"False", 1},
    {"True",  2},
    {},
};
static_assert(std::size(JCLTrueGrayGraphicsMap) == 2 + 1);

constexpr PPDOptionMap JCLTrueGrayImagesMap[] = {
    // keywordticket value
    {"False", 1},
    {"True",  2},
    {},
};
static_assert(std::size(JCLTrueGrayImagesMap) == 2 + 1);

struct MainKeywordRow {
    const char* mainKeyword;  // null ends the table
    const PPDOptionMap* map;
};

constexpr MainKeywordRow MainKeywordMap[] = {
    // main keyword          option map
    {"MediaColor",           MediaColorMap},
    {"MediaType",            MediaTypeMap},
    {"PageSize",             PageSizeMap},
    {"Duplex",               PPDDuplexMap},
    {"JCLBanner",            BannerPageMap},
    {"Jog",                  RequestOffsetMap},
    {"OutputBin",            OutputBinMap},
    {"TRFoldOptions",        TRFoldOptionsMap},
    {"JCLPrintQuality",      JCLPrintQualityMap},
    {"JCLRGBColorSpace",     TRRGBColorSpaceMap},
    {"JCLCMYKColorSpace",    TRCMYKColorSpaceMap},
    {"JCLColorCorrection",   JCLColorCorrectionMap},
    {"JCLTrueGrayGraphics",  JCLTrueGrayGraphicsMap},
    {"JCLTrueGrayImages",    JCLTrueGrayImagesMap},
    {},
};
static_assert(std::size(MainKeywordMap) == 14 + 1);
// clang-format on

/// A PPD keyword as the tables have it. The longest that a PPD can have is far shorter than the buffer.
class KeywordText {
public:
    explicit KeywordText(CFStringRef keyword) {
        valid_ = keyword != nullptr && CFStringGetCString(keyword, text_, sizeof text_, kCFStringEncodingASCII);
    }
    bool operator==(const char* other) const { return valid_ && std::strcmp(text_, other) == 0; }

private:
    char text_[256];
    bool valid_;
};

}  // namespace

const PPDOptionMap* GetPPDOptionMapForMainKeyword(CFStringRef mainKeyword) {
    const KeywordText wanted(mainKeyword);
    for (const MainKeywordRow* row = MainKeywordMap; row->mainKeyword != nullptr; ++row) {
        if (wanted == row->mainKeyword) {
            return row->map;
        }
    }
    return nullptr;
}

CFStringRef GetPPDOptionKeywordForTicketValue(const PPDOptionMap* map, SInt32 value) {
    for (const PPDOptionMap* row = map; row != nullptr && row->keyword != nullptr; ++row) {
        if (row->ticketValue == value) {
            return CFStringMakeConstant(row->keyword);
        }
    }
    return nullptr;
}

SInt32 GetTicketValueForPPDOptionKeyword(const PPDOptionMap* map, CFStringRef keyword) {
    const KeywordText wanted(keyword);
    for (const PPDOptionMap* row = map; row != nullptr && row->keyword != nullptr; ++row) {
        if (wanted == row->keyword) {
            return row->ticketValue;
        }
    }
    return kNoTicketValue;
}
