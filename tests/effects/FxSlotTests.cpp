// SPDX-License-Identifier: GPL-3.0-or-later
#include "EffectsTestTools.h"
#include "effects/Lfo.h"
#include "effects/SyncTables.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>

namespace quorel::test
{
TEST(FxTypes, NothingOutsideTheTableIsRead)
{
    for (int entry : {-1, 330, 1 << 30})
        EXPECT_STREQ(fxParameterLabel(entry), "-") << entry;
    EXPECT_EQ(fxTypeFromParameter(1.0f), fxTypeCount - 1);
    EXPECT_EQ(fxTypeFromParameter(NAN), 0);
}

TEST(FxSlot, MixLevelAndPanFollowTheirLaws)
{
    struct Case
    {
        float volume, mix, pan;
        double left, right; // gain of the dry signal through "None", whose wet part is silent
    };

    const Case cases[] = {
        {0.75f, 0.5f, 0.5f, 1.0, 1.0},
        {0.75f, 0.75f, 0.5f, 0.5, 0.5},
        {0.75f, 1.0f, 0.5f, 0.0, 0.0},
        {0.75f, 0.5f, 1.0f, 0.0, 1.0},
        {0.75f, 0.5f, 0.25f, 1.0, 0.5},
        {1.0f, 0.0f, 0.5f, 10.0, 10.0},
        {0.001f, 0.0f, 0.5f, 1.0093e-3, 1.0093e-3},
        {0.0009f, 0.0f, 0.5f, 0.0, 0.0},
        {0.5f, NAN, 0.5f, 0.1, 0.1},
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

TEST(FxSlot, TheSampleCountNeverReachesTheSign)
{
    auto slot = makeSlot(0);
    slot->writeCount = 0x7ffffff0u;
    const auto before = slot->writeCount;
    run(*slot, {}, silence(64));
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

    // A Kappel pattern is as long as its label: half a note at 1/2. Dotted entries keep factors of their own.
    for (std::size_t i = 4; i < kappelSpeedTable.size(); ++i)
        EXPECT_NEAR(kappelSpeedTable[i].value * length(kappelSpeedTable[i].label), 0.5, 1e-6) << i;
}

TEST(Lfo, RatesComeFromTheKnob)
{
    EXPECT_EQ(lfoIncTempo(0.0f, 48000.0f, 120.0f), 4194303u); // "off" cycles in four samples
    EXPECT_NEAR(lfoIncFree(0.0f, 1.0f / 1000.0f), 112, 1);
    EXPECT_NEAR(lfoIncFree(1.0f, 1.0f / 48000.0f) * 48000.0 / 16777216.0, 6.875, 0.01);
    EXPECT_NEAR(delayModRate(1.0f, 1.0f / 48000.0f) * 3000.0 / 16777216.0, 27.5, 0.01);
}

TEST(Lfo, WavesHaveTheirShapes)
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
}
} // namespace quorel::test
