#include "model/stock/stock_icon.h"

#include <iterator>

namespace {

// clang-format off
struct ColorRow {
    SInt32 color;
    const char* name;  // the part of the file names
};
constexpr ColorRow kColors[] = {
    // color  name
    {2,       "Blue"},
    {3,       "Yellow"},
    {4,       "Green"},
    {5,       "Pink"},
    {6,       "Clear"},
    {7,       "Buff"},
    {8,       "Goldenrod"},
    {9,       "Red"},
    {11,      "Ivory"},
    {12,      "Gray"},
    {13,      "Orange"},
};
static_assert(std::size(kColors) == 11);

/// A file name of each family. In bases, * stands for the color.
struct Files {
    const char* specialPage;
    const char* job;
};
struct FilesRow {
    SInt32 type;
    Files files;
};

constexpr Files kStandardBase = {"Standard-*.gif", "DB-*.gif"};
constexpr Files kTabBase      = {"TabStock-*.gif", "DB-Tab-*.gif"};
constexpr Files kSide2Base    = {"Side2-*.gif",    "DB-Side2-*.gif"};
constexpr FilesRow kBases[] = {
    // type                       special pages, job
    {kStockTypeEnvelopes,         {"SP-Envelope-*.gif", "DB-*-Envelope.gif"}},
    {kStockTypeFullCutTab,        {"SP-FullCutTab-*.gif", "DB-FullCutTab-*.gif"}},
    {kStockTypePrecutTab,         kTabBase},
    {kStockTypeTabStock,          kTabBase},
    {kStockTypeHeavyTabStock,     kTabBase},
    {kStockTypeCardStock2,        kSide2Base},
    {kStockTypeExtraHeavyweight2, kSide2Base},
    {kStockTypeLightGlossy2,      kSide2Base},
    {kStockTypeHeavyGlossy2,      kSide2Base},
    {kStockTypeExtraHeavyPlus2,   kSide2Base},
    {kStockTypeExtraHeavyGlossy2, kSide2Base},
};
static_assert(std::size(kBases) == 11);

constexpr FilesRow kMaterials[] = {
    // type                       special pages, job
    {kStockTypeRecycled,          {"Recycled.gif", "Recycled.gif"}},
    {kStockTypeHeavyweightLabels, {"Labels.gif", "Labels.gif"}},
    {kStockTypeLabels,            {"Labels.gif", "Labels.gif"}},
};
static_assert(std::size(kMaterials) == 3);

constexpr FilesRow kOverlays[] = {
    // type                       special pages, job
    {kStockTypeTransparency,      {"Lightweight-Glossy.gif", "Lightweight-Glossy.gif"}},
    {kStockTypePrePrinted,        {"DB-Pre-Printed.gif", "DB-Pre-Printed.gif"}},
    {kStockTypeOrdered,           {"DB-OrderedStock.gif", "DB-OrderedStock.gif"}},
    {kStockTypeCardStock,         {"Heavyweight.gif", "DB-Heavyweight.gif"}},
    {kStockTypeExtraHeavyweight,  {"Heavyweight.gif", "DB-Heavyweight.gif"}},
    {kStockTypeExtraHeavyPlus,    {"Heavyweight.gif", "DB-Heavyweight.gif"}},
    {kStockTypeLetterhead,        {"DB-Letterhead.gif", "DB-Letterhead.gif"}},
    {kStockTypeCustom1,           {"DB-Custom1.gif", "DB-Custom1.gif"}},
    {kStockTypeCustom2,           {"DB-Custom2.gif", "DB-Custom2.gif"}},
    {kStockTypeCustom3,           {"DB-Custom3.gif", "DB-Custom3.gif"}},
    {kStockTypeCustom4,           {"DB-Custom4.gif", "DB-Custom4.gif"}},
    {kStockTypeCustom5,           {"DB-Custom5.gif", "DB-Custom5.gif"}},
    {kStockTypeCustom6,           {"DB-Custom6.gif", "DB-Custom6.gif"}},
    {kStockTypeCustom7,           {"DB-Custom7.gif", "DB-Custom7.gif"}},
    {kStockTypeOther,             {"DB-Other.gif", "DB-Other.gif"}},
    {kStockTypeHeavyweightLabels, {"SP-Heavyweight-Labels.gif", "DB-Heavyweight-Labels.gif"}},
    {kStockTypeExtraHeavyLabels,  {"SP-Heavyweight-Labels.gif", "DB-Heavyweight-Labels.gif"}},
    {kStockTypeCardStock2,        {"Heavyweight-Side2.gif", "DB-Heavyweight-Side2.gif"}},
    {kStockTypeExtraHeavyweight2, {"Heavyweight-Side2.gif", "DB-Heavyweight-Side2.gif"}},
    {kStockTypeExtraHeavyPlus2,   {"Heavyweight-Side2.gif", "DB-Heavyweight-Side2.gif"}},
    {kStockTypeLightGlossy,       {"Lightweight-Glossy.gif", "DB-Lightweight-Glossy.gif"}},
    {kStockTypeLightGlossy2,      {"Lightweight-Glossy-Side2.gif", "DB-Lightweight-Glossy-Side2.gif"}},
    {kStockTypeHeavyGlossy,       {"Heavyweight-Glossy.gif", "DB-Heavyweight-Glossy.gif"}},
    {kStockTypeExtraHeavyGlossy,  {"Heavyweight-Glossy.gif", "DB-Heavyweight-Glossy.gif"}},
    {kStockTypeHeavyGlossy2,      {"Heavyweight-Glossy-Side2.gif", "DB-Heavyweight-Glossy-Side2.gif"}},
    {kStockTypeExtraHeavyGlossy2, {"Heavyweight-Glossy-Side2.gif", "DB-Heavyweight-Glossy-Side2.gif"}},
};
static_assert(std::size(kOverlays) == 26);
// clang-format on

template <std::size_t N>
const Files* FilesOfType(const FilesRow (&rows)[N], SInt32 type) {
    for (const FilesRow& row : rows) {
        if (row.type == type) {
            return &row.files;
        }
    }
    return nullptr;
}

/// White for every color without pictures of its own.
const char* ColorName(SInt32 color) {
    for (const ColorRow& row : kColors) {
        if (row.color == color) {
            return row.name;
        }
    }
    return "White";
}

}  // namespace

std::vector<std::string> StockIconFiles(const Stock& stock, JobContext context) {
    const auto ofFamily = [context](const Files& files) {
        return context == JobContext::job ? files.job : files.specialPage;
    };
    const SInt32 type = stock.type();

    const Files* const base = FilesOfType(kBases, type);
    std::string baseName = ofFamily(base != nullptr ? *base : kStandardBase);
    baseName.replace(baseName.find('*'), 1, ColorName(stock.color()));

    std::vector<std::string> names{std::move(baseName)};
    if (const Files* material = FilesOfType(kMaterials, type)) {
        names.emplace_back(ofFamily(*material));
    }
    if (stock.punched() == kStockPunched || type == kStockTypePunched) {
        names.emplace_back(type == kStockTypeEnvelopes ? "PunchedEnvelope.gif" : "DB-Punched.gif");
    }
    const bool isClear = type == kStockTypeTransparency && stock.color() == kStockColorClear;
    if (const Files* overlay = FilesOfType(kOverlays, type); overlay != nullptr && !isClear) {
        names.emplace_back(ofFamily(*overlay));
    }
    return names;
}
