// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PluginProcessor.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** The two arrows in the header that undo and redo, dim where there is nothing to be done. Message thread. */
class UndoKeys : public juce::Component
{
public:
    UndoKeys(juce::Rectangle<int> bounds, PluginProcessor& pluginProcessor);

    /** Follows the history. Called in each pass of the editor. */
    void update();

private:
    class Arrow : public juce::Button
    {
    public:
        explicit Arrow(bool pointsBack);

        void paintButton(juce::Graphics& g, bool highlighted, bool down) override;

    private:
        const bool isBack;
    };

    static void show(Arrow& arrow, bool possible, const juce::String& text, const juce::String& nothing);

    PluginProcessor& processor;
    int shownRevision = -1;
    Arrow undoArrow{true};
    Arrow redoArrow{false};
};

} // namespace quorel
