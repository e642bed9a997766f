// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "adapters/MessageBoard.h"
#include "platform/UserInteraction.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <atomic>
#include <functional>
#include <memory>

namespace quorel
{

/** Talks to the user with boxes on the screen, or on the standard error stream where there is no screen. Message
    thread, or with its lock held; alerts come from any thread. Questions are asked on the message thread alone:
    elsewhere nobody answers. A question that is open when its asker goes, or the editor that it is asked in, is closed
    unanswered. */
class BoxInteraction : public UserInteraction
{
public:
    /** What questions are asked in, at its scale, as long as it is there: the contents of an open editor. Where it
        gives null, and from the start, they are asked in windows of their own. */
    std::function<juce::Component*()> findEditor = [] { return nullptr; };

    BoxInteraction();
    ~BoxInteraction() override;

    void alert(const juce::String& title, const juce::String& text) override;
    bool confirm(const juce::String& title, const juce::String& text) override;
    juce::String askText(const juce::String& title, const juce::String& prompt,
                         const juce::String& current) override;
    juce::File chooseFolder(const juce::String& title, const juce::File& start) override;
    juce::File chooseFileToOpen(const juce::String& title, const juce::File& start,
                                const juce::String& pattern) override;
    juce::File chooseFileToSave(const juce::String& title, const juce::File& suggested,
                                const juce::String& pattern) override;
    void progress(const juce::String& title, const juce::String& text) override;

private:
    class Stage;
    struct Progress;

    bool canAsk() const;
    juce::File choose(const juce::String& title, const juce::File& start, const juce::String& pattern,
                      int flags);

    juce::SharedResourcePointer<MessageBoard> board;
    /** Shared with the open questions, on whose stack this object may have gone. */
    const std::shared_ptr<std::atomic<bool>> here{std::make_shared<std::atomic<bool>>(true)};
    std::unique_ptr<Progress> shownProgress;
};

} // namespace quorel
