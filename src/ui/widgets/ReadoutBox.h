// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PluginProcessor.h"
#include "resources/CBitmap.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** Name of a MIDI note, limited to 0 to 127: 60 is "C3", 0 is "C-2". */
juce::String noteName(int note);

/** What the integer boxes have in common: a whole number on an image, dragged up and down. The slider runs
    from 0 to 1, which is spread over the numbers from `minimum` to `maximum`. Message thread. */
class ReadoutBox : public juce::Slider
{
public:
    /** `backgroundImage` outlives the box. */
    ReadoutBox(juce::Rectangle<int> bounds, juce::Slider::Listener* listener, const char* kind,
               int parameterId, const CBitmap* backgroundImage, float fontHeight, int labelWidthAdjust,
               PluginProcessor& pluginProcessor);

    /** Shows a value, limited to 0 to 1, without telling the listener. */
    void update(float value);

    /** The number shown for a value of 0 to 1. */
    int numberOf(float value) const noexcept;

    int minimum = 0;
    int maximum = 127;

    void paint(juce::Graphics& g) override;
    void valueChanged() override;
    bool keyPressed(const juce::KeyPress& key) override;
    juce::String getTextFromValue(double value) override;
    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

protected:
    virtual juce::String textOf(int number) const = 0;

private:
    double numberStep() const noexcept;

    PluginProcessor& processor;
    const int parameter;
    const CBitmap* image;
    juce::Label label{{}, "midibox"};

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(ReadoutBox)
};

} // namespace quorel
