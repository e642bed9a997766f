// SPDX-License-Identifier: GPL-3.0-or-later
// What screen readers hear of controls, and how the keyboard moves them.
#pragma once

#include "engine/PluginProcessor.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <memory>

namespace quorel
{

/** A text that screen readers can read and not change. */
class SpokenText : public juce::AccessibilityTextValueInterface
{
public:
    explicit SpokenText(std::function<juce::String()> textNow)
        : text(std::move(textNow))
    {
    }

    bool isReadOnly() const override { return true; }

    juce::String getCurrentValueAsString() const override { return text(); }

    void setValueAsString(const juce::String&) override {}

private:
    const std::function<juce::String()> text;
};

/** Step of a control that moves from 0 to 1, for arrow keys and screen readers. */
inline constexpr double keyboardStep = 0.01;

/** Name of a control: its own title if it has one, otherwise the name of its parameter, which may depend on
    the instrument or the effect type. */
juce::String controlTitle(const juce::Component& control, int parameter, PluginProcessor& processor);

/** For a slider that is called by its parameter's name, reads as its own text, and moves by `step`. */
std::unique_ptr<juce::AccessibilityHandler> makeSliderAccessibility(juce::Slider& slider, int parameter,
                                                                    PluginProcessor& processor, double step);

/** 1 for an arrow up or right, -1 for one down or left, 0 for other keys and with modifiers. */
int arrowDirection(const juce::KeyPress& key);

/** Moves a slider as one gesture, unless it is disabled. */
void moveSlider(juce::Slider& slider, double value);

} // namespace quorel
