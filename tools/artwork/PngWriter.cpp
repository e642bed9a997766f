// SPDX-License-Identifier: GPL-3.0-or-later
#include "PngWriter.h"

#include <limits>
#include <map>
#include <png.h>
#include <stdexcept>
#include <vector>

namespace quorel::artwork
{
namespace
{

/** Levels for choosing among filters, and for the file. The highest would take many times as long over films,
    whose frames repeat each other, and save next to nothing. */
constexpr int trialLevel = 1;
constexpr int fileLevel = 7;

constexpr size_t maxPalette = PNG_MAX_PALETTE_LENGTH;

/** An image's samples, row by row, as a PNG holds them before filtering. */
struct Samples
{
    int width = 0;
    int height = 0;
    int bytesPerPixel = 0;
    int colourType = 0;
    std::vector<png_byte> data;
    std::vector<png_color> palette;
    /** Of the palette's first colours; the others are opaque. */
    std::vector<png_byte> paletteAlpha;
};

Samples samplesOf(const juce::Image& image)
{
    const juce::Image::BitmapData bitmap(image, juce::Image::BitmapData::readOnly);
    std::vector<juce::PixelARGB> pixels;
    pixels.reserve(static_cast<size_t>(image.getWidth()) * static_cast<size_t>(image.getHeight()));
    std::map<juce::uint32, png_byte> colours;
    bool opaque = true;
    for (int y = 0; y < image.getHeight(); ++y)
    {
        juce::uint32 last = 0;
        for (int x = 0; x < image.getWidth(); ++x)
        {
            auto pixel = *reinterpret_cast<const juce::PixelARGB*>(bitmap.getPixelPointer(x, y));
            pixel.unpremultiply();
            opaque = opaque && pixel.getAlpha() == 255;
            const auto colour = pixel.getNativeARGB();
            if (colours.size() <= maxPalette && (x == 0 || colour != last))
                colours.emplace(colour, png_byte{0});
            last = colour;
            pixels.push_back(pixel);
        }
    }

    Samples samples;
    samples.width = image.getWidth();
    samples.height = image.getHeight();
    if (colours.size() <= maxPalette)
    {
        samples.colourType = PNG_COLOR_TYPE_PALETTE;
        samples.bytesPerPixel = 1;
        // Lowest alpha first: the table of alphas may end before the opaque ones.
        png_byte next = 0;
        for (auto& [argb, index] : colours)
        {
            const juce::Colour colour(argb);
            index = next++;
            samples.palette.push_back({colour.getRed(), colour.getGreen(), colour.getBlue()});
            if (!colour.isOpaque())
                samples.paletteAlpha.push_back(colour.getAlpha());
        }
        for (const auto& pixel : pixels)
            samples.data.push_back(colours[pixel.getNativeARGB()]);
        return samples;
    }

    samples.colourType = opaque ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_RGB_ALPHA;
    samples.bytesPerPixel = opaque ? 3 : 4;
    samples.data.reserve(pixels.size() * static_cast<size_t>(samples.bytesPerPixel));
    for (const auto& pixel : pixels)
    {
        samples.data.push_back(pixel.getRed());
        samples.data.push_back(pixel.getGreen());
        samples.data.push_back(pixel.getBlue());
        if (!opaque)
            samples.data.push_back(pixel.getAlpha());
    }
    return samples;
}

void append(png_structp png, png_bytep bytes, size_t size)
{
    static_cast<juce::MemoryOutputStream*>(png_get_io_ptr(png))->write(bytes, size);
}

void flushNothing(png_structp)
{
}

/** libpng leaves here by a long jump after an error: nothing in here may want destroying. False after one. */
bool encode(png_structp png, png_infop info, const Samples& samples, int filters, int level)
{
    if (setjmp(png_jmpbuf(png)) != 0)
        return false;
    png_set_filter(png, PNG_FILTER_TYPE_BASE, filters);
    png_set_compression_level(png, level);
    png_set_IHDR(png, info, static_cast<png_uint_32>(samples.width), static_cast<png_uint_32>(samples.height),
                 8, samples.colourType, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    if (!samples.palette.empty())
        png_set_PLTE(png, info, samples.palette.data(), static_cast<int>(samples.palette.size()));
    if (!samples.paletteAlpha.empty())
        png_set_tRNS(png, info, samples.paletteAlpha.data(), static_cast<int>(samples.paletteAlpha.size()),
                     nullptr);
    png_write_info(png, info);
    const auto rowLength = static_cast<size_t>(samples.width) * static_cast<size_t>(samples.bytesPerPixel);
    for (size_t y = 0; y < static_cast<size_t>(samples.height); ++y)
        png_write_row(png, samples.data.data() + y * rowLength);
    png_write_end(png, nullptr);
    return true;
}

juce::MemoryBlock encoded(const Samples& samples, int filters, int level)
{
    juce::MemoryOutputStream out;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png == nullptr ? nullptr : png_create_info_struct(png);
    bool succeeded = info != nullptr;
    if (succeeded)
    {
        png_set_write_fn(png, &out, append, flushNothing);
        succeeded = encode(png, info, samples, filters, level);
    }
    png_destroy_write_struct(&png, &info);
    if (!succeeded)
        throw std::runtime_error("cannot write a PNG");
    return out.getMemoryBlock();
}

} // namespace

juce::MemoryBlock pngOf(const juce::Image& image)
{
    const auto samples = samplesOf(image);
    int best = PNG_FILTER_NONE;
    size_t bestSize = std::numeric_limits<size_t>::max();
    // Given several filters, libpng guesses the best for each row. For palettes and films the guess is often
    // wrong.
    for (const int filters :
         {PNG_FILTER_NONE, PNG_FILTER_UP, PNG_FILTER_NONE | PNG_FILTER_UP | PNG_FILTER_PAETH})
    {
        const size_t size = encoded(samples, filters, trialLevel).getSize();
        if (size < bestSize)
        {
            bestSize = size;
            best = filters;
        }
    }
    return encoded(samples, best, fileLevel);
}

} // namespace quorel::artwork
