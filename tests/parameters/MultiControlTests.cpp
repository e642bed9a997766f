// SPDX-License-Identifier: GPL-3.0-or-later
// Four faders that move sixteen targets. Facts: value = base + (knob - 0.5) * 2 * fader, in whatever order
// they move.
#include "parameters/ParameterCodings.h"
#include "support/ProcessorRig.h"

#include <gtest/gtest.h>

namespace quorel::test
{

namespace
{
constexpr int fader = slot::multiFader;
constexpr int knob = slot::multiKnob;
constexpr int assignment = slot::multiAssignment;
/** List number 2: the pan of layer 1. */
constexpr int panOfLayer1 = 233;
} // namespace

class MultiControlTest : public testing::Test
{
protected:
    void assign(int t, int listNumber) { rig.set(assignment + t, encodeParamInt(listNumber)); }

    ProcessorRig rig;
};

TEST_F(MultiControlTest, OrderOfMovesDoesNotMatter)
{
    rig.set(panOfLayer1, 0.4f);
    assign(0, 2);
    juce::Random random(7);
    float knobNow = 0.5f;
    float faderNow = 0.0f;

    for (int i = 0; i < 200; ++i)
    {
        const float to = random.nextFloat();
        const bool moveKnob = random.nextBool();
        (moveKnob ? knobNow : faderNow) = to;
        rig.set(moveKnob ? knob : fader, to);
        const float expected = 0.4f + (knobNow - 0.5f) * 2.0f * faderNow;
        EXPECT_NEAR(rig.processor.multiControls().runningValue(0), expected, 1e-4f);
        EXPECT_NEAR(rig.get(panOfLayer1), juce::jlimit(0.0f, 1.0f, expected), 1e-4f);
    }
}

TEST_F(MultiControlTest, AssigningIsSilentAndRemovingTakesTheContributionOut)
{
    rig.set(panOfLayer1, 0.3f);
    rig.set(fader, 1.0f);
    rig.set(knob, 0.9f);
    assign(0, 2);
    EXPECT_EQ(rig.get(knob), 0.5f);
    EXPECT_NEAR(rig.get(panOfLayer1), 0.3f, 1e-6f);
    rig.set(knob, 0.75f);
    EXPECT_NEAR(rig.get(panOfLayer1), 0.8f, 1e-6f);
    rig.set(assignment, 0.0f);
    EXPECT_NEAR(rig.get(panOfLayer1), 0.3f, 1e-6f);
    EXPECT_EQ(rig.get(knob), 0.5f);
    EXPECT_EQ(rig.processor.multiControls().targetParameter(0), noParameter);
    rig.set(fader, 0.0f);
    EXPECT_NEAR(rig.get(panOfLayer1), 0.3f, 1e-6f);
}

TEST_F(MultiControlTest, OneFaderMovesItsOwnFourByTheirDepths)
{
    for (int t = 0; t < 8; ++t)
    {
        rig.set(layerParameter(t % 4, 238 + t / 4), 0.5f);
        assign(t, 18 * (t % 4) + 3 + t / 4);
        rig.set(knob + t, static_cast<float>(t % 4) / 4.0f);
    }

    rig.set(fader, 0.5f);

    for (int t = 0; t < 4; ++t)
    {
        EXPECT_NEAR(rig.get(layerParameter(t, 238)), 0.5f + (static_cast<float>(t) / 4.0f - 0.5f), 1e-6f);
        EXPECT_EQ(rig.get(layerParameter(t, 239)), 0.5f);
    }
}

TEST_F(MultiControlTest, ADamagedNumberDoesNoHarm)
{
    for (const int number : {73, 100, 1000, 32767})
    {
        assign(5, number);
        rig.set(fader + 1, 1.0f);
        rig.set(knob + 5, 1.0f);
        rig.set(assignment + 5, 0.0f);
    }

    EXPECT_EQ(rig.processor.multiControls().targetParameter(5), noParameter);
}

TEST_F(MultiControlTest, ARestoredSoundGoesOnWhereItWas)
{
    rig.set(panOfLayer1, 0.2f);
    assign(0, 2);
    rig.set(knob, 0.75f);
    rig.set(fader, 0.5f);
    const auto state = rig.state();
    rig.processor.resetAllParameters();
    rig.restore(state);
    EXPECT_NEAR(rig.get(panOfLayer1), 0.45f, 1e-6f);
    rig.set(fader, 1.0f);
    EXPECT_NEAR(rig.get(panOfLayer1), 0.7f, 1e-6f);
}

TEST_F(MultiControlTest, AResetLeavesATargetAtItsBase)
{
    // The layers are reset before the fader, which then takes its share back.
    rig.set(panOfLayer1, 0.4f);
    assign(0, 2);
    rig.set(knob, 1.0f);
    rig.set(fader, 0.5f);
    rig.processor.resetAllParameters();
    EXPECT_NEAR(rig.get(panOfLayer1), 0.4f, 1e-6f);
    EXPECT_EQ(rig.processor.multiControls().targetParameter(0), noParameter);
}

TEST_F(MultiControlTest, ANewInstrumentFreesTheTargetsInItsEasyValues)
{
    assign(0, 7);
    assign(1, 18 + 7);
    assign(2, 2);
    ASSERT_TRUE(rig.load(0, "Zeph"));
    EXPECT_EQ(rig.get(assignment), 0.0f);
    EXPECT_GT(decodeParamInt(rig.get(assignment + 1)), 0);
    EXPECT_GT(decodeParamInt(rig.get(assignment + 2)), 0);
}

} // namespace quorel::test
