// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/KeyboardStrip.h"

#include "parameters/ParameterCodings.h"

namespace quorel
{

namespace
{
constexpr int numWhiteKeys = 75;
constexpr int blackWidth = 4;
constexpr int highestNote = 127;

// By played and held.
const juce::Colour groundColour{0xff0c0c0d};
const juce::Colour whiteColours[2][2]{{juce::Colour(0xff4c4b49), juce::Colour(0xff8a6a1c)},
                                      {juce::Colour(0xffbcb8ae), juce::Colour(0xfff0a818)}};
const juce::Colour blackColours[2][2]{{juce::Colour(0xff1d1d1e), juce::Colour(0xff6a500f)},
                                      {juce::Colour(0xff2e2d2b), juce::Colour(0xffc38a00)}};
/** On every C, brighter on the middle one. */
const juce::Colour markColour{0xff6e6c68};
const juce::Colour middleMarkColour{0xff9a5a00};
constexpr int middleC = 60;

bool isBlack(int note)
{
    return juce::MidiMessage::isMidiNoteBlack(note);
}

/** White keys below a note. */
int whitesBelow(int note)
{
    constexpr int inOctave[] = {0, 1, 1, 2, 2, 3, 4, 4, 5, 5, 6, 6};
    return 7 * (note / 12) + inOctave[note % 12];
}
} // namespace

KeyboardStrip::KeyboardStrip(juce::Rectangle<int> bounds, int layerIndex, Source noteSource,
                             PluginProcessor& pluginProcessor)
    : processor(pluginProcessor)
    , layer(layerIndex)
{
    const auto number = [this](int parameter) { return layerParameter(layer, parameter); };
    if (noteSource == Source::range)
        parameters.push_back({number(layerSlot::keyMin), number(layerSlot::keyMax), 0});
    else
        for (int zone = 0; zone < numZones; ++zone)
            parameters.push_back({number(layerSlot::zoneKeys + 2 * zone),
                                  number(layerSlot::zoneKeys + 2 * zone + 1),
                                  number(layerSlot::zoneOn + zone)});

    setBounds(bounds);
    setOpaque(true);
    setInterceptsMouseClicks(false, false);
    // The read-outs say the same.
    setAccessible(false);
    follow();
}

bool KeyboardStrip::readParameters()
{
    std::vector<float> now;
    for (const auto& range : parameters)
        for (const int parameter : range)
            now.push_back(parameter > 0 ? processor.readParameter(parameter) : 1.0f);
    if (now == values)
        return false;
    values = std::move(now);
    return true;
}

void KeyboardStrip::follow()
{
    const auto& monitor = processor.getMidiInput().getMonitor();
    const std::array<std::uint64_t, 2> heldNow{monitor.heldNotes(0), monitor.heldNotes(1)};
    if (!readParameters() && heldNow == heldNotes)
        return;
    heldNotes = heldNow;
    readKeys();
}

void KeyboardStrip::readKeys()
{
    std::array<Key, numNotes> now{};
    for (size_t range = 0; range < parameters.size(); ++range)
    {
        const float* value = values.data() + 3 * range;
        if (value[2] == 0.0f)
            continue;
        const int last = paramToInt(value[1], 0, highestNote);
        for (int note = paramToInt(value[0], 0, highestNote); note <= last; ++note)
            now[static_cast<size_t>(note)].played = true;
    }
    for (int note = 0; note < numNotes; ++note)
    {
        auto& key = now[static_cast<size_t>(note)];
        key.held = (heldNotes[static_cast<size_t>(note / 64)] >> (note % 64) & 1) != 0;
        if (key != std::exchange(keys[static_cast<size_t>(note)], key))
            repaint(boundsOf(note));
    }
}

juce::Rectangle<int> KeyboardStrip::boundsOf(int note) const
{
    const int keyWidth = getWidth() / numWhiteKeys;
    const int left = keyWidth * whitesBelow(note);
    return isBlack(note) ? juce::Rectangle<int>(left - blackWidth / 2, 0, blackWidth, getHeight() * 3 / 5)
                         : juce::Rectangle<int>(left, 0, keyWidth, getHeight());
}

void KeyboardStrip::paintKey(juce::Graphics& g, int note) const
{
    const auto bounds = boundsOf(note);
    if (!g.clipRegionIntersects(bounds))
        return;
    const auto& key = keys[static_cast<size_t>(note)];
    g.setColour((isBlack(note) ? blackColours : whiteColours)[key.played ? 1 : 0][key.held ? 1 : 0]);
    g.fillRect(isBlack(note) ? bounds : bounds.withTrimmedRight(1));
    if (note % 12 == 0)
    {
        g.setColour(note == middleC ? middleMarkColour : markColour);
        g.fillRect(bounds.withTrimmedRight(1).reduced(1, 0).withTop(bounds.getBottom() - 3).withHeight(2));
    }
}

void KeyboardStrip::paint(juce::Graphics& g)
{
    g.fillAll(groundColour);
    for (const bool black : {false, true})
        for (int note = 0; note < numNotes; ++note)
            if (isBlack(note) == black)
                paintKey(g, note);
}

} // namespace quorel
