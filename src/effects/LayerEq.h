// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/EffectConstants.h"

#include <cmath>
#include <cstdint>

namespace quorel
{
/** Two passes of a peaking band over both channels share this one history, newest first. */
struct EqHistory
{
    float x1 = 0.0f, x2 = 0.0f, y1 = 0.0f, y2 = 0.0f;
};

/** A ladder's four poles and previous input for both channels, left first. */
struct EqLadder
{
    double scale = 0.0, feedback = 0.0, p = 0.0;
    double inPrev[2] = {}, s1[2] = {}, s2[2] = {}, s3[2] = {}, s4[2] = {};
};

/** Equaliser of a layer or of the master: three peaking bands, then a low-pass and a high-pass, all run twice
    a sample with the input held. Setters and processing belong to the audio thread. */
struct LayerEq
{
    float sampleRate = 44100.0f;
    std::uint8_t enabled = 0;
    std::uint8_t lowPassOn = 0;
    std::uint8_t highPassOn = 0;
    float b0[3] = {}, b1[3] = {}, b2[3] = {}, a1[3] = {}, a2[3] = {}; ///< a1 always equals b1
    EqHistory bandL[3], bandR[3];
    std::uint8_t bandOn[3] = {};
    EqLadder lowPass, highPass;

    /** What the coefficients were worked out for. Values that nothing equals make the next setter work them out. */
    struct Settings
    {
        float rate = NAN, a = NAN, b = NAN, c = NAN;
    };

    Settings bandSettings[3], filterSettings;
};

/** As many units as one call of `eqProcessBlocks` takes. */
constexpr int maxEqUnitsTogether = 4;

/** A unit and the two channels of `numSamples` that it is to run over. */
struct EqBlock
{
    LayerEq* unit;
    float* left;
    float* right;
};

/** Clears everything and switches the unit off. */
void eqInit(LayerEq& eq, float sampleRate);

/** Stores a rate that differs by 1 Hz or more; what isn't a number above 0 is left aside. */
void eqSetSampleRate(LayerEq& eq, float sampleRate);

/** Sets band 0 to 2 from parameters of 0 to 1: gain -20 to 20 dB, 20 Hz to 20480 Hz (at most 0.6 of the
    rate), Q from 16 down to 1/64. Does nothing while the unit is off. */
void eqSetBand(LayerEq& eq, int band, bool on, float pGain, float pFreq, float pQ);

/** Sets both filters; the frequencies are parameters of 0 to 1 for 20 Hz to 20480 Hz. */
void eqSetFilters(LayerEq& eq, bool lpOn, float pLp, bool hpOn, float pHp);

/** One stereo sample in place. */
void eqProcess(LayerEq& eq, float* left, float* right);

/** A block in place, with the output that `eqProcess` gives. */
void eqProcessBlock(LayerEq& eq, float* left, float* right, int numSamples);

/** Up to `maxEqUnitsTogether` different units, each over a block of its own: side by side, with the output that
    each gives by itself. */
void eqProcessBlocks(const EqBlock* blocks, int numBlocks, int numSamples);
} // namespace quorel
