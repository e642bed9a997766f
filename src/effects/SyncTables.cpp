// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/SyncTables.h"

#include "effects/EffectMath.h"

namespace quorel
{
// "16/1*" is 18 whole notes, not 24: presets rely on the value.
const std::array<SyncEntry, 31> lfoSyncTable{{
    {"off", 0.0f},           {"16/1*", 18.0f},        {"16/1", 16.0f},         {"16/1T", 32.0f / 3.0f},
    {"8/1*", 12.0f},         {"8/1", 8.0f},           {"8/1T", 16.0f / 3.0f},  {"4/1*", 6.0f},
    {"4/1", 4.0f},           {"4/1T", 8.0f / 3.0f},   {"2/1*", 3.0f},          {"2/1", 2.0f},
    {"2/1T", 4.0f / 3.0f},   {"1/1*", 3.0f / 2.0f},   {"1/1", 1.0f},           {"1/1T", 2.0f / 3.0f},
    {"1/2*", 3.0f / 4.0f},   {"1/2", 1.0f / 2.0f},    {"1/2T", 1.0f / 3.0f},   {"1/4*", 3.0f / 8.0f},
    {"1/4", 1.0f / 4.0f},    {"1/4T", 1.0f / 6.0f},   {"1/8*", 3.0f / 16.0f},  {"1/8", 1.0f / 8.0f},
    {"1/8T", 1.0f / 12.0f},  {"1/16*", 3.0f / 32.0f}, {"1/16", 1.0f / 16.0f},  {"1/16T", 1.0f / 24.0f},
    {"1/32*", 3.0f / 64.0f}, {"1/32", 1.0f / 32.0f},  {"1/32T", 1.0f / 48.0f},
}};

const std::array<SyncEntry, 15> delaySyncTable{{
    {"1/32T", 1.0f / 48.0f},
    {"1/32", 1.0f / 32.0f},
    {"1/32*", 3.0f / 64.0f},
    {"1/16T", 1.0f / 24.0f},
    {"1/16", 1.0f / 16.0f},
    {"1/16*", 3.0f / 32.0f},
    {"1/8T", 1.0f / 12.0f},
    {"1/8", 1.0f / 8.0f},
    {"1/8*", 3.0f / 16.0f},
    {"1/4T", 1.0f / 6.0f},
    {"1/4", 1.0f / 4.0f},
    {"1/4*", 3.0f / 8.0f},
    {"1/2T", 1.0f / 3.0f},
    {"1/2", 1.0f / 2.0f},
    {"1/2*", 3.0f / 4.0f},
}};

const std::array<SyncEntry, 31> kappelSpeedTable{{
    {"off", 0.0f},           {"16/1*", 1.0f / 64.0f}, {"16/1", 1.0f / 48.0f}, {"16/1T", 1.0f / 32.0f},
    {"8/1*", 1.0f / 24.0f},  {"8/1", 1.0f / 16.0f},   {"8/1T", 3.0f / 32.0f}, {"4/1*", 1.0f / 12.0f},
    {"4/1", 1.0f / 8.0f},    {"4/1T", 3.0f / 16.0f},  {"2/1*", 1.0f / 6.0f},  {"2/1", 1.0f / 4.0f},
    {"2/1T", 3.0f / 8.0f},   {"1/1*", 1.0f / 3.0f},   {"1/1", 1.0f / 2.0f},   {"1/1T", 3.0f / 4.0f},
    {"1/2*", 2.0f / 3.0f},   {"1/2", 1.0f},           {"1/2T", 3.0f / 2.0f},  {"1/4*", 4.0f / 3.0f},
    {"1/4", 2.0f},           {"1/4T", 3.0f},          {"1/8*", 8.0f / 3.0f},  {"1/8", 4.0f},
    {"1/8T", 6.0f},          {"1/16*", 16.0f / 3.0f}, {"1/16", 8.0f},         {"1/16T", 12.0f},
    {"1/32*", 32.0f / 3.0f}, {"1/32", 16.0f},         {"1/32T", 24.0f},
}};

int lfoSyncIndex(float p)
{
    return discreteChoice(clampUnit(p), 30.99f);
}

float syncedDelay(float p, float samplesPerWhole)
{
    const auto index = static_cast<std::size_t>(discreteChoice(clampUnit(p), 14.99f));
    return delaySyncTable[index].value * samplesPerWhole + 1.0f;
}
} // namespace quorel
