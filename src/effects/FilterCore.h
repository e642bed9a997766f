// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/EffectConstants.h"

#include <cstdint>

namespace quorel
{
inline constexpr int filterTypeCount = 29;

/** A stereo filter of 29 types, from one-pole to ladder, comb, vowel and ring. States hold left and right in
   their first two lanes. Audio thread only. */
struct FilterCore
{
    float sampleRate = 44100.0f, invSampleRate = 1.0f / 44100.0f;
    std::int32_t type = 0;
    std::int32_t lastType = -1; ///< -1 forces a recalculation
    float cutoffTarget = 0.0f, cutoffSmooth = 0.0f;
    float minFreq = 0.0f, maxFreq = 0.0f; ///< 10 / rate; 0.4 x rate
    float mod0 = 0.0f, mod1 = 0.0f, mod2 = 0.0f, mod3 = 0.0f, mod4 = 0.0f, mod5 = 0.0f, mod6 = 0.0f,
          mod7 = 0.0f;
    float keyScale = 1.0f;
    float freqHz = 0.0f, lastFreqHz = 0.0f;
    float resonance = 0.0f, lastResonance = 0.0f; ///< 0 to 1
    float vowel = 0.0f, lastVowel = 0.0f;         ///< 0 to 1
    std::uint8_t driveOn = 0, vowelGuard = 0;
    float drive = 0.0f;
    float gainTargetL = 1.0f, gainTargetR = 1.0f, gainL = 1.0f, gainR = 1.0f;
    std::uint32_t blockCounter = 0;

    float b0 = 0.0f, b1 = 0.0f, b2 = 0.0f, a1 = 0.0f, a2 = 0.0f;
    float x1[4] = {}, x2[4] = {}, y1[4] = {}, y2[4] = {};

    float ladderScale = 0.0f, ladderFeedback = 0.0f, ladderP = 0.0f;
    float inPrev[4] = {}, s1[4] = {}, s2[4] = {}, s3[4] = {}, s4[4] = {};

    float opCoef = 0.0f, opInv = 1.0f;
    float op[4] = {};

    float svfF = 0.0f, svfQ = 1.0f;
    float band[4] = {}, high[4] = {}, low[4] = {};

    float ringRate = 0.0f, ringDepth = 0.0f;
    std::uint32_t ringCounter = 0;

    /** Four band-passes in the four lanes, fed from the right channel: the only bank that is heard. */
    float formantB[4] = {}, formantA1[4] = {}, formantA2[4] = {};
    float formantY1[4] = {}, formantY2[4] = {};
    float formantX1 = 0.0f, formantX2 = 0.0f;

    std::int32_t combDelay = 514, combPos = 0; ///< 1/256 sample
    float combGain = 0.0f;
    float inL[combLength], outL[combLength], inR[combLength], outR[combLength];
};

/** Clears the comb's memory, which filterInit leaves as it is; once, when the slot is built. */
void filterConstruct(FilterCore& core);

/** Sets the rate and puts all but the comb's memory at rest. */
void filterInit(FilterCore& core, float sampleRate);

/** Zeroes the filter states at a change of type; keeps the smoothed cutoff. */
void filterReset(FilterCore& core);

/** Moves the cutoff a step of a hundredth and works out the coefficients if anything has changed; every 4
 * samples. */
void filterCoefficients(FilterCore& core);

/** Adds the filtered input, at most fxChunk samples of it, to accL and accR. */
void filterProcess(FilterCore& core, const float* inL, const float* inR, float* accL, float* accR,
                   float preGain, float postGain, int num);
} // namespace quorel
