// Models from the device feature database, and from files of their own.
#include "core/features/printer_model.h"

#include "core/features/model_features.h"
#include "tests/core/features/profile_fixture.h"
#include "tests/platform/files/temporary_folder.h"
#include "tests/support/places.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace {

/// The rows of a table in words, sorted.
std::vector<std::string> rowsOf(const InstalledFeature* row) {
    std::vector<std::string> rows;
    for (; row->featureKey != nullptr; ++row) {
        rows.push_back(std::string(row->featureKey) + " " + row->mainKeyword + "=" + row->optionKeyword + " " +
                       (row->localizationKey == nullptr ? "-" : row->localizationKey) + " " +
                       std::to_string(row->ticketValue));
    }
    std::ranges::sort(rows);
    return rows;
}

using ModelsOfTheProfile = ProfileTest;

TEST_F(ModelsOfTheProfile, TheOfficeModelsAreThoseOfTheFixedTable) {
    std::ifstream file(sourcePath("resources/device/Device Profile.plist"));
    load({std::istreambuf_iterator<char>(file), {}});
    for (const CFStringRef model : {CFSTR("ZR410"), CFSTR("ZR420")}) {
        const ModelFeatures features(model);
        EXPECT_TRUE(features.isKnown());
        EXPECT_EQ(rowsOf(features.table()), rowsOf(InstalledFeatures));
    }
    EXPECT_FALSE(ModelFeatures(CFSTR("ZR9")).isKnown());
}

TEST_F(ModelsOfTheProfile, AMadeUpModelHasWhatItsEntriesSay) {
    const std::string models = "<key>Models</key><array><integer>1</integer><string>MX</string></array>";
    const auto option = [&](const std::string& name, const std::string& properties, const std::string& keywords) {
        return "<key>" + name + "</key><dict><key>Properties</key><dict>" + models + properties +
               "</dict><key>Syntax</key><dict><key>Keyword</key><dict>" + keywords + "</dict></dict></dict>";
    };
    const auto keyword = [](const std::string& name, const std::string& installs) {
        return "<key>" + name + "</key><dict><key>Properties</key><dict><key>Installs</key>" + installs +
               "</dict></dict>";
    };
    load("<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict><key>Features</key><dict>" +
         option("Folder", "<key>Installable</key><true/><key>MainKeyword</key><string>Option7</string>",
                keyword("Big",
                        "<dict><key>CFoldKey</key><dict><key>Name</key><string>C Fold</string><key>TicketValue</key>"
                        "<integer>5</integer></dict><key>ZFoldKey</key><dict><key>Name</key><integer>3</integer>"
                        "</dict><key>Odd</key><string>no dictionary</string></dict>") +
                    keyword("Odd", "<string>no dictionary</string>") + "<key>None</key><string/>") +
         option("NotInstallable", "<key>MainKeyword</key><string>Option8</string>",
                keyword("True", "<dict><key>FaxKey</key><dict/></dict>")) +
         option("Nameless", "<key>Installable</key><true/>", keyword("True", "<dict><key>FaxKey</key><dict/></dict>")) +
         "<key>Other</key><dict><key>Properties</key><dict><key>Models</key><string>MX</string></dict></dict>"
         "</dict></dict></plist>");
    const ModelFeatures features(CFSTR("MX"));
    EXPECT_TRUE(features.isKnown());
    EXPECT_EQ(rowsOf(features.table()),
              (std::vector<std::string>{"CFoldKey Option7=Big C Fold 5", "ZFoldKey Option7=Big - 0"}));
}

std::string profile(const std::string& models, const std::string& features) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict><key>Models</key><dict>" + models +
           "</dict><key>Features</key><dict>" + features + "</dict></dict></plist>";
}

std::string installable(const std::string& name, const std::string& model, const std::string& option,
                        const std::string& installs) {
    return "<key>" + name +
           "</key><dict><key>Properties</key><dict><key>Installable</key><true/><key>MainKeyword</key>" + "<string>" +
           option + "</string><key>Models</key><array><string>" + model + "</string></array></dict>" +
           "<key>Syntax</key><dict><key>Keyword</key><dict><key>True</key><dict><key>Properties</key><dict>" +
           "<key>Installs</key><dict><key>" + installs + "</key><dict/></dict></dict></dict></dict></dict></dict>";
}

TEST_F(ModelsOfTheProfile, AModelThatIsLikeAnotherSaysWhatDiffers) {
    load(profile(
        "<key>New</key><dict><key>Like</key><string>Old</string><key>Lacks</key><array><string>Window</string>"
        "</array><key>Panels</key><string>no list</string></dict><key>Old</key><dict><key>Panels</key><array>"
        "<string>One</string></array></dict>",
        installable("OldFinisher", "Old", "Option2", "TopTrayKey") + installable("OldFax", "Old", "Option5", "FaxKey") +
            installable("NewFinisher", "New", "Option2", "BookletBinKey") +
            "<key>Window</key><dict><key>Properties</key><dict><key>Models</key><array><string>Old</string>"
            "</array></dict></dict>"));
    const ModelFeatures old(CFSTR("Old"));
    const ModelFeatures next(CFSTR("New"));
    EXPECT_EQ(rowsOf(next.table()),
              (std::vector<std::string>{"BookletBinKey Option2=True - 0", "FaxKey Option5=True - 0"}));
    EXPECT_EQ(next.feature(CFSTR("Option2")), TDPGetFeature(CFSTR("NewFinisher"))) << "its own comes first";
    EXPECT_TRUE(old.has(CFSTR("Window")));
    EXPECT_FALSE(next.has(CFSTR("Window")));
    EXPECT_TRUE(next.has(CFSTR("OldFax")));
    EXPECT_EQ(CFArrayGetCount(next.list(CFSTR("Panels"))), 1) << "the older one's, where its own is none";
    EXPECT_EQ(next.list(CFSTR("Pictures")), nullptr);
}

TEST_F(ModelsOfTheProfile, ARingOfModelsAndManyFeaturesEnd) {
    std::string features;
    for (int i = 0; i < 10'000; ++i) {
        features += installable("F" + std::to_string(i), i % 2 == 0 ? "A" : "B", "Option" + std::to_string(i),
                                "Key" + std::to_string(i));
    }
    load(
        profile("<key>A</key><dict><key>Like</key><string>B</string></dict><key>B</key><dict><key>Like</key>"
                "<string>A</string></dict><key>C</key><dict><key>Like</key><integer>3</integer></dict>",
                features));
    EXPECT_EQ(rowsOf(ModelFeatures(CFSTR("A")).table()).size(), 10'000u);
    EXPECT_TRUE(ModelFeatures(CFSTR("C")).isKnown());
    EXPECT_TRUE(rowsOf(ModelFeatures(CFSTR("C")).table()).empty());
}

class ModelsOfFiles : public ProfileTest {
protected:
    void SetUp() override {
        setenv("XDG_DATA_HOME", folder_.path().c_str(), 1);
        setenv("XDG_DATA_DIRS", (folder_.path() / "system").c_str(), 1);
        std::filesystem::create_directories(folder_.path() / "tavro/models");
        std::filesystem::create_directories(folder_.path() / "system/tavro/models");
        load(profile("", installable("Fax", "ZR840", "Option5", "FaxKey")));
    }
    void TearDown() override {
        UnloadPrinterModel();
        ProfileTest::TearDown();
        unsetenv("XDG_DATA_HOME");
        unsetenv("XDG_DATA_DIRS");
    }

    std::string add(const std::string& name, const std::string& content) const {
        const std::string path = folder_.path() / name;
        std::ofstream(path) << content;
        return path;
    }

    const TemporaryFolder folder_;
};

TEST_F(ModelsOfFiles, AreReadForPrintersOfTheirNameAlone) {
    add("system/tavro/models/MX 1.plist", profile("<key>MX 1</key><dict><key>Like</key><string>ZR840</string></dict>",
                                                  installable("Disk", "MX 1", "Option4", "DiskKey")));
    add("secret.plist", profile("<key>../../secret</key><dict/>", ""));
    EXPECT_EQ(rowsOf(LoadPrinterModel("MX 1")),
              (std::vector<std::string>{"DiskKey Option4=True - 0", "FaxKey Option5=True - 0"}));
    EXPECT_EQ(UnknownModelName(), nullptr);
    EXPECT_TRUE(HasModelFeature(CFSTR("Disk")));
    EXPECT_EQ(LoadPrinterModel("ZR410"), InstalledFeatures);
    EXPECT_EQ(UnknownModelName(), nullptr);
    EXPECT_FALSE(HasModelFeature(CFSTR("Disk")));
    for (const char* name : {"MX 2", "../../secret", "", ".hidden"}) {
        EXPECT_EQ(LoadPrinterModel(name), InstalledFeatures) << name;
        EXPECT_NE(UnknownModelName(), nullptr) << name;
    }
}

TEST_F(ModelsOfFiles, ThatCannotBeReadAreNamedWithTheReason) {
    const std::string path = add("tavro/models/Bad.plist", "<?xml version=\"1.0\"?><plist><dict><key>Models");
    testing::internal::CaptureStderr();
    EXPECT_EQ(LoadPrinterModel("Bad"), InstalledFeatures);
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(said.starts_with(path + ": line ")) << said;
    EXPECT_TRUE(CFEqual(UnknownModelName(), CFSTR("Bad")));
    EXPECT_NE(TDPGetFeature(CFSTR("Fax")), nullptr) << "nothing else is lost";
}

}  // namespace
