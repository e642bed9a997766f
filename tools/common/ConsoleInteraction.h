// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/UserInteraction.h"

namespace quorel
{

/** How command line tools answer the engine: its messages go to the standard error stream, a line each, and
    nothing is ever confirmed or chosen. */
class ConsoleInteraction final : public UserInteraction
{
public:
    /** `toolName` stands in front of each line. */
    explicit ConsoleInteraction(const juce::String& toolName);

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

    int numAlerts() const noexcept { return alerts; }

private:
    const juce::String tool;
    int alerts = 0;
};

} // namespace quorel
