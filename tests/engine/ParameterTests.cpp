// SPDX-License-Identifier: GPL-3.0-or-later
// The table as a host and an editor see it: names, what a write brings with it, the resets.
#include "parameters/ParameterCatalogue.h"
#include "parameters/ParameterCodings.h"
#include "parameters/ParameterText.h"
#include "support/ProcessorRig.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <limits>
#include <string>

namespace quorel::test
{

namespace
{
/** What the host hears. */
class HostEar final : public juce::AudioProcessorListener
{
public:
    explicit HostEar(juce::AudioProcessor& p)
        : processor(p)
    {
        processor.addListener(this);
    }

    ~HostEar() override { processor.removeListener(this); }

    void audioProcessorParameterChanged(juce::AudioProcessor*, int index, float value) override
    {
        heard.emplace_back(index, value);
    }

    void audioProcessorChanged(juce::AudioProcessor*, const ChangeDetails&) override {}

    juce::AudioProcessor& processor;
    std::vector<std::pair<int, float>> heard;
};
} // namespace

TEST(ParameterNames, FollowTheIndex)
{
    ProcessorRig rig;
    rig.set(slot::fxType + 2, 6.5f / 32.0f);
    const std::vector<std::pair<int, const char*>> names{
        {0, ""},
        {1, "Master Volume"},
        {3, "Edited/Original preset"},
        {4, "4"},
        {10, "10"},
        {17, "17"},
        {131, "131"},
        {200, "Layer1 200"},
        {233, "Layer1 Pan"},
        {465, "Layer2 265"},
        {710, "Layer3 Easy 1"},
        {787, "Layer3 EQ Band 2 BW"},
        {996, "Layer4 EQ HP Filter Freq"},
        {999, ""},
        {1000, ""},
        {1050, ""},
        {1201, "FX2On / Off"},
        {1206, "FX3 Type"},
        {1219, "FX4 Pan"},
        {1222, "PreDelay"},
        {1258, "Gate Decay"},
        {1300, ""},
        {1352, "Multi Fader 3"},
        {1360, "Multi Knob 2/3"},
        {1470, ""},
        {1506, ""},
        {1507, ""},
        {-1, ""},
    };

    for (const auto& [index, name] : names)
        EXPECT_EQ(rig.processor.getParameterName(index), juce::String(name)) << index;

    ASSERT_TRUE(rig.load(2, "Orlen"));
    const auto hosted = rig.processor.getLayer(2).getParameterNames()[946].substring(0, 15);
    EXPECT_EQ(rig.processor.getParameterName(710), "Layer3 " + hosted);
    rig.set(722, encodeParamInt(0));
    EXPECT_EQ(rig.processor.getParameterName(710), "Layer3 310");
}

TEST(Parameters, AreClampedOnBothSidesAndHaveNoOutside)
{
    ProcessorRig rig;
    rig.set(205, 7.0f);
    EXPECT_EQ(rig.get(205), 1.0f);
    rig.set(205, -3.0f);
    EXPECT_EQ(rig.get(205), 0.0f);
    rig.set(205, std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(rig.get(205), 0.0f);

    for (const int index : {-1, 1508, 100000, std::numeric_limits<int>::min()})
    {
        rig.set(index, 1.0f);
        EXPECT_EQ(rig.get(index), 0.0f);
    }

    // The last slot is there, but neither the host nor the editor sees it.
    rig.set(1507, 0.25f);
    EXPECT_EQ(rig.get(1507), 0.25f);
    EXPECT_FALSE(rig.processor.getParameterTable().isDirty(1507));
    EXPECT_EQ(rig.processor.getNumParameters(), 1507);
    rig.set(1000, 0.5f);
    EXPECT_TRUE(rig.processor.getParameterTable().takeDirty(1000));
    EXPECT_FALSE(rig.processor.getParameterTable().takeDirty(1000));
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
    EXPECT_EQ(decodeParamInt(0.5f), 0);
    EXPECT_EQ(decodeParamInt(encodeParamInt(40000)), 32767);
    EXPECT_EQ(paramToInt(1.0f, 0, 127), 127);
    EXPECT_EQ(paramToInt(0.5f, -24, 24), 0);
    EXPECT_EQ(paramToInt(0.7f, 3, 3), 3);
    EXPECT_NEAR(cubicGain(0.63f), 1.0f, 2e-4f);
    EXPECT_NEAR(20.0 * std::log10(static_cast<double>(cubicGain(1.0f))), 12.0, 0.05);
    EXPECT_NEAR(faderPositionOfDecibels(0.0), 0.63, 1e-4);
}

TEST(Parameters, RangeEndsDragEachOtherAndTellTheHost)
{
    ProcessorRig rig;
    HostEar ear(rig.processor);
    const auto hostHears = [&](int index, float value)
    {
        ear.heard.clear();
        return pumpUntil([&] { return !ear.heard.empty(); }, 2000) &&
               ear.heard == std::vector{std::make_pair(index, value)};
    };

    for (const int low : {260, 262, 270, 284, 286, 300})
    {
        rig.set(layerParameter(1, low), 0.2f);
        rig.set(layerParameter(1, low + 1), 0.4f);
        rig.processor.getSession().markSaved();
        rig.set(layerParameter(1, low), 0.6f);
        EXPECT_EQ(rig.getLayer(1, low + 1), 0.6f) << low;
        EXPECT_TRUE(hostHears(layerParameter(1, low + 1), 0.6f)) << low;
        EXPECT_TRUE(rig.processor.getSession().isEdited());
        rig.set(layerParameter(1, low + 1), 0.1f);
        EXPECT_EQ(rig.getLayer(1, low), 0.1f) << low;
        EXPECT_TRUE(hostHears(layerParameter(1, low), 0.1f)) << low;
    }
}

TEST(Parameters, GesturesMarkThePresetButForVolumeAndView)
{
    ProcessorRig rig;
    const HostEar ear(rig.processor);

    for (const auto& [index, marks] :
         std::vector<std::pair<int, bool>>{{1, false}, {2, false}, {3, true}, {233, true}})
    {
        rig.processor.getSession().markSaved();
        rig.processor.setParameterFromUi(index, 0.4f);
        EXPECT_EQ(rig.processor.getSession().isEdited(), marks) << index;
        EXPECT_EQ(ear.heard.back(), std::make_pair(index, 0.4f));
    }
}

TEST(Parameters, MixerGainsFollowTheirFaders)
{
    ProcessorRig rig;
    const auto& gains = rig.processor.getGains();
    rig.setLayer(0, layerSlot::volume, 1.0f);

    for (const float pan : {0.0f, 0.25f, 0.5f, 0.75f, 1.0f})
    {
        rig.setLayer(0, layerSlot::pan, pan);
        EXPECT_NEAR(gains.layerGain(0, 0), 4.0f * juce::jmin(1.0f, 2.0f - 2.0f * pan), 1e-6f);
        EXPECT_NEAR(gains.layerGain(1, 0), 4.0f * juce::jmin(1.0f, 2.0f * pan), 1e-6f);
    }

    rig.set(slot::masterMute, 1.0f);
    rig.set(slot::masterVolume, 0.9f);
    EXPECT_EQ(gains.masterGain(), 0.0f);
    rig.set(slot::masterMute, 0.5f);
    EXPECT_NEAR(gains.masterGain(), 4.0f * 0.729f, 1e-5f);
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
    EXPECT_EQ(paramToInt(rig.getLayer(0, layerSlot::zoneVelocities + 14), 0, 127), 1);
    EXPECT_EQ(static_cast<int>(rig.getLayer(2, layerSlot::userController1) * 128.0f), 39);
    EXPECT_EQ(decodeParamInt(rig.getLayer(1, layerSlot::easyMapping + 11)), 12);
    EXPECT_EQ(rig.get(slot::fxVolume + 3), 0.75f);
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

TEST(Parameters, TextStopsAtWhatASlotCannotHold)
{
    ProcessorRig rig;
    writeParamText(rig.processor, 200, "Hexley-Mini", 32);
    EXPECT_EQ(readParamText(rig.processor, 200, 31), "Hexley-Mini");
    writeParamText(rig.processor, 200, juce::String::repeatedString("abcdefgh", 6), 32);
    EXPECT_EQ(readParamText(rig.processor, 200, 31).length(), 31);
    writeParamText(rig.processor, 200, juce::String(juce::CharPointer_UTF8("na\xc3\xafve")), 32);
    EXPECT_EQ(readParamText(rig.processor, 200, 31), "na");
}

TEST(LinkedParameters, FollowWritesOfAnyThread)
{
    ProcessorRig rig;
    std::thread([&] { rig.set(300, 0.75f); }).join();
    EXPECT_EQ(static_cast<float>(rig.processor.getParameterTable().linked(300).getValue()), 0.75f);
}

} // namespace quorel::test
