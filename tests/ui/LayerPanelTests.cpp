// SPDX-License-Identifier: GPL-3.0-or-later
// The panels of the layers' strips: key range and zones with their keyboard, Easy, MIDI.
#include "EditorTest.h"

#include "hosting/HostedParameters.h"
#include "parameters/ParameterCodings.h"
#include "parameters/ParameterText.h"
#include "ui/KeyboardStrip.h"

#include <algorithm>

namespace quorel::test
{

class LayerPanelTest : public EditorTest
{
protected:
    LayerPanelTest() { open(); }

    int easyTarget(int n) { return decodeParamInt(engine.getLayer(0, layerSlot::easyMapping + n)); }
};

TEST_F(LayerPanelTest, KeysChooseThePanelAndDrumsHaveZones)
{
    ASSERT_TRUE(engine.load(0, "Orlen"));
    ASSERT_TRUE(engine.load(1, "Dorvik"));
    passes();
    const std::pair<const char*, float> keys[] = {{"EQ panel", 0.3f},
                                                  {"MIDI panel", 0.4f},
                                                  {"Easy panel", 0.2f},
                                                  {"key range panel", 0.0f},
                                                  {"zone mode", 0.0f}};

    for (const auto& [key, value] : keys)
    {
        auto& pressed = button("Layer 1 " + juce::String(key));
        window->click(pressed);
        EXPECT_FLOAT_EQ(engine.getLayer(0, layerSlot::drumPage), value) << key;
        EXPECT_EQ(pressed.getToggleState(), juce::String(key) != "zone mode") << "Only drums have zones";
    }

    // What a drum instrument left behind.
    engine.setLayer(0, layerSlot::drumMode, 1.0f);
    window->click(button("Layer 1 key range panel"));
    EXPECT_FLOAT_EQ(engine.getLayer(0, layerSlot::drumPage), 0.0f);

    const auto expectZones = [this](bool zones)
    {
        EXPECT_FLOAT_EQ(engine.getLayer(1, layerSlot::drumMode), zones ? 1.0f : 0.0f);
        EXPECT_FLOAT_EQ(engine.getLayer(1, layerSlot::drumPage), zones ? 0.1f : 0.0f);
        const int shown = layerParameter(1, zones ? layerSlot::zoneOn : layerSlot::keyMin);
        ASSERT_NE(window->find(shown), nullptr);
        EXPECT_TRUE(window->find(shown)->isShowing());
        EXPECT_TRUE(button("Layer 2 key range panel").getToggleState());
    };
    expectZones(true);
    const auto atTheTop = [this](int n)
    {
        auto* box = window->find<juce::Slider>(layerParameter(1, n));
        return box != nullptr ? box->getTextFromValue(1.0) : juce::String();
    };
    EXPECT_EQ(atTheTop(layerSlot::zoneKeys), "G8");
    EXPECT_EQ(atTheTop(layerSlot::zoneVelocities), "127");
    window->click(button("Layer 2 key range mode"));
    expectZones(false);
    window->click(button("Layer 2 zone mode"));
    expectZones(true);

    // A controller turns them on with their panel.
    window->click(button("Layer 2 key range mode"));
    engine.processor.getControllerMap().assign(layerParameter(1, layerSlot::drumMode), "40");
    engine.send(juce::MidiMessage::controllerEvent(1, 40, 127));
    engine.play();
    passes();
    expectZones(true);
}

TEST_F(LayerPanelTest, TheKeyboardShowsRangeZonesAndHeldNotes)
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
    constexpr float middleKey = middleC / 127.0f + 0.001f;
    engine.setLayer(0, layerSlot::keyMin, middleKey);
    engine.setLayer(0, layerSlot::keyMax, 72 / 127.0f + 0.001f);
    for (int zone = 0; zone < numZones; ++zone)
        engine.setLayer(0, layerSlot::zoneOn + zone, zone == 0 ? 1.0f : 0.0f);
    engine.setLayer(0, layerSlot::zoneKeys, middleKey);
    engine.setLayer(0, layerSlot::zoneKeys + 1, middleKey);

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
    const auto inEditor = [this]
    { return TestWindow::picture(*editor).getPixelAt(606 + 6 * whiteOfMiddleC + 2, 249 + 13); };
    passes();
    const auto silent = inEditor();
    engine.noteOn(middleC);
    engine.play();
    passes();
    EXPECT_NE(inEditor(), silent);
}

TEST_F(LayerPanelTest, EasyMenusOfferTheInstrumentsParametersAndLayouts)
{
    ASSERT_TRUE(engine.load(0, "Orlen"));
    window->click(button("Layer 1 Easy panel"));
    passes();
    const auto& names = layer(0).getParameterNames();
    auto& target = menu("Layer 1 Easy 1 target");
    const int mapped = easyTarget(0);
    EXPECT_EQ(target.getText(), names[mapped]);
    EXPECT_EQ(target.getNumItems(), 1) << "The rest of the list waits until the menu opens";

    target.showPopup();
    TestWindow::pump(50);
    const auto numNamed = std::count_if(names.begin() + 1, names.end(),
                                        [](const juce::String& name) { return name != namelessParameter; });
    EXPECT_EQ(target.getNumItems(), numNamed);
    EXPECT_LT(numNamed, names.size() - 1) << "Parameters without a name are left out";
    TestWindow::closeMenus();
    const int other = easyTarget(1);
    target.setSelectedId(other, juce::sendNotificationSync);
    EXPECT_EQ(easyTarget(0), other);
    const InstanceAccess::Use use(layer(0).instanceAccess());
    EXPECT_FLOAT_EQ(engine.getLayer(0, layerSlot::easyValue), hostedParameter(*use.get(), other));
    passes();

    // The fader moves the instrument.
    auto* fader = window->find<juce::Slider>(layerParameter(0, layerSlot::easyValue));
    fader->setValue(0.3, juce::sendNotificationSync);
    EXPECT_NEAR(hostedParameter(*use.get(), other), 0.3f, 1e-5f);
    view().fullRefresh();
    EXPECT_NEAR(fader->getDoubleClickReturnValue(), 0.3, 1e-5) << "a double click returns to what was shown";

    // Layouts are saved and chosen from the menu.
    engine.interaction.chosenFile = engine.processor.getPaths().layoutsFolder.getChildFile("Mine.orlen");
    engine.interaction.chosenFile.getParentDirectory().createDirectory();

    for (const auto& [row, expected] :
         {std::pair{"Save Layout", other}, {"Default Layout", mapped}, {"Mine", other}})
    {
        window->click(*window->find("easyfilesmenu"));
        ASSERT_TRUE(window->chooseFromMenu(row)) << row;
        passes();
        EXPECT_EQ(easyTarget(0), expected) << row;
        EXPECT_EQ(menu("Layer 1 Easy 1 target").getText(), names[expected]) << row;
    }
}

TEST_F(LayerPanelTest, ControllersAndTheMidiChannelAreChosen)
{
    window->click(button("Layer 1 MIDI panel"));
    auto* controller = window->find<juce::ComboBox>(layerParameter(0, layerSlot::userController1));
    ASSERT_NE(controller, nullptr);
    EXPECT_TRUE(controller->getText().startsWith("39"));
    controller->setSelectedId(75, juce::sendNotificationSync);
    EXPECT_EQ(static_cast<int>(engine.getLayer(0, layerSlot::userController1) * 128.0f), 74);
    auto* channel = window->find<juce::ComboBox>(layerParameter(0, layerSlot::midiChannel));

    for (int i = 16; i >= 0; --i)
    {
        channel->setSelectedItemIndex(i, juce::sendNotificationSync);
        EXPECT_EQ(static_cast<int>(engine.getLayer(0, layerSlot::midiChannel) * 16.0f), i);
        view().fullRefresh();
        EXPECT_EQ(channel->getSelectedItemIndex(), i);
    }
}

} // namespace quorel::test
