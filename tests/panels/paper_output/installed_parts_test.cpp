// What the printers offer with all that can be installed: no item that leads nowhere.

#include "core/features/installable_options.h"
#include "core/features/printer_features.h"
#include "model/records/booklet_fold.h"
#include "model/settings/ppd_access.h"
#include "panels/paper_output/finishing_menu.h"
#include "panels/paper_output/finishing_offset_dialog.h"
#include "panels/paper_output/paper_output_sync.h"
#include "tests/panels/plugin_fixture.h"
#include "tests/support/cf_values.h"

#include <algorithm>
#include <map>

namespace {

using Options = std::map<std::string, std::string>;

class InstalledParts : public NibWindowTest {
protected:
    void SetUp() override {
        open("<layout class=\"QVBoxLayout\"><item>" +
             widget("QToolButton", 1, property("popupMode", "enum", "QToolButton::InstantPopup")) + "</item><item>" +
             widget("QComboBox", 2) + "</item></layout>");
    }

    /// Tries everything with each two of the parts that can be installed; the others are as the PPD has them.
    void tryAll(const std::string& model) {
        const std::string ppd = sourcePath("resources/ppd/Tavro-" + model + ".ppd");
        const PluginSession opened(ppd);
        printer_ = &opened;
        ASSERT_EQ(PMPrinterCreateFromPPDFile(makeCFURL(ppd).get(), &maker_), noErr);
        std::vector<std::pair<std::string, std::string>> parts;
        for (int n = 1; n <= 25; ++n) {
            const std::string keyword = "Option" + std::to_string(n);
            const std::string counted = static_cast<char>(keyword.size()) + keyword;
            UInt32 index = 0;
            if (ppdGetMainIndex(opened.context, reinterpret_cast<ConstPPDString>(counted.data()), &index) != noErr) {
                continue;
            }
            for (UInt32 i = 0; i < ppdCountUIOptions(opened.context, index); ++i) {
                PPDUIOption option{};
                ConstPPDString text = nullptr;
                ppdGetIndUIOption(opened.context, index, i, &option);
                ASSERT_EQ(ppdGetOptionString(opened.context, index, option.optionIndex, &text), noErr);
                parts.emplace_back(keyword, std::string(reinterpret_cast<const char*>(text) + 1, text[0]));
            }
        }
        ASSERT_GT(parts.size(), 9u);
        for (std::size_t i = 0; i < parts.size(); ++i) {
            for (std::size_t j = i + 1; j < parts.size(); ++j) {
                if (parts[i].first != parts[j].first) {
                    tryWith({parts[i], parts[j]});
                }
            }
        }
        PMPrinterRelease(maker_);
    }

private:
    void tryWith(const Options& installed) {
        std::string names;
        const auto dictionary = makeCFDictionary();
        for (const auto& [keyword, option] : installed) {
            CFDictionarySetValue(dictionary.get(), String(keyword).get(), String(option).get());
            names += keyword + "=" + option + " ";
        }
        SCOPED_TRACE(names);
        ASSERT_EQ(PMPrinterWriteInfoTicket(maker_, dictionary.get(), printer_->info), noErr);
        ASSERT_EQ(LoadPrinterFeatures(printer_->session), noErr);
        // The punch of the office models sits in a finisher: a queue that says otherwise has been set up wrong, and the
        // dialog tells of it.
        if (!getInstalledFeature(CFSTR("GenericPunchKey")) || getInstalledFeature(CFSTR("SingleStapleKey"))) {
            scope_ = {CollateStaplePairs(), true, true};
            tryFinishing();
            trySets();
            tryTrays();
        }
        UnloadPrinterFeatures();
    }

    void tryFinishing() {
        PopulateFinishingMenu(GetControlPopupMenuHandle(control(1)), plugin_.bundle());
        const bool hasOptions = PPDGetGlobalOptions(CFSTR("TRStaple")) != nullptr;
        for (const MenuItemContent& item : Items(control(1))) {
            SCOPED_TRACE(item.text);
            EXPECT_NE(item.text, "STRING NOT FOUND");
            if (item.command == kOffsetCommand) {
                const auto choose = [](auto& settings) { SetOffsetItem(&settings.finishing, kOffsetItemSets, 0); };
                EXPECT_EQ(chosen(choose)["Jog"], "EndOfSet");
            } else if (item.command == kBookletCreationCommand) {
                for (const SInt32 fold : {kFoldBooklet, kFoldAndStapleBooklet}) {
                    EXPECT_NE(chosen([=](auto& settings) {
                                  settings.booklet = true;
                                  settings.foldOptions = fold;
                              })["TRFoldOptions"],
                              "None");
                }
            } else if (item.command == kFinishingMultiple) {
                tryTogether();
            } else {
                const auto choices = InstalledFinishingChoices(item.command);
                EXPECT_EQ(choices.empty(), item.command == 0 || item.command == kSlipSheetsCommand);
                for (const FinishingChoice* choice : choices) {
                    tryValue(choice->value);
                }
            }
        }
        EXPECT_TRUE(hasOptions || CountMenuItems(GetControlPopupMenuHandle(control(1))) == 4);
    }

    /// Each choice of a part with one of the others: the PPD does not tell them apart.
    void tryTogether() {
        const auto of = [](FinishingPart part) {
            std::vector<SInt32> values{0};
            for (const FinishingChoice* choice : InstalledFinishingChoices(part)) {
                values.push_back(choice->value);
            }
            return values;
        };
        const auto staples = of(FinishingPart::staple);
        const auto holes = of(FinishingPart::punch);
        for (const SInt32 staple : {staples.front(), staples.back()}) {
            for (const SInt32 punch : {holes.front(), holes.back()}) {
                for (const SInt32 fold : of(FinishingPart::halfSheetFold)) {
                    tryValue(FinishingValueOf({staple, punch, fold}));
                }
            }
        }
    }

    void tryValue(SInt32 value) {
        const Options options = chosen([=](auto& settings) { settings.finishing.options = value; });
        std::vector<std::string> asked;
        for (const char* const keyword : kFinishingMainKeywords) {
            const auto option = options.find(keyword);
            if (option != options.end() && option->second != "None") {
                asked.push_back(option->second);
            }
        }
        EXPECT_EQ(asked.size(), value > kFinishingValueNone ? FinishingsOf(value).size() : 0) << value;
        // What it is in the PPD is enough to know it by.
        PMTicketReleaseItem(printer_->settings, kPMTopLevel, kFinishingOptionsItem);
        EXPECT_EQ(read().finishing.options, value == kFinishingValueNone ? kFinishingValueDefault : value);
    }

    void trySets() {
        PopulateCollateStapleMenu(GetControlPopupMenuHandle(control(2)), plugin_.bundle(), scope_.collateStaplePairs);
        for (const MenuItemContent& item : Items(control(2))) {
            SCOPED_TRACE(item.text);
            EXPECT_NE(item.text, "STRING NOT FOUND");
            EXPECT_TRUE(CollateStapleChoiceOfCommand(item.command, scope_.collateStaplePairs))
                << "its command is known";
            const auto choice = static_cast<SInt32>(item.refCon);
            const Options options =
                chosen([&](auto& settings) { ChooseCollateStaple(choice, scope_.collateStaplePairs, &settings); });
            const PPDKeywordPair& pair = scope_.collateStaplePairs[choice > kCollated ? static_cast<std::size_t>(choice)
                                                                   : choice == kCollated ? 0U
                                                                                         : 1U];
            EXPECT_EQ(options.at(Text(pair.mainKeyword.get())), Text(pair.option.get()));
            EXPECT_EQ(read().collateStaple, choice);
        }
    }

    void tryTrays() {
        PopulateOutputDestinationPopup(control(2), plugin_.bundle());
        const auto trays = Items(control(2));
        EXPECT_GT(trays.size(), 1u);
        for (const MenuItemContent& tray : trays) {
            SCOPED_TRACE(tray.text);
            EXPECT_EQ(std::ranges::count(trays, tray.text, &MenuItemContent::text), 1) << "of that name";
            const auto destination = static_cast<SInt32>(tray.refCon);
            chosen([=](auto& settings) { settings.outputDestination = destination; });
            EXPECT_EQ(read().outputDestination, destination);
        }
    }

    PaperOutputSettings read() const {
        PaperOutputSettings settings;
        ReadPaperOutputSettings(printer_->settings, scope_, &settings);
        return settings;
    }

    /// The PPD's options of a ticket with this choice alone: all of them are there and go with what is installed.
    template <typename Choose>
    Options chosen(Choose choose) {
        PMTicketSetItems(printer_->settings, makeCFDictionary().get());
        PaperOutputSettings settings = read();
        choose(settings);
        WritePaperOutputSettings(&settings, scope_, printer_->settings);
        CFMutableDictionaryRef pairs = nullptr;
        PMTicketGetPPDDict(printer_->settings, kPMTopLevel, &pairs);
        Options options;
        for (const auto& [keyword, option] : stringsIn(pairs)) {
            options[keyword] = option;
            EXPECT_GE(FindPPDKeyPairsMatch(PPDGetGlobalOptions(String(keyword).get()), String(keyword).get(),
                                           String(option).get()),
                      0)
                << keyword << " " << option;
        }
        CFArrayRef conflicts = nullptr;
        PMPrinterCopyConflicts(maker_, printer_->settings, printer_->info, &conflicts);
        EXPECT_EQ(CFArrayGetCount(CFRef<CFArrayRef>::adopt(conflicts).get()), 0);
        return options;
    }

    static Options stringsIn(CFDictionaryRef dictionary) {
        const auto count = static_cast<std::size_t>(CFDictionaryGetCount(dictionary));
        std::vector<const void*> keys(count);
        std::vector<const void*> values(count);
        CFDictionaryGetKeysAndValues(dictionary, keys.data(), values.data());
        Options strings;
        for (std::size_t i = 0; i < count; ++i) {
            strings[Text(static_cast<CFStringRef>(keys[i]))] = Text(static_cast<CFStringRef>(values[i]));
        }
        return strings;
    }

    PluginBundle plugin_;
    const PluginSession* printer_ = nullptr;
    PMPrinter maker_ = nullptr;
    PaperOutputScope scope_;
};

TEST_F(InstalledParts, OfferNothingThatThePrinterCannotDo) {
    for (const char* const model : {"ZR410", "ZR420", "ZR840"}) {
        SCOPED_TRACE(model);
        tryAll(model);
    }
}

}  // namespace
