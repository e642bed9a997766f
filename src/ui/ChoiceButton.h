// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** A caption that opens a menu, with the present choice behind it: "Sort: name". Message thread. */
class ChoiceButton : public juce::Button
{
public:
    ChoiceButton(juce::Rectangle<int> bounds, juce::Button::Listener* listener, const juce::String& caption);

    void setChoice(const juce::String& choice);

protected:
    void paintButton(juce::Graphics& g, bool highlighted, bool down) override;

private:
    juce::String text;
};

} // namespace quorel
