// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/EqGrid.h"

#include "resources/EditorFont.h"

#include <cmath>

namespace quorel
{
namespace
{
constexpr float fontHeight = 9.5f;
constexpr float margin = 3.0f;
/** From a line down to the baseline of what stands below it, and from a baseline to the lower edge. */
constexpr float textBelow = 9.0f;
constexpr float textAbove = 3.0f;
constexpr float decibelRange = 20.0f;
constexpr float lowestFrequency = 20.0f;
constexpr float octaves = 10.0f;
const juce::Colour lineColour{0xff262626};
const juce::Colour textColour{0xff8c8c8c};
} // namespace

EqGrid::EqGrid(int width, int height)
{
    const auto right = static_cast<float>(width);
    const auto bottom = static_cast<float>(height);
    const auto font = editorFont(fontHeight);
    constexpr std::pair<float, const char*> frequencies[] = {
        {50.0f, "50"},   {100.0f, "100"}, {200.0f, "200"}, {500.0f, "500"},
        {1000.0f, "1k"}, {2000.0f, "2k"}, {5000.0f, "5k"}, {10000.0f, "10k"}};

    for (const auto& [hertz, text] : frequencies)
    {
        const float x = std::round(right * std::log2(hertz / lowestFrequency) / octaves);
        lines.addWithoutMerging({x, 0.0f, 1.0f, bottom});
        addText(text, x + margin, bottom - textAbove);
    }
    addText("Hz", right - margin - font.getStringWidthFloat("Hz"), bottom - textAbove);

    for (const int decibels : {10, -10})
    {
        const float y = std::round(bottom * (1.0f - static_cast<float>(decibels) / decibelRange) / 2.0f);
        lines.addWithoutMerging({0.0f, y, right, 1.0f});
        addText((decibels > 0 ? "+" : "") + juce::String(decibels), margin, y + textBelow);
    }
    addText("+20 dB", margin, textBelow);
}

void EqGrid::addText(const juce::String& text, float x, float baseline)
{
    texts.addLineOfText(editorFont(fontHeight), text, x, baseline);
}

void EqGrid::paint(juce::Graphics& g) const
{
    g.setColour(lineColour);
    g.fillRectList(lines);
    g.setColour(textColour);
    texts.draw(g);
}

} // namespace quorel
