// SPDX-License-Identifier: GPL-3.0-or-later
// The finished plug-in on a screen: who gets the keys in a host's window, and one window for all messages.
#include "SavedSound.h"
#include "support/HostSeam.h"
#include "support/HostWindow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace quorel::test
{

namespace
{
std::string multiControlName(RawVst2Host& plugin)
{
    constexpr int firstMultiName = 1370;
    constexpr float codes = 256.0f;
    std::string name;

    for (int i = firstMultiName; const int code = static_cast<int>(std::lround(plugin.parameter(i) * codes));
         ++i)
        name += static_cast<char>(code);

    return name;
}

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

TEST(EditorInHost, takes_the_keyboard_for_what_it_is_for_and_gives_it_back)
{
    constexpr int viewParameter = 2;
    constexpr float multiPage = 0.3f;
    RawVst2Host plugin(QUOREL_PLUGIN_FILE);
    plugin.setParameter(viewParameter, multiPage);
    HostWindow host(plugin);
    ASSERT_TRUE(host.isOpen());
    constexpr int nameX = 530, nameY = 327;
    constexpr int groundX = 700, groundY = 770;

    // Opening takes nothing, nor does the pointer over the editor.
    EXPECT_TRUE(host.hasKeyboard());
    host.type(' ');
    EXPECT_EQ(host.takeKeys(1), " ");

    // A click takes the keyboard, and the first key that is not for the editor brings it back.
    host.click(groundX, groundY);
    EXPECT_TRUE(host.editorHasKeyboard());
    host.type(' ');
    EXPECT_EQ(host.takeKeys(1), " ");
    EXPECT_TRUE(host.hasKeyboard());

    const auto before = multiControlName(plugin);
    host.click(nameX, nameY);
    EXPECT_TRUE(host.editorHasKeyboard());

    for (const char key : {'a', ' ', 'b'})
        host.type(key);

    host.type('\x1b');
    EXPECT_TRUE(host.hasKeyboard());
    EXPECT_EQ(multiControlName(plugin), before);

    host.click(nameX, nameY);

    for (const char key : {'a', ' ', 'b'})
        host.type(key);

    host.type('\r');
    EXPECT_TRUE(host.hasKeyboard());
    EXPECT_TRUE(host.comesTo([&] { return multiControlName(plugin) == "a b"; }))
        << "What was there is selected, and typed over";
    EXPECT_EQ(host.takeKeys(0), "");

    host.click(nameX, nameY);
    host.type('c');
    host.click(groundX, groundY);
    EXPECT_TRUE(host.comesTo([&] { return multiControlName(plugin) == "c"; }));
    host.type(' ');
    EXPECT_EQ(host.takeKeys(1), " ");
    EXPECT_TRUE(host.hasKeyboard());
}

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
