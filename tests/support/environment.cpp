// The environment of each test program, set before anything else runs in it, so that a program started by hand or in a
// debugger tests the same as under ctest: no screen, no session bus, none of the home, the folders, the language, the
// fonts and the print server of who runs it.

#include <sys/stat.h>
#include <unistd.h>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace {

struct Variable {
    const char* name;
    const char* value;
    int replaces;
};

#define LEAK_OPTIONS "suppressions=" TAVRO_SOURCE_DIR "/tests/support/lsan.supp:print_suppressions=0"

// What a user's settings begin with, and those of them that are for tests and their debugging.
constexpr std::array kSettings{"XDG_", "CUPS_", "PRINTER=", "LPDEST=", "QT_", "TAVRO_", "DESKTOP_STARTUP_ID="};
constexpr std::array kKept{"QT_QPA_PLATFORM=", "QT_LOGGING_", "QT_DEBUG_", "TAVRO_TEST_"};
// A test of languages says in the variable which one it wants.
constexpr std::array kLanguages{"LANG", "LC_"};
constexpr const char* kLanguageVariable = "TAVRO_TEST_LOCALE";

// name, value, whether it replaces what is set: a screen and a leak checker may be chosen by who runs the tests
constexpr std::array kVariables{
    Variable{"QT_QPA_PLATFORM", "offscreen", 0},
    Variable{"HOME", TAVRO_TEST_HOME, 1},
    Variable{"XDG_RUNTIME_DIR", TAVRO_TEST_HOME "/run", 1},
    Variable{"LANG", "C.UTF-8", 0},
    Variable{"FONTCONFIG_FILE", TAVRO_SOURCE_DIR "/tests/support/fonts.conf", 1},
    Variable{"DBUS_SESSION_BUS_ADDRESS", "disabled:", 1},
    Variable{"LSAN_OPTIONS", LEAK_OPTIONS, 0},  // for the programs that a test starts
};

template <std::size_t count>
bool beginsWithOneOf(const char* variable, const std::array<const char*, count>& beginnings) {
    for (const char* beginning : beginnings) {
        if (std::strncmp(variable, beginning, std::strlen(beginning)) == 0) {
            return true;
        }
    }
    return false;
}

bool isSetting(const char* variable) {
    return (beginsWithOneOf(variable, kSettings) && !beginsWithOneOf(variable, kKept)) ||
           (beginsWithOneOf(variable, kLanguages) && std::getenv(kLanguageVariable) == nullptr);
}

[[gnu::constructor(101)]] void setEnvironment() {
    mkdir(TAVRO_TEST_HOME, 0700);
    mkdir(TAVRO_TEST_HOME "/run", 0700);
    char** end = environ;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        if (!isSetting(*variable)) {
            *end++ = *variable;
        }
    }
    *end = nullptr;
    for (const Variable& variable : kVariables) {
        setenv(variable.name, variable.value, variable.replaces);
    }
}

}  // namespace

// The leak checker of this process has read the variable before anything here ran: it calls this.
extern "C" const char* __lsan_default_options();  // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_options() {
    return LEAK_OPTIONS;
}
