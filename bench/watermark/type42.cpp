// Converting fonts to Type 42, beside writing as many bytes as hexadecimal digits, which no conversion can do without,
// and beside FontForge, when it is installed.
//
//   bench_type42 POSTSCRIPT-NAME...

#include "watermark/type42/type42.h"
#include "bench/side_by_side.h"
#include "platform/files/url_access.h"
#include "platform/fonts/ATSFont.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"
#include "tests/watermark/type42/font_program.h"

#include <cstdlib>
#include <string>

namespace {

CFRef<CFDataRef> read(const char* path) {
    const auto url = CFRef<CFURLRef>::adopt(CFURLCreateWithFileSystemPath(
        nullptr, CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, path, kCFStringEncodingUTF8)).get(),
        kCFURLPOSIXPathStyle, false));
    CFDataRef data = nullptr;
    CFURLCreateDataAndPropertiesFromResource(nullptr, url.get(), &data, nullptr, nullptr, nullptr);
    return CFRef<CFDataRef>::adopt(data);
}

std::string hexOf(const std::string& bytes) {
    std::string text(bytes.size() * 2, '\0');
    char* place = text.data();
    for (const char byte : bytes) {
        *place++ = "0123456789ABCDEF"[static_cast<unsigned char>(byte) >> 4];
        *place++ = "0123456789ABCDEF"[static_cast<unsigned char>(byte) & 15];
    }
    return text;
}

/// Microseconds that a script takes FontForge with its start; the shortest of a few runs.
double fontForge(const std::string& script) {
    double shortest = 1e12;
    for (int i = 0; i < 3; ++i) {
        shortest = std::min(
            shortest, bench::microseconds([&script] {
                if (std::system(("fontforge -quiet -lang=ff -c '" + script + "' >/dev/null 2>&1").c_str()) != 0) {
                    std::printf("FontForge failed\n");
                }
            }));
    }
    return shortest;
}

void measure(const char* name) {
    const auto string = CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, name, kCFStringEncodingUTF8));
    const FMFont font = FMGetFontFromATSFontRef(ATSFontFindFromPostScriptName(string.get(), kATSOptionFlagsDefault));
    FSRef file;
    if (FMGetFontContainer(font, &file) != noErr) {
        std::printf("%s is not installed\n", name);
        return;
    }
    const auto bytes = read(file.path);
    FontRefusal refusal = FontRefusal::none;
    const auto program = convertTTFtoPS42(bytes.get(), string.get(), FMGetFontIndex(font), &refusal);
    std::string fault;
    const auto converted = ReadFontProgram(
        {reinterpret_cast<const char*>(CFDataGetBytePtr(program.get())), std::size_t(CFDataGetLength(program.get()))},
        &fault);
    if (!converted) {
        std::printf("%s is refused (%d) %s\n", name, static_cast<int>(refusal), fault.c_str());
        return;
    }
    const std::string title = name + (", " + std::to_string(converted->sfnt.size() / 1024)) + " KB, " +
                              std::to_string(converted->glyphs.size());
    std::size_t written = 0;
    bench::compare((title + " names").c_str(), 31, "convert",
                   [&] {
                       FontRefusal reason = FontRefusal::none;
                       const auto result = convertTTFtoPS42(bytes.get(), string.get(), FMGetFontIndex(font), &reason);
                       written += static_cast<std::size_t>(CFDataGetLength(result.get()));
                   },
                   "hexadecimal", [&] { written += hexOf(converted->sfnt).size(); });
    if (written == 0) {
        std::printf("nothing was written\n");
    }
    if (std::system("command -v fontforge >/dev/null") == 0) {
        const double startOnly = fontForge("Print(1)");
        const std::string path = file.path;
        const std::string face = path.ends_with(".ttc") ? "(" + std::string(name) + ")" : "";
        const double whole = fontForge("Open(\"" + path + face + "\"); Generate(\"/dev/shm/bench.t42\")");
        std::printf("    FontForge, without its start %.0f us\n", whole - startOnly);
    }
}

}  // namespace

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        measure(argv[i]);
    }
    return 0;
}
