// SPDX-License-Identifier: GPL-3.0-or-later
#include "TextContrast.h"

#include <cmath>

namespace quorel
{
namespace
{

// Parts of the type's size.
constexpr float gapWithinLine = 0.8f;
constexpr float gapOfBlank = 0.15f;
/** A mask that is filled with less is light on what it covers, such as a key under the mouse. */
constexpr float highestAlphaOfLight = 0.25f;

float linear(juce::uint8 channel)
{
    const float value = static_cast<float>(channel) / 255.0f;
    return value <= 0.04045f ? value / 12.92f : std::pow((value + 0.055f) / 1.055f, 2.4f);
}

float luminance(juce::Colour colour)
{
    return 0.2126f * linear(colour.getRed()) + 0.7152f * linear(colour.getGreen()) +
           0.0722f * linear(colour.getBlue());
}

} // namespace

float contrastOf(juce::Colour a, juce::Colour b)
{
    const float first = luminance(a);
    const float second = luminance(b);
    return (juce::jmax(first, second) + 0.05f) / (juce::jmin(first, second) + 0.05f);
}

float PaintedText::contrast(juce::Colour below) const
{
    const auto opaque = below.overlaidWith(ground);
    return contrastOf(opaque.overlaidWith(ink), opaque);
}

TextWatch::TextWatch(const juce::Image& watched)
    : LowLevelGraphicsSoftwareRenderer(watched)
    , image(watched)
{
}

const std::vector<PaintedText>& TextWatch::texts()
{
    finish();
    return done;
}

void TextWatch::drawGlyph(int glyph, const juce::AffineTransform& transform)
{
    const auto& font = getFont();
    const auto face = font.getTypefacePtr();
    juce::Path outline;
    if (face->getOutlineForGlyph(glyph, outline) && !outline.isEmpty())
    {
        const auto onImage = transform.followedBy(stack->transform.getTransform());
        const auto scaled =
            juce::AffineTransform::scale(font.getHeight() * font.getHorizontalScale(), font.getHeight())
                .followedBy(onImage);
        const float size = font.getHeight() * getPhysicalPixelScaleFactor();
        add(characterOf(face, glyph), outline.getBoundsTransformed(scaled), onImage.getTranslationY(), size);
    }
    LowLevelGraphicsSoftwareRenderer::drawGlyph(glyph, transform);
}

void TextWatch::clipToImageAlpha(const juce::Image& mask, const juce::AffineTransform& transform)
{
    const auto area =
        mask.getBounds().toFloat().transformedBy(transform.followedBy(stack->transform.getTransform()));
    if (stack->fillType.colour.getFloatAlpha() > highestAlphaOfLight)
        add({}, area, area.getBottom(), area.getHeight());
    LowLevelGraphicsSoftwareRenderer::clipToImageAlpha(mask, transform);
}

void TextWatch::beginTransparencyLayer(float opacity)
{
    layerOpacities.push_back(opacity);
    LowLevelGraphicsSoftwareRenderer::beginTransparencyLayer(opacity);
}

void TextWatch::endTransparencyLayer()
{
    layerOpacities.pop_back();
    LowLevelGraphicsSoftwareRenderer::endTransparencyLayer();
}

void TextWatch::add(const juce::String& character, juce::Rectangle<float> area, float baseline, float size)
{
    if (stack->clip == nullptr || !stack->clip->getClipBounds().toFloat().intersects(area))
        return;

    auto ink = stack->fillType.colour;
    for (const float opacity : layerOpacities)
        ink = ink.withMultipliedAlpha(opacity);

    const auto continues = [&](const Run& run)
    {
        const float gap = area.getX() - run.line.area.getRight();
        return run.line.ink == ink && std::abs(run.baseline - baseline) < 1.0f &&
               std::abs(run.size - size) < 1.0f && gap > -size && gap < gapWithinLine * size &&
               run.line.text.isEmpty() == character.isEmpty();
    };
    if (open.empty() || !continues(open.back()))
    {
        finish();
        open.push_back({{character, area, ink, {}}, baseline, size, {}});
    }
    else
    {
        auto& line = open.back().line;
        if (character.isNotEmpty() && area.getX() - line.area.getRight() > gapOfBlank * size)
            line.text << ' ';
        line.text << character;
        line.area = line.area.getUnion(area);
    }
    sampleGround(open.back(), area);
}

void TextWatch::sampleGround(Run& run, juce::Rectangle<float> area) const
{
    const auto box = area.getSmallestIntegerContainer().getIntersection(image.getBounds());
    constexpr juce::uint32 steps = 0xf8f8f8f8;
    for (int y = box.getY(); y < box.getBottom(); ++y)
        for (int x = box.getX(); x < box.getRight(); ++x)
        {
            const auto colour = image.getPixelAt(x, y);
            auto& tally = run.grounds[colour.getARGB() & steps];
            ++tally.count;
            tally.alpha += colour.getAlpha();
            tally.red += colour.getRed();
            tally.green += colour.getGreen();
            tally.blue += colour.getBlue();
        }
}

juce::String TextWatch::characterOf(const juce::Typeface::Ptr& face, int glyph)
{
    constexpr juce::juce_wchar first = 0x21, last = 0x17f;
    if (knownFaces.emplace(face.get(), face).second)
        for (auto character = first; character <= last; ++character)
        {
            juce::Array<int> glyphs;
            juce::Array<float> offsets;
            face->getGlyphPositions(juce::String::charToString(character), glyphs, offsets);
            if (!glyphs.isEmpty())
                characters.emplace(std::pair{face.get(), glyphs.getFirst()}, character);
        }
    const auto found = characters.find({face.get(), glyph});
    return juce::String::charToString(found != characters.end() ? found->second : '?');
}

void TextWatch::finish()
{
    for (auto& run : open)
    {
        const auto most =
            std::max_element(run.grounds.begin(), run.grounds.end(),
                             [](const auto& a, const auto& b) { return a.second.count < b.second.count; });
        if (most == run.grounds.end())
            continue;
        const auto& [count, alpha, red, green, blue] = most->second;
        const auto mean = [total = count](int sum) { return static_cast<juce::uint8>(sum / total); };
        run.line.ground = {mean(red), mean(green), mean(blue), mean(alpha)};
        done.push_back(run.line);
    }
    open.clear();
}

} // namespace quorel
