// SPDX-License-Identifier: GPL-3.0-or-later
// The header in the whole editor: display, tempo, presets, Edit and Orig, and the preview note.
#include "EditorTest.h"

#include "presets/PresetFiles.h"
#include "ui/widgets/meterHorizontal.h"
#include "ui/widgets/myIntBox.h"

#include <array>
#include <tuple>

namespace quorel::test
{

namespace
{
using juce::KeyPress;

class EditorHeaderTest : public EditorTest
{
protected:
    /** Saves presets of these names into a folder, and makes the first the current one. */
    void savePresets(const juce::String& folder, const juce::StringArray& names)
    {
        for (const auto& name : names)
        {
            engine.processor.setNames(name, folder);
            ASSERT_TRUE(engine.processor.getPresetStorage().save(name, true));
        }

        engine.processor.setNames(names[0], folder);
        engine.processor.getPresetCommands().refreshLists();
    }

    bool finishLoad()
    {
        return engine.playUntil([this] { return !engine.processor.getSoundChange().isUnderWay(); });
    }
};
} // namespace

TEST_F(EditorHeaderTest, TheDisplayTellsOfWhatIsUnderTheMouseAndOfMidi)
{
    open(layersView);
    auto& pan = *window->find(layerParameter(1, layerSlot::pan));
    window->moveTo(pan, {20, 20});
    TestWindow::pump();
    EXPECT_EQ(labelText("hintLabel"), "Layer2 Pan = 0");
    window->wheel(pan, {20, 20}, 0.5f);
    EXPECT_NE(labelText("hintLabel"), "Layer2 Pan = 0") << "The text follows the wheel";
    window->moveTo(*window->find(layerParameter(1, layerSlot::midiChannel)), {20, 8});
    TestWindow::pump();
    EXPECT_EQ(labelText("hintLabel"), "Layer2 Midi Channel = Omni") << "A menu's own text counts as the menu";
    window->moveTo(view(), {600, 350});
    TestWindow::pump();
    EXPECT_EQ(labelText("hintLabel"), "");

    engine.noteOn(60, 100.0f / 127.0f);
    engine.play();
    passes();
    EXPECT_EQ(labelText("midiMonitorLabel"), "Midi C3, Vel 100");
    engine.send(juce::MidiMessage::controllerEvent(1, 7, 99));
    engine.play();
    passes();
    EXPECT_EQ(labelText("midiMonitorLabel"), "Midi Controller 7 = 99");
    EXPECT_TRUE(labelText("cpuLabel").startsWith("CPU ")) << labelText("cpuLabel");
}

TEST_F(EditorHeaderTest, TapsAndTheBoxSetTheTempo)
{
    open();
    auto& tap = button("Tap tempo");
    // Each tap counts at some moment of its press, however long a busy machine takes over that.
    std::array<double, 4> before{};
    std::array<double, 4> after{};

    for (size_t i = 0; i < before.size(); ++i)
    {
        if (i > 0)
            TestWindow::pump(200);

        before[i] = juce::Time::getMillisecondCounterHiRes();
        window->press(tap, {10, 5});
        after[i] = juce::Time::getMillisecondCounterHiRes();
        window->release(tap, {10, 5});
    }

    // Taps count in whole milliseconds.
    constexpr double rounding = 3.0;
    EXPECT_GE(engine.processor.getTempo().bpm(), 3.0 * 60000.0 / (after[3] - before[0] + rounding));
    EXPECT_LE(engine.processor.getTempo().bpm(), 3.0 * 60000.0 / (before[3] - after[0] - rounding));

    auto* box = dynamic_cast<myIntBox*>(window->findTitled("Tempo"));
    ASSERT_NE(box, nullptr);
    box->setValue(90.0 * 0.00212766, juce::sendNotificationSync);
    EXPECT_DOUBLE_EQ(engine.processor.getTempo().bpm(), 120.0);
    box->setValue(1.0, juce::sendNotificationSync);
    EXPECT_NEAR(engine.processor.getTempo().bpm(), 500.0, 1.0);
    EXPECT_FALSE(engine.processor.getSession().isEdited()) << "The tempo is no part of the preset";
}

TEST_F(EditorHeaderTest, ArrowsKeysAndMenusChoosePresets)
{
    savePresets("Second", {"Only"});
    savePresets("First", {"One", "Two", "Three"});
    open();
    EXPECT_EQ(labelText("Preset"), "no such label");

    const auto chosen = [this] { return engine.processor.getPresetName(); };
    const auto load = [&](const juce::String& expected)
    {
        EXPECT_EQ(chosen(), expected);
        passes();
        EXPECT_EQ(labelText("hintLabel"), "LOADING PLEASE WAIT...");
        ASSERT_TRUE(finishLoad());
        passes();
        EXPECT_EQ(labelText("hintLabel"), "");
    };

    // The list is sorted: One, Three, Two.
    window->click(button("Next preset"));
    load("Three");
    window->key(KeyPress(KeyPress::upKey));
    EXPECT_EQ(chosen(), "One");
    window->key(KeyPress(KeyPress::downKey));
    window->key(KeyPress(KeyPress::downKey));
    window->key(KeyPress(KeyPress::downKey));
    load("Two");
    window->click(button("Previous preset"));
    load("Three");

    window->click(*window->find("presetMenuButton"));
    auto texts = window->menuTexts();
    EXPECT_EQ(texts.joinIntoString(","),
              "new preset,rename preset,delete preset,load preset,save preset,save preset as,One,Three,Two,"
              "99 Default Preset,First,Second");
    ASSERT_TRUE(window->chooseFromMenu("One"));
    load("One");

    window->click(*window->find("folderMenuButton"));
    texts = window->menuTexts();
    EXPECT_EQ(texts.joinIntoString(","),
              "new folder,rename folder,delete folder,99 Default Preset,First,Second");
    ASSERT_TRUE(window->chooseFromMenu("Second"));
    load("Only");
    EXPECT_EQ(engine.processor.getFolderName(), "Second");
    window->click(button("Previous folder"));
    load("One");
}

TEST_F(EditorHeaderTest, AKeyAnswersOnItsDrawnFaceAlone)
{
    open();
    // Left and right ends of the faces, and what they show. The frames reach into each other.
    constexpr std::tuple<int, int, float> ends[] = {{573, 73, fxView},
                                                    {648, 45, managerView},
                                                    {573, 45, layersView},
                                                    {710, 73, multiView},
                                                    {635, 45, layersView},
                                                    {710, 45, managerView},
                                                    {635, 73, fxView},
                                                    {648, 73, multiView},
                                                    // Metal beside the keys.
                                                    {724, 45, multiView},
                                                    {641, 45, multiView},
                                                    {567, 73, multiView},
                                                    {600, 59, multiView}};

    for (const auto& [x, y, expected] : ends)
    {
        window->click(view(), {x, y});
        EXPECT_EQ(engine.get(viewParameter), expected) << x << ", " << y;
    }
}

TEST_F(EditorHeaderTest, ArrowKeysStayWithThePresetsWhenAMenuIsGivenUp)
{
    savePresets("Bank", {"One", "Two", "Three"});
    open();
    const auto chosen = [this] { return engine.processor.getPresetName(); };
    window->key(KeyPress(KeyPress::downKey));
    EXPECT_EQ(chosen(), "Three") << "The editor is just open";
    ASSERT_TRUE(finishLoad());
    passes();

    window->click(menu("Layer 1 instrument"));
    EXPECT_FALSE(window->menuTexts().isEmpty());
    TestWindow::closeMenus();
    window->key(KeyPress(KeyPress::downKey));
    EXPECT_EQ(chosen(), "Two");
    ASSERT_TRUE(finishLoad());
    passes();
    EXPECT_EQ(layer(0).getPluginName(), "");

    // A menu that had nothing to show opens when it has.
    const auto showEasyPanel = [this]
    {
        window->click(button("Layers page"));
        window->click(button("Layer 1 Easy panel"));
    };
    showEasyPanel();
    auto& target = menu("Layer 1 Easy 1 target");
    target.grabKeyboardFocus();
    ASSERT_TRUE(target.hasKeyboardFocus(true));
    window->key(KeyPress(KeyPress::returnKey));
    EXPECT_FALSE(TestWindow::menuIsOpen());
    ASSERT_TRUE(engine.load(0, "Orlen"));
    showEasyPanel();
    target.grabKeyboardFocus();
    window->key(KeyPress(KeyPress::returnKey));
    EXPECT_FALSE(window->menuTexts().isEmpty());
}

TEST_F(EditorHeaderTest, EditAndOrigSwitchBetweenTheSoundAndWhatItWas)
{
    savePresets("Bank", {"One"});
    ASSERT_TRUE(engine.processor.getSoundChange().requestPreset("Bank", "One"));
    ASSERT_TRUE(finishLoad());
    open();
    EXPECT_TRUE(button("Original preset").getToggleState());
    const int volume = layerParameter(0, layerSlot::volume);
    const float original = engine.get(volume);
    auto* knobOfVolume = window->find<juce::Slider>(volume);
    knobOfVolume->setValue(0.2, juce::sendNotificationSync);
    passes();
    EXPECT_TRUE(button("Edited preset").getToggleState());
    window->click(button("Original preset"));
    EXPECT_FLOAT_EQ(engine.get(volume), original);
    passes();
    EXPECT_TRUE(button("Original preset").getToggleState());
    ASSERT_TRUE(finishLoad());
    passes();
    window->click(button("Edited preset"));
    EXPECT_FLOAT_EQ(engine.get(volume), 0.2f);
}

TEST_F(EditorHeaderTest, PreviewNoteSoundsWhileTheButtonIsHeld)
{
    ASSERT_TRUE(engine.load(0, "Orlen"));
    engine.setLayer(0, layerSlot::pan, 0.0f);
    open();
    auto& note = button("Preview note");
    const auto middle = note.getLocalBounds().getCentre();
    window->press(note, middle);
    EXPECT_GT(engine.play(20).peak(), 0.001f);
    passes();
    const auto& meter = titled<meterHorizontal>("Output level");
    EXPECT_GT(meter.left, 0.001f);
    EXPECT_LT(meter.right, meter.left / 10.0f) << "the layer is panned to the left";
    window->release(note, middle);
    engine.playSeconds(1.0);
    EXPECT_LT(engine.playSeconds(1.0).peak(), 1e-4f);
}

} // namespace quorel::test
