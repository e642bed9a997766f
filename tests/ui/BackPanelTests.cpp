// SPDX-License-Identifier: GPL-3.0-or-later
// The back panel in a real window: its controls, and what they do to the user's folders, files and settings.
#include "EditorRig.h"

#include "platform/Version.h"
#include "ui/BackScreenView.h"

namespace quorel::test
{

class BackPanelTest : public PageTest<BackScreenView>
{
protected:
    juce::Button& button(const juce::String& title) { return window.titled<juce::Button>(title); }

    juce::String text(const juce::String& title) { return window.titled<juce::Label>(title).getText(); }

    juce::String folderSetting()
    {
        return rig.processor.userStore().read(pathSetting::key, pathSetting::pluginFolder);
    }

    void expectFound(int instruments)
    {
        const auto found = "Found " + juce::String(instruments) + " Ostrand Instruments";
        EXPECT_TRUE(pumpUntil([&] { return text("Scan status") == found; }, 2000)) << found;
    }

    void choose(const char* menu, const char* row)
    {
        window.click(button(menu));
        EXPECT_TRUE(window.chooseFromMenu(row)) << row;
    }
};

TEST_F(BackPanelTest, CaptionsBelongToTheirSwitchesAndTheGroundTurnsToTheFront)
{
    EXPECT_EQ(text("Version"), "Ostrand QUOREL   " + versionText() + " " + productVersion);
    EXPECT_EQ(text("Plug-in folder"), folderSetting());

    for (int layer = 0; layer < 4; ++layer)
    {
        window.click(*window.find<juce::Button>(16 + layer));
        EXPECT_EQ(rig.get(16 + layer), 0.0f);
        const auto caption = "Block free midi controllers layer " + juce::String(layer + 1);
        auto& label = window.titled<juce::Label>(caption);
        EXPECT_EQ(label.getText(), caption);
        window.click(label, TestWindow::rightButton);
        EXPECT_EQ(rig.get(16 + layer), 0.0f);
        window.click(label);
        EXPECT_EQ(rig.get(16 + layer), 1.0f);
    }

    EXPECT_EQ(rig.host.refreshes, 0);
    window.click(*window.find("to Plugin View"), {900, 700});
    EXPECT_EQ(rig.host.refreshes, 1);
    // The version's text is ground as well.
    window.click(page, {200, 96});
    EXPECT_EQ(rig.host.refreshes, 2);
}

TEST_F(BackPanelTest, TheEcsMenuSavesLoadsAndClears)
{
    auto& map = rig.processor.getControllerMap();
    map.assign(233, "20");
    rig.interaction.chosenFile = rig.engine.user.scratch.child("data/ECS/Desk.ecs");
    choose("ECS Menu", "Save ECS");
    EXPECT_EQ(rig.processor.getSession().getEcsName(), "Desk.ecs");
    choose("ECS Menu", "Clear ECS");
    EXPECT_EQ(map.controllerOf(233), -1);
    choose("ECS Menu", "Desk");
    EXPECT_EQ(map.controllerOf(233), 20);
}

TEST_F(BackPanelTest, AScanIsAnnouncedBeforeItRuns)
{
    expectFound(14);
    const auto list = rig.engine.user.listFile();
    list.deleteFile();
    window.press(button("Re-scan Plug-Ins"), {5, 5});
    EXPECT_EQ(text("Scan status"), "Scanning plug-ins");
    EXPECT_FALSE(list.existsAsFile());
    window.release(button("Re-scan Plug-Ins"), {5, 5});
    EXPECT_TRUE(pumpUntil([&] { return list.existsAsFile(); }, 5000));
    expectFound(14);
    EXPECT_TRUE(rig.interaction.progressTexts[0].startsWith("Scanning Plug-Ins|Scanning folder: "));
}

TEST_F(BackPanelTest, AnotherFolderIsStoredAndScanned)
{
    const auto before = folderSetting();
    rig.interaction.chosenFile = juce::File();
    window.click(button("Set VST Plug-Ins Folder"));
    EXPECT_EQ(folderSetting(), before);

    const auto folder = rig.engine.user.scratch.child("few/Ostrand");
    ASSERT_TRUE(juce::File(QUOREL_TEST_INSTRUMENTS)
                    .getChildFile("Zeph")
                    .copyDirectoryTo(folder.getChildFile("Zeph")));
    rig.interaction.chosenFile = folder;
    window.click(button("Set VST Plug-Ins Folder"));
    EXPECT_EQ(folderSetting(), folder.getFullPathName() + juce::File::getSeparatorString());
    EXPECT_EQ(text("Plug-in folder"), folderSetting());
    EXPECT_EQ(rig.processor.getPaths().pluginFolder, folder);
    expectFound(1);
}

TEST_F(BackPanelTest, TheWindowsSizeIsChosen)
{
    window.click(button("Window Size"));
    EXPECT_EQ(window.menuTexts().joinIntoString("|"), "75 %|100 %|125 %|150 %|175 %|200 %|(225 %)|(250 %)")
        << "What has no room on the display can't be chosen";
    EXPECT_TRUE(window.chooseFromMenu("150 %"));
    EXPECT_EQ(rig.host.scalePercent, 150);
    EXPECT_EQ(text("Window Size"), "Window Size : 150 %");
}

} // namespace quorel::test
