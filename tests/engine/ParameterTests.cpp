// SPDX-License-Identifier: GPL-3.0-or-later
// The table as a host and an editor see it: names, what a write brings with it, the resets.
#include "parameters/ParameterCatalogue.h"
#include "parameters/ParameterCodings.h"
#include "parameters/ParameterText.h"
#include "support/ProcessorRig.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>

namespace quorel::test
{

TEST(ParameterNames, FollowTheInstrument)
{
    ProcessorRig rig;
    EXPECT_EQ(rig.processor.getParameterName(710), "Layer3 Easy 1");
    EXPECT_EQ(rig.processor.getParameterName(1206), "FX3 Type");
    ASSERT_TRUE(rig.load(2, "Orlen"));
    const auto hosted = rig.processor.getLayer(2).getParameterNames()[946].substring(0, 15);
    EXPECT_EQ(rig.processor.getParameterName(710), "Layer3 " + hosted);
    rig.set(722, encodeParamInt(0));
    EXPECT_EQ(rig.processor.getParameterName(710), "Layer3 310");
}

TEST(Parameters, NumbersTextsAndProgramsSurviveTheirCodingAndHostsThatStoreSixDigits)
{
    // As it is; with six digits behind the point; with six digits that count.
    const auto asHostsKeepIt = [](float value)
    {
        std::array<char, 32> text{};
        std::snprintf(text.data(), text.size(), "%.6g", static_cast<double>(value));
        return std::array<float, 3>{value, std::stof(std::to_string(value)), std::stof(text.data())};
    };

    for (int n = -32767; n <= 32767; ++n)
        for (const float kept : asHostsKeepIt(encodeParamInt(n)))
            ASSERT_EQ(decodeParamInt(kept), n) << kept;

    for (int c = 0; c < 128; ++c)
        for (const float kept : asHostsKeepIt(encodeParamChar(static_cast<char>(c))))
            ASSERT_EQ(static_cast<int>(decodeParamChar(kept)), c) << kept;

    for (int count = 1; count <= 300; ++count)
        for (int program = 0; program < count; ++program)
            for (const float kept : asHostsKeepIt(parameterOfProgram(program, count)))
                ASSERT_EQ(programOfParameter(kept, count), program) << count;

    EXPECT_EQ(programOfParameter(1.0f, 100), 99);
    EXPECT_EQ(programOfParameter(0.5f, 0), 0);
    EXPECT_EQ(decodeParamInt(encodeParamInt(40000)), 32767);
    EXPECT_NEAR(cubicGain(0.63f), 1.0f, 2e-4f);
    EXPECT_NEAR(20.0 * std::log10(static_cast<double>(cubicGain(1.0f))), 12.0, 0.05);
}

// A hosted plug-in's host hears of it.
TEST(Parameters, RangeEndsDragEachOther)
{
    ProcessorRig rig;

    for (const int low : {260, 262, 270, 284, 286, 300})
    {
        rig.setLayer(1, low, 0.2f);
        rig.setLayer(1, low + 1, 0.4f);
        rig.processor.getSession().markSaved();
        rig.setLayer(1, low, 0.6f);
        EXPECT_EQ(rig.getLayer(1, low + 1), 0.6f) << low;
        EXPECT_TRUE(rig.processor.getSession().isEdited());
        rig.setLayer(1, low + 1, 0.1f);
        EXPECT_EQ(rig.getLayer(1, low), 0.1f) << low;
    }
}

/** What the host hears last. */
struct HostEar final : juce::AudioProcessorListener
{
    void audioProcessorParameterChanged(juce::AudioProcessor*, int index, float value) override
    {
        heard = {index, value};
    }

    void audioProcessorChanged(juce::AudioProcessor*, const ChangeDetails&) override {}

    std::pair<int, float> heard;
};

TEST(Parameters, GesturesTellTheHostAndMarkThePresetButForVolumeAndView)
{
    ProcessorRig rig;
    HostEar ear;
    rig.processor.addListener(&ear);

    for (const auto& [index, marks] :
         std::vector<std::pair<int, bool>>{{1, false}, {2, false}, {3, true}, {233, true}})
    {
        rig.processor.getSession().markSaved();
        rig.processor.setParameterFromUi(index, 0.4f);
        EXPECT_EQ(rig.processor.getSession().isEdited(), marks) << index;
        EXPECT_EQ(ear.heard, std::make_pair(index, 0.4f));
    }

    rig.processor.removeListener(&ear);
}

TEST(Parameters, ResetGivesDefaultsAndLeavesTheRest)
{
    constexpr float mark = 0.9f;
    ProcessorRig rig;
    const auto expectDefaults = [&rig](float kept)
    {
        for (int i = 0; i < numParameterSlots; ++i)
        {
            // The names in force stand there.
            if (isWithin(i, slot::presetNameText, 2 * slot::nameTextLength))
                continue;

            const auto& info = parameterInfo(i);
            EXPECT_EQ(rig.get(i), info.isKeptByReset ? kept : info.defaultValue) << i;
        }
    };

    expectDefaults(0.0f);

    for (int i = 0; i < numParameterSlots; ++i)
        rig.set(i, mark);

    rig.processor.resetAllParameters();
    expectDefaults(mark);
    EXPECT_EQ(rig.get(slot::masterVolume), 0.63f);
    EXPECT_EQ(rig.getLayer(3, layerSlot::on), 1.0f);
    EXPECT_EQ(paramToInt(rig.getLayer(0, layerSlot::keyMin), 0, 127), 24);
    EXPECT_EQ(static_cast<int>(rig.getLayer(2, layerSlot::userController1) * 128.0f), 39);
    EXPECT_EQ(decodeParamInt(rig.getLayer(1, layerSlot::easyMapping + 11)), 12);
    EXPECT_EQ(readParamText(rig.processor, slot::multiName + 50, 24), "Multicontrol 3");
    // The name's last character is left out until a preset brings the whole.
    EXPECT_EQ(readParamText(rig.processor, slot::presetNameText, 31), "Default Prese");

    // Left alone: program, Easy values, category words, controller map, the master EQ's band switches, effect
    // parameters.
    for (const int index : {10, layerParameter(0, 242), layerParameter(2, 310), slot::controllerMap + 5,
                            slot::masterEq + 1, slot::fxParameters, slot::multiHold, 999})
        EXPECT_EQ(rig.get(index), mark) << index;
}

TEST(Parameters, ResetDrawsTheEasyValuesFromTheInstrument)
{
    ProcessorRig rig;
    ASSERT_TRUE(rig.load(0, "Hexley"));

    for (int easy = 0; easy < numEasyParameters; ++easy)
    {
        rig.setLayer(0, layerSlot::easyMapping + easy, encodeParamInt(0));
        rig.setLayer(0, layerSlot::easyValue + easy, 0.9f);
    }

    rig.processor.resetAllParameters();
    const InstanceAccess::Use plugin(rig.processor.getLayer(0).instanceAccess());

    for (int easy = 0; easy < numEasyParameters; ++easy)
        EXPECT_EQ(rig.getLayer(0, layerSlot::easyValue + easy), plugin->getParameter(easy + 1)) << easy;
}

} // namespace quorel::test
