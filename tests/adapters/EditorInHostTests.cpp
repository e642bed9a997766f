// SPDX-License-Identifier: GPL-3.0-or-later
// The finished plug-in's editor in a host's window: who gets the keys.
#include "support/HostWindow.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

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

} // namespace quorel::test
