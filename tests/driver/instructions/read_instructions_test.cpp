// What is read from tickets: items by their names in settings files, whoever wrote them.

#include "driver/instructions/page_options.h"
#include "platform/printing/PMPrinter.h"
#include "tests/driver/instructions/settings_maker.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

const std::string kTavro = "com.tavro.print.";
const std::string kApple = "com.apple.print.PrintSettings.";

JobInstructions read(const std::string& items, const std::string& formatItems = {}) {
    const TestTicket settings(items);
    const TestTicket format(formatItems);
    EXPECT_TRUE(settings.isRead() && format.isRead()) << items;
    return readInstructions(settings.get(), format.get());
}

std::string options(const std::string& entries) {
    return dict("PPDDict", entries);
}

}  // namespace

TEST(ReadInstructions, NothingIsAPlainJob) {
    EXPECT_EQ(read(""), JobInstructions());
}

TEST(ReadInstructions, ThePagesAndTheirPaper) {
    JobInstructions expected;
    expected.pages = {{1, 3}, {7, 7}, {10, INT64_MAX}};
    expected.copies = 3;
    expected.isCollated = false;
    expected.orientation = Orientation::reverseLandscape;
    expected.paper = {.size = "A4", .color = "Blue", .type = "CardStock", .weight = 160, .name = "Ours"};
    expected.sides = Sides::shortEdge;
    expected.outputColor = OutputColor::blackAndWhite;
    expected.isNegative = true;
    expected.isRotated = true;
    expected.watermark = {"DRAFT", true, true};
    EXPECT_EQ(read(text(kApple + "PMPageRange", "1-3,7,10-") + number(kApple + "PMCopies", 3) +
                       options(text("Collate", "False") + text("PageSize", "A4") + text("MediaColor", "Blue") +
                               text("MediaType", "CardStock") + text("Duplex", "DuplexTumble")) +
                       dict(kTavro + "JobLevelStock",
                            number("Color", 1) + number("Weight", 160) + text("CustomName", "Ours")) +
                       number(kTavro + "FinishingOutputColor", 1) +
                       dict(kTavro + "InvertImageOptions", number("NegativeImage", 1) + number("MirrorImage", 0)) +
                       number(kTavro + "AdvancedRotateImage180", 1) + text(kTavro + "watermark.Watermark", "DRAFT") +
                       number(kTavro + "watermark.FirstPageOnly", 1) + number(kTavro + "watermark.Option", 1),
                   number("com.apple.print.PageFormat.PMOrientation", 3)),
              expected);
}

TEST(ReadInstructions, SpecialPages) {
    const std::string yellow = dict("Stock", number("Color", 3));
    const JobInstructions job =
        read(dict(kTavro + "SpecialPages.FrontCover",
                  number("SidesImaged", 4) + dict("Stock", number("Size", 75) + number("Width", 21590) +
                                                               number("Length", 27940) + number("Type", 12))) +
             dict(kTavro + "SpecialPages.BackCover", number("SidesImaged", 3)) +
             entry(kTavro + "SpecialPages.InsertList",
                   "<array><dict>" + number("StartPage", 9) + number("Quantity", 2) + yellow + "</dict><dict>" +
                       number("StartPage", 0) + "</dict><string>no page</string></array>") +
             entry(kTavro + "SpecialPages.ExceptionList",
                   "<array><dict>" + number("StartPage", 1) + number("EndPage", 10) + number("SidesImaged", 1) +
                       "</dict><dict>" + number("StartPage", 4) + number("EndPage", 6) + number("LightenDarken", -9) +
                       yellow +
                       dict(kTavro + "ImageShiftOptionsPage",
                            number("Option", 1) + number("Inches", 0) + number("X1", 254) + number("X2", 127)) +
                       "</dict></array>") +
             number(kTavro + "SeparatorOption", 3) + number(kTavro + "SeparatorColor", 5));
    EXPECT_EQ(job.frontCover, (CoverInstruction{CoverPrint::both, {.size = "Custom.612x792", .type = "CardStock"}}));
    EXPECT_EQ(job.backCover, (CoverInstruction{CoverPrint::side2, {}}));
    EXPECT_EQ(job.inserts, (std::vector<InsertInstruction>{{0, 1, {}}, {9, 2, {.color = "Yellow"}}}));
    ASSERT_EQ(job.exceptions.size(), 3U);
    EXPECT_EQ(job.exceptions[0], (ExceptionInstruction{{1, 3}, {}, Sides::one, {}, {}}));
    EXPECT_EQ(job.exceptions[2].pages, (PageSpan{7, 10}));
    const ExceptionInstruction& middle = job.exceptions[1];
    EXPECT_EQ(middle.pages, (PageSpan{4, 6}));
    EXPECT_EQ(middle.paper, Paper{.color = "Yellow"});
    EXPECT_EQ(middle.sides, std::nullopt);
    EXPECT_EQ(middle.lightenDarken, -3);
    EXPECT_NEAR(middle.shift.side1, 720, 0.01);
    EXPECT_NEAR(middle.shift.side2, 360, 0.01);
    EXPECT_EQ(job.separators, Separators::printed);
    EXPECT_EQ(job.separatorColor, "Pink");
}

TEST(ReadInstructions, BookletsAndFinishing) {
    const std::string booklet = flag(kTavro + "BookletLayout", true) + number(kTavro + "BookletDrawOutlines", 1) +
                                number(kTavro + "AdvancedBookletLayoutOrderStr", 1) +
                                dict(kTavro + "JobLevelStock", number("Size", 5));
    EXPECT_EQ(read(booklet).booklet, (BookletInstruction{true, true, ""}));
    EXPECT_EQ(read(booklet + flag(kTavro + "BookletForceNewSize", true)).booklet,
              (BookletInstruction{true, true, "A3"}));
    EXPECT_EQ(read(booklet + dict(kTavro + "PrintSettings.PageOptions", text("booklet", "true"))).booklet,
              (BookletInstruction{true, true, ""}))
        << "the panel's, not the queue's";
    EXPECT_EQ(read(flag(kTavro + "BookletLayout", false)).booklet, std::nullopt);

    const std::string offset =
        number(kTavro + "FinishingOffset", 2) + number(kTavro + "FinishingOffsetPagesPerSubset", 5);
    EXPECT_EQ(read(offset).finishing.offset, Offset::sets);
    const FinishingInstruction finishing =
        read(offset + number(kTavro + "FinishingOffsetEnableSubset", 1) + number(kTavro + "FinishingOptions", 10) +
             number(kTavro + "FinishingSlipSheet", 2) + text(kTavro + "FinishingCustom", "wire") +
             options(text("OutputBin", "Top") + text("StapleLocation", "2Staples") +
                     text("TRFoldOptions", "CTriFoldOpt")))
            .finishing;
    EXPECT_EQ(finishing,
              (FinishingInstruction{10, "wire", true, Offset::subsets, 5, "Top", "2Staples", "CTriFoldOpt"}));
}

TEST(ReadInstructions, TheKindOfJob) {
    const auto kind = [](long value) { return dict(kTavro + "JobType", number("JobType", value)); };
    EXPECT_EQ(read(kind(3)).kind, JobKind::save);
    EXPECT_EQ(read(kind(4)).kind, JobKind::printAndSave);
    EXPECT_EQ(read(kind(8)).kind, JobKind::sampleSet);
    EXPECT_EQ(read(kind(9)).kind, JobKind::print) << "of another edition";
    EXPECT_EQ(read(dict(kTavro + "JobType", number("JobType", 7) + number("DelayedPrintTime", 3900000000))).printTime,
              3900000000);

    const std::string fax =
        kind(5) +
        entry(kTavro + "FaxRecipientList", "<array><dict>" + text("FirstName", "Ada") + text("LastName", "L") +
                                               text("FaxNumber", "(555) 010-99") + text("Mailbox", "7") +
                                               "</dict><dict/></array>") +
        dict(kTavro + "FaxOptions", flag("CoverSheet", true) + number("Size", 2) + text("CreditCard", "4111") +
                                        flag("ConfirmationSheet", false) + number("SendTime", 3900000000));
    FaxInstruction expected;
    expected.recipients = {{"Ada L", "55501099", "", "7", "(555) 010-99"}, {}};
    expected.coverSheet = FaxCoverInstruction{.paperSize = "A4", .sender = FaxCoverInstruction::Sender{}};
    expected.hasConfirmation = false;
    expected.sendTime = 3900000000;
    EXPECT_EQ(read(fax).fax, expected);
    EXPECT_EQ(readSecrets(TestTicket(fax).get()).creditCard, "4111");
    const std::string secure = dict(kTavro + "JobType", number("JobType", 6) + text("SecurePrintPassword", "4711"));
    EXPECT_EQ(read(secure).kind, JobKind::secure);
    EXPECT_EQ(readSecrets(TestTicket(secure).get()).passcode, "4711");
    EXPECT_EQ(readSecrets(TestTicket(kind(6)).get()).passcode, "") << "stays a secure job";
    EXPECT_EQ(readSecrets(TestTicket(kind(1)).get()).passcode, std::nullopt);

    EXPECT_EQ(read(text(kTavro + "JobNotesMessage", "Mind the ink") + number(kTavro + "EmitTPIF", 0)).notes,
              (JobNotesInstruction{"", "", "", "", "Mind the ink"}));
    EXPECT_FALSE(read(number(kTavro + "EmitTPIF", 0)).hasJobInstructions);
}

TEST(ReadInstructions, PageOptionsAsTheyAreWritten) {
    const std::string name = kTavro + "PrintSettings.PageOptions";
    const TestTicket settings(
        dict(name, text("mirror", "true") + text("fitplot", "true") + text("page-border", "double")));
    JobInstructions job = readInstructions(settings.get(), 0);
    const JobInstructions before = job;
    EXPECT_EQ(job.scaling.kind, Scaling::Kind::fit);
    using enum NumberUpOrder;
    for (const NumberUpOrder order : {rightDown, downRight, leftDown, downLeft, rightUp, upRight, leftUp, upLeft}) {
        for (int kind = 0; kind < 4; ++kind) {
            job.numberUpOrder = order;
            job.scaling = {static_cast<Scaling::Kind>(kind), kind == 3 ? 140.0 : 100.0};
            job.numberUp = kind == 0 ? 1 : 16;
            job.subset = static_cast<PageSubset>(kind % 3);
            job.isReversed = kind % 2 == 0;
            job.hasBorders = kind % 2 == 1;
            writePageOptions(job, nullptr, settings.get());
            EXPECT_EQ(readInstructions(settings.get(), 0), job) << kind;
        }
    }
    writePageOptions(before, nullptr, settings.get());
    EXPECT_EQ(readInstructions(settings.get(), 0), before);

    // What says nothing stands there only against a printer's own options.
    const TestTicket plain("");
    writePageOptions(JobInstructions(), nullptr, plain.get());
    CFDictionaryRef options = nullptr;
    EXPECT_EQ(PMTicketGetCFDictionary(plain.get(), kPMTopLevel, kPMTopLevel, kPMPageOptionsKey, &options),
              kPMKeyNotFound);
    const TestTicket queue(dict(name, text("number-up", "4") + text("natural-scaling", "75")));
    PMTicketGetCFDictionary(queue.get(), kPMTopLevel, kPMTopLevel, kPMPageOptionsKey, &options);
    const auto usual = CFRef<CFDictionaryRef>::retain(options);
    writePageOptions(JobInstructions(), usual.get(), queue.get());
    EXPECT_EQ(readInstructions(queue.get(), 0), JobInstructions());
    EXPECT_EQ(PMTicketGetCFDictionary(queue.get(), kPMTopLevel, kPMTopLevel, kPMPageOptionsKey, &options), noErr);
}

TEST(ReadInstructions, AgainFollowsEveryChange) {
    const auto list = [](const char* item, const std::string& entries) {
        return entry(kTavro + item, "<array><dict>" + entries + "</dict></array>");
    };
    const std::string fax = dict(kTavro + "JobType", number("JobType", 5));
    const std::string ada = list("FaxRecipientList", text("FirstName", "Ada"));
    const std::string insert = list("SpecialPages.InsertList", number("StartPage", 3));
    InstructionsReader reader;
    std::uint64_t version = reader.version();
    for (const std::string& items :
         {insert, list("SpecialPages.InsertList", number("StartPage", 4)),
          list("SpecialPages.ExceptionList", number("StartPage", 2) + number("EndPage", 3)), fax + ada, ada,
          fax + list("FaxRecipientList", text("FirstName", "Grace")), fax, insert + number(kTavro + "EmitTPIF", 0)}) {
        const TestTicket ticket(items);
        EXPECT_EQ(reader.read(ticket.get(), 0), readInstructions(ticket.get(), 0)) << items;
        EXPECT_NE(std::exchange(version, reader.version()), reader.version()) << items;
        EXPECT_EQ(reader.read(ticket.get(), 0), readInstructions(ticket.get(), 0)) << items << " again";
        EXPECT_EQ(version, reader.version()) << items;
    }
}
