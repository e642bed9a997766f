// SPDX-License-Identifier: GPL-3.0-or-later
#include "Lettering.h"

#include "Palette.h"

#include <array>
#include <stdexcept>

namespace quorel::artwork
{
namespace
{

/** Height of capitals as a part of a JUCE font's height (ascent and descent): Roboto's 1456 units of 1900 +
    500. */
constexpr float capPart = 1456.0f / 2400.0f;

std::array<juce::Typeface::Ptr, 3>& typefaces()
{
    static std::array<juce::Typeface::Ptr, 3> all;
    return all;
}

juce::Typeface::Ptr load(const juce::File& file)
{
    juce::MemoryBlock data;
    if (!file.loadFileAsData(data))
        throw std::runtime_error("cannot read " + file.getFullPathName().toStdString());
    return juce::Typeface::createSystemTypefaceFor(data.getData(), data.getSize());
}

} // namespace

void setTypefaces(const juce::File& regular, const juce::File& bold, const juce::File& condensed)
{
    typefaces() = {load(regular), load(bold), load(condensed)};
}

juce::Font fontFor(Face face, float capHeight, float spacing)
{
    return juce::Font(typefaces()[static_cast<size_t>(face)])
        .withHeight(capHeight / capPart)
        .withExtraKerningFactor(spacing);
}

float widthOf(const juce::String& text, const Lettering& style)
{
    const auto font = fontFor(style.face, style.capHeight, style.spacing);
    return font.getStringWidthFloat(text) - font.getHeight() * style.spacing;
}

juce::Path outlineOf(const juce::String& text, float x, float baseline, const Lettering& style)
{
    juce::GlyphArrangement glyphs;
    glyphs.addLineOfText(fontFor(style.face, style.capHeight, style.spacing), text,
                         x - widthOf(text, style) / 2, baseline);
    juce::Path path;
    glyphs.createPath(path);
    return path;
}

void print(juce::Graphics& g, const juce::String& text, float x, float baseline, const Lettering& style,
           juce::Justification justification)
{
    const float width = widthOf(text, style);
    if (justification.testFlags(juce::Justification::horizontallyCentred))
        x -= width / 2;
    else if (justification.testFlags(juce::Justification::right))
        x -= width;
    juce::GlyphArrangement glyphs;
    glyphs.addLineOfText(fontFor(style.face, style.capHeight, style.spacing), text, x, baseline);
    g.setColour(style.colour);
    glyphs.draw(g);
}

void caption(juce::Graphics& g, const juce::String& text, float x, float baseline)
{
    print(g, text, x, baseline, {Face::condensed, capitals::caption, palette::print},
          juce::Justification::horizontallyCentred);
}

void captionFrom(juce::Graphics& g, const juce::String& text, float x, float baseline)
{
    print(g, text, x, baseline, {Face::condensed, capitals::caption, palette::print});
}

} // namespace quorel::artwork
