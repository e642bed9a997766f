// SPDX-License-Identifier: GPL-3.0-or-later
// What --fx and --send accept.
#include "EffectChoice.h"

#include <gtest/gtest.h>

namespace quorel
{
namespace
{

TEST(EffectChoice, ReadsTypesValuesAndControls)
{
    struct Case
    {
        const char* text;
        int block, type;
        std::vector<float> values;
        std::optional<float> mix, pan, level;
    };

    const Case cases[] = {
        {"1=Chorus", 0, 7, {}, {}, {}, {}},
        {" 4 = chorus / delay : 0.25, 1/4 ", 3, 9, {0.25f, 0.25f}, {}, {}, {}},
        {"2=32:0,1:LEVEL=0.5", 1, 32, {0.0f, 1.0f}, {}, {}, 0.5f},
        {"3=Ana. Phaser:mix=1/2,pan=0", 2, 14, {}, 0.5f, 0.0f, {}},
    };
    for (const auto& c : cases)
    {
        EffectChoice choice;
        const auto result = parseEffectChoice(c.text, choice);
        SCOPED_TRACE(c.text);
        EXPECT_TRUE(result.wasOk()) << result.getErrorMessage();
        EXPECT_EQ(choice.block, c.block);
        EXPECT_EQ(choice.type, c.type);
        EXPECT_EQ(choice.values, c.values);
        EXPECT_EQ(choice.mix, c.mix);
        EXPECT_EQ(choice.pan, c.pan);
        EXPECT_EQ(choice.level, c.level);
    }
}

TEST(SendChoice, ReadsPlaceLevelAndTap)
{
    SendChoice choice;
    ASSERT_TRUE(parseSendChoice("1:2=0.5", choice));
    EXPECT_TRUE(choice.layer == 0 && choice.send == 1 && choice.level == 0.5f && !choice.isPreFader);
    ASSERT_TRUE(parseSendChoice("4:3=1/4 pre", choice));
    EXPECT_TRUE(choice.layer == 3 && choice.send == 2 && choice.level == 0.25f && choice.isPreFader);
}

} // namespace
} // namespace quorel
