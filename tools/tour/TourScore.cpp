// SPDX-License-Identifier: GPL-3.0-or-later
#include "TourScore.h"

#include "ParameterWords.h"

#include <algorithm>
#include <cmath>

namespace quorel
{

namespace
{
constexpr int ticksPerQuarter = 480;
constexpr double standardTempo = 120.0;
constexpr double standardTail = 1.5;
constexpr double fadeSeconds = 0.6;
constexpr int rampStepTicks = 20;
constexpr int fullController = 127;
constexpr int channel = 1;

double numberAtLeast(const juce::String& text, double least, const TextLine& line, const char* what)
{
    const auto number = numberOf(text.trim());
    constexpr double most = 1000.0;
    if (!number || *number < least || *number > most)
        throw TextError(line.number, juce::String(what) + " is a number, not \"" + text + "\"");
    return *number;
}

/** A controller's way from one value to another, in steps that can't be heard. */
void addRamp(juce::MidiMessageSequence& events, int controller, double fromBeat, double toBeat, int from,
             int to)
{
    const int steps = std::max(1, static_cast<int>((toBeat - fromBeat) * ticksPerQuarter) / rampStepTicks);
    int last = -1;
    for (int step = 0; step <= steps; ++step)
    {
        const double share = static_cast<double>(step) / steps;
        const int value = juce::roundToInt(from + (to - from) * share);
        if (value != last)
            events.addEvent(juce::MidiMessage::controllerEvent(channel, controller, value),
                            (fromBeat + (toBeat - fromBeat) * share) * ticksPerQuarter);
        last = value;
    }
}

/** Fills a station's phrase from its lines. */
class PhraseReader
{
public:
    explicit PhraseReader(TourStation& stationToFill)
        : station(stationToFill)
    {
    }

    void read(const TextSection& section)
    {
        station.tempo = standardTempo;
        station.tailSeconds = standardTail;
        for (const auto& line : section.lines)
        {
            if (line.key.equalsIgnoreCase("Tempo"))
                station.tempo = numberAtLeast(line.value, 20.0, line, "a tempo");
            else if (line.key.equalsIgnoreCase("Tail"))
                station.tailSeconds = numberAtLeast(line.value, fadeSeconds, line, "a tail");
            else
                add(line);
        }
        if (station.lastBeat <= 0.0)
            throw TextError(section.number, "nothing is played");
    }

private:
    void add(const TextLine& line)
    {
        const double beat = numberAtLeast(line.key, 0.0, line, "a beat");
        auto parts = juce::StringArray::fromTokens(line.value, ",", {});
        parts.trim();
        if (parts.size() != 3)
            throw TextError(line.number, "a beat takes keys, length and velocity, such as C1 E3 G3, 2, 90");
        const double length = numberAtLeast(parts[1], 0.01, line, "a length");
        station.lastBeat = std::max(station.lastBeat, beat + length);
        if (parts[0].startsWithIgnoreCase("Control "))
            addControl(line, beat, length, parts[0].substring(8), parts[2]);
        else
            addNotes(line, beat, length, parts[0], numberAtLeast(parts[2], 1.0, line, "a velocity"));
    }

    void addNotes(const TextLine& line, double beat, double length, const juce::String& keys, double velocity)
    {
        for (const auto& name : juce::StringArray::fromTokens(keys, " ", {}))
        {
            const auto key = keyNumber(name);
            if (!key || velocity > 127.0)
                throw TextError(line.number, "no key \"" + name + "\", or a velocity above 127");
            const auto strength = static_cast<juce::uint8>(velocity);
            station.events.addEvent(juce::MidiMessage::noteOn(channel, *key, strength),
                                    beat * ticksPerQuarter);
            station.events.addEvent(juce::MidiMessage::noteOff(channel, *key),
                                    (beat + length) * ticksPerQuarter - 1.0);
        }
    }

    void addControl(const TextLine& line, double beat, double length, const juce::String& number,
                    const juce::String& range)
    {
        const auto control = numberOf(number);
        const auto from = numberOf(range.upToFirstOccurrenceOf("-", false, false));
        const auto to = numberOf(range.fromFirstOccurrenceOf("-", false, false));
        const auto isPercent = [](const std::optional<double>& value)
        { return value && *value >= 0.0 && *value <= 100.0; };
        if (!control || *control < 1.0 || *control > 4.0 || !isPercent(from) || !isPercent(to))
            throw TextError(line.number, "a control moves as in Control 1, 4, 0 - 100");
        const auto position = [](double percent)
        { return juce::roundToInt(percent * fullController / 100.0); };
        addRamp(station.events, firstTourController + static_cast<int>(*control) - 1, beat, beat + length,
                position(*from), position(*to));
    }

    TourStation& station;
};
} // namespace

MidiSong TourStation::song(float masterVolume) const
{
    const double quartersPerSecond = tempo / 60.0;
    const double end = lastBeat + tailSeconds * quartersPerSecond;
    auto all = events;
    addRamp(all, fadeController, end - fadeSeconds * quartersPerSecond, end,
            static_cast<int>(masterVolume * fullController), 0);
    all.addEvent(juce::MidiMessage::tempoMetaEvent(juce::roundToInt(60.0e6 / tempo)), 0.0);
    all.addEvent(juce::MidiMessage::endOfTrack(), end * ticksPerQuarter);
    all.sort();

    juce::MidiFile file;
    file.setTicksPerQuarterNote(ticksPerQuarter);
    file.addTrack(all);
    juce::MemoryOutputStream bytes;
    file.writeTo(bytes);
    juce::MemoryInputStream input(bytes.getData(), bytes.getDataSize(), false);
    MidiSong song;
    if (const auto result = MidiSong::read(input, {}, song); result.failed())
        throw TextError(0, result.getErrorMessage());
    return song;
}

std::vector<TourStation> readTour(const juce::File& file)
{
    std::vector<TourStation> stations;
    for (const auto& section : readPresetText(file))
    {
        if (section.name.isEmpty() && section.lines.empty())
            continue;
        TourStation station;
        if (parsePresetChoice(section.name, station.preset).failed() || station.preset.name.isEmpty())
            throw TextError(section.number, "a section is called Folder/Name, after a preset");
        PhraseReader(station).read(section);
        stations.push_back(std::move(station));
    }
    if (stations.empty())
        throw TextError(0, "has no presets");
    return stations;
}

} // namespace quorel
