#include "platform/printing/CompiledPPD.h"
#include "platform/printing/ppd_languages.h"
#include "tests/platform/printing/printing_fixture.h"

#include <gtest/gtest.h>

#include <vector>

#include <sys/stat.h>

namespace {

const std::string kHeader = R"ppd(*PPD-Adobe: "4.3"
*FormatVersion: "4.3"
*FileVersion: "1.0"
*LanguageVersion: English
*LanguageEncoding: ISOLatin1
*PCFileName: "TEST.PPD"
*Manufacturer: "Tavro"
*Product: "(Test)"
*ModelName: "Test"
*NickName: "Test"
*ShortNickName: "Test"
*PSVersion: "(3010) 0"
)ppd";

using Bytes = std::basic_string<UInt8>;

Bytes counted(const std::string& text) {
    return Bytes(1, static_cast<UInt8>(text.size())) + Bytes(text.begin(), text.end());
}

std::string uncounted(ConstPPDString string) {
    return {reinterpret_cast<const char*>(string + 1), string[0]};
}

/// The compiled PPD of a file, by keywords.
class Compiled {
public:
    explicit Compiled(const std::filesystem::path& ppd, CFDictionaryRef installed = nullptr) {
        const Printer printer(ppd);
        if (printer.status() == noErr) {
            PMPrinterWriteInfoTicket(printer.get(), installed, info.get());
            status = ppdOpenCompiledPPDFromTicket(info.get(), &context);
        }
    }
    ~Compiled() { ppdCloseCompiledPPDFromTicket(context); }
    Compiled(const Compiled&) = delete;
    Compiled& operator=(const Compiled&) = delete;

    UInt32 main(const std::string& keyword) const {
        UInt32 index = 9999;
        ppdGetMainIndex(context, counted(keyword).c_str(), &index);
        return index;
    }
    std::string option(const std::string& keyword, UInt32 index) const {
        ConstPPDString string = nullptr;
        return ppdGetOptionString(context, main(keyword), index, &string) == noErr ? uncounted(string) : "(none)";
    }
    std::string alias(const std::string& keyword, UInt32 index) const {
        ConstPPDString string = nullptr;
        return ppdGetOptionAlias(context, main(keyword), index, &string) == noErr ? uncounted(string) : "(none)";
    }
    std::string chosen(const std::string& keyword) const {
        std::string all;
        for (UInt32 i = 0; i < ppdCountUIOptions(context, main(keyword)); ++i) {
            PPDUIOption record{};
            EXPECT_EQ(ppdGetIndUIOption(context, main(keyword), i, &record), noErr);
            all += record.isChosen ? option(keyword, record.optionIndex) + " " : "";
        }
        return all;
    }

    Ticket info;
    PPDContext context = nullptr;
    OSStatus status = fnfErr;
};

std::string pickOne(const std::string& keyword, const std::string& defaultLine, const std::string& choices) {
    return "*OpenUI *" + keyword + "/Text: PickOne\n" + defaultLine + choices + "*CloseUI: *" + keyword + "\n";
}

TEST(CompiledPPD, ReadsTheSample) {
    const Compiled ppd(kZR420);
    ASSERT_EQ(ppd.status, noErr);
    EXPECT_EQ(ppd.option("Duplex", 0), "None");
    EXPECT_EQ(ppd.alias("Duplex", 2), "2-Sided, Flip on Short Edge");
    EXPECT_EQ(ppd.chosen("Option2"), "HCSS_BK ");
    UInt32 type = 9;
    EXPECT_EQ(ppdGetUIKeyType(ppd.context, ppd.main("Collate"), &type), noErr);
    EXPECT_EQ(type, kPPDUIPickOne);
    EXPECT_EQ(ppdGetUIKeyType(ppd.context, ppd.main("Option3"), &type), noErr);
    EXPECT_EQ(type, kPPDUIBoolean);
    PPDUIHeader header{};
    ASSERT_EQ(ppdGetUIHeader(ppd.context, ppd.main("TRImageQuality"), &header), noErr);
    EXPECT_EQ(ppd.option("TRImageQuality", static_cast<UInt32>(header.defaultOptionIndex)), "Normal");

    PPDUIOption record{};
    EXPECT_EQ(ppdGetIndUIOption(ppd.context, ppd.main("Option1"), 0, &record), noErr);
    EXPECT_EQ(record.isInstallable, 1);
    EXPECT_EQ(ppdGetIndUIOption(ppd.context, ppd.main("Duplex"), 0, &record), noErr);
    EXPECT_EQ(record.isInstallable, 0);

    char maker[256];
    EXPECT_EQ(ppdGetInvocationString(ppd.context, counted("Manufacturer").c_str(), maker, sizeof maker), noErr);
    EXPECT_STREQ(maker, "Tavro");
    EXPECT_EQ(ppdGetInvocationString(ppd.context, counted("Manufacturer").c_str(), maker, 4), noErr);
    EXPECT_STREQ(maker, "Tav");
    EXPECT_EQ(ppdGetInvocationString(ppd.context, counted("PageSize").c_str(), maker, sizeof maker), kPPDNotFound);
}

TEST(CompiledPPD, MarksInstalledOptionsOfTheTicket) {
    const auto installed = makeDictionary();
    set(installed.get(), "Option2", "HCSS");
    set(installed.get(), "Option1", "Sometimes");    // no such choice
    set(installed.get(), "Option99", "True");        // no such option
    set(installed.get(), "Duplex", "DuplexTumble");  // not installed, but chosen for a job
    CFDictionarySetValue(installed.get(), CFSTR("Option3"), cf(1).get());
    const Compiled ppd(kZR420, installed.get());
    EXPECT_EQ(ppd.chosen("Option2"), "HCSS_BK ");
    EXPECT_EQ(setInstallableOptions(ppd.context, ppd.info.get()), noErr);
    EXPECT_EQ(ppd.chosen("Option2"), "HCSS ");
    EXPECT_EQ(ppd.chosen("Option1"), "True ");
    EXPECT_EQ(ppd.chosen("Option3"), "True ");
    EXPECT_EQ(ppd.chosen("Duplex"), "None ");
    EXPECT_EQ(setInstallableOptions(ppd.context, 0), kPMInvalidTicket);
}

TEST(CompiledPPD, HandsOutMacRomanWithHexStillToDecode) {
    const TemporaryFolder folder;
    const auto file =
        folder.add("nasty.ppd", kHeader + "*OpenGroup: Late/Late\n" + pickOne("Grouped", "", "*Grouped A/A: \"\"\n") +
                                    "*CloseGroup: Late\n" +
                                    pickOne("Nasty", "*DefaultNasty: Gone\n",
                                            "*Nasty Accent/Caf\xE9 \xD7 \xFE: \"\"\n"  // ISO Latin 1
                                            "*Nasty Hex/a<3C>4<3E> b<3C>z: \"\"\n"     // the library decodes: a<4> b<z
                                            "*Nasty K<4>/Plain<20>Blank: \"\"\n"));
    const Compiled ppd(file);
    ASSERT_EQ(ppd.status, noErr);
    EXPECT_EQ(ppd.alias("Nasty", 0), "Caf\x8E x th");
    EXPECT_EQ(ppd.alias("Nasty", 1), "a<3C>4> b<z");
    EXPECT_EQ(ppd.alias("Nasty", 2), "Plain Blank");
    EXPECT_EQ(ppd.option("Nasty", 2), "K<3C>4>");
    PPDUIHeader header{};
    ASSERT_EQ(ppdGetUIHeader(ppd.context, ppd.main("Nasty"), &header), noErr);
    EXPECT_EQ(header.defaultOptionIndex, -1);
    EXPECT_EQ(ppd.chosen("Nasty"), "");
    EXPECT_EQ(ppd.main("Nasty"), 0U);  // outside any group: before the others
    EXPECT_EQ(ppd.main("Grouped"), 1U);
    char value[10];
    EXPECT_EQ(ppdGetInvocationString(ppd.context, counted("NoSuch").c_str(), value, sizeof value), kPPDNotFound);
}

TEST(CompiledPPD, KeepsLettersThatMacRomanCannotSpellInUTF8) {
    const TemporaryFolder folder;
    std::string header = kHeader;
    header.replace(header.find("ISOLatin1"), 9, "UTF-8");
    const Compiled ppd(folder.add("letters.ppd", header + pickOne("Letters", "",
                                                                  "*Letters Kana/紙ガ <3C>4: \"\"\n"
                                                                  "*Letters Hangul/한국어: \"\"\n"
                                                                  "*Letters Era/㍻: \"\"\n"
                                                                  "*Letters Greek/Ω π: \"\"\n")));
    ASSERT_EQ(ppd.status, noErr);
    EXPECT_EQ(ppd.alias("Letters", 0), std::string(kPPDTextIsUTF8) + "紙ガ <3C>4");
    EXPECT_EQ(ppd.alias("Letters", 1), std::string(kPPDTextIsUTF8) + "한국어");
    EXPECT_EQ(ppd.alias("Letters", 2), std::string(kPPDTextIsUTF8) + "㍻");
    EXPECT_EQ(ppd.alias("Letters", 3), "\xBD \xB9");
    EXPECT_EQ(ppd.alias("Letters", 0), std::string(kPPDTextIsUTF8) + "紙ガ <3C>4");  // as before
}

/// Lines keep their numbers, and quoted code stays what it is.
TEST(CompiledPPD, HasTheLinesOfOneLanguage) {
    const std::string ppd =
        "*cupsLanguages: \"fr zh_CN\"\r\n"
        "*Color Red/Red: \"\n*fr.Color Red/code: of two lines\"\n"
        "*% a remark: \"\n"
        "*fr.Color Red/Rouge: \"\"\r\n"
        "*zh_CN.Color Red/\u7EA2: \"\"\n"
        "*zh_CN.Code: \"\nmore of it\"\n"
        "*frColor.Red: \"\"";
    const auto in = [&ppd](const QStringList& languages) { return ppdInLanguage(ppd, languages).text; };
    const std::string before = ppd.substr(0, ppd.find("*fr.Color Red/Rouge"));
    EXPECT_EQ(in({"fr-CA", "fr_CA", "fr", "en"}), before + "*u.Color Red/Rouge: \"\"\r\n\n\n\n*frColor.Red: \"\"");
    EXPECT_EQ(in({"zh_CN", "fr"}),
              before + "\r\n*u.Color Red/\u7EA2: \"\"\n*u.Code: \"\nmore of it\"\n*frColor.Red: \"\"");
    EXPECT_EQ(in({"de"}), before + "\r\n\n\n\n*frColor.Red: \"\"");
    EXPECT_FALSE(ppdInLanguage(ppd, {"de"}).isTranslated);
    EXPECT_TRUE(ppdInLanguage(ppd, {"de", "fr"}).isTranslated);
    EXPECT_EQ(ppdInLanguage({}, {"de"}).text, "");
}

TEST(CompiledPPD, ListsTheCustomSizeAsAnOption) {
    const Compiled ppd(kZR420);
    const UInt32 sizes = ppdCountUIOptions(ppd.context, ppd.main("PageSize"));
    EXPECT_EQ(ppd.option("PageSize", sizes - 1), "Custom");
}

TEST(CompiledPPD, AnswersOutOfRangeAndNullWithErrors) {
    const Compiled ppd(kZR410);
    const UInt32 count = ppdCountUIHeaders(ppd.context);
    PPDUIHeader header{};
    PPDUIOption record{};
    ConstPPDString string = nullptr;
    UInt32 number = 0;
    EXPECT_EQ(ppdGetIndUIHeader(ppd.context, count, &header), kPPDNotFound);
    EXPECT_EQ(ppdGetMainString(ppd.context, count, &string), kPPDNotFound);
    EXPECT_EQ(ppdGetUIKeyType(ppd.context, count, &number), kPPDNotFound);
    EXPECT_EQ(ppdCountUIOptions(ppd.context, count), 0U);
    EXPECT_EQ(ppdGetIndUIOption(ppd.context, 0, 9999, &record), kPPDNotFound);
    EXPECT_EQ(ppdGetOptionString(ppd.context, 0, 9999, &string), kPPDNotFound);
    EXPECT_EQ(ppdGetOptionAlias(ppd.context, count, 0, &string), kPPDNotFound);
    EXPECT_EQ(ppdGetMainIndex(ppd.context, counted("").c_str(), &number), kPPDNotFound);
    EXPECT_EQ(ppdGetMainIndex(nullptr, counted("PageSize").c_str(), &number), paramErr);
    EXPECT_EQ(ppdCountUIHeaders(nullptr), 0U);
    EXPECT_EQ(setInstallableOptions(nullptr, ppd.info.get()), paramErr);
    PPDContext context = nullptr;
    const Ticket empty;
    EXPECT_EQ(ppdOpenCompiledPPDFromTicket(empty.get(), &context), fnfErr);
}

// Whatever the file, there is a printer or one line that names the file.
TEST(CompiledPPD, SurvivesHostileFiles) {
    const TemporaryFolder folder;
    const std::string sample = readFile(kZR420);
    std::vector<std::filesystem::path> files{folder / "missing.ppd", folder / "folder", folder / "pipe"};
    std::filesystem::create_directory(folder / "folder");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    std::string binary = "*PPD-Adobe: \"4.3\"\n";
    for (unsigned i = 0; i < 100000; ++i) {
        binary += static_cast<char>((i * 2654435761U) >> 24);
    }
    files.push_back(folder.add("binary.ppd", binary));
    files.push_back(folder.add("empty.ppd", ""));
    files.push_back(folder.add("gzip.ppd", "\x1F\x8B\x08"));
    files.push_back(folder.add("nul.ppd", std::string(5000, '\0')));
    files.push_back(folder.add("large.ppd", kHeader + std::string(9 * 1024 * 1024, '*')));
    files.push_back(folder.add("long-line.ppd", kHeader + "*X: \"" + std::string(1000000, 'a')));
    files.push_back(
        folder.add("long-names.ppd", kHeader + pickOne(std::string(500, 'K'), "",
                                                       "*" + std::string(500, 'K') + " " + std::string(500, 'c') + "/" +
                                                           std::string(5000, 't') + ": \"\"\n")));
    for (std::size_t length = 0; length < sample.size(); length += 1511) {
        files.push_back(folder.add("cut" + std::to_string(length) + ".ppd", sample.substr(0, length)));
    }
    std::size_t opened = 0;
    for (const auto& file : files) {
        const Compiled ppd(file);
        if (ppd.status == noErr) {
            ++opened;
            for (UInt32 main = 0; main < ppdCountUIHeaders(ppd.context); ++main) {
                for (UInt32 i = 0; i < ppdCountUIOptions(ppd.context, main); ++i) {
                    ConstPPDString string = nullptr;
                    EXPECT_EQ(ppdGetOptionAlias(ppd.context, main, i, &string), noErr) << file;
                }
            }
            continue;
        }
        const Printer printer(file);
        EXPECT_EQ(printer.status(), kPMUnusableDescription) << file;
        const std::string reason = text(PMGetLastErrorText());
        EXPECT_TRUE(reason.starts_with(file.string() + ": ")) << reason;
        EXPECT_EQ(reason.find('\n'), std::string::npos) << reason;
    }
    EXPECT_GT(opened, 0U);
    EXPECT_LT(opened, files.size());
}

}  // namespace
