// SPDX-License-Identifier: GPL-3.0-or-later
#include "LayerSection.h"

#include "EqLines.h"
#include "LayerSounds.h"
#include "LineReading.h"
#include "ParameterWords.h"

#include <cmath>

namespace quorel::bank
{

namespace
{
std::optional<int> velocityNumber(const juce::String& text)
{
    const auto number = numberOf(text);
    return number && *number >= 0.0 && *number <= 127.0 ? std::optional<int>(static_cast<int>(*number))
                                                        : std::nullopt;
}

std::optional<float> channelValue(const juce::String& text)
{
    const auto number = numberOf(text);
    if (!number || *number < 0.0 || *number > 16.0 || *number != std::floor(*number))
        return {};
    return static_cast<float>(*number / 16.0);
}

void setZone(SoundWriter& sound, int layer, const TextLine& line)
{
    const int zone = numberedFrom(line.key, "Zone", numZones);
    if (line.value.equalsIgnoreCase("off"))
    {
        sound.set(layerParameter(layer, layerSlot::zoneOn + zone), 0.0f);
        return;
    }
    const auto parts = listOf(line.value);
    const char* expected = "keys, and velocities behind a comma, such as C1, 1 - 90, or off";
    const auto keys = need(rangeOf(parts[0], keyNumber), line, expected);
    const auto velocities = need(parts.size() == 1   ? std::optional<std::pair<int, int>>({1, 127})
                                 : parts.size() == 2 ? rangeOf(parts[1], velocityNumber)
                                                     : std::nullopt,
                                 line, expected);
    const int firstKey = layerSlot::zoneKeys + 2 * zone;
    const int firstVelocity = layerSlot::zoneVelocities + 2 * zone;
    sound.set(layerParameter(layer, firstKey), stepValue(keys.first, 0, 127));
    sound.set(layerParameter(layer, firstKey + 1), stepValue(keys.second, 0, 127));
    sound.set(layerParameter(layer, firstVelocity), stepValue(velocities.first, 0, 127));
    sound.set(layerParameter(layer, firstVelocity + 1), stepValue(velocities.second, 0, 127));
}

bool setLayerRange(SoundWriter& sound, int layer, const TextLine& line)
{
    const auto setRange = [&](int n, std::pair<int, int> range)
    {
        sound.set(layerParameter(layer, n), stepValue(range.first, 0, 127));
        sound.set(layerParameter(layer, n + 1), stepValue(range.second, 0, 127));
    };
    if (is(line, "Keys"))
        setRange(layerSlot::keyMin, need(rangeOf(line.value, keyNumber), line, "keys such as C1 - B3"));
    else if (is(line, "Velocity"))
        setRange(layerSlot::velocityMin,
                 need(rangeOf(line.value, velocityNumber), line, "velocities such as 1 - 90"));
    else if (numberedFrom(line.key, "Zone", numZones) >= 0)
        setZone(sound, layer, line);
    else
        return false;
    return true;
}

void setSend(SoundWriter& sound, int layer, const TextLine& line)
{
    const int send = numberedFrom(line.key, "Send", numSends);
    const bool preFader = line.value.endsWithIgnoreCase(" pre");
    const auto level = preFader ? percentValue(line.value.dropLastCharacters(4)) : faderValue(line.value);
    sound.set(layerParameter(layer, layerSlot::sendPreFader + send), preFader ? 1.0f : 0.0f);
    sound.set(layerParameter(layer, layerSlot::sendLevel + send),
              need(level, line, "dB such as -6 db, or 50 % pre"));
}

void setBlocks(SoundWriter& sound, int layer, const TextLine& line)
{
    for (const auto& name : listOf(line.value))
    {
        int found = 0;
        for (int n = layerSlot::blockProgramChange; n <= layerSlot::blockUserController2 && found == 0; ++n)
            if (sound.processor.getParameterName(layerParameter(layer, n))
                    .fromFirstOccurrenceOf(" ", false, false) == name)
                found = n;
        if (found == 0)
            fail(line, "there is no switch \"" + name + "\" that blocks MIDI");
        sound.set(layerParameter(layer, found), 1.0f);
    }
}

bool setLayerMix(SoundWriter& sound, int layer, const TextLine& line)
{
    if (is(line, "Volume"))
        sound.set(layerParameter(layer, layerSlot::volume),
                  need(faderValue(line.value), line, "dB up to +12, or off"));
    else if (is(line, "Pan"))
        sound.set(layerParameter(layer, layerSlot::pan),
                  need(centredValue(line.value), line, "-100 to +100"));
    else if (is(line, "Block"))
        setBlocks(sound, layer, line);
    else if (is(line, "Midi Channel"))
        sound.set(layerParameter(layer, layerSlot::midiChannel),
                  need(channelValue(line.value), line, "1 to 16, or 0 for all"));
    else if (numberedFrom(line.key, "Send", numSends) >= 0)
        setSend(sound, layer, line);
    else
        return false;
    return true;
}
} // namespace

void setLayer(SoundWriter& sound, int layer, const TextLine& line)
{
    if (isSoundLine(line) || setLayerRange(sound, layer, line) || setLayerMix(sound, layer, line) ||
        setEq(sound, layer, line))
        return;

    const auto name = "Layer" + juce::String(layer + 1) + " " + line.key;
    for (int n = layerSlot::volume; n <= layerSlot::eqEnd; ++n)
    {
        const int index = layerParameter(layer, n);
        if (sound.processor.getParameterName(index).equalsIgnoreCase(name))
        {
            sound.setShowing(index, line.value, line);
            return;
        }
    }
    failUnknown(line);
}

} // namespace quorel::bank
