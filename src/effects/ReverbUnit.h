// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace quorel
{
/** Ten damped combs a channel, in parallel, and a tone filter over their sums. Combs 0 to 9 are left, 10 to
    19 right. */
struct CombBank
{
    static constexpr int combs = 20;
    static constexpr int length = 16384; ///< of each comb's ring

    std::uint32_t delay[combs]; ///< 1 to 16383 samples
    std::uint32_t position = 0;
    float combFeedback = 0.0f;
    float damp1 = 0.0f, damp2 = 1.0f;
    float store[combs] = {};
    float lp = 1.0f, lpInv = 0.0f, hp = 0.0f, hpInv = 1.0f;
    float lpStateL = 0.0f, hpStateL = 0.0f, lpStateR = 0.0f, hpStateR = 0.0f;
};

struct AllPass
{
    static constexpr int capacity = 8192;

    std::int32_t length = 1; ///< 1 to 8191
    std::int32_t position = 0;
};

/** The rings of one unit. */
struct ReverbCells
{
    /** A comb's ring, and 64 bytes more so that the write positions of all rings don't share a cache set. */
    static constexpr int stride = CombBank::length + 16;

    float combs[CombBank::combs * stride];
    float allPasses[8][AllPass::capacity];
};

/** One of the three parallel units of the reverb. Audio thread only. */
struct ReverbUnit
{
    ReverbCells* cells = nullptr;
    float feedback = 0.65f;
    float damp = 0.0f;
    float sampleRate = 44100.0f;
    CombBank bank;
    AllPass allPass[8];       ///< four left, then four right
    float combScale[10] = {}; ///< slow modulation of the combs' lengths
};

/** Retunes the unit to its sampleRate and puts its filters at rest. Its cells are the owner's to clear. */
void reverbSetSampleRate(ReverbUnit& unit);

/** Puts the unit's filters at rest; likewise. */
void reverbRest(ReverbUnit& unit);

/** Sets the combs' feedback, 0.65 to 0.98 for a size of 0 to 1. */
void reverbSetFeedback(ReverbUnit& unit, float size);

/** Sets damping, 0 to 1. */
void reverbSetDamping(ReverbUnit& unit, float pDamp);

/** Sets the tone filter from parameters of 0 to 1. */
void reverbSetTone(ReverbUnit& unit, float pLow, float pHigh);

/** Scales the combs' lengths; what they hold stays. */
void reverbSetLength(ReverbUnit& unit, float scale);

/** Processes up to fxChunk samples and adds up what one to four units in parallel give. */
void reverbProcess(ReverbUnit* units, int numUnits, const float* l, const float* r, float* outL, float* outR,
                   int num);
} // namespace quorel
