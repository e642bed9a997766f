// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <functional>

namespace quorel
{

/** Where setup's words go, a line at a time without its end. Both are set. */
struct SetupWords
{
    /** What was done. */
    std::function<void(const juce::String& line)> say;
    /** What failed. */
    std::function<void(const juce::String& line)> complain;
};

} // namespace quorel
