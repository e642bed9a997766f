// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PresetQuestions.h"

namespace quorel
{

/** What becomes of files that a user drops on the instrument: presets, archives of presets and MIDI files.

    A preset of the banks is loaded. Presets from elsewhere are copied into the current folder after a question, and
    the first of them is loaded. An archive goes into a new folder, whose name is asked for. A MIDI file is what the
    preview key plays from then on. Nothing is ever replaced. Message thread. */
class PresetImport
{
public:
    explicit PresetImport(PluginProcessor& pluginProcessor)
        : processor(pluginProcessor)
    {
    }

    /** True for the name of a file that can be taken. */
    static bool isWanted(const juce::String& path);

    /** Afterwards the processor may be gone, where a question was open. */
    void take(const juce::StringArray& paths);

private:
    void takePresets(const juce::Array<juce::File>& files);
    void takeArchive(const juce::File& file);
    void takeSong(const juce::File& file);

    PluginProcessor& processor;
    PresetQuestions questions{processor};
};

} // namespace quorel
