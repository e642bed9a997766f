// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** A caption with the present choice behind it: "Sort: name". Opens a menu, or takes the choice back. Message
    thread. */
class ChoiceButton : public juce::Button
{
public:
    enum class Sign
    {
        /** A triangle. */
        menu,
        /** A cross. */
        remove
    };

    ChoiceButton(juce::Rectangle<int> bounds, juce::Button::Listener* listener, const juce::String& caption,
                 Sign shownSign = Sign::menu);

    void setChoice(const juce::String& choice);

protected:
    void paintButton(juce::Graphics& g, bool highlighted, bool down) override;

private:
    const Sign sign;
    juce::String text;
};

} // namespace quorel
