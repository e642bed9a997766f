// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/EffectConstants.h"

#include <cstdint>

namespace quorel
{
/** By slope in dB an octave: low-pass, high-pass, band-pass, notch. "Second" is another circuit. */
enum FilterType
{
    filterBypass,
    filterLp6,
    filterHp6,
    filterLp12,
    filterHp12,
    filterBp12,
    filterNotch12,
    filterLp12Second,
    filterHp12Second,
    filterBp12Second,
    filterNotch12Second,
    filterLp18,
    filterHp18,
    filterLp24,
    filterHp24,
    filterBp24,
    filterNotch24,
    filterLp24Second,
    filterHp24Second,
    filterBp24Second,
    filterNotch24Second,
    filterLp36,
    filterHp36,
    filterCombPlus,
    filterCombMinus,
    filterVox,
    filterForm2,
    filterForm4,
    filterRing,
    filterTypeCount
};

/** What a control step works out for the samples after it. */
struct FilterCoefficients
{
    float b0, b1, b2, a1, a2; ///< biquad
    float ladderScale, ladderFeedback, ladderP;
    float opCoef, opInv; ///< one-pole
    float svfF, svfQ;
    float ringRate, ringDepth;
    std::int32_t combDelay; ///< 1/256 sample
    float combGain;

    // A band-pass in each lane; only written and read by the types with vowels.
    float formantB[4], formantA1[4], formantA2[4];
};

/** A run of samples with one set of coefficients. */
struct FilterStep
{
    const FilterCoefficients* coefficients;
    int num;
};

/** The comb types' lines. */
struct FilterComb
{
    float inL[combLength], outL[combLength], inR[combLength], outR[combLength];
};

/** A stereo filter of 29 types, from one-pole to ladder, comb, vowel and ring. States hold left and right in
    their first two lanes. Audio thread only. */
struct FilterCore : FilterCoefficients
{
    float sampleRate = 44100.0f, invSampleRate = 1.0f / 44100.0f;
    std::int32_t type = filterBypass;
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

    float x1[4] = {}, x2[4] = {}, y1[4] = {}, y2[4] = {};

    float inPrev[4] = {}, s1[4] = {}, s2[4] = {}, s3[4] = {}, s4[4] = {};

    float op[4] = {};

    float band[4] = {}, high[4] = {}, low[4] = {};

    std::uint32_t ringCounter = 0;

    /** Fed from the right channel: the only bank that is heard. */
    float formantY1[4] = {}, formantY2[4] = {};
    float formantX1 = 0.0f, formantX2 = 0.0f;

    std::int32_t combPos = 0;                             ///< 1/256 sample
    FilterCoefficients stepCoefficients[fxChunk / 4 + 1]; ///< of one block's control steps
    FilterComb* comb = nullptr;
};

/** Clears the coefficients, which filterInit leaves as they are; once, when the slot is built. */
void filterConstruct(FilterCore& core);

/** Sets the rate and puts all but the comb's memory at rest. */
void filterInit(FilterCore& core, float sampleRate);

/** Zeroes the filter states at a change of type; keeps the smoothed cutoff. */
void filterReset(FilterCore& core);

/** Moves the cutoff a step of a hundredth; every 4 samples. If that or anything else has changed, works out
    the type's coefficients and returns true. They don't go into the core, where the caller puts the last of a
    block. */
bool filterCoefficients(FilterCore& core, FilterCoefficients& coefficients);

/** Adds the filtered input, as many samples as the steps have together, to accL and accR. The type is the
    same in all steps. */
void filterProcess(FilterCore& core, const float* inL, const float* inR, float* accL, float* accR,
                   float preGain, float postGain, const FilterStep* steps, int numSteps);
} // namespace quorel
