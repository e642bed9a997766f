// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PluginProcessor.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** Makes a component take files that are dropped anywhere on it: presets, archives and MIDI files, as
    `PresetImport` says. While such files hover over it, it has a frame. Message thread. */
class FileDrop : public juce::FileDragAndDropTarget
{
public:
    FileDrop(juce::Component& dropTarget, PluginProcessor& pluginProcessor);

    bool isInterestedInFileDrag(const juce::StringArray& files) override;
    void fileDragEnter(const juce::StringArray& files, int x, int y) override;
    void fileDragExit(const juce::StringArray& files) override;
    void filesDropped(const juce::StringArray& files, int x, int y) override;

protected:
    /** Over all children. */
    void paintDropFrame(juce::Graphics& g) const;

private:
    void setHovering(bool nowHovering);

    juce::Component& target;
    PluginProcessor& engine;
    bool hovering = false;
};

} // namespace quorel
