// SPDX-License-Identifier: GPL-3.0-or-later
// The C library's float functions, as effects and instruments call them, give the same bits on every platform.
#include "platform/PlatformSeamMath.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>

namespace quorel::test
{
namespace
{
using Function = float (*)(float);

/** FNV-1a over the results at 200,001 places from `low` to `high`. */
std::uint64_t resultsOf(Function function, double low, double high)
{
    constexpr int last = 200000;
    std::uint64_t hash = 0xcbf29ce484222325;
    for (int i = 0; i <= last; ++i)
    {
        const float result = function(static_cast<float>(low + (high - low) * i / last));
        std::uint32_t bits = 0;
        std::memcpy(&bits, &result, sizeof bits);
        hash = (hash ^ bits) * 0x100000001b3;
    }
    return hash;
}

struct Case
{
    const char* name;
    double low, high;
    Function system, own;
    std::uint64_t results;
};

#define QUOREL_CASE(call, low, high, results)                                                                \
    Case                                                                                                     \
    {                                                                                                        \
#call, low, high, [](float x) { using namespace std; return call; },                                 \
            [](float x) { using namespace portable; return call; }, results       \
    }

const Case cases[] = {
    QUOREL_CASE(exp2(x), -20.0, 20.0, 0x9846feff810166ff),
    QUOREL_CASE(exp(x), -40.0, 10.0, 0xf1bbfe5da4dfb59a),
    QUOREL_CASE(log(x), 0.0001, 1000.0, 0xb4bd6f27ec800c82),
    QUOREL_CASE(log10(x), 0.0001, 1000.0, 0x8f9a1980ae9d3246),
    QUOREL_CASE(pow(10.0f, x), -5.0, 5.0, 0xd424638e5176fe36),
    QUOREL_CASE(pow(x, 2.7f), 0.0, 1.0, 0x841a7b3318c1a29b),
    QUOREL_CASE(sin(x), -200.0, 200.0, 0xc1003582aa47835f),
    QUOREL_CASE(sin(x), 0.0, 2.0e7, 0x2f5adccb99a97b40),
    QUOREL_CASE(cos(x), -200.0, 200.0, 0x9693766592eba247),
    QUOREL_CASE(tan(x), -1.55, 1.55, 0x5fca9a1f56d1a2af),
    QUOREL_CASE(atan(x), -40.0, 40.0, 0x58e92c6b956aa6af),
    QUOREL_CASE(atan2(x, 0.3f), -2.0, 2.0, 0xedadb956692101af),
    QUOREL_CASE(atan2(-0.4f, x), -2.0, 2.0, 0xe1d7177f5f852b0d),
};
} // namespace

TEST(Math, GivesTheSameBitsOnEveryPlatform)
{
    for (const auto& one : cases)
    {
        SCOPED_TRACE(one.name);
        EXPECT_EQ(one.results, resultsOf(one.system, one.low, one.high));
        EXPECT_EQ(one.results, resultsOf(one.own, one.low, one.high));
    }
}
} // namespace quorel::test
