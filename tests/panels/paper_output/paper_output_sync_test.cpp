// The settings of the Paper and Output panel on their way into tickets and out of them, without a window.

#include "panels/paper_output/paper_output_sync.h"
#include "core/features/installable_options.h"
#include "core/features/printer_features.h"
#include "jobtypes/records/fax_options.h"
#include "model/records/booklet_fold.h"
#include "model/settings/ppd_access.h"
#include "panels/paper_output/finishing_offset_dialog.h"
#include "panels/paper_output/finishing_sync.h"
#include "panels/paper_output/job_checks.h"
#include "tests/panels/plugin_fixture.h"
#include "tests/platform/files/temporary_folder.h"
#include "tests/support/cf_values.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string_view>

namespace {

std::string key(const std::string& name) {
    return "com.tavro.print." + name;
}

class PaperOutputSync : public testing::Test {
protected:
    PaperOutputSync() {
        EXPECT_TRUE(LoadInstallableOptions(printer.info, printer.context, InstalledFeatures));
        scope = {CollateStaplePairs(), true, true};
    }
    ~PaperOutputSync() override { UnloadInstallableOptions(); }

    PaperOutputSettings read() const {
        PaperOutputSettings settings;
        ReadPaperOutputSettings(printer.settings, scope, &settings);
        return settings;
    }
    void write(PaperOutputSettings& settings) const { WritePaperOutputSettings(&settings, scope, printer.settings); }

    void set(const std::string& name, CFTypeRef value) const {
        const auto items = CFRef<CFMutableDictionaryRef>::adopt(PMTicketCopyItems(printer.settings));
        CFDictionarySetValue(items.get(), String(name).get(), value);
        EXPECT_EQ(PMTicketSetItems(printer.settings, items.get()), noErr);
    }
    void setNumber(const std::string& name, std::int64_t number) const { set(name, makeCFNumber(number).get()); }
    SInt32 number(const std::string& name) const { return GetTicketNumber(printer.settings, String(name).get(), -99); }
    bool has(const std::string& name) const {
        const auto items = CFRef<CFMutableDictionaryRef>::adopt(PMTicketCopyItems(printer.settings));
        return CFDictionaryContainsKey(items.get(), String(name).get());
    }
    void ask(const char* keyword, const char* option) const {
        EXPECT_EQ(PPDSetMainKeyword(printer.settings, String(keyword).get(), String(option).get()), noErr);
    }
    std::string asked(const char* keyword) const {
        CFStringRef option = nullptr;
        return PPDGetMainKeywordValue(printer.settings, String(keyword).get(), &option) == noErr ? Text(option) : "";
    }
    SInt32 choice(OSType command) const {
        const auto found = CollateStapleChoiceOfCommand(command, scope.collateStaplePairs);
        EXPECT_TRUE(found) << FourCharCodeText(command);
        return found.value_or(-1);
    }
    void choose(OSType command, PaperOutputSettings* settings) const {
        ChooseCollateStaple(choice(command), scope.collateStaplePairs, settings);
    }
    /// "Collate, StapleLocation, TRFoldOptions".
    std::string sets() const { return asked("Collate") + " " + asked("StapleLocation") + " " + asked("TRFoldOptions"); }

    PluginBundle plugin;
    PluginSession printer;
    PaperOutputScope scope;
};

/// All that is in the settings, but for the stock and the records that are shared with other tests.
std::string described(const PaperOutputSettings& settings) {
    std::ostringstream text;
    text << "finishing " << settings.finishing.options << ' ' << settings.finishing.offset << ' '
         << settings.finishing.enableSubset << ' ' << settings.finishing.pagesPerSubset << ' '
         << settings.finishing.slipSheet << " \"" << Text(settings.finishing.custom.get()) << "\" duplex "
         << settings.duplex << " output " << settings.outputDestination << ' ' << settings.outputColor << " sets "
         << settings.collateStaple << ' ' << settings.foldOptions << " separators " << settings.separatorOption << ' '
         << settings.separatorColor << " booklet " << settings.booklet << ' ' << settings.drawOutlines << ' '
         << settings.forceNewSize << ' ' << settings.bookletSize << " job " << settings.job.jobType << ' '
         << settings.job.useJobName << " fax " << bool(settings.faxOptions) << ' ' << bool(settings.faxRecipients)
         << " stock " << settings.stock.color() << ' ' << settings.stock.type();
    return text.str();
}

constexpr char kFresh[] =
    "finishing 0 1 0 1 0 \"\" duplex 1 output 1 2 sets 2 1 separators 1 1 booklet 0 0 0 0 job 1 1 fax 0 0 stock 1 1";

TEST_F(PaperOutputSync, AFreshTicketGivesTheDefaults) {
    PaperOutputSettings settings = read();
    EXPECT_EQ(described(settings), kFresh);
    write(settings);
    EXPECT_EQ(described(read()), kFresh);
    EXPECT_EQ(sets(), "True None None");
    EXPECT_EQ(asked("Duplex"), "None");
    EXPECT_EQ(asked("OutputBin"), "Auto");
    EXPECT_EQ(asked("MediaColor"), "White");
    EXPECT_FALSE(has(key("FinishingOffsetPagesPerSubset")));
    EXPECT_FALSE(has(key("FaxOptions")));
    EXPECT_FALSE(has(key("FaxRecipientList")));
    EXPECT_EQ(number(key("BookletFoldStaple")), kFoldNone);
}

TEST_F(PaperOutputSync, EverythingComesBack) {
    PaperOutputSettings settings = read();
    settings.stock.setColor(2);
    settings.stock.setType(kStockTypeExtraHeavyweight);
    settings.finishing = {kFinishingValueSignatureBooklet, 2, 1, 12, 2, CFRef<CFStringRef>::retain(CFSTR("Trim"))};
    settings.duplex = 3;
    settings.outputDestination = 2;
    settings.outputColor = kOutputInBlackAndWhite;
    settings.collateStaple = choice(FourCharCode("C2St"));
    settings.separatorOption = kSeparatorsPrinted;
    settings.separatorColor = 3;
    settings.booklet = true;
    settings.drawOutlines = 1;
    settings.forceNewSize = true;
    settings.bookletSize = 3;
    settings.job.jobType = kJobTypeDelayedPrint;
    MakeFaxRecords(&settings);
    write(settings);
    EXPECT_EQ(described(read()), described(settings));
    EXPECT_EQ(sets(), "True 2Staples None");
    EXPECT_EQ(asked("Duplex"), "DuplexTumble");
    EXPECT_EQ(asked("OutputBin"), "Top");
    EXPECT_EQ(asked("MediaColor"), "Blue");
    EXPECT_EQ(asked("MediaType"), "ExtraHeavyweight");

    settings.outputColor = kOutputInColor;
    settings.outputDestination = kTicketValueUnset;
    settings.forceNewSize = false;
    write(settings);
    EXPECT_FALSE(has(key("FinishingOutputDestination")));
    EXPECT_EQ(asked("OutputBin"), "Top") << "no tray is asked for anew";
    CFDictionaryRef stock = nullptr;
    PMTicketGetCFDictionary(printer.settings, kPMTopLevel, kPMTopLevel, String(key("JobLevelStock")).get(), &stock);
    EXPECT_FALSE(CFDictionaryContainsKey(stock, CFSTR("Size")));
}

// Every item with everything that a property list can hold: what cannot be read is as good as absent, and numbers of
// another edition of the panel stay as they are.
TEST_F(PaperOutputSync, ItemsThatCannotBeReadAreAsGoodAsMissing) {
    const auto array = makeCFArray();
    CFArrayAppendValue(array.get(), CFSTR("1"));
    CFArrayAppendValue(array.get(), array.get());
    const auto dictionary = makeCFDictionary();
    for (const char* name : {"JobType", "Color", "Type", "Size", "SecurePrintPassword", "DelayedPrintTime"}) {
        CFDictionarySetValue(dictionary.get(), String(name).get(), array.get());
    }
    const std::vector<CFRef<CFTypeRef>> values = {
        CFRef<CFTypeRef>::retain(CFSTR("")),
        CFRef<CFTypeRef>::retain(CFSTR("3")),
        CFRef<CFTypeRef>::retain(kCFBooleanFalse),
        CFRef<CFTypeRef>::retain(makeCFData("\x03\0\0\0").get()),
        CFRef<CFTypeRef>::retain(makeCFNumber(std::int64_t{77777}).get()),
        CFRef<CFTypeRef>::retain(makeCFNumber(std::int64_t{1} << 40).get()),
        CFRef<CFTypeRef>::retain(makeCFNumber(2.5).get()),
        CFRef<CFTypeRef>::retain(makeCFNumber(1e300).get()),
        CFRef<CFTypeRef>::retain(array.get()),
        CFRef<CFTypeRef>::retain(dictionary.get()),
    };
    constexpr const char* kNames[] = {
        "JobLevelStock",
        "FinishingOptions",
        "FinishingOffset",
        "FinishingOffsetEnableSubset",
        "FinishingOffsetPagesPerSubset",
        "FinishingSlipSheet",
        "FinishingDuplex",
        "FinishingOutputDestination",
        "FinishingOutputColor",
        "FinishingCollateStaple",
        "JobType",
        "BookletLayout",
        "BookletDrawOutlines",
        "BookletForceNewSize",
        "BookletFoldStaple",
        "PPDDict",
    };
    constexpr std::string_view kKeptAsTheyAre[] = {
        "FinishingOptions",   "FinishingOffset",      "FinishingOffsetEnableSubset",
        "FinishingSlipSheet", "FinishingOutputColor", "FinishingOutputDestination",
    };
    for (const char* name : kNames) {
        for (std::size_t i = 0; i < values.size(); ++i) {
            const auto items = makeCFDictionary();
            CFDictionarySetValue(items.get(), CFSTR("PPDDict"), dictionary.get());
            CFDictionarySetValue(items.get(), String(key(name)).get(), values[i].get());
            PMTicketSetItems(printer.settings, items.get());
            PaperOutputSettings settings = read();
            if (std::ranges::count(kKeptAsTheyAre, std::string_view(name)) == 1 && number(key(name)) == 77777) {
                write(settings);
                EXPECT_EQ(number(key(name)), 77777) << name;
                continue;
            }
            EXPECT_EQ(described(settings), kFresh) << name << " value " << i;
            write(settings);
            EXPECT_EQ(described(read()), kFresh) << name << " value " << i;
        }
    }
    CFArrayRemoveValueAtIndex(array.get(), 1);  // itself, which would keep it for ever
}

TEST_F(PaperOutputSync, OptionsWithoutAValueStayAndThoseThatThePPDLacksAreNotWritten) {
    setNumber(key("FinishingOffset"), 2);
    set(key("JobLevelStock"), makeCFDictionary().get());
    ask("MediaColor", "Turquoise");
    ask("MediaType", "Parchment");
    ask("Duplex", "Sideways");
    ask("TRFoldOptions", "Crane");
    ask("OutputBin", "Mailbox");
    PaperOutputSettings settings = read();
    write(settings);
    EXPECT_EQ(asked("MediaColor") + " " + asked("MediaType") + " " + asked("Duplex") + " " + asked("TRFoldOptions") +
                  " " + asked("OutputBin"),
              "Turquoise Parchment Sideways Crane Mailbox");
    settings = read();
    settings.duplex = 2;
    settings.outputDestination = 1;
    settings.stock.setType(kStockTypeStandard);
    write(settings);
    EXPECT_EQ(asked("MediaColor") + " " + asked("MediaType") + " " + asked("Duplex") + " " + asked("OutputBin"),
              "Turquoise Standard DuplexNoTumble Auto")
        << "until another is chosen";
    ask("MediaColor", "Yellow");
    ask("MediaType", "Transparency");
    settings = read();
    EXPECT_EQ(settings.stock.type(), kStockTypeTransparency);
    EXPECT_EQ(settings.stock.color(), kStockColorClear) << "the type has the last word";

    PPDReleaseGlobalUIDictionary();
    scope = {CollateStaplePairs(), false, true};
    PMTicketSetItems(printer.settings, makeCFDictionary().get());
    PaperOutputSettings bare = read();
    write(bare);
    for (const char* keyword : {"MediaColor", "MediaType", "Duplex", "Collate", "StapleLocation", "TRFoldOptions",
                                "OutputBin", "JCLColorCorrection"}) {
        EXPECT_EQ(asked(keyword), "") << keyword;
    }
    EXPECT_FALSE(has(key("FinishingDuplex"))) << "without its control";
}

TEST_F(PaperOutputSync, AChoiceOfSetsEndsTheEarlierOne) {
    PaperOutputSettings settings = read();
    const auto after = [&](OSType command) {
        choose(command, &settings);
        write(settings);
        settings = read();
        return sets();
    };
    EXPECT_EQ(after(FourCharCode("C2St")), "True 2Staples None");
    EXPECT_EQ(after(FourCharCode("HPun")), "True None HolePunch");
    EXPECT_EQ(settings.foldOptions, 2);
    EXPECT_EQ(after(FourCharCode("C1St")), "True 1Staple None");
    EXPECT_EQ(after(FourCharCode("Ucol")), "False None None");
    EXPECT_EQ(after(FourCharCode("HPun")), "True None HolePunch");
    EXPECT_EQ(after(FourCharCode("Coll")), "True None None");
    // Folds and holes from elsewhere stay until the menu ends them.
    ask("TRFoldOptions", "ZTriFoldOpt");
    settings = read();
    EXPECT_EQ(after(FourCharCode("C1St")), "True 1Staple ZTriFoldOpt");
    EXPECT_EQ(after(FourCharCode("0FPn")), "True None None");
    EXPECT_EQ(settings.collateStaple, choice(FourCharCode("0FPn")));
    EXPECT_EQ(after(FourCharCode("Coll")), "True None None");
}

TEST_F(PaperOutputSync, CollationIsOneStateWithTheDialogs) {
    PaperOutputSettings settings = read();
    choose(FourCharCode("HPun"), &settings);
    ask("Collate", "True");
    write(settings);
    ask("Collate", "False");
    settings = read();
    EXPECT_EQ(settings.collateStaple, kUncollated);
    write(settings);
    EXPECT_EQ(sets(), "False None None");
    ask("Collate", "True");
    settings = read();
    EXPECT_EQ(settings.collateStaple, kCollated);
}

TEST_F(PaperOutputSync, BookletFoldsAndTheMenuTakeTurns) {
    PaperOutputSettings settings = read();
    choose(FourCharCode("HPun"), &settings);
    write(settings);
    ask("TRFoldOptions", "BookletFoldStapleOpt");
    settings = read();
    EXPECT_EQ(settings.collateStaple, kCollated) << "the fold was chosen later";
    EXPECT_EQ(settings.foldOptions, kFoldAndStapleBooklet);
    write(settings);
    EXPECT_EQ(sets(), "True None BookletFoldStapleOpt");
    setNumber(key("FinishingCollateStaple"), choice(FourCharCode("C4St")));
    settings = read();
    write(settings);
    EXPECT_EQ(sets(), "True 4Staples BookletFoldStapleOpt") << "the dialog tells that these do not go together";

    settings.booklet = true;
    SettleBooklet(false, scope.collateStaplePairs, &settings);
    EXPECT_EQ(settings.duplex, 3);
    EXPECT_EQ(ShownDuplex(settings), 2);
    choose(FourCharCode("C1St"), &settings);
    EXPECT_EQ(settings.duplex, 2);
    EXPECT_EQ(settings.foldOptions, kFoldNone);
    settings.booklet = false;
    SettleBooklet(true, scope.collateStaplePairs, &settings);
    EXPECT_EQ(settings.duplex, 2);
    settings.duplex = 1;
    SettleBooklet(false, scope.collateStaplePairs, &settings);
    EXPECT_EQ(settings.duplex, 1);
    EXPECT_EQ(ShownDuplex(settings), 1);
}

TEST_F(PaperOutputSync, TheSidesHaveThreeSources) {
    ask("Duplex", "DuplexTumble");
    EXPECT_EQ(read().duplex, 3);
    setNumber("com.apple.print.PrintSettings.PMDuplexing", 2);
    EXPECT_EQ(read().duplex, 2);
    setNumber(key("FinishingDuplex"), 1);
    EXPECT_EQ(read().duplex, 1);
    setNumber(key("FinishingDuplex"), 4);
    EXPECT_EQ(read().duplex, 2);
}

TEST_F(PaperOutputSync, WhatIsNotInstalledStaysForTheDialogToTellOf) {
    UnloadInstallableOptions();
    setNumber(key("FinishingCollateStaple"), choice(FourCharCode("C4St")));
    setNumber(key("FinishingOutputDestination"), 7);
    PaperOutputSettings settings = read();
    write(settings);
    EXPECT_EQ(sets(), "True 4Staples None");
    EXPECT_EQ(asked("OutputBin"), "Booklet");
    EXPECT_FALSE(CollateStapleChoiceOfCommand(FourCharCode("Stp1"), scope.collateStaplePairs));
    setNumber(key("FinishingOutputDestination"), kTicketValueUnset);
    EXPECT_EQ(read().outputDestination, kTicketValueUnset);
}

/// What the choices of a PPD stand for, "Collate=True Collate=False …".
std::string pairsOf(const std::string& ppd) {
    const TemporaryFolder folder;
    std::ofstream(folder / "printer.ppd") << ppd;
    const PluginSession printer(folder / "printer.ppd");
    std::string text;
    for (const PPDKeywordPair& pair : CollateStaplePairs()) {
        text += Text(pair.mainKeyword.get()) + "=" + Text(pair.option.get()) + " ";
    }
    return text;
}

TEST(CollateStaple, IsNumberedWhateverTheOrderOfThePPD) {
    std::ostringstream file;
    file << std::ifstream(kZR420).rdbuf();
    std::string ppd = file.str();
    const std::string ours = pairsOf(ppd);
    ASSERT_TRUE(ours.starts_with("Collate=True Collate=False StapleLocation=None StapleLocation=1Staple ")) << ours;
    const auto takeLine = [&](const std::string& start) {
        const std::size_t at = ppd.find(start);
        const std::string line = ppd.substr(at, ppd.find('\n', at) + 1 - at);
        ppd.erase(at, line.size());
        return line;
    };
    const auto moveBefore = [&](const std::string& start, const std::string& next) {
        const std::string line = takeLine(start);
        ppd.insert(ppd.find(next), line);
    };
    moveBefore("*Collate False/", "*Collate True/");
    moveBefore("*StapleLocation None/", "*CloseUI: *StapleLocation");
    moveBefore("*TRFoldOptions None/", "*CloseUI: *TRFoldOptions");
    EXPECT_EQ(pairsOf(ppd), ours);
    takeLine("*StapleLocation None/");
    EXPECT_TRUE(pairsOf(ppd).starts_with("Collate=True Collate=False = StapleLocation=1Staple "))
        << "collated is no staple: " << pairsOf(ppd);
    takeLine("*Collate False/");
    EXPECT_EQ(pairsOf(ppd), "");
}

TEST_F(PaperOutputSync, TheBookletIsWrittenWithItsControlOnly) {
    const auto stock = makeCFDictionary();
    CFDictionarySetValue(stock.get(), CFSTR("Size"), makeCFNumber(std::int64_t{3}).get());
    set(key("JobLevelStock"), stock.get());
    PaperOutputSettings settings = read();
    settings.booklet = true;
    scope.isBookletControlActive = false;
    write(settings);
    CFDictionaryRef written = nullptr;
    PMTicketGetCFDictionary(printer.settings, kPMTopLevel, kPMTopLevel, String(key("JobLevelStock")).get(), &written);
    EXPECT_TRUE(CFDictionaryContainsKey(written, CFSTR("Size"))) << "nobody has looked at it";
    EXPECT_FALSE(has(key("BookletLayout")));
    EXPECT_FALSE(has(key("BookletFoldStaple")));
    EXPECT_FALSE(has(key("BookletForceNewSize")));
}

TEST_F(PaperOutputSync, FaxRecordsComeAndGoWithTheTicket) {
    PaperOutputSettings settings = read();
    EXPECT_EQ(FindMissingForJob(settings), MissingForJob::nothing);
    settings.job.jobType = kJobTypeFax;
    EXPECT_EQ(FindMissingForJob(settings), MissingForJob::faxRecipients);
    MakeFaxRecords(&settings);
    EXPECT_EQ(FindMissingForJob(settings), MissingForJob::faxRecipients);
    settings.faxRecipients->append(FaxRecipientOwner(new FaxRecipient).get());
    EXPECT_EQ(FindMissingForJob(settings), MissingForJob::nothing);
    CFDictionarySetValue(settings.faxOptions.get(), kFaxCoverSheetNotesProperty, CFSTR("Call me."));
    write(settings);
    const PaperOutputSettings back = read();
    ASSERT_TRUE(back.faxRecipients);
    EXPECT_EQ(back.faxRecipients->count(), 1);
    EXPECT_EQ(CFDictionaryGetCount(back.faxOptions.get()), 1);

    // A list that is as the ticket has it is left alone, one that was changed on either side is not.
    const FaxRecipientList* list = settings.faxRecipients.get();
    ReadPaperOutputSettings(printer.settings, scope, &settings);
    EXPECT_EQ(settings.faxRecipients.get(), list);
    MakeFaxRecords(&settings);
    settings.faxRecipients->append(FaxRecipientOwner(new FaxRecipient).get());
    write(settings);
    EXPECT_EQ(read().faxRecipients->count(), 2);
    MakeFaxRecords(&settings);
    settings.faxRecipients->removeAll();
    ReadPaperOutputSettings(printer.settings, scope, &settings);
    EXPECT_EQ(settings.faxRecipients->count(), 2) << "the ticket's, since they were not written";
    set(key("FaxRecipientList"), makeCFArray().get());
    write(settings);
    EXPECT_EQ(read().faxRecipients->count(), 2);

    PMTicketReleaseItem(printer.settings, kPMTopLevel, kFaxRecipientListTicketKey);
    ReadPaperOutputSettings(printer.settings, scope, &settings);
    EXPECT_FALSE(settings.faxRecipients);
}

TEST_F(PaperOutputSync, PasscodeAndTimeOutliveOtherJobTypes) {
    PaperOutputSettings settings = read();
    settings.job.jobType = kJobTypeSecurePrint;
    EXPECT_EQ(FindMissingForJob(settings), MissingForJob::passcode);
    settings.job.passcode = CFRef<CFStringRef>::retain(CFSTR(""));
    EXPECT_EQ(FindMissingForJob(settings), MissingForJob::passcode);
    settings.job.passcode = CFRef<CFStringRef>::retain(CFSTR("1234"));
    settings.job.delayedPrintTime = 3000000000;
    EXPECT_EQ(FindMissingForJob(settings), MissingForJob::nothing);
    settings.job.jobType = kJobTypeNormal;
    write(settings);
    EXPECT_EQ(Text(read().job.passcode.get()), "1234");
    EXPECT_EQ(read().job.delayedPrintTime, 3000000000);
    PMTicketReleaseItem(printer.settings, kPMTopLevel, kJobTypeTicketKey);
    ReadPaperOutputSettings(printer.settings, scope, &settings);
    EXPECT_EQ(Text(settings.job.passcode.get()), "1234") << "known to the session";
}

TEST(ProductionPaper, ComesBackWholeAndAsTheOptionsSay) {
    const PluginSession printer(sourcePath("resources/ppd/Tavro-ZR840.ppd"));
    const auto ask = [&](const char* keyword, const char* option) {
        PPDSetMainKeyword(printer.settings, String(keyword).get(), String(option).get());
    };
    const auto asked = [&](const char* keyword) {
        CFStringRef option = nullptr;
        PPDGetMainKeywordValue(printer.settings, String(keyword).get(), &option);
        return Text(option);
    };
    const PaperOutputScope scope{};
    PaperOutputSettings settings;
    settings.stock.setColor(kStockColorCustom);
    settings.stock.setCustomColor(CFSTR("Lilac"));
    settings.stock.setType(kStockTypeOrdered);
    settings.stock.setModulus(7);
    settings.stock.setWeight(251);
    settings.stock.setSidesCoated(3);
    settings.stock.setCustomName(CFSTR("Cover"));
    for (const bool showsAll : {false, true}) {
        SetShowsStockDetails(showsAll);
        WritePaperOutputSettings(&settings, scope, printer.settings);
        PaperOutputSettings read;
        ReadPaperOutputSettings(printer.settings, scope, &read);
        EXPECT_EQ(read.stock == settings.stock, showsAll);
    }
    EXPECT_EQ(asked("MediaColor") + asked("MediaType"), "OtherOther");
    EXPECT_EQ(asked("TRMediaWeight") + asked("TRMediaCoating") + asked("TRMediaGrain"), "Custom.251GlossAny");

    ask("TRMediaWeight", "80");
    ask("TRMediaGrain", "Long");
    ask("TRMediaCoating", "Any");
    ask("MediaColor", "Blue");
    ReadPaperOutputSettings(printer.settings, scope, &settings);
    SetShowsStockDetails(false);
    EXPECT_EQ(settings.stock.weight(), 80);
    EXPECT_EQ(settings.stock.grain(), 1);
    EXPECT_EQ(settings.stock.coatingType(), 1) << "any says nothing";
    EXPECT_EQ(settings.stock.color(), 2);
    EXPECT_EQ(Text(settings.stock.customName()), "") << "it is another paper now";
}

// ---- Finishing in the PPD

class ProductionFinishing : public testing::Test {
protected:
    ProductionFinishing() { EXPECT_EQ(LoadPrinterFeatures(printer.session), noErr); }
    ~ProductionFinishing() override { UnloadPrinterFeatures(); }

    void ask(const std::string& keyword, const std::string& option) const {
        PPDSetMainKeyword(printer.settings, String(keyword).get(), String(option).get());
    }
    std::string asked(const std::vector<std::string>& keywords) const {
        std::string all;
        for (const std::string& keyword : keywords) {
            CFStringRef option = nullptr;
            PPDGetMainKeywordValue(printer.settings, String(keyword).get(), &option);
            all += (all.empty() ? "" : " ") + Text(option);
        }
        return all;
    }
    std::string asked() const { return asked({"TRStaple", "TRPunch", "TRFold", "TRBind", "TRBooklet"}); }
    std::string after(SInt32 options) {
        finishing.options = options;
        WriteFinishing(&finishing, true, printer.settings);
        return asked();
    }

    PluginBundle plugin;
    PluginSession printer{sourcePath("resources/ppd/Tavro-ZR840.ppd")};
    FinishingSettings finishing;
};

TEST_F(ProductionFinishing, ThePrintersDefaultTakesBackWhatTheMenuAskedFor) {
    EXPECT_EQ(after(0), "") << "nothing is asked for";
    EXPECT_EQ(after(FinishingValueOf({.staple = 13, .punch = 61, .halfSheetFold = 91})),
              "1StapleBL 3HolePunchT ZFoldHalfRight None None");
    EXPECT_EQ(after(40), "None None None BindLeft None");
    EXPECT_EQ(after(4), "None None None BindLeft None") << "a number of another edition";
    after(40);
    EXPECT_EQ(after(0), "None None None None None");
    // What others asked for is theirs, also what no number stands for.
    ask("TRBind", "BindLeft");
    ask("TRStaple", "1StapleTL");
    EXPECT_EQ(after(0), "1StapleTL None None BindLeft None");
    PMTicketReleaseItem(printer.settings, kPMTopLevel, kFinishingOptionsItem);
    EXPECT_EQ(ReadFinishing(printer.settings).options, 0);
}

TEST_F(ProductionFinishing, OffsetIsOneStateWithThePPD) {
    const auto read = [&] { return OffsetItem(finishing = ReadFinishing(printer.settings)); };
    const auto write = [&](SInt32 item, bool isShown = true) {
        SetOffsetItem(&finishing, item, 5);
        WriteFinishing(&finishing, isShown, printer.settings);
        return asked({"Jog"});
    };
    EXPECT_EQ(write(kOffsetItemSets), "EndOfSet");
    EXPECT_EQ(read(), kOffsetItemSets);
    ask("Jog", "None");
    EXPECT_EQ(write(kOffsetItemSets), "EndOfSet") << "a panel behind this one only writes what it knows";
    ask("Jog", "None");
    EXPECT_EQ(write(kOffsetItemSets, false), "None") << "the one in front was used";
    EXPECT_EQ(read(), kOffsetItemNone);
    ask("Jog", "EndOfSet");
    EXPECT_EQ(read(), kOffsetItemSets);
    EXPECT_EQ(write(kOffsetItemSubsets), "None") << "its controller does these";
    EXPECT_EQ(read(), kOffsetItemSubsets);
}

}  // namespace
