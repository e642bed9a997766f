// SPDX-License-Identifier: GPL-3.0-or-later
// The editor as a window: its scale, messages beside it, opening and closing.
#include "EditorTest.h"

#include "support/HeldMemory.h"
#include "ui/DisplayBox.h"

namespace quorel::test
{

TEST_F(EditorTest, TheScaleIsKeptForTheUser)
{
    open();
    EXPECT_EQ(editor->getWidth(), 1110);
    view().setScalePercent(150);
    EXPECT_EQ(editor->getBounds().withZeroOrigin(), juce::Rectangle<int>(1665, 1179));
    open();
    EXPECT_EQ(editor->getHeight(), 1179);

    const std::pair<const char*, int> stored[] = {
        {"nonsense", 100}, {"-50", 100}, {"10", 50}, {"113", 113}, {"9999", 300}};

    for (const auto& [text, percent] : stored)
    {
        auto& store = engine.processor.userStore();
        store.write(pathSetting::key, pathSetting::editorScale, text);
        EXPECT_EQ(readEditorScale(store), percent) << text;
    }
}

TEST_F(EditorTest, ItsCornerDragsTheSizeWithinTheDisplay)
{
    auto& store = engine.processor.userStore();
    const auto display = juce::Desktop::getInstance().getDisplays().getPrimaryDisplay()->userArea;
    store.write(pathSetting::key, pathSetting::editorScale, "300");
    open();
    EXPECT_TRUE(display.withZeroOrigin().contains(editor->getLocalBounds()))
        << "It opens as large as it fits";
    EXPECT_GT(editor->getWidth(), display.getWidth() * 9 / 10);
    EXPECT_EQ(readEditorScale(store), 300) << "Another display may have room";

    view().setScalePercent(100);
    auto* corner = dynamic_cast<juce::ResizableCornerComponent*>(editor->getComponentAt(1105, 781));
    ASSERT_NE(corner, nullptr);
    // The corner moves along: places count from the editor's top left.
    window->press(*corner, {9, 9});
    window->moveTo(*editor, {1101 + 111, 777 + 60}, TestWindow::leftButton);
    window->release(*editor, {1101 + 111, 777 + 60});
    EXPECT_TRUE(pumpUntil([&] { return readEditorScale(store) != 100; }, 5000));
    passes();
    const int percent = view().getScalePercent();
    EXPECT_NEAR(percent, 110, 3);
    EXPECT_EQ(editor->getLocalBounds(), editorSizeAt(percent)) << "The ratio is kept";
    EXPECT_NEAR(view().getLocalArea(editor.get(), editor->getLocalBounds()).getWidth(), 1110, 1);
    EXPECT_EQ(readEditorScale(store), percent);

    // A host that magnifies leaves less room.
    editor->setScaleFactor(2.0f);
    EXPECT_TRUE(display.withZeroOrigin().contains(editor->getLocalBounds() * 2));
}

TEST_F(EditorTest, MessagesOnTheScreenFadeByThemselves)
{
    open();
    DisplayBox::showLearnedMappings();
    const int windows = juce::Desktop::getInstance().getNumComponents();
    MidiLearner::displayBox()("Midi Mapped ( ch:1 num:7)");
    EXPECT_TRUE(pumpUntil([&] { return juce::Desktop::getInstance().getNumComponents() > windows; }, 2000));
    EXPECT_TRUE(pumpUntil([&] { return juce::Desktop::getInstance().getNumComponents() == windows; }, 5000));
}

TEST_F(EditorTest, OpeningAndClosingLosesNothing)
{
    for (const auto* name : {"One", "Two"})
    {
        engine.processor.setNames(name, "Bank");
        ASSERT_TRUE(engine.processor.getPresetStorage().save(name, true));
    }

    ASSERT_TRUE(engine.load(0, "Orlen"));
    juce::SharedResourcePointer<ImageStore> images;
    juce::Random random(11);
    const auto heldAfter = [&](int rounds)
    {
        for (int round = 0; round < rounds; ++round)
        {
            engine.set(viewParameter, 0.1f * static_cast<float>(round % 4));
            PluginEditor opened(engine.processor);
            opened.addToDesktop(0);
            opened.setVisible(true);

            for (int i = 0; i < 50; ++i)
                engine.set(random.nextInt(900) + 210, random.nextFloat());

            if (round % 20 == 0)
                engine.processor.getSoundChange().requestPreset("Bank", round % 40 == 0 ? "Two" : "One");

            engine.play(20);
            TestWindow::pump(4);
        }

        // Images are decoded as knobs come to show them, and stay.
        return heldMemory() - images->numBytes();
    };
    const auto before = heldAfter(40);
    // Ten kilobytes a round; an editor has more than a megabyte.
    EXPECT_LT(heldAfter(200), before + 2'000'000);
    EXPECT_TRUE(finishLoad());
}

} // namespace quorel::test
