// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>
#include <juce_core/juce_core.h>

#include <csignal>

// Runs a statement that aborts, in a child that has all that this process has. Windows has no such children: the test
// is skipped.
#if JUCE_WINDOWS
#define QUOREL_EXPECT_ABORT(statement) GTEST_SKIP() << "no process can go on as two here"
#else
#define QUOREL_EXPECT_ABORT(statement) EXPECT_EXIT(statement, testing::KilledBySignal(SIGABRT), "")
#endif
