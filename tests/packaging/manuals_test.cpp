// The manual pages: made from the program's help and the documentation, with nothing lost on the way.
#include "tests/host/program/program_fixture.h"
#include "tests/support/places.h"

#include <regex>

namespace {

class Manuals : public ProgramTest {
protected:
    static inline const std::string kOptions = TAVRO_MANUALS_FOLDER "/tavro-print.1";
    /// In the other languages of the program.
    static std::string translated(const std::string& language) {
        return TAVRO_MANUALS_FOLDER "/" + language + "/man1/tavro-print.1";
    }
    static inline const Words kLanguages{"ar", "de", "es", "fr", "ja", "zh_CN"};
    static inline const std::string kLanguage = TAVRO_MANUALS_FOLDER "/tavro-script.5";

    /// The page without its fonts, as an item of a list has each line.
    static std::string plain(const std::string& page) {
        const std::string noFonts = std::regex_replace(contentOf(page), std::regex("\\\\f(\\[[A-Z]*\\]|[A-Z])"), "");
        return std::regex_replace(noFonts, std::regex("\\\\-"), "-");
    }
    static Words matches(const std::string& text, const char* pattern) {
        const std::regex expression(pattern);
        Words found;
        for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match) {
            found.push_back((*match)[1]);
        }
        return found;
    }
    static bool hasItem(const std::string& page, const std::string& begin) {
        return page.find("\n.TP\n" + begin) != std::string::npos;
    }
};

}  // namespace

TEST_F(Manuals, HaveAllThatTheHelpSays) {
    const std::string help = run({"--help"}).output;
    const std::string page = plain(kOptions);
    const Words options = matches(help, "\n  (--[a-z-]+( [^ ]+)?)  ");
    EXPECT_GT(options.size(), 10u);
    for (const std::string& option : options) {
        EXPECT_TRUE(hasItem(page, option + "\n")) << option;
    }
    const Words statuses = matches(help, "\n  ([0-9]   [^\n]*)");
    EXPECT_EQ(statuses.size(), 6u);
    const std::string ends = page.substr(page.find(".SH \"EXIT STATUS\""));
    for (const std::string& status : statuses) {
        EXPECT_TRUE(hasItem(ends, status.substr(0, 1) + "\n" + status.substr(4) + "\n")) << status;
    }
}

TEST_F(Manuals, HaveItInEveryLanguage) {
    const std::string english = plain(kOptions);
    for (const std::string& language : kLanguages) {
        const std::string help = run({"--help"}, {"LANGUAGE=" + language, "LC_ALL=C.UTF-8"}).output;
        // Lines of Chinese and Japanese may end anywhere.
        const std::string page = std::regex_replace(plain(translated(language)), std::regex("\\\\:"), "");
        const Words texts = matches(help, "\n  (?:--[a-z-]+(?: [^ \n]+)?|[0-9])   *([^\n]*)");
        EXPECT_GT(texts.size(), 20u) << language;
        for (const std::string& text : texts) {
            EXPECT_NE(page.find("\n" + text + "\n"), std::string::npos) << language << ": " << text;
        }
        // The rest is the translator's: as many items, examples and other pages.
        for (const char* part : {"\n(\\.TP)", "\n(\\.RS)", "\n(\\.BR [a-z-]+ \\([0-9]\\))", "\n(\\.SH)"}) {
            EXPECT_EQ(matches(page, part).size(), matches(english, part).size()) << language << part;
        }
    }
}

TEST_F(Manuals, HaveEveryActionOfTheScriptLanguage) {
    const std::string source = contentOf(sourcePath("host/script/script_parser.cpp"));
    const std::size_t table = source.find("kActions[] = {");
    const Words actions = matches(source.substr(table, source.find("};", table) - table), "\n    \\{\"([a-z]+)\", ");
    EXPECT_GT(actions.size(), 12u);
    const std::string page = plain(kLanguage);
    for (const std::string& action : actions) {
        EXPECT_TRUE(hasItem(page, action) || page.find(", " + action + "\n") != std::string::npos) << action;
    }
    const Words controls = matches(contentOf(sourcePath("docs/script-language.md")), "\n\\| `(Host:[0-9]+)`");
    EXPECT_GT(controls.size(), 10u);
    for (const std::string& control : controls) {
        EXPECT_TRUE(hasItem(page, control)) << control;
    }
}

TEST_F(Manuals, AreWellFormed) {
    Words pages{kOptions, kLanguage, TAVRO_MANUALS_FOLDER "/tavro-report.5", TAVRO_MANUALS_FOLDER "/tavro-portal.8"};
    std::ranges::transform(kLanguages, std::back_inserter(pages), translated);
    for (const std::string& page : pages) {
        const Run formatted = start("/usr/bin/man", {"--warnings", "--local-file", page}, {"LC_ALL=C.UTF-8"});
        EXPECT_EQ(formatted.status, 0);
        EXPECT_EQ(formatted.errors, "");
        EXPECT_NE(formatted.output.find("(1)"), std::string::npos);
        const Run lint = start("/usr/bin/mandoc", {"-T", "lint", "-W", "error", page});
        EXPECT_EQ(lint.status, 0) << lint.output;
    }
}
