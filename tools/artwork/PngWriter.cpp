// SPDX-License-Identifier: GPL-3.0-or-later
#include "PngWriter.h"

#include <array>
#include <cstdlib>
#include <map>
#include <vector>

namespace quorel::artwork
{
namespace
{

constexpr int compressionLevel = 9;
/** What `GZIPCompressorOutputStream` takes for zlib's own wrapping, which PNG wants. */
constexpr int zlibWrapping = 0;

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
    std::vector<juce::Colour> pixels;
    std::map<juce::uint32, juce::uint8> colours;
    bool opaque = true;
    for (int y = 0; y < image.getHeight(); ++y)
        for (int x = 0; x < image.getWidth(); ++x)
        {
            const auto colour = image.getPixelAt(x, y);
            opaque = opaque && colour.isOpaque();
            pixels.push_back(colour);
            if (colours.size() <= 256)
                colours.emplace(colour.getARGB(), juce::uint8{0});
        }

    Samples samples;
    samples.width = image.getWidth();
    samples.height = image.getHeight();
    if (colours.size() <= 256)
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
        for (const auto& colour : pixels)
            samples.data.push_back(colours[colour.getARGB()]);
        return samples;
    }

    samples.colourType = opaque ? rgb : rgba;
    samples.bytesPerPixel = opaque ? 3 : 4;
    for (const auto& colour : pixels)
    {
        samples.data.insert(samples.data.end(), {colour.getRed(), colour.getGreen(), colour.getBlue()});
        if (!opaque)
            samples.data.push_back(colour.getAlpha());
    }
    return samples;
}

/** The predictor of PNG's fourth filter. */
int paeth(int left, int up, int upLeft)
{
    const int estimate = left + up - upLeft;
    const int toLeft = std::abs(estimate - left);
    const int toUp = std::abs(estimate - up);
    const int toUpLeft = std::abs(estimate - upLeft);
    if (toLeft <= toUp && toLeft <= toUpLeft)
        return left;
    return toUp <= toUpLeft ? up : upLeft;
}

constexpr int numFilters = 5;

/** Appends row `y` under one of the filters 0 to 4, with the filter's number before it. Returns the sum of
   the filtered bytes' sizes, the usual guess at how well a row will do. */
int appendRow(Bytes& out, const Samples& samples, int y, int filter)
{
    const int length = samples.width * samples.bytesPerPixel;
    const auto* row = samples.data.data() + static_cast<size_t>(y) * static_cast<size_t>(length);
    const auto* above = y > 0 ? row - length : nullptr;
    int sum = 0;
    out.push_back(static_cast<juce::uint8>(filter));
    for (int i = 0; i < length; ++i)
    {
        const bool hasLeft = i >= samples.bytesPerPixel;
        const int left = hasLeft ? row[i - samples.bytesPerPixel] : 0;
        const int up = above != nullptr ? above[i] : 0;
        const int upLeft = hasLeft && above != nullptr ? above[i - samples.bytesPerPixel] : 0;
        const std::array<int, numFilters> predictions{0, left, up, (left + up) / 2, paeth(left, up, upLeft)};
        const auto value = static_cast<juce::uint8>(row[i] - predictions[static_cast<size_t>(filter)]);
        sum += value < 128 ? value : 256 - value;
        out.push_back(value);
    }
    return sum;
}

juce::MemoryBlock compressed(const Bytes& bytes)
{
    juce::MemoryOutputStream out;
    {
        juce::GZIPCompressorOutputStream zip(out, compressionLevel, zlibWrapping);
        zip.write(bytes.data(), bytes.size());
    }
    return out.getMemoryBlock();
}

/** All rows under one filter, or with the best guess for each where `filter` is negative. */
Bytes filtered(const Samples& samples, int filter)
{
    Bytes all;
    for (int y = 0; y < samples.height; ++y)
    {
        if (filter >= 0)
        {
            appendRow(all, samples, y, filter);
            continue;
        }
        Bytes best;
        int bestSum = std::numeric_limits<int>::max();
        for (int candidate = 0; candidate < numFilters; ++candidate)
        {
            Bytes row;
            const int sum = appendRow(row, samples, y, candidate);
            if (sum < bestSum)
            {
                bestSum = sum;
                best = std::move(row);
            }
        }
        all.insert(all.end(), best.begin(), best.end());
    }
    return all;
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
    juce::MemoryBlock best;
    constexpr int chosenByRow = -1;
    constexpr int none = 0;
    constexpr int byUpper = 2;
    for (const int filter : {none, byUpper, chosenByRow})
    {
        auto candidate = compressed(filtered(samples, filter));
        if (best.isEmpty() || candidate.getSize() < best.getSize())
            best = std::move(candidate);
    }

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
    writeChunk(out, "IDAT", best.getData(), best.getSize());
    writeChunk(out, "IEND", nullptr, 0);
    return out.getMemoryBlock();
}

} // namespace quorel::artwork
