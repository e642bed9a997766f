// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/myIntBox.h"

#include "ui/widgets/WidgetTools.h"

namespace quorel
{
namespace
{
constexpr float fontHeight = 13.0f;
} // namespace

myIntBox::myIntBox(juce::Rectangle<int> bounds, juce::Slider::Listener* listener,
                   const CBitmap* backgroundImage, juce::String textBefore, PluginProcessor& pluginProcessor)
    : ReadoutBox(bounds, listener, "myIntBox", noParameter, backgroundImage, fontHeight, 0, pluginProcessor)
    , prefix(std::move(textBefore))
{
}

juce::String myIntBox::textOf(int number) const
{
    return prefix + juce::String(number);
}

} // namespace quorel
