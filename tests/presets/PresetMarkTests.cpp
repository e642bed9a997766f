// SPDX-License-Identifier: GPL-3.0-or-later
// What a user keeps about presets: marks in a file of their own, notes behind the end of a preset's chunk.
#include "presets/PresetMarks.h"

#include "platform/FileOperations.h"
#include "presets/PresetNotes.h"
#include "support/FileTools.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <thread>

namespace quorel::test
{

namespace
{
/** A whole chunk with two states. */
juce::MemoryBlock chunkWithStates()
{
    StateChunk chunk;
    chunk.presetName = "Name";
    chunk.parameters.assign(20, 0.5f);
    chunk.hostedStates[1] = blockOf("one state");
    chunk.hostedStates[3] = blockOf("another");

    for (size_t layer = 0; layer < chunk.hostedStates.size(); ++layer)
        chunk.layerSizes[layer] = static_cast<int>(chunk.hostedStates[layer].getSize());

    juce::MemoryBlock bytes;
    writeStateChunk(chunk, bytes);
    return bytes;
}
} // namespace

TEST(PresetMarks, FollowTheirPresetsAndSurviveOthers)
{
    const ScratchFolder scratch;
    const auto file = scratch.child("config/PresetMarks.txt");
    const PresetPlace one{"A", "One"};
    const PresetPlace odd{"B b", juce::String::fromUTF8("4 * 5 \xe2\x99\xa5")};
    PresetMarks marks(file);
    EXPECT_TRUE(marks.setRating({one, odd}, 9));
    EXPECT_EQ(PresetMarks(file).get(one).rating, highestRating);
    EXPECT_TRUE(marks.setFavourite({odd}, true));
    EXPECT_TRUE(marks.presetMoved(one, {"B b", "Two"}));
    // Left of a folder that is gone.
    EXPECT_TRUE(marks.setRating({{"C", "Two"}}, 1));
    EXPECT_TRUE(marks.folderMoved("B b", "C"));
    EXPECT_EQ(marks.get({"C", "Two"}).rating, highestRating);
    EXPECT_TRUE(PresetMarks(file).get({"C", odd.name}).favourite);
    EXPECT_EQ(marks.get(one).rating + marks.get(odd).rating, 0);
    EXPECT_TRUE(marks.presetGone({"C", "Two"}));
    EXPECT_TRUE(marks.folderGone("C"));
    EXPECT_EQ(file.getSize(), 0) << file.loadFileAsString();

    for (int i = 1; i <= mostRecentPresets + 3; ++i)
        EXPECT_TRUE(marks.noteUse({"R", juce::String(i)}, juce::Time(1000 * i)));

    EXPECT_EQ(marks.get({"R", "3"}).lastUsed, 0);
    EXPECT_EQ(marks.get({"R", "4"}).lastUsed, 4000);

    // Two instances at once.
    const auto rateMany = [&file](const juce::String& folder)
    {
        PresetMarks own(file);

        for (int i = 0; i < 30; ++i)
            EXPECT_TRUE(own.setRating({{folder, juce::String(i)}}, 4));
    };
    std::thread first(rateMany, "X");
    std::thread second(rateMany, "Y");
    first.join();
    second.join();
    marks.read();

    for (int i = 0; i < 30; ++i)
        EXPECT_EQ(marks.get({"X", juce::String(i)}).rating + marks.get({"Y", juce::String(i)}).rating, 8)
            << i;
}

TEST(PresetMarks, AFileOfAnythingIsReadAndNotLost)
{
    const ScratchFolder scratch;
    const auto file = scratch.child("PresetMarks.txt");
    ASSERT_TRUE(replaceFile(
        file, blockOf("6 * 0 A/Six\n\n5\nx y z\n2 - 99999999999999999999999 A/Big\r\n1 * 7 A/Good/odd\n"
                      "3 - 5 ../../up\n1 - 0")));
    PresetMarks marks(file);
    EXPECT_EQ(marks.get({"A", "Six"}).rating, 0);
    EXPECT_EQ(marks.get({"A", "Good/odd"}).rating, 1);
    EXPECT_GE(marks.get({"A", "Big"}).lastUsed, 0);
    EXPECT_TRUE(marks.setRating({{"A", "line\nend"}, {"A", "New"}}, 2));
    PresetMarks again(file);
    EXPECT_EQ(again.get({"A", "New"}).rating, 2);
    EXPECT_EQ(again.get({"A", "Big"}).rating, 2) << "what made sense stays";

    for (const char* broken : {"\xff\xfe\x01", "1 * 0 A/B\xc3"})
    {
        ASSERT_TRUE(replaceFile(file, juce::MemoryBlock(broken, std::strlen(broken))));
        PresetMarks none(file);
        EXPECT_TRUE(none.setFavourite({{"A", "B"}}, true));
        EXPECT_TRUE(PresetMarks(file).get({"A", "B"}).favourite);
    }

    EXPECT_TRUE(scratch.child("PresetMarks.txt.broken").existsAsFile());
    EXPECT_TRUE(scratch.child("PresetMarks.txt.broken2").existsAsFile());
    // No file can be made below a file.
    PresetMarks nowhere(file.getChildFile("PresetMarks.txt"));
    EXPECT_FALSE(nowhere.setRating({{"A", "B"}}, 1));
    EXPECT_EQ(nowhere.get({"A", "B"}).rating, 0);
}

TEST(PresetNotes, StandBehindTheEndAndTouchNothingElse)
{
    const auto plain = chunkWithStates();
    const PresetNotes notes{juce::String::fromUTF8("J\xc3\xb6rg"), "Two lines\nbecome one"};

    for (const auto& foreign : {juce::MemoryBlock(), blockOf("left by others tonq")})
    {
        auto before = plain;
        before.append(foreign.getData(), foreign.getSize());
        auto bytes = before;
        ASSERT_TRUE(storePresetNotes(bytes, notes));
        EXPECT_EQ(std::memcmp(bytes.getData(), before.getData(), before.getSize()), 0);
        EXPECT_EQ(readPresetNotes(bytes).author, notes.author);
        EXPECT_EQ(readPresetNotes(bytes).comment, "Two lines become one");
        EXPECT_EQ(numForeignBytes(bytes), foreign.getSize());
        // Other notes take their place, and none give it back.
        ASSERT_TRUE(storePresetNotes(bytes, {{}, juce::String::repeatedString("x", 2000)}));
        EXPECT_EQ(readPresetNotes(bytes).comment.length(), longestComment);
        EXPECT_EQ(readPresetNotes(bytes).author, "");
        ASSERT_TRUE(storePresetNotes(bytes, {}));
        EXPECT_TRUE(bytes == before);
    }

    // A state that happens to look like notes is a state.
    auto lookalike = plain;
    storePresetNotes(lookalike, notes);
    StateChunk chunk;
    readStateChunk(plain.getData(), plain.getSize(), chunk);
    chunk.hostedStates[3] =
        juce::MemoryBlock(lookalike.begin() + plain.getSize(), lookalike.getSize() - plain.getSize());
    chunk.layerSizes[3] = static_cast<int>(chunk.hostedStates[3].getSize());
    juce::MemoryBlock bytes;
    writeStateChunk(chunk, bytes);
    EXPECT_TRUE(readPresetNotes(bytes).isEmpty());
    const auto kept = bytes;
    ASSERT_TRUE(storePresetNotes(bytes, {}));
    EXPECT_TRUE(bytes == kept);
    auto cut = plain;
    cut.setSize(plain.getSize() - 1);
    EXPECT_FALSE(storePresetNotes(cut, notes)) << "a cut state has no room behind it";
}

TEST(PresetNotes, AnyBytesCanBeRead)
{
    auto whole = chunkWithStates();
    const auto plainSize = whole.getSize();
    storePresetNotes(whole, {"author", "comment"});

    for (size_t size = 0; size < whole.getSize(); ++size)
        EXPECT_TRUE(readPresetNotes({whole.getData(), size}).isEmpty()) << size;

    juce::Random random(11);

    for (int i = 0; i < 20000; ++i)
    {
        auto bytes = whole;
        auto* at = bytes.begin() + static_cast<int>(plainSize) +
                   random.nextInt(static_cast<int>(whole.getSize() - plainSize));
        *at = static_cast<char>(random.nextInt(256));
        const auto notes = readPresetNotes(bytes);
        EXPECT_LE(notes.author.length(), longestAuthor);
        storePresetNotes(bytes, {"a", "b"});
        EXPECT_EQ(readPresetNotes(bytes).author, "a");
        EXPECT_EQ(std::memcmp(bytes.getData(), whole.getData(), plainSize), 0);
    }
}

} // namespace quorel::test
