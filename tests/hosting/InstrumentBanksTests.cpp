// SPDX-License-Identifier: GPL-3.0-or-later
#include "hosting/InstrumentBanks.h"

#include "hosting/InstrumentTable.h"
#include "platform/PlatformSeam.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace quorel
{

namespace
{
/** An instrument's own binary, with its settings as the user's store has them. */
std::unique_ptr<juce::AudioPluginInstance> open(const juce::String& name)
{
    juce::VSTPluginFormat format;
    juce::OwnedArray<juce::PluginDescription> types;
    const auto file =
        juce::File(QUOREL_TEST_INSTRUMENTS).getChildFile(name).getChildFile(name + pluginFileEnding());
    format.findAllTypesForFile(types, file.getFullPathName());
    if (types.isEmpty())
        return nullptr;
    juce::String error;
    auto instance = format.createInstanceFromDescription(*types.getFirst(), 44100.0, 256, error);
    if (instance != nullptr)
        instance->prepareToPlay(44100.0, 256);
    return instance;
}

void send(juce::AudioPluginInstance& instance, const juce::MidiMessage& message)
{
    juce::AudioBuffer<float> audio(2, 256);
    juce::MidiBuffer midi;
    midi.addEvent(message, 0);
    for (int block = 0; block < 4; ++block)
    {
        audio.clear();
        instance.processBlock(audio, midi);
        midi.clear();
    }
}

juce::StringArray foundBanks(const juce::String& name, const UserStore& store)
{
    juce::StringArray banks;
    listBanks(name, store, banks);
    return banks;
}
} // namespace

TEST(InstrumentTable, looksUpByExactNameAndKnowsTheMultis)
{
    EXPECT_EQ(rowOf("Dorvik"), 6);
    EXPECT_EQ(rowOf("Fenn2"), 15);
    for (const auto* name : {"", "dorvik", "Dorvik ", "DorvikMulti", "Fenn"})
        EXPECT_EQ(rowOf(name), -1) << name;
    ASSERT_TRUE(bankFolderSetting("DorvikMulti").has_value());
    EXPECT_EQ(bankFolderSetting("DorvikMulti")->key, bankFolderSetting("Dorvik")->key);
    EXPECT_EQ(bankFolderSetting("Dorvik-KMulti")->key, bankFolderSetting("Dorvik-K")->key);
    EXPECT_FALSE(bankFolderSetting("Fenn").has_value());
}

TEST(InstrumentBanks, listsFoldersAndFiles)
{
    const test::ScratchFolder folder;
    const auto store = makeUserStore(userPlaces(folder.path()));
    const auto place = [&](const juce::String& name)
    {
        const auto setting = bankFolderSetting(name);
        store->write(setting->key, setting->valueName, folder.child(name).getFullPathName());
    };
    EXPECT_EQ(foundBanks("Orlen", *store).size(), 0) << "no setting";
    for (const auto* name : {"Orlen", "Hexley2", "Fenn2", "Dorvik"})
        place(name);
    juce::StringArray kept{"as it was"};
    listBanks("Orlen", *store, kept);
    EXPECT_EQ(kept, juce::StringArray{"as it was"}) << "the folder doesn't exist";

    for (const auto* file : {"Orlen/b.fxb", "Orlen/a.fxb", "Orlen/B.FXB", "Orlen/c.fxp", "Hexley2/c/2.fxp",
                             "Hexley2/c/1.two.fxp", "Hexley2/c/readme.txt", "Hexley2/a/1.fxp",
                             "Hexley2/b/1.fxp", "Hexley2/file.fxb", "Fenn2/only/1.fxp", "Dorvik/kit.fxb"})
        folder.write(file, "x");
    EXPECT_EQ(foundBanks("Orlen", *store), (juce::StringArray{"B.FXB", "a.fxb", "b.fxb"}));
    EXPECT_EQ(foundBanks("Hexley2", *store), (juce::StringArray{"Root Folder", "b", "c"}));
    EXPECT_EQ(foundBanks("Fenn2", *store), juce::StringArray{"Root Folder"});
    EXPECT_EQ(foundBanks("DorvikMulti", *store), juce::StringArray{"kit.fxb"});
    EXPECT_EQ(foundBanks("Unknown", *store).size(), 0);

    juce::StringArray programs{"old"};
    readProgramNames("Hexley2", "c", *store, programs);
    EXPECT_EQ(programs, (juce::StringArray{"1.two", "2"}));
    for (const auto* bank : {"", "nowhere"})
    {
        readProgramNames("Hexley2", bank, *store, programs);
        EXPECT_EQ(programs.size(), 0) << bank;
    }
}

TEST(InstrumentBanks, menusSelectAndNumberTheirEntries)
{
    juce::KnownPluginList list;
    for (const auto* name : {"Zeph", "Orlen"})
    {
        juce::PluginDescription type;
        type.name = name;
        type.fileOrIdentifier = name;
        list.addType(type);
    }
    auto menu = pluginMenu(list, "Zeph", "");
    EXPECT_EQ(menu.entries[0], "no plugin");
    EXPECT_EQ(menu.entries[menu.selectedId - 1], "Zeph");
    EXPECT_EQ(menu.text, "");
    menu = pluginMenu(list, "Imre", "Imre");
    EXPECT_EQ(menu.selectedId, 1);
    EXPECT_EQ(menu.text, "Plug-In Imre is missing");
    EXPECT_EQ(pluginMenu(list, "", "Stranger").text, "");

    menu = bankMenu({"Root Folder", "Two.part.fxb", ".hidden", "Three"}, "Two");
    EXPECT_EQ(menu.entries, (juce::StringArray{"Root Folder", "Two", "", "Three"}));
    EXPECT_EQ(menu.selectedId, 2);
    EXPECT_EQ(bankMenu({"Root Folder", "Two"}, "Else").selectedId, 1);

    EXPECT_EQ(programSelectMessage(200).getProgramChangeNumber(), 127);
    EXPECT_EQ(programSelectMessage(0).getProgramChangeNumber(), 0);
    EXPECT_TRUE(bankSelectMessage(3).isControllerOfType(32));
    EXPECT_EQ(bankSelectMessage(3).getControllerValue(), 2);
}

// The whole convention against the real binaries: what the menus offer is what the instruments then play.
TEST(InstrumentBanks, instrumentsFollowTheMenus)
{
    const auto store = makeUserStore();
    for (const auto* name : {"Orlen", "Hexley2", "Tarn-Mini", "Dorvik-K"})
    {
        SCOPED_TRACE(name);
        const auto setting = bankFolderSetting(name);
        ASSERT_TRUE(store->write(setting->key, setting->valueName,
                                 juce::File(QUOREL_TEST_BANKS).getChildFile(name).getFullPathName()));
        const auto instance = open(name);
        ASSERT_NE(instance, nullptr);
        const auto banks = foundBanks(name, *store);
        ASSERT_GE(banks.size(), 2);

        for (int id = banks.size(); id > 0; --id)
        {
            send(*instance, bankSelectMessage(id));
            const auto menu = bankMenu(banks, getBankName(*instance, name));
            EXPECT_EQ(menu.selectedId, id);
            EXPECT_EQ(menu.entries[id - 1], getBankName(*instance, name));
        }
        EXPECT_EQ(getBankName(*instance, "Unknown"), "");

        send(*instance, bankSelectMessage(2));
        juce::StringArray programs;
        readProgramNames(name, getBankName(*instance, name), *store, programs);
        const bool byMidi = findInstrument(name)->programsByMidi;
        ASSERT_EQ(programs.size() >= 8, byMidi);
        if (byMidi)
            send(*instance, programSelectMessage(4));
        else
            instance->setCurrentProgram(3);
        const auto menu = programMenu(*instance, name, programs);
        ASSERT_GE(menu.entries.size(), 8);
        EXPECT_EQ(menu.selectedId, 4);
        const auto prefix = byMidi ? juce::String("004 ")
                                   : juce::String("4 ").paddedLeft('0', menu.entries.size() > 9 ? 3 : 2);
        EXPECT_EQ(menu.entries[3], prefix + instance->getProgramName(byMidi ? 0 : 3));
    }
}

} // namespace quorel
