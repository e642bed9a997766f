// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "parameters/ParameterAccess.h"
#include "presets/StateChunk.h"

#include <juce_core/juce_core.h>

namespace quorel
{

/** The bytes of one preset file, for reading and for changes in place: whatever isn't changed stays as it is,
    byte for byte, the hosted instruments' states and anything behind them included. */
class PresetDocument final : public ParameterAccess
{
public:
    /** Takes a preset file's bytes. Fails, naming what is wrong, where they are not a whole preset with all
        parameters at their usual places. */
    static juce::Result parse(const juce::MemoryBlock& bytes, PresetDocument& document);

    /** Reads and parses a file; the error names it. */
    static juce::Result open(const juce::File& file, PresetDocument& document);

    const juce::MemoryBlock& bytes() const noexcept { return data; }

    const StateChunk& chunk() const noexcept { return content; }

    /** As the function below. */
    juce::String whatStatesLack() const;

    // Names are written into the header and into the parameters.
    void setPresetName(const juce::String& preset);
    void setFolderName(const juce::String& folder);

    /** What is stored, limited to 0 to 1; 0 outside the table. */
    float readParameter(int index) const noexcept override;
    /** Stores a value, limited to 0 to 1. Nothing else follows from it. */
    void writeParameter(int index, float value) override;

    void writeParameterNotifyingHost(int index, float value) override { writeParameter(index, value); }

private:
    juce::MemoryBlock data;
    StateChunk content;
};

/** Reads a preset's bytes; the error names the file and what is wrong with it. */
juce::Result readPresetBytes(const juce::File& file, juce::MemoryBlock& bytes);

/** What keeps the instruments' states from being whole, in a few words: an impossible size, or fewer bytes
    than it says. Empty if they are whole. `numBytes` is the length of all, `end` that up to their end. */
juce::String whatStatesLack(const StateChunk& chunk, std::size_t numBytes, std::size_t& end);

/** What keeps bytes from being a preset, in a few words; empty if they are one. */
juce::String whyNotAPreset(const juce::MemoryBlock& bytes, StateChunk& chunk);

} // namespace quorel
