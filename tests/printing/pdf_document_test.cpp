#include "platform/printing/CGPDFDocument.h"
#include "tests/printing/printing_fixture.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

TEST(PDFDocument, CountsPages) {
    EXPECT_EQ(CGPDFDocumentCountPages(fileURL(kTenPages).get(), nullptr), 10);
    EXPECT_EQ(CGPDFDocumentCountPages(fileURL(kSources / "resources/sample/welcome.pdf").get(), nullptr), 2);
}

TEST(PDFDocument, TellsWhichPagesAreWide) {
    const TemporaryFolder folder;
    const auto turned = (folder / "turned.pdf").string();
    ASSERT_EQ(run("qpdf --rotate=+90:2 --rotate=+180:3 '" + kTenPages.string() + "' '" + turned + "'").second, 0);
    const auto pages = CFRef<CFDataRef>::adopt(CGPDFDocumentCopyLandscapePages(fileURL(turned).get()));
    ASSERT_EQ(CFDataGetLength(pages.get()), 10);
    for (CFIndex page = 0; page < 10; ++page) {
        EXPECT_EQ(CFDataGetBytePtr(pages.get())[page], page == 1 ? 1 : 0) << page;
    }
    EXPECT_EQ(CGPDFDocumentCopyLandscapePages(fileURL(folder / "missing.pdf").get()), nullptr);
}

TEST(PDFDocument, SaysWhyItCannot) {
    const TemporaryFolder folder;
    const std::string pdf = readFile(kTenPages);
    std::filesystem::create_directory(folder / "folder");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    folder.add("cut.pdf", pdf.substr(0, pdf.size() / 2));
    folder.add("text.pdf", "not a document\n");
    folder.add("empty.pdf", "");
    const auto encrypt = [&](const std::string& name, const std::string& passwords) {
        return run("qpdf --encrypt " + passwords + " -- '" + kTenPages.string() + "' '" + (folder / name).string() +
                   "'")
            .second;
    };
    ASSERT_EQ(encrypt("locked.pdf", "user owner 256"), 0);
    ASSERT_EQ(encrypt("forbidden.pdf", "'' owner 256 --print=none"), 0);
    ASSERT_EQ(encrypt("printable.pdf", "'' owner 256"), 0);

    for (const char* name :
         {"missing.pdf", "folder", "pipe", "cut.pdf", "text.pdf", "empty.pdf", "locked.pdf", "forbidden.pdf"}) {
        const auto path = folder / name;
        CFStringRef error = nullptr;
        EXPECT_EQ(CGPDFDocumentCountPages(fileURL(path).get(), &error), -1) << name;
        const auto owned = CFRef<CFStringRef>::adopt(error);
        EXPECT_TRUE(text(error).starts_with(path.string() + ": ")) << text(error);
        EXPECT_EQ(text(error).find('\n'), std::string::npos) << text(error);
    }
    EXPECT_EQ(CGPDFDocumentCountPages(fileURL(folder / "printable.pdf").get(), nullptr), 10);
}

}  // namespace
