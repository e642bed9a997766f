// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/OriginalComparison.h"
#include "engine/Session.h"

#include <juce_core/juce_core.h>

#include <memory>

namespace quorel
{

class PluginProcessor;

/** The whole sound as it was at one moment, hosted instruments and all, with its place in the session: what a
    step back over more than parameters returns to. Message thread. */
struct SoundMoment
{
    /** The sound asked for last, if one is on its way. */
    static SoundMoment capture(PluginProcessor& processor);

    /** Bytes of a state chunk. */
    juce::MemoryBlock sound() const;

    /** Every block of memory that this moment holds, for whoever adds them up: moments may share them. */
    std::array<const juce::MemoryBlock*, 3> blocks() const;

    /** Compressed. */
    std::shared_ptr<const juce::MemoryBlock> packed;
    juce::String preset;
    juce::String folder;
    OriginalComparison::Sides comparison;
    Session::FileMark file;
};

} // namespace quorel
