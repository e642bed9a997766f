// SPDX-License-Identifier: GPL-3.0-or-later
// The finished plug-in in a host with a screen: many instances that all miss their instruments.
#include "SavedSound.h"
#include "support/HostSeam.h"
#include "support/HostWindow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <random>
#include <vector>

namespace quorel::test
{

namespace
{
int numWindows()
{
    return numWindowsTitled("Quorel");
}

bool comesTo(int count)
{
    for (int tries = 0; tries < 200 && numWindows() != count; ++tries)
        letPluginsRun(20);

    return numWindows() == count;
}

Bytes soundOfMissingInstruments(const Bytes& present, int instance)
{
    SavedSound sound(present);
    for (int layer = 0; layer < numLayers; ++layer)
        sound.setLayer(layer, "Absent" + std::to_string(4 * instance + layer), Bytes(100), 0, 1);
    return sound.bytes();
}
} // namespace

TEST(MessageWindow, is_one_for_all_instances_and_goes_with_the_last)
{
    std::vector<std::unique_ptr<RawVst2Host>> hosts;
    for (int i = 0; i < 12; ++i)
    {
        hosts.push_back(std::make_unique<RawVst2Host>(QUOREL_PLUGIN_FILE));
        auto& host = *hosts.back();
        host.setChunk(soundOfMissingInstruments(host.chunk(), i));
    }
    EXPECT_TRUE(comesTo(1)) << numWindows();

    const auto start = std::chrono::steady_clock::now();
    for (auto& host : hosts)
        EXPECT_FALSE(host->chunk().empty());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));

    std::shuffle(hosts.begin(), hosts.end(), std::mt19937(7));
    while (hosts.size() > 1)
    {
        hosts.pop_back();
        letPluginsRun(30);
        EXPECT_EQ(numWindows(), 1);
    }
    hosts.clear();
    EXPECT_TRUE(comesTo(0));
}

} // namespace quorel::test
