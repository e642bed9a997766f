// SPDX-License-Identifier: GPL-3.0-or-later
#include "resources/CBitmap.h"

#include "resources/ImageTable.h"

#include <cstdio>

namespace quorel
{
namespace
{

/** From this many pixels to a layout pixel on, the double-resolution image is the better source. */
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
    g.drawImageTransformed(image.getClippedImage(source), toDestination, asMask);
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

const juce::Image& ImageStore::doubleTile(int row, int tile)
{
    const auto key = std::make_pair(row, tile);
    const auto found = doubleTiles.find(key);
    if (found != doubleTiles.end())
        return found->second;
    const auto file = doubleTileFile(row, tile);
    return doubleTiles.emplace(key, decode(file.data, file.size)).first->second;
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
    return getImage().isValid();
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

    const float scale = g.getInternalContext().getPhysicalPixelScaleFactor();
    if (numDoubleTiles(row) == 0 || scale < doubleFromScale)
    {
        drawPart(g, getImage(), source, destination, asMask);
        return;
    }

    const auto& listing = imageList[static_cast<size_t>(row)];
    if (!listing.isFilm())
    {
        drawPart(g, store->doubleTile(row, 0), source * 2, destination, asMask);
        return;
    }
    const int frameHeight = listing.frameHeight();
    const float stretch = destination.getHeight() / static_cast<float>(source.getHeight());
    for (int frame = source.getY() / frameHeight; frame <= (source.getBottom() - 1) / frameHeight; ++frame)
    {
        const auto part = source.getIntersection({0, frame * frameHeight, listing.width, frameHeight});
        const auto partDestination =
            destination.withY(destination.getY() + static_cast<float>(part.getY() - source.getY()) * stretch)
                .withHeight(static_cast<float>(part.getHeight()) * stretch);
        const auto inTile =
            part.translated(frame % framesPerDoubleTile * listing.width, -frame * frameHeight);
        drawPart(g, store->doubleTile(row, frame / framesPerDoubleTile), inTile * 2, partDestination, asMask);
    }
}

void CBitmap::paint(juce::Graphics& g, juce::Rectangle<float> destination) const
{
    draw(g, destination, {getWidth(), getHeight()});
}

} // namespace quorel
