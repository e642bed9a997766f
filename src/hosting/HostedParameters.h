// SPDX-License-Identifier: GPL-3.0-or-later
// Parameters of a hosted instrument by index, through JUCE's parameter objects: the index-based calls of
// JUCE's instances write a shared word each time, which several threads may not do at once. Any thread,
// within a `Use`.
#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

namespace quorel
{

inline int numHostedParameters(const juce::AudioPluginInstance& plugin)
{
    return plugin.getParameters().size();
}

/** Empty for an index outside. */
inline juce::String hostedParameterName(const juce::AudioPluginInstance& plugin, int index)
{
    constexpr int maximumLength = 255;
    const auto* parameter = plugin.getParameters()[index];
    return parameter != nullptr ? parameter->getName(maximumLength) : juce::String();
}

/** 0 to 1; 0 for an index outside. */
inline float hostedParameter(const juce::AudioPluginInstance& plugin, int index)
{
    const auto* parameter = plugin.getParameters()[index];
    return parameter != nullptr ? parameter->getValue() : 0.0f;
}

/** Does nothing for an index outside. */
inline void setHostedParameter(juce::AudioPluginInstance& plugin, int index, float value)
{
    if (auto* parameter = plugin.getParameters()[index])
        parameter->setValue(value);
}

} // namespace quorel
