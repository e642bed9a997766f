// SPDX-License-Identifier: GPL-3.0-or-later
// The lists of folders and presets, and their menus.
#include "PresetCommandRig.h"

namespace quorel::test
{

using PresetListTest = PresetCommandTest;

TEST_F(PresetListTest, ListsStepsAndMenusFollowTheDisk)
{
    for (int i = 1; i <= 33; ++i)
        makePreset("Many", juce::String(i).paddedLeft('0', 2), 0.01f * static_cast<float>(i));

    childNamed(banks, "Void").createDirectory();
    standOn("Many", "01");
    EXPECT_EQ(folders(), "99 Default Preset|Many|Void");
    auto menu = commands.presetMenu();
    ASSERT_EQ(menu.size(), 12u) << "six commands, a line, two sub-menus, a line, folders that hold presets";
    EXPECT_EQ(menu[7].text, "Presets 1 - 32");
    EXPECT_EQ(menu[8].text, "Presets 33 - 33");
    EXPECT_TRUE(menu[7].ticked && menu[7].subMenu[0].ticked);
    EXPECT_TRUE(!menu[8].ticked && !menu[8].subMenu[0].ticked);
    EXPECT_EQ(menu[8].subMenu[0].id, 39);
    EXPECT_TRUE(menu[10].text == "99 Default Preset" && !menu[10].ticked);
    EXPECT_TRUE(menu[11].text == "Many" && menu[11].ticked);
    EXPECT_TRUE(menu[11].subMenu[0].ticked && !menu[11].subMenu[1].ticked);
    EXPECT_EQ(menu[11].subMenu[1].subMenu[0].text, "33");
    standOn("Many", "33");
    menu = commands.presetMenu();
    EXPECT_TRUE(!menu[7].ticked && menu[8].ticked && menu[8].subMenu[0].ticked);
    standOn("Many", "01");
    presetFileFor(banks, "Many", "33").deleteFile();
    menu = commands.presetMenu();
    ASSERT_EQ(menu.size(), 7u + 32u + 3u);
    EXPECT_EQ(menu[7].text, "01");
    const auto ofOtherFolder = menu[7 + 32 + 1].subMenu[0];
    EXPECT_EQ(ofOtherFolder.text, "Default Preset");
    const auto folderMenu = commands.folderMenu();
    EXPECT_EQ(folderMenu[5].id, 6);
    EXPECT_TRUE(folderMenu[5].ticked);

    commands.folderMenuChosen(0);
    commands.presetMenuChosen(0);
    commands.presetMenuChosen(7 + 32);
    commands.folderMenuChosen(8);
    EXPECT_FALSE(rig.processor.getSoundChange().isUnderWay()) << "none of these is there";
    commands.selectPreset(0);
    EXPECT_FALSE(rig.processor.getSoundChange().isUnderWay()) << "it is current already";

    EXPECT_TRUE(commands.previousPreset()) << "at the end it is loaded again";
    EXPECT_TRUE(waitForPreset());
    EXPECT_EQ(names(), "Many/01");
    EXPECT_EQ(rig.get(slot::masterVolume), 0.01f);
    // What was clicked is loaded, even if it stands elsewhere by now.
    commands.clickPreset(0, Modifier::control);
    EXPECT_EQ(library.getSelectedPresets().size(), 1);
    makePreset("Many", "00");
    childNamed(banks, "Early").createDirectory();
    commands.refreshLists();
    EXPECT_TRUE(library.getSelectedPresets().isEmpty()) << "another preset stands at that position now";
    commands.presetMenuChosen(7 + 31);
    EXPECT_TRUE(waitForPreset());
    EXPECT_EQ(names(), "Many/32");
    commands.presetMenuChosen(ofOtherFolder.id);
    EXPECT_EQ(names(), "99 Default Preset/Default Preset");
    commands.folderMenuChosen(5 + 1);
    EXPECT_EQ(names(), "Many/00");
    commands.selectPresetByName("32");
    EXPECT_TRUE(waitForPreset());
    EXPECT_EQ(names(), "Many/32") << "chosen while the other was on its way";

    EXPECT_TRUE(commands.nextFolder()) << "empty: chosen, and nothing loaded";
    EXPECT_EQ(names(), "Void/32");
    EXPECT_FALSE(rig.processor.getSoundChange().isUnderWay());
    EXPECT_FALSE(commands.stepPreset(1));
    EXPECT_FALSE(commands.nextFolder());
    EXPECT_TRUE(commands.previousFolder());
    EXPECT_EQ(names(), "Many/00") << "a folder's first preset";
    EXPECT_TRUE(waitForPreset());
    EXPECT_TRUE(rig.interaction.alerts.isEmpty());
    presetFileFor(banks, "Many", "01").deleteFile();
    EXPECT_FALSE(commands.nextPreset()) << "it has gone meanwhile";
    EXPECT_EQ(library.getPresetNames()[1], "02") << "and is no longer shown";
    childNamed(banks, "Many").deleteRecursively();
    EXPECT_FALSE(commands.selectFolder(2)) << "so has this";
    EXPECT_EQ(rig.interaction.alerts.joinIntoString("#"),
              "|Could not load Presert file: Many/01#|Folder Many isn't there any more.");
    EXPECT_EQ(names(), "Many/00");
    EXPECT_EQ(library.getPresetCount(), 0);
    EXPECT_EQ(library.getCurrentFolderIndex(), -1);
}

TEST_F(PresetListTest, TheFirstStartMakesADefaultPresetOnce)
{
    const auto file = presetFileFor(banks, defaultFolderName, defaultPresetName);
    ASSERT_TRUE(file.existsAsFile());
    file.replaceWithText("a user's own");
    PluginProcessor second(rig.user.makeStore(), rig.interaction);
    EXPECT_EQ(file.loadFileAsString(), "a user's own");
}

} // namespace quorel::test
