// SPDX-License-Identifier: GPL-3.0-or-later
#include "EffectsTestTools.h"
#include "effects/DriveCurve.h"
#include "effects/EffectMath.h"
#include "effects/Lfo.h"
#include "effects/SyncTables.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <map>
#include <set>

namespace quorel::test
{
TEST(FxTypes, TableHoldsTheTypesInOrder)
{
    EXPECT_STREQ(fxTypes[6].name, "HQ Reverb");
    EXPECT_STREQ(fxTypes[26].name, "Kappel");
    EXPECT_STREQ(fxTypes[32].name, "AutoWah");
    EXPECT_STREQ(fxParameterLabel(29 * 10 + 6), "LFO Amt");
    EXPECT_STREQ(fxParameterLabel(31 * 10 + 9), "Delay Vol");

    // Labels start at the first slot and leave no gap, and nothing is read outside the table.
    for (int entry : {-1, 0, 26 * 10 + 5, 26 * 10 + 6, 330, 1 << 30})
        EXPECT_STREQ(fxParameterLabel(entry), "-") << entry;
    for (const FxType& type : fxTypes)
        for (std::size_t j = 1; j < type.parameters.size(); ++j)
            EXPECT_TRUE(std::strcmp(type.parameters[j].label, "-") == 0 ||
                        std::strcmp(type.parameters[j - 1].label, "-") != 0)
                << type.name;

    EXPECT_EQ(fxTypeFromParameter(1.0f), 32);
    EXPECT_EQ(fxTypeFromParameter(0.999f), 31);
    EXPECT_EQ(fxTypeFromParameter(NAN), 0);
}

TEST(FxTypes, StartValuesAndBipolarKnobs)
{
    // What isn't listed starts at 0, with a knob that has its zero at the left.
    const std::map<int, std::vector<float>> starts = {
        {1, {0.54f, 1, 0.6f, 0.92f, 0.19f}},
        {2, {0.67f, 0.57f, 1, 0.69f, 0.5f, 1, 0.91f, 0.19f}},
        {3, {0.54f, 1, 0.6f, 0.92f, 0.19f}},
        {4, {0.67f, 0.57f, 1, 0.69f, 0.5f, 1, 0.91f, 0.19f}},
        {5, {0.1f, 0.75f, 0, 0, 0.75f, 0.5f}},
        {6, {0.69f, 0.79f, 0.75f, 0.09f, 0, 0.97f, 0.06f}},
        {7, {0.481f, 0.44f, 0.42f, 1, 0.36f, 0, 0.98f}},
        {8, {0.481f, 0.44f, 0.42f, 1, 0.36f, 0, 0.98f}},
        {9, {0.41f, 0.34f, 0.65f, 1, 0.35f, 0.56f, 0.36f}},
        {10, {0.49f, 0.36f, 0.685f, 1, 0.34f, 0.855f, 1, 1}},
        {11, {0.15f, 1, 0.43f, 1, 0.91f, 0, 0.92f, 0.19f}},
        {12, {0.15f, 1, 0.43f, 1, 0.91f, 0, 0.92f, 0.19f}},
        {13, {0.5f, 0.53f, 0.57f, 0.85f, 0.44f, 1, 0.91f, 0.68f}},
        {14, {0.5f, 0.53f, 0.57f, 0.85f, 0.44f, 1, 0.91f, 0.68f}},
        {15, {0, 0.5f, 1}},
        {16, {0.88f, 0.72f, 0.57f, 0.46f, 0.81f, 0.28f, 0.5f}},
        {17, {0, 0.5f, 0, 0, 0, 1, 0, 0.5f}},
        {18, {0.52f, 0.95f, 1, 0.45f}},
        {19, {0, 0, 0, 1}},
        {20, {0.5f, 0.28f, 0.2f, 0.5f, 1, 0, 0.5f}},
        {21, {1, 0, 0.5f, 0.5f, 0.5f}},
        {22, {0, 0, 0.5f, 0.5f, 0.5f}},
        {23, {1, 0.24f, 0.31f, 0.92f, 0.19f}},
        {24, {0, 1, 0, 0.48f, 1}},
        {25, {0, 1, 0, 0.48f, 1}},
        {26, {0.46f, 0.7f}},
        {27, {0.5f, 0.29f, 0.2f, 0.2f, 0.5f}},
        {29, {0, 0, 0.5f, 0, 0, 0, 0.5f, 0.5f, 1}},
        {30, {0.75f, 0.5f, 0, 0.5f}},
        {31, {0, 1, 0, 0, 0.48f, 1, 0.5f}},
        {32, {0, 0.25f, 1, 0.5f, 0.2f, 0.25f}},
    };
    const std::set<std::pair<int, int>> bipolar = {{1, 2},  {3, 2},  {19, 2}, {2, 3},  {2, 4},  {4, 3},
                                                   {4, 4},  {5, 1},  {5, 5},  {11, 4}, {12, 4}, {16, 1},
                                                   {16, 6}, {18, 3}, {20, 3}, {29, 9}};

    for (int type = 0; type < fxTypeCount; ++type)
    {
        std::vector<float> expected = starts.count(type) != 0 ? starts.at(type) : std::vector<float>();
        expected.resize(fxParameterCount);
        for (int j = 0; j < fxParameterCount; ++j)
        {
            const FxParameter& parameter =
                fxTypes[static_cast<std::size_t>(type)].parameters[static_cast<std::size_t>(j)];
            EXPECT_EQ(parameter.start, expected[static_cast<std::size_t>(j)]) << type << ' ' << j;
            EXPECT_EQ(parameter.bipolar, bipolar.count({type, j}) != 0) << type << ' ' << j;
        }
    }
}

TEST(FxSlot, MixLevelAndPanFollowTheirLaws)
{
    struct Case
    {
        float volume, mix, pan;
        double left, right; // gain of the dry signal through "None", whose wet part is silent
    };

    const Case cases[] = {
        {0.75f, 0.0f, 0.5f, 1.0, 1.0},
        {0.75f, 0.5f, 0.5f, 1.0, 1.0},
        {0.75f, 0.75f, 0.5f, 0.5, 0.5},
        {0.75f, 1.0f, 0.5f, 0.0, 0.0},
        {0.75f, 0.5f, 0.0f, 1.0, 0.0},
        {0.75f, 0.5f, 1.0f, 0.0, 1.0},
        {0.75f, 0.5f, 0.25f, 1.0, 0.5},
        {1.0f, 0.0f, 0.5f, 10.0, 10.0},
        {0.001f, 0.0f, 0.5f, 1.0093e-3, 1.0093e-3},
        {0.0009f, 0.0f, 0.5f, 0.0, 0.0},
        {0.5f, NAN, 0.5f, 0.1, 0.1},
        {0.75f, 0.0f, 0.875f, 0.25, 1.0},
    };

    auto slot = makeSlot(0);
    for (const Case& c : cases)
    {
        fxSetMix(*slot, c.volume, c.mix, c.pan);
        float l = 0.0f, r = 0.0f;
        fxProcessSample(*slot, 0.5f, -0.25f, &l, &r);
        EXPECT_NEAR(l, 0.5 * c.left, 1e-5) << c.volume << ' ' << c.mix << ' ' << c.pan;
        EXPECT_NEAR(r, -0.25 * c.right, 1e-5) << c.volume << ' ' << c.mix << ' ' << c.pan;
    }
}

TEST(FxSlot, WhatIsNoSoundIsSilence)
{
    auto slot = makeSlot(0);
    fxSetMix(*slot, 0.75f, 0.0f, 0.5f);
    for (float bad : {NAN, INFINITY, -INFINITY, 1.0e30f})
    {
        float l = 0.0f, r = 0.0f;
        fxProcessSample(*slot, bad, 0.5f, &l, &r);
        EXPECT_NEAR(l, 0.0, 1e-9);
        EXPECT_NEAR(r, 0.5, 1e-6);
    }

    // Nor do rates and tempi without sense leave a trace.
    fxInit(*slot, NAN);
    EXPECT_EQ(slot->sampleRate, 44100.0f);
    slot->type = 1;
    const float p[fxParameterCount] = {};
    for (float bpm : {0.0f, -1.0f, NAN, INFINITY})
    {
        fxUpdate(*slot, p, bpm);
        EXPECT_TRUE(slot->bpm > 0.0f && std::isfinite(slot->samplesPerWhole)) << bpm;
    }
}

TEST(FxSlot, CountersOutliveInitAndNeverReachTheSign)
{
    auto slot = makeSlot(0);
    Stereo s = silence(1000);
    run(*slot, {}, s);
    changeType(*slot, 0);
    EXPECT_EQ(slot->sampleCount, 1000u);
    EXPECT_EQ(slot->writeCount, 1000u);
    EXPECT_EQ(slot->silenceCount, 0);

    run(*slot, {}, s);
    EXPECT_EQ(slot->silenceCount, 1000);

    slot->writeCount = 0x7ffffff0u;
    const auto before = slot->writeCount;
    Stereo t = silence(64);
    run(*slot, {}, t);
    EXPECT_LT(slot->writeCount, 0x80000000u);
    EXPECT_EQ((slot->writeCount - before) & 0x3ffffu, 64u);
}

TEST(Sync, TablesAgreeWithTheirLabels)
{
    const auto length = [](const std::string& label)
    {
        const auto slash = label.find('/');
        double value = std::stod(label.substr(0, slash)) / std::stod(label.substr(slash + 1));
        if (label.back() == '*')
            value *= 1.5;
        if (label.back() == 'T')
            value *= 2.0 / 3.0;
        return value;
    };

    for (const auto& entry : delaySyncTable)
        EXPECT_NEAR(entry.value, length(entry.label), 1e-7) << entry.label;

    for (std::size_t i = 2; i < lfoSyncTable.size(); ++i)
    {
        EXPECT_NEAR(lfoSyncTable[i].value, length(lfoSyncTable[i].label), 1e-5) << i;
        EXPECT_STREQ(kappelSpeedTable[i].label, lfoSyncTable[i].label);
    }

    // The one entry that doesn't.
    EXPECT_STREQ(lfoSyncTable[1].label, "16/1*");
    EXPECT_EQ(lfoSyncTable[1].value, 18.0f);

    // A Kappel pattern is as long as its label: half a note at 1/2. Dotted entries keep factors of their own.
    for (std::size_t i = 4; i < kappelSpeedTable.size(); ++i)
        EXPECT_NEAR(kappelSpeedTable[i].value * length(kappelSpeedTable[i].label), 0.5, 1e-6) << i;
}

TEST(Sync, PeriodsFollowTheTempo)
{
    for (const float rate : {22050.0f, 44100.0f, 96000.0f})
    {
        for (const float bpm : {33.3f, 120.0f, 174.0f})
        {
            // 1/4 is entry 20: one LFO cycle lasts two quarters, less what a whole 24-bit step rounds away.
            const double quarter = static_cast<double>(rate) * 60.0 / static_cast<double>(bpm);
            EXPECT_NEAR(lfoIncTempo(20.5f / 30.99f, rate, bpm), 16777216.0 / (2.0 * quarter), 1.5)
                << rate << ' ' << bpm;
            EXPECT_NEAR(syncedDelay(10.5f / 14.99f, static_cast<float>(4.0 * quarter)), quarter + 1.0, 0.05);
        }
    }

    EXPECT_EQ(lfoIncTempo(0.0f, 48000.0f, 120.0f), 4194303u); // "off" cycles in four samples
    EXPECT_NEAR(lfoIncFree(0.0f, 1.0f / 1000.0f), 112, 1);
    EXPECT_NEAR(lfoIncFree(1.0f, 1.0f / 48000.0f) * 48000.0 / 16777216.0, 6.875, 0.01);
    EXPECT_NEAR(delayModRate(1.0f, 1.0f / 48000.0f) * 3000.0 / 16777216.0, 27.5, 0.01);
}

TEST(Helpers, WavesAndCurve)
{
    struct Wave
    {
        int wave;
        double start, quarter, half, threeQuarters;
    };

    for (const Wave& w :
         {Wave{0, 0.0, 1.0, 0.0, -1.0}, Wave{1, -1.0, 0.0, 1.0, 0.0}, Wave{2, -1.0, -0.5, 0.0, 0.5},
          Wave{3, 1.0, 0.5, 0.0, -0.5}, Wave{4, -1.0, -1.0, 1.0, 1.0}})
    {
        EXPECT_NEAR(lfoWave(w.wave, 0), w.start, 1e-5) << w.wave;
        EXPECT_NEAR(lfoWave(w.wave, 0x4000), w.quarter, 1e-5) << w.wave;
        EXPECT_NEAR(lfoWave(w.wave, 0x8000), w.half, 1e-5) << w.wave;
        EXPECT_NEAR(lfoWave(w.wave, 0xc000), w.threeQuarters, 1e-5) << w.wave;
    }

    for (const float drive : {0.0f, 0.5f, 3.0f, 255.0f})
    {
        for (const float x : {0.01f, 0.2f, 0.9f, 4.0f})
        {
            const double whole = static_cast<double>(x * (1.0f + drive) / (1.0f + x * drive));
            EXPECT_NEAR(driveCurve(x, drive), std::min(1.0, whole), 1e-6);
            EXPECT_NEAR(driveCurve(-x, drive), -driveCurve(x, drive), 1e-6);
        }
    }

    EXPECT_EQ(truncateTo(NAN, 3, 9), 3);
    EXPECT_EQ(truncateTo(1.0e30f, 3, 9), 9);
    EXPECT_EQ(clampUnit(NAN), 0.0f);
    EXPECT_EQ(clampTo(NAN, 2.0f), 0.0f);
    EXPECT_EQ(clampTo(-INFINITY, 2.0f), -2.0f);
}

TEST(Helpers, StateVariableFilterStaysInBounds)
{
    SvfBanks svf;
    setSvf(svf, 0.8f, 1.0f, 0.0f, 44100.0f);
    SvfRun run(svf.svfA);
    const SvfSetting setting{svf.svfF, svf.svfQ};
    for (int i = 0; i < 44100; ++i)
        run.tick(pairOf(i < 22050 ? (i % 5 < 2 ? 1000.0f : -1000.0f) : 0.0f, 0.0f), setting);
    EXPECT_LT(std::abs(run.low[0]), 100.0);
    EXPECT_LT(std::abs(run.band[0]), 45.0);
}
} // namespace quorel::test
