// SPDX-License-Identifier: GPL-3.0-or-later
// What the check of the pictures and of the artwork finds of text.
#include "common/TextContrast.h"
#include "resources/CBitmap.h"
#include "resources/EditorFont.h"

#include <gtest/gtest.h>

namespace quorel
{
namespace
{

constexpr juce::uint32 white = 0xffffffff;

/** Paints on an opaque image and hands out what was seen of it. */
std::vector<PaintedText> textsOf(juce::uint32 ground, const std::function<void(juce::Graphics&)>& paint)
{
    juce::Image image(juce::Image::RGB, 400, 100, true, juce::SoftwareImageType());
    TextWatch watch(image);
    juce::Graphics g(watch);
    g.fillAll(juce::Colour(ground));
    g.addTransform(juce::AffineTransform::scale(2.0f));
    g.setFont(editorFont(14.0f));
    paint(g);
    return watch.texts();
}

} // namespace

TEST(TextContrast, IsMeasuredOnWhatTheTextStandsOn)
{
    // The first is the darkest grey on white that falls short, the second the lightest that passes; so for the
    // WCAG's own examples.
    for (const auto& [ink, wanted] :
         {std::pair{0xff777777u, 4.48f}, {0xff767676u, 4.54f}, {0xff000000u, 21.0f}, {0x80000000u, 4.03f}})
    {
        const auto texts = textsOf(white,
                                   [ink = ink](juce::Graphics& g)
                                   {
                                       g.setColour(juce::Colour(ink));
                                       g.drawText("Low Pass", 10, 10, 150, 20, juce::Justification::left);
                                   });
        ASSERT_EQ(texts.size(), 1u);
        EXPECT_EQ(texts[0].text, "Low Pass");
        EXPECT_TRUE(juce::Rectangle<float>(20, 20, 130, 40).contains(texts[0].area));
        EXPECT_NEAR(texts[0].contrast(), wanted, 0.04f);
    }
}

TEST(TextContrast, SeesEveryTextOnItsOwnGround)
{
    const CBitmap letters("text_strip_a_png");
    const auto texts = textsOf(0xff000000,
                               [&](juce::Graphics& g)
                               {
                                   // Two colours in one line, the second on a field of its own.
                                   g.setColour(juce::Colour(0xff808080));
                                   g.fillRect(100, 0, 100, 50);
                                   g.drawText("grey", 10, 5, 80, 20, juce::Justification::left);
                                   g.setColour(juce::Colours::white);
                                   g.drawText("white", 110, 5, 80, 20, juce::Justification::left);
                                   // In a layer, as a component of its own opacity is painted.
                                   g.beginTransparencyLayer(0.5f);
                                   g.drawText("half", 10, 25, 40, 20, juce::Justification::left);
                                   g.endTransparencyLayer();
                                   // A letter of a bitmap font, and a text that is clipped away.
                                   g.setColour(juce::Colour(0xff606060));
                                   letters.draw(g, {60, 30, 9, 9}, {1, 0, 9, 9}, true);
                                   g.reduceClipRegion(0, 0, 20, 50);
                                   g.drawText("gone", 120, 30, 60, 20, juce::Justification::left);
                               });
    ASSERT_EQ(texts.size(), 4u);
    EXPECT_NEAR(texts[0].contrast(), 5.32f, 0.03f);
    EXPECT_NEAR(texts[1].contrast(), 3.95f, 0.03f);
    EXPECT_EQ(texts[2].text, "half");
    EXPECT_NEAR(texts[2].contrast(), 5.32f, 0.1f);
    EXPECT_TRUE(texts[3].text.isEmpty());
    EXPECT_NEAR(texts[3].contrast(), 3.34f, 0.03f);
}

} // namespace quorel
