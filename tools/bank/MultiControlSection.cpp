// SPDX-License-Identifier: GPL-3.0-or-later
#include "MultiControlSection.h"

#include "LineReading.h"
#include "ParameterWords.h"

#include "parameters/ParameterCodings.h"
#include "parameters/ParameterText.h"

namespace quorel::bank
{

namespace
{
constexpr int longestName = 23;
constexpr int numKnobs = 4;

void setKnob(SoundWriter& sound, int target, const TextLine& line)
{
    const auto parts = listOf(line.value);
    const auto words = parts[0];
    const int layer = numberedFrom(words.substring(0, 7), "Layer", numLayers);
    const auto what = words.substring(7).trim();
    const int send = numberedFrom(what, "Send", numSends);
    const int easy = numberedFrom(what, "Easy", numEasyParameters);
    const int n = what.equalsIgnoreCase("Volume") ? layerSlot::volume
                  : what.equalsIgnoreCase("Pan")  ? layerSlot::pan
                  : send >= 0                     ? layerSlot::sendLevel + send
                  : easy >= 0                     ? layerSlot::easyValue + easy
                                                  : 0;
    const auto depth = parts.size() == 2 ? centredValue(parts[1]) : std::nullopt;
    if (layer < 0 || n == 0 || !depth)
        fail(line, line.key + " takes a target and a depth, such as Layer 2 Easy 3, +50 %");
    if (!sound.processor.getLayer(layer).hasInstance())
        fail(line, "layer " + juce::String(layer + 1) + " has no instrument");

    for (int number = 1; number <= MultiControls::numTargets; ++number)
        if (MultiControls::parameterOfListNumber(number) == layerParameter(layer, n))
            sound.set(slot::multiAssignment + target, encodeParamInt(number));
    sound.set(slot::multiKnob + target, *depth);
}
} // namespace

void setMultiControl(SoundWriter& sound, int group, const TextSection& section)
{
    for (const auto& line : section.lines)
        if (const int knob = numberedFrom(line.key, "Knob", numKnobs); knob >= 0)
            setKnob(sound, numKnobs * group + knob, line);

    for (const auto& line : section.lines)
    {
        if (numberedFrom(line.key, "Knob", numKnobs) >= 0)
            continue;
        if (is(line, "Name"))
        {
            if (line.value.length() > longestName ||
                line.value.getNumBytesAsUTF8() != static_cast<std::size_t>(line.value.length()))
                fail(line, "a name has at most 23 plain letters");
            writeParamText(sound.processor, slot::multiName + slot::multiNameLength * group, line.value,
                           slot::multiNameLength - 1);
        }
        else if (is(line, "Position"))
        {
            sound.set(slot::multiFader + group, need(percentValue(line.value), line, "0 to 100 %"));
        }
        else
        {
            failUnknown(line);
        }
    }
}

} // namespace quorel::bank
