// SPDX-License-Identifier: GPL-3.0-or-later
// Layers with real VST2 instruments in them: coming, going, playing, and what the table mirrors of them.
#include "parameters/ParameterCodings.h"
#include "parameters/ParameterText.h"
#include "support/OpenWindow.h"
#include "support/ProcessorRig.h"

#include <gtest/gtest.h>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

namespace quorel::test
{

class HostedLayerTest : public testing::Test
{
protected:
    VirtualInstrument& layer(int i) { return rig.processor.getLayer(i); }

    juce::String nameInSound(int i)
    {
        return readParamText(rig.processor, layerParameter(i, layerSlot::pluginNameText), 31);
    }

    float playNote(int note, float velocity = 0.8f)
    {
        // A transpose written before costs the first block its events.
        rig.play();
        rig.noteOn(note, velocity);
        const float peak = rig.playSeconds(0.4).peak();
        rig.noteOff(note);
        rig.send(juce::MidiMessage::allSoundOff(1));
        rig.playSeconds(2.0);
        return peak;
    }

    static constexpr float silence = 1e-4f;
    ProcessorRig rig;
};

TEST_F(HostedLayerTest, AnInstrumentComesKeepsItsStateAndGoesAtOnce)
{
    rig.setLayer(0, layerSlot::pan, 0.1f);
    ASSERT_TRUE(rig.load(0, "Orlen"));
    EXPECT_EQ(rig.getLayer(0, layerSlot::pan), 0.5f) << "choosing an instrument resets its layer";
    EXPECT_EQ(nameInSound(0), "Orlen");
    EXPECT_EQ(layer(0).getParameterNames().size(), 1024);
    EXPECT_GT(playNote(60), 0.01f);

    // What is loaded already keeps its state.
    rig.setLayer(0, layerSlot::easyValue, 0.25f);
    ASSERT_TRUE(rig.load(0, "Orlen"));
    EXPECT_EQ(nameInSound(0), "Orlen");
    {
        const InstanceAccess::Use plugin(layer(0).instanceAccess());
        EXPECT_NEAR(plugin->getParameter(946), 0.25f, 1e-3f);
    }

    // Others go on sounding when it goes.
    ASSERT_TRUE(rig.load(1, "Hexley"));
    rig.noteOn(60);
    rig.playSeconds(0.2);
    rig.processor.chooseInstrument(0, nullptr);
    EXPECT_FALSE(layer(0).hasInstance());
    EXPECT_EQ(nameInSound(0), "");
    EXPECT_TRUE(layer(0).stateToSave().isEmpty());
    EXPECT_EQ(rig.getLayer(0, layerSlot::easyValue + 3), 0.5f);
    EXPECT_GT(rig.playSeconds(0.2).peak(), silence);
    rig.processor.chooseInstrument(1, nullptr);
    EXPECT_LT(playNote(60), silence);
}

TEST_F(HostedLayerTest, RangesAndTransposeShapeWhatIsHeard)
{
    ASSERT_TRUE(rig.load(0, "Tarn"));
    rig.setLayer(0, layerSlot::keyMin, 60.5f / 127.0f);
    rig.setLayer(0, layerSlot::velocityMin, 64.5f / 127.0f);
    EXPECT_LT(playNote(59), silence);
    EXPECT_LT(playNote(60, 0.3f), silence);
    EXPECT_GT(playNote(60), 0.01f);

    // Transposed by an octave, nothing is left of the sub-oscillator below note 69.
    rig.setLayer(0, layerSlot::transpose, 36.5f / 48.0f);
    rig.play(2);
    rig.noteOn(69, 0.8f);
    rig.playSeconds(0.2);
    const auto sound = rig.playSeconds(0.5);
    EXPECT_GT(sound.amplitudeAt(440.0, rig.rate), 20.0 * sound.amplitudeAt(220.0, rig.rate));
}

TEST_F(HostedLayerTest, ADrumInstrumentTurnsItsZonesOn)
{
    ASSERT_TRUE(rig.load(2, "Dorvik"));
    EXPECT_EQ(rig.getLayer(2, layerSlot::drumMode), 1.0f);
    EXPECT_EQ(rig.getLayer(2, layerSlot::drumPage), 0.1f);

    for (int zone = 0; zone < numZones; ++zone)
        rig.setLayer(2, layerSlot::zoneOn + zone, 0.0f);

    rig.setLayer(2, layerSlot::zoneOn + 4, 1.0f);
    rig.setLayer(2, layerSlot::zoneKeys + 8, 36.5f / 127.0f);
    rig.setLayer(2, layerSlot::zoneKeys + 9, 36.5f / 127.0f);
    EXPECT_GT(playNote(36), 0.01f);
    EXPECT_LT(playNote(37), silence);
    ASSERT_TRUE(rig.load(2, "Tarn"));
    EXPECT_EQ(rig.getLayer(2, layerSlot::drumMode), 0.0f);
}

TEST_F(HostedLayerTest, EasyParametersMirrorBothWays)
{
    ASSERT_TRUE(rig.load(1, "Hexley"));
    const InstanceAccess::Use plugin(layer(1).instanceAccess());

    for (int easy = 0; easy < numEasyParameters; ++easy)
    {
        const int target = decodeParamInt(rig.getLayer(1, layerSlot::easyMapping + easy));
        EXPECT_EQ(target, findInstrument("Hexley")->easyMapping[static_cast<size_t>(easy)]);
        EXPECT_EQ(rig.getLayer(1, layerSlot::easyValue + easy), plugin->getParameter(target));
        rig.setLayer(1, layerSlot::easyValue + easy, 0.25f);
        EXPECT_NEAR(plugin->getParameter(target), 0.25f, 1e-3f);
    }

    // A new mapping shows the value that its parameter has.
    rig.setLayer(1, layerSlot::easyValue + 1, 0.75f);
    rig.setLayer(1, layerSlot::easyMapping, encodeParamInt(62));
    EXPECT_NEAR(rig.getLayer(1, layerSlot::easyValue), 0.75f, 1e-3f);

    for (const int unmapped : {0, -5, 1024, 32767})
    {
        rig.setLayer(1, layerSlot::easyMapping + 2, encodeParamInt(unmapped));
        rig.setLayer(1, layerSlot::easyValue + 2, 0.9f);
    }

    // A change made by the instrument itself comes back as the Easy value.
    layer(1).audioProcessorParameterChanged(plugin.get(), 70, 0.375f);
    EXPECT_EQ(rig.getLayer(1, layerSlot::easyValue + 5), 0.375f);
}

TEST_F(HostedLayerTest, ProgramsAreChosenAndSeen)
{
    ASSERT_TRUE(rig.load(0, "Tarn"));
    layer(0).chooseProgram(4);
    const InstanceAccess::Use plugin(layer(0).instanceAccess());
    EXPECT_EQ(plugin->getCurrentProgram(), 3);
    layer(0).needsDisplayUpdate.store(false);
    plugin->setCurrentProgram(1);
    EXPECT_TRUE(pumpUntil([&] { return layer(0).needsDisplayUpdate.load(); }, 1000));
}

TEST_F(HostedLayerTest, AnInstrumentThatIsNoneLeavesTheLayerMissing)
{
    juce::MemoryBlock whole;
    ASSERT_TRUE(juce::File(QUOREL_TEST_INSTRUMENTS)
                    .getChildFile("Tarn/Tarn" + pluginFileEnding())
                    .loadFileAsData(whole));
    const auto file = rig.user.scratch.child("Orlen" + pluginFileEnding());
    juce::PluginDescription description;
    description.name = "Orlen";
    description.pluginFormatName = "VST";
    description.fileOrIdentifier = file.getFullPathName();

    // A copy that was cut short would take the process down in the loader of Linux.
    for (const auto& bytes : {juce::MemoryBlock("no plug-in", 10), juce::MemoryBlock(whole.getData(), 4096)})
    {
        rig.interaction.alerts.clear();
        ASSERT_TRUE(file.replaceWithData(bytes.getData(), bytes.getSize()));
        EXPECT_FALSE(layer(3).loadPlugin(description));
        EXPECT_EQ(layer(3).getMissingPluginName(), "Orlen");
        ASSERT_EQ(rig.interaction.alerts.size(), 1);
        EXPECT_TRUE(rig.interaction.alerts[0].startsWith("Error|Sorry, cannot load Orlen\n\n"));
        EXPECT_LT(playNote(60), silence);
        rig.processor.chooseInstrument(3, nullptr);
        EXPECT_FALSE(layer(3).isMissing());
    }
}

TEST_F(HostedLayerTest, AThirdPartyInstrumentPlaysToo)
{
    const juce::File amsynth("/usr/lib/vst/amsynth_vst.so");

    if (!amsynth.existsAsFile())
        GTEST_SKIP() << "amsynth isn't installed";

#if defined(__SANITIZE_ADDRESS__)
    // It never frees some of its memory.
    const __lsan::ScopedDisabler itsLeaks;
#endif
    juce::VSTPluginFormat format;
    juce::OwnedArray<juce::PluginDescription> found;
    format.findAllTypesForFile(found, amsynth.getFullPathName());
    ASSERT_EQ(found.size(), 1);
    ASSERT_TRUE(layer(0).loadPlugin(*found[0]));
    EXPECT_TRUE(layer(0).stateToSave().isEmpty()) << "an instrument outside the table is never saved";
    EXPECT_GT(playNote(60), 0.001f);
    const auto state = rig.state();
    layer(0).unloadPlugin();
    EXPECT_LT(playNote(60), silence);
    rig.restore(state);
    EXPECT_FALSE(layer(0).hasInstance());
}

TEST_F(HostedLayerTest, AnOpenWindowGetsTimeToGoBeforeItsInstrument)
{
    ASSERT_TRUE(rig.load(0, "Imre"));
    const auto state = rig.state();
    bool closed = false;
    layer(0).setWindow(std::make_unique<OpenWindow>(closed));
    rig.restore(state);
    EXPECT_TRUE(closed);
    EXPECT_TRUE(layer(0).hasInstance()) << "the instrument lives on for half a second";
    EXPECT_EQ(rig.play(4).peak(), 0.0f);
    EXPECT_TRUE(rig.playUntil([&] { return !layer(0).hasInstance(); }, 2000));
    EXPECT_TRUE(rig.playUntil([&] { return layer(0).hasInstance(); }, 5000))
        << "2.5 seconds later the state is back";
    EXPECT_GT(playNote(60), 0.001f);

    // A preset waits, too.
    closed = false;
    layer(0).setWindow(std::make_unique<OpenWindow>(closed));
    ASSERT_TRUE(rig.processor.getSoundChange().requestPreset("99 Default Preset", "Default Preset"));
    EXPECT_TRUE(closed);
    rig.play(501);
    ProcessorRig::pump(1500);
    EXPECT_TRUE(layer(0).hasInstance()) << "2.5 seconds from the end of the fade";
    EXPECT_TRUE(rig.playUntil([&] { return !layer(0).hasInstance(); }, 5000));
}

} // namespace quorel::test
