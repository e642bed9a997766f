// SPDX-License-Identifier: GPL-3.0-or-later
// The score of a tour through presets: which ones, and what is played on each.
#pragma once

#include "MidiSong.h"
#include "PresetText.h"
#include "RenderOptions.h"

namespace quorel
{

/** Controllers that the score moves: the four multi-controls from this one on, then the master's fade. */
constexpr int firstTourController = 20;
constexpr int fadeController = firstTourController + 4;

/** A preset and what is played on it. */
struct TourStation
{
    PresetChoice preset;
    juce::MidiMessageSequence events;
    double tempo = 0.0;
    double lastBeat = 0.0;
    double tailSeconds = 0.0;

    /** The phrase, its tail, and a fade at its end from the master volume that the preset has, 0 to 1. */
    MidiSong song(float masterVolume) const;
};

/** Reads a score: a section "[Folder/Name]" for each preset, with the lines

        Tempo: 96                quarter notes a minute, 120 without one
        Tail: 2.5                seconds after the last beat, 1.5 without one
        0: C1 E3 G3, 2, 90       at beat 0 these keys, for 2 beats, at velocity
   90 4: Control 1, 4, 0 - 100 from beat 4 on, over 4 beats, multi-control 1
   from 0 to 100 %

    Throws a TextError. */
std::vector<TourStation> readTour(const juce::File& file);

} // namespace quorel
