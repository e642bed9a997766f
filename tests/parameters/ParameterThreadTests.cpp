// SPDX-License-Identifier: GPL-3.0-or-later
// What follows from parameters stays true to them, whichever threads write them at the same moment.
#include "parameters/ParameterCodings.h"
#include "support/ProcessorRig.h"
#include "support/TestLoop.h"

#include <gtest/gtest.h>

#include <thread>

namespace quorel::test
{

namespace
{
/** Has two threads act at the same moment, and looks at what they leave, again and again. */
void race(int rounds, const std::function<void(int round)>& first,
          const std::function<void(int round)>& second, const std::function<void()>& look)
{
    std::atomic<int> started{0};
    std::atomic<int> done{0};
    std::thread other(
        [&]
        {
            for (int round = 1; round <= rounds; ++round)
            {
                while (started.load() < round)
                    std::this_thread::yield();

                second(round);
                done.store(round);
            }
        });

    for (int round = 1; round <= rounds; ++round)
    {
        started.store(round);
        first(round);

        while (done.load() < round)
            std::this_thread::yield();

        look();
    }

    other.join();
}

float wave(int round, int step)
{
    return static_cast<float>((round * step) % 97) / 97.0f;
}
} // namespace

TEST(ParameterThreads, AreHeardByTheListenersOfValueObjects)
{
    ProcessorRig rig;
    auto& linked = rig.processor.getParameterTable().linked(slot::fxMix);
    EXPECT_EQ(linked.getNumber(), 1.0);
    Listener listener;
    linked.addListener(&listener);
    const auto hears = [&](double value)
    { return pumpUntil([&] { return !listener.heard.empty() && listener.heard.back() == value; }, 2000); };
    onOtherThread([&] { rig.set(slot::fxMix, 0.25f); });
    EXPECT_TRUE(hears(0.25));
    rig.set(slot::fxMix, 0.5f);
    EXPECT_TRUE(hears(0.5));

    const auto state = rig.state();
    rig.set(slot::fxMix, 1.0f);
    rig.restore(state);
    EXPECT_EQ(linked.getNumber(), 0.5);
    linked.removeListener(&listener);
}

TEST(ParameterThreads, LoseNoWriteWhileAValueObjectIsMade)
{
    ProcessorRig rig;
    auto& table = rig.processor.getParameterTable();
    race(
        numControllers, [&](int round) { table.linked(slot::controllerMap + round - 1); },
        [&](int round) { rig.set(slot::controllerMap + round - 1, 0.75f); }, [] {});
    pumpFor(120);

    for (int index = slot::controllerMap; index < slot::controllerMap + numControllers; ++index)
        EXPECT_EQ(table.linked(index).getNumber(), 0.75) << index;
}

TEST(ParameterThreads, LeaveGainsAndValueObjectsTrueToTheTable)
{
    ProcessorRig rig;
    const auto& gains = rig.processor.getGains();
    const int volume = layerParameter(0, layerSlot::volume);
    const int pan = layerParameter(0, layerSlot::pan);
    const int send = layerParameter(0, layerSlot::sendLevel);
    const auto& linked = rig.processor.getParameterTable().linked(send);
    int wrong = 0;

    race(
        40000,
        [&](int round)
        {
            rig.set(volume, wave(round, 7));
            rig.set(slot::masterVolume, wave(round, 11));
            rig.set(send, wave(round, 5));
        },
        [&](int round)
        {
            rig.set(pan, wave(round, 13));
            rig.set(slot::masterMute, wave(round, 3));
            rig.set(send, wave(round, 19));
        },
        [&]
        {
            MixGains expected;
            expected.refreshLayer(rig.processor, 0);
            expected.refreshSend(rig.processor, 0, 0);
            expected.refreshMaster(rig.processor);
            wrong += expected.layerGain(0, 0) != gains.layerGain(0, 0) ||
                     expected.layerGain(1, 0) != gains.layerGain(1, 0) ||
                     expected.sendGain(0, 0) != gains.sendGain(0, 0) ||
                     expected.masterGain() != gains.masterGain() ||
                     linked.getNumber() != static_cast<double>(rig.get(send));
        });
    EXPECT_EQ(wrong, 0);
}

TEST(ParameterThreads, KeepAMultiControlTargetOnItsPath)
{
    ProcessorRig rig;
    const int pan = layerParameter(0, layerSlot::pan);
    rig.set(pan, 0.5f);
    rig.set(slot::multiAssignment, encodeParamInt(2));
    int wrong = 0;

    race(
        40000,
        [&](int round)
        {
            rig.set(slot::multiKnob, 0.5f + wave(round, 7) / 4.0f);
            rig.set(slot::multiFader, wave(round, 5));
        },
        [&](int round) { rig.set(slot::multiFader, wave(round, 13)); },
        [&]
        {
            const float offset = (rig.get(slot::multiKnob) - 0.5f) * 2.0f * rig.get(slot::multiFader);
            // The sum of many moves is off by their rounding.
            wrong += std::abs(rig.get(pan) - (0.5f + offset)) > 1e-3f;
        });
    EXPECT_EQ(wrong, 0);
}

} // namespace quorel::test
