// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/UserInteraction.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <memory>

namespace quorel
{

/** Talks to the user with boxes on the screen, or on the standard error stream where there is no screen.
    Message thread, or with its lock held. */
class BoxInteraction : public UserInteraction
{
public:
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
    std::unique_ptr<juce::AlertWindow> progressWindow;
};

} // namespace quorel
