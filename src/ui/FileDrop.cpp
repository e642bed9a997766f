// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/FileDrop.h"

#include "ui/DisplayBox.h"
#include "ui/EditorColours.h"

#include <algorithm>

namespace quorel
{

namespace
{
constexpr int frameWidth = 4;
constexpr int boxWidth = 420;
constexpr int boxHeight = 44;
constexpr float fontHeight = 18.0f;
} // namespace

FileDrop::FileDrop(juce::Component& dropTarget, PluginProcessor& pluginProcessor)
    : target(dropTarget)
    , engine(pluginProcessor)
{
}

bool FileDrop::isInterestedInFileDrag(const juce::StringArray& files)
{
    return std::any_of(files.begin(), files.end(), PresetImport::isWanted);
}

void FileDrop::setHovering(bool nowHovering)
{
    hovering = nowHovering;
    target.repaint();
}

void FileDrop::fileDragEnter(const juce::StringArray&, int, int)
{
    setHovering(true);
}

void FileDrop::fileDragExit(const juce::StringArray&)
{
    setHovering(false);
}

void FileDrop::filesDropped(const juce::StringArray& files, int, int)
{
    setHovering(false);
    // A question blocks, and who drags waits for the drop to end.
    juce::MessageManager::callAsync(
        [this, alive = juce::Component::SafePointer<juce::Component>(&target), files]
        {
            if (alive == nullptr)
                return;

            const auto& song = engine.getMidiInput().getSong();
            engine.getPresetCommands().importing().take(files);

            if (alive == nullptr)
                return;

            if (std::any_of(files.begin(), files.end(),
                            [&song](const juce::String& path)
                            { return juce::File(path).getFileName() == song.getName(); }))
                new DisplayBox("PREVIEW plays " + song.getName());
        });
}

void FileDrop::paintDropFrame(juce::Graphics& g) const
{
    if (!hovering)
        return;

    g.setColour(colours::amber);
    g.drawRect(target.getLocalBounds(), frameWidth);
    const auto box = target.getLocalBounds().withSizeKeepingCentre(boxWidth, boxHeight);
    g.setColour(colours::sunken);
    g.fillRect(box);
    g.setColour(colours::amber);
    g.drawRect(box);
    g.setColour(juce::Colours::white);
    g.setFont(fontHeight);
    g.drawText("Drop presets, archives or a MIDI file", box, juce::Justification::centred);
}

} // namespace quorel
