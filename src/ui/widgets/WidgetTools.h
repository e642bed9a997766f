// SPDX-License-Identifier: GPL-3.0-or-later
// What the constructors of all controls share.
#pragma once

#include "parameters/ParameterLayout.h"
#include "resources/CBitmap.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

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

/** Gives a control the kind that the editor's pass tells it by, and its parameter's number, or `noParameter`, as its ID. A mouse
    click leaves the keyboard focus where it is: the arrow keys belong to the presets until the user tabs. */
inline void setUpControl(juce::Component& control, const char* kind, int parameterId)
{
    control.setName(kind);
    control.setComponentID(juce::String(parameterId));
    control.setMouseClickGrabsKeyboardFocus(false);
    control.setHasFocusOutline(true);
}

} // namespace quorel
