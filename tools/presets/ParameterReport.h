// SPDX-License-Identifier: GPL-3.0-or-later
// A preset's contents in words.
#pragma once

#include "PresetCheck.h"

#include "presets/StateChunk.h"

#include <juce_core/juce_core.h>

#include <vector>

namespace quorel
{

/** A parameter, or a run of parameters that makes up one text. */
struct ParameterRow
{
    int first = 0;
    int last = 0;
    juce::String name;
    /** Of the first. */
    float value = 0.0f;
    /** What the parameter reads, or the text that the run holds. */
    juce::String text;
    bool isTextRun = false;
};

/** Rows of all parameters, or without `all` of those off their defaults; then the names of preset, folder and
    instruments and the categories, which have lines of their own, are left out too. Message thread. */
std::vector<ParameterRow> parameterRows(const StateChunk& chunk, bool all);

/** Words of the categories that a preset has. */
juce::StringArray categoryWords(const StateChunk& chunk);

/** What `show` prints of a preset: plain text or JSON, with a line feed at the end. */
juce::String presetAsText(const juce::File& file, const StateChunk& chunk, bool all,
                          const InstalledInstruments& installed);
juce::String presetAsJson(const juce::File& file, const StateChunk& chunk, bool all,
                          const InstalledInstruments& installed);

} // namespace quorel
