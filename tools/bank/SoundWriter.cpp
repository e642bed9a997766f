// SPDX-License-Identifier: GPL-3.0-or-later
#include "SoundWriter.h"

#include "LineReading.h"
#include "ParameterWords.h"

#include "common/MessagePump.h"
#include "parameters/ParameterText.h"

namespace quorel::bank
{

namespace
{
constexpr int settleMillis = 20;
} // namespace

SoundWriter::SoundWriter(PluginProcessor& destination)
    : processor(destination)
{
}

void SoundWriter::setShowing(int index, const juce::String& wanted, const TextLine& line)
{
    // Some parameters have no text that could be searched for.
    const bool showsNothing = shownAt(index, 0.0f) == shownAt(index, 1.0f);
    const auto value = showsNothing ? percentValue(wanted)
                                    : valueShowing(wanted, [&](float v) { return shownAt(index, v); });
    if (!value)
        fail(line, line.key + " shows values from \"" + shownAt(index, 0.0f) + "\" to \"" +
                       shownAt(index, 1.0f) + "\", and never \"" + wanted + "\"");
    set(index, *value);
}

juce::String SoundWriter::shownAt(int index, float value) const
{
    ParameterTextSources sources;
    sources.value = [&](int i) { return i == index ? value : processor.getParameter(i); };
    sources.easyText = [](int, int) { return juce::String(); };
    return parameterText(index, sources);
}

void SoundWriter::settle()
{
    juce::AudioBuffer<float> buffer(2, processor.getBlockSize());
    juce::MidiBuffer midi;
    for (int i = 0; i < 2; ++i)
    {
        processor.processBlock(buffer, midi);
        pumpUntil([] { return false; }, settleMillis);
    }
}

} // namespace quorel::bank
