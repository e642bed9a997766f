// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

namespace quorel
{

class PluginProcessor;

/** Writes the sound that plays to the files of the banks folder, and gives them names. Message thread. */
class PresetStorage
{
public:
    explicit PresetStorage(PluginProcessor& pluginProcessor);

    /** Saves into the current folder under `name`, or under the current name if that is empty. Asks before it
        replaces a file, unless `overwrite` is set. False if the user said no or the file could not be
        written: an old file is then whole, and names and edits are what they were. */
    bool save(const juce::String& name, bool overwrite);

    /** The same with a folder. Where the names are new, they go into the sound as well. */
    bool saveAs(const juce::String& folder, const juce::String& name, bool overwrite);

    /** Gives the current preset's file another name, which nothing has yet: in the folder, in the file, and
        in the sound that plays. That sound isn't saved, and stays edited if it was. Fails, with everything as it
        was, where the file can't be changed. */
    juce::Result rename(const juce::String& name);

    /** The current folder has this name now: the sound that plays takes it on. The files in it stay. */
    void folderRenamed(const juce::String& name);

    /** The current preset lies in this folder now: the sound that plays takes it on. */
    void presetMoved(const juce::String& folder);

    /** Empties all layers and makes the defaults the new preset `name` of the current folder. Fails where
        that file can't be written: the sound then goes on as it was. */
    juce::Result createEmpty(const juce::String& name);

    /** A user's first start makes the banks folder and, with the defaults, the default preset in it. What is
        there already stands. */
    void createDefault();

private:
    void takePresetName(const juce::String& name);
    void takeFolderName(const juce::String& name);

    PluginProcessor& processor;
};

} // namespace quorel
