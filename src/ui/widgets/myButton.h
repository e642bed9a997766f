// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/widgets/TwoStateButton.h"

namespace quorel
{

class PluginProcessor;

/** A push button without a parameter. */
class myButton : public TwoStateButton
{
public:
    myButton(juce::Rectangle<int> bounds, juce::Button::Listener* listener, const CBitmap* twoStateImage,
             PluginProcessor& pluginProcessor);
};

} // namespace quorel
