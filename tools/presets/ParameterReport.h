// SPDX-License-Identifier: GPL-3.0-or-later
// A preset's contents in words.
#pragma once

#include "PresetCheck.h"

#include "presets/PresetMarks.h"
#include "presets/PresetNotes.h"

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

/** A preset that is shown. */
struct ShownPreset
{
    const juce::File& file;
    const StateChunk& chunk;
    PresetNotes notes;
    /** The user's, by the names of folder and file. */
    PresetMark mark;
};

/** What `show` prints of a preset: plain text or JSON, with a line feed at the end. */
juce::String presetAsText(const ShownPreset& preset, bool all, const InstalledInstruments& installed);
juce::String presetAsJson(const ShownPreset& preset, bool all, const InstalledInstruments& installed);

} // namespace quorel
