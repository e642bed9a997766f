// SPDX-License-Identifier: GPL-3.0-or-later
// The back panel in a real window: its controls, and what they do to the user's folders, files and settings.
#include "EditorRig.h"

#include "engine/EcsMenu.h"
#include "parameters/ParameterCodings.h"
#include "platform/Version.h"
#include "ui/BackScreenView.h"

#include <gtest/gtest.h>

namespace quorel::test
{

namespace
{
/** Keeps the size that was chosen. */
class ScaledHost : public RecordingHost
{
public:
    int getScalePercent() const override { return percent; }

    void setScalePercent(int newPercent) override { percent = newPercent; }

    int percent = 100;
};
} // namespace

class BackPanelTest : public testing::Test
{
protected:
    void SetUp() override { view.refresh(); }

    template <typename Type>
    Type& titled(const juce::String& title)
    {
        for (auto* child : view.getChildren())
            if (auto* found = dynamic_cast<Type*>(child); found != nullptr && child->getTitle() == title)
                return *found;

        throw std::runtime_error(title.toStdString());
    }

    juce::Button& button(const juce::String& title) { return titled<juce::Button>(title); }

    juce::String text(const juce::String& title) { return titled<juce::Label>(title).getText(); }

    juce::String folderSetting()
    {
        return rig.processor.userStore().read(pathSetting::key, pathSetting::pluginFolder);
    }

    EditorRig rig;
    ScaledHost host;
    BackScreenView view{rig.processor, host, rig.images};
    TestWindow window{view};
};

TEST_F(BackPanelTest, CaptionsBelongToTheirSwitchesAndTheGroundTurnsToTheFront)
{
    EXPECT_EQ(view.getName(), "Back Panel View");
    EXPECT_EQ(text("Version"), "Ostrand QUOREL   " + versionText() + " " + productVersion);
    EXPECT_TRUE(text("Version").contains("64 Bits version"));
    EXPECT_EQ(text("Plug-in folder"), folderSetting());

    for (int layer = 0; layer < 4; ++layer)
    {
        auto* block = window.find<juce::Button>(16 + layer);
        ASSERT_NE(block, nullptr);
        EXPECT_TRUE(block->getToggleState());
        window.click(*block);
        EXPECT_EQ(rig.get(16 + layer), 0.0f);

        // The caption belongs to its switch.
        const auto caption = "Block free midi controllers layer " + juce::String(layer + 1);
        auto& label = titled<juce::Label>(caption);
        EXPECT_EQ(label.getText(), caption);
        window.click(label, TestWindow::rightButton);
        EXPECT_EQ(rig.get(16 + layer), 0.0f);
        window.click(label);
        EXPECT_EQ(rig.get(16 + layer), 1.0f);
    }

    EXPECT_EQ(host.refreshes, 0);
    window.click(*window.find("to Plugin View"), {900, 700});
    EXPECT_EQ(host.refreshes, 1);
    // The version's text is ground as well.
    window.click(view, {200, 96});
    EXPECT_EQ(host.refreshes, 2);
}

TEST_F(BackPanelTest, TheEcsMenuSavesLoadsAndClears)
{
    rig.set(slot::controllerMap + 20, encodeParamInt(233));
    rig.interaction.chosenFile = rig.engine.user.scratch.child("data/ECS/Desk.ecs");
    window.click(button("ECS Menu"));
    EXPECT_EQ(window.menuTexts().joinIntoString("|"), "Clear ECS|Save ECS|Delete ECS");
    EXPECT_TRUE(window.chooseFromMenu("Save ECS"));
    EXPECT_EQ(rig.processor.getSession().getEcsName(), "Desk.ecs");
    window.click(button("ECS Menu"));
    EXPECT_TRUE(window.chooseFromMenu("Clear ECS"));
    EXPECT_EQ(rig.processor.getControllerMap().controllerOf(233), -1);
    window.click(button("ECS Menu"));
    EXPECT_TRUE(window.chooseFromMenu("Desk"));
    EXPECT_EQ(rig.processor.getControllerMap().controllerOf(233), 20);
}

TEST_F(BackPanelTest, AScanIsAnnouncedBeforeItRuns)
{
    EXPECT_TRUE(pumpUntil([&] { return text("Scan status") == "Found 14 Ostrand Instruments"; }, 2000));
    const auto list = rig.engine.user.listFile();
    list.deleteFile();
    window.press(button("Re-scan Plug-Ins"), {5, 5});
    EXPECT_EQ(text("Scan status"), "Scanning plug-ins");
    EXPECT_FALSE(list.existsAsFile());
    window.release(button("Re-scan Plug-Ins"), {5, 5});
    EXPECT_TRUE(pumpUntil([&] { return list.existsAsFile(); }, 5000));
    EXPECT_TRUE(pumpUntil([&] { return text("Scan status") == "Found 14 Ostrand Instruments"; }, 2000));
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
    EXPECT_EQ(rig.processor.getKnownPlugins().getNumTypes(), 1);
    EXPECT_TRUE(pumpUntil([&] { return text("Scan status") == "Found 1 Ostrand Instruments"; }, 2000));
}

TEST_F(BackPanelTest, TheWindowsSizeIsChosen)
{
    window.click(button("Window Size"));
    EXPECT_EQ(window.menuTexts().joinIntoString("|"), "75 %|100 %|125 %|150 %|175 %|200 %|(225 %)|(250 %)")
        << "What has no room on the display can't be chosen";
    EXPECT_TRUE(window.chooseFromMenu("150 %"));
    EXPECT_EQ(host.percent, 150);
    EXPECT_EQ(text("Window Size"), "Window Size : 150 %");
}

} // namespace quorel::test
