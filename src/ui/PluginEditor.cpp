// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/PluginEditor.h"

#include "platform/PlatformSeamKeyboard.h"
#include "platform/PlatformSeamWindow.h"
#include "resources/WindowIcons.h"
#include "ui/EditorScale.h"
#include "ui/Geometry.h"

namespace quorel
{

PluginEditor::PluginEditor(PluginProcessor& pluginProcessor)
    : juce::AudioProcessorEditor(pluginProcessor)
    , view(pluginProcessor, readEditorScale(pluginProcessor.userStore()),
           [this](int percent) { applyScale(percent); })
{
    setOpaque(true);
    addAndMakeVisible(view);
    applyScale(view.getScalePercent());
}

PluginEditor::~PluginEditor() = default;

void PluginEditor::parentHierarchyChanged()
{
    keyboard.parentHierarchyChanged();

    // The standalone's window; a host has its own.
    if (auto* window = dynamic_cast<juce::TopLevelWindow*>(getTopLevelComponent());
        window != nullptr && window->getPeer() != nullptr && !std::exchange(hasIcon, true))
        setWindowIcons(*window->getPeer(), windowIcons());

    // Only once, and not in a host, which has the keyboard until the editor is clicked.
    if (!hadFocus && isShowing())
    {
        hadFocus = true;

        if (!isInHostWindow(*getPeer()))
            view.grabKeyboardFocus();
    }
}

bool PluginEditor::keyPressed(const juce::KeyPress& key)
{
    return keyboard.passOn(key);
}

void PluginEditor::applyScale(int percent)
{
    const float scale = static_cast<float>(percent) / 100.0f;
    view.setTransform(juce::AffineTransform::scale(scale));
    setSize(juce::roundToInt(static_cast<float>(geometry::width) * scale),
            juce::roundToInt(static_cast<float>(geometry::height) * scale));
}

} // namespace quorel
