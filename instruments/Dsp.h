// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace quorel
{

/** Samples between two updates of the slow controls. The grid belongs to the stream, not to its blocks. */
constexpr int controlInterval = 32;

constexpr float twoPi = 6.28318530717958648f;

/** Highest frequency of oscillators and filters, as a share of the sample rate. */
constexpr float highestFrequency = 0.45f;

/** sin(2 pi x) for any moderate x: Taylor series on a quarter turn, error below 4e-6. */
inline float sineOfTurns(float x)
{
    x -= static_cast<float>(static_cast<int>(x < 0.0f ? x - 0.5f : x + 0.5f)); // cheaper than a call of floor
    if (x > 0.25f)
        x = 0.5f - x;
    else if (x < -0.25f)
        x = -0.5f - x;
    const float y = twoPi * x;
    const float s = y * y;
    return y * (1.0f + s * (-1.0f / 6 + s * (1.0f / 120 + s * (-1.0f / 5040 + s * (1.0f / 362880)))));
}

/** Frequency of a MIDI note in Hz, A4 = 440. */
inline float noteFrequency(float note)
{
    return 440.0f * std::exp2((note - 69.0f) / 12.0f);
}

/** Loudness of a velocity of 0..1; sensitivity 0 plays all notes as 0.8. */
inline float velocityGain(float velocity, float sensitivity)
{
    return 0.8f + sensitivity * (velocity * (0.35f + 0.65f * velocity) - 0.8f);
}

/** What is left of 1 after so many samples of a decay that takes `seconds` for 60 dB. */
inline float decayFactor(float seconds, float rate, float samples = 1.0f)
{
    return std::exp(-6.9078f * samples / (std::max(seconds, 1.0e-4f) * rate));
}

/** Odd-symmetric saturation: slope 1 at 0, flattening out at +-1 for inputs of +-3. */
inline float saturate(float x)
{
    x = std::clamp(x, -3.0f, 3.0f);
    return x * (27.0f + x * x) / (27.0f + 9.0f * x * x);
}

/** White noise, -1..1 (xorshift). */
struct Noise
{
    std::uint32_t state = 1;

    float next()
    {
        state ^= state << 13;
        state ^= state >> 17;
        state ^= state << 5;
        return static_cast<float>(static_cast<std::int32_t>(state)) * (1.0f / 2147483648.0f);
    }

    /** 0..1 */
    float uniform() { return 0.5f + 0.5f * next(); }
};

/** A slow control's value, a straight line from one update to the next. */
struct Ramp
{
    float value = 0.0f;
    float step = 0.0f;

    void jump(float target)
    {
        value = target;
        step = 0.0f;
    }

    void aim(float target) { step = (target - value) * (1.0f / controlInterval); }

    float next() { return value += step; }
};

/** Linear attack, then exponential decay and release; times in seconds, the latter two to -60 dB. */
struct Envelope
{
    enum class Stage
    {
        idle,
        attack,
        decay,
        release
    };

    void setTimes(float attack, float decay, float sustainLevel, float release, float rate)
    {
        attackStep = 1.0f / (std::max(attack, 0.001f) * rate);
        decayShare = 1.0f - decayFactor(decay, rate);
        sustain = sustainLevel;
        releaseShare = 1.0f - decayFactor(release, rate);
    }

    void start()
    {
        stage = Stage::attack;
        level = 0.0f;
    }

    void release()
    {
        if (stage != Stage::idle)
            stage = Stage::release;
    }

    float next()
    {
        switch (stage)
        {
        case Stage::attack:
            level += attackStep;
            if (level >= 1.0f)
            {
                level = 1.0f;
                stage = Stage::decay;
            }
            break;
        case Stage::decay:
            level += (sustain - level) * decayShare;
            if (level < silence)
                finish();
            break;
        case Stage::release:
            level -= level * releaseShare;
            if (level < silence)
                finish();
            break;
        case Stage::idle:
            break;
        }
        return level;
    }

    bool active() const { return stage != Stage::idle; }

private:
    static constexpr float silence = 1.0e-4f;

    void finish()
    {
        level = 0.0f;
        stage = Stage::idle;
    }

    Stage stage = Stage::idle;
    float level = 0.0f, attackStep = 1.0f, decayShare = 1.0f, sustain = 1.0f, releaseShare = 1.0f;
};

/** State-variable filter, trapezoidal integration: steady under fast changes of g and k. */
struct StateVariableFilter
{
    float s1 = 0.0f, s2 = 0.0f;
    float low = 0.0f, band = 0.0f, high = 0.0f;

    static float gainFor(float frequency, float rate)
    {
        return std::tan(0.5f * twoPi * std::clamp(frequency / rate, 1.0e-4f, highestFrequency));
    }

    /** `g` is from `gainFor`; `k` is 1 / Q. */
    void process(float x, float g, float k)
    {
        band = (s1 + g * (x - s2)) / (1.0f + g * (g + k));
        low = s2 + g * band;
        high = x - k * band - low;
        s1 = 2.0f * band - s1;
        s2 = 2.0f * low - s2;
    }

    void clear() { s1 = s2 = 0.0f; }
};

/** A phase of 0..1 whose saw and pulse waves are smoothed at their steps (two-sample polynomial). */
struct Oscillator
{
    float phase = 0.0f;

    /** One sample; shape 0 is a saw, 1 a pulse of the given width. `step` in turns, at most 0.45. */
    float next(float step, float shape, float width)
    {
        const float saw = 2.0f * phase - 1.0f - smoothStep(phase, step);
        float second = phase + 1.0f - width;
        if (second >= 1.0f)
            second -= 1.0f;
        const float pulse = (phase < width ? 1.0f : -1.0f) + smoothStep(phase, step) -
                            smoothStep(second, step) - (2.0f * width - 1.0f);
        phase += step;
        if (phase >= 1.0f)
            phase -= 1.0f;
        return saw + shape * (pulse - saw);
    }

    static float smoothStep(float t, float step)
    {
        if (t < step)
        {
            const float x = t / step;
            return x + x - x * x - 1.0f;
        }
        if (t > 1.0f - step)
        {
            const float x = (t - 1.0f) / step;
            return x * x + x + x + 1.0f;
        }
        return 0.0f;
    }
};

/** Adds a step of 0..1 to a phase of 0..1. */
inline void advance(float& phase, float step)
{
    phase += step;
    if (phase >= 1.0f)
        phase -= 1.0f;
}

/** One step of an exponential decay, which ends long before its values get denormal. */
inline void decayBy(float& level, float factor)
{
    level = level > 1.0e-9f ? level * factor : 0.0f;
}

} // namespace quorel
