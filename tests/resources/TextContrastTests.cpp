// SPDX-License-Identifier: GPL-3.0-or-later
// What the check of the pictures and of the artwork finds of text.
#include "common/TextContrast.h"
#include "resources/CBitmap.h"
#include "resources/EditorFont.h"

#include <gtest/gtest.h>

namespace quorel
{

TEST(TextContrast, SeesEveryTextOnItsOwnGround)
{
    juce::Image image(juce::Image::RGB, 400, 100, true, juce::SoftwareImageType());
    TextWatch watch(image);
    juce::Graphics g(watch);
    const CBitmap letters("text_strip_a_png");
    g.fillAll(juce::Colours::black);
    g.addTransform(juce::AffineTransform::scale(2.0f));
    g.setFont(editorFont(14.0f));
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

    const auto& texts = watch.texts();
    ASSERT_EQ(texts.size(), 4u);
    EXPECT_EQ(texts[0].text, "grey");
    EXPECT_TRUE(juce::Rectangle<float>(20, 10, 160, 40).contains(texts[0].area));
    EXPECT_NEAR(texts[0].contrast(), 5.32f, 0.03f);
    EXPECT_NEAR(texts[1].contrast(), 3.95f, 0.03f);
    EXPECT_EQ(texts[2].text, "half");
    EXPECT_NEAR(texts[2].contrast(), 5.32f, 0.1f);
    EXPECT_TRUE(texts[3].text.isEmpty());
    EXPECT_NEAR(texts[3].contrast(), 3.34f, 0.03f);
}

} // namespace quorel
