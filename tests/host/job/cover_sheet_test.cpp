// The cover sheet of a fax: what is read for it, and the PDF, as the tools of another library see it.
#include "host/job/cover_sheet.h"

#include "driver/instructions/read_instructions.h"
#include "jobtypes/records/fax_options.h"
#include "jobtypes/records/fax_recipient_list.h"
#include "platform/files/folders.h"
#include "platform/foundation/text.h"
#include "platform/foundation/wall_clock.h"
#include "tests/platform/files/temporary_folder.h"
#include "tests/support/cf_values.h"
#include "tests/support/places.h"
#include "watermark/records/watermark_storage.h"

#include <gtest/gtest.h>
#include <array>
#include <fstream>
#include <regex>

namespace {

std::string outputOf(const std::string& command) {
    std::string output;
    FILE* const pipe = popen((command + " 2>&1").c_str(), "r");
    std::array<char, 4096> bytes{};
    while (const std::size_t count = fread(bytes.data(), 1, bytes.size(), pipe)) {
        output.append(bytes.data(), count);
    }
    pclose(pipe);
    return output;
}

bool has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

/// A fax with a cover sheet, its options written by the plug-in's own names.
class CoverSheets : public testing::Test {
protected:
    CoverSheets() {
        setenv("XDG_DATA_HOME", folder.path().c_str(), 1);
        setWallClock([] { return std::time_t{1'000'000'000}; });
        PMTicketCreate(nullptr, kPDE_PMPrintSettingsKey, &ticket);
        CFDictionarySetValue(job.get(), CFSTR("JobType"), makeCFNumber(std::int64_t{5}).get());
        CFDictionarySetValue(options.get(), kFaxPrintCoverSheetProperty, kCFBooleanTrue);
    }
    ~CoverSheets() override {
        PMTicketReleaseAndClear(&ticket);
        setWallClock(nullptr);
        unsetenv("XDG_DATA_HOME");
    }

    void set(CFStringRef key, const std::string& text) const {
        CFDictionarySetValue(options.get(), key, makeCFString(text).get());
    }
    void set(CFStringRef key, std::int64_t number) const {
        CFDictionarySetValue(options.get(), key, makeCFNumber(number).get());
    }
    void addRecipient(const char* first, const char* last, const std::string& number) {
        auto* const recipient =
            new FaxRecipient(first != nullptr ? makeCFString(first).get() : nullptr,
                             last != nullptr ? makeCFString(last).get() : nullptr, makeCFString(number).get());
        recipients.append(recipient);
        FaxRecipientRelease(recipient);
    }
    void addImage(CFStringRef store, const std::string& path) const {
        WatermarkRecord record{};
        std::string("image").copy(record.fileName, sizeof record.fileName - 1);
        path.copy(record.filePath, sizeof record.filePath - 1);
        record.scale = 100;
        record.density = 50;
        saveWatermarkData(store, &record);
    }

    std::optional<FaxInstruction> fax() const {
        PMTicketSetCFDictionary(ticket, CFSTR("test"), CFSTR("com.tavro.print.JobType"), job.get(), kPMUnlocked);
        PMTicketSetCFDictionary(ticket, CFSTR("test"), kFaxOptionsTicketKey, options.get(), kPMUnlocked);
        const auto list = recipients.toTicket();
        PMTicketSetCFArray(ticket, CFSTR("test"), kFaxRecipientListTicketKey, list.get(), kPMUnlocked);
        const auto asked = readInstructions(ticket, 0).fax;
        return asked && asked->coverSheet ? asked : std::nullopt;
    }

    /// Draws the sheet of a fax of four pages; its text.
    std::string draw() {
        const auto asked = fax();
        if (!asked) {
            return "(no sheet)";
        }
        const CoverSheet sheet = drawCoverSheet(*asked, 4, bundle.get());
        faults = sheet.faults;
        std::ofstream(file(), std::ios::binary) << bytesOfCF(sheet.pdf.get());
        EXPECT_TRUE(has(outputOf("qpdf --check " + file()), "No syntax or stream encoding errors")) << file();
        EXPECT_TRUE(has(outputOf("pdfinfo " + file()), "Pages:           1\n"));
        return outputOf("pdftotext -layout " + file() + " -");
    }
    std::string file() const { return folder / "sheet.pdf"; }

    TemporaryFolder folder;
    CFRef<CFBundleRef> bundle =
        CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, makeFileURL(stagePath("TavroPrint.bundle"), true).get()));
    CFRef<CFMutableDictionaryRef> job = makeCFDictionary();
    CFRef<CFMutableDictionaryRef> options = makeCFDictionary();
    FaxRecipientList recipients;
    PMTicketRef ticket = 0;
    std::vector<std::string> faults;
};

}  // namespace

TEST_F(CoverSheets, AreForFaxesThatAskForOne) {
    EXPECT_TRUE(fax());
    CFDictionarySetValue(job.get(), CFSTR("JobType"), makeCFNumber(std::int64_t{6}).get());
    EXPECT_FALSE(fax());
    CFDictionarySetValue(job.get(), CFSTR("JobType"), makeCFNumber(std::int64_t{5}).get());
    set(kFaxPrintCoverSheetProperty, "yes");
    EXPECT_FALSE(fax());
    CFDictionarySetValue(options.get(), kFaxPrintCoverSheetProperty, kCFBooleanFalse);
    EXPECT_FALSE(fax());
    CFDictionaryRemoveValue(options.get(), kFaxPrintCoverSheetProperty);
    EXPECT_FALSE(fax());
    PMTicketReleaseItem(ticket, kPMTopLevel, kFaxOptionsTicketKey);
    EXPECT_FALSE(readInstructions(ticket, 0).fax->coverSheet);
}

TEST_F(CoverSheets, SayWhoSendsWhatToWhom) {
    set(kFaxSenderNameProperty, "Grace Miller");
    set(kFaxSenderOrganizationProperty, "Harbour & Sons");
    set(kFaxSenderPhoneNumberProperty, "+44 20 7946 0018");
    set(kFaxSenderFaxNumberProperty, "+44 20 7946 0019");
    set(kFaxSenderEmailAddressProperty, "grace@harbour.example");
    set(kFaxCoverLocalizedFromLabel, "Von:");
    set(kFaxCoverLocalizedPhoneLabel, "Telefon:");
    set(kFaxCoverSheetNotesProperty, "Call me.\n\nToday.");
    addRecipient("Ann", "Example", "+1 (555) 010-9942");
    addRecipient(nullptr, "Lindqvist", "");
    addRecipient(nullptr, nullptr, "5550199");
    const std::string text = draw();
    for (const char* line :
         {"To: +Ann Example +Fax: \\+1 \\(555\\) 010-9942\n", "\n +Lindqvist\n", "\n +Fax: 5550199\n",
          "Von: +Grace Miller\n +Harbour & Sons\n", "Telefon: +\\+44 20 7946 0018\n", "Fax: +\\+44 20 7946 0019\n",
          "E-mail: +grace@harbour.example\n", "Date: +.*2001\n", "Pages: +4, including this one\n",
          "Notes:\nCall me.\n+Today.\n"}) {
        EXPECT_TRUE(std::regex_search(text, std::regex(line))) << line << "\n" << text;
    }
    EXPECT_TRUE(has(outputOf("pdfinfo " + file()), "612 x 792 pts (letter)"));
    set(kFaxCoverSizeProperty, 2);
    CFDictionarySetValue(options.get(), kFaxCoverShowSenderProperty, kCFBooleanFalse);
    set(kFaxCoverShowRecipientsProperty, 1);
    const std::string less = draw();
    EXPECT_TRUE(has(outputOf("pdfinfo " + file()), "595 x 842 pts (A4)"));
    EXPECT_FALSE(has(less, "Ann") || has(less, "Grace") || has(less, "7946") || has(less, "To:")) << less;
    set(kFaxCoverShowRecipientsProperty, 3);
    set(kFaxCoverCustomRecipientTextProperty, "All subscribers");
    EXPECT_TRUE(std::regex_search(draw(), std::regex("To: +All subscribers\n")));
}

TEST_F(CoverSheets, KeepSecrets) {
    set(kFaxCreditCardProperty, "4111111111111111");
    set(kFaxDialingPrefixProperty, "9876");
    CFDictionarySetValue(job.get(), CFSTR("SecurePrintPassword"), CFSTR("8642"));
    addRecipient("Ann", "Example", "5550199");
    recipients.recipientAtIndex(0)->setMailbox(CFSTR("7531"));
    const std::string text = draw();
    EXPECT_TRUE(has(text, "5550199"));
    for (const char* secret : {"4111", "9876", "8642", "7531"}) {
        EXPECT_FALSE(has(text, secret)) << secret;
        EXPECT_FALSE(
            has(outputOf("qpdf --qdf --object-streams=disable " + file() + " - | strings"), std::string("(") + secret));
    }
}

TEST_F(CoverSheets, ShrinkNotesAndSayWhatIsCut) {
    const auto notes = [](int sentences) {
        std::string text;
        for (int i = 1; i <= sentences; ++i) {
            text +=
                "Sentence number " + std::to_string(i) + " of a long story that takes its time to come to its end. ";
        }
        return text;
    };
    addRecipient("Ann", "Example", "5550199");
    for (const auto& [sentences, fits] : {std::pair{20, true}, {60, true}, {400, false}, {20'000, false}}) {
        set(kFaxCoverSheetNotesProperty, notes(sentences));
        const std::string text = draw();
        EXPECT_TRUE(has(text, "Sentence number 1 of")) << sentences;
        EXPECT_EQ(has(text, "number " + std::to_string(sentences) + " of"), fits) << sentences;
        EXPECT_EQ(has(text, "did not fit and was left out"), !fits) << sentences;
    }
    set(kFaxCoverSheetNotesProperty, notes(400));
    set(kFaxCoverShowRecipientsProperty, 3);
    set(kFaxCoverCustomRecipientTextProperty, "Dear all, " + notes(400));
    const std::string both = draw();
    const std::size_t first = both.find("did not fit and was left out");
    ASSERT_NE(first, std::string::npos);
    EXPECT_NE(both.find("did not fit and was left out", first + 1), std::string::npos) << "each text says it";
    EXPECT_TRUE(has(both, "Notes:\nSentence number 1 of")) << both;
}

TEST_F(CoverSheets, CountTheRecipientsThatDoNotFit) {
    for (int i = 1; i <= 1000; ++i) {
        addRecipient("Person", ("P" + std::to_string(i)).c_str(), "555" + std::to_string(i));
    }
    for (const bool hasNotes : {false, true}) {
        if (hasNotes) {
            set(kFaxCoverSheetNotesProperty, std::string(5'000, 'x') + " end");
        }
        const std::string text = draw();
        const std::regex row("Person P[0-9]+ ");
        const auto rows = std::distance(std::sregex_iterator(text.begin(), text.end(), row), {});
        EXPECT_GT(rows, 10);
        EXPECT_TRUE(has(text, "and " + std::to_string(1000 - rows) + " more")) << rows << text;
        EXPECT_TRUE(has(text, "Pages:"));
    }
    // One that does not fit takes the place of no line.
    recipients.removeAll();
    addRecipient("Ann", "Example", "5550199");
    EXPECT_FALSE(has(draw(), " more"));
}

TEST_F(CoverSheets, KeepEveryFieldToItsPlace) {
    const std::string much(10'000, 'W');
    for (const CFStringRef key :
         {kFaxSenderNameProperty, kFaxSenderOrganizationProperty, kFaxSenderPhoneNumberProperty,
          kFaxSenderFaxNumberProperty, kFaxSenderEmailAddressProperty, kFaxCoverLocalizedToLabel,
          kFaxCoverLocalizedFromLabel, kFaxCoverSheetNotesProperty}) {
        set(key, much);
    }
    for (int i = 0; i < 3; ++i) {
        addRecipient(much.c_str(), "\x01\x1B\t\r\n", much);
    }
    const std::string text = draw();
    EXPECT_TRUE(has(text, "Pages:"));
    EXPECT_TRUE(has(text, "did not fit"));
    EXPECT_TRUE(has(text, "W…")) << "what is cut says so";
    EXPECT_GT(std::count(text.begin(), text.end(), '\n'), 20);
    EXPECT_EQ(text.find('\x1B'), std::string::npos);
}

TEST_F(CoverSheets, WriteEveryScriptWithItsFonts) {
    addRecipient("Łukasz", "Żółć", "+48 22 555 01 00");
    // No character that is a radical too: of two codes with one glyph, the PDF tells either.
    addRecipient("佐藤", "太郎", "+81 3 5550 1234");
    set(kFaxSenderNameProperty, "कमल");
    set(kFaxCoverSheetNotesProperty, "Ελληνικά, Кириллица\n한국어\nעברית");
    const std::string text = draw();
    for (const char* word : {"Łukasz Żółć", "佐藤 太郎", "कमल", "Ελληνικά, Кириллица", "한국어"}) {
        EXPECT_TRUE(has(text, word)) << word << "\n" << text;
    }
    std::istringstream fonts(outputOf("pdffonts " + file()));
    std::string line;
    std::getline(fonts, line);
    const std::size_t column = line.find("emb");
    std::getline(fonts, line);
    int count = 0;
    for (; std::getline(fonts, line); ++count) {
        EXPECT_EQ(line.substr(column, 3), "yes") << line;
    }
    EXPECT_GE(count, 3);

    // Labels that run from right to left turn the form around.
    const auto placeOf = [this](const std::string& word) {
        const std::string boxes = outputOf("pdftotext -bbox " + file() + " -");
        std::smatch found;
        return std::regex_search(boxes, found, std::regex("xMin=\"([0-9.]+)\"[^>]*>" + word + "<"))
                   ? std::stod(found[1])
                   : -1.0;
    };
    set(kFaxSenderNameProperty, "Grace");
    draw();
    const double leftToRight = placeOf("Grace");
    set(kFaxCoverLocalizedFromLabel, "من:");
    draw();
    EXPECT_GT(leftToRight, 0);
    EXPECT_GT(placeOf("Grace"), 306) << "in the right half";
    EXPECT_LT(leftToRight, 306);
}

TEST_F(CoverSheets, DoWithoutPicturesThatCannotBeRead) {
    using namespace std::string_literals;
    const auto add = [this](const char* name, const std::string& bytes) {
        std::ofstream(folder / name, std::ios::binary) << bytes;
        return folder / name;
    };
    // The head of a PNG of 100,000 by 100,000 pixels.
    const std::string huge = add(
        "huge.png",
        "\x89PNG\r\n\x1A\n\0\0\0\x0D\x49HDR\0\x01\x86\xA0\0\x01\x86\xA0\x08\0\0\0\0\x8D\x39\x54\x14\0\0\0\x10IDAT"s);
    set(kFaxCoverSheetNotesProperty, "Still here.");
    set(kFaxCoverImageNameProperty, "image");
    EXPECT_TRUE(has(draw(), "Still here."));
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_EQ(faults[0], "image: is not stored");
    for (const std::string& path : {folder / "missing.png", add("text.png", "no picture"), huge, folder / "",
                                    std::string("/dev/zero"), add("cut.pgm", "P5 100 100 255\n")}) {
        addImage(CFSTR("com.tavro.printing.faximage.plist"), path);
        EXPECT_TRUE(has(draw(), "Still here.")) << path;
        ASSERT_EQ(faults.size(), 1U) << path;
        EXPECT_TRUE(faults[0].starts_with(path + ": ")) << faults[0];
    }
    addImage(CFSTR("com.tavro.printing.faximage.plist"), huge);
    draw();
    EXPECT_EQ(faults, std::vector<std::string>{huge + ": is too large: 100000 by 100000 pixels"});
    CFDictionaryRemoveValue(options.get(), kFaxCoverImageNameProperty);
    draw();
    EXPECT_TRUE(faults.empty());
}

TEST_F(CoverSheets, ShowStoredPicturesAndWatermarks) {
    // A picture of two pixels, and a watermark of the same in less ink behind it.
    std::ofstream(folder / "two.pgm") << "P2 2 1 255 0 100\n";
    addImage(CFSTR("com.tavro.printing.faximage.plist"), folder / "two.pgm");
    set(kFaxCoverImageNameProperty, "image");
    EXPECT_TRUE(has(draw(), "Fax")) << "the title";
    EXPECT_TRUE(faults.empty());
    EXPECT_TRUE(
        std::regex_search(outputOf("pdfimages -list " + file()), std::regex("image +2 +1 +[a-z]+ +[1-4] +8 +image")))
        << outputOf("pdfimages -list " + file());

    WatermarkRecord record{};
    std::string("Confidential").copy(record.text, sizeof record.text - 1);
    record.kind = kTextWatermark;
    record.fontSize = 72;
    record.scale = 100;
    record.density = 25;
    saveWatermarkData(CFSTR("com.tavro.printing.watermarks.plist"), &record);
    set(kFaxCoverWatermarkNameProperty, "Confidential");
    EXPECT_FALSE(has(draw(), "Confidential"));
    CFDictionarySetValue(options.get(), kFaxCoverShowWatermarkProperty, kCFBooleanTrue);
    EXPECT_TRUE(has(draw(), "Confidential"));
    EXPECT_FALSE(has(outputOf("qpdf --qdf " + file() + " -"), "/ca 0")) << "nothing is transparent";
    set(kFaxCoverWatermarkNameProperty, "Gone");
    draw();
    EXPECT_EQ(faults, std::vector<std::string>{"Gone: is not stored"});
}
