// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PluginProcessor.h"
#include "ui/widgets/KeyboardSurface.h"

namespace quorel
{

/** The 16 steps of one channel of the rhythm gate in a row, the first on the left: a click switches a step on
    or off. One parameter holds the pattern, as a mask of 16 bits. Message thread. */
class kappelDisplay : public KeyboardSurface
{
public:
    kappelDisplay(juce::Rectangle<int> bounds, int parameterId, PluginProcessor& pluginProcessor);

    void paint(juce::Graphics& g) override;
    void mouseDown(const juce::MouseEvent& event) override;
    /** Left and right choose a step, the space bar and Return switch it. */
    bool keyPressed(const juce::KeyPress& key) override;

    /** Mask of the steps that are on; bit 0 is the first. */
    int pattern() const;

protected:
    /** The steps in order, "x" for one that is on. */
    juce::String spokenText() const override;

private:
    void turnStep(int step);

    PluginProcessor& processor;
    const int parameter;
    const float scale = 1.0f;
    int keyboardStepIndex = 0;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(kappelDisplay)
};

} // namespace quorel
