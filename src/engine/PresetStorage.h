// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

namespace quorel
{

class PluginProcessor;

/** Writes the sound that plays to the files of the banks folder. Message thread. */
class PresetStorage
{
public:
    explicit PresetStorage(PluginProcessor& pluginProcessor);

    /** Saves under `name`, or under the current name if that is empty. Asks before it replaces a file, unless
        `overwrite` is set. False if the user said no or the file could not be written; an old file is then
        whole. */
    bool save(const juce::String& name, bool overwrite);

    /** Empties all layers and makes the defaults the new preset `name` of the current folder. False where
        that file can't be written: the sound then goes on as it was. */
    bool createEmpty(const juce::String& name);

    /** A user's first start makes the banks folder and, with the defaults, the default preset in it. What is
        there already stands. */
    void createDefault();

private:
    PluginProcessor& processor;
};

} // namespace quorel
