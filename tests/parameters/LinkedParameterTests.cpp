// SPDX-License-Identifier: GPL-3.0-or-later
// The value objects of parameters, which exist only where somebody listens.
#include "support/ProcessorRig.h"
#include "support/TestLoop.h"

#include <gtest/gtest.h>

namespace quorel::test
{

TEST(LinkedParameters, TellTheirListenersOfWritesOnAnyThread)
{
    ProcessorRig rig;
    auto& linked = rig.processor.getParameterTable().linked(slot::fxMix);
    EXPECT_EQ(linked.getNumber(), 1.0);
    Listener listener;
    linked.addListener(&listener);
    onOtherThread([&] { rig.set(slot::fxMix, 0.25f); });
    EXPECT_TRUE(pumpUntil([&] { return !listener.heard.empty() && listener.heard.back() == 0.25; }, 2000));
    rig.set(slot::fxMix, 0.5f);
    EXPECT_TRUE(pumpUntil([&] { return !listener.heard.empty() && listener.heard.back() == 0.5; }, 2000));

    const auto state = rig.state();
    rig.set(slot::fxMix, 1.0f);
    rig.restore(state);
    EXPECT_EQ(linked.getNumber(), 0.5);
    linked.removeListener(&listener);
}

TEST(LinkedParameters, MissNoWriteThatComesWhileTheyAreMade)
{
    ProcessorRig rig;
    auto& table = rig.processor.getParameterTable();
    std::atomic<int> wanted{0};
    // Each slot is written by another thread at the moment when its object is made.
    std::thread writer(
        [&]
        {
            for (int index = slot::controllerMap; index < slot::controllerMap + numControllers; ++index)
            {
                while (wanted.load() < index)
                {
                }

                rig.set(index, 0.75f);
            }
        });

    for (int index = slot::controllerMap; index < slot::controllerMap + numControllers; ++index)
    {
        wanted.store(index);
        table.linked(index);
    }

    writer.join();
    pumpFor(120);

    for (int index = slot::controllerMap; index < slot::controllerMap + numControllers; ++index)
        EXPECT_EQ(table.linked(index).getNumber(), 0.75) << index;
}

} // namespace quorel::test
