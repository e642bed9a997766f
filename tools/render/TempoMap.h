// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

namespace quorel
{

/** Musical time against clock time: tempo changes and time signatures of a song. All positions are quarter
    notes or seconds from the song's start, never negative. */
class TempoMap
{
public:
    /** Starts at 120 quarter notes a minute and in 4/4. */
    TempoMap();

    /** Tempo from a position on. Positions must not fall; a second tempo at the same place replaces the
        first. `bpm` above 0. */
    void addTempo(double quarters, double bpm);
    /** The same for a position in seconds. */
    void addTempoAtSeconds(double seconds, double bpm);

    /** Signature from a position on, where a bar begins even if the one before is not full. Positions must
        not fall. Numbers above 0. */
    void addSignature(double quarters, int numerator, int denominator);

    double secondsAt(double quarters) const noexcept;
    double quartersAt(double seconds) const noexcept;
    double bpmAt(double quarters) const noexcept;

    /** Where a position lies in its bar. */
    struct BarPosition
    {
        int numerator;
        int denominator;
        /** From 0. */
        int bar;
        /** In quarter notes from the song's start. */
        double barStart;
    };

    BarPosition barAt(double quarters) const noexcept;

private:
    struct Tempo
    {
        double quarters;
        double seconds;
        double bpm;
    };

    struct Signature
    {
        double quarters;
        int firstBar;
        int numerator;
        int denominator;

        double quartersPerBar() const noexcept { return numerator * 4.0 / denominator; }
    };

    std::vector<Tempo> tempos;
    std::vector<Signature> signatures;
};

} // namespace quorel
