// SPDX-License-Identifier: GPL-3.0-or-later
#include "resources/ImageTable.h"

#include "resources/BuiltInData.h"

#include <array>
#include <cstdint>
#include <vector>

namespace quorel
{
namespace
{

constexpr size_t headerNumbers = 4;
constexpr size_t rowNumbers = 6;
constexpr size_t tileNumbers = 2;

/** The files of the image block, in the order of the names. */
struct ImageTable
{
    juce::StringArray names;
    std::vector<BuiltInBytes> files;
    std::vector<BuiltInBytes> tiles;

    struct TileRange
    {
        size_t first = 0;
        int count = 0;
    };

    /** By resolution and row. */
    std::array<std::vector<TileRange>, 2> tileRanges;

    ImageTable();
};

/** Number `index` of the block, or 0 beyond its end. */
size_t numberAt(BuiltInBytes block, size_t index)
{
    if ((index + 1) * sizeof(uint32_t) > block.size)
        return 0;
    return juce::ByteOrder::littleEndianInt(static_cast<const char*>(block.data) + index * sizeof(uint32_t));
}

/** The part of the block that two of its numbers name, or nothing if it isn't in there. */
BuiltInBytes partAt(BuiltInBytes block, size_t index)
{
    const size_t offset = numberAt(block, index);
    const size_t size = numberAt(block, index + 1);
    if (offset > block.size || size > block.size - offset)
        return {};
    return {static_cast<const char*>(block.data) + offset, size};
}

ImageTable::ImageTable()
{
    const auto block = imageBlock();
    const size_t tileCount = numberAt(block, 2);
    jassert(numberAt(block, 1) == imageList.size() && numberAt(block, 3) == block.size);
    const size_t tilesStart = headerNumbers + rowNumbers * imageList.size();
    for (size_t tile = 0; tile < tileCount; ++tile)
        tiles.push_back(partAt(block, tilesStart + tileNumbers * tile));

    size_t index = headerNumbers;
    for (const auto& listing : imageList)
    {
        names.add(listing.name);
        files.push_back(partAt(block, index));
        for (size_t resolution = 0; resolution < tileRanges.size(); ++resolution)
        {
            const size_t first = numberAt(block, index + 2 + 2 * resolution);
            const size_t count = numberAt(block, index + 3 + 2 * resolution);
            const bool there = first + count <= tiles.size();
            tileRanges[resolution].push_back(there ? TileRange{first, static_cast<int>(count)} : TileRange{});
        }
        index += rowNumbers;
    }
}

/** Built with the first look-up. */
const ImageTable& table()
{
    static const ImageTable theTable;
    return theTable;
}

} // namespace

const juce::StringArray& imageNames()
{
    return table().names;
}

juce::String foldedImageName(const juce::String& name)
{
    return name.toLowerCase()
        .replaceCharacters(" .", "__")
        .retainCharacters("abcdefghijklmnopqrstuvwxyz_0123456789");
}

int imageRowOf(const juce::String& name)
{
    return imageNames().indexOf(foldedImageName(name));
}

BuiltInBytes imageFile(int row)
{
    return juce::isPositiveAndBelow(row, numImages) ? table().files[static_cast<size_t>(row)]
                                                    : BuiltInBytes{};
}

int numTiles(int row, Resolution resolution)
{
    if (!juce::isPositiveAndBelow(row, numImages))
        return 0;
    return table().tileRanges[static_cast<size_t>(resolution)][static_cast<size_t>(row)].count;
}

BuiltInBytes tileFile(int row, Resolution resolution, int tile)
{
    if (!juce::isPositiveAndBelow(tile, numTiles(row, resolution)))
        return {};
    const auto& range = table().tileRanges[static_cast<size_t>(resolution)][static_cast<size_t>(row)];
    return table().tiles[range.first + static_cast<size_t>(tile)];
}

} // namespace quorel
