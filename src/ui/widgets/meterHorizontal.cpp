// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/meterHorizontal.h"

#include "ui/EditorColours.h"
#include "ui/widgets/WidgetTools.h"

#include <cmath>

namespace quorel
{
namespace
{
constexpr float range = 70.0f;
constexpr float silence = 0.00001f;
constexpr int barHeight = 3;
constexpr int rightBarY = 5;
constexpr int tipWidth = 2;
const juce::Colour tipColour{0xffc30000};
} // namespace

meterHorizontal::meterHorizontal(juce::Rectangle<int> bounds)
{
    setComponentID(juce::String(noParameter));
    setAccessible(false);
    setBounds(bounds);
    setOpaque(true);
}

int meterHorizontal::barLength(float level) const
{
    const float decibels = level > silence ? juce::jlimit(-range, range, 20.0f * std::log10(level)) : -range;
    const float scale = static_cast<float>(getWidth() - tipWidth) / range;
    return juce::jmin(getWidth(), static_cast<int>((decibels + range) * scale));
}

void meterHorizontal::follow()
{
    const int newLeft = barLength(left);
    const int newRight = barLength(right);
    if (newLeft == leftLength && newRight == rightLength)
        return;
    leftLength = newLeft;
    rightLength = newRight;
    repaint();
}

void meterHorizontal::paintBar(juce::Graphics& g, int y, int length) const
{
    const int tip = getWidth() - tipWidth;
    g.setColour(colours::amber);
    g.fillRect(0, y, length, barHeight);
    if (length >= tip)
    {
        g.setColour(tipColour);
        g.fillRect(tip, y, tipWidth, barHeight);
    }
}

void meterHorizontal::paint(juce::Graphics& g)
{
    g.fillAll(colours::sunken);
    g.setColour(colours::amber);
    g.fillRect(0, 0, 1, getHeight());
    paintBar(g, 0, leftLength);
    paintBar(g, rightBarY, rightLength);
}

} // namespace quorel
