// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/myIntBox2.h"

#include "midi/NoteNames.h"

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

juce::String myIntBox2::textAt(double value) const
{
    const int number = numberOf(static_cast<float>(value));
    return noteNames ? noteName(number) : juce::String(number);
}

std::optional<double> myIntBox2::numberOfText(const juce::String& text) const
{
    if (const auto note = noteNames ? noteOfName(text) : std::nullopt)
        return *note;

    return ReadoutBox::numberOfText(text);
}

} // namespace quorel
