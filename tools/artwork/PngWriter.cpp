// SPDX-License-Identifier: GPL-3.0-or-later
#include "PngWriter.h"

#include <cstdlib>
#include <limits>
#include <map>
#include <vector>

namespace quorel::artwork
{
namespace
{

/** Levels for choosing among filters, and for the file. The highest would take many times as long over films,
   whose frames repeat each other, and save next to nothing. */
constexpr int trialLevel = 1;
constexpr int fileLevel = 7;
/** What `GZIPCompressorOutputStream` takes for zlib's own wrapping, which PNG wants. */
constexpr int zlibWrapping = 0;

constexpr size_t maxPalette = 256;

using Bytes = std::vector<juce::uint8>;

/** Samples of an image, row by row, as a PNG stores them before filtering. */
struct Samples
{
    int width = 0;
    int height = 0;
    int bytesPerPixel = 0;
    int colourType = 0;
    Bytes data;
    Bytes palette;
    Bytes paletteAlpha;
};

enum ColourType
{
    rgb = 2,
    indexed = 3,
    rgba = 6
};

Samples samplesOf(const juce::Image& image)
{
    const juce::Image::BitmapData bitmap(image, juce::Image::BitmapData::readOnly);
    std::vector<juce::PixelARGB> pixels;
    pixels.reserve(static_cast<size_t>(image.getWidth()) * static_cast<size_t>(image.getHeight()));
    std::map<juce::uint32, juce::uint8> colours;
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
                colours.emplace(colour, juce::uint8{0});
            last = colour;
            pixels.push_back(pixel);
        }
    }

    Samples samples;
    samples.width = image.getWidth();
    samples.height = image.getHeight();
    if (colours.size() <= maxPalette)
    {
        samples.colourType = indexed;
        samples.bytesPerPixel = 1;
        // Lowest alpha first: the table of alphas may end before the opaque ones.
        juce::uint8 next = 0;
        for (auto& [argb, index] : colours)
        {
            const juce::Colour colour(argb);
            index = next++;
            samples.palette.insert(samples.palette.end(),
                                   {colour.getRed(), colour.getGreen(), colour.getBlue()});
            if (!colour.isOpaque())
                samples.paletteAlpha.push_back(colour.getAlpha());
        }
        for (const auto& pixel : pixels)
            samples.data.push_back(colours[pixel.getNativeARGB()]);
        return samples;
    }

    samples.colourType = opaque ? rgb : rgba;
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

/** The predictor of PNG's fourth filter. */
int paeth(int left, int up, int upLeft)
{
    const int toLeft = std::abs(up - upLeft);
    const int toUp = std::abs(left - upLeft);
    const int toUpLeft = std::abs(left + up - 2 * upLeft);
    if (toLeft <= toUp && toLeft <= toUpLeft)
        return left;
    return toUp <= toUpLeft ? up : upLeft;
}

enum Filter
{
    noFilter = 0,
    byUpper = 2,
    byPaeth = 4,
    /** Not one of PNG's: of the three above, the one whose row has the smallest sum of sizes. */
    bestGuess = 5
};

/** Row `y` under a filter, with the filter's number before it. Returns the sum of the sizes of the filtered
   bytes, the usual guess at how well a row will do. */
int filterRow(Bytes& out, const Samples& samples, int y, Filter filter)
{
    const size_t pixel = static_cast<size_t>(samples.bytesPerPixel);
    const size_t length = static_cast<size_t>(samples.width) * pixel;
    const auto* row = samples.data.data() + static_cast<size_t>(y) * length;
    static const Bytes nothing(1 << 16, 0);
    const auto* above = y > 0 ? row - length : nothing.data();
    out.resize(length + 1);
    out[0] = static_cast<juce::uint8>(filter);
    int sum = 0;
    for (size_t i = 0; i < length; ++i)
    {
        int prediction = 0;
        if (filter == byUpper)
            prediction = above[i];
        else if (filter == byPaeth)
            prediction = i < pixel ? above[i] : paeth(row[i - pixel], above[i], above[i - pixel]);
        const auto value = static_cast<juce::uint8>(row[i] - prediction);
        sum += value < 128 ? value : 256 - value;
        out[i + 1] = value;
    }
    return sum;
}

Bytes filtered(const Samples& samples, Filter filter)
{
    Bytes all;
    Bytes row;
    Bytes best;
    for (int y = 0; y < samples.height; ++y)
    {
        int bestSum = std::numeric_limits<int>::max();
        for (const auto candidate : {noFilter, byUpper, byPaeth})
        {
            if (filter != bestGuess && candidate != filter)
                continue;
            const int sum = filterRow(row, samples, y, candidate);
            if (sum < bestSum)
            {
                bestSum = sum;
                std::swap(best, row);
            }
        }
        all.insert(all.end(), best.begin(), best.end());
    }
    return all;
}

juce::MemoryBlock compressed(const Bytes& bytes, int level)
{
    juce::MemoryOutputStream out;
    {
        juce::GZIPCompressorOutputStream zip(out, level, zlibWrapping);
        zip.write(bytes.data(), bytes.size());
    }
    return out.getMemoryBlock();
}

/** The image's compressed rows, under the filters that do best. */
juce::MemoryBlock compressedRows(const Samples& samples)
{
    Bytes best;
    size_t bestSize = std::numeric_limits<size_t>::max();
    for (const auto filter : {noFilter, byUpper, bestGuess})
    {
        auto candidate = filtered(samples, filter);
        const size_t size = compressed(candidate, trialLevel).getSize();
        if (size < bestSize)
        {
            bestSize = size;
            best = std::move(candidate);
        }
    }
    return compressed(best, fileLevel);
}

juce::uint32 crcOf(const void* data, size_t size)
{
    juce::uint32 crc = 0xffffffff;
    for (size_t i = 0; i < size; ++i)
    {
        crc ^= static_cast<const juce::uint8*>(data)[i];
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1) != 0 ? 0xedb88320 : 0);
    }
    return ~crc;
}

void writeChunk(juce::OutputStream& out, const char* type, const void* data, size_t size)
{
    juce::MemoryOutputStream body;
    body.write(type, 4);
    body.write(data, size);
    out.writeIntBigEndian(static_cast<int>(size));
    out.write(body.getData(), body.getDataSize());
    out.writeIntBigEndian(static_cast<int>(crcOf(body.getData(), body.getDataSize())));
}

} // namespace

juce::MemoryBlock pngOf(const juce::Image& image)
{
    const auto samples = samplesOf(image);
    const auto rows = compressedRows(samples);
    juce::MemoryOutputStream out;
    out.write("\x89PNG\r\n\x1a\n", 8);
    juce::MemoryOutputStream header;
    header.writeIntBigEndian(samples.width);
    header.writeIntBigEndian(samples.height);
    header.writeByte(8);
    header.writeByte(static_cast<char>(samples.colourType));
    for (int i = 0; i < 3; ++i) // compression, filter method and interlacing: the only, the only, none
        header.writeByte(0);
    writeChunk(out, "IHDR", header.getData(), header.getDataSize());
    if (!samples.palette.empty())
        writeChunk(out, "PLTE", samples.palette.data(), samples.palette.size());
    if (!samples.paletteAlpha.empty())
        writeChunk(out, "tRNS", samples.paletteAlpha.data(), samples.paletteAlpha.size());
    writeChunk(out, "IDAT", rows.getData(), rows.getSize());
    writeChunk(out, "IEND", nullptr, 0);
    return out.getMemoryBlock();
}

} // namespace quorel::artwork
