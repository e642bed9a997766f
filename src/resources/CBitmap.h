// SPDX-License-Identifier: GPL-3.0-or-later
// A built-in image, found by name.
#pragma once

#include "resources/ImageTable.h"

#include <juce_graphics/juce_graphics.h>
#include <map>
#include <tuple>

namespace quorel
{

/** The decoded images of the process. Each is decoded when it is first needed, and kept. Every `CBitmap`
    shares the one store, which goes with the last of them; hold a `juce::SharedResourcePointer<ImageStore>`
    to keep it, so that the next editor opens quickly. Message thread. */
class ImageStore
{
public:
    /** Image of a row of the image table. */
    const juce::Image& image(int row);

    /** One of the tiles that a row's image is drawn from. */
    const juce::Image& tile(int row, Resolution resolution, int index);

    /** Bytes of all pixels held. */
    size_t numBytes() const noexcept { return bytesHeld; }

private:
    std::map<int, juce::Image> images;
    std::map<std::tuple<int, Resolution, int>, juce::Image> tiles;
    size_t bytesHeld = 0;

    juce::Image decode(const void* data, size_t size);
};

/** A built-in image. Copies are cheap and share the pixels. Message thread. */
class CBitmap
{
public:
    /** Finds an image by its name, spelt in any of the ways that `foldedImageName` takes for the same. A name
        that isn't there is reported on the standard error stream, and the table's first image stands in. */
    explicit CBitmap(const juce::String& name);

    /** Size in layout pixels, of the whole image with all its frames. */
    int getWidth() const noexcept;
    int getHeight() const noexcept;

    /** False where the image can't be decoded. Decodes it. */
    bool isValid() const;

    /** Draws `source` (layout pixels of the image) stretched to `destination`, from the double-resolution
        image where the context draws at more than one pixel to a layout pixel. With `asMask` the image's
        alpha is a mask for the current colour. */
    void draw(juce::Graphics& g, juce::Rectangle<float> destination, juce::Rectangle<int> source,
              bool asMask = false) const;

    /** Draws the whole image stretched to `destination`. */
    void paint(juce::Graphics& g, juce::Rectangle<float> destination) const;

    /** The image at one pixel to a layout pixel, with the pixels that all share. */
    const juce::Image& getImage() const;

private:
    juce::SharedResourcePointer<ImageStore> store;
    int row = 0;

    void drawFilm(juce::Graphics& g, juce::Rectangle<float> destination, juce::Rectangle<int> source,
                  bool asMask, Resolution resolution) const;
};

} // namespace quorel
