// The document of choices lists each key that settings have, and no other.

#include "tests/support/places.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <sstream>

namespace {

using Names = std::set<std::string>;

/// What a pattern's first group finds in a file of the sources.
Names found(const char* path, const char* pattern) {
    std::ostringstream content;
    content << std::ifstream(sourcePath(path)).rdbuf();
    const std::string text = content.str();
    const std::regex expression(pattern);
    Names names;
    for (std::sregex_iterator at(text.begin(), text.end(), expression); at != std::sregex_iterator(); ++at) {
        names.insert((*at)[1]);
    }
    EXPECT_FALSE(names.empty()) << path;
    return names;
}

Names keys() {
    constexpr const char* kKey =
        R"re((?:CFSTR\(|Name )"(?:com\.tavro\.print\.)?([A-Za-z0-9]+(?:\.[A-Za-z0-9]+)?)"\)?)re";
    Names names = found("platform/printing/PMPrinter.h",
                        R"re(CFSTR\("com\.(?:apple\.print\.[A-Za-z]+|tavro\.print)\.([A-Za-z0-9.]+)"\))re");
    for (const char* source :
         {"model/settings/ticket_items.h", "model/records/special_page.cpp", "model/stock/stock.cpp",
          "model/records/image_shift.cpp", "jobtypes/records/job_type.h", "jobtypes/records/job_type.cpp",
          "jobtypes/records/fax_options.h", "jobtypes/records/fax_recipient.h"}) {
        names.merge(found(source, kKey));
    }
    names.merge(found("model/records/full_color_options.cpp", R"re("([A-Z][A-Za-z]+)")re"));
    names.merge(found("resources/ppd/Tavro-ZR840.ppd", R"re(\*(?:JCL)?OpenUI \*([A-Za-z0-9]+)/)re"));
    // Texts, what is installed, and a second name of PageSize.
    std::erase_if(names, [](const std::string& name) { return name.starts_with("Option") && name.size() > 6; });
    for (const char* const other : {"Localizable", "Unknown", "PageRegion"}) {
        EXPECT_EQ(names.erase(other), 1U) << other;
    }
    return names;
}

}  // namespace

TEST(PaperDocument, ListsAllChoices) {
    Names listed = found("docs/paper.md", "`([A-Za-z0-9.]+)`");
    std::erase_if(listed, [](const std::string& name) { return name.starts_with("com."); });
    const Names known = keys();
    Names missing;
    std::ranges::set_difference(known, listed, std::inserter(missing, missing.end()));
    EXPECT_EQ(missing, Names()) << "have no row in docs/paper.md";
    Names gone;
    std::ranges::set_difference(listed, known, std::inserter(gone, gone.end()));
    EXPECT_EQ(gone, Names()) << "are in docs/paper.md, and nowhere else";
}
