// SPDX-License-Identifier: GPL-3.0-or-later
#include "resources/CBitmap.h"

#include <cstdio>

namespace quorel
{
namespace
{

/** At this many pixels to a layout pixel and more, the double-resolution image is the better source. */
constexpr float doubleFromScale = 1.01f;

void drawPart(juce::Graphics& g, const juce::Image& image, juce::Rectangle<int> source,
              juce::Rectangle<float> destination, bool asMask)
{
    if (!image.isValid() || source.isEmpty() || destination.isEmpty())
        return;
    const auto toDestination =
        juce::AffineTransform::scale(destination.getWidth() / static_cast<float>(source.getWidth()),
                                     destination.getHeight() / static_cast<float>(source.getHeight()))
            .translated(destination.getX(), destination.getY());
    if (!asMask)
    {
        g.drawImageTransformed(image.getClippedImage(source), toDestination);
        return;
    }
    // JUCE computes a mask over the whole clip region.
    const juce::Graphics::ScopedSaveState state(g);
    if (g.reduceClipRegion(destination.getSmallestIntegerContainer()))
        g.drawImageTransformed(image.getClippedImage(source), toDestination, true);
}

} // namespace

juce::Image ImageStore::decode(const void* data, size_t size)
{
    auto image = juce::ImageFileFormat::loadFrom(data, size);
    const auto pixelBytes = image.getFormat() == juce::Image::RGB ? 3 : 4;
    bytesHeld += static_cast<size_t>(image.getWidth()) * static_cast<size_t>(image.getHeight() * pixelBytes);
    return image;
}

const juce::Image& ImageStore::image(int row)
{
    const auto found = images.find(row);
    if (found != images.end())
        return found->second;
    const auto file = imageFile(row);
    return images.emplace(row, decode(file.data, file.size)).first->second;
}

const juce::Image& ImageStore::tile(int row, Resolution resolution, int index)
{
    const auto key = std::make_tuple(row, resolution, index);
    const auto found = tiles.find(key);
    if (found != tiles.end())
        return found->second;
    const auto file = tileFile(row, resolution, index);
    return tiles.emplace(key, decode(file.data, file.size)).first->second;
}

CBitmap::CBitmap(const juce::String& name)
    : row(imageRowOf(name))
{
    if (row < 0)
    {
        std::fprintf(stderr, "%s Bitmap not found\r\n", name.toRawUTF8());
        row = 0;
    }
}

int CBitmap::getWidth() const noexcept
{
    return imageList[static_cast<size_t>(row)].width;
}

int CBitmap::getHeight() const noexcept
{
    return imageList[static_cast<size_t>(row)].height;
}

bool CBitmap::isValid() const
{
    const bool isFilm = imageList[static_cast<size_t>(row)].isFilm();
    return isFilm ? store->tile(row, Resolution::single, 0).isValid() : getImage().isValid();
}

const juce::Image& CBitmap::getImage() const
{
    return store->image(row);
}

void CBitmap::draw(juce::Graphics& g, juce::Rectangle<float> destination, juce::Rectangle<int> source,
                   bool asMask) const
{
    source = source.getIntersection({getWidth(), getHeight()});
    if (source.isEmpty())
        return;

    const bool closer = g.getInternalContext().getPhysicalPixelScaleFactor() >= doubleFromScale;
    const auto resolution =
        closer && numTiles(row, Resolution::doubled) > 0 ? Resolution::doubled : Resolution::single;
    if (imageList[static_cast<size_t>(row)].isFilm())
        drawFilm(g, destination, source, asMask, resolution);
    else if (resolution == Resolution::doubled)
        drawPart(g, store->tile(row, resolution, 0), source * 2, destination, asMask);
    else
        drawPart(g, getImage(), source, destination, asMask);
}

void CBitmap::drawFilm(juce::Graphics& g, juce::Rectangle<float> destination, juce::Rectangle<int> source,
                       bool asMask, Resolution resolution) const
{
    const auto& listing = imageList[static_cast<size_t>(row)];
    const int frameHeight = listing.frameHeight();
    const int pixels = resolution == Resolution::doubled ? 2 : 1;
    const float stretch = destination.getHeight() / static_cast<float>(source.getHeight());
    for (int frame = source.getY() / frameHeight; frame <= (source.getBottom() - 1) / frameHeight; ++frame)
    {
        const auto part = source.getIntersection({0, frame * frameHeight, listing.width, frameHeight});
        const auto partDestination =
            destination.withY(destination.getY() + static_cast<float>(part.getY() - source.getY()) * stretch)
                .withHeight(static_cast<float>(part.getHeight()) * stretch);
        const auto inTile = part.translated(frame % framesPerTile * listing.width, -frame * frameHeight);
        drawPart(g, store->tile(row, resolution, frame / framesPerTile), inTile * pixels, partDestination,
                 asMask);
    }
}

void CBitmap::paint(juce::Graphics& g, juce::Rectangle<float> destination) const
{
    draw(g, destination, {getWidth(), getHeight()});
}

} // namespace quorel
