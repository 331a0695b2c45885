// Documents of other kinds on their way to a PDF: whatever the programs do that make it, there is an answer, and
// nothing is left.

#include "driver/worker/document_conversion.h"
#include "platform/files/plain_file.h"
#include "tests/driver/pages/pdf_maker.h"
#include "tests/platform/files/temporary_folder.h"
#include "tests/support/places.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

namespace fs = std::filesystem;

class DocumentConversions : public testing::Test {
protected:
    DocumentConversions() {
        fs::create_directory(temporary);
        fs::create_directories(folder / "server/filter");
        setenv("TMPDIR", temporary.c_str(), 1);
    }
    ~DocumentConversions() override {
        unsetenv("TMPDIR");
        unsetenv("CUPS_SERVERBIN");
        EXPECT_TRUE(fs::is_empty(temporary));
    }

    /// What comes out, in words, or why nothing does.
    std::string converted(const std::string& name, const std::string& content, const ConversionLimits& limits = {}) {
        const std::string path = (folder.path() / "document").string();
        std::ofstream(path, std::ios::binary) << content;
        std::string reason;
        const Descriptor made = DocumentConversion(stagePath("lib/tavro-convert"), openPlainFile(path, INT64_MAX).get(),
                                                   name, 595, 842, limits)
                                    .finish(&reason);
        return made ? wordsOfPDF("/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(made.get())) : reason;
    }

    /// The same by a shell's script in the place of the filter for texts.
    std::string convertedBy(const std::string& script, const ConversionLimits& limits = {}) {
        const std::string filter = (folder.path() / "server/filter/texttopdf").string();
        std::ofstream(filter) << "#!/bin/sh\n" << script << "\n";
        fs::permissions(filter, fs::perms::owner_all);
        setenv("CUPS_SERVERBIN", (folder / "server").c_str(), 1);
        return converted("letter.txt", "Dear Ada,\n", limits);
    }

    TemporaryFolder folder;
    const std::string temporary = folder / "tmp";
};

/// Of one pixel.
const std::string kGIF("GIF89a\1\0\1\0\x80\0\0\0\0\0\xFF\xFF\xFF,\0\0\0\0\1\0\1\0\0\2\2D\1\0;", 35);

}  // namespace

TEST_F(DocumentConversions, AreOnThePaperOfTheJob) {
    EXPECT_EQ(converted("notes", "one\n\ftwo \u20AC\n").substr(0, 8), "595x842:");
    EXPECT_EQ(converted("", kGIF), "595x842:");
    EXPECT_EQ(converted("table.csv", "a,b\n"), converted("table", "a,b\n"));
    const std::string postScript = "%!PS\n/Helvetica findfont 9 scalefont setfont 50 50 moveto (PS) show showpage\n";
    EXPECT_NE(converted("", postScript).find("PS@50,"), std::string::npos);
    // What it is says the content, and a PDF stays what it is.
    EXPECT_EQ(converted("wrong.png", pdfOf({{}})), "612x792: P1@72,694");
}

TEST_F(DocumentConversions, OfOfficeDocumentsAreLibreOffices) {
    if (outputOfCommand("command -v soffice").empty()) {
        EXPECT_EQ(converted("letter.rtf", "{\\rtf1 Dear Ada}"), "can be printed only where LibreOffice is installed");
        GTEST_SKIP() << "LIBREOFFICE IS NOT INSTALLED HERE";
    }
    EXPECT_NE(converted("letter", "{\\rtf1 Dear Ada}").find("Dear@"), std::string::npos);
    EXPECT_EQ(converted("letter.odt", std::string("PK\3\4\0\0\0\0broken", 14)),
              "could not be prepared for printing; it may be damaged (" + stagePath("lib/tavro-office") +
                  ": LibreOffice cannot read it)");
}

TEST_F(DocumentConversions, TellWhatCannotBePrinted) {
    EXPECT_EQ(converted("holiday", std::string("\0\0\0\x18"
                                               "ftypmp42\0\0\0\0mp42isom",
                                               24)),
              "is a film, and cannot be printed");
    EXPECT_EQ(converted("letter.txt", std::string("\1\2\0\3\xFF", 5)),
              "is a file of an unknown kind, and cannot be printed");
    EXPECT_EQ(converted("letter.txt", ""), "is empty, and cannot be printed");
    EXPECT_EQ(converted("letter.txt", "caf\xE9\n"),
              "is text in an encoding other than UTF-8; save it as UTF-8 to print it");
    EXPECT_EQ(converted("photo.webp", std::string("RIFF\x24\0\0\0WEBPVP8 ", 16)),
              "is a file of a kind that cannot be printed (WebP image)");
    const std::string damaged = converted("photo.png", "\x89PNG\r\n\x1A\n and nothing else");
    EXPECT_EQ(damaged.substr(0, 53), "could not be prepared for printing; it may be damaged");
}

TEST_F(DocumentConversions, HaveLimits) {
    const std::string sorry = "could not be prepared for printing; it may be damaged";
    EXPECT_EQ(convertedBy("exec sleep 100", {1, 10}), "takes longer than 1 seconds to prepare for printing");
    EXPECT_EQ(convertedBy("printf %%PDF-; exec cat /dev/zero", {60, 1}),
              "becomes larger than 1 MB when it is prepared for printing");
    EXPECT_EQ(convertedBy("kill -SEGV $$"), sorry + " (texttopdf was stopped by signal 11; it read this document)");
    EXPECT_EQ(convertedBy("exit 0"), sorry);
    EXPECT_EQ(convertedBy("echo rubbish"), sorry);
    EXPECT_EQ(convertedBy("echo ERROR: no fonts >&2; exit 1"), sorry + " (texttopdf: no fonts)");
    fs::remove(folder.path() / "server/filter/texttopdf");
    EXPECT_EQ(converted("letter.txt", "Dear Ada,\n"),
              "can be printed only where the print server's filters for it are installed (cups-filters)");
}
