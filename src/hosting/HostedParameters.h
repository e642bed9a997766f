// SPDX-License-Identifier: GPL-3.0-or-later
// Parameters of a hosted instrument by index. They go through JUCE's parameter objects, because each of the
// instance's own calls by index writes a shared word, which two threads must not do at once. Any thread,
// within an `InstanceAccess::Use`. Reading and writing values waits for the instrument's lock.
#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

namespace quorel
{

/** The lock that JUCE holds during each call to the instrument but that for a block: for as long as a slow
    instrument takes. The audio thread only tries it. Defined in cmake/juce. */
const juce::CriticalSection& instrumentLock(juce::AudioPluginInstance& plugin) noexcept;

/** Stands in for the name of a parameter that has none. */
constexpr const char* namelessParameter = "---";

inline int numHostedParameters(const juce::AudioPluginInstance& plugin)
{
    return plugin.getParameters().size();
}

/** Empty for an index out of range. */
inline juce::String hostedParameterName(const juce::AudioPluginInstance& plugin, int index)
{
    constexpr int maximumLength = 255;
    const auto* parameter = plugin.getParameters()[index];
    return parameter != nullptr ? parameter->getName(maximumLength) : juce::String();
}

/** 0 to 1; 0 for an index out of range. */
inline float hostedParameter(const juce::AudioPluginInstance& plugin, int index)
{
    const auto* parameter = plugin.getParameters()[index];
    return parameter != nullptr ? parameter->getValue() : 0.0f;
}

/** Does nothing for an index out of range. */
inline void setHostedParameter(juce::AudioPluginInstance& plugin, int index, float value)
{
    if (auto* parameter = plugin.getParameters()[index])
        parameter->setValue(value);
}

} // namespace quorel
