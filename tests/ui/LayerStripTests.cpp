// SPDX-License-Identifier: GPL-3.0-or-later
// The strips of the layers with real instruments in them.
#include "EditorTest.h"

#include "parameters/ParameterCodings.h"
#include "support/FaultyInstruments.h"
#include "ui/PluginWindow.h"

namespace quorel::test
{

class LayerStripTest : public EditorTest
{
protected:
    LayerStripTest() { open(); }

    juce::ComboBox& instrument(int i) { return menu("Layer " + juce::String(i + 1) + " instrument"); }

    void choose(const juce::String& name)
    {
        window->click(instrument(0));
        ASSERT_TRUE(window->chooseFromMenu(name)) << name;
    }

    bool waitForInstrument(int i, const juce::String& name)
    {
        return pumpUntil([&] { return layer(i).hasInstance() && layer(i).getPluginName() == name; }, 5000);
    }
};

TEST_F(LayerStripTest, InstrumentsComeAndGoThroughTheMenu)
{
    window->click(instrument(0));
    const auto rows = window->menuTexts();
    EXPECT_EQ(rows[0], "no plugin");
    EXPECT_EQ(rows.size(), engine.processor.getKnownPlugins().getNumTypes() + 1);
    const auto expectLoaded = [this](const char* name)
    {
        ASSERT_TRUE(waitForInstrument(0, name));
        passes();
        EXPECT_EQ(instrument(0).getText(), name);
        EXPECT_TRUE(window->find("toEditorIcon")->isShowing());
    };
    ASSERT_TRUE(window->chooseFromMenu("Orlen"));
    expectLoaded("Orlen");
    EXPECT_GT(menu("Layer 1 program").getNumItems(), 1);
    choose("Hexley2");
    expectLoaded("Hexley2");
    choose("no plugin");
    EXPECT_TRUE(pumpUntil([this] { return !layer(0).hasInstance(); }, 2000));
    passes();
    EXPECT_EQ(instrument(0).getText(), "no plugin");
    EXPECT_EQ(menu("Layer 1 program").getNumItems(), 0);
    EXPECT_FALSE(window->find("toEditorIcon")->isShowing());
}

TEST_F(LayerStripTest, ProgramArrowsWrapAroundAndBanksAreSent)
{
    ASSERT_TRUE(engine.load(1, "Orlen"));
    passes();
    auto& programs = menu("Layer 2 program");
    ASSERT_GT(programs.getNumItems(), 2);
    programs.setSelectedItemIndex(0, juce::sendNotificationSync);
    const auto expectAfter = [&](const char* arrow, int program)
    {
        window->click(button(arrow));
        passes();
        EXPECT_EQ(programs.getSelectedItemIndex(), program);
        const InstanceAccess::Use use(layer(1).instanceAccess());
        EXPECT_EQ(use->getCurrentProgram(), program);
    };
    expectAfter("Layer 2 previous program", programs.getNumItems() - 1);
    expectAfter("Layer 2 next program", 0);

    // What the instrument does by itself is followed.
    {
        const InstanceAccess::Use use(layer(1).instanceAccess());
        use->setCurrentProgram(2);
    }
    layer(1).needsDisplayUpdate.store(true);
    passes();
    EXPECT_EQ(programs.getSelectedItemIndex(), 2);

    // Another program takes multi-controls off this layer's Easy values.
    engine.set(slot::multiAssignment, encodeParamInt(18 + 7));
    window->click(button("Layer 2 next program"));
    passes();
    EXPECT_LE(decodeParamInt(engine.get(slot::multiAssignment)), 0);

    // An empty layer's arrows do nothing.
    window->click(button("Layer 1 next program"));
    passes();
    EXPECT_EQ(menu("Layer 1 program").getSelectedId(), 0);
}

TEST_F(LayerStripTest, AMissingInstrumentIsNamedUntilItIsGivenUp)
{
    layer(2).setMissing("Glasson");
    engine.processor.requestEditorRefresh();
    passes();
    EXPECT_EQ(instrument(2).getText(), "Plug-In Glasson is missing");
    EXPECT_EQ(instrument(2).findColour(juce::ComboBox::textColourId), juce::Colours::orange);
    EXPECT_TRUE(button("Layer 3 maker's web site").isShowing());
    layer(2).setMissing("Nothing like it");
    view().fullRefresh();
    EXPECT_FALSE(button("Layer 3 maker's web site").isShowing());
    layer(2).clearMissing();
    view().fullRefresh();
    EXPECT_EQ(instrument(2).getText(), "no plugin");
}

TEST_F(LayerStripTest, AnInstrumentThatMisbehavesIsShown)
{
    const auto folder = useFaulty(engine, {"Hexley"});
    setFaults(folder, "Hexley", "nan window throw-idle");
    ASSERT_TRUE(engine.load(0, "Hexley"));
    PluginWindow::open(layer(0));
    TestWindow::pump(200);
    passes();
    engine.play();
    engine.noteOn(60);
    engine.play(2);
    engine.noteOff(60);
    engine.play();
    const auto shows = [this](const juce::String& text)
    { return pumpUntil([&] { return instrument(0).getText() == text; }, 3000); };
    EXPECT_TRUE(shows("Hexley silenced"));
    EXPECT_EQ(instrument(0).findColour(juce::ComboBox::textColourId), juce::Colours::orange);
    EXPECT_TRUE(shows("Hexley"));
    EXPECT_TRUE(layer(0).isWindowShowing());
}

TEST_F(LayerStripTest, SwitchingALayerOffSilencesIt)
{
    ASSERT_TRUE(engine.load(0, "Orlen"));
    passes();
    const int on = layerParameter(0, layerSlot::on);
    engine.processor.getControllerMap().assign(on, "40");

    for (const bool byController : {false, true})
    {
        const auto turn = [&](int value)
        {
            if (byController)
                engine.send(juce::MidiMessage::controllerEvent(1, 40, value));
            else
                window->click(*window->find(on));

            engine.play();
        };
        engine.noteOn(60);
        ASSERT_GT(engine.play(40).peak(), 0.001f);
        turn(0);
        EXPECT_EQ(engine.get(on), 0.0f);
        turn(127);
        engine.playSeconds(3.0);
        EXPECT_LT(engine.play(40).peak(), 0.001f) << "The note ended with the layer";
    }
}

TEST_F(LayerStripTest, AMovedControlIsTheNewBaseOfItsMultiControl)
{
    // Fader 1 at rest, its first knob fully up, aimed at layer 1's pan.
    engine.set(slot::multiAssignment, encodeParamInt(2));
    engine.set(slot::multiKnob, 1.0f);
    auto* pan = window->find<juce::Slider>(layerParameter(0, layerSlot::pan));
    pan->setValue(0.1, juce::sendNotificationSync);
    engine.set(slot::multiFader, 0.5f);
    EXPECT_NEAR(engine.getLayer(0, layerSlot::pan), 0.6f, 1e-5f);
}

TEST_F(LayerStripTest, StripsAreDraggedOntoEachOtherAndHaveAMenu)
{
    ASSERT_TRUE(engine.load(0, "Orlen"));
    ASSERT_TRUE(engine.load(1, "Tarn"));
    engine.setLayer(0, layerSlot::pan, 0.1f);
    passes();
    auto& first = *window->findTitled("Layer 1");
    auto& third = *window->findTitled("Layer 3");
    const auto dragTo = [&](juce::Component& from, juce::Component& to, int keys)
    {
        window->drag(from, {30, 80}, from.getLocalPoint(&to, juce::Point<int>(30, 80)),
                     TestWindow::leftButton + keys);
    };

    dragTo(first, third, 0);
    EXPECT_TRUE(waitForInstrument(2, "Orlen"));
    EXPECT_FALSE(layer(0).hasInstance());
    EXPECT_FLOAT_EQ(engine.getLayer(2, layerSlot::pan), 0.1f);
    // The picture of what was dragged fades out first.
    TestWindow::pump(500);
    dragTo(third, *window->findTitled("Layer 2"), juce::ModifierKeys::ctrlModifier);
    EXPECT_TRUE(waitForInstrument(1, "Orlen"));
    EXPECT_TRUE(layer(2).hasInstance()) << "with Ctrl it is copied";
    passes();
    EXPECT_EQ(instrument(1).getText(), "Orlen");

    // A control is no obstacle.
    TestWindow::pump(500);
    auto* knob = window->find(layerParameter(3, layerSlot::pan));
    window->drag(third, {30, 80}, third.getLocalPoint(knob, knob->getLocalBounds().getCentre()));
    EXPECT_TRUE(waitForInstrument(3, "Orlen"));
    EXPECT_FALSE(layer(2).hasInstance());
    TestWindow::pump(500);
    dragTo(*window->findTitled("Layer 4"), third, 0);
    EXPECT_TRUE(waitForInstrument(2, "Orlen"));

    window->click(third, {30, 80}, TestWindow::rightButton);
    ASSERT_TRUE(window->chooseFromMenu("Copy Layer 3"));
    window->click(first, {30, 80}, TestWindow::rightButton);
    ASSERT_TRUE(window->chooseFromMenu("Paste"));
    EXPECT_TRUE(waitForInstrument(0, "Orlen"));
}

} // namespace quorel::test
