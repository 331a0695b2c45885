// Jobs into a file, through the real filters.
#include "platform/printing/filter_route.h"
#include "platform/printing/ppd_file.h"
#include "tests/platform/printing/printing_fixture.h"

#include <gtest/gtest.h>
#include <regex>

#include <sys/stat.h>

namespace {

class Jobs : public testing::Test {
protected:
    OSStatus write(const std::filesystem::path& document = kTenPages) { return writeTo(printer, document); }
    OSStatus writeTo(const Printer& to, const std::filesystem::path& document = kTenPages) {
        return PMPrinterWriteJobToURL(to.get(), settings.get(), OpenPages(document).get(), makeFileURL(output).get());
    }
    std::string reason() const { return text(PMGetLastErrorText()); }

    /// A PPD as the ZR420's, with other lines instead of its filter's.
    std::filesystem::path ppdWith(const std::string& lines) const {
        static const std::regex filter("\\*cupsFilter2?:[^\n]*\n");
        return folder.add("other.ppd", std::regex_replace(readFile(kZR420), filter, "") + lines + "\n");
    }

    TemporaryFolder folder;
    std::filesystem::path output = folder / "job.ps";
    Printer printer{kZR420};
    Ticket settings;
};

std::size_t count(const std::string& text, const std::string& part) {
    std::size_t found = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++found;
    }
    return found;
}

TEST_F(Jobs, CarryExactlyTheChosenOptions) {
    set(settings.ppd(), "StapleLocation", "2Staples");
    set(settings.ppd(), "OutputBin", "Stacker");
    set(settings.ppd(), "JCLBanner", "True");
    set(settings.ppd(), "JCLCovers", "FrontBack");
    set(settings.ppd(), "JCLFrontBackMediaType", "CardStock");
    set(settings.ppd(), "JCLPasscode", "Custom.4711");
    settings.setString(kPMJobNameKey, "Ann's \"report\"\n\x1B%-12345X");
    ASSERT_EQ(write(), noErr) << reason();
    const std::string job = readFile(output);
    for (const auto& [keyword, option] : {std::pair{"StapleLocation", "2Staples"},
                                          {"OutputBin", "Stacker"},
                                          {"Duplex", "None"},
                                          {"PageRegion", "Letter"}}) {  // with a tray, the size comes so
        EXPECT_EQ(count(job, std::string("%%BeginFeature: *") + keyword + " "), 1U) << keyword;
        EXPECT_EQ(count(job, std::string("%%BeginFeature: *") + keyword + " " + option + "\n"), 1U) << keyword;
    }
    for (const auto& [variable, value] : {std::pair{"TRBANNER", "ON"},
                                          {"TRCOVERS", "FRONTBACK"},
                                          {"TRCOVERSMEDIATYPE", "CARDSTOCK"},
                                          {"TRPRINTQUALITY", "STANDARD"},
                                          {"HOLDKEY", "\"4711\""}}) {
        EXPECT_EQ(count(job, std::string("@PJL SET ") + variable + "="), 1U) << variable;
        EXPECT_EQ(count(job, std::string("@PJL SET ") + variable + "=" + value + "\n"), 1U) << variable;
    }
    EXPECT_TRUE(job.starts_with("\x1B%-12345X@PJL\n"));
    EXPECT_EQ(count(job, "\x1B%-12345X"), 3U);  // the title adds none to the start, the end and the reset
    EXPECT_EQ(countPages(output), 10U);

    struct stat status {};
    ASSERT_EQ(stat(output.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
    EXPECT_EQ(folder.count(), 1U);  // nothing of the way is left
}

TEST_F(Jobs, ChooseOptionsInTheirMiddle) {
    const auto code = [this](const std::string& keyword, const std::string& option) {
        CFStringRef made = nullptr;
        const OSStatus status = PMPrinterCopyOptionCode(printer.get(), cf(keyword).get(), cf(option).get(), &made);
        EXPECT_EQ(status == noErr, made != nullptr);
        return text(CFRef<CFStringRef>::adopt(made).get());
    };
    EXPECT_EQ(code("MediaColor", "Blue"),
              "%%BeginFeature: *MediaColor Blue\n<</MediaColor(Blue)>>setpagedevice\n%%EndFeature\n");
    EXPECT_EQ(code("Duplex", ""),
              "%%BeginFeature: *Duplex None\n<</Duplex false/Tumble false>>setpagedevice\n%%EndFeature\n");
    EXPECT_EQ(code("PageSize", "Custom.200x300mm"),
              "%%BeginFeature: *CustomPageSize True\n566.93 850.39 0 0 1\n"
              "pop pop pop <</PageSize[5 -2 roll]/ImagingBBox null>>setpagedevice\n%%EndFeature\n");
    for (const auto& [keyword, option] : {std::pair{"MediaColor", "Plaid"},
                                          {"JCLBanner", "True"},
                                          {"Option2", "HCSS"},
                                          {"Scent", "Rose"},
                                          {"PageSize", "Custom.0x5"}}) {
        EXPECT_EQ(code(keyword, option), "(null)") << keyword;
    }
    PMPaper paper{};
    ASSERT_EQ(PMPrinterGetPaper(printer.get(), CFSTR("Custom.300x400"), &paper), noErr);
    EXPECT_EQ(paper.width, 300);
    EXPECT_LT(paper.top, 400);
    ASSERT_EQ(PMPrinterGetPaper(printer.get(), CFSTR("Letter"), &paper), noErr);
    EXPECT_EQ(paper.height, 792);
    EXPECT_EQ(PMPrinterGetPaper(printer.get(), CFSTR("Napkin"), &paper), kPMKeyNotFound);
}

TEST_F(Jobs, KeepValuesFromBecomingOtherOptions) {
    set(settings.ppd(), "Note", "it's 5 o'clock\\ Duplex=DuplexTumble \"x");
    ASSERT_EQ(write(), noErr) << reason();
    EXPECT_EQ(count(readFile(output), "%%BeginFeature: *Duplex None\n"), 1U);

    // A line break would be a printer command of its own.
    set(settings.ppd(), "JCLPasscode", "Custom.1\n@PJL SET TRBANNER=ON");
    EXPECT_EQ(write(), paramErr);
    EXPECT_TRUE(reason().starts_with("JCLPasscode: ")) << reason();
    set(settings.ppd(), "JCLPasscode", "None");
    set(settings.ppd(), "Jog=None Duplex", "DuplexTumble");
    EXPECT_EQ(write(), paramErr);
}

TEST_F(Jobs, CarryMoreOptionsThanAnArgumentHolds) {
    constexpr int kMany = 4000;
    std::string options;
    for (int i = 0; i < kMany; ++i) {
        const std::string name = "AnOptionOfALongName" + std::to_string(i);
        options += "*OpenUI *" + name + ": PickOne\n*OrderDependency: 90 AnySetup *" + name + "\n*Default" + name +
                   ": Off\n*" + name + " Off: \"\"\n*" + name + " On: \"(" + name + ")pop\"\n*CloseUI: *" + name + "\n";
        set(settings.ppd(), name, "On");
    }
    set(settings.ppd(), "PageSize", "A4");
    set(settings.ppd(), "Duplex", "DuplexNoTumble");
    const Printer large(folder.add("large.ppd", readFile(kZR420) + options));
    ASSERT_EQ(writeTo(large), noErr) << reason();
    const std::string job = readFile(output);
    EXPECT_EQ(count(job, ")pop\n"), std::size_t{kMany});
    EXPECT_EQ(count(job, "%%BeginFeature: *Duplex DuplexNoTumble\n"), 1U);
    EXPECT_EQ(count(job, "%%BeginFeature: *PageRegion A4\n") + count(job, "%%BeginFeature: *PageSize A4\n"), 1U);
}

TEST_F(Jobs, GoTheWayThatThePrintServerGoes) {
    for (const char* line :
         {"*cupsFilter: \"application/vnd.cups-postscript 0 -\"", "",
          "*cupsFilter: \"application/vnd.cups-raster 50 rastertohp\"",
          "*cupsFilter2: \"application/vnd.cups-raster image/urf 0 -\"",
          "*cupsFilter: \"image/pwg-raster 0 -\"\n*cupsFilter: \"text/plain 0 texttotext\"",
          "*cupsFilter: \"application/* 5 rastertoepson\"", "*cupsFilter: \"application/pdf 0 -\""}) {
        const auto ppd = ppdWith(line);
        std::string fault;
        const auto file = readPPDFile(ppd, &fault);
        ASSERT_TRUE(file) << fault;
        const auto route = findRouteToPrinter(kPDFType, std::filesystem::file_size(kTenPages), file->filters, &fault);
        ASSERT_TRUE(route) << line << fault;
        std::string ours;
        for (const std::string& filter : route->filters) {
            ours += filter + " ";
        }
        EXPECT_EQ(ours, run("for f in $(/usr/sbin/cupsfilter --list-filters -p '" + ppd.string() +
                            "' -m printer/x -e -i application/pdf '" + kTenPages.string() +
                            "' 2>/dev/null); do printf '%s ' $f; done")
                            .first)
            << line;
    }
    ASSERT_EQ(writeTo(Printer(ppdWith("*cupsFilter: \"application/vnd.cups-raster 50 rastertohp\""))), noErr)
        << reason();
    EXPECT_TRUE(
        readFile(output).starts_with("\x1B"
                                     "E\x1B"));  // a reset, as PCL begins

    const std::string own = folder.add("own", "#!/bin/sh\ncat\n");
    std::filesystem::permissions(own, std::filesystem::perms::owner_all);
    const Printer printerWithFilter(ppdWith("*cupsFilter: \"application/vnd.cups-postscript 0 " + own + "\""));
    EXPECT_FALSE(PMPrinterReadsPostScript(printerWithFilter.get()));
    ASSERT_EQ(writeTo(printerWithFilter), noErr) << reason();
    settings.setString(kPMJobPasscodeKey, "8642");
    EXPECT_EQ(writeTo(printerWithFilter), paramErr);
    EXPECT_EQ(reason(), "secure print: the printer's own filter makes its jobs, and it takes no passcode");
}

TEST_F(Jobs, BlameThePPDForWhatItLacks) {
    const auto ppd = ppdWith("*cupsFilter: \"application/vnd.cups-raster 0 rastertonothing\"");
    EXPECT_EQ(writeTo(Printer(ppd)), kPMFilterFailed);
    EXPECT_EQ(reason(), ppd.string() +
                            ": rastertonothing: this filter is not installed "
                            "(/usr/lib/cups/filter/rastertonothing)");
    EXPECT_FALSE(std::filesystem::exists(output));
    EXPECT_EQ(Printer(folder.add("one-line.ppd", "*PPD-Adobe: \"4.3\"\n")).status(), kPMUnusableDescription);
    EXPECT_EQ(reason(), folder / "one-line.ppd" + ": is not a usable PPD: it has no Product");
    const std::string cut = readFile(kZR420).substr(0, 6000);
    EXPECT_EQ(Printer(folder.add("cut.ppd", cut)).status(), kPMUnusableDescription);
    EXPECT_TRUE(reason().ends_with("its default paper has no size")) << reason();
}

TEST_F(Jobs, PrintNoSecretOpenly) {
    const Printer withoutPasscodes(
        folder.add("plain.ppd", std::regex_replace(readFile(kZR420), std::regex("[^\n]*JCLPasscode[^\n]*\n"), "")));
    ASSERT_EQ(withoutPasscodes.status(), noErr) << reason();
    for (const char* value : {"Custom.8642", "{Passcode=8642}", "8642"}) {
        set(settings.ppd(), "JCLPasscode", value);
        EXPECT_EQ(writeTo(withoutPasscodes), paramErr) << value;
        EXPECT_TRUE(reason().starts_with("JCLPasscode: ")) << reason();
        EXPECT_EQ(reason().find("8642"), std::string::npos) << reason();
        EXPECT_EQ(write(), value == std::string("8642") ? paramErr : noErr) << value << reason();
        EXPECT_EQ(count(readFile(output), "HOLDKEY=\"8642\"\n"), 1U) << value;
    }
    set(settings.ppd(), "JCLPasscode", "None");
    EXPECT_EQ(writeTo(withoutPasscodes), noErr) << reason();
}

TEST_F(Jobs, HoldWhatIsTypedAsItIs) {
    const auto option = [](const std::string& name, const std::string& open, const std::string& code) {
        return "*" + open + "OpenUI *" + name + ": PickOne\n*OrderDependency: 20 " +
               (open.empty() ? "DocumentSetup" : "JCLSetup") + " *" + name + "\n*Default" + name + ": None\n*" + name +
               " None: \"\"\n*" + open + "CloseUI: *" + name + "\n*Custom" + name + " True: \"" + code +
               "\"\n*ParamCustom" + name + " Text: 1 string 1 40\n";
    };
    const Printer noted(ppdWith(option("JCLNote", "JCL", "@PJL SET NOTE=<22>\\1<22><0A>") +
                                option("Note", "", "(%stderr)(w)file exch writestring")));
    ASSERT_EQ(noted.status(), noErr) << reason();
    set(settings.ppd(), "JCLNote", "Custom.a\\(b");
    set(settings.ppd(), "Note", "Custom.a\\)(b\\");
    ASSERT_EQ(writeTo(noted), noErr) << reason();
    EXPECT_EQ(count(readFile(output), "@PJL SET NOTE=\"a\\(b\"\n"), 1U);
    EXPECT_NE(run("gs -q -dBATCH -dNOPAUSE -sDEVICE=nullpage '" + output.string() + "'").first.find("a\\)(b\\"),
              std::string::npos);
    set(settings.ppd(), "JCLNote", "Custom.a\"b");
    EXPECT_EQ(writeTo(noted), paramErr);
    EXPECT_EQ(reason(), "JCLNote: a printer command cannot hold quotation marks");
}

TEST_F(Jobs, RefuseSettingsThatNoJobCanHave) {
    for (const SInt32 copies : {0, -1, 10000}) {
        settings.setNumber(kPMCopiesKey, copies);
        EXPECT_EQ(write(), paramErr) << copies;
    }
    settings.setNumber(kPMCopiesKey, 1);
    for (const char* range : {"x", "1-2-3", "1,,2", "-3", "1 2", "99999999999"}) {
        settings.setString(kPMPageRangeKey, range);
        EXPECT_EQ(write(), paramErr) << range;
        EXPECT_TRUE(reason().starts_with(range)) << reason();
    }
    EXPECT_FALSE(std::filesystem::exists(output));
    EXPECT_EQ(PMPrinterWriteJobToURL(printer.get(), 0, OpenPages().get(), makeFileURL(output).get()), kPMInvalidTicket);
}

TEST_F(Jobs, SayWhichDocumentIsUnusable) {
    const auto garbage = folder.add("garbage.pdf", "no document\n");
    output = folder.add("job.ps", "the old job");
    EXPECT_EQ(write(garbage), kPMFilterFailed);
    EXPECT_TRUE(reason().starts_with(garbage.string() + ": pdftopdf: ")) << reason();
    EXPECT_EQ(write(folder / "missing.pdf"), paramErr);
    EXPECT_EQ(write("/dev/zero"), paramErr);
    EXPECT_EQ(readFile(output), "the old job");
    EXPECT_EQ(folder.count(), 2U);

    ASSERT_EQ(write(), noErr);
    EXPECT_EQ(PMGetLastErrorText(), nullptr);
    EXPECT_GT(readFile(output).size(), 1000U);
}

TEST_F(Jobs, SayWhyTheDestinationCannotBeWritten) {
    std::filesystem::create_directory(folder / "folder");
    for (const std::filesystem::path& place :
         {folder.path() / "folder", folder.path() / "missing" / "job.ps", std::filesystem::path("/dev/null"),
          std::filesystem::path("/proc/job.ps")}) {
        output = place;
        EXPECT_EQ(write(), kPMCannotWriteOutput) << place;
        EXPECT_TRUE(reason().starts_with(place.string() + ": ")) << reason();
    }
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));

    // A link keeps pointing at the file that is replaced.
    const auto target = folder.add("target.ps", "old");
    output = folder / "link.ps";
    std::filesystem::create_symlink(target, output);
    ASSERT_EQ(write(), noErr) << reason();
    EXPECT_TRUE(std::filesystem::is_symlink(output));
    EXPECT_TRUE(readFile(target).starts_with("\x1B%-12345X"));
}

// Filters of our own making stand in for broken ones.
TEST_F(Jobs, ReportWhatAFilterSays) {
    std::filesystem::create_directory(folder / "filter");
    const auto filter = [&](const std::string& name, const std::string& script) {
        const auto path = folder.add("filter/" + name, "#!/bin/sh\n" + script);
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    };
    setenv("CUPS_SERVERBIN", (folder / "").c_str(), 1);
    filter("pdftopdf", "cat \"$6\"");
    EXPECT_EQ(write(), kPMFilterFailed);
    EXPECT_NE(reason().find("pdftops: "), std::string::npos) << reason();  // there is none

    filter("pdftops",
           "cat >/dev/null; echo 'ERROR: first' >&2; echo 'ERROR: out of toner' >&2; echo 'DEBUG: x' >&2; exit 3");
    EXPECT_EQ(write(), kPMFilterFailed);
    EXPECT_TRUE(reason().ends_with(": pdftops: out of toner")) << reason();

    filter("pdftops", "cat >/dev/null; kill -9 $$");
    EXPECT_EQ(write(), kPMFilterFailed);
    EXPECT_TRUE(
        reason().ends_with("pdftops was stopped by signal 9; it read this document and the PPD " + kZR420.string()))
        << reason();

    // Ended well, with half of the job lost.
    filter("pdftops", "printf '%%!PS\n%%%%Page: 1 1\n%%%%Page: 2 2\n%%%%EOF\n'");
    EXPECT_EQ(write(), kPMFilterFailed);
    EXPECT_TRUE(reason().ends_with("pdftops wrote 2 of 10 pages")) << reason();

    // A megabyte of messages while a megabyte goes through the pipe: nobody waits for the other.
    filter("pdftopdf", "head -c 1000000 /dev/zero >&2; head -c 1000000 /dev/zero");
    filter("pdftops", "head -c 1000000 /dev/zero >&2; cat \"$6\"");
    EXPECT_EQ(
        PMPrinterWriteJobToURL(printer.get(), settings.get(), OpenPages(kTenPages, 0).get(), makeFileURL(output).get()),
        noErr)
        << reason();
    EXPECT_EQ(std::filesystem::file_size(output), 1000000U);
    unsetenv("CUPS_SERVERBIN");
}

}  // namespace
