// The PPDs that are shipped: accepted by CUPS's own checker, and holding what the panels count on.
#include "tests/platform/printing/printing_fixture.h"

#include <gtest/gtest.h>

#include <unistd.h>
#include <algorithm>
#include <map>
#include <set>
#include <vector>

namespace {

class ShippedPPDs : public testing::TestWithParam<std::filesystem::path> {
protected:
    void SetUp() override {
        std::istringstream lines(readFile(GetParam()));
        for (std::string line; std::getline(lines, line);) {
            std::istringstream words(line);
            std::string main;
            std::string option;
            words >> main >> option;
            if (main == "*OpenUI" || main == "*JCLOpenUI") {
                types[option.substr(1, option.find('/') - 1)] = line.substr(line.rfind(' ') + 1);
            } else if (main == "*UIConstraints:") {
                std::string rest;
                std::getline(words, rest);
                constraints.push_back(option + rest);
            } else if (main.starts_with("*Default")) {
                defaults[main.substr(8, main.size() - 9)] = option;
            } else if (const auto slash = option.find('/'); main.starts_with("*") && slash != std::string::npos) {
                choices[main.substr(1)].push_back(option.substr(0, slash));
            }
        }
    }

    std::map<std::string, std::vector<std::string>> choices;
    std::map<std::string, std::string> defaults;
    std::map<std::string, std::string> types;
    std::vector<std::string> constraints;
};

using Choices = std::vector<std::string>;

TEST_P(ShippedPPDs, PassTheChecker) {
    // As where the package is installed, with the filter in its place.
    const TemporaryFolder root;
    std::filesystem::create_directories(root.path() / "usr/lib/cups/filter");
    std::filesystem::copy(stagePath("filter/tavro-pages"), root.path() / "usr/lib/cups/filter");
    // The filter is to be root's, which only root can give it.
    const std::string checker = geteuid() == 0 ? "cupstestppd" : "cupstestppd -I filters";
    // As it is written, and as it is installed: with its translations.
    for (const std::string& ppd : {GetParam().string(), stagePath("ppd/" + GetParam().filename().string())}) {
        const auto [output, status] = run(checker + " -R '" + root.path().string() + "' '" + ppd + "'");
        EXPECT_EQ(status, 0) << output;
        EXPECT_EQ(output.find("FAIL"), std::string::npos) << output;
    }
}

TEST_P(ShippedPPDs, KeepTheOrderThatPanelsIndexBy) {
    EXPECT_EQ(choices["Collate"], (Choices{"True", "False"}));
    EXPECT_EQ(choices["StapleLocation"].front(), "None");
    EXPECT_EQ(choices["TREconomode"], (Choices{"False", "True"}));
    EXPECT_EQ(choices["TRImageQuality"],
              (Choices{"Lightest", "Lighter", "Light", "Normal", "Dark", "Darker", "Darkest"}));
    EXPECT_EQ(choices["TRImageQuality"][3], defaults["TRImageQuality"]);
    EXPECT_EQ(choices["Resolution"].front(), defaults["Resolution"]);
    EXPECT_EQ(choices["TRFoldOptions"].front(), "None");
    for (const char* fold : {"BookletFoldOpt", "BookletFoldStapleOpt"}) {
        EXPECT_EQ(std::ranges::count(choices["TRFoldOptions"], fold), 1) << fold;
    }
    EXPECT_EQ(choices["Duplex"], (Choices{"None", "DuplexNoTumble", "DuplexTumble"}));
    EXPECT_EQ(choices["MediaType"].front(), "SystemDefault");
    EXPECT_EQ(choices["JCLCovers"], (Choices{"None", "BlankFront", "Front", "BlankFrontBack", "FrontBack"}));
    EXPECT_EQ(defaults["JCLBanner"], "False");
    EXPECT_EQ(defaults["Jog"], "None");
}

TEST_P(ShippedPPDs, FillMenusFromPickOneKeywords) {
    for (const char* keyword : {"PageSize",
                                "InputSlot",
                                "MediaType",
                                "MediaColor",
                                "Duplex",
                                "Collate",
                                "StapleLocation",
                                "TRFoldOptions",
                                "OutputBin",
                                "Jog",
                                "Resolution",
                                "TRImageQuality",
                                "TREconomode",
                                "JCLBanner",
                                "JCLPrintQuality",
                                "JCLRGBColorSpace",
                                "JCLCMYKColorSpace",
                                "JCLColorCorrection",
                                "JCLTrueGrayGraphics",
                                "JCLTrueGrayImages",
                                "JCLCovers",
                                "JCLMediaType",
                                "JCLMediaColor",
                                "JCLFrontBackMediaType",
                                "JCLFrontBackMediaColor"}) {
        EXPECT_EQ(types[keyword], "PickOne") << keyword;
        const auto& offered = choices[keyword];
        EXPECT_GE(offered.size(), 2U) << keyword;
        EXPECT_EQ(std::set(offered.begin(), offered.end()).size(), offered.size()) << keyword;
        EXPECT_EQ(std::ranges::count(offered, defaults[keyword]), 1) << keyword;
    }
    // Covers are told to the printer by the names of the paper options.
    for (const char* covers : {"JCLMediaType", "JCLFrontBackMediaType"}) {
        EXPECT_EQ(choices[covers], choices["MediaType"]);
    }
    for (const char* covers : {"JCLMediaColor", "JCLFrontBackMediaColor"}) {
        EXPECT_EQ(choices[covers], choices["MediaColor"]);
    }
    EXPECT_EQ(choices["PageRegion"], choices["PageSize"]);
}

TEST_P(ShippedPPDs, ConstrainInBothDirectionsWhatExists) {
    EXPECT_FALSE(constraints.empty());
    for (const std::string& constraint : constraints) {
        const std::size_t second = constraint.find(" *") + 1;
        const std::string sides[] = {constraint.substr(0, second - 1), constraint.substr(second)};
        EXPECT_EQ(std::ranges::count(constraints, sides[1] + " " + sides[0]), 1) << constraint;
        for (const std::string& side : sides) {
            const std::size_t blank = side.find(' ');
            const auto& offered = choices[side.substr(1, blank - 1)];
            if (blank == std::string::npos) {  // all but "None"
                EXPECT_EQ(std::ranges::count(offered, "None"), 1) << constraint;
            } else if (!side.starts_with("*CustomJCLPasscode")) {
                EXPECT_EQ(std::ranges::count(offered, side.substr(blank + 1)), 1) << constraint;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Models, ShippedPPDs, testing::Values(kZR410, kZR420, kZR840),
                         [](const auto& instance) { return instance.param.stem().string().substr(6); });

}  // namespace
