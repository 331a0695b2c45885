#include "host/settings/paper_options.h"

#include <algorithm>
#include <span>
#include <string_view>

namespace {

struct PaperRow {
    std::string_view option;  // of the main keyword
    SInt32 number;
};

// clang-format off
constexpr PaperRow kSizes[] = {
    // option              number
    {"Letter",             1},
    {"Legal",              2},
    {"Tabloid",            3},
    {"A4",                 4},
    {"A3",                 5},
    {"B5",                 6},
    {"A4Cover",            7},
    {"9x11",               8},
    {"8x10",               10},
    {"TabloidExtra",       11},
    {"B4",                 14},
    {"SRA3",               15},
    {"FanFoldGermanLegal", 16},
    {"Statement",          17},
    {"A5",                 18},
    {"EnvC5",              20},
    {"Executive",          21},
    {"SpanishFolio",       22},
    {"815",                23},
    {"220x330",            24},
    {"A6",                 40},
    {"5x7",                41},
    {"B6",                 42},
    {"4x6Pcard",           43},
    {"EnvMonarch",         44},
    {"Env10",              45},
    {"EnvDL",              46},
    {"JISB5",              55},
    {"JISB4",              56},
    {"JISB6",              57},
    {"EnvC4",              58},
    {"4x6",                59},
    {"100x148Postcard",    60},
    {"148x200Postcard",    61},
    {"13x19",              66},
    {"12x19",              71},
    {"EnvB5",              73},
    {"EnvC6",              74},
};
static_assert(std::size(kSizes) == 38);

constexpr PaperRow kColors[] = {
    // option       number
    {"White",       1},
    {"Blue",        2},
    {"Yellow",      3},
    {"Green",       4},
    {"Pink",        5},
    {"Clear",       6},
    {"Buff",        7},
    {"Goldenrod",   8},
    {"Red",         9},
    {"Ivory",       11},
    {"Gray",        12},
    {"Orange",      13},
    {"Other",       14},
    {"Custom1",     15},
    {"Custom2",     16},
    {"Custom3",     17},
    {"Custom4",     18},
    {"Custom5",     19},
    {"Custom6",     20},
    {"Custom7",     21},
    {"Unspecified", 22},
};
static_assert(std::size(kColors) == 21);

constexpr PaperRow kTypes[] = {
    // option             number
    {"Standard",          1},
    {"Transparency",      2},
    {"PrePrinted",        3},
    {"Envelopes",         8},
    {"Labels",            9},
    {"Recycled",          10},
    {"Punched",           11},
    {"CardStock",         12},
    {"Bond",              13},
    {"Letterhead",        14},
    {"Custom1",           15},
    {"Custom2",           16},
    {"Custom3",           17},
    {"Custom4",           18},
    {"Custom5",           19},
    {"Custom6",           20},
    {"Custom7",           21},
    {"Other",             22},
    {"SystemDefault",     23},
    {"TabStock",          24},
    {"HeavyweightLabels", 25},
    {"CardStock2",        26},
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
};
static_assert(std::size(kTypes) == 35);
// clang-format on

std::string optionOf(std::span<const PaperRow> rows, SInt32 number) {
    const auto row = std::ranges::find(rows, number, &PaperRow::number);
    return row == rows.end() ? std::string() : std::string(row->option);
}

}  // namespace

std::string paperSizeOption(SInt32 size) {
    return optionOf(kSizes, size);
}

std::string paperColorOption(SInt32 color) {
    return optionOf(kColors, color);
}

std::string paperTypeOption(SInt32 type) {
    return optionOf(kTypes, type);
}
