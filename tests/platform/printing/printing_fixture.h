// What the tests of printing share.
#pragma once

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"
#include "platform/foundation/text.h"
#include "platform/printing/PMPrinter.h"
#include "platform/printing/PMTicket.h"
#include "tests/platform/files/temporary_folder.h"
#include "tests/support/places.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

inline const std::filesystem::path kSources = sourcePath("");
inline const std::filesystem::path kZR410 = kSources / "resources/ppd/Tavro-ZR410.ppd";
inline const std::filesystem::path kZR840 = kSources / "resources/ppd/Tavro-ZR840.ppd";
inline const std::filesystem::path kZR420 = kSources / "resources/ppd/Tavro-ZR420.ppd";
inline const std::filesystem::path kTenPages = kSources / "tests/data/ten-pages.pdf";

inline CFRef<CFStringRef> cf(const std::string& text) {
    return CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, text.c_str(), kCFStringEncodingUTF8));
}

inline CFRef<CFNumberRef> cf(SInt32 number) {
    return CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberSInt32Type, &number));
}

/// "(null)" for null.
inline std::string text(CFTypeRef object) {
    if (CFGetTypeID(object) != CFStringGetTypeID()) {
        return object == nullptr ? "(null)" : "(no string)";
    }
    char bytes[4096];
    CFStringGetCString(static_cast<CFStringRef>(object), bytes, sizeof bytes, kCFStringEncodingUTF8);
    return bytes;
}

inline CFRef<CFMutableDictionaryRef> makeDictionary() {
    return CFRef<CFMutableDictionaryRef>::adopt(
        CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
}

inline void set(CFMutableDictionaryRef dictionary, const std::string& key, const std::string& value) {
    CFDictionarySetValue(dictionary, cf(key).get(), cf(value).get());
}

inline std::string get(CFDictionaryRef dictionary, const std::string& key) {
    return text(CFDictionaryGetValue(dictionary, cf(key).get()));
}

/// A ticket that is released with the object.
class Ticket {
public:
    Ticket() { PMTicketCreate(nullptr, kPDE_PMPrintSettingsKey, &ticket_); }
    ~Ticket() { PMTicketReleaseAndClear(&ticket_); }
    Ticket(const Ticket&) = delete;
    Ticket& operator=(const Ticket&) = delete;

    [[nodiscard]] PMTicketRef get() const { return ticket_; }
    [[nodiscard]] CFMutableDictionaryRef ppd() const {
        CFMutableDictionaryRef pairs = nullptr;
        PMTicketGetPPDDict(ticket_, kPMTopLevel, &pairs);
        return pairs;
    }
    void setNumber(CFStringRef key, SInt32 number) const {
        PMTicketSetCFNumber(ticket_, CFSTR("test"), key, cf(number).get(), kPMUnlocked);
    }
    /// None when there is no such number.
    [[nodiscard]] std::optional<SInt32> number(CFStringRef key) const {
        CFNumberRef item = nullptr;
        SInt32 value = 0;
        return PMTicketGetCFNumber(ticket_, kPMTopLevel, kPMTopLevel, key, &item) == noErr &&
                       CFNumberGetValue(item, kCFNumberSInt32Type, &value)
                   ? std::optional(value)
                   : std::nullopt;
    }
    /// "(null)" when there is no such string.
    [[nodiscard]] std::string string(CFStringRef key) const {
        CFStringRef item = nullptr;
        PMTicketGetCFString(ticket_, kPMTopLevel, kPMTopLevel, key, &item);
        return text(item);
    }
    void setString(CFStringRef key, const std::string& string) const {
        PMTicketSetCFString(ticket_, CFSTR("test"), key, cf(string).get(), kPMUnlocked);
    }

private:
    PMTicketRef ticket_ = 0;
};

/// A printer that is released with the object; null when it could not be made.
class Printer {
public:
    explicit Printer(const std::filesystem::path& ppd) {
        status_ = PMPrinterCreateFromPPDFile(makeFileURL(ppd).get(), &printer_);
    }
    explicit Printer(const std::string& queue) { status_ = PMPrinterCreateFromPrinterID(cf(queue).get(), &printer_); }
    ~Printer() { PMPrinterRelease(printer_); }
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;

    [[nodiscard]] PMPrinter get() const { return printer_; }
    [[nodiscard]] OSStatus status() const { return status_; }

private:
    PMPrinter printer_ = nullptr;
    OSStatus status_ = noErr;
};

/// The pages of a job, those of a PDF or of a document in PostScript.
class OpenPages {
public:
    explicit OpenPages(const std::filesystem::path& document = kTenPages, CFIndex count = 10)
        : url_(makeFileURL(document)),
          pages_{open(document.c_str(), O_RDONLY | O_CLOEXEC), document.extension() == ".ps", count, url_.get()} {}
    ~OpenPages() { close(pages_.file); }
    OpenPages(const OpenPages&) = delete;
    OpenPages& operator=(const OpenPages&) = delete;

    [[nodiscard]] const PMJobPages* get() const { return &pages_; }

private:
    CFRef<CFURLRef> url_;
    PMJobPages pages_;
};

inline std::string readFile(const std::filesystem::path& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

/// Runs a shell command; its output, standard error included, and its exit status.
inline std::pair<std::string, int> run(const std::string& command) {
    std::string output;
    FILE* const pipe = popen((command + " 2>&1").c_str(), "r");
    std::array<char, 4096> bytes;
    while (const std::size_t count = fread(bytes.data(), 1, bytes.size(), pipe)) {
        output.append(bytes.data(), count);
    }
    return {output, pclose(pipe)};
}

/// The pages that Ghostscript finds in PostScript.
inline std::size_t countPages(const std::filesystem::path& postScript) {
    const auto [output, status] = run("gs -q -dSAFER -dBATCH -dNOPAUSE -sDEVICE=bbox '" + postScript.string() + "'");
    std::size_t pages = 0;
    for (std::size_t at = output.find("%%BoundingBox:"); at != std::string::npos;
         at = output.find("%%BoundingBox:", at + 1)) {
        ++pages;
    }
    return status == 0 ? pages : 0;
}
