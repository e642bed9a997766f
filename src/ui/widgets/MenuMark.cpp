// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/MenuMark.h"

#include "ui/EditorColours.h"

namespace quorel
{
namespace
{
constexpr int tallHeight = 26;
constexpr float width = 6.0f;
constexpr float height = 4.0f;
constexpr float margin = 3.0f;
} // namespace

void drawMenuMark(juce::Graphics& g, juce::Rectangle<int> box)
{
    const auto area = box.toFloat();
    const float left = area.getRight() - margin - width;
    const float top =
        box.getHeight() < tallHeight ? area.getCentreY() - height / 2 : area.getBottom() - margin - height;
    juce::Path mark;
    mark.addTriangle(left, top, left + width, top, left + width / 2, top + height);
    g.setColour(colours::amber);
    g.fillPath(mark);
}

} // namespace quorel
