// SPDX-License-Identifier: GPL-3.0-or-later
#include "ImageBlock.h"

#include "Canvas.h"
#include "Palette.h"
#include "PngWriter.h"
#include "common/TextContrast.h"
#include "resources/ImageList.h"

#include <stdexcept>
#include <vector>

namespace quorel::artwork
{
namespace
{

constexpr float jpegQuality = 0.85f;

bool isReference(const ImageListing& listing)
{
    return juce::String(listing.name).endsWith("_jpg");
}

void paint(const Canvas& canvas)
{
    for (auto* painter :
         {paintKnob, paintFader, paintHeaderButton, paintSwitch, paintReadout, paintPage, paintBackPanel,
          paintStripPanel, paintBitmapFont, paintInstrumentIcon, paintOrnament})
        if (painter(canvas))
            return;
    throw std::runtime_error("nothing draws " + canvas.name.toStdString());
}

/** Refuses print that is hard to read. What an image leaves open lies on the chassis. */
void checkPrint(const juce::String& image, TextWatch& watch)
{
    juce::StringArray faint;
    for (const auto& text : watch.texts())
        if (const float contrast = text.contrast(palette::chassisTop); contrast < leastContrast)
            faint.add("\"" + text.text + "\" has a contrast of " + juce::String(contrast, 1) + ":1");
    faint.removeDuplicates(false);
    if (!faint.isEmpty())
        throw std::runtime_error((image + ": " + faint.joinIntoString(", ")).toStdString());
}

/** Frames `first` to `first` + `count` - 1, one under the other or side by side, at `scale` pixels to a
    layout pixel. */
juce::Image draw(const ImageListing& listing, int first, int count, int scale, bool sideBySide)
{
    const int width = listing.width * scale;
    const int height = listing.frameHeight() * scale;
    juce::Image image(juce::Image::ARGB, sideBySide ? width * count : width,
                      sideBySide ? height : height * count, true, juce::SoftwareImageType());
    for (int i = 0; i < count; ++i)
    {
        TextWatch watch(image);
        juce::Graphics g(watch);
        g.addTransform(juce::AffineTransform::scale(static_cast<float>(scale))
                           .translated(static_cast<float>(sideBySide ? i * width : 0),
                                       static_cast<float>(sideBySide ? 0 : i * height)));
        g.reduceClipRegion(0, 0, listing.width, listing.frameHeight());
        const auto name = juce::String(listing.name).dropLastCharacters(4);
        paint({g, name, listing.width, listing.frameHeight(), first + i, listing.frames});
        checkPrint(name, watch);
    }
    return image;
}

juce::MemoryBlock jpegOf(const juce::Image& image)
{
    juce::MemoryOutputStream out;
    juce::JPEGImageFormat format;
    format.setQuality(jpegQuality);
    if (!format.writeImageToStream(image, out))
        throw std::runtime_error("cannot write a JPEG");
    return out.getMemoryBlock();
}

void writeLoose(const juce::File& file, const juce::MemoryBlock& data)
{
    if (!file.getParentDirectory().createDirectory() || !file.replaceWithData(data.getData(), data.getSize()))
        throw std::runtime_error("cannot write " + file.getFullPathName().toStdString());
}

/** All files, drawn and encoded by a pool of threads in any order. */
struct Files
{
    std::array<juce::MemoryBlock, numImages> images;
    std::array<std::vector<juce::MemoryBlock>, numImages> singleTiles;
    std::array<std::vector<juce::MemoryBlock>, numImages> doubleTiles;
};

/** Images drawn ahead of their encoding, which bounds their memory. */
constexpr int maxWaitingJobs = 64;

void waitForJobs(const juce::ThreadPool& pool, int remaining)
{
    while (pool.getNumJobs() > remaining)
        juce::Thread::sleep(2);
}

/** Draws an image's tiles and hands them to the pool. */
void drawTiles(juce::ThreadPool& pool, const ImageListing& listing, int scale,
               std::vector<juce::MemoryBlock>& tiles)
{
    const int tileFrames = listing.isFilm() ? framesPerTile : listing.frames;
    tiles.resize(static_cast<size_t>((listing.frames + tileFrames - 1) / tileFrames));
    for (size_t tile = 0; tile < tiles.size(); ++tile)
    {
        waitForJobs(pool, maxWaitingJobs);
        const int first = static_cast<int>(tile) * tileFrames;
        const int count = juce::jmin(tileFrames, listing.frames - first);
        const auto image = draw(listing, first, count, scale, listing.isFilm());
        pool.addJob([&tiles, tile, image] { tiles[tile] = pngOf(image); });
    }
}

Files encodeAll()
{
    Files files;
    // Images are drawn one by one, since all text shares one typeface; it is the encoding that takes long.
    juce::ThreadPool pool(juce::SystemStats::getNumCpus());
    for (size_t i = 0; i < imageList.size(); ++i)
    {
        const auto& listing = imageList[i];
        const auto image = draw(listing, 0, listing.frames, 1, false);
        if (isReference(listing))
            files.images[i] = jpegOf(image);
        else
            pool.addJob([&files, i, image] { files.images[i] = pngOf(image); });
        if (listing.isFilm())
            drawTiles(pool, listing, 1, files.singleTiles[i]);
        if (listing.doubled)
            drawTiles(pool, listing, 2, files.doubleTiles[i]);
    }
    waitForJobs(pool, 0);
    return files;
}

} // namespace

juce::MemoryBlock drawImageBlock(const juce::File& looseFolder)
{
    const auto files = encodeAll();
    size_t numTiles = 0;
    for (size_t i = 0; i < imageList.size(); ++i)
        numTiles += files.singleTiles[i].size() + files.doubleTiles[i].size();

    juce::MemoryOutputStream index;
    juce::MemoryOutputStream tileIndex;
    juce::MemoryOutputStream data;
    const size_t dataStart = sizeof(juce::uint32) * (4 + 6 * imageList.size() + 2 * numTiles);
    const auto append = [&](juce::OutputStream& to, const juce::MemoryBlock& file)
    {
        to.writeInt(static_cast<int>(dataStart + data.getDataSize()));
        to.writeInt(static_cast<int>(file.getSize()));
        data << file;
    };

    int firstTile = 0;
    for (size_t i = 0; i < imageList.size(); ++i)
    {
        append(index, files.images[i]);
        for (const auto* tiles : {&files.singleTiles[i], &files.doubleTiles[i]})
        {
            index.writeInt(firstTile);
            index.writeInt(static_cast<int>(tiles->size()));
            firstTile += static_cast<int>(tiles->size());
            for (const auto& tile : *tiles)
                append(tileIndex, tile);
        }
        if (looseFolder != juce::File())
        {
            const auto name = juce::String(imageList[i].name).replace("_png", ".png").replace("_jpg", ".jpg");
            writeLoose(looseFolder.getChildFile(name), files.images[i]);
            for (size_t tile = 0; tile < files.doubleTiles[i].size(); ++tile)
                writeLoose(
                    looseFolder.getChildFile("2x").getChildFile(
                        (files.doubleTiles[i].size() > 1 ? juce::String(tile) + "-" : juce::String()) + name),
                    files.doubleTiles[i][tile]);
        }
    }

    juce::MemoryOutputStream block;
    block.write("QART", 4);
    block.writeInt(static_cast<int>(imageList.size()));
    block.writeInt(static_cast<int>(numTiles));
    block.writeInt(static_cast<int>(dataStart + data.getDataSize()));
    block << index.getMemoryBlock() << tileIndex.getMemoryBlock() << data.getMemoryBlock();
    return block.getMemoryBlock();
}

} // namespace quorel::artwork
