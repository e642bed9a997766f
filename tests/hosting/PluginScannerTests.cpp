// SPDX-License-Identifier: GPL-3.0-or-later
#include "hosting/PluginScanner.h"

#include "hosting/LoadNote.h"
#include "parameters/ParameterText.h"
#include "support/AbortedProcess.h"
#include "support/FaultyInstruments.h"
#include "support/FullDisk.h"

namespace quorel
{

namespace
{
const juce::File instruments(QUOREL_TEST_INSTRUMENTS);

juce::StringArray namesIn(const juce::KnownPluginList& list)
{
    juce::StringArray names;
    for (const auto& type : list.getTypes())
        names.add(type.name);
    return names;
}

juce::File placeOf(const juce::File& folder, const juce::String& name)
{
    return folder.getChildFile(name).getChildFile(name + pluginFileEnding());
}

void install(const juce::File& source, const juce::File& folder, const juce::String& name)
{
    const auto place = placeOf(folder, name);
    place.getParentDirectory().createDirectory();
    ASSERT_TRUE(source.copyFileTo(place)) << source.getFullPathName();
}
} // namespace

TEST(PluginScanner, findsEveryInstrumentOnceAndTellsAboutIt)
{
    const test::ScratchFolder scratch;
    const auto listFile = scratch.child("deep/list.xml");
    test::RecordingInteraction user;
    juce::KnownPluginList list;
    PluginScanner scanner(list);
    EXPECT_TRUE(scanner.scanPlugins(instruments, listFile, true, user));

    EXPECT_EQ(namesIn(list), (juce::StringArray{"Dorvik", "Dorvik-K", "Fenn2", "Glasson", "Glasson2",
                                                "Hexley", "Hexley-Mini", "Hexley2", "Imre", "Orlen", "Tarn",
                                                "Tarn-Mini", "Tarn2", "Zeph"}));
    EXPECT_EQ(scanner.scanStatus(), "Found 14 Ostrand Instruments");

    const auto& said = user.progressTexts;
    EXPECT_EQ(said[0], "Scanning Plug-Ins|Scanning folder: " + instruments.getFullPathName());
    EXPECT_EQ(said[1],
              "Scanning Plug-Ins|Scanning plugin:  " + placeOf(instruments, "Orlen").getFullPathName());
    EXPECT_EQ(said[said.size() - 2], "Scanning Plug-Ins|Found 14 Ostrand Instruments");
    EXPECT_EQ(said[said.size() - 1], "Scanning Plug-Ins|");

    // The file gives the same list back, without a look at the instruments.
    juce::KnownPluginList second;
    PluginScanner later(second);
    later.loadOrScan(scratch.child("gone"), listFile, user);
    EXPECT_EQ(namesIn(second), namesIn(list));
    EXPECT_EQ(later.scanStatus(), "");
    ASSERT_FALSE(second.getTypes().isEmpty());
    EXPECT_TRUE(second.getTypes().getFirst().isDuplicateOf(list.getTypes().getFirst()));
    EXPECT_EQ(user.alerts.size(), 0);
}

TEST(PluginScanner, passesOverWhatIsNoInstrument)
{
    const test::ScratchFolder folder;
    install(placeOf(instruments, "Zeph"), folder.path(), "Zeph");
    folder.write("Orlen/Orlen" + pluginFileEnding(), "not a binary");
    folder.write("Tarn/Tarn" + pluginFileEnding(), "");
    folder.child("Tarn2/Tarn2" + pluginFileEnding()).createDirectory();
    install(juce::File(QUOREL_TEST_NO_ENTRY), folder.path(), "Hexley");
    install(placeOf(instruments, "Imre"), folder.path(), "Somebody");

    // The same binary marked as one for another processor: AArch64, in both kinds of header that are in use.
    juce::MemoryBlock foreign;
    placeOf(instruments, "Imre").loadFileAsData(foreign);
    auto* bytes = static_cast<juce::uint8*>(foreign.getData());
    const bool isElf = bytes[0] == 0x7f;
    const auto machine = isElf ? 18u : juce::ByteOrder::littleEndianInt(bytes + 0x3c) + 4u;
    bytes[machine] = isElf ? 0xb7 : 0x64;
    bytes[machine + 1] = isElf ? 0x00 : 0xaa;
    placeOf(folder.path(), "Imre").create();
    placeOf(folder.path(), "Imre").replaceWithData(foreign.getData(), foreign.getSize());

    // Cut short, as a full disk leaves it: loading this would take the process down.
    juce::MemoryBlock whole;
    placeOf(instruments, "Fenn2").loadFileAsData(whole);
    const std::pair<const char*, std::size_t> cuts[] = {
        {"Fenn2", 10}, {"Glasson", 63}, {"Glasson2", 1000}, {"Dorvik", 5000}, {"Tarn-Mini", 20000}};
    for (const auto& [name, size] : cuts)
    {
        ASSERT_LT(size, whole.getSize());
        placeOf(folder.path(), name).create();
        placeOf(folder.path(), name).replaceWithData(whole.getData(), size);
    }

    test::RecordingInteraction user;
    juce::KnownPluginList list;
    PluginScanner scanner(list);
    EXPECT_TRUE(scanner.scanPlugins(folder.path(), folder.child("list.xml"), false, user));
    EXPECT_EQ(namesIn(list), juce::StringArray{"Zeph"});
    EXPECT_EQ(scanner.scanStatus(), "Found 1 Ostrand Instruments");
    EXPECT_EQ(user.progressTexts.size() + user.alerts.size(), 0);

    // Nowhere to look and nowhere to write: an empty list, and no harm.
    EXPECT_FALSE(scanner.scanPlugins({}, {}, false, user));
    EXPECT_EQ(scanner.scanStatus(), "Found 0 Ostrand Instruments");
    EXPECT_EQ(list.getNumTypes(), 0);
}

TEST(PluginScanner, startReadsTheListFileOrScans)
{
    const test::ScratchFolder folder;
    install(placeOf(instruments, "Zeph"), folder.path(), "Zeph");
    const auto file = folder.child("list.xml");
    const juce::String good = "<?xml version=\"1.0\"?><KNOWNPLUGINS>"
                              "<PLUGIN name=\"Tarn2\" format=\"VST\" file=\"/t2.so\" uniqueId=\"1\"/>"
                              "<BLACKLISTED id=\"/bad.so\"/><UNKNOWN/>"
                              "<PLUGIN name=\"Tarn\" format=\"VST\" file=\"/t.so\" uniqueId=\"1\"/>"
                              "</KNOWNPLUGINS>";

    struct Case
    {
        juce::String text;
        juce::StringArray names;
        bool rewritten;
    };

    const juce::StringArray none;
    const juce::StringArray scanned{"Zeph"};
    const Case cases[] = {
        {"", scanned, true},
        {"<A/>", scanned, true},
        {good, {"Tarn", "Tarn2"}, false},
        {"<KNOWNPLUGINS/>", none, false},
        {good.replace("KNOWNPLUGINS", "OTHER"), scanned, true},
        {good.dropLastCharacters(20), scanned, true},
        {"no XML, but longer than ten bytes", scanned, true},
    };
    for (const auto& c : cases)
    {
        file.replaceWithText(c.text);
        test::RecordingInteraction user;
        juce::KnownPluginList list;
        PluginScanner(list).loadOrScan(folder.path(), file, user);
        EXPECT_EQ(namesIn(list), c.names) << c.text;
        EXPECT_EQ(file.loadFileAsString() != c.text, c.rewritten) << c.text;
    }

    juce::KnownPluginList list;
    file.replaceWithText(good);
    ASSERT_TRUE(readPluginList(file, list));
    EXPECT_EQ(list.getBlacklistedFiles(), juce::StringArray{"/bad.so"});
    ASSERT_TRUE(writePluginList(file, list));
    juce::KnownPluginList again;
    ASSERT_TRUE(readPluginList(file, again));
    EXPECT_EQ(namesIn(again), namesIn(list));
    EXPECT_EQ(again.getBlacklistedFiles(), list.getBlacklistedFiles());
}

TEST(PluginScanner, AFullDiskKeepsTheOldListAndSaysSo)
{
    const test::ScratchFolder folder;
    const auto listFile = folder.child("list.xml");
    test::RecordingInteraction user;
    juce::KnownPluginList list;
    PluginScanner scanner(list);
    ASSERT_TRUE(scanner.scanPlugins(instruments, listFile, false, user));
    const auto before = listFile.loadFileAsString();
    {
        const test::FullDisk full(600);

        if (!full.isThere())
            GTEST_SKIP() << "no disk can be made full here";

        EXPECT_FALSE(scanner.scanPlugins(instruments, listFile, false, user));
    }
    EXPECT_EQ(listFile.loadFileAsString(), before);
    ASSERT_EQ(user.alerts.size(), 1);
    EXPECT_TRUE(user.alerts[0].contains(listFile.getFullPathName()));
    EXPECT_EQ(list.getNumTypes(), 14);
    EXPECT_EQ(folder.path().getNumberOfChildFiles(juce::File::findFiles), 1);
}

// Each death is that of a child process, which leaves its note as a crashed host does.
TEST(PluginScanner, WhatTookAProcessDownIsPassedOverUntilItIsTriedAgain)
{
    const test::ScratchFolder folder;
    const auto listFile = folder.child("list.xml");
    install(placeOf(instruments, "Zeph"), folder.path(), "Zeph");
    test::RecordingInteraction user;

    for (const auto* fault : {"abort-entry", "abort-open"})
    {
        SCOPED_TRACE(fault);
        test::installFaulty(folder.path(), "Hexley", fault);
        listFile.deleteFile();
        user.alerts.clear();
        {
            juce::KnownPluginList list;
            PluginScanner scanner(list);
            QUOREL_EXPECT_ABORT(scanner.loadOrScan(folder.path(), listFile, user));
        }
        EXPECT_FALSE(listFile.existsAsFile());

        for (const bool isFirst : {true, false})
        {
            juce::KnownPluginList list;
            PluginScanner scanner(list);
            scanner.loadOrScan(folder.path(), listFile, user);
            EXPECT_EQ(namesIn(list), juce::StringArray{"Zeph"});
            EXPECT_EQ(user.alerts.size(), 1) << "told once";
            EXPECT_EQ(list.getBlacklistedFiles().size(), 1);

            if (!isFirst)
            {
                // Repaired, and asked for.
                test::installFaulty(folder.path(), "Hexley");
                EXPECT_TRUE(scanner.scanPlugins(folder.path(), listFile, false, user));
                EXPECT_EQ(namesIn(list), (juce::StringArray{"Hexley", "Zeph"}));
                EXPECT_EQ(list.getBlacklistedFiles().size(), 0);
            }
        }

        EXPECT_TRUE(user.alerts[0].contains(placeOf(folder.path(), "Hexley").getFullPathName()));
        EXPECT_TRUE(user.alerts[0].contains("Re-scan Plug-Ins"));
    }
}

TEST(PluginScanner, ACrashAtALoadCostsTheSoundItsInstrumentAlone)
{
    juce::MemoryBlock sound;
    juce::MemoryBlock state;
    test::ProcessorRig rig;
    const auto folder = test::useFaulty(rig, {"Hexley", "Tarn"});
    ASSERT_TRUE(rig.load(0, "Hexley"));
    ASSERT_TRUE(rig.load(1, "Tarn"));
    sound = rig.state();
    state = rig.processor.getLayer(0).stateToSave();
    rig.processor.getLayers().unload();
    test::setFaults(folder, "Hexley", "abort-open");
    QUOREL_EXPECT_ABORT(rig.restore(sound));

    PluginProcessor next(rig.user.makeStore(), rig.interaction);
    EXPECT_EQ(next.getKnownPlugins().getNumTypes(), 1);
    next.setStateInformation(sound.getData(), static_cast<int>(sound.getSize()));
    EXPECT_EQ(next.getLayer(0).getState(), LayerState::missing);
    EXPECT_TRUE(next.getLayer(0).stateToSave() == state);
    EXPECT_EQ(next.getLayer(1).getPluginName(), "Tarn");
    EXPECT_EQ(readParamText(next, layerParameter(0, layerSlot::pluginNameText), slot::nameTextLength),
              "Hexley");
}

TEST(LoadNote, OnlyProcessesThatAreGoneLeaveOne)
{
    const test::ScratchFolder folder;
    const auto listFile = folder.child("list.xml");
    {
        const LoadNote note(listFile, "/some/Hexley.so");
        EXPECT_EQ(folder.path().getNumberOfChildFiles(juce::File::findFiles), 1);
        EXPECT_TRUE(findLeftNotes(listFile).empty()) << "this process runs";
    }
    EXPECT_EQ(folder.path().getNumberOfChildFiles(juce::File::findFiles), 0);

    // Its number is in use again, by a process that was started at another time.
    const auto number = processIdentity().upToFirstOccurrenceOf(" ", true, false);
    folder.write("list.xml.1.opening", number + "12345.of-another-boot\n/some/Hexley.so\n");
    folder.write("other.xml.1.opening", number + "12345.of-another-boot\n/some/Tarn.so\n");
    ASSERT_EQ(findLeftNotes(listFile).size(), 1u);
    EXPECT_EQ(findLeftNotes(listFile)[0].pluginPath, "/some/Hexley.so");
}

} // namespace quorel
