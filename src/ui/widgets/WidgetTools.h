// SPDX-License-Identifier: GPL-3.0-or-later
// What the constructors of all controls share.
#pragma once

#include "parameters/ParameterLayout.h"
#include "resources/CBitmap.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** Shift makes a drag finer by this. */
inline constexpr int fineDragFactor = 10;

/** `bounds`, with a width or height of 0 taken from the image, which has `frames` from top to bottom. */
inline juce::Rectangle<int> boundsOnImage(juce::Rectangle<int> bounds, const CBitmap* image, int frames)
{
    if (image == nullptr)
        return bounds;
    if (bounds.getWidth() == 0)
        bounds.setWidth(image->getWidth());
    if (bounds.getHeight() == 0)
        bounds.setHeight(image->getHeight() / frames);
    return bounds;
}

/** Names a control by its kind, by which the editor's pass knows how to set it, and gives it its parameter's
    number, or `noParameter`, as ID. Clicks don't take the keyboard focus: the arrow keys step through
    presets until the user tabs to a control. */
inline void setUpControl(juce::Component& control, const char* kind, int parameterId)
{
    control.setName(kind);
    control.setComponentID(juce::String(parameterId));
    control.setMouseClickGrabsKeyboardFocus(false);
    control.setHasFocusOutline(true);
}

} // namespace quorel
