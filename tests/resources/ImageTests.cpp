// SPDX-License-Identifier: GPL-3.0-or-later
// The built-in images: they are what the table says, at both resolutions, and show what the controls need.
#include "resources/CBitmap.h"
#include "resources/EditorFont.h"
#include "resources/WindowIcons.h"

#include <cmath>
#include <gtest/gtest.h>
#include <set>

namespace quorel
{
namespace
{

/** What a control shows of an image: a part of it, drawn on a ground at a scale. */
juce::Image shown(const juce::String& name, juce::Rectangle<int> part, int scale,
                  juce::Colour ground = juce::Colours::transparentBlack)
{
    juce::Image image(juce::Image::ARGB, part.getWidth() * scale, part.getHeight() * scale, true);
    juce::Graphics g(image);
    g.fillAll(ground);
    g.addTransform(juce::AffineTransform::scale(static_cast<float>(scale)));
    CBitmap(name).draw(g, part.withZeroOrigin().toFloat(), part);
    return image;
}

juce::Image frameOf(const ImageListing& listing, int frame, int scale = 1)
{
    return shown(listing.name, {0, frame * listing.frameHeight(), listing.width, listing.frameHeight()},
                 scale, juce::Colours::black);
}

/** Mean difference of two images' channels, 0 to 1. */
float difference(const juce::Image& a, const juce::Image& b)
{
    EXPECT_EQ(a.getBounds(), b.getBounds());
    float sum = 0;
    for (int y = 0; y < a.getHeight(); ++y)
        for (int x = 0; x < a.getWidth(); ++x)
        {
            const auto p = a.getPixelAt(x, y);
            const auto q = b.getPixelAt(x, y);
            sum += std::abs(p.getFloatRed() - q.getFloatRed()) +
                   std::abs(p.getFloatGreen() - q.getFloatGreen()) +
                   std::abs(p.getFloatBlue() - q.getFloatBlue());
        }
    return sum / static_cast<float>(3 * a.getWidth() * a.getHeight());
}

/** Every second pixel of an image at half its size, each the mean of four. */
juce::Image halved(const juce::Image& image)
{
    juce::Image half(juce::Image::ARGB, image.getWidth() / 2, image.getHeight() / 2, true);
    for (int y = 0; y < half.getHeight(); ++y)
        for (int x = 0; x < half.getWidth(); ++x)
        {
            const auto upper =
                image.getPixelAt(2 * x, 2 * y).interpolatedWith(image.getPixelAt(2 * x + 1, 2 * y), 0.5f);
            const auto lower = image.getPixelAt(2 * x, 2 * y + 1)
                                   .interpolatedWith(image.getPixelAt(2 * x + 1, 2 * y + 1), 0.5f);
            half.setPixelAt(x, y, upper.interpolatedWith(lower, 0.5f));
        }
    return half;
}

/** Where what `weight` picks out of an image has its middle. */
template <typename Weight>
juce::Point<double> middleOf(const juce::Image& image, Weight weight)
{
    double sum = 0, sumX = 0, sumY = 0;
    for (int y = 0; y < image.getHeight(); ++y)
        for (int x = 0; x < image.getWidth(); ++x)
        {
            const double w = weight(image.getPixelAt(x, y), x + 0.5, y + 0.5);
            sum += w;
            sumX += w * (x + 0.5);
            sumY += w * (y + 0.5);
        }
    EXPECT_GT(sum, 0.0);
    return {sumX / sum, sumY / sum};
}

/** Angle of a knob's pointer, clockwise from the top: the bright part of the cap. */
double pointerAngle(const juce::Image& frame)
{
    const juce::Point<double> centre(23.5, 22.0);
    const auto tip = middleOf(frame,
                              [&](juce::Colour colour, double x, double y)
                              {
                                  const bool onCap = centre.getDistanceFrom(juce::Point<double>(x, y)) < 10.5;
                                  return onCap ? juce::jmax(0.0, colour.getBrightness() - 0.6) : 0.0;
                              });
    return std::atan2(tip.x - centre.x, centre.y - tip.y);
}

/** Height of a fader's cap in its frame: that of the coloured line beside the slot. */
double capHeight(const juce::Image& frame)
{
    const double middle = frame.getWidth() / 2.0;
    return middleOf(frame,
                    [&](juce::Colour colour, double x, double)
                    {
                        return std::abs(x - middle) > 4
                                   ? juce::jmax(0.0, colour.getSaturation() * colour.getBrightness() - 0.25)
                                   : 0.0;
                    })
        .y;
}

} // namespace

TEST(Images, AreOfTheStatedSizes)
{
    ImageStore store;
    ASSERT_EQ(imageNames().size(), numImages);
    for (int row = 0; row < numImages; ++row)
    {
        const auto& listing = imageList[static_cast<size_t>(row)];
        SCOPED_TRACE(listing.name);
        EXPECT_EQ(listing.height % listing.frames, 0);
        EXPECT_EQ(imageRowOf(listing.name), row);
        EXPECT_EQ(store.image(row).getBounds(), juce::Rectangle<int>(listing.width, listing.height));
    }
}

TEST(Images, LookTheSameAtBothResolutions)
{
    for (const auto& listing : imageList)
    {
        if (!listing.doubled)
            continue;
        SCOPED_TRACE(listing.name);
        const int lastFrame = listing.frames - 1;
        for (const int frame : std::set<int>{0, lastFrame / 3, lastFrame})
        {
            const auto single = frameOf(listing, frame);
            const auto doubled = frameOf(listing, frame, 2);
            EXPECT_LT(difference(halved(doubled), single), 0.015f);
        }
    }
}

TEST(Images, KnobsSweepAndFadersClimbFromFrameToFrame)
{
    for (const auto& listing : imageList)
    {
        if (!listing.isFilm())
            continue;
        SCOPED_TRACE(listing.name);
        const bool isKnob = listing.width == listing.frameHeight();
        const auto position = [&](int frame)
        {
            const auto image = frameOf(listing, frame);
            return isKnob ? pointerAngle(image) : -capHeight(image);
        };
        const double first = position(0);
        const double whole = position(listing.frames - 1) - first;
        EXPECT_GT(whole, isKnob ? 4.5 : 70.0);
        double last = first;
        for (int frame = 1; frame < listing.frames; ++frame)
        {
            const double now = position(frame);
            EXPECT_GT(now, last) << "frame " << frame;
            EXPECT_NEAR((now - first) / whole, frame / (listing.frames - 1.0), 0.02) << "frame " << frame;
            last = now;
        }
    }
}

TEST(Images, StatesAndGlyphsDifferAtAGlance)
{
    for (const auto& listing : imageList)
    {
        if (listing.frames != 2 && listing.frames != numGlyphRows)
            continue;
        const float least = listing.frames == 2 ? 0.04f : 0.003f;
        for (int frame = 0; frame < listing.frames; ++frame)
            for (int other = 0; other < frame; ++other)
                EXPECT_GT(difference(frameOf(listing, frame), frameOf(listing, other)), least)
                    << listing.name << ": " << frame << " and " << other;
    }
}

TEST(Images, AreFoundUnderAnySpellingAndAWrongNameShowsTheFirst)
{
    const int row = imageRowOf("key_edit_png");
    ASSERT_GE(row, 0);
    for (const auto* spelling : {"key_Edit_png", "key Edit.png", "Key_Edit_PNG", "(key) edit.png!"})
        EXPECT_EQ(imageRowOf(spelling), row) << spelling;
    for (const auto* stranger : {"", "key_edit", "key__edit_png", "key_edit_png_"})
        EXPECT_EQ(imageRowOf(stranger), -1) << stranger;

    testing::internal::CaptureStderr();
    const CBitmap wrong("No Such Thing.png");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "No Such Thing.png Bitmap not found\r\n");
    EXPECT_EQ(wrong.getImage().getPixelData(), CBitmap(imageList[0].name).getImage().getPixelData());
}

TEST(Images, AreDecodedOnceForAllUsers)
{
    const juce::SharedResourcePointer<ImageStore> store;
    const CBitmap one("quorel_back_png"), other("Quorel Back.png");
    EXPECT_EQ(one.getImage().getPixelData(), other.getImage().getPixelData());

    const auto bytesWithPosition = [&store]
    {
        shown("small_knobs_vol__137_frames_png", {0, 47 * 60, 47, 47}, 1);
        return store->numBytes();
    };
    const auto knob = CBitmap("small_knobs_vol__137_frames_png");
    const size_t before = store->numBytes();
    const size_t first = bytesWithPosition();
    EXPECT_GT(first, before);
    EXPECT_LT(first - before, 200000u) << "one position must not decode the whole film";
    EXPECT_EQ(bytesWithPosition(), first);
}

TEST(WindowIcons, AreWholeAtEverySize)
{
    const auto icons = windowIcons();
    ASSERT_EQ(icons.size(), iconSizes.size());
    for (size_t i = 0; i < icons.size(); ++i)
    {
        const int size = iconSizes[i];
        ASSERT_EQ(icons[i].getBounds(), juce::Rectangle<int>(size, size));
        // A plate that is cut off nowhere, with the letter's tail on it.
        EXPECT_TRUE(icons[i].getPixelAt(0, 0).isTransparent()) << size;
        EXPECT_TRUE(icons[i].getPixelAt(size - 1, size - 1).isTransparent()) << size;
        EXPECT_GT(icons[i].getPixelAt(size / 2, size * 15 / 16 - 1).getAlpha(), 100) << size;
        EXPECT_GT(icons[i].getPixelAt(size * 5 / 8, size * 5 / 8).getSaturation(), 0.5f) << size;
    }
}

TEST(EditorFont, HasTwoWeightsOfOneFamily)
{
    const auto regular = editorFont(20), bold = editorFont(20, true);
    // Windows has the weight in the name, too.
    EXPECT_TRUE(bold.getTypefacePtr()->getName().startsWith(regular.getTypefacePtr()->getName()));
    EXPECT_GT(bold.getStringWidthFloat("Layer Volume"), regular.getStringWidthFloat("Layer Volume"));
}

} // namespace quorel
