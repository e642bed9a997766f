// SPDX-License-Identifier: GPL-3.0-or-later
// Names that are longer than a chunk's fields, found again on the disk.
#include "platform/FileNames.h"
#include "presets/PresetFiles.h"
#include "presets/StoredNames.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace quorel::test
{

namespace
{
/** 30 characters: what is added to it is cut. */
const juce::String stem("Thirty characters of one name ");

juce::String utf8(const char* text)
{
    return juce::String::fromUTF8(text);
}

StateChunk chunkNaming(const juce::String& folder, const juce::String& preset)
{
    StateChunk chunk;
    chunk.presetName = preset;
    chunk.folderName = folder;
    juce::MemoryBlock bytes;
    writeStateChunk(chunk, bytes);
    EXPECT_EQ(readStateChunk(bytes.getData(), bytes.getSize(), chunk), ChunkStatus::valid);
    return chunk;
}
} // namespace

TEST(StoredNames, LongNamesAreThoseOnTheDisk)
{
    const ScratchFolder banks;
    const auto resolved = [&](const StateChunk& chunk)
    {
        const auto names = resolveNames(banks.path(), chunk);
        return names.folder + "/" + names.preset;
    };
    const auto afterSaving = [&](const juce::String& folder, const juce::String& preset)
    { return resolved(chunkNaming(folder, preset)); };
    const auto make = [&](const juce::String& folder, const juce::String& preset)
    { ASSERT_TRUE(presetFileFor(banks.path(), folder, preset).create().wasOk()); };

    const auto longFolder = stem + "as a folder";
    const auto wide = stem + utf8("\xf0\x9f\x8e\xb9 keys");
    make("Short", "one");
    make("Short", stem + "alone");
    make("Short", stem + "12");
    make(longFolder, stem + "here");
    EXPECT_EQ(afterSaving("Short", stem + "alone"), "Short/" + stem + "alone");
    EXPECT_EQ(afterSaving("Short", stem + "12"), "Short/" + stem + "12") << "32 bytes to the byte";
    EXPECT_EQ(afterSaving(longFolder, stem + "here"), longFolder + "/" + stem + "here");
    EXPECT_EQ(afterSaving(longFolder, "new"), longFolder + "/new") << "never saved";
    EXPECT_EQ(afterSaving("Short", stem + "gone"), "Short/" + stem + "go") << "nothing is glued on";

    // Two of them can't be told apart.
    make("Short", stem + "alone again");
    EXPECT_EQ(afterSaving("Short", stem + "alone"), "Short/" + stem + "al");
    // A second folder that begins alike has no such preset.
    banks.child(stem + "as another").createDirectory();
    EXPECT_EQ(afterSaving(longFolder, stem + "here"), longFolder + "/" + stem + "here");
    EXPECT_EQ(afterSaving(longFolder, "new"), stem + "as/new");

    // A character of four bytes doesn't fit into the last two, unless another writer cuts within it.
    make("Short", wide);
    EXPECT_EQ(afterSaving("Short", wide), "Short/" + wide);
    auto chunk = chunkNaming("Short", wide);
    chunk.presetField[30] = '\xf0';
    chunk.presetField[31] = '\x9f';
    EXPECT_EQ(resolved(chunk), "Short/" + wide);
    presetFileFor(banks.path(), "Short", wide).deleteFile();
    EXPECT_EQ(resolved(chunk), "Short/" + stem);
    chunk.presetField.fill('\x80');
    EXPECT_EQ(resolved(chunk).length(), 6 + 32) << "no text at all";
}

} // namespace quorel::test
