// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PresetText.h"

#include "engine/PluginProcessor.h"

namespace quorel::bank
{

/** The processor that a text is written to. */
class SoundWriter
{
public:
    explicit SoundWriter(PluginProcessor& destination);

    void set(int index, float value) { processor.setParameter(index, value); }

    /** Moves a parameter to where it shows the text. */
    void setShowing(int index, const juce::String& wanted, const TextLine& line);

    /** What a parameter would show at a value, all others staying. */
    juce::String shownAt(int index, float value) const;

    /** Blocks and message loop for long enough that what was sent has arrived and was answered. */
    void settle();

    PluginProcessor& processor;
};

} // namespace quorel::bank
