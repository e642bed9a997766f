// SPDX-License-Identifier: GPL-3.0-or-later
// Plays every factory preset as the build makes it and checks its level.
#include "support/ProcessorRig.h"

#include "parameters/Categories.h"
#include "platform/FileOperations.h"
#include "presets/StateChunk.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <iostream>
#include <set>

namespace quorel
{
namespace
{
constexpr int numFolders = 6;
constexpr juce::uint8 forte = 110;
constexpr juce::uint8 piano = 45;
constexpr double quietestRms = -34.0;
constexpr double loudestRms = -14.0;

juce::Array<juce::File> sorted(juce::Array<juce::File> files)
{
    files.sort();
    return files;
}

/** What was played, and the root mean square of those of its twentieths of a second that aren't silent. */
struct LevelMeter
{
    void add(const test::Sound& sound, double rate)
    {
        peak = std::max(peak, sound.peak());
        isFinite = isFinite && sound.isFinite();
        const int window = static_cast<int>(rate / 20.0);
        for (int from = 0; from + window <= sound.samples.getNumSamples(); from += window)
        {
            const auto left = static_cast<double>(sound.samples.getRMSLevel(0, from, window));
            const auto right = static_cast<double>(sound.samples.getRMSLevel(1, from, window));
            constexpr double silence = 1.0e-6;
            if (const double mean = (left * left + right * right) / 2.0; mean > silence)
            {
                sum += mean;
                ++windows;
            }
        }
    }

    double rms() const { return windows == 0 ? -200.0 : 10.0 * std::log10(sum / windows); }

    float peak = 0.0f;
    bool isFinite = true;
    double sum = 0.0;
    int windows = 0;
};

void playChord(test::ProcessorRig& rig, LevelMeter& meter, const std::vector<int>& keys, juce::uint8 velocity,
               double seconds)
{
    for (const int key : keys)
        rig.send(juce::MidiMessage::noteOn(1, key, velocity));
    meter.add(rig.playSeconds(seconds), rig.rate);
    for (const int key : keys)
        rig.noteOff(key);
    meter.add(rig.playSeconds(0.25), rig.rate);
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
    meter.add(rig.playSeconds(0.5), rig.rate);
}

class FactoryFolder : public testing::TestWithParam<int>
{
};
} // namespace

TEST_P(FactoryFolder, everyPresetLoadsWholeAndPlaysAtASaneLevel)
{
    const auto presets = juce::File(QUOREL_TEST_DIST).getChildFile("presets");
    const auto folders = sorted(presets.findChildFiles(juce::File::findDirectories, false));
    ASSERT_EQ(folders.size(), numFolders);
    for (const auto& file : sorted(folders[GetParam()].findChildFiles(juce::File::findFiles, false)))
    {
        SCOPED_TRACE(file.getFileName());
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

        const auto flags = categoriesOf(rig.processor);
        EXPECT_NE(std::count(flags.begin(), flags.end(), 1), 0) << "no category";

        LevelMeter meter;
        playPhrase(rig, meter);
        EXPECT_TRUE(meter.isFinite);
        EXPECT_LT(meter.peak, 1.0f);
        EXPECT_GT(meter.rms(), quietestRms);
        EXPECT_LT(meter.rms(), loudestRms);
        std::cout << juce::String(juce::Decibels::gainToDecibels(meter.peak), 1).paddedLeft(' ', 6)
                  << juce::String(meter.rms(), 1).paddedLeft(' ', 7) << "  "
                  << file.getFileNameWithoutExtension() << std::endl;
    }
}

INSTANTIATE_TEST_SUITE_P(FactoryBank, FactoryFolder, testing::Range(0, numFolders));

} // namespace quorel
