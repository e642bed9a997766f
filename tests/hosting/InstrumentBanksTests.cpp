// SPDX-License-Identifier: GPL-3.0-or-later
#include "hosting/InstrumentBanks.h"

#include "hosting/InstrumentTable.h"
#include "platform/PlatformSeam.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>
#include <map>

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

/** Plays blocks of 256 samples, the events at the start of the first. */
std::vector<float> play(juce::AudioPluginInstance& instance, int numBlocks,
                        std::initializer_list<juce::MidiMessage> events)
{
    juce::AudioBuffer<float> audio(2, 256);
    juce::MidiBuffer midi;
    for (const auto& event : events)
        midi.addEvent(event, 0);
    std::vector<float> left;
    for (int block = 0; block < numBlocks; ++block)
    {
        audio.clear();
        instance.processBlock(audio, midi);
        midi.clear();
        left.insert(left.end(), audio.getReadPointer(0), audio.getReadPointer(0) + audio.getNumSamples());
    }
    return left;
}

void send(juce::AudioPluginInstance& instance, const juce::MidiMessage& message)
{
    play(instance, 4, {message});
}

void setBankFolder(const juce::String& instrument, const juce::File& folder)
{
    const auto setting = bankFolderSetting(instrument);
    ASSERT_TRUE(makeUserStore()->write(setting->key, setting->valueName, folder.getFullPathName()));
}

/** A quarter of a second of middle C, played by a new instance after a choice from its bank and program
    menus. */
std::vector<float> heard(const juce::String& instrument, int bankId, int programId)
{
    const auto instance = open(instrument);
    if (instance == nullptr)
        return {};
    // Both at once: what played before the last choice would still turn the modulation.
    play(*instance, 4, {bankSelectMessage(bankId), programSelectMessage(programId)});
    return play(*instance, 43, {juce::MidiMessage::noteOn(1, 60, 0.8f)});
}

juce::StringArray textsOf(const MenuEntries& menu)
{
    juce::StringArray texts;
    for (const auto& entry : menu)
        texts.add(entry.text);
    return texts;
}

/** The id of the one entry that is ticked; 0 for none or several. */
int tickedId(const MenuEntries& menu)
{
    int id = 0;
    int count = 0;
    for (const auto& entry : menu)
        if (entry.ticked && ++count == 1)
            id = entry.id;
    return count == 1 ? id : 0;
}

juce::String tickedText(const MenuEntries& menu)
{
    return textsOf(menu)[tickedId(menu) - 1];
}

juce::StringArray foundBanks(const juce::String& name, const UserStore& store)
{
    juce::StringArray banks;
    listBanks(name, store, banks);
    return banks;
}
} // namespace

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

    for (const auto* file : {"Orlen/b.fxb", "Orlen/a.fxb", "Orlen/D.FXB", "Orlen/c.fxp", "Hexley2/c/2.fxp",
                             "Hexley2/c/1.two.fxp", "Hexley2/c/readme.txt", "Hexley2/a/1.fxp",
                             "Hexley2/b/1.fxp", "Hexley2/file.fxb", "Fenn2/only/1.fxp", "Dorvik/kit.fxb"})
        folder.write(file, "x");
    EXPECT_EQ(foundBanks("Orlen", *store), (juce::StringArray{"D.FXB", "a.fxb", "b.fxb"}));
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

TEST(InstrumentBanks, theBankMenuTicksItsBank)
{
    const auto menu = bankMenu({"Root Folder", "Two.part.fxb", ".hidden", "Three"}, "Two");
    EXPECT_EQ(textsOf(menu), (juce::StringArray{"Root Folder", "Two", "", "Three"}));
    EXPECT_EQ(tickedText(menu), "Two");
    EXPECT_EQ(tickedText(bankMenu({"Root Folder", "Two"}, "Else")), "Root Folder");

    // Nor do messages leave the range of MIDI.
    EXPECT_EQ(programSelectMessage(200).getProgramChangeNumber(), 127);
    EXPECT_EQ(programSelectMessage(0).getProgramChangeNumber(), 0);
}

// The whole convention against the real binaries: what the menus offer is what the instruments then play.
TEST(InstrumentBanks, instrumentsFollowTheMenus)
{
    const auto store = makeUserStore();
    for (const auto* name : {"Orlen", "Hexley2", "Tarn-Mini", "Dorvik-K"})
    {
        SCOPED_TRACE(name);
        setBankFolder(name, juce::File(QUOREL_TEST_BANKS).getChildFile(name));
        const auto instance = open(name);
        ASSERT_NE(instance, nullptr);
        const auto banks = foundBanks(name, *store);
        ASSERT_GE(banks.size(), 2);

        for (int id = banks.size(); id > 0; --id)
        {
            send(*instance, bankSelectMessage(id));
            const auto menu = bankMenu(banks, getBankName(*instance, name));
            EXPECT_EQ(tickedId(menu), id);
            EXPECT_EQ(tickedText(menu), getBankName(*instance, name));
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
        ASSERT_GE(menu.size(), 8u);
        EXPECT_EQ(tickedId(menu), 4);
        const auto prefix =
            byMidi ? juce::String("004 ") : juce::String("4 ").paddedLeft('0', menu.size() > 9 ? 3 : 2);
        EXPECT_EQ(tickedText(menu), prefix + instance->getProgramName(byMidi ? 0 : 3));
    }
}

// Names that sort one way with their endings and another way without them, and an ending in capitals.
TEST(InstrumentBanks, theProgramNamedIsTheProgramHeard)
{
    const juce::StringArray files{"AAA.FXP", "Lead.fxp", "Lead 2.fxp", "Lead-3.fxp", "leaf.fxp"};
    const test::ScratchFolder folder;
    const auto sounds = juce::File(QUOREL_TEST_BANKS)
                            .getChildFile("Fenn2/Rotor")
                            .findChildFiles(juce::File::findFiles, false);
    ASSERT_GE(sounds.size(), files.size());
    folder.child("alone").createDirectory();
    folder.child("all/First").createDirectory();
    folder.child("all/Mine").createDirectory();

    std::map<juce::String, std::vector<float>> expected;
    setBankFolder("Fenn2", folder.child("alone"));
    for (int i = 0; i < files.size(); ++i)
    {
        ASSERT_TRUE(sounds[i].copyFileTo(folder.child("alone/only.fxp")));
        ASSERT_TRUE(sounds[i].copyFileTo(folder.child("all/Mine").getChildFile(files[i])));
        expected[files[i].dropLastCharacters(4)] = heard("Fenn2", 1, 1);
    }

    setBankFolder("Fenn2", folder.child("all"));
    const auto store = makeUserStore();
    ASSERT_EQ(foundBanks("Fenn2", *store), (juce::StringArray{"Root Folder", "Mine"}));
    juce::StringArray names;
    readProgramNames("Fenn2", "Mine", *store, names);
    ASSERT_EQ(names, (juce::StringArray{"AAA", "Lead", "Lead 2", "Lead-3", "leaf"}));
    for (int i = 0; i < names.size(); ++i)
    {
        const auto sound = heard("Fenn2", 2, i + 1);
        ASSERT_FALSE(sound.empty());
        for (const auto& [name, other] : expected)
            EXPECT_EQ(sound == other, name == names[i]) << names[i] << " against " << name;
    }
}

TEST(InstrumentBanks, theBankNamedIsTheBankHeard)
{
    const test::ScratchFolder folder;
    const auto factory = juce::File(QUOREL_TEST_BANKS).getChildFile("Orlen");
    setBankFolder("Orlen", factory);
    const std::pair<const char*, std::vector<float>> sounds[] = {{"Foundation.fxb", heard("Orlen", 1, 1)},
                                                                 {"Motion.fxb", heard("Orlen", 2, 1)}};
    ASSERT_NE(sounds[0].second, sounds[1].second);

    const std::map<juce::String, int> files{
        {"AAA.FXB", 1}, {"Lead.fxb", 0}, {"Lead 2.fxb", 1}, {"Lead-3.fxb", 0}};
    for (const auto& [file, sound] : files)
        ASSERT_TRUE(factory.getChildFile(sounds[sound].first).copyFileTo(folder.child(file)));
    setBankFolder("Orlen", folder.path());
    const auto store = makeUserStore();
    const auto banks = foundBanks("Orlen", *store);
    ASSERT_EQ(banks, (juce::StringArray{"AAA.FXB", "Lead 2.fxb", "Lead-3.fxb", "Lead.fxb"}));
    for (int i = 0; i < banks.size(); ++i)
        EXPECT_EQ(heard("Orlen", i + 1, 1), sounds[files.at(banks[i])].second) << banks[i];

    // Past the last number that MIDI can choose, neither side counts on.
    for (int i = 0; i < 130; ++i)
        ASSERT_TRUE(
            factory.getChildFile("Motion.fxb").copyFileTo(folder.child("x" + juce::String(i) + ".fxb")));
    const auto many = foundBanks("Orlen", *store);
    ASSERT_EQ(many.size(), 128);
    const auto instance = open("Orlen");
    ASSERT_NE(instance, nullptr);
    send(*instance, bankSelectMessage(128));
    EXPECT_EQ(getBankName(*instance, "Orlen") + ".fxb", many[127]);
}

} // namespace quorel
