// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <optional>

namespace quorel
{

class PluginProcessor;

/** Questions about the preset that plays. They may take as long as they like, and while one is open the host
    may close the plug-in, or bring in another sound: there is no answer then, and in the second case the user
    is told. After a question without an answer the processor may be gone. Message thread. */
class PresetQuestions
{
public:
    explicit PresetQuestions(PluginProcessor& pluginProcessor)
        : processor(pluginProcessor)
    {
    }

    /** A text that isn't empty. */
    std::optional<juce::String> askName(const juce::String& title, const juce::String& prompt,
                                        const juce::String& current);
    /** True for a yes. */
    bool confirm(const juce::String& question);
    std::optional<juce::File> chooseToLoad(const juce::File& start);
    std::optional<juce::File> chooseToSave(const juce::File& suggested);

    /** A file to write, of a pattern such as "*.zip". The user has agreed to its being replaced. */
    std::optional<juce::File> chooseToWrite(const juce::String& title, const juce::File& suggested,
                                            const juce::String& pattern);
    std::optional<juce::File> chooseFolder(const juce::String& title, const juce::File& start);

    void tell(const juce::String& text);
    /** Tells what could not be done and why, where it failed; true where it didn't. */
    bool tellFailure(const juce::String& what, const juce::Result& result);

private:
    template <typename Ask>
    auto ask(Ask&& question);

    PluginProcessor& processor;
};

} // namespace quorel
