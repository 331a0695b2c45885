// The environment of each test program, set before anything else runs in it, so that a program started by hand or in a
// debugger tests the same as under ctest: no screen, no session bus, and neither the home nor the folders of who runs
// it.

#include <sys/stat.h>
#include <array>
#include <cstdlib>

namespace {

struct Variable {
    const char* name;
    const char* value;
    int replaces;
};

#define LEAK_OPTIONS "suppressions=" TAVRO_SOURCE_DIR "/tests/support/lsan.supp:print_suppressions=0"

// name, value, whether it replaces what is set: a screen and a leak checker may be chosen by who runs the tests
constexpr std::array kVariables{
    Variable{"QT_QPA_PLATFORM", "offscreen", 0},
    Variable{"HOME", TAVRO_TEST_HOME, 1},
    Variable{"XDG_RUNTIME_DIR", TAVRO_TEST_HOME "/run", 1},
    Variable{"XDG_CONFIG_HOME", "", 1},
    Variable{"XDG_DATA_HOME", "", 1},
    Variable{"XDG_CACHE_HOME", "", 1},
    Variable{"XDG_STATE_HOME", "", 1},
    Variable{"DBUS_SESSION_BUS_ADDRESS", "disabled:", 1},
    Variable{"LSAN_OPTIONS", LEAK_OPTIONS, 0},  // for the programs that a test starts
};

[[gnu::constructor(101)]] void setEnvironment() {
    mkdir(TAVRO_TEST_HOME, 0700);
    mkdir(TAVRO_TEST_HOME "/run", 0700);
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
