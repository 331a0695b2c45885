// Real programs, run as people run them.
#pragma once

#include "tests/platform/files/temporary_folder.h"
#include "tests/support/places.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

inline const std::string kProgram = stagePath("bin/tavro-print");
inline const std::string kZR420 = sourcePath("resources/ppd/Tavro-ZR420.ppd");
inline const std::string kTenPages = sourcePath("tests/data/ten-pages.pdf");

inline std::string contentOf(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

/// A run without a display, a home folder, or a print server.
class ProgramTest : public testing::Test {
protected:
    struct Run {
        int status;
        std::string output;
        std::string errors;
    };
    using Words = std::vector<std::string>;

    Run run(const Words& arguments, const Words& environment = {}) const {
        return start(kProgram, arguments, environment);
    }

    Run start(const std::string& program, const Words& arguments, const Words& environment = {}) const {
        Words words{program};
        words.insert(words.end(), arguments.begin(), arguments.end());
        Words variables = environment;
        for (const std::string& variable :
             Words{"HOME=" + folder.path().string(), "PATH=/usr/bin:/bin", "CUPS_SERVER=127.0.0.1:1",
                   "XDG_RUNTIME_DIR=" + folder.path().string()}) {
            // Of two with a name programs take the first one, and shells the last one.
            const std::string name = variable.substr(0, variable.find('=') + 1);
            if (std::ranges::none_of(environment, [&](const std::string& other) { return other.starts_with(name); })) {
                variables.push_back(variable);
            }
        }
        for (const std::string name : {"ASAN_OPTIONS", "LSAN_OPTIONS", "FONTCONFIG_FILE"}) {
            if (const char* value = std::getenv(name.c_str())) {
                variables.push_back(name + "=" + value);
            }
        }

        const std::string output = folder / "stdout";
        const std::string errors = folder / "stderr";
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        pid_t child = 0;
        const int error = posix_spawn(&child, words[0].c_str(), &actions, nullptr, pointers(words).data(),
                                      pointers(variables).data());
        posix_spawn_file_actions_destroy(&actions);
        EXPECT_EQ(error, 0) << words[0];
        if (whileRunning) {
            whileRunning(child);
        }
        int status = 0;
        waitpid(child, &status, 0);
        hasLeftCore = WIFSIGNALED(status) && WCOREDUMP(status);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), contentOf(output), contentOf(errors)};
    }

    /// A run on the ZR420 with a script, a document of ten pages, and further arguments.
    Run script(const std::string& text, const Words& more = {}, const Words& environment = {}) const {
        Words arguments{"--ppd", kZR420, "--script", add("script", text), kTenPages};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run(arguments, environment);
    }

    std::string add(const char* name, const std::string& content) const {
        std::ofstream(folder / name, std::ios::binary) << content;
        return folder / name;
    }

    /// A settings file with pairs of the PPD dictionary ("Duplex=None Jog=EndOfSet") and items of the ticket.
    std::string settingsWith(const std::string& pairs, const std::string& items = {}) const {
        std::istringstream words(pairs);
        std::string choices;
        for (std::string word; words >> word;) {
            const std::size_t equals = word.find('=');
            choices += "<key>" + word.substr(0, equals) + "</key><string>" + word.substr(equals + 1) + "</string>";
        }
        return add("settings.plist", "<plist version=\"1.0\"><dict><key>PMPrintSettingsTicket</key><dict>" + items +
                                         "<key>PPDDict</key><dict>" + choices + "</dict></dict></dict></plist>");
    }

    TemporaryFolder folder;
    std::function<void(pid_t)> whileRunning;  // called once the program is started
    mutable bool hasLeftCore = false;         // the last program

private:
    static std::vector<char*> pointers(Words& words) {
        std::vector<char*> list;
        for (std::string& word : words) {
            list.push_back(word.data());
        }
        list.push_back(nullptr);
        return list;
    }
};
