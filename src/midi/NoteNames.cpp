// SPDX-License-Identifier: GPL-3.0-or-later
#include "midi/NoteNames.h"

namespace quorel
{

namespace
{
constexpr int semitones = 12;
/** Octave of note 0. */
constexpr int lowestOctave = -2;
} // namespace

juce::String noteName(int note)
{
    static constexpr const char* names[] = {"C", "C#", "D", "D#", "E", "F", "F#", "G", "G#", "A", "A#", "B"};
    note = juce::jlimit(0, 127, note);
    return names[note % semitones] + juce::String(note / semitones + lowestOctave);
}

std::optional<int> noteOfName(const juce::String& name)
{
    constexpr int lettersFromA[] = {9, 11, 0, 2, 4, 5, 7};
    const auto text = name.trim().toLowerCase();
    const auto letter = text[0];

    if (letter < 'a' || letter > 'g')
        return {};

    const int sign = text[1] == '#' ? 1 : (text[1] == 'b' ? -1 : 0);
    const auto octave = text.substring(sign == 0 ? 1 : 2);
    const auto digits = octave.startsWithChar('-') ? octave.substring(1) : octave;

    if (digits.isEmpty() || digits.length() > 2 || !digits.containsOnly("0123456789"))
        return {};

    return (octave.getIntValue() - lowestOctave) * semitones + lettersFromA[letter - 'a'] + sign;
}

} // namespace quorel
