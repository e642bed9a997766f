// SPDX-License-Identifier: GPL-3.0-or-later
#include "EqLines.h"

#include "LineReading.h"
#include "ParameterWords.h"

namespace quorel::bank
{

bool setEq(SoundWriter& sound, int unit, const TextLine& line)
{
    // The master's slots have no texts; layer 1's of the same meaning do.
    const auto setFrom = [&](int offset, const juce::String& wanted)
    {
        const int shown = eqBase(0) + offset;
        const auto value = valueShowing(wanted, [&](float v) { return sound.shownAt(shown, v); });
        sound.set(eqBase(unit) + offset, need(value, line, "frequency, and for a band gain and width"));
    };
    const int band = numberedFrom(line.key, "EQ Band", numEqBands);
    if (band >= 0)
    {
        const auto parts = listOf(line.value);
        if (parts.size() != 3)
            fail(line, line.key + " takes frequency, gain and width, such as 250 hz, +3 db, 40 %");
        const int first = eqSlot::bands + eqSlot::slotsPerBand * band;
        sound.set(eqBase(unit) + first + eqSlot::bandOn, 1.0f);
        setFrom(first + eqSlot::bandFreq, parts[0]);
        setFrom(first + eqSlot::bandGain, parts[1]);
        setFrom(first + eqSlot::bandWidth, parts[2]);
    }
    else if (is(line, "EQ Low-pass"))
    {
        sound.set(eqBase(unit) + eqSlot::lowPassOn, 1.0f);
        setFrom(eqSlot::lowPassFreq, line.value);
    }
    else if (is(line, "EQ High-pass"))
    {
        sound.set(eqBase(unit) + eqSlot::highPassOn, 1.0f);
        setFrom(eqSlot::highPassFreq, line.value);
    }
    else
    {
        return false;
    }
    sound.set(eqBase(unit) + eqSlot::on, 1.0f);
    return true;
}

} // namespace quorel::bank
