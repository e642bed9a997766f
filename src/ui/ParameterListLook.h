// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** JUCE's list of parameters in the editor's colours. The editor's own look draws no sliders and no menus, as
    its artwork does. */
class ParameterListLook : public juce::LookAndFeel_V4
{
public:
    ParameterListLook();
};

} // namespace quorel
