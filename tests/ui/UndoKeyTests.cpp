// SPDX-License-Identifier: GPL-3.0-or-later
// Undo and redo by the arrows of the header and by the keyboard.
#include "EditorTest.h"

namespace quorel::test
{

TEST_F(EditorTest, ArrowsAndKeysUndoDragsClicksAndChoices)
{
    open(fxView);
    auto& volume = *window->find<juce::Slider>(slot::masterVolume);
    const float before = engine.get(slot::masterVolume);
    EXPECT_FALSE(button("Nothing to undo").isEnabled());

    window->drag(volume, {20, 30}, {20, -30});
    const float after = engine.get(slot::masterVolume);
    ASSERT_GT(after, before);
    window->click(*window->find(slot::masterMute));
    window->find<juce::ComboBox>(slot::fxType)->setSelectedItemIndex(5, juce::sendNotificationSync);
    passes();
    ASSERT_NE(engine.get(slot::fxType), 0.0f);

    constexpr int ctrl = juce::ModifierKeys::ctrlModifier;
    const juce::KeyPress undoKey('z', ctrl, 0);
    const juce::KeyPress redoKey('Z', ctrl | TestWindow::shift, 0);
    view().grabKeyboardFocus();
    window->key(undoKey);
    EXPECT_EQ(engine.get(slot::fxType), 0.0f) << "sixteen parameters in one step";
    passes();
    window->click(button("Undo change"));
    EXPECT_EQ(engine.get(slot::masterMute), 0.0f);
    window->key(undoKey);
    EXPECT_EQ(engine.get(slot::masterVolume), before) << "a drag is one step";
    passes();
    EXPECT_EQ(static_cast<float>(volume.getValue()), before);
    EXPECT_FALSE(button("Nothing to undo").isEnabled());

    window->click(button("Redo " + engine.processor.getParameterName(slot::masterVolume)));
    window->key(redoKey);
    EXPECT_EQ(engine.get(slot::masterVolume), after);
    EXPECT_EQ(engine.get(slot::masterMute), 1.0f);

    // The host closes the editor in the middle of a drag: what follows are steps of their own.
    window->press(volume, {20, 30});
    window->moveTo(volume, {20, 90}, TestWindow::leftButton);
    close();
    const auto steps = engine.processor.getUndo().getNumSteps();

    for (const int parameter : {slot::masterMute, slot::fxPan, slot::fxMix})
    {
        engine.processor.setParameterFromUi(parameter, 0.25f);
        TestWindow::pump(10);
    }

    EXPECT_EQ(engine.processor.getUndo().getNumSteps(), steps + 3);
}

} // namespace quorel::test
