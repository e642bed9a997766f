// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "parameters/ParameterText.h"
#include "platform/FileNames.h"
#include "platform/FileOperations.h"
#include "presets/PresetFiles.h"
#include "presets/StateChunk.h"
#include "support/ProcessorRig.h"

#include <gtest/gtest.h>

#include <utility>

namespace quorel::test
{

inline MenuEntry rowOf(const MenuEntries& menu, const juce::String& text)
{
    for (const auto& entry : menu)
        if (entry.text == text)
            return entry;

    ADD_FAILURE() << "no row " << text;
    return {};
}

/** A processor whose commands work on real preset files. */
class PresetCommandTest : public testing::Test
{
protected:
    using Modifier = PresetCommands::Modifier;

    /** Deleted files go to a trash of the test's own. */
    void SetUp() override
    {
        adoptUserPlaces(rig.user.scratch.path());
        ASSERT_TRUE(rig.user.scratch.child("data/Trash").createDirectory());
    }

    /** A preset file with a master volume of its own, so that loads can be told apart. */
    void makePreset(const juce::String& folder, const juce::String& name, float volume = 0.5f)
    {
        const auto file = presetFileFor(banks, folder, name);
        StateChunk chunk;
        chunk.presetName = name;
        chunk.folderName = folder;
        chunk.parameters.assign(numHostParameters, 0.0f);
        chunk.parameters[slot::masterVolume] = volume;
        juce::MemoryBlock bytes;
        writeStateChunk(chunk, bytes);
        ASSERT_TRUE(replaceFile(file, bytes));
    }

    bool waitForPreset()
    {
        return rig.playUntil([&] { return !rig.processor.getSoundChange().isUnderWay(); }, 30000);
    }

    /** Loads a preset of the current folder. */
    void choose(const juce::String& preset)
    {
        EXPECT_TRUE(commands.selectPresetByName(preset)) << preset;
        EXPECT_TRUE(waitForPreset()) << preset;
    }

    /** Makes a preset the current one without waiting for its load. */
    void standOn(const juce::String& folder, const juce::String& preset)
    {
        rig.processor.setNames(preset, folder);
        commands.refreshLists();
    }

    juce::String files(const juce::String& folder)
    {
        return listPresets(childNamed(banks, folder)).joinIntoString("|");
    }

    juce::String folders() { return library.getFolderNames().joinIntoString("|"); }

    juce::MemoryBlock bytesOf(const juce::String& folder, const juce::String& preset)
    {
        juce::MemoryBlock bytes;
        EXPECT_TRUE(readWholeFile(presetFileFor(banks, folder, preset), bytes)) << folder << "/" << preset;
        return bytes;
    }

    StateChunk chunkOf(const juce::String& folder, const juce::String& preset)
    {
        const auto bytes = bytesOf(folder, preset);
        StateChunk chunk;
        EXPECT_EQ(readStateChunk(bytes.getData(), bytes.getSize(), chunk), ChunkStatus::valid);
        chunk.parameters.resize(numHostParameters);
        return chunk;
    }

    juce::String lastQuestion() { return rig.interaction.questions[rig.interaction.questions.size() - 1]; }

    juce::String lastAlert() { return rig.interaction.alerts[rig.interaction.alerts.size() - 1]; }

    juce::String takeAlerts() { return std::exchange(rig.interaction.alerts, {}).joinIntoString("#"); }

    juce::String names() { return rig.processor.getFolderName() + "/" + rig.processor.getPresetName(); }

    /** The preset's name as the parameters hold it. */
    juce::String nameInSound()
    {
        return readParamText(rig.processor, slot::presetNameText, slot::nameTextLength);
    }

    void type(const char* text) { rig.interaction.typedText = juce::String::fromUTF8(text); }

    ProcessorRig rig;
    PresetLibrary& library = rig.processor.getPresetLibrary();
    PresetCommands& commands = rig.processor.getPresetCommands();
    const juce::File banks = rig.user.banksFolder();
};

} // namespace quorel::test
