// SPDX-License-Identifier: GPL-3.0-or-later
// Runs all tests of a program that hosts the finished plug-in: away from the user's own settings.
#include "ScratchUser.h"

#include <gtest/gtest.h>

#include <cstdlib>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();

    // With none set the plug-in would still try ":0.0": name one that can't exist. Tests with windows get
    // theirs in QUOREL_TEST_DISPLAY.
    const auto* display = std::getenv("QUOREL_TEST_DISPLAY");
    setenv("DISPLAY", display != nullptr ? display : ":9999", 1);
    const quorel::test::ScratchUser user;
    return RUN_ALL_TESTS();
}
