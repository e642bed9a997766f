// SPDX-License-Identifier: GPL-3.0-or-later
// The header in the whole editor: tempo, presets, Edit and Orig, and the preview note.
#include "EditorTest.h"

#include "ui/widgets/meterHorizontal.h"

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

    juce::String chosen() { return engine.processor.getPresetName(); }
};
} // namespace

TEST_F(EditorHeaderTest, TapsSetTheTempo)
{
    open();
    const auto start = juce::Time::getMillisecondCounterHiRes();

    for (int tap = 0; tap < 4; ++tap)
    {
        window->click(button("Tap tempo"), {10, 5});
        TestWindow::pump(200);
    }

    // Three of the four pauses, of 200 ms or more, and no longer than it all took.
    const auto took = juce::Time::getMillisecondCounterHiRes() - start;
    EXPECT_GE(engine.processor.getTempo().bpm(), 3.0 * 60000.0 / took);
    EXPECT_LE(engine.processor.getTempo().bpm(), 303.0);
}

TEST_F(EditorHeaderTest, ArrowsKeysAndMenusChoosePresets)
{
    savePresets("Second", {"Only"});
    savePresets("First", {"One", "Two", "Three"});
    open();
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
    window->key(KeyPress::upKey);
    EXPECT_EQ(chosen(), "One");
    for (int i = 0; i < 3; ++i)
        window->key(KeyPress::downKey);
    load("Two");
    window->click(button("Previous preset"));
    load("Three");

    const auto choose = [this](const char* opener, const char* row)
    {
        window->click(*window->find(opener));
        const auto texts = window->menuTexts();
        EXPECT_TRUE(window->chooseFromMenu(row));
        return texts.joinIntoString(",");
    };
    EXPECT_EQ(choose("presetMenuButton", "One"),
              "new preset,rename preset,delete preset,load preset,save preset,save preset as,One,Three,Two,"
              "99 Default Preset,First,Second");
    load("One");
    EXPECT_EQ(choose("folderMenuButton", "Second"),
              "new folder,rename folder,delete folder,99 Default Preset,First,Second");
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
    window->key(KeyPress::downKey);
    EXPECT_EQ(chosen(), "Three") << "The editor is just open";
    ASSERT_TRUE(finishLoad());
    passes();

    window->click(menu("Layer 1 instrument"));
    EXPECT_FALSE(window->menuTexts().isEmpty());
    TestWindow::closeMenus();
    window->key(KeyPress::downKey);
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
    window->key(KeyPress::returnKey);
    EXPECT_FALSE(TestWindow::menuIsOpen());
    ASSERT_TRUE(engine.load(0, "Orlen"));
    showEasyPanel();
    target.grabKeyboardFocus();
    window->key(KeyPress::returnKey);
    EXPECT_FALSE(window->menuTexts().isEmpty());
}

TEST_F(EditorHeaderTest, EditAndOrigSwitchBetweenTheSoundAndWhatItWasAndTheNameTellsOfEdits)
{
    savePresets("Bank", {"One"});
    ASSERT_TRUE(engine.processor.getSoundChange().requestPreset("Bank", "One"));
    ASSERT_TRUE(finishLoad());
    open();
    const int volume = layerParameter(0, layerSlot::volume);
    const float original = engine.get(volume);
    const auto expectShown = [&](const char* pressed, float value)
    {
        passes();
        EXPECT_TRUE(button(pressed).getToggleState());
        EXPECT_FLOAT_EQ(engine.get(volume), value);
    };
    const auto& name = titled<juce::Label>("Preset");
    expectShown("Original preset", original);
    EXPECT_EQ(name.getText(), "One");
    window->find<juce::Slider>(volume)->setValue(0.2, juce::sendNotificationSync);
    expectShown("Edited preset", 0.2f);
    EXPECT_EQ(name.getText(), "One *");
    window->click(button("Original preset"));
    ASSERT_TRUE(finishLoad());
    expectShown("Original preset", original);
    window->click(button("Edited preset"));
    ASSERT_TRUE(finishLoad());
    expectShown("Edited preset", 0.2f);
    ASSERT_TRUE(engine.processor.getPresetStorage().save({}, true));
    passes();
    EXPECT_EQ(name.getText(), "One");
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

    // Nobody hears of the key when the editor closes under it.
    window->press(note, middle);
    EXPECT_GT(engine.play(20).peak(), 0.001f);
    close();
    engine.playSeconds(1.0);
    EXPECT_LT(engine.playSeconds(1.0).peak(), 1e-4f);
}

} // namespace quorel::test
