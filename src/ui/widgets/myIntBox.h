// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/widgets/ReadoutBox.h"

namespace quorel
{

/** A whole number behind a few words, without a parameter. */
class myIntBox : public ReadoutBox
{
public:
    myIntBox(juce::Rectangle<int> bounds, juce::Slider::Listener* listener, const CBitmap* backgroundImage,
             juce::String textBefore, PluginProcessor& pluginProcessor);

protected:
    juce::String textOf(int number) const override;

private:
    const juce::String prefix;
};

} // namespace quorel
