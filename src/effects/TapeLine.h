// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace quorel
{
/** What lies on one tape track: samples with their positions, oldest first, in a ring that never grows. */
struct TapeQueue
{
    struct Entry
    {
        double time;
        double value;
    };

    /** The longest delay, twice over for the time that the head takes to run in, and some slack for rounding.
     */
    static constexpr int capacity = 2 * 262143 + 1024;

    Entry entries[capacity];
    int front = 0;
    int count = 0;

    void reset();
    void moveBack(double distance);
};

/** A tape echo: samples are written at a position that moves with the tape's speed, and read 100 units
   behind. A change of delay changes the speed, and with it the pitch of what is on the tape. Audio thread
   only. */
struct TapeLine
{
    std::uint8_t feedEqual = 0; ///< feedback follows the two lengths
    std::uint8_t syncOn = 0;    ///< lengths come from the delay sync table
    std::uint8_t filterOn = 0;  ///< the filter in the feedback path is in use
    float sampleRate = 44100.0f;
    float minCutoff = 0.0f;
    float samplesPerMs = 44.1f;
    float invSampleRate = 0.0f;
    float baseL = 100.0f, baseR = 100.0f; ///< delay before modulation, samples
    float delayL = 100.0f, delayR = 100.0f;
    float samplesPerWhole = 88200.0f;
    float feedbackL = 0.0f, feedbackR = 0.0f, crossL = 0.0f, crossR = 0.0f;
    double speedL = 0.0, speedR = 0.0; ///< tape units a sample
    double posL = 0.0, posR = 0.0;     ///< write head, tape units
    std::uint8_t primedL = 0, primedR = 0;
    float lpCoef = 1.0f, hpCoef = 0.0f;
    float lpL = 0.0f, lpR = 0.0f, hpL = 0.0f, hpR = 0.0f;
    std::uint8_t guard = 0; ///< 1 while the engine is rebuilt: nothing may be processed
    TapeQueue queueL, queueR;
};

/** Rewinds to an empty tape at the given rate. */
void tapeInit(TapeLine& tape, float sampleRate);

/** Sets lengths and speeds from parameters of 0 to 1, extra samples, and a factor of modulation. */
void tapeSetLengths(TapeLine& tape, float pL, float pR, float extraL, float extraR, float mod);

/** Sets speeds for two given distances in samples, at least 1e-3 each. */
void tapeSetDistances(TapeLine& tape, float left, float right);

/** Sets feedback (0 to 1, less is 0) and cross-feed (-1 to 1). */
void tapeSetFeedback(TapeLine& tape, float feedback, float cross);

/** Sets the filter of the feedback path from parameters of 0 to 1; it is out at 1 and 0. */
void tapeSetFilter(TapeLine& tape, float pLow, float pHigh);

/** One stereo sample. */
void tapeProcess(TapeLine& tape, float inL, float inR, float& outL, float& outR);
} // namespace quorel
