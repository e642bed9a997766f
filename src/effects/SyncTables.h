// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

namespace quorel
{
/** A note length of a tempo table and its label. */
struct SyncEntry
{
    const char* label;
    float value;
};

/** LFO lengths in whole notes, p x 30.99. "off" is 0: the LFO then runs at a quarter of the sample rate. */
extern const std::array<SyncEntry, 31> lfoSyncTable;

/** Delay lengths in whole notes, p x 14.99. */
extern const std::array<SyncEntry, 15> delaySyncTable;

/** Kappel speeds in 16-step patterns to a half note, p x 30.99; labels as lfoSyncTable. */
extern const std::array<SyncEntry, 31> kappelSpeedTable;

/** Entry of an LFO tempo parameter, 0 to 30. */
int lfoSyncIndex(float p);

/** Length of a synced delay in samples: the table's fraction x samplesPerWhole + 1. */
float syncedDelay(float p, float samplesPerWhole);
} // namespace quorel
