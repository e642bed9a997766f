// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/PhaserEffects.h"

#include "effects/EffectMath.h"
#include "effects/FxContext.h"
#include "effects/Lfo.h"
#include "effects/Quad.h"

namespace quorel
{
namespace
{
constexpr std::uint32_t ringMask = fxAuxRingLength - 1;

void setPhaser(PhaserState& f, const FxContext& c, float pSpread)
{
    const float* p = c.param;
    f.stages = truncateTo(p[0] * 7.99f + 2.0f, 2, PhaserState::mostStages);
    f.pitch = p[1];
    f.feedback = fxTiny - p[2];
    f.width = p[3] * 0.99f;
    f.inc = lfoInc(c, p[4], p[5]);
    f.spread = truncateTo(std::exp2(8.0f * pSpread) * 4.0f + 1.0f, 0, 65535);
    f.panDepth = p[7] * 0.5f;
}

void panPhaser(PhaserState& f, const float* sineBipolar)
{
    const float q = sineBipolar[f.phase >> 8] * f.panDepth + 0.5f;
    f.gainL = clampUnit(2.0f - 2.0f * q);
    f.gainR = clampUnit(2.0f * q);
}

// All-passes whose coefficient jumps from sample to sample can gain energy, and the feedback hands it round.
void restrainPhaser(PhaserState& f)
{
    for (int k = 0; k < PhaserState::mostStages; ++k)
    {
        for (int c = 0; c < 4; ++c)
        {
            f.x1[k][c] = clampTo(f.x1[k][c], fxLineLimit);
            f.y1[k][c] = clampTo(f.y1[k][c], fxLineLimit);
        }
    }

    for (float& value : f.last)
        value = clampTo(value, fxLineLimit);
}

/** Sends the last stage's output on: the left channel by way of the ring, whose length is "Spread". */
void phaserOutput(float* auxRing, const PhaserState& f, std::uint32_t count, float& wetLeft, float& wetRight)
{
    auxRing[count & ringMask] = f.last[0];
    wetLeft = auxRing[(count - static_cast<std::uint32_t>(f.spread)) & ringMask] * f.gainL;
    wetRight = f.last[1] * f.gainR;
}
} // namespace

void phaserUpdate(PhaserState& f, FxContext& c)
{
    setPhaser(f, c, c.param[6]);
}

void phaserProcess(PhaserState& state, FxContext& c, const float* x, const float* y, float* wetLeft,
                   float* wetRight, int num)
{
    PhaserState f = state;
    float* auxRing = c.memory->shared.auxRing;
    std::uint32_t count = c.sampleCount;
    const Quad tiny = quadOf(fxTiny);

    for (int t = 0; t < num; ++t)
    {
        ++count;
        f.phase = lfoAdvance(f.phase, f.inc);
        const float sweep = c.sines->unipolar[f.phase >> 8] * f.width + 1.0f;
        const float w = std::exp2(sweep * f.pitch * 11.0f);
        const float turn = w * 15.0f / c.sampleRate;
        f.coef = (1.0f - turn) / (turn + 1.0f) + fxTiny;
        panPhaser(f, c.sines->bipolar);

        const Quad coefficient = quadOf(f.coef);
        Quad value = Quad{x[t], y[t], 0.0f, 0.0f} - quadOf(f.feedback) * loadQuad(f.last) + tiny;
        Quad most = magnitude(value);

        for (int k = 0; k < f.stages - 1; ++k)
        {
            const Quad out = (value + loadQuad(f.y1[k])) * coefficient - loadQuad(f.x1[k]) + tiny;
            storeQuad(f.x1[k], value);
            storeQuad(f.y1[k], out);
            value = out;
            most = larger(most, magnitude(value));
        }

        storeQuad(f.last, value);
        if (!(most[0] <= fxLineLimit && most[1] <= fxLineLimit))
            restrainPhaser(f);

        phaserOutput(auxRing, f, count, wetLeft[t], wetRight[t]);
    }

    state = f;
}

void anaPhaserUpdate(PhaserState& f, FxContext& c)
{
    // The ring's length follows "Width" here, and "Spread" does nothing.
    setPhaser(f, c, c.param[3]);
    f.q = c.param[8] * 0.9f + 0.05f;
}

void anaPhaserProcess(PhaserState& state, FxContext& c, const float* x, const float* y, float* wetLeft,
                      float* wetRight, int num)
{
    PhaserState f = state;
    float* auxRing = c.memory->shared.auxRing;
    std::uint32_t count = c.sampleCount;
    const Quad tiny = quadOf(fxTiny);

    for (int t = 0; t < num; ++t)
    {
        ++count;

        if ((count & 3) == 0)
        {
            f.phase = lfoAdvance(f.phase, f.inc * 4);
            const float sine = c.sines->bipolar[f.phase >> 8];
            const float e = (f.width * 0.45f * sine + 0.5f) * f.pitch * 10.0f;
            // Below 21 kHz the sweep would pass half the rate, where the stages turn unstable.
            const float w = std::min(std::exp2(e) * 15.0f / c.sampleRate * 6.28318f, 3.1f);
            const float alpha = std::sin(w) / (f.q * 2.0f);
            const float a0 = alpha + 1.0f;
            f.apA1 = std::cos(w) * -2.0f / a0;
            f.apA2 = (1.0f - alpha) / a0;
            f.apB0 = 1.0f;
            panPhaser(f, c.sines->bipolar);
        }

        const Quad a1 = quadOf(f.apA1), a2 = quadOf(f.apA2), b0 = quadOf(f.apB0);
        Quad value = Quad{x[t], y[t], 0.0f, 0.0f} - quadOf(f.feedback) * loadQuad(f.last) + tiny;

        for (int k = 0; k < f.stages - 1; ++k)
        {
            const Quad x1 = loadQuad(f.x1[k]), x2 = loadQuad(f.x2[k]);
            const Quad y1 = loadQuad(f.y1[k]), y2 = loadQuad(f.y2[k]);
            const Quad out = heldTo(value * a2 + x1 * a1 + x2 * b0 - y1 * a1 - y2 * a2 + tiny, fxLineLimit);
            storeQuad(f.x2[k], x1);
            storeQuad(f.x1[k], value);
            storeQuad(f.y2[k], y1);
            storeQuad(f.y1[k], out);
            value = out;
        }

        storeQuad(f.last, value);
        phaserOutput(auxRing, f, count, wetLeft[t], wetRight[t]);
    }

    state = f;
}
} // namespace quorel
