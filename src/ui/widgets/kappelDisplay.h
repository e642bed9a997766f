// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PluginProcessor.h"
#include "ui/widgets/KeyboardSurface.h"

namespace quorel
{

/** The 16 steps of one channel of the rhythm gate in a row, the first on the left: a click switches a step on
    or off, and a drag does the same to all steps on its way. One parameter holds the pattern, as a mask of 16
    bits. Message thread. */
class kappelDisplay : public KeyboardSurface
{
public:
    kappelDisplay(juce::Rectangle<int> bounds, int parameterId, PluginProcessor& pluginProcessor);

    /** Ends a drag that is under way, for hosts. */
    ~kappelDisplay() override;

    void paint(juce::Graphics& g) override;
    void mouseDown(const juce::MouseEvent& event) override;
    void mouseDrag(const juce::MouseEvent& event) override;
    void mouseUp(const juce::MouseEvent& event) override;
    /** Left and right choose a step, the space bar and Return switch it. */
    bool keyPressed(const juce::KeyPress& key) override;

    /** Mask of the steps that are on; bit 0 is the first. */
    int pattern() const;

    /** The steps in order, "x" for one that is on. */
    juce::String patternText() const;

protected:
    juce::String spokenText() const override { return patternText(); }

private:
    /** A drag: the step where it was last, and whether it sets or clears. */
    struct Painting
    {
        int step;
        bool sets;
    };

    int stepAt(const juce::MouseEvent& event) const;
    void setSteps(int from, int to, bool on);
    void endPainting();

    PluginProcessor& processor;
    const int parameter;
    const float scale = 1.0f;
    int keyboardStepIndex = 0;
    std::optional<Painting> painting;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(kappelDisplay)
};

} // namespace quorel
