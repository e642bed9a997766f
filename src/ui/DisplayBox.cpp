// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/DisplayBox.h"

#include "midi/MidiLearner.h"

namespace quorel
{

namespace
{
constexpr int widthPerCharacter = 15;
constexpr int boxHeight = 60;
constexpr int fadeMilliseconds = 2000;
constexpr int pollMilliseconds = 100;
constexpr float cornerSize = 10.0f;
constexpr float fontHeight = 25.0f;
} // namespace

DisplayBox::DisplayBox(const juce::String& message)
    : text(message)
{
    setTitle(text);
    setOpaque(false);
    setInterceptsMouseClicks(false, false);
    setSize((text.length() + 2) * widthPerCharacter, boxHeight);

    if (const auto* display = juce::Desktop::getInstance().getDisplays().getPrimaryDisplay())
        setCentrePosition(display->userArea.getCentre());

    setAlwaysOnTop(true);
    addToDesktop(juce::ComponentPeer::windowIsTemporary | juce::ComponentPeer::windowIgnoresMouseClicks |
                 juce::ComponentPeer::windowIgnoresKeyPresses);
    setVisible(true);
    animator.fadeOut(this, fadeMilliseconds);
    startTimer(pollMilliseconds);
}

DisplayBox::~DisplayBox()
{
    animator.cancelAllAnimations(false);
}

void DisplayBox::showLearnedMappings()
{
    // Learning may report from a MIDI thread that holds the message thread's lock, but windows must be
    // created on the message thread itself.
    MidiLearner::displayBox() = [](const juce::String& message)
    {
        juce::MessageManager::callAsync(
            [message]
            {
                if (!juce::Desktop::getInstance().getDisplays().displays.isEmpty())
                    new DisplayBox(message);
            });
    };
}

void DisplayBox::paint(juce::Graphics& g)
{
    const auto box = getLocalBounds().toFloat().reduced(0.5f);
    g.setColour(juce::Colours::grey);
    g.fillRoundedRectangle(box, cornerSize);
    g.setColour(juce::Colours::black);
    g.drawRoundedRectangle(box, cornerSize, 1.0f);
    g.setFont(juce::Font(fontHeight, juce::Font::bold));
    g.drawText(text, getLocalBounds(), juce::Justification::centred);
}

void DisplayBox::timerCallback()
{
    if (!animator.isAnimating())
        delete this;
}

} // namespace quorel
