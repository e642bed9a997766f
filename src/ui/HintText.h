// SPDX-License-Identifier: GPL-3.0-or-later
// What the editor says of a control: in the display, in tips, and in the control's own menu. Message thread.
#pragma once

#include "engine/PluginProcessor.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** True for keys that choose one of several places by a parameter that they share. */
constexpr bool isSelector(int parameter) noexcept
{
    return parameter == slot::view ||
           (isLayerParameter(parameter) && numberInLayer(parameter) == layerSlot::drumPage);
}

/** Name of a control: its parameter's, unless that is a bare number; then the control's title. */
juce::String controlName(const juce::Component& control, int parameter, PluginProcessor& processor);

/** Text of a parameter, 1 to 1506. Where it has none of its own: that of a layer's EQ for the master's, "On" or
    "Off" for a switch, else the number. */
juce::String valueText(PluginProcessor& processor, int parameter);

/** What the display shows for the control under the mouse, such as "Layer1 Pan = 12"; empty for what is no
    control. `component` may be a part of a control. */
juce::String hintText(juce::Component& component, PluginProcessor& processor);

} // namespace quorel
