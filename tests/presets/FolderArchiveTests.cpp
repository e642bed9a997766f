// SPDX-License-Identifier: GPL-3.0-or-later
// Archives from anywhere.
#include "presets/FolderArchive.h"

#include "parameters/ParameterLayout.h"
#include "platform/FileOperations.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace quorel::test
{

TEST(FolderArchive, AnyBytesAreReadOrRefusedAndStayInTheirFolder)
{
    const ScratchFolder scratch;
    StateChunk chunk;
    chunk.parameters.assign(numHostParameters, 0.25f);
    juce::MemoryBlock preset;
    writeStateChunk(chunk, preset);
    juce::Array<juce::File> files;

    for (const char* name : {"One.qrl", "Two.qrl"})
    {
        files.add(scratch.child("From").getChildFile(name));
        ASSERT_TRUE(replaceFile(files.getLast(), preset));
    }

    const auto good = scratch.child("Good.zip");
    ASSERT_TRUE(exportPresets(files, "Set", good));
    juce::MemoryBlock bytes;
    ASSERT_TRUE(readWholeFile(good, bytes));
    const auto banks = scratch.child("Banks");
    ASSERT_TRUE(banks.createDirectory());
    const auto damaged = scratch.child("Damaged.zip");
    juce::Random random(7);
    int numRead = 0;

    for (int i = 0; i < 400; ++i)
    {
        auto copy = bytes;

        // The directory at the end is where a reader is most easily led astray.
        for (int n = random.nextInt(4); n >= 0; --n)
            copy[static_cast<int>(copy.getSize()) - 1 -
                 random.nextInt(n % 2 == 0 ? 150 : static_cast<int>(copy.getSize()))] =
                static_cast<char>(random.nextInt(256));

        if (i % 5 == 0)
            copy.setSize(static_cast<size_t>(random.nextInt(static_cast<int>(copy.getSize()))));

        damaged.replaceWithData(copy.getData(), copy.getSize());
        FolderArchive archive;

        if (FolderArchive::read(damaged, archive) && archive.importTo(banks, "Set"))
            ++numRead;
    }

    EXPECT_GT(numRead, 0) << "some damage is harmless";
    EXPECT_LT(numRead, 400);
    // Nothing lies anywhere but in the folder, and all of that are presets.
    EXPECT_EQ(banks.getNumberOfChildFiles(juce::File::findFilesAndDirectories), 1);
    EXPECT_EQ(scratch.path().getNumberOfChildFiles(juce::File::findFilesAndDirectories), 4);

    for (const auto& file : banks.findChildFiles(juce::File::findFiles, true))
    {
        PresetDocument document;
        EXPECT_TRUE(PresetDocument::open(file, document)) << file.getFileName();
    }
}

} // namespace quorel::test
