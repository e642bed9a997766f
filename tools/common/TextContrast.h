// SPDX-License-Identifier: GPL-3.0-or-later
// How well text can be read on what it stands on, taken from the painting itself.
#pragma once

#include <juce_graphics/juce_graphics.h>

#include <map>
#include <vector>

namespace quorel
{

/** What text wants at least, by the WCAG's level AA. */
constexpr float leastContrast = 4.5f;

/** Of two opaque colours as the WCAG has it, 1 to 21. */
float contrastOf(juce::Colour a, juce::Colour b);

/** One line of text, in one colour. */
struct PaintedText
{
    /** Empty for what is drawn as masks, as bitmap fonts are. */
    juce::String text;
    /** Around the ink, in pixels of the image. */
    juce::Rectangle<float> area;
    juce::Colour ink;
    /** The colour that most of the area had before the text came. */
    juce::Colour ground;

    /** On an opaque colour, should the ground let one through. */
    float contrast(juce::Colour below = juce::Colours::black) const;
};

/** Paints into an image as ever, and notes all text on the way: what is drawn in a font or as a mask. A text in
    a layer of its own opacity is held against what the layer lies on. */
class TextWatch : public juce::LowLevelGraphicsSoftwareRenderer
{
public:
    /** Shares the image's pixels. */
    explicit TextWatch(const juce::Image& watched);

    const std::vector<PaintedText>& texts();

    void drawGlyph(int glyph, const juce::AffineTransform& transform) override;
    void clipToImageAlpha(const juce::Image& mask, const juce::AffineTransform& transform) override;
    void beginTransparencyLayer(float opacity) override;
    void endTransparencyLayer() override;

private:
    /** Glyphs of one line so far, and the pixels below them, by colour in steps. */
    struct Run
    {
        PaintedText line;
        float baseline;
        float size;

        struct Tally
        {
            int count = 0;
            int alpha = 0, red = 0, green = 0, blue = 0;
        };

        std::map<juce::uint32, Tally> grounds;
    };

    void add(const juce::String& character, juce::Rectangle<float> area, float baseline, float size);
    void sampleGround(Run& run, juce::Rectangle<float> area) const;
    juce::String characterOf(const juce::Typeface::Ptr& face, int glyph);
    void finish();

    juce::Image image;
    std::vector<float> layerOpacities;
    /** By typeface and glyph. */
    std::map<std::pair<const juce::Typeface*, int>, juce::juce_wchar> characters;
    std::map<const juce::Typeface*, juce::Typeface::Ptr> knownFaces;
    // Of the run under way, which the next text or question ends.
    std::vector<Run> open;
    std::vector<PaintedText> done;
};

} // namespace quorel
