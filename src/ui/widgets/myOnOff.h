// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/widgets/MidiGlow.h"
#include "ui/widgets/TwoStateButton.h"

namespace quorel
{

/** A toggle with a parameter. One whose parameter is a switch has a menu on the right button, by which it is
    tied to a MIDI controller, and the glow of MIDI control. */
class myOnOff : public TwoStateButton
{
public:
    myOnOff(juce::Rectangle<int> bounds, juce::Button::Listener* listener, int parameterId,
            const CBitmap* twoStateImage, PluginProcessor& pluginProcessor);

    void mouseDown(const juce::MouseEvent& event) override;
    void mouseDrag(const juce::MouseEvent& event) override;
    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

private:
    void showSwitchMenu();

    PluginProcessor& processor;
    const int parameter;
    const bool tieable;
    MidiGlow glow;
};

} // namespace quorel
