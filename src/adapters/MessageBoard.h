// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <memory>
#include <set>
#include <utility>
#include <vector>

namespace quorel
{

/** What the instances in this process have to tell their user: all in one window, which blocks nothing, or on the
    standard error stream where there is no display. Equal texts stand there once. The window has a look of its
    own and outlives neither the messages nor the last holder of the board. Hold it by a
    `juce::SharedResourcePointer`. */
class MessageBoard final : private juce::AsyncUpdater
{
public:
    /** Message thread, or with its lock held; so is the end. */
    MessageBoard();
    ~MessageBoard() override;

    /** Hands a message over and returns. Any thread. */
    void post(const void* sender, const juce::String& title, const juce::String& text);

    /** Takes back all messages of a sender that goes. Message thread, or with its lock held. */
    void withdraw(const void* sender);

    /** Whether boxes can be shown at all: without a display JUCE can't open any window. */
    bool hasDisplay() const noexcept { return displayed; }

private:
    class Window;

    struct Note
    {
        juce::String text;
        /** Who said it, and how often. */
        std::vector<std::pair<const void*, int>> senders;
    };

    void note(const void* sender, const juce::String& text);
    void print(const juce::String& text);
    juce::String wholeText() const;
    void dismiss();
    void handleAsyncUpdate() override;

    const bool displayed;

    juce::CriticalSection lock;
    std::vector<Note> notes;
    /** Messages that were too many for the list. */
    int numMore = 0;
    std::set<juce::String> printed;

    juce::LookAndFeel_V4 look;
    std::unique_ptr<Window> window;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(MessageBoard)
};

} // namespace quorel
