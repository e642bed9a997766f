// SPDX-License-Identifier: GPL-3.0-or-later
// What the command line says of effects and sends, and the list of effects. Any thread.
#pragma once

#include <juce_core/juce_core.h>
#include <optional>
#include <vector>

namespace quorel
{

/** "2=Stereo Delay:0.5,0.25:mix=0.4": an effect block that is switched on. What isn't given stays as it is.
    */
struct EffectChoice
{
    /** 0 to 3. */
    int block = 0;
    /** Row of the type table. */
    int type = 0;
    /** The first parameters of the type, 0 to 1. */
    std::vector<float> values;
    /** Positions of the block's controls, 0 to 1. */
    std::optional<float> mix, pan, level;
};

/** "1:2=0.5" or "1:2=0.5pre": how much of a layer goes to an effect block. */
struct SendChoice
{
    /** 0 to 3. */
    int layer = 0;
    /** 0 to 3. */
    int send = 0;
    /** Position of the send control, 0 to 1. */
    float level = 0.0f;
    bool isPreFader = false;
};

/** Reads an `--fx` value; the error says what was expected. */
juce::Result parseEffectChoice(const juce::String& text, EffectChoice& choice);

/** Reads a `--send` value; the error says what was expected. */
juce::Result parseSendChoice(const juce::String& text, SendChoice& choice);

/** A finite decimal number or a quotient of two such as 60.5/127, whatever the user's language. */
std::optional<double> parseQuotient(const juce::String& text);

/** The same within 0 to 1. */
std::optional<float> parseUnitValue(const juce::String& text);

/** The type table for reading: number, name and parameter labels, in lines of at most 100 characters. */
juce::String effectList();

} // namespace quorel
