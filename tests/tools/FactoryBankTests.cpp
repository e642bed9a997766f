// SPDX-License-Identifier: GPL-3.0-or-later
// Every factory preset as it comes out of the build, played: its level, and
// what the bank as a whole has to show.
#include "common/QuietLogger.h"
#include "support/ProcessorRig.h"

#include "effects/FxTypes.h"
#include "engine/ParameterCodings.h"
#include "presets/Categories.h"
#include "presets/PresetFiles.h"
#include "presets/StateChunk.h"

#include <gtest/gtest.h>
#include <iostream>
#include <set>

namespace quorel
{
namespace
{
constexpr juce::uint8 forte = 110;
constexpr juce::uint8 piano = 45;
constexpr double quietestRms = -34.0;
constexpr double loudestRms = -14.0;

juce::Array<juce::File> factoryPresets()
{
    auto files = juce::File(QUOREL_TEST_DIST)
                     .getChildFile("presets")
                     .findChildFiles(juce::File::findFiles, true, juce::String("*") + presetFileEnding);
    files.sort();
    return files;
}

/** Peak, and root mean square of the tenths of a second that aren't silent. */
class LevelMeter
{
public:
    explicit LevelMeter(double rate)
        : windowLength(static_cast<int>(rate * 0.1))
    {
    }

    void add(const juce::AudioBuffer<float>& samples)
    {
        peakLevel = std::max(peakLevel, samples.getMagnitude(0, samples.getNumSamples()));
        for (int i = 0; i < samples.getNumSamples(); ++i)
        {
            for (int channel = 0; channel < 2; ++channel)
            {
                const double x = static_cast<double>(samples.getSample(channel, i));
                isSound = isSound && std::isfinite(x);
                windowSum += x * x * 0.5;
            }
            if (++windowFill == windowLength)
                closeWindow();
        }
    }

    double peak() const { return juce::Decibels::gainToDecibels(static_cast<double>(peakLevel), -200.0); }

    double rms() const
    {
        return windows == 0 ? -200.0 : 10.0 * std::log10(sum / static_cast<double>(windows));
    }

    bool isFinite() const { return isSound; }

private:
    void closeWindow()
    {
        constexpr double silence = 1.0e-6;
        if (const double mean = windowSum / windowLength; mean > silence)
        {
            sum += mean;
            ++windows;
        }
        windowSum = 0.0;
        windowFill = 0;
    }

    const int windowLength;
    float peakLevel = 0.0f;
    double windowSum = 0.0;
    int windowFill = 0;
    double sum = 0.0;
    int windows = 0;
    bool isSound = true;
};

void playChord(test::ProcessorRig& rig, LevelMeter& meter, const std::vector<int>& keys, juce::uint8 velocity,
               double seconds)
{
    for (const int key : keys)
        rig.send(juce::MidiMessage::noteOn(1, key, velocity));
    meter.add(rig.playSeconds(seconds).samples);
    for (const int key : keys)
        rig.noteOff(key);
    meter.add(rig.playSeconds(0.25).samples);
}

/** The keys of a drum layer's zones, each once. */
std::vector<int> drumKeys(test::ProcessorRig& rig)
{
    std::set<int> keys;
    for (int layer = 0; layer < numLayers; ++layer)
        for (int zone = 0; zone < numZones; ++zone)
            if (rig.getLayer(layer, layerSlot::drumMode) == 1.0f &&
                rig.getLayer(layer, layerSlot::zoneOn + zone) != 0.0f)
                keys.insert(static_cast<int>(rig.getLayer(layer, layerSlot::zoneKeys + 2 * zone) * 127.0f));
    return {keys.begin(), keys.end()};
}

/** Four-note chords low, in the middle and high, both hands, a soft one, and
 * the drums. */
void playPhrase(test::ProcessorRig& rig, LevelMeter& meter)
{
    playChord(rig, meter, {36, 43, 48, 52}, forte, 1.2);
    playChord(rig, meter, {60, 64, 67, 71}, forte, 1.2);
    playChord(rig, meter, {72, 76, 79, 84}, forte, 1.2);
    playChord(rig, meter, {43, 50, 64, 67}, forte, 1.2);
    playChord(rig, meter, {60, 64, 67, 71}, piano, 1.2);
    const auto drums = drumKeys(rig);
    for (const int key : drums)
        playChord(rig, meter, {key}, forte, 0.1);
    if (drums.size() >= 4)
        playChord(rig, meter, {drums[0], drums[1], drums[2], drums[3]}, forte, 0.3);
    meter.add(rig.playSeconds(0.5).samples);
}

struct PresetTraits
{
    std::set<juce::String> effects;
    bool split = false, velocityLayer = false, zones = false, multi = false, eq = false, categories = false,
         easyMapping = false;
};

PresetTraits traitsOf(test::ProcessorRig& rig)
{
    PresetTraits traits;
    for (int k = 0; k < numFxBlocks; ++k)
        if (rig.get(slot::fxOn + k) != 0.0f)
            traits.effects.insert(
                fxTypes[static_cast<std::size_t>(fxTypeFromParameter(rig.get(slot::fxType + k)))].name);
    for (int t = 0; t < numMultiTargets; ++t)
        traits.multi =
            traits.multi || (rig.processor.multiControls().targetParameter(t) != MultiControls::noTarget &&
                             rig.get(slot::multiKnob + t) != 0.5f);
    for (int unit = 0; unit < numEqUnits; ++unit)
        traits.eq = traits.eq || rig.get(eqBase(unit)) != 0.0f;
    for (const auto flag : categoriesOf(rig.processor))
        traits.categories = traits.categories || flag != 0;
    for (int layer = 0; layer < numLayers; ++layer)
    {
        auto& instrument = rig.processor.getLayer(layer);
        const auto* row = findInstrument(instrument.getPluginName());
        if (row == nullptr)
            continue;
        traits.zones = traits.zones || rig.getLayer(layer, layerSlot::drumMode) == 1.0f;
        traits.split = traits.split || rig.getLayer(layer, layerSlot::keyMax) < 0.75f;
        traits.velocityLayer = traits.velocityLayer || rig.getLayer(layer, layerSlot::velocityMax) < 1.0f;
        for (int easy = 0; easy < numEasyParameters; ++easy)
            traits.easyMapping =
                traits.easyMapping || decodeParamInt(rig.getLayer(layer, layerSlot::easyMapping + easy)) !=
                                          row->easyMapping[static_cast<std::size_t>(easy)];
    }
    return traits;
}
} // namespace

TEST(FactoryBank, EveryPresetLoadsWholeAndPlaysAtASaneLevel)
{
    std::set<juce::String> folders, effects;
    int count = 0, splits = 0, velocityLayers = 0, zones = 0, multis = 0, eqs = 0, mappings = 0;
    for (const auto& file : factoryPresets())
    {
        const auto name = file.getParentDirectory().getFileName() + "/" + file.getFileNameWithoutExtension();
        SCOPED_TRACE(name);
        juce::MemoryBlock bytes;
        ASSERT_TRUE(readWholeFile(file, bytes));
        StateChunk chunk;
        ASSERT_EQ(readStateChunk(bytes.getData(), bytes.getSize(), chunk), ChunkStatus::valid);
        EXPECT_EQ(chunk.presetName, file.getFileNameWithoutExtension());
        EXPECT_EQ(chunk.folderName, file.getParentDirectory().getFileName());

        test::ProcessorRig rig;
        rig.restore(bytes);
        test::ProcessorRig::pump(60);
        rig.play(2);
        EXPECT_TRUE(rig.interaction.alerts.isEmpty()) << rig.interaction.alerts.joinIntoString(" ");
        EXPECT_TRUE(rig.state() == bytes) << "what is saved again differs";

        LevelMeter meter(rig.rate);
        playPhrase(rig, meter);
        EXPECT_TRUE(meter.isFinite());
        EXPECT_LT(meter.peak(), 0.0);
        EXPECT_GT(meter.rms(), quietestRms);
        EXPECT_LT(meter.rms(), loudestRms);
        std::cout << juce::String(meter.peak(), 1).paddedLeft(' ', 6)
                  << juce::String(meter.rms(), 1).paddedLeft(' ', 7) << "  " << name << std::endl;

        const auto traits = traitsOf(rig);
        EXPECT_TRUE(traits.categories);
        folders.insert(chunk.folderName);
        effects.insert(traits.effects.begin(), traits.effects.end());
        splits += traits.split ? 1 : 0;
        velocityLayers += traits.velocityLayer ? 1 : 0;
        zones += traits.zones ? 1 : 0;
        multis += traits.multi ? 1 : 0;
        eqs += traits.eq ? 1 : 0;
        mappings += traits.easyMapping ? 1 : 0;
        ++count;
    }

    EXPECT_GE(count, 48);
    EXPECT_GE(folders.size(), 6u);
    for (int type = 1; type < fxTypeCount; ++type)
        EXPECT_EQ(effects.count(fxTypes[static_cast<std::size_t>(type)].name), 1u)
            << fxTypes[static_cast<std::size_t>(type)].name << " is in no preset";
    for (const int shown : {splits, velocityLayers, zones, multis, eqs, mappings})
        EXPECT_GE(shown, 3);
}

} // namespace quorel
