#include "tests/support/gallery/render.h"

#include "host/script/quoted.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/strings_table.h"
#include "platform/foundation/text.h"
#include "tests/support/gallery/pieces.h"

#include <spawn.h>
#include <sys/wait.h>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

namespace fs = std::filesystem;

struct Variant {
    const char* name;
    const char* variable;  // of the environment
    const char* value;
    bool longWords;
};
// clang-format off
constexpr Variant kVariants[] = {
    // name, variable, value, long words
    {"light", "TAVRO_COLOR_SCHEME", "light", false},
    {"dark", "TAVRO_COLOR_SCHEME", "dark", false},
    {"contrast", "TAVRO_COLOR_SCHEME", "high-contrast-dark", false},
    {"2x", "QT_SCALE_FACTOR", "2", false},
    {"long", "TAVRO_COLOR_SCHEME", "light", true},
    {"large", "QT_QPA_PLATFORM", "offscreen:configfile=%/screen.json", false},  // % is the folder
};
// clang-format on

std::string withLongWords(const std::string& text) {
    static const std::string kFiller = "Rechtsschutzversicherungsgesellschaften";
    const std::size_t more = std::clamp<std::size_t>(text.size() * 2 / 3, 3, kFiller.size());
    return text.empty() ? text : text + " " + kFiller.substr(0, more);
}

/// Writes the table anew, each text longer.
void stretchTable(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    const auto data = CFRef<CFDataRef>::adopt(
        CFDataCreate(nullptr, reinterpret_cast<const UInt8*>(bytes.data()), static_cast<CFIndex>(bytes.size())));
    const auto table = readStringsTable(data.get(), nullptr);
    const auto count = static_cast<std::size_t>(CFDictionaryGetCount(table.get()));
    std::vector<const void*> keys(count);
    std::vector<const void*> values(count);
    CFDictionaryGetKeysAndValues(table.get(), keys.data(), values.data());
    std::ofstream out(file, std::ios::binary);
    for (std::size_t i = 0; i < count; ++i) {
        out << quoted(utf8Text(static_cast<CFStringRef>(keys[i]))) << " = "
            << quoted(withLongWords(utf8Text(static_cast<CFStringRef>(values[i])))) << ";\n";
    }
}

/// A copy of the bundle with stretched texts; its path.
std::string makeStretchedBundle(const std::string& bundle, const fs::path& folder) {
    const fs::path copy = folder / fs::path(bundle).filename();
    fs::remove_all(copy);
    fs::copy(bundle, copy, fs::copy_options::recursive);
    for (const auto& entry : fs::recursive_directory_iterator(copy)) {
        if (entry.path().extension() == ".strings" && entry.path().stem() != "InfoPlist") {
            stretchTable(entry.path());
        }
    }
    return copy.string();
}

void writeScript(const std::string& file, const std::vector<std::string>& names, const char* action) {
    std::ofstream out(file);
    for (const std::string& name : names) {
        std::string shot = name;
        std::ranges::replace(shot, '/', '-');
        out << "open " << quoted(name) << "\n" << action << " " << quoted(shot) << "\n";
        if (const Piece* piece = findPiece(name); piece == nullptr || piece->panel == nullptr) {
            out << "command not!\n";  // a panel is no window of its own
        }
    }
}

int runThisProgram(std::vector<std::string> arguments) {
    std::string program = fs::read_symlink("/proc/self/exe").string();
    std::vector<char*> argv{program.data()};
    std::ranges::transform(arguments, std::back_inserter(argv), [](std::string& word) { return word.data(); });
    argv.push_back(nullptr);
    pid_t child = 0;
    int status = -1;
    if (posix_spawn(&child, program.c_str(), nullptr, nullptr, argv.data(), environ) == 0) {
        waitpid(child, &status, 0);
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : EXIT_FAILURE;
}

}  // namespace

int renderAll(const std::string& folder, const std::vector<std::string>& names, const std::string& pluginPath,
              const std::vector<std::string>& arguments) {
    fs::create_directories(folder);
    const std::string script = (fs::path(folder) / "everything.tavro-script").string();
    writeScript(script, names, "shot");
    std::ofstream(fs::path(folder) / "screen.json")
        << R"({"screens":[{"name":"large text","x":0,"y":0,"width":3000,"height":2000,"logicalDpi":144,)"
        << R"("logicalBaseDpi":144,"dpr":1}]})";
    for (const Variant& variant : kVariants) {
        std::vector<std::string> words = arguments;
        words.insert(words.end(), {"--script", script, "--shots", (fs::path(folder) / variant.name).string()});
        if (variant.longWords) {
            words.insert(words.end(), {"--bundle", makeStretchedBundle(pluginPath, folder)});
        }
        const char* const former = std::getenv(variant.variable);
        const std::string kept = former != nullptr ? former : "";
        std::string value = variant.value;
        if (const std::size_t place = value.find('%'); place != std::string::npos) {
            value.replace(place, 1, folder);
        }
        setenv(variant.variable, value.c_str(), 1);
        const int status = runThisProgram(std::move(words));
        kept.empty() ? unsetenv(variant.variable) : setenv(variant.variable, kept.c_str(), 1);
        if (status != EXIT_SUCCESS) {
            return status;
        }
    }
    return EXIT_SUCCESS;
}

int auditAll(const std::string& folder, const std::vector<std::string>& names, std::vector<std::string> arguments) {
    fs::create_directories(folder);
    const std::string script = (fs::path(folder) / "everything.tavro-script").string();
    writeScript(script, names, "audit");
    arguments.insert(arguments.end(), {"--script", script});
    return runThisProgram(std::move(arguments));
}
