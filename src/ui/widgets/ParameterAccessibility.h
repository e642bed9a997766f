// SPDX-License-Identifier: GPL-3.0-or-later
// What screen readers hear of the controls, and how the keyboard moves them.
#pragma once

#include "engine/PluginProcessor.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <memory>

namespace quorel
{

/** Step of a control that moves from 0 to 1, for arrow keys and screen readers. */
inline constexpr double keyboardStep = 0.01;

/** Name of a control: its own title if it was given one, else the name of its parameter, which for some
    follows the instrument or the effect type. */
juce::String controlTitle(const juce::Component& control, int parameter, PluginProcessor& processor);

/** A slider that reads as its own text and is called by its parameter's name. Steps by `step`. */
std::unique_ptr<juce::AccessibilityHandler> makeSliderAccessibility(juce::Slider& slider, int parameter,
                                                                    PluginProcessor& processor, double step);

/** Moves a slider by `step` where the key is an arrow without modifiers, as one gesture. False for other
    keys. */
bool stepByKey(juce::Slider& slider, const juce::KeyPress& key, double step);

} // namespace quorel
