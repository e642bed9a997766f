// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/PhaserEffects.h"

#include "effects/EffectMath.h"
#include "effects/FxSlot.h"
#include "effects/Lfo.h"
#include "effects/Quad.h"

namespace quorel
{
namespace
{
constexpr std::uint32_t ringMask = fxAuxRingLength - 1;

void setPhaser(FxSlot& slot, float pSpread)
{
    const float* p = slot.param;
    slot.phaserStages = truncateTo(p[0] * 7.99f + 2.0f, 2, PhaserFields::mostStages);
    slot.phaserPitch = p[1];
    slot.phaserFeedback = fxTiny - p[2];
    slot.phaserWidth = p[3] * 0.99f;
    slot.phaserInc = lfoInc(slot, p[4], p[5]);
    slot.phaserSpread = truncateTo(std::exp2(8.0f * pSpread) * 4.0f + 1.0f, 0, 65535);
    slot.phaserPanDepth = p[7] * 0.5f;
}

void panPhaser(PhaserFields& f, const float* sineBipolar)
{
    const float q = sineBipolar[f.phaserPhase >> 8] * f.phaserPanDepth + 0.5f;
    f.phaserGainL = clampUnit(2.0f - 2.0f * q);
    f.phaserGainR = clampUnit(2.0f * q);
}

// All-passes whose coefficient jumps from sample to sample can gain energy, and the feedback hands it round.
void restrainPhaser(PhaserFields& f)
{
    for (int k = 0; k < PhaserFields::mostStages; ++k)
    {
        for (int c = 0; c < 4; ++c)
        {
            f.phaserX1[k][c] = clampTo(f.phaserX1[k][c], fxLineLimit);
            f.phaserY1[k][c] = clampTo(f.phaserY1[k][c], fxLineLimit);
        }
    }

    for (float& value : f.phaserLast)
        value = clampTo(value, fxLineLimit);
}

/** Sends the last stage's output on: the left channel by way of the ring, whose length is "Spread". */
void phaserOutput(FxSlot& slot, const PhaserFields& f, std::uint32_t count, float& wetLeft, float& wetRight)
{
    slot.auxRing[count & ringMask] = f.phaserLast[0];
    wetLeft = slot.auxRing[(count - static_cast<std::uint32_t>(f.phaserSpread)) & ringMask] * f.phaserGainL;
    wetRight = f.phaserLast[1] * f.phaserGainR;
}
} // namespace

void auxRingClear(FxSlot& slot)
{
    std::fill(std::begin(slot.auxRing), std::end(slot.auxRing), 0.0f);
}

void phaserUpdate(FxSlot& slot)
{
    setPhaser(slot, slot.param[6]);
}

void phaserProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    PhaserFields f = slot;
    std::uint32_t count = slot.sampleCount;
    const Quad tiny = quadOf(fxTiny);

    for (int t = 0; t < num; ++t)
    {
        ++count;
        f.phaserPhase = lfoAdvance(f.phaserPhase, f.phaserInc);
        const float sweep = slot.sineUnipolar[f.phaserPhase >> 8] * f.phaserWidth + 1.0f;
        const float w = std::exp2(sweep * f.phaserPitch * 11.0f);
        const float c = w * 15.0f / slot.sampleRate;
        f.phaserCoef = (1.0f - c) / (c + 1.0f) + fxTiny;
        panPhaser(f, slot.sineBipolar);

        const Quad coefficient = quadOf(f.phaserCoef);
        Quad value = Quad{x[t], y[t], 0.0f, 0.0f} - quadOf(f.phaserFeedback) * loadQuad(f.phaserLast) + tiny;
        Quad most = magnitude(value);

        for (int k = 0; k < f.phaserStages - 1; ++k)
        {
            const Quad out = (value + loadQuad(f.phaserY1[k])) * coefficient - loadQuad(f.phaserX1[k]) + tiny;
            storeQuad(f.phaserX1[k], value);
            storeQuad(f.phaserY1[k], out);
            value = out;
            most = larger(most, magnitude(value));
        }

        storeQuad(f.phaserLast, value);
        if (!(most[0] <= fxLineLimit && most[1] <= fxLineLimit))
            restrainPhaser(f);

        phaserOutput(slot, f, count, wetLeft[t], wetRight[t]);
    }

    static_cast<PhaserFields&>(slot) = f;
}

void anaPhaserUpdate(FxSlot& slot)
{
    // The ring's length follows "Width" here, and "Spread" does nothing.
    setPhaser(slot, slot.param[3]);
    slot.phaserQ = slot.param[8] * 0.9f + 0.05f;
}

void anaPhaserProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    PhaserFields f = slot;
    std::uint32_t count = slot.sampleCount;
    const Quad tiny = quadOf(fxTiny);

    for (int t = 0; t < num; ++t)
    {
        ++count;

        if ((count & 3) == 0)
        {
            f.phaserPhase = lfoAdvance(f.phaserPhase, f.phaserInc * 4);
            const float sine = slot.sineBipolar[f.phaserPhase >> 8];
            const float e = (f.phaserWidth * 0.45f * sine + 0.5f) * f.phaserPitch * 10.0f;
            // Below 21 kHz the sweep would pass half the rate, where the stages turn unstable.
            const float w = std::min(std::exp2(e) * 15.0f / slot.sampleRate * 6.28318f, 3.1f);
            const float alpha = std::sin(w) / (f.phaserQ * 2.0f);
            const float a0 = alpha + 1.0f;
            f.apA1 = std::cos(w) * -2.0f / a0;
            f.apA2 = (1.0f - alpha) / a0;
            f.apB0 = 1.0f;
            panPhaser(f, slot.sineBipolar);
        }

        const Quad a1 = quadOf(f.apA1), a2 = quadOf(f.apA2), b0 = quadOf(f.apB0);
        Quad value = Quad{x[t], y[t], 0.0f, 0.0f} - quadOf(f.phaserFeedback) * loadQuad(f.phaserLast) + tiny;

        for (int k = 0; k < f.phaserStages - 1; ++k)
        {
            const Quad x1 = loadQuad(f.phaserX1[k]), x2 = loadQuad(f.phaserX2[k]);
            const Quad y1 = loadQuad(f.phaserY1[k]), y2 = loadQuad(f.phaserY2[k]);
            const Quad out = heldTo(value * a2 + x1 * a1 + x2 * b0 - y1 * a1 - y2 * a2 + tiny, fxLineLimit);
            storeQuad(f.phaserX2[k], x1);
            storeQuad(f.phaserX1[k], value);
            storeQuad(f.phaserY2[k], y1);
            storeQuad(f.phaserY1[k], out);
            value = out;
        }

        storeQuad(f.phaserLast, value);
        phaserOutput(slot, f, count, wetLeft[t], wetRight[t]);
    }

    static_cast<PhaserFields&>(slot) = f;
}
} // namespace quorel
