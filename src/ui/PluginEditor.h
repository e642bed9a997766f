// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PluginProcessor.h"
#include "ui/EditorKeyboard.h"
#include "ui/SubhostView.h"

#include <juce_audio_processors/juce_audio_processors.h>

namespace quorel
{

/** The editor as its host sees it: a shell around the view, drawn at the user's scale. A scale that the host
    asks for multiplies that. Message thread. */
class PluginEditor : public juce::AudioProcessorEditor
{
public:
    explicit PluginEditor(PluginProcessor& pluginProcessor);
    ~PluginEditor() override;

    SubhostView& getView() noexcept { return view; }

    void parentHierarchyChanged() override;
    bool keyPressed(const juce::KeyPress& key) override;

private:
    void applyScale(int percent);

    SubhostView view;
    EditorKeyboard keyboard{*this, view};
    bool hadFocus = false;
    bool hasIcon = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(PluginEditor)
};

} // namespace quorel
