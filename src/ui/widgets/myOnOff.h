// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/widgets/TwoStateButton.h"

namespace quorel
{

class PluginProcessor;

/** A toggle with a parameter. */
class myOnOff : public TwoStateButton
{
public:
    myOnOff(juce::Rectangle<int> bounds, juce::Button::Listener* listener, int parameterId,
            const CBitmap* twoStateImage, PluginProcessor& pluginProcessor);

    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

private:
    PluginProcessor& processor;
    const int parameter;
};

} // namespace quorel
