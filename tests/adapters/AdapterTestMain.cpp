// SPDX-License-Identifier: GPL-3.0-or-later
// Runs all tests of a program that hosts the finished plug-in: away from the user's own settings.
#include "ScratchUser.h"
#include "support/HostSeam.h"
#include "support/WindowErrors.h"

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();

    quorel::test::leaveUsersScreen();
    quorel::test::surviveWindowErrors();
    // A test that starts this program says whose folders to take.
    if (argc > 1)
    {
        quorel::test::adoptUser(argv[1]);
        return RUN_ALL_TESTS();
    }

    const quorel::test::ScratchUser user;
    return RUN_ALL_TESTS();
}
