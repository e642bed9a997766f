// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <limits>

namespace quorel
{
/** What one sample has left on the tape, left and right. Its position is not kept: it is that of the sample
    before plus the speed, 100 / distance. */
struct TapeSample
{
    float distance[2]; ///< delay in samples at which it was written
    float first[2];    ///< its first value: the input while the head runs in, otherwise the same as `last`
    float last[2];
};

/** The tape itself, a ring that both tracks share. */
struct TapeReel
{
    /** The longest delay, and some slack for rounding. */
    static constexpr int capacity = 262143 + 1024;

    TapeSample samples[capacity];
};

/** Where a track is read: between the sample at `front` and the one after it. */
struct TapeHead
{
    int front = 0;
    int later = 0;         ///< samples after the front one
    int doubled = 0;       ///< how many of these, the first ones, hold two values
    double time = 0.0;     ///< position of the front sample, tape units
    double nextTime = 0.0; ///< position of the sample after it, if there is one

    // After the tape has been wound back, the samples already on it keep their old positions as long as they
    // are added up, so that these round as they did when they were written.
    int unwoundLater = 0; ///< samples after the next one, up to the first that was written at a new position
    double unwoundTime = 0.0;

    /** Moves all positions back; before a sample is written there. */
    void windBack(double distance);
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

    /** Delay in samples; infinite, for a tape that stands still, until it is set. */
    float delayL = std::numeric_limits<float>::infinity(), delayR = std::numeric_limits<float>::infinity();
    float samplesPerWhole = 88200.0f;
    float feedbackL = 0.0f, feedbackR = 0.0f, crossL = 0.0f, crossR = 0.0f;
    double posL = 0.0, posR = 0.0; ///< write head, tape units
    std::uint8_t primedL = 0, primedR = 0;
    float lpCoef = 1.0f, hpCoef = 0.0f;
    float lpL = 0.0f, lpR = 0.0f, hpL = 0.0f, hpR = 0.0f;
    std::uint8_t guard = 0; ///< 1 while the engine is rebuilt: nothing may be processed
    TapeHead headL, headR;
    int back = 1; ///< where the next sample goes
    TapeReel* reel = nullptr;
};

/** Rewinds to an empty tape at the given rate. The first sample of the reel is the owner's to clear. */
void tapeInit(TapeLine& tape, float sampleRate);

/** Sets lengths from parameters of 0 to 1, extra samples, and a factor of modulation. */
void tapeSetLengths(TapeLine& tape, float pL, float pR, float extraL, float extraR, float mod);

/** Sets two given distances in samples, at least 1e-3 each. */
void tapeSetDistances(TapeLine& tape, float left, float right);

/** Sets feedback (0 to 1, less is 0) and cross-feed (-1 to 1). */
void tapeSetFeedback(TapeLine& tape, float feedback, float cross);

/** Sets the filter of the feedback path from parameters of 0 to 1; it is out at 1 and 0. */
void tapeSetFilter(TapeLine& tape, float pLow, float pHigh);

/** One stereo sample. */
void tapeProcess(TapeLine& tape, float inL, float inR, float& outL, float& outR);
} // namespace quorel
