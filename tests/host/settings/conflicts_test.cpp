// What people read about settings that cannot go together.
#include "host/settings/conflicts.h"

#include "driver/finishing/sheet_limits.h"
#include "host/settings/dictionary_values.h"
#include "host/settings/remedy_words.h"
#include "tests/support/cf_values.h"
#include "tests/support/places.h"

#include <gtest/gtest.h>

namespace {

using Texts = std::vector<std::string>;

class ConflictSentences : public testing::Test {
protected:
    void install(const std::string& keyword, const std::string& option) {
        CFDictionarySetValue(installed.get(), makeCFString(keyword).get(), makeCFString(option).get());
        session.emplace(printer, JobSettings{}, installed.get(), "report.pdf");
    }
    void choose(const std::string& keyword, const std::string& option) {
        session->setChoice(makeCFString(keyword).get(), makeCFString(option).get());
    }
    ConflictReport report(const Texts& keep = {}) const { return examineConflicts(*session, texts.get(), keep, 0); }
    Texts names(const std::vector<SettingChange>& changes) const {
        Texts all;
        for (const SettingChange& change : changes) {
            all.push_back(nameOfChange(change, texts.get()));
        }
        return all;
    }
    std::string obstacle(const char* keyword, const char* option) const {
        return obstacleOf(*session, texts.get(), keyword, option);
    }

    CFRef<CFBundleRef> texts =
        CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, makeFileURL(stagePath("TavroPrint.bundle"), true).get()));
    CFRef<CFMutableDictionaryRef> installed = makeCFDictionary();
    Printer printer = *openPPD(sourcePath("resources/ppd/Tavro-ZR420.ppd"));
    std::optional<PrintSession> session{std::in_place, printer, JobSettings{}, nullptr, "report.pdf"};
};

}  // namespace

TEST_F(ConflictSentences, NameBothSidesAndTheirPanels) {
    EXPECT_EQ(report().sentences(), Texts());
    choose("MediaType", "Transparency");
    choose("Duplex", "DuplexNoTumble");
    choose("OutputBin", "Top");
    choose("Jog", "EndOfSet");
    const ConflictReport found = report({"MediaType"});
    EXPECT_EQ(found.sentences(),
              (Texts{"“Offset: Offset Each Set” (Advanced) cannot be used with “Output Tray: Top Tray” "
                     "(Paper and Output).",
                     "“2-Sided Printing: 2-Sided, Flip on Long Edge” cannot be used with “Paper Type: Transparency” "
                     "(both in Paper and Output)."}));
    EXPECT_EQ(firstOf(found.sentences(), texts.get()), found.sentences()[0] + " And one more problem.");
    EXPECT_EQ(names(found.ways), (Texts{"Remove the Offset", "Change Output Tray to Automatic"}));
    EXPECT_EQ(nameOfChanges(found.remedy, texts.get()), "Change 2 Settings");
    EXPECT_EQ(listOfChanges(found.remedy, texts.get()),
              "• 2-Sided Printing: 1-Sided (Paper and Output)\n• Offset: No Offset (Advanced)");
}

TEST_F(ConflictSentences, SayWhatIsNotInstalled) {
    install("Option3", "False");
    install("Option2", "LCSS");
    install("Option1", "False");
    choose("TRFoldOptions", "3HolePunch");
    choose("StapleLocation", "4Staples");
    choose("PageSize", "SRA3");
    EXPECT_EQ(report().sentences(),
              (Texts{"“Paper Size: SRA3 (320 x 450 mm)” cannot be used: the printer has “Paper Trays: Two Trays”.",
                     "“Staple: 4 Staples” (Paper and Output) cannot be used: the printer has “Finisher: Light "
                     "Capacity Stapler Stacker”.",
                     "“Fold and Punch: 3 Hole Punch” (Paper and Output) cannot be used: “Hole Punch” is not "
                     "installed."}));
    EXPECT_EQ(names(report().ways), Texts{"Use Letter (8.5 x 11 in)"}) << "what is installed stays";
    EXPECT_TRUE(firstOf(report().sentences(), texts.get()).ends_with(". And 2 more problems."));

    // The same of a choice that nobody has made yet, alone.
    EXPECT_EQ(obstacle("PageSize", "13x19"), "This printer cannot do this: the printer has “Paper Trays: Two Trays”.");
    EXPECT_EQ(obstacle("OutputBin", "Booklet"),
              "This printer cannot do this: the printer has “Finisher: Light Capacity Stapler Stacker”.");
    EXPECT_EQ(obstacle("PageSize", "A4"), "");
}

TEST_F(ConflictSentences, TellThatFoldedBookletsTakeNoStaples) {
    for (const char* model : {"ZR410", "ZR420"}) {
        printer = *openPPD(sourcePath("resources/ppd/Tavro-" + std::string(model) + ".ppd"));
        for (const char* fold : {"BookletFoldOpt", "BookletFoldStapleOpt"}) {
            install("Option2", "HCSS_BK");
            choose("StapleLocation", "1Staple");
            choose("TRFoldOptions", fold);
            EXPECT_EQ(report().sentences().size(), 1u) << model << fold;
            EXPECT_EQ(names(report({"TRFoldOptions"}).ways), (Texts{"Remove the Staples", "Remove Folds and Holes"}));
            EXPECT_EQ(names(report({"StapleLocation"}).ways), (Texts{"Remove Folds and Holes", "Remove the Staples"}));
        }
    }
}

TEST_F(ConflictSentences, TellHowManySheetsAFinisherTakes) {
    useDeviceProfile(sourcePath("resources/device/Device Profile.plist"));
    const auto sentences = [&](std::int64_t pages) {
        session->instructions();
        return examineConflicts(*session, texts.get(), {}, pages).sentences();
    };
    choose("StapleLocation", "2Staples");
    EXPECT_EQ(sentences(50), Texts());
    EXPECT_EQ(sentences(0), Texts()) << "of a document that is not known";
    EXPECT_EQ(sentences(64), Texts{"“Staple: 2 Staples” (Paper and Output) takes up to 50 sheets; this job has 64."});
    choose("Duplex", "DuplexNoTumble");
    EXPECT_EQ(sentences(64), Texts());
    choose("MediaType", "CardStock");
    EXPECT_EQ(sentences(64), Texts{"“Staple: 2 Staples” (Paper and Output) takes up to 50 sheets of thin paper; the 32 "
                                   "sheets of this job are as thick as 64."});
    install("Option2", "LCSS");
    choose("TRFoldOptions", "3HolePunch");
    EXPECT_EQ(sentences(999), Texts()) << "holes are punched into any number of sheets";

    printer = *openPPD(sourcePath("resources/ppd/Tavro-ZR840.ppd"));
    install("Option2", "PSF_BM");
    choose("TRBind", "BindLeft");
    const ConflictReport thin = examineConflicts(*session, texts.get(), {}, 4);
    EXPECT_EQ(thin.sentences(),
              Texts{"“Bind: Bind, Left” (Paper and Output) takes at least 10 sheets; this job has 4."});
    EXPECT_EQ(names(thin.ways), Texts{"Remove the Binding"});
    EXPECT_EQ(sentences(125), Texts());
    EXPECT_EQ(sentences(126).size(), 1u);
    // Beside a conflict of the PPD both are told, and the remedy ends both.
    choose("TRFold", "ZFoldHalfLeft");
    const ConflictReport both = examineConflicts(*session, texts.get(), {"TRFold"}, 21);
    EXPECT_EQ(both.conflicts.size(), 2u);
    EXPECT_EQ(both.sentences()[1],
              "“Fold: Z Fold Half Sheet, Left” (Paper and Output) takes up to 20 sheets; this job has 21.");
    EXPECT_EQ(names(both.remedy).back(), "Remove the Fold");
}

TEST_F(ConflictSentences, TellNearestSizesAndKeepSecrets) {
    choose("PageSize", "Custom.400x600mm");
    EXPECT_EQ(report().sentences(), Texts{"“Paper Size: 400 × 600 mm” is too large or too small for this printer."});
    EXPECT_EQ(names(report().ways), Texts{"Use 330.2 × 482.6 mm"});

    install("Option4", "False");
    const auto job = makeCFDictionary();
    CFDictionarySetValue(job.get(), CFSTR("JobType"), makeCFNumber(std::int64_t{6}).get());
    CFDictionarySetValue(job.get(), CFSTR("SecurePrintPassword"), CFSTR("4711"));
    PMTicketSetCFDictionary(session->printSettings(), CFSTR("test"), CFSTR("com.tavro.print.JobType"), job.get(),
                            kPMUnlocked);
    EXPECT_EQ(report().sentences(), Texts{"“Secure Print Passcode: With Passcode” (Paper and Output) cannot be used: "
                                          "“Hard Disk” is not installed."});
    CFStringRef passcode = nullptr;
    EXPECT_EQ(PMTicketGetCFString(session->printSettings(), kPMTopLevel, kPMTopLevel, kPMJobPasscodeKey, &passcode),
              kPMKeyNotFound);
}
