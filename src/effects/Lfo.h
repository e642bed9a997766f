// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/EffectConstants.h"

#include <cstdint>

namespace quorel
{
struct FxContext;

/** LFO phases have 24 bits; the sine tables are read at the top 16. */
inline constexpr std::uint32_t lfoPhaseMask = 0xffffff;

/** One turn of a sine from -1 to 1, and from 0 to 1. */
struct SineTables
{
    float bipolar[fxSineLength], unipolar[fxSineLength];
};

/** The process's tables; the first call fills them. */
const SineTables& sineTables();

inline std::uint32_t lfoAdvance(std::uint32_t phase, std::uint32_t increment)
{
    return (phase + increment) & lfoPhaseMask;
}

/** Value of an LFO, -1 to 1. wave: 0 sine, 1 triangle, 2 saw up, 3 saw down, 4 square; u: phase, 0 to 65535. */
float lfoWave(int wave, std::uint32_t u);

/** 24-bit increment a sample for 0.0067 to 6.875 Hz, p 0 to 1. */
std::uint32_t lfoIncFree(float p, float invSampleRate);

/** 24-bit increment a sample for a note length of lfoSyncTable, p 0 to 1; one cycle is two of those notes. */
std::uint32_t lfoIncTempo(float p, float sampleRate, float bpm);

/** Either of them: the tempo form when the "Sync" parameter is at 0.5 or more. */
std::uint32_t lfoInc(const FxContext& c, float p, float pSync);

/** 24-bit increment for each 16 samples of the delays' modulation, 0.027 to 27.5 Hz, p 0 to 1. */
std::uint32_t delayModRate(float p, float invSampleRate);
} // namespace quorel
