// SPDX-License-Identifier: GPL-3.0-or-later
// The strips of the layers with real instruments in them.
#include "EditorTest.h"

#include "hosting/HostedParameters.h"
#include "parameters/ParameterCodings.h"
#include "parameters/ParameterText.h"
#include "presets/PresetFiles.h"
#include "support/FaultyInstruments.h"
#include "ui/KeyboardStrip.h"
#include "ui/PluginWindow.h"
#include "ui/widgets/myIntBox2.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quorel::test
{

namespace
{
class LayerStripTest : public EditorTest
{
protected:
    LayerStripTest() { open(); }

    /** Opens a menu with the mouse and clicks a row. */
    void choose(const juce::String& title, const juce::String& row)
    {
        window->click(menu(title));
        ASSERT_TRUE(window->chooseFromMenu(row)) << title << ": " << row;
        TestWindow::pump(50);
    }

    bool waitForInstrument(int i, const juce::String& name)
    {
        return pumpUntil([&] { return layer(i).hasInstance() && layer(i).getPluginName() == name; }, 5000);
    }
};
} // namespace

TEST_F(LayerStripTest, InstrumentsComeAndGoThroughTheMenu)
{
    window->click(menu("Layer 1 instrument"));
    const auto rows = window->menuTexts();
    ASSERT_EQ(rows[0], "no plugin");
    EXPECT_EQ(rows.size(), engine.processor.getKnownPlugins().getNumTypes() + 1);
    ASSERT_TRUE(window->chooseFromMenu("Orlen"));
    ASSERT_TRUE(waitForInstrument(0, "Orlen"));
    passes();
    EXPECT_EQ(menu("Layer 1 instrument").getText(), "Orlen");
    EXPECT_GT(menu("Layer 1 program").getNumItems(), 1);
    EXPECT_TRUE(window->find("toEditorIcon")->isShowing());
    EXPECT_FALSE(engine.processor.getSession().isEdited() && engine.processor.getFolderName().isEmpty());

    // Another in its place, then the same again, which keeps what it plays.
    choose("Layer 1 instrument", "Hexley2");
    ASSERT_TRUE(waitForInstrument(0, "Hexley2"));
    passes();
    EXPECT_EQ(menu("Layer 1 instrument").getText(), "Hexley2");
    choose("Layer 1 instrument", "no plugin");
    EXPECT_TRUE(pumpUntil([this] { return !layer(0).hasInstance(); }, 2000));
    passes();
    EXPECT_EQ(menu("Layer 1 instrument").getText(), "no plugin");
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
    window->click(button("Layer 2 previous program"));
    passes();
    EXPECT_EQ(programs.getSelectedItemIndex(), programs.getNumItems() - 1);

    const auto current = [this]
    {
        const InstanceAccess::Use use(layer(1).instanceAccess());
        return use->getCurrentProgram();
    };
    EXPECT_EQ(current(), programs.getNumItems() - 1);
    window->click(button("Layer 2 next program"));
    passes();
    EXPECT_EQ(programs.getSelectedItemIndex(), 0);
    EXPECT_EQ(current(), 0);

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
    EXPECT_EQ(menu("Layer 3 instrument").getText(), "Plug-In Glasson is missing");
    EXPECT_EQ(menu("Layer 3 instrument").findColour(juce::ComboBox::textColourId), juce::Colours::orange);
    EXPECT_TRUE(button("Layer 3 maker's web site").isShowing());
    EXPECT_EQ(button("Layer 3 maker's web site").getName(), "missingPluginIcon");
    layer(2).setMissing("Nothing like it");
    editor->getView().fullRefresh();
    EXPECT_FALSE(button("Layer 3 maker's web site").isShowing());
    layer(2).clearMissing();
    editor->getView().fullRefresh();
    EXPECT_EQ(menu("Layer 3 instrument").getText(), "no plugin");
}

TEST_F(LayerStripTest, AnInstrumentThatMisbehavesIsShown)
{
    const auto folder = useFaulty(engine, {"Hexley"});
    setFaults(folder, "Hexley", "nan window throw-idle");
    ASSERT_TRUE(engine.load(0, "Hexley"));
    PluginWindow::open(layer(0));
    TestWindow::pump(200);
    passes();
    EXPECT_EQ(menu("Layer 1 instrument").getText(), "Hexley");
    engine.play();
    engine.noteOn(60);
    engine.play(2);
    engine.noteOff(60);
    engine.play();
    const auto shows = [this](const juce::String& text)
    { return pumpUntil([&] { return menu("Layer 1 instrument").getText() == text; }, 3000); };
    EXPECT_TRUE(shows("Hexley silenced"));
    EXPECT_EQ(menu("Layer 1 instrument").findColour(juce::ComboBox::textColourId), juce::Colours::orange);
    EXPECT_TRUE(shows("Hexley"));
    EXPECT_TRUE(layer(0).isWindowShowing());
}

TEST_F(LayerStripTest, PanelKeysChooseThePanel)
{
    ASSERT_TRUE(engine.load(0, "Orlen"));
    passes();
    const auto panel = [this](int i) { return engine.getLayer(i, layerSlot::drumPage); };
    const std::pair<const char*, float> keys[] = {
        {"EQ panel", 0.3f}, {"MIDI panel", 0.4f}, {"Easy panel", 0.2f}, {"key range panel", 0.0f}};

    for (const auto& [key, value] : keys)
    {
        window->click(button("Layer 1 " + juce::String(key)));
        EXPECT_FLOAT_EQ(panel(0), value) << key;
        EXPECT_TRUE(button("Layer 1 " + juce::String(key)).getToggleState());
    }

    // Only an instrument with zones shows them.
    window->click(button("Layer 1 zone mode"));
    EXPECT_FLOAT_EQ(engine.getLayer(0, layerSlot::drumMode), 0.0f);
    EXPECT_FALSE(button("Layer 1 zone mode").getToggleState());
    engine.setLayer(0, layerSlot::drumMode, 1.0f);
    window->click(button("Layer 1 key range panel"));
    EXPECT_FLOAT_EQ(panel(0), 0.0f);
}

TEST_F(LayerStripTest, DrumModeSwitchesBetweenRangeAndZones)
{
    ASSERT_TRUE(engine.load(1, "Dorvik"));
    passes();
    ASSERT_NE(window->find(layerParameter(1, layerSlot::zoneOn)), nullptr)
        << "Drums come up with their zones";
    const auto atTheTop = [this](int n)
    { return window->find<juce::Slider>(layerParameter(1, n))->getTextFromValue(1.0); };
    EXPECT_EQ(atTheTop(layerSlot::zoneKeys), "G8");
    EXPECT_EQ(atTheTop(layerSlot::zoneKeys + 1), "G8");
    EXPECT_EQ(atTheTop(layerSlot::zoneVelocities), "127");
    window->click(button("Layer 2 key range mode"));
    EXPECT_FLOAT_EQ(engine.getLayer(1, layerSlot::drumMode), 0.0f);
    EXPECT_FLOAT_EQ(engine.getLayer(1, layerSlot::drumPage), 0.0f);
    EXPECT_TRUE(window->find(layerParameter(1, layerSlot::keyMin))->isShowing());
    window->click(button("Layer 2 zone mode"));
    EXPECT_FLOAT_EQ(engine.getLayer(1, layerSlot::drumMode), 1.0f);
    EXPECT_FLOAT_EQ(engine.getLayer(1, layerSlot::drumPage), 0.1f);
    EXPECT_TRUE(button("Layer 2 key range panel").getToggleState());
}

TEST_F(LayerStripTest, TheKeyboardShowsRangeZonesAndHeldNotes)
{
    // White keys of 6 pixels, the first for note 0.
    KeyboardStrip range({0, 0, 450, 17}, 0, KeyboardStrip::Source::range, engine.processor);
    KeyboardStrip zones({0, 0, 450, 10}, 0, KeyboardStrip::Source::zones, engine.processor);
    const auto lightOf = [](KeyboardStrip& strip, int whiteKey)
    {
        strip.follow();
        return TestWindow::picture(strip).getPixelAt(6 * whiteKey + 2, strip.getHeight() - 4);
    };
    constexpr int middleC = 60, whiteOfMiddleC = 35;
    engine.setLayer(0, layerSlot::keyMin, middleC / 127.0f + 0.001f);
    engine.setLayer(0, layerSlot::keyMax, 72 / 127.0f + 0.001f);
    for (int zone = 0; zone < numZones; ++zone)
        engine.setLayer(0, layerSlot::zoneOn + zone, zone == 0 ? 1.0f : 0.0f);
    engine.setLayer(0, layerSlot::zoneKeys, middleC / 127.0f + 0.001f);
    engine.setLayer(0, layerSlot::zoneKeys + 1, middleC / 127.0f + 0.001f);

    const auto played = lightOf(range, whiteOfMiddleC);
    EXPECT_EQ(lightOf(range, whiteOfMiddleC + 7), played);
    EXPECT_LT(lightOf(range, whiteOfMiddleC + 8).getBrightness(), played.getBrightness() - 0.2f);
    EXPECT_LT(lightOf(range, whiteOfMiddleC - 1).getBrightness(), played.getBrightness() - 0.2f);
    EXPECT_EQ(lightOf(zones, whiteOfMiddleC), played);
    EXPECT_NE(lightOf(zones, whiteOfMiddleC + 1), played);
    engine.setLayer(0, layerSlot::zoneOn, 0.0f);
    EXPECT_NE(lightOf(zones, whiteOfMiddleC), played);

    // Held until the note-off, or until everything is silenced; the keys beside it aren't painted.
    int repaints = 0;
    range.setVisible(true);
    range.setCachedComponentImage(new RepaintCount(repaints));
    const auto repaintsAfter = [&](const juce::MidiMessage& message)
    {
        engine.send(message);
        engine.play();
        repaints = 0;
        range.follow();
        return repaints;
    };
    EXPECT_EQ(repaintsAfter(juce::MidiMessage::noteOn(3, middleC, 0.5f)), 1);
    EXPECT_GT(lightOf(range, whiteOfMiddleC).getSaturation(), 0.7f);
    EXPECT_EQ(repaintsAfter(juce::MidiMessage::noteOn(3, middleC, 0.7f)), 0) << "nothing new";
    EXPECT_EQ(repaintsAfter(juce::MidiMessage::noteOff(3, middleC)), 1);
    EXPECT_EQ(lightOf(range, whiteOfMiddleC), played);
    EXPECT_EQ(repaintsAfter(juce::MidiMessage::noteOn(3, middleC, 0.5f)), 1);
    EXPECT_EQ(repaintsAfter(juce::MidiMessage::allNotesOff(3)), 1);

    // The editor's own strips follow by themselves.
    auto picture = [this] {
        return TestWindow::picture(*editor).getClippedImage({606, 249, 450, 17}).createCopy();
    };
    passes();
    const auto silent = picture().getPixelAt(6 * whiteOfMiddleC + 2, 13);
    engine.send(juce::MidiMessage::noteOn(3, middleC, 0.5f));
    engine.play();
    EXPECT_EQ(picture().getPixelAt(6 * whiteOfMiddleC + 2, 13), silent);
    passes();
    EXPECT_NE(picture().getPixelAt(6 * whiteOfMiddleC + 2, 13), silent);
}

TEST_F(LayerStripTest, TransposeArrowsStepBySemitonesWithinTheRange)
{
    passes();
    const auto semitones = [this] { return paramToInt(engine.getLayer(0, layerSlot::transpose), -24, 24); };

    // Every step counts, though most fractions of 48 aren't exact.
    for (int wanted = 1; wanted <= 25; ++wanted)
    {
        window->click(button("Transpose up"));
        EXPECT_EQ(semitones(), std::min(wanted, 24));
    }

    for (int wanted = 23; wanted >= -25; --wanted)
    {
        window->click(button("Transpose down"));
        EXPECT_EQ(semitones(), std::max(wanted, -24));
    }

    passes();
    auto* box = window->find<myIntBox2>(layerParameter(0, layerSlot::transpose));
    EXPECT_EQ(box->numberOf(static_cast<float>(box->getValue())), -24);
}

TEST_F(LayerStripTest, EasyMenusOfferTheInstrumentsParameters)
{
    ASSERT_TRUE(engine.load(0, "Orlen"));
    window->click(button("Layer 1 Easy panel"));
    passes();
    const auto& names = layer(0).getParameterNames();
    auto& target = menu("Layer 1 Easy 1 target");
    const int mapped = decodeParamInt(engine.getLayer(0, layerSlot::easyMapping));
    EXPECT_EQ(target.getText(), names[mapped]);
    EXPECT_EQ(target.getNumItems(), 1) << "The rest of the list waits until the menu opens";

    target.showPopup();
    TestWindow::pump(50);
    const auto numNamed = std::count_if(names.begin() + 1, names.end(),
                                        [](const juce::String& name) { return name != namelessParameter; });
    EXPECT_EQ(target.getNumItems(), numNamed);
    EXPECT_LT(numNamed, names.size() - 1) << "Parameters without a name are left out";
    TestWindow::closeMenus();
    const int other = decodeParamInt(engine.getLayer(0, layerSlot::easyMapping + 1));
    target.setSelectedId(other, juce::sendNotificationSync);
    EXPECT_EQ(decodeParamInt(engine.getLayer(0, layerSlot::easyMapping)), other);
    const InstanceAccess::Use use(layer(0).instanceAccess());
    EXPECT_FLOAT_EQ(engine.getLayer(0, layerSlot::easyValue), hostedParameter(*use.get(), other));
    passes();

    // The fader moves the instrument.
    auto* fader = window->find<juce::Slider>(layerParameter(0, layerSlot::easyValue));
    fader->setValue(0.3, juce::sendNotificationSync);
    EXPECT_NEAR(hostedParameter(*use.get(), other), 0.3f, 1e-5f);
    editor->getView().fullRefresh();
    EXPECT_NEAR(fader->getDoubleClickReturnValue(), 0.3, 1e-5) << "a double click returns to what was shown";
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

TEST_F(LayerStripTest, ADoubleClickSetsTheDefault)
{
    const std::pair<int, double> defaults[] = {
        {slot::masterVolume, 0.63}, {232, 0.63}, {433, 0.5}, {641, 0.0}};

    for (const auto& [parameter, value] : defaults)
    {
        const auto* control = window->find<juce::Slider>(parameter);
        ASSERT_NE(control, nullptr) << parameter;
        EXPECT_NEAR(control->getDoubleClickReturnValue(), value, 1e-6) << parameter;
    }
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

TEST_F(LayerStripTest, UserControllerMenusAndMidiChannel)
{
    window->click(button("Layer 1 MIDI panel"));
    auto* controller = window->find<juce::ComboBox>(layerParameter(0, layerSlot::userController1));
    ASSERT_NE(controller, nullptr);
    EXPECT_TRUE(controller->getText().startsWith("39"));
    controller->setSelectedId(75, juce::sendNotificationSync);
    EXPECT_EQ(static_cast<int>(engine.getLayer(0, layerSlot::userController1) * 128.0f), 74);
    auto* channel = window->find<juce::ComboBox>(layerParameter(0, layerSlot::midiChannel));

    for (int i = 0; i <= 16; ++i)
    {
        channel->setSelectedItemIndex(i == 0 ? 5 : i - 1, juce::sendNotificationSync);
        channel->setSelectedItemIndex(i, juce::sendNotificationSync);
        EXPECT_EQ(static_cast<int>(engine.getLayer(0, layerSlot::midiChannel) * 16.0f), i);
        editor->getView().fullRefresh();
        EXPECT_EQ(channel->getSelectedItemIndex(), i);
    }
}

TEST_F(LayerStripTest, TheInstrumentsWindowGoesWithTheInstrumentAndStaysWithoutTheEditor)
{
    ASSERT_TRUE(engine.load(0, "Orlen"));
    ASSERT_TRUE(engine.load(1, "Tarn"));
    passes();

    for (int i = 0; i < 2; ++i)
    {
        window->click(button("Layer " + juce::String(i + 1) + " instrument's window"));
        EXPECT_TRUE(layer(i).isWindowShowing());
    }

    const auto* first = dynamic_cast<juce::DocumentWindow*>(layer(0).getWindow());
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->getName(), "Orlen");
    EXPECT_GT(first->getContentComponent()->getWidth(), 50);
    passes();
    EXPECT_TRUE(button("Layer 1 instrument's window").getToggleState());
    PluginWindow::open(layer(0));
    EXPECT_EQ(layer(0).getWindow(), dynamic_cast<const InstrumentWindow*>(first)) << "One window for each";

    close();
    TestWindow::pump(100);
    EXPECT_TRUE(layer(0).isWindowShowing());
    engine.processor.chooseInstrument(0, nullptr);
    EXPECT_FALSE(layer(0).isWindowShowing());
    EXPECT_TRUE(pumpUntil([this] { return !layer(0).hasInstance(); }, 3000));

    // Its own close button; then once more, to go with the processor.
    dynamic_cast<juce::DocumentWindow*>(layer(1).getWindow())->closeButtonPressed();
    EXPECT_FALSE(layer(1).isWindowShowing());
    PluginWindow::open(layer(1));
    EXPECT_TRUE(layer(1).isWindowShowing());
    TestWindow::pump(50);
}

TEST_F(LayerStripTest, AnInstrumentsOwnEditorIsEmbedded)
{
    // The starter instruments have no editor of their own; this plug-in has one.
    juce::PluginDescription description;
    description.name = "Quorel";
    description.pluginFormatName = "VST";
    description.fileOrIdentifier = QUOREL_PLUGIN_FILE;
    ASSERT_TRUE(layer(0).loadPlugin(description));
    PluginWindow::open(layer(0));
    auto* shown = dynamic_cast<juce::DocumentWindow*>(layer(0).getWindow());
    ASSERT_NE(shown, nullptr);
    passes();
    EXPECT_EQ(shown->getContentComponent()->getBounds().withZeroOrigin(), juce::Rectangle<int>(1110, 786));

    close();
    passes();
    EXPECT_TRUE(layer(0).isWindowShowing());
    EXPECT_TRUE(layer(0).requestUnload()) << "The window goes first, the instrument half a second later";
    EXPECT_FALSE(layer(0).isWindowShowing());
    EXPECT_TRUE(pumpUntil([this] { return !layer(0).hasInstance(); }, 3000));
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
    EXPECT_EQ(menu("Layer 2 instrument").getText(), "Orlen");

    window->click(third, {30, 80}, TestWindow::rightButton);
    ASSERT_TRUE(window->chooseFromMenu("Copy Layer 3"));
    window->click(first, {30, 80}, TestWindow::rightButton);
    ASSERT_TRUE(window->chooseFromMenu("Paste"));
    EXPECT_TRUE(waitForInstrument(0, "Orlen"));
}

TEST_F(LayerStripTest, AControllerTurnsTheZonesOnWithTheirPanel)
{
    ASSERT_TRUE(engine.load(0, "Dorvik"));
    window->click(button("Layer 1 key range mode"));
    engine.processor.getControllerMap().assign(layerParameter(0, layerSlot::drumMode), "40");
    engine.send(juce::MidiMessage::controllerEvent(1, 40, 127));
    engine.play();
    passes();
    EXPECT_TRUE(button("Layer 1 zone mode").getToggleState());
    EXPECT_TRUE(window->find(layerParameter(0, layerSlot::zoneOn))->isShowing());
}

TEST_F(LayerStripTest, LayoutsAreSavedAndChosenFromTheMenu)
{
    ASSERT_TRUE(engine.load(0, "Orlen"));
    window->click(button("Layer 1 Easy panel"));
    passes();
    engine.setLayer(0, layerSlot::easyMapping, encodeParamInt(5));
    engine.interaction.chosenFile = engine.processor.getPaths().layoutsFolder.getChildFile("Mine.orlen");
    engine.interaction.chosenFile.getParentDirectory().createDirectory();
    auto& layouts = *window->find("easyfilesmenu");
    window->click(layouts);
    EXPECT_EQ(window->menuTexts().joinIntoString(","), "Default Layout,Save Layout,Delete Layout");
    ASSERT_TRUE(window->chooseFromMenu("Save Layout"));
    TestWindow::pump(50);
    window->click(layouts);
    ASSERT_TRUE(window->chooseFromMenu("Default Layout"));
    passes();
    EXPECT_EQ(decodeParamInt(engine.getLayer(0, layerSlot::easyMapping)), 946);
    EXPECT_EQ(menu("Layer 1 Easy 1 target").getText(), layer(0).getParameterNames()[946]);
    window->click(layouts);
    ASSERT_TRUE(window->chooseFromMenu("Mine"));
    passes();
    EXPECT_EQ(decodeParamInt(engine.getLayer(0, layerSlot::easyMapping)), 5);
    EXPECT_EQ(menu("Layer 1 Easy 1 target").getText(), layer(0).getParameterNames()[5]);
}

} // namespace quorel::test
