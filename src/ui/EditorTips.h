// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** Tips for controls that have no caption, within the editor and at its scale, after the mouse has rested on one for a
    second. They say what screen readers hear. Message thread. */
class EditorTips : public juce::TooltipWindow
{
public:
    explicit EditorTips(juce::Component& editor);

    juce::String getTipFor(juce::Component& component) override;

private:
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(EditorTips)
};

} // namespace quorel
