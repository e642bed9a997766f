// SPDX-License-Identifier: GPL-3.0-or-later
// Printed text. Sizes are heights of capitals in layout pixels and baselines lie on whole ones, so that small
// type comes out sharp.
#pragma once

#include <juce_graphics/juce_graphics.h>

namespace quorel::artwork
{

/** Loads the typeface from its TrueType files, before anything is drawn. Throws `std::runtime_error`. */
void setTypefaces(const juce::File& regular, const juce::File& bold, const juce::File& condensed);

enum class Face
{
    regular,
    bold,
    condensed
};

/** Height of capitals. */
namespace capitals
{
constexpr float tiny = 5.0f;
constexpr float caption = 6.0f;
constexpr float title = 7.0f;
} // namespace capitals

struct Lettering
{
    Face face = Face::condensed;
    float capHeight = capitals::caption;
    juce::Colour colour;
    /** Extra space between letters, in parts of the type's size. */
    float spacing = 0.05f;
};

/** The font whose capitals have the given height. */
juce::Font fontFor(Face face, float capHeight, float spacing = 0.0f);

/** Width of a line, from the first letter's origin to the last one's advance without its extra space. */
float widthOf(const juce::String& text, const Lettering& style);

/** Outlines of one line, at exact positions. `x` is its middle. */
juce::Path outlineOf(const juce::String& text, float x, float baseline, const Lettering& style);

/** One line. `x` is its left end, its middle or its right end by `justification`. */
void print(juce::Graphics& g, const juce::String& text, float x, float baseline, const Lettering& style,
           juce::Justification justification = juce::Justification::left);

/** A caption in capitals of `capitals::caption`, centred on `x`. */
void caption(juce::Graphics& g, const juce::String& text, float x, float baseline);

/** The same, starting at `x`. */
void captionFrom(juce::Graphics& g, const juce::String& text, float x, float baseline);

} // namespace quorel::artwork
