// Starts the toolbox once for all cases, with nobody at the screen.

#include "platform/toolbox/Automation.h"

#include <gtest/gtest.h>
#include <QCoreApplication>
#include <cstdlib>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (ToolboxInitialize(&argc, argv, true) != noErr) {
        return EXIT_FAILURE;
    }
    const int failed = RUN_ALL_TESTS();
    ToolboxTerminate();
    delete QCoreApplication::instance();  // leak checkers look at what fonts and styles left behind
    return failed;
}
