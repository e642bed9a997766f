// SPDX-License-Identifier: GPL-3.0-or-later
// The whole editor in a real window on a real processor.
#include "EditorRig.h"

#include "presets/PresetFiles.h"
#include "ui/DisplayBox.h"
#include "ui/PluginEditor.h"
#include "ui/widgets/myIntBox.h"
#include "ui/widgets/myKnob.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <malloc.h>
#include <tuple>

namespace quorel::test
{

namespace
{
using juce::KeyPress;

/** A control as the layout has it: parameter, left, top, width, height on the editor. */
using Placed = std::tuple<int, int, int, int, int>;
using PlacedList = std::vector<Placed>;

constexpr int viewParameter = 2;
constexpr float layersView = 0.0f;
constexpr float fxView = 0.1f;
constexpr float managerView = 0.2f;
constexpr float multiView = 0.3f;

class EditorTest : public testing::Test
{
protected:
    /** Opens the editor on a page, in a window. */
    void open(float view = layersView)
    {
        close();
        engine.set(viewParameter, view);
        editor = std::make_unique<PluginEditor>(engine.processor);
        window = std::make_unique<TestWindow>(*editor);
        passes();
    }

    void close()
    {
        window = nullptr;
        editor = nullptr;
    }

    void TearDown() override { close(); }

    /** Waits for the passes of the editor that follow a change. */
    static void passes() { TestWindow::pump(150); }

    SubhostView& view() { return editor->getView(); }

    juce::String labelText(const juce::String& name)
    {
        const auto* label = dynamic_cast<juce::Label*>(window->find(name));
        return label != nullptr ? label->getText() : juce::String("no such label");
    }

    juce::Button& button(const juce::String& title)
    {
        auto* found = findTitled(view(), title);
        EXPECT_NE(found, nullptr) << title;
        return *dynamic_cast<juce::Button*>(found);
    }

    static juce::Component* findTitled(juce::Component& parent, const juce::String& title)
    {
        for (auto* child : parent.getChildren())
        {
            if (child->getTitle() == title)
                return child;

            if (auto* found = findTitled(*child, title))
                return found;
        }

        return nullptr;
    }

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

    ProcessorRig engine;
    std::unique_ptr<PluginEditor> editor;
    std::unique_ptr<TestWindow> window;
};

void collectPlaced(const juce::Component& root, const juce::Component& parent, PlacedList& found)
{
    for (const auto* child : parent.getChildren())
    {
        if (!child->isVisible())
            continue;

        if (const int parameter = ControlPage::parameterOf(*child); parameter > 0)
        {
            const auto box = root.getLocalArea(child->getParentComponent(), child->getBounds());
            found.emplace_back(parameter, box.getX(), box.getY(), box.getWidth(), box.getHeight());
        }

        collectPlaced(root, *child, found);
    }
}

//==============================================================================================================
// The layout in numbers

constexpr int knob = 47;

void addHeader(PlacedList& list)
{
    list.insert(list.end(), {{1, 755, 38, knob, knob},
                             {4, 795, 75, 28, 32},
                             {2, 566, 31, 100, 32},
                             {2, 562, 60, 100, 32},
                             {2, 640, 31, 100, 32},
                             {2, 644, 60, 100, 32}});
}

void addStrip(PlacedList& list, int layer, const PlacedList& panel)
{
    const int base = 200 * layer;
    const int top = 105 + 165 * layer;
    PlacedList strip{{236, 146, 80, 60, 16},
                     {235, 43, 16, 20, 20},
                     {234, 43, 59, 20, 20},
                     {233, 326, 111, knob, knob},
                     {232, 380, 111, knob, knob}};

    for (int n = 0; n < 4; ++n)
    {
        strip.emplace_back(238 + n, 89 + 57 * n, 111, knob, knob);
        strip.emplace_back(256 + n, 92 + 57 * n, 109, 10, 10);
    }

    strip.insert(strip.end(), panel.begin(), panel.end());

    for (const auto& [n, x, y, width, height] : strip)
        list.emplace_back(base + n, x, top + y, width, height);
}

PlacedList panelKeys()
{
    return {{253, 486, 3, 20, 20}, {253, 613, 3, 20, 20}, {253, 778, 3, 20, 20}, {253, 909, 3, 20, 20}};
}

PlacedList panelControls(int panel)
{
    auto list = panelKeys();

    if (panel < 2)
        list.insert(list.end(), {{254, 463, 60, 20, 20}, {254, 463, 105, 20, 20}});

    if (panel == 0)
    {
        list.insert(list.end(), {{260, 640, 72, 30, 16},
                                 {261, 680, 72, 30, 16},
                                 {262, 640, 120, 30, 16},
                                 {263, 680, 120, 30, 16},
                                 {264, 945, 90, 60, 16}});
    }
    else if (panel == 1)
    {
        for (int zone = 0; zone < 8; ++zone)
        {
            const int column = zone / 4;
            const int y = 25 * (zone % 4);
            const int x = 288 * column;
            list.insert(list.end(), {{302 + zone, 517 + 293 * column, 55 + y, 20, 20},
                                     {270 + 2 * zone, 581 + x, 57 + y, 44, 16},
                                     {271 + 2 * zone, 632 + x, 57 + y, 44, 16},
                                     {286 + 2 * zone, 693 + x, 57 + y, 44, 16},
                                     {287 + 2 * zone, 744 + x, 57 + y, 44, 16}});
        }
    }
    else if (panel == 2)
    {
        for (int n = 0; n < 12; ++n)
        {
            list.emplace_back(310 + n, 460 + 53 * n, 32, 28, 98);
            list.emplace_back(322 + n, 447 + 53 * n, 125, 52, 36);
        }
    }
    else if (panel == 3)
    {
        list.insert(list.end(), {{380, 493, 36, 20, 20},
                                 {393, 492, 81, 20, 20},
                                 {394, 442, 65, knob, knob},
                                 {395, 492, 125, 20, 20},
                                 {396, 442, 109, knob, knob}});

        for (int band = 0; band < 3; ++band)
        {
            list.emplace_back(381 + 4 * band, 545, 36 + 44 * band, 20, 20);

            for (int j = 0; j < 3; ++j)
                list.emplace_back(382 + 4 * band + j, 569 + 55 * j, 22 + 44 * band, knob, knob);
        }
    }
    else
    {
        for (int n = 0; n < 8; ++n)
            list.emplace_back(243 + n, n < 4 ? 571 : 810, 51 + 23 * (n % 4), 20, 20);

        list.insert(list.end(), {{251, 832, 99, 104, 16}, {252, 832, 122, 104, 16}});
    }

    return list;
}

/** The effects page, with a knob for each parameter that the slot's type has. */
PlacedList fxControls(PluginProcessor& processor)
{
    PlacedList list;

    for (int slot = 0; slot < 4; ++slot)
    {
        const int dx = slot % 2 == 1 ? 324 : 0;
        const int dy = slot >= 2 ? 256 : 0;
        list.insert(list.end(), {{1200 + slot, 457 + dx, 108 + dy, 20, 20},
                                 {1204 + slot, 450 + dx, 160 + dy, 100, 16},
                                 {1208 + slot, 563 + dx, 147 + dy, knob, knob},
                                 {1212 + slot, 615 + dx, 147 + dy, knob, knob},
                                 {1216 + slot, 667 + dx, 147 + dy, knob, knob}});

        for (int j = 0; j < 10; ++j)
        {
            const int parameter = 1220 + 4 * j + slot;
            const auto name = processor.getParameterName(parameter);

            if (name.isNotEmpty() && name != "-")
                list.emplace_back(parameter, 459 + 52 * (j % 5) + dx, (j < 5 ? 210 : 273) + dy, knob, knob);
        }
    }

    list.insert(list.end(), {{1300, 493, 634, 20, 20},
                             {1313, 493, 678, 20, 20},
                             {1314, 442, 663, knob, knob},
                             {1315, 493, 722, 20, 20},
                             {1316, 442, 707, knob, knob}});

    for (int band = 0; band < 3; ++band)
    {
        list.emplace_back(1301 + 4 * band, 545, 634 + 44 * band, 20, 20);

        for (int j = 0; j < 3; ++j)
            list.emplace_back(1302 + 4 * band + j, 569 + 55 * j, 620 + 44 * band, knob, knob);
    }

    return list;
}

PlacedList multiControls()
{
    PlacedList list;

    for (int column = 0; column < 4; ++column)
    {
        const int x = 158 * column;
        list.emplace_back(1350 + column, 505 + x, 151, 57, 169);

        for (int row = 0; row < 4; ++row)
        {
            const int i = 4 * column + row;
            list.emplace_back(1354 + i, 504 + x, 362 + 99 * row, knob, knob);
            list.emplace_back(1471 + i, 566 + x, 370 + 99 * row, 16, 16);
        }
    }

    return list;
}

std::string textOf(const Placed& placed)
{
    const auto& [parameter, x, y, width, height] = placed;
    return (juce::String(parameter) + " at " + juce::Rectangle<int>(x, y, width, height).toString())
        .toStdString();
}

/** Neither more nor fewer, each in its place. */
void expectSame(PlacedList found, PlacedList expected, const juce::String& where)
{
    std::sort(found.begin(), found.end());
    std::sort(expected.begin(), expected.end());
    PlacedList missing;
    PlacedList extra;
    std::set_difference(expected.begin(), expected.end(), found.begin(), found.end(),
                        std::back_inserter(missing));
    std::set_difference(found.begin(), found.end(), expected.begin(), expected.end(),
                        std::back_inserter(extra));

    for (const auto& placed : missing)
        ADD_FAILURE() << where << ": missing " << textOf(placed);

    for (const auto& placed : extra)
        ADD_FAILURE() << where << ": not in the layout " << textOf(placed);
}
} // namespace

TEST_F(EditorTest, EachPageHasTheControlsOfTheLayoutAndNoOthers)
{
    const auto found = [this]
    {
        PlacedList list;
        collectPlaced(view(), view(), list);
        return list;
    };

    for (int panel = 0; panel < 5; ++panel)
    {
        for (int layer = 0; layer < numLayers; ++layer)
            engine.setLayer(layer, layerSlot::drumPage, 0.1f * static_cast<float>(panel));

        open(layersView);
        PlacedList expected;
        addHeader(expected);

        for (int layer = 0; layer < numLayers; ++layer)
            addStrip(expected, layer, panelControls(panel));

        expectSame(found(), expected, "Layers page, panel " + juce::String(panel));
    }

    PlacedList strips;
    addHeader(strips);

    for (int layer = 0; layer < numLayers; ++layer)
        addStrip(strips, layer, {});

    // Types with few knobs and with many.
    constexpr int types[numFxBlocks] = {0, 1, 9, 29};

    for (int block = 0; block < numFxBlocks; ++block)
        engine.set(slot::fxType + block, (static_cast<float>(types[block]) + 0.5f) / 32.0f);

    const std::pair<float, PlacedList> pages[] = {
        {fxView, fxControls(engine.processor)}, {managerView, {}}, {multiView, multiControls()}};

    for (const auto& [page, controls] : pages)
    {
        open(page);
        PlacedList expected;

        if (page == managerView)
            addHeader(expected);
        else
            expected = strips;

        expected.insert(expected.end(), controls.begin(), controls.end());
        expectSame(found(), expected, "view " + juce::String(page));
    }

    view().showBackPanel();
    expectSame(
        found(),
        {{16, 100, 470, 20, 20}, {17, 100, 505, 20, 20}, {18, 100, 540, 20, 20}, {19, 100, 575, 20, 20}},
        "back panel");
}

TEST_F(EditorTest, PageKeysSwitchPagesAndTheViewIsKept)
{
    open(layersView);
    const std::pair<const char*, float> keys[] = {{"Multi-control page", multiView},
                                                  {"Preset Manager page", managerView},
                                                  {"Master FX/EQ page", fxView},
                                                  {"Layers page", layersView}};

    for (const auto& [title, value] : keys)
    {
        window->click(button(title));
        EXPECT_FLOAT_EQ(engine.get(viewParameter), value) << title;
        EXPECT_EQ(engine.processor.getEditorRequests().getPage(), pageOf(value));
        EXPECT_TRUE(button(title).getToggleState());
        EXPECT_EQ(window->find("Instrument 1") != nullptr, value != managerView);
    }

    // Turning pages is no edit of the sound.
    EXPECT_FALSE(engine.processor.getSession().isEdited());

    const std::pair<float, const char*> saved[] = {{0.35f, "Multi-control page"}, {0.4f, "Layers page"}};

    for (const auto& [value, title] : saved)
    {
        open(value);
        EXPECT_TRUE(button(title).getToggleState()) << value;
    }

    auto& back = *window->find("to Back Screen");
    window->click(back);
    EXPECT_EQ(window->find("Instrument 1"), nullptr);
    EXPECT_EQ(engine.processor.getEditorRequests().takeRefresh(), false);
    engine.processor.requestEditorRefresh();
    passes();
    EXPECT_EQ(window->find("Instrument 1"), nullptr) << "A refresh leaves the back panel in front";
    view().fullRefresh();
    EXPECT_NE(window->find("Instrument 1"), nullptr);
}

TEST_F(EditorTest, ControlsFollowAutomationOnThePageThatShowsThem)
{
    engine.setLayer(0, layerSlot::drumPage, 0.2f);
    engine.setLayer(1, layerSlot::drumPage, 0.0f);
    open(layersView);
    auto* pan = window->find<juce::Slider>(layerParameter(0, layerSlot::pan));
    auto* easy = window->find<juce::Slider>(layerParameter(0, layerSlot::easyValue));
    auto* solo = window->find<juce::Button>(layerParameter(2, layerSlot::solo));
    auto* keyMin = window->find<juce::Slider>(layerParameter(1, layerSlot::keyMin));
    auto* keyText = dynamic_cast<juce::Label*>(keyMin->getChildComponent(0));
    ASSERT_NE(pan, nullptr);
    ASSERT_NE(keyText, nullptr);

    engine.setLayer(0, layerSlot::pan, 0.25f);
    engine.setLayer(0, layerSlot::easyValue, 0.75f);
    engine.setLayer(2, layerSlot::solo, 1.0f);
    engine.setLayer(1, layerSlot::keyMin, 61.0f / 127.0f);
    engine.set(slot::multiFader, 0.4f);
    passes();
    EXPECT_FLOAT_EQ(static_cast<float>(pan->getValue()), 0.25f);
    EXPECT_FLOAT_EQ(static_cast<float>(easy->getValue()), 0.75f);
    EXPECT_TRUE(solo->getToggleState());
    EXPECT_EQ(keyText->getText(), "C#3");
    EXPECT_FALSE(engine.processor.getParameterTable().isDirty(slot::multiFader))
        << "A flag without a control is taken, too";

    window->click(button("Multi-control page"));
    auto* fader = window->find<juce::Slider>(slot::multiFader);
    ASSERT_NE(fader, nullptr);
    EXPECT_FLOAT_EQ(static_cast<float>(fader->getValue()), 0.4f);

    // The keys of a strip's panels follow, the panel waits for the next refresh.
    window->click(button("Layers page"));
    engine.setLayer(0, layerSlot::drumPage, 0.4f);
    passes();
    EXPECT_TRUE(button("Layer 1 MIDI panel").getToggleState());
    EXPECT_TRUE(easy->isShowing());
    view().fullRefresh();
    EXPECT_FALSE(easy->isShowing());
}

TEST_F(EditorTest, TheDisplayTellsOfWhatIsUnderTheMouseAndOfMidi)
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
    EXPECT_EQ(labelText("hintLabel"), "Layer2 Midi Channel = 0") << "A menu's own text counts as the menu";
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

TEST_F(EditorTest, TapsAndTheBoxSetTheTempo)
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

    auto* box = dynamic_cast<myIntBox*>(findTitled(view(), "Tempo"));
    ASSERT_NE(box, nullptr);
    box->setValue(90.0 * 0.00212766, juce::sendNotificationSync);
    EXPECT_DOUBLE_EQ(engine.processor.getTempo().bpm(), 120.0);
    box->setValue(1.0, juce::sendNotificationSync);
    EXPECT_NEAR(engine.processor.getTempo().bpm(), 500.0, 1.0);
    EXPECT_FALSE(engine.processor.getSession().isEdited()) << "The tempo is no part of the preset";
}

TEST_F(EditorTest, ArrowsKeysAndMenusChoosePresets)
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
    view().grabKeyboardFocus();
    window->key(KeyPress(KeyPress::downKey));
    load("Two");
    window->key(KeyPress(KeyPress::downKey));
    load("Two");
    window->click(button("Previous preset"));
    load("Three");

    window->click(*window->find("presetMenuButton"));
    auto texts = window->menuTexts();
    EXPECT_EQ(texts.joinIntoString(","),
              "new preset,rename preset,delete preset,load preset,save preset,One,Three,Two");
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

TEST_F(EditorTest, EditAndOrigSwitchBetweenTheSoundAndWhatItWas)
{
    savePresets("Bank", {"One"});
    ASSERT_TRUE(engine.processor.getSoundChange().requestPreset("Bank", "One"));
    ASSERT_TRUE(finishLoad());
    open();
    EXPECT_TRUE(button("Original preset").getToggleState());
    const int volume = layerParameter(0, layerSlot::volume);
    const float original = engine.get(volume);
    auto* knobOfVolume = window->find<myKnob>(volume);
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

TEST_F(EditorTest, TheScaleIsKeptForTheUser)
{
    open();
    EXPECT_EQ(editor->getWidth(), 1110);
    view().setScalePercent(150);
    EXPECT_EQ(editor->getBounds().withZeroOrigin(), juce::Rectangle<int>(1665, 1179));
    const auto picture = TestWindow::picture(*editor);
    EXPECT_EQ(picture.getWidth(), 1665);
    open();
    EXPECT_EQ(editor->getHeight(), 1179);
    engine.processor.userStore().write(pathSetting::key, pathSetting::editorScale, "nonsense");
    open();
    EXPECT_EQ(editor->getWidth(), 1110);
}

TEST_F(EditorTest, PreviewNoteSoundsWhileTheButtonIsHeld)
{
    ASSERT_TRUE(engine.load(0, "Orlen"));
    open();
    auto& note = button("Preview note");
    window->press(note, {5, 5});
    EXPECT_GT(engine.play(20).peak(), 0.001f);
    window->release(note, {5, 5});
    engine.playSeconds(1.0);
    EXPECT_LT(engine.playSeconds(1.0).peak(), 1e-4f);
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
    savePresets("Bank", {"One", "Two"});
    ASSERT_TRUE(engine.load(0, "Orlen"));
    juce::SharedResourcePointer<ImageStore> images;
    juce::Random random(11);

    const auto cycle = [&](int round)
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
    };

    for (int round = 0; round < 40; ++round)
        cycle(round);

    // Images are decoded as knobs come to show them, and stay.
    const auto held = [&] { return mallinfo2().uordblks - images->numBytes(); };
    const auto before = held();

    for (int round = 0; round < 200; ++round)
        cycle(round);

    // Ten kilobytes a round; an editor has more than a megabyte.
    EXPECT_LT(held(), before + 2'000'000);
    EXPECT_TRUE(finishLoad());
}

} // namespace quorel::test
