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

    void tell(const juce::String& text);

private:
    template <typename Ask>
    auto ask(Ask&& question);

    PluginProcessor& processor;
};

} // namespace quorel
