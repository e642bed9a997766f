// SPDX-License-Identifier: GPL-3.0-or-later
// Plays every factory preset as the build makes it and checks its level, and that the bank as a whole shows
// what the instrument can do.
#include "support/ProcessorRig.h"

#include "effects/FxTypes.h"
#include "parameters/Categories.h"
#include "parameters/ParameterCodings.h"
#include "platform/FileOperations.h"
#include "presets/PresetFiles.h"
#include "presets/StateChunk.h"

#include <algorithm>
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

juce::Array<juce::File> factoryFolders()
{
    auto folders = juce::File(QUOREL_TEST_DIST)
                       .getChildFile("presets")
                       .findChildFiles(juce::File::findDirectories, false);
    folders.sort();
    return folders;
}

juce::Array<juce::File> presetsIn(const juce::File& folder)
{
    auto files = folder.findChildFiles(juce::File::findFiles, false, juce::String("*") + presetFileEnding);
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

/** Four-note chords low, in the middle and high, both hands, a soft one, and the drums. */
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

/** What a preset shows of the instrument, read from its parameters alone. */
struct Traits
{
    std::set<juce::String> effects;
    bool split = false, velocityLayer = false, zones = false, multi = false, eq = false, easyMapping = false;
};

void addLayerTraits(const StateChunk& chunk, int layer, Traits& traits)
{
    const auto get = [&](int n)
    { return chunk.parameters[static_cast<std::size_t>(layerParameter(layer, n))]; };
    juce::String name;
    for (int i = 0; get(layerSlot::pluginNameText + i) > 0.0f; ++i)
        name += decodeParamChar(get(layerSlot::pluginNameText + i));
    const auto* row = findInstrument(name);
    if (row == nullptr)
        return;

    constexpr float topOfSplit = 0.75f;
    traits.zones = traits.zones || get(layerSlot::drumMode) == 1.0f;
    traits.split = traits.split || get(layerSlot::keyMax) < topOfSplit;
    traits.velocityLayer = traits.velocityLayer || get(layerSlot::velocityMax) < 1.0f;
    for (int easy = 0; easy < numEasyParameters; ++easy)
        if (decodeParamInt(get(layerSlot::easyMapping + easy)) !=
            row->easyMapping[static_cast<std::size_t>(easy)])
            traits.easyMapping = true;
}

Traits traitsOf(const StateChunk& chunk)
{
    Traits traits;
    const auto get = [&](int index) { return chunk.parameters[static_cast<std::size_t>(index)]; };
    for (int k = 0; k < numFxBlocks; ++k)
        if (get(slot::fxOn + k) != 0.0f)
            traits.effects.insert(
                fxTypes[static_cast<std::size_t>(fxTypeFromParameter(get(slot::fxType + k)))].name);
    for (int t = 0; t < numMultiTargets; ++t)
        if (decodeParamInt(get(slot::multiAssignment + t)) > 0 && get(slot::multiKnob + t) != 0.5f)
            traits.multi = true;
    for (int unit = 0; unit < numEqUnits; ++unit)
        traits.eq = traits.eq || get(eqBase(unit)) != 0.0f;
    for (int layer = 0; layer < numLayers; ++layer)
        addLayerTraits(chunk, layer, traits);
    return traits;
}

class FactoryFolder : public testing::TestWithParam<int>
{
};
} // namespace

TEST_P(FactoryFolder, everyPresetLoadsWholeAndPlaysAtASaneLevel)
{
    const auto folders = factoryFolders();
    ASSERT_LT(GetParam(), folders.size());
    for (const auto& file : presetsIn(folders[GetParam()]))
    {
        SCOPED_TRACE(file.getFileName());
        juce::MemoryBlock bytes;
        ASSERT_TRUE(readWholeFile(file, bytes));

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
                  << juce::String(meter.rms(), 1).paddedLeft(' ', 7) << "  "
                  << file.getFileNameWithoutExtension() << std::endl;
    }
}

INSTANTIATE_TEST_SUITE_P(FactoryBank, FactoryFolder, testing::Range(0, 6));

TEST(FactoryBank, showsWhatTheInstrumentCanDo)
{
    std::set<juce::String> effects;
    int count = 0, splits = 0, velocityLayers = 0, zones = 0, multis = 0, eqs = 0, mappings = 0;
    for (const auto& folder : factoryFolders())
    {
        for (const auto& file : presetsIn(folder))
        {
            SCOPED_TRACE(file.getFullPathName());
            juce::MemoryBlock bytes;
            ASSERT_TRUE(readWholeFile(file, bytes));
            StateChunk chunk;
            ASSERT_EQ(readStateChunk(bytes.getData(), bytes.getSize(), chunk), ChunkStatus::valid);
            EXPECT_EQ(chunk.presetName, file.getFileNameWithoutExtension());
            EXPECT_EQ(chunk.folderName, folder.getFileName());
            EXPECT_TRUE(std::any_of(chunk.parameters.begin() + firstCategoryParameter,
                                    chunk.parameters.begin() + firstCategoryParameter + numCategoryParameters,
                                    [](float value) { return value > 0.0f; }))
                << "no category";

            const auto traits = traitsOf(chunk);
            effects.insert(traits.effects.begin(), traits.effects.end());
            splits += traits.split ? 1 : 0;
            velocityLayers += traits.velocityLayer ? 1 : 0;
            zones += traits.zones ? 1 : 0;
            multis += traits.multi ? 1 : 0;
            eqs += traits.eq ? 1 : 0;
            mappings += traits.easyMapping ? 1 : 0;
            ++count;
        }
    }

    EXPECT_GE(count, 48);
    EXPECT_EQ(factoryFolders().size(), 6);
    for (int type = 1; type < fxTypeCount; ++type)
        EXPECT_EQ(effects.count(fxTypes[static_cast<std::size_t>(type)].name), 1u)
            << fxTypes[static_cast<std::size_t>(type)].name << " is in no preset";
    for (const int shown : {splits, velocityLayers, zones, multis, eqs, mappings})
        EXPECT_GE(shown, 3);
}

} // namespace quorel
