// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

namespace quorel
{

/** While it lives, keeps JUCE's notes about each plug-in that it opens off a tool's standard error stream. */
class QuietLogger final : private juce::Logger
{
public:
    QuietLogger() { setCurrentLogger(this); }

    ~QuietLogger() override { setCurrentLogger(nullptr); }

private:
    void logMessage(const juce::String&) override {}
};

} // namespace quorel
