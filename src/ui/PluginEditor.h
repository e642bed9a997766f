// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PluginProcessor.h"
#include "ui/EditorKeyboard.h"
#include "ui/SubhostView.h"

#include <juce_audio_processors/juce_audio_processors.h>

namespace quorel
{

/** The editor as its host sees it: a shell around the view, drawn at the user's scale, as far as the display has room
    for it. A scale that the host asks for multiplies that. The corner at the bottom right changes the size, with the
    ratio kept. Message thread. */
class PluginEditor : public juce::AudioProcessorEditor, private juce::Timer
{
public:
    explicit PluginEditor(PluginProcessor& pluginProcessor);
    ~PluginEditor() override;

    SubhostView& getView() noexcept { return view; }

    void paint(juce::Graphics& g) override;
    void resized() override;
    void setScaleFactor(float newScale) override;
    void parentHierarchyChanged() override;
    bool keyPressed(const juce::KeyPress& key) override;

private:
    void timerCallback() override;
    void applyScale(int percent);
    void fitToDisplay();

    PluginProcessor& instrument;
    SubhostView view;
    EditorKeyboard keyboard{*this, view};
    float hostScale = 1.0f;
    bool hadFocus = false;
    bool hasIcon = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(PluginEditor)
};

} // namespace quorel
