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
    /** Puts the message on the screen; make it with `new` and forget it. */
    explicit DisplayBox(const juce::String& message);
    ~DisplayBox() override;

    /** Shows from now on what MIDI learning has to say. */
    static void showLearnedMappings();

    void paint(juce::Graphics& g) override;

private:
    void timerCallback() override;

    const juce::String text;
    juce::ComponentAnimator animator;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(DisplayBox)
};

} // namespace quorel
