// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_graphics/juce_graphics.h>

namespace quorel
{

/** Frequencies and decibels behind the curves of an EQ, laid out once for a screen of ten octaves from 20 Hz
    and 20 dB to both sides of the middle. */
class EqGrid
{
public:
    EqGrid(int width, int height);

    void paint(juce::Graphics& g) const;

private:
    void addText(const juce::String& text, float x, float baseline);

    juce::RectangleList<float> lines;
    juce::GlyphArrangement texts;
};

} // namespace quorel
