// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/myIntBox2.h"

namespace quorel
{
namespace
{
constexpr float fontHeight = 11.0f;
} // namespace

myIntBox2::myIntBox2(juce::Rectangle<int> bounds, juce::Slider::Listener* listener, int parameterId,
                     const CBitmap* backgroundImage, PluginProcessor& pluginProcessor, int labelWidthAdjust)
    : ReadoutBox(bounds, listener, "myIntBox2", parameterId, backgroundImage, fontHeight, labelWidthAdjust,
                 pluginProcessor)
{
}

juce::String myIntBox2::textOf(int number) const
{
    return noteNames ? noteName(number) : juce::String(number);
}

} // namespace quorel
