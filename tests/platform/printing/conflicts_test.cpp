// Choices that cannot go together, against the print server's own library, which judges the same PPDs.
#include "tests/platform/printing/printing_fixture.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <memory>
#include <random>
#include <vector>

#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <cups/ppd.h>

namespace {

class Conflicts : public testing::Test {
protected:
    explicit Conflicts(const std::filesystem::path& ppd = kZR420) : printer(ppd) {
        PMPrinterWriteDefaultSettings(printer.get(), settings.get(), settings.get());
    }

    void install(const std::string& keyword, const std::string& option) {
        set(installed.get(), keyword, option);
        PMPrinterWriteInfoTicket(printer.get(), installed.get(), info.get());
    }
    void choose(const std::string& keyword, const std::string& option) const { set(settings.ppd(), keyword, option); }

    /// "StapleLocation=4Staples/Option2=LCSS*; …", the installed side with a star.
    std::string found() const {
        CFArrayRef list = nullptr;
        EXPECT_EQ(PMPrinterCopyConflicts(printer.get(), settings.get(), info.get(), &list), noErr);
        const auto owner = CFRef<CFArrayRef>::adopt(list);
        std::string all;
        for (CFIndex i = 0; i < CFArrayGetCount(list); ++i) {
            const auto* const sides = static_cast<CFArrayRef>(CFArrayGetValueAtIndex(list, i));
            all += i == 0 ? "" : "; ";
            for (CFIndex j = 0; j < CFArrayGetCount(sides); ++j) {
                const auto* const side = static_cast<CFDictionaryRef>(CFArrayGetValueAtIndex(sides, j));
                const bool isInstalled = CFDictionaryGetValue(side, kPMSettingIsInstalledKey) == kCFBooleanTrue;
                all += std::string(j == 0 ? "" : "/") + text(CFDictionaryGetValue(side, kPMSettingKeywordKey)) + "=" +
                       text(CFDictionaryGetValue(side, kPMSettingOptionKey)) + (isInstalled ? "*" : "");
            }
        }
        return all;
    }

    using Changes = std::vector<std::pair<std::string, std::string>>;
    Changes remedy(const std::vector<std::string>& keep = {}) const {
        const auto kept = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
        for (const std::string& keyword : keep) {
            CFArrayAppendValue(kept.get(), cf(keyword).get());
        }
        CFDictionaryRef made = nullptr;
        EXPECT_EQ(PMPrinterCopyRemedy(printer.get(), settings.get(), info.get(), kept.get(), &made), noErr);
        const auto owner = CFRef<CFDictionaryRef>::adopt(made);
        const auto count = static_cast<std::size_t>(CFDictionaryGetCount(made));
        std::vector<const void*> keys(count);
        std::vector<const void*> values(count);
        CFDictionaryGetKeysAndValues(made, keys.data(), values.data());
        Changes changes;
        for (std::size_t i = 0; i < count; ++i) {
            changes.emplace_back(text(keys[i]), text(values[i]));
        }
        std::ranges::sort(changes);
        return changes;
    }

    /// What the one keyword can be changed to; empty for nothing.
    std::string wayOut(const char* keyword) const {
        CFStringRef option = nullptr;
        EXPECT_EQ(
            PMPrinterCopyOptionWithoutConflict(printer.get(), settings.get(), info.get(), cf(keyword).get(), &option),
            noErr);
        const auto owner = CFRef<CFStringRef>::adopt(option);
        return option == nullptr ? std::string() : text(option);
    }

    Printer printer;
    Ticket settings;
    Ticket info;
    CFRef<CFMutableDictionaryRef> installed = makeDictionary();
};

TEST_F(Conflicts, DefaultsHaveNone) {
    EXPECT_EQ(found(), "");
    EXPECT_EQ(remedy(), Changes());
}

TEST_F(Conflicts, NameBothSidesOnce) {
    choose("MediaType", "Transparency");
    choose("Duplex", "DuplexTumble");
    EXPECT_EQ(found(), "Duplex=DuplexTumble/MediaType=Transparency");
    // What was chosen last stays; without a last one, the paper does.
    EXPECT_EQ(remedy({"Duplex"}), (Changes{{"MediaType", "SystemDefault"}}));
    EXPECT_EQ(remedy({"MediaType"}), (Changes{{"Duplex", "None"}}));
    EXPECT_EQ(remedy({"MediaType", "Duplex"}), (Changes{{"Duplex", "None"}}));
    EXPECT_EQ(remedy(), (Changes{{"Duplex", "None"}}));
    EXPECT_EQ(wayOut("Duplex"), "None");
    EXPECT_EQ(wayOut("MediaType"), "SystemDefault");
}

TEST_F(Conflicts, WithWhatIsInstalledLeaveItAlone) {
    install("Option2", "LCSS");
    choose("StapleLocation", "4Staples");
    EXPECT_EQ(wayOut("Option2"), "");
    EXPECT_EQ(found(), "StapleLocation=4Staples/Option2=LCSS*");
    EXPECT_EQ(remedy({"StapleLocation"}), (Changes{{"StapleLocation", "None"}}));
    install("Option2", "Sausages");  // as if it were not there
    EXPECT_EQ(found(), "");
    choose("PageSize", "SRA3");
    install("Option1", "False");
    EXPECT_EQ(found(), "PageSize=SRA3/Option1=False*");
    EXPECT_EQ(remedy(), (Changes{{"PageSize", "Letter"}}));
}

TEST_F(Conflicts, AreEndedAllAtOnce) {
    choose("MediaType", "Labels");
    choose("Duplex", "DuplexNoTumble");
    choose("StapleLocation", "2Staples");
    choose("TRFoldOptions", "3HolePunch");
    EXPECT_EQ(remedy({"MediaType"}),
              (Changes{{"Duplex", "None"}, {"StapleLocation", "None"}, {"TRFoldOptions", "None"}}));
}

TEST_F(Conflicts, OfPasscodesNameNoDigits) {
    install("Option4", "False");
    settings.setString(kPMJobPasscodeKey, "4711");
    EXPECT_EQ(found(), "JCLPasscode=Custom/Option4=False*");
    EXPECT_EQ(remedy(), (Changes{{"JCLPasscode", "None"}}));
}

TEST_F(Conflicts, OfCustomSizesEndAtTheNearest) {
    struct Row {
        const char* asked;
        const char* nearest;  // null for a size that the printer takes: 288 to 936 by 432 to 1368 points
    };
    for (const Row& row : {Row{"Custom.200x300mm", nullptr}, Row{"Custom.330.2x482.6mm", nullptr},
                           Row{"Custom.4x6in", nullptr}, Row{"Custom.936x1368", nullptr}, Row{"Custom", nullptr},
                           Row{"Custom.1000x2000", "Custom.936x1368pt"}, Row{"Custom.1x1in", "Custom.4x6in"},
                           Row{"Custom.50x300mm", "Custom.101.6x300mm"}, Row{"Custom.19x13in", "Custom.13x19in"}}) {
        choose("PageSize", row.asked);
        EXPECT_EQ(found(), row.nearest == nullptr ? "" : std::string("PageSize=") + row.asked);
        EXPECT_EQ(remedy({"PageSize"}), row.nearest == nullptr ? Changes() : (Changes{{"PageSize", row.nearest}}));
        EXPECT_EQ(wayOut("PageSize"), row.nearest == nullptr ? "Letter" : row.nearest);
    }
}

TEST_F(Conflicts, AreRefusedWithoutTickets) {
    CFArrayRef list = nullptr;
    CFDictionaryRef changes = nullptr;
    EXPECT_EQ(PMPrinterCopyConflicts(nullptr, settings.get(), info.get(), &list), paramErr);
    EXPECT_EQ(PMPrinterCopyConflicts(printer.get(), 0, info.get(), &list), kPMInvalidTicket);
    EXPECT_EQ(PMPrinterCopyRemedy(printer.get(), 0, info.get(), nullptr, &changes), kPMInvalidTicket);
    EXPECT_EQ(list, nullptr);
    choose("Duplex", "DuplexTumble");
    EXPECT_EQ(PMPrinterCopyConflicts(printer.get(), settings.get(), 0, &list), noErr);  // what the PPD has installed
    EXPECT_EQ(CFArrayGetCount(CFRef<CFArrayRef>::adopt(list).get()), 0);
}

/// A PPD as other makers write them: lines of both kinds, three settings at a time, one of any kind, keywords and
/// choices in another case, and some that the printer does not have.
std::filesystem::path foreignPPD(const std::string& more = "") {
    static const TemporaryFolder folder;
    std::string ppd = readFile(kZR420);
    for (std::size_t at; (at = ppd.find("*UIConstraints")) != std::string::npos;) {
        ppd.erase(at, ppd.find('\n', at) + 1 - at);
    }
    return folder.add(more.empty() ? "foreign.ppd" : "more.ppd",
                      ppd +
                          "*cupsUIConstraints: \"*Duplex *MediaType Bond *TREconomode True\"\n"
                          "*cupsUIConstraints banner: \"*JCLBANNER *PageRegion a4\"\n"
                          "*cupsUIConstraints: \"*CUSTOMjclpasscode true *option4 FALSE\"\n"
                          "*cupsUIConstraints: \"*Duplex *Toaster Hot\"\n"
                          "*cupsUIConstraints: \"*Duplex *OutputBin Nowhere\"\n"
                          "*UIConstraints: *DUPLEX *jog ENDOFSET\n"
                          "*UIConstraints: *StapleLocation *Jog Everywhere\n"
                          "*UIConstraints: *PageSize Tabloid *stapleLOCATION 4staples\n" +
                          more);
}

class ConflictsOfAnotherPPD : public Conflicts {
protected:
    /// With what cannot be installed together, too, which is a conflict to the library, and no fault of a job's.
    ConflictsOfAnotherPPD()
        : Conflicts(foreignPPD("*UIConstraints: *Option2 HCSS_BK *Option1 True\n"
                               "*UIConstraints: *JCLPasscode None *MediaType Transparency\n")) {}
};

TEST_F(ConflictsOfAnotherPPD, OfSizesMayHaveNoRoomBetweenTheLimits) {
    std::string ppd = readFile(kZR420);
    const std::string width = "points 288 936";
    ppd.replace(ppd.find(width), width.size(), "points 288.3 288.3");
    const TemporaryFolder folder;
    const Printer narrow(folder.add("narrow.ppd", ppd));
    ASSERT_EQ(narrow.status(), noErr);
    choose("PageSize", "Custom.200x300mm");
    CFDictionaryRef changes = nullptr;
    ASSERT_EQ(PMPrinterCopyRemedy(narrow.get(), settings.get(), info.get(), nullptr, &changes), noErr);
    const auto owner = CFRef<CFDictionaryRef>::adopt(changes);
    const std::string nearest = get(changes, "PageSize");
    EXPECT_TRUE(nearest.starts_with("Custom.101.7") && nearest.ends_with("x300mm")) << nearest;
}

TEST_F(ConflictsOfAnotherPPD, AreNotSettledByWhatSomebodyMustType) {
    choose("JCLPasscode", "None");
    choose("MediaType", "Transparency");
    EXPECT_EQ(found(), "JCLPasscode=None/MediaType=Transparency");
    EXPECT_EQ(wayOut("JCLPasscode"), "");
    EXPECT_EQ(remedy({"MediaType"}), (Changes{{"MediaType", "SystemDefault"}}));
}

TEST_F(ConflictsOfAnotherPPD, MayHaveManySidesOfAnyChoice) {
    ASSERT_EQ(printer.status(), noErr);
    choose("Duplex", "DuplexTumble");
    choose("MediaType", "Bond");
    choose("JCLBanner", "False");
    choose("PageSize", "A4");
    EXPECT_EQ(found(), "");
    choose("TREconomode", "True");
    choose("jclbanner", "TRUE");  // as a settings file may have it
    CFDictionaryRemoveValue(settings.ppd(), CFSTR("JCLBanner"));
    choose("Jog", "EndOfSet");
    EXPECT_EQ(found(),
              "Duplex=DuplexTumble/Jog=EndOfSet; Duplex=DuplexTumble/MediaType=Bond/TREconomode=True; "
              "JCLBanner=TRUE/PageSize=A4");
    EXPECT_EQ(remedy({"Duplex"}), (Changes{{"JCLBanner", "False"}, {"Jog", "None"}, {"TREconomode", "False"}}));
    EXPECT_EQ(wayOut("jclbanner"), "False");
}

// ---- The print server's library as the judge

struct ClosePPD {
    void operator()(ppd_file_t* ppd) const { ppdClose(ppd); }
};

class ConflictsOf : public Conflicts, public testing::WithParamInterface<std::string> {
protected:
    ConflictsOf() : Conflicts(ppdOf(GetParam())) {}

    static std::filesystem::path ppdOf(const std::string& model) {
        return model == "Foreign" ? foreignPPD() : kSources / ("resources/ppd/Tavro-" + model + ".ppd");
    }

    /// Whether the library sees a conflict in the same settings.
    bool isRefused() const {
        ppdMarkDefaults(ppd.get());
        for (const CFDictionaryRef pairs :
             {static_cast<CFDictionaryRef>(settings.ppd()), static_cast<CFDictionaryRef>(installed.get())}) {
            const auto count = static_cast<std::size_t>(CFDictionaryGetCount(pairs));
            std::vector<const void*> keys(count);
            std::vector<const void*> values(count);
            CFDictionaryGetKeysAndValues(pairs, keys.data(), values.data());
            for (std::size_t i = 0; i < count; ++i) {
                if (text(keys[i]) != "PageRegion") {
                    ppdMarkOption(ppd.get(), text(keys[i]).c_str(), text(values[i]).c_str());
                }
            }
        }
        return ppdConflicts(ppd.get()) > 0;
    }

    std::unique_ptr<ppd_file_t, ClosePPD> ppd{ppdOpenFile(ppdOf(GetParam()).c_str())};
};

TEST_P(ConflictsOf, AreThoseOfThePrintServer) {
    ASSERT_TRUE(ppd);
    std::vector<const ppd_option_t*> options;
    for (int g = 0; g < ppd->num_groups; ++g) {
        for (int o = 0; o < ppd->groups[g].num_options; ++o) {
            options.push_back(&ppd->groups[g].options[o]);
        }
    }
    std::mt19937 random(20);
    int refused = 0;
    for (int round = 0; round < 300; ++round) {
        for (int change = 0; change < 4; ++change) {
            const ppd_option_t& option = *options[random() % options.size()];
            const std::string choice = option.choices[random() % static_cast<unsigned>(option.num_choices)].choice;
            if (choice == "Custom") {
                continue;
            }
            if (std::string(option.keyword).starts_with("Option")) {
                install(option.keyword, choice);
            } else {
                choose(option.keyword, choice);
            }
        }
        const std::string conflicts = found();
        ASSERT_EQ(!conflicts.empty(), isRefused()) << round << ": " << conflicts;
        if (conflicts.empty()) {
            continue;
        }
        ++refused;
        const Changes changes = remedy();
        ASSERT_FALSE(changes.empty()) << round << ": " << conflicts;
        for (const auto& [keyword, option] : changes) {
            EXPECT_FALSE(keyword.starts_with("Option")) << keyword;
            choose(keyword, option);
        }
        ASSERT_FALSE(isRefused()) << round << ": " << conflicts;
    }
    EXPECT_GT(refused, 8);
}

INSTANTIATE_TEST_SUITE_P(Models, ConflictsOf, testing::Values("ZR410", "ZR420", "ZR840", "Foreign"),
                         [](const auto& instance) { return instance.param; });

}  // namespace
