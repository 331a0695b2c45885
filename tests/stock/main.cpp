#include "platform/toolbox/Automation.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    ToolboxInitialize(&argc, argv, true);
    return RUN_ALL_TESTS();
}
