// SPDX-License-Identifier: GPL-3.0-or-later
// The finished plug-in in a host with a screen: many instances that all miss their instruments.
#include "RawVst2Host.h"
#include "SavedSound.h"

#include <gtest/gtest.h>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <random>
#include <thread>

namespace quorel::test
{

namespace
{
/** The plug-in's windows that are on the screen. */
class Screen
{
public:
    Screen()
        : display(XOpenDisplay(nullptr))
    {
    }

    ~Screen() { XCloseDisplay(display); }

    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    int numWindows() { return countIn(DefaultRootWindow(display)); }

    bool comesTo(int count)
    {
        for (int tries = 0; tries < 200 && numWindows() != count; ++tries)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));

        return numWindows() == count;
    }

private:
    int countIn(Window window)
    {
        XTextProperty name{};
        XGetWMName(display, window, &name);
        const auto* text = reinterpret_cast<const char*>(name.value);
        int count = text != nullptr && std::string(text) == "Quorel" ? 1 : 0;
        XFree(name.value);
        Window root = 0, parent = 0, *children = nullptr;
        unsigned int numChildren = 0;
        if (XQueryTree(display, window, &root, &parent, &children, &numChildren) == 0)
            return count;
        for (unsigned int i = 0; i < numChildren; ++i)
            count += countIn(children[i]);
        XFree(children);
        return count;
    }

    Display* display;
};

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
    // Windows come and go while they are counted.
    XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
    Screen screen;
    std::vector<std::unique_ptr<RawVst2Host>> hosts;
    for (int i = 0; i < 12; ++i)
    {
        hosts.push_back(std::make_unique<RawVst2Host>(QUOREL_PLUGIN_FILE));
        auto& host = *hosts.back();
        host.setChunk(soundOfMissingInstruments(host.chunk(), i));
    }
    EXPECT_TRUE(screen.comesTo(1)) << screen.numWindows();

    const auto start = std::chrono::steady_clock::now();
    for (auto& host : hosts)
        EXPECT_FALSE(host->chunk().empty());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));

    std::shuffle(hosts.begin(), hosts.end(), std::mt19937(7));
    while (hosts.size() > 1)
    {
        hosts.pop_back();
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        EXPECT_EQ(screen.numWindows(), 1);
    }
    hosts.clear();
    EXPECT_TRUE(screen.comesTo(0));
}

} // namespace quorel::test
