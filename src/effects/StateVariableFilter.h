// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/EffectConstants.h"

#include <cmath>

namespace quorel
{
/** States of one channel of a state-variable filter. */
struct SvfState
{
    double low = 0.0;
    double band = 0.0;
    double high = 0.0;
};

/** The slot's two state-variable filters, both channels. Bank B takes the resonance of bank A. */
struct SvfBanks
{
    double svfF = 0.0;
    double svfQ = 0.0;
    double svfBF = 0.0;
    SvfState svfL, svfR;
    SvfState svfBL, svfBR;
};

/** Sets bank A: cut + mod held to 0..1 for 20 Hz to 20480 Hz (at most 0.2 of the rate), res 0 to 1. */
void setSvf(SvfBanks& svf, float cut, float res, float mod, float sampleRate);

/** Sets the frequency of bank B likewise. */
void setSvfB(SvfBanks& svf, float cut, float mod, float sampleRate);

/** Brings a filter whose cubic damping has turned into growth back to where it damps. */
void svfRestrain(SvfState& state);

/** One tick of one channel. */
inline void svfTick(SvfState& s, float x, double f, double q)
{
    constexpr double tiny = static_cast<double>(fxTiny);

    // Past a band state of 44.7 the cubic term gives back more than it takes.
    if (!(std::abs(s.band) <= 44.0 && std::abs(s.low) <= 1000.0))
        svfRestrain(s);

    s.band = s.band - s.band * s.band * s.band * 0.0010000000474974513 + tiny;
    s.high = static_cast<double>(x) - s.low - s.band * q + tiny;
    s.band = s.high * f + tiny + s.band;
    s.low = s.band * f + tiny + s.low;
}

inline float svfLowPass(const SvfState& s)
{
    return static_cast<float>(s.low * static_cast<double>(1.4142135f) + static_cast<double>(fxTiny));
}

inline float svfBandPass(const SvfState& s)
{
    return static_cast<float>(s.band * 2.0 + static_cast<double>(fxTiny));
}

inline float svfHighPass(const SvfState& s)
{
    return static_cast<float>(s.high * static_cast<double>(1.4142135f) + static_cast<double>(fxTiny));
}
} // namespace quorel
