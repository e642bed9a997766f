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
    , instrument(pluginProcessor)
    , view(pluginProcessor, readEditorScale(pluginProcessor.userStore()),
           [this](int percent) { applyScale(percent); })
{
    setOpaque(true);
    addAndMakeVisible(view);
    applyScale(view.getScalePercent());
    constexpr bool byHost = true;
    constexpr bool byCorner = true;
    setResizable(byHost, byCorner);
    getConstrainer()->setFixedAspectRatio(static_cast<double>(geometry::width) / geometry::height);
    fitToDisplay();
}

PluginEditor::~PluginEditor() = default;

void PluginEditor::paint(juce::Graphics& g)
{
    g.fillAll(juce::Colours::black);
}

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

//==============================================================================================================
// Size

void PluginEditor::applyScale(int percent)
{
    const auto size = editorSizeAt(percent);
    setSize(size.getWidth(), size.getHeight());
}

void PluginEditor::fitToDisplay()
{
    const int largest = largestFittingScale(*this, hostScale);
    const auto least = editorSizeAt(smallestEditorScale);
    const auto most = editorSizeAt(largest);
    const int percent = juce::jmin(view.getScalePercent(), largest);
    setResizeLimits(least.getWidth(), least.getHeight(), most.getWidth(), most.getHeight());
    // The limits have been applied to the present size, and rounded otherwise.
    applyScale(percent);
}

void PluginEditor::setScaleFactor(float newScale)
{
    hostScale = newScale;
    juce::AudioProcessorEditor::setScaleFactor(newScale);
    fitToDisplay();
}

void PluginEditor::resized()
{
    const float fit = juce::jmin(static_cast<float>(getWidth()) / static_cast<float>(geometry::width),
                                 static_cast<float>(getHeight()) / static_cast<float>(geometry::height));
    constexpr float hundred = 100.0f;
    const int percent = juce::roundToInt(fit * hundred);
    // Sizes in whole pixels are rounded.
    const bool whole = getLocalBounds() == editorSizeAt(percent);
    view.setTransform(juce::AffineTransform::scale(whole ? static_cast<float>(percent) / hundred : fit));
    view.noteScalePercent(percent);

    // The user has the corner, and will let go of it.
    if (juce::ModifierKeys::currentModifiers.isAnyMouseButtonDown())
    {
        constexpr int pollMillis = 100;
        startTimer(pollMillis);
    }
}

void PluginEditor::timerCallback()
{
    if (juce::ModifierKeys::currentModifiers.isAnyMouseButtonDown())
        return;

    stopTimer();
    writeEditorScale(instrument.userStore(), view.getScalePercent());
    applyScale(view.getScalePercent());
}

} // namespace quorel
