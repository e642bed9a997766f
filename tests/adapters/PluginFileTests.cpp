// SPDX-License-Identifier: GPL-3.0-or-later
// What a host writes and learns of the parameters, and that the plug-in leaves nothing behind.
#include "RawVst2Host.h"
#include "SavedSound.h"
#include "ScratchUser.h"
#include "support/HostSeam.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <thread>

namespace quorel::test
{

/** Waits for it, a few seconds at most. */
static bool comesTo(const std::function<bool()>& done)
{
    for (int tries = 0; tries < 100; ++tries)
    {
        if (done())
            return true;

        letPluginsRun(50);
    }

    return false;
}

TEST(PluginFile, keeps_every_parameter_within_0_to_1_whatever_a_host_writes)
{
    RawVst2Host host(QUOREL_PLUGIN_FILE);
    const auto infinity = std::numeric_limits<float>::infinity();
    for (const float wild : {-1.0f, 2.0f, 1.0e30f, infinity, -infinity, std::nanf("")})
    {
        for (int index = 0; index < numHostParameters; ++index)
            host.setParameter(index, wild);
        for (int index = 0; index < numHostParameters; ++index)
            EXPECT_TRUE(host.parameter(index) >= 0.0f && host.parameter(index) <= 1.0f)
                << index << " after " << wild << ": " << host.parameter(index);
        for (const float x : host.render(1024, {{5, {0x90, 60, 100}}}).left)
            ASSERT_TRUE(std::isfinite(x));
    }
    for (const int index : {-1, std::numeric_limits<int>::min(), numHostParameters, 1 << 20})
    {
        host.setParameter(index, 0.5f);
        EXPECT_EQ(host.parameter(index), 0.0f) << index;
        EXPECT_EQ(host.text(effGetParamName, index), "") << index;
        host.text(effGetParamDisplay, index);
    }
}

TEST(PluginFile, tells_its_host_of_parameters_that_move_along_with_others)
{
    RawVst2Host host(QUOREL_PLUGIN_FILE);
    // Two rounds of the plug-in's 50 ms timer, and what a busy machine adds.
    const auto changesSoon = [&host]
    {
        letPluginsRun(300);
        return host.takeChanges();
    };
    const auto expectOne = [&](int index)
    {
        const auto changes = changesSoon();
        ASSERT_EQ(changes.size(), 1u);
        EXPECT_EQ(changes[0].index, index);
        EXPECT_EQ(changes[0].value, host.parameter(index));
    };
    const int keyMin = layerParameter(1, 260);
    const int keyMax = keyMin + 1;
    host.setParameter(keyMax, 0.4f);
    EXPECT_TRUE(changesSoon().empty()) << "what the host writes itself isn't told";
    host.setParameter(keyMin, 0.6f);
    expectOne(keyMax);
    EXPECT_EQ(host.parameter(keyMax), 0.6f);
    std::thread([&] { host.setParameter(keyMax, 0.2f); }).join();
    expectOne(keyMin);

    // The first multi-control fader moves the first layer's volume: many moves make few messages.
    const auto number = [](int n) { return static_cast<float>(n / 65536.0 + 0.5); };
    const int volume = layerParameter(0, 232);
    host.setParameter(volume, 0.2f);
    host.setParameter(1330, number(1));
    host.setParameter(1354, 1.0f);
    changesSoon();
    for (int i = 1; i <= 1000; ++i)
        host.setParameter(1350, static_cast<float>(i) / 2000.0f);
    auto moves = changesSoon();
    ASSERT_FALSE(moves.empty());
    EXPECT_LT(moves.size(), 10u);
    EXPECT_EQ(moves.back().index, volume);
    EXPECT_EQ(moves.back().value, host.parameter(volume));
    EXPECT_NEAR(host.parameter(volume), 0.7f, 1e-4f);

    // A tied controller is told within its block, and what it moves in its turn soon after.
    host.setParameter(1050 + 20, number(1350));
    host.takeChanges();
    host.render(512, {{0, {0xb0, 20, 0}}});
    moves = host.takeChanges();
    ASSERT_FALSE(moves.empty());
    EXPECT_EQ(moves[0].index, 1350);
    for (const auto& change : changesSoon())
        moves.push_back(change);
    ASSERT_EQ(moves.size(), 2u);
    EXPECT_EQ(moves[1].index, volume);
    EXPECT_NEAR(moves[1].value, 0.2f, 1e-4f);
}

TEST(PluginFile, answers_about_its_editor_without_a_display)
{
    RawVst2Host host(QUOREL_PLUGIN_FILE);
    void* rectangle = nullptr;
    host.dispatch(effEditGetRect, 0, 0, &rectangle);
    host.dispatch(effEditClose);
    EXPECT_EQ(host.render(512).left, std::vector<float>(512, 0.0f));
}

TEST(PluginFile, opens_and_closes_200_times_and_leaves_nothing_behind)
{
    Bytes sound;
    {
        RawVst2Host host(QUOREL_PLUGIN_FILE);
        sound = soundOf(host, {{{"Orlen"}, {"Hexley2"}, {"Imre"}, {"Dorvik"}}}).bytes();
    }
    const auto cycles = [&sound](int count)
    {
        for (int i = 0; i < count; ++i)
        {
            RawVst2Host host(QUOREL_PLUGIN_FILE);
            host.setChunk(sound);
            // The first block after a restore is mute, and a busy machine may begin with the restore later.
            const auto sounds = [&host] {
                return host.render(2048, {{600, {0x90, 60, 100}}}).left.back() != 0.0f;
            };
            ASSERT_TRUE(comesTo(sounds)) << "cycle " << i;
        }
    };
    cycles(40); // what is allocated once for good, and the allocator's own reserves
    const Holdings before;
    cycles(160);
    Holdings after;

    // The system lists a thread for a moment after it has been joined.
    const auto hasNoMore = [&]
    {
        after = {};
        return after.files <= before.files && after.threads <= before.threads;
    };
    EXPECT_TRUE(comesTo(hasNoMore)) << after.files - before.files << " files, "
                                    << after.threads - before.threads << " threads";
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    // Four megabytes: about 25 kB a cycle, far less than one instance, let alone a hosted instrument.
    EXPECT_LT(after.kilobytes - before.kilobytes, 4096);
#endif
}

} // namespace quorel::test
