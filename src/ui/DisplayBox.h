// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** A short message over everything on the screen, such as "Midi Mapped (...)", that fades out within two
    seconds and deletes itself. Message thread. */
class DisplayBox : public juce::Component, private juce::Timer, private juce::DeletedAtShutdown
{
public:
    /** Shows the message. Create it with `new`: it deletes itself. */
    explicit DisplayBox(const juce::String& message);
    ~DisplayBox() override;

    /** From now on shows the messages of MIDI learning. */
    static void showLearnedMappings();

    void paint(juce::Graphics& g) override;

private:
    void timerCallback() override;

    const juce::String text;
    juce::ComponentAnimator animator;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(DisplayBox)
};

} // namespace quorel
