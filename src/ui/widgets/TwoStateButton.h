// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "resources/CBitmap.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <optional>

namespace quorel
{

/** A button on an image of twice its height: the upper half shows it up, the lower half down or on. Acts when
    the mouse goes down on what is drawn: frames may be larger, and overlap. Message thread. */
class TwoStateButton : public juce::ImageButton
{
public:
    /** `twoStateImage` outlives the button. */
    TwoStateButton(juce::Rectangle<int> bounds, juce::Button::Listener* listener, const char* kind,
                   int parameterId, const CBitmap* twoStateImage);

    bool hitTest(int x, int y) override;

protected:
    void paintButton(juce::Graphics& g, bool highlighted, bool down) override;

private:
    juce::Rectangle<int> drawnFace() const;

    const CBitmap* image;
    /** Found when the mouse first comes by: it takes the decoded image. */
    std::optional<juce::Rectangle<int>> face;
};

} // namespace quorel
