// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/DistortionEffects.h"

#include "effects/DriveCurve.h"
#include "effects/EffectMath.h"
#include "effects/FxSlot.h"
#include "effects/Lfo.h"
#include "effects/QuadMath.h"

namespace quorel
{
namespace
{
float ringOscillator(int type, float phase)
{
    switch (type)
    {
    case 0:
        return std::sin(phase * 6.28318f);
    case 1:
        return phase * 2.0f - 1.0f;
    case 2:
    {
        const float t = phase * 2.0f - 1.0f;
        return t > 0.0f ? 1.0f : (t < 0.0f ? -1.0f : 0.0f);
    }
    default:
        return 1.0f - std::abs(1.0f - 2.0f * phase) * 2.0f;
    }
}

/** Calls `shape` with every four samples of a run, and with what is left over in the first lanes. */
template <typename Shape>
void forQuads(const float* in, float* out, int num, Shape shape)
{
    int t = 0;
    for (; t + 4 <= num; t += 4)
        storeQuad(out + t, shape(loadQuad(in + t)));

    if (t < num)
    {
        float rest[4] = {};
        std::copy(in + t, in + num, rest);
        storeQuad(rest, shape(loadQuad(rest)));
        std::copy(rest, rest + (num - t), out + t);
    }
}

/** Parabola that bends into +-1. */
Quad finalCurve(Quad c)
{
    const Quad m = magnitude(c);
    const Quad y = m > 1.0f ? quadOf(1.0f) : (3.0f * m - m * m) * 0.5f + fxTiny;
    return c < 0.0f ? -y : y;
}

enum MultiDistortType
{
    mdNone,
    mdAtan,
    mdCos,
    mdCross,
    mdFoldover,
    mdFuzz,
    mdLimiter,
    mdOverdrive,
    mdPower,
    mdRectifier,
    mdSaturator,
    mdSquare
};

/** Curves of "Multi Distort" with amounts a and b; in and out may be the same. What depends on the amounts
   alone is worked out once. */
void multiCurve(int type, float a, float b, const float* in, float* out, int num)
{
    const Quad one = quadOf(1.0f);

    switch (type)
    {
    case mdAtan:
    {
        const float t = std::exp2(5.0f * a) - 0.99f;
        const float u = std::atan(t);
        return forQuads(in, out, num,
                        [=](Quad x)
                        { return magnitude(x) < 0.001f ? quadOf(0.0f) : arctangent(x * t) / u + fxTiny; });
    }
    case mdCos:
    {
        const float t = std::exp2(5.0f * a) - 1.0f;
        return forQuads(in, out, num, [=](Quad x) { return x * cosine(x * t * 3.14159f); });
    }
    case mdCross:
    {
        const float t = a * 0.2f;
        return forQuads(in, out, num,
                        [=](Quad x)
                        {
                            const Quad m = magnitude(x) - t;
                            return signedBy(m < 0.0f ? m * 2.0f : m, x);
                        });
    }
    case mdFoldover:
    {
        const float t = 1.0f - a * 0.99f;
        return forQuads(in, out, num,
                        [=](Quad x)
                        {
                            const Quad z = x - t;
                            const Quad r = z - truncated(z / (4.0f * t)) * 4.0f * t;
                            return (magnitude(magnitude(r) - 2.0f * t) - t) / t;
                        });
    }
    case mdFuzz:
    {
        const float t = std::exp2(4.0f * b) - 1.0f;
        return forQuads(in, out, num, [=](Quad x) { return x + sine(x * t * 3.14159f) * (a - x * x * a); });
    }
    case mdLimiter:
    {
        const float t = std::exp2(-6.0f * a);
        return forQuads(in, out, num, [=](Quad x) { return heldTo(x / t, -one, one); });
    }
    case mdOverdrive:
    {
        const float t = std::exp2(6.0f * a) - 1.0f;
        return forQuads(in, out, num,
                        [=](Quad x)
                        {
                            const Quad size = magnitude(x);
                            return (size + t) * x / ((t - 1.0f) * size + x * x + 1.0f);
                        });
    }
    case mdPower:
    {
        const float k = a * 0.999f;
        const float g = 2.0f * k / (1.0f - k);
        return forQuads(in, out, num, [=](Quad x) { return (g + 1.0f) * x / (magnitude(x) * g + 1.0f); });
    }
    case mdRectifier:
        return forQuads(in, out, num, [=](Quad x) { return x >= 0.0f ? x : x * (1.0f - 2.0f * a); });
    case mdSaturator:
    {
        const float t = std::exp2(4.0f * a) - 1.0f;
        return forQuads(in, out, num,
                        [=](Quad x)
                        {
                            const Quad v = x * t + fxTiny;
                            return (x + v) / (magnitude(v) + 1.0f) + fxTiny;
                        });
    }
    case mdSquare:
        return forQuads(in, out, num, [=](Quad x) { return x >= 0.0f ? one : -one; });
    default:
        std::copy(in, in + num, out);
    }
}

Quad waveshape(Quad in, const DistortionFields& f)
{
    const QuadIndex top = in > 0.0f;
    const Quad depth = top ? quadOf(f.wsTop) : quadOf(f.wsBottom);
    return in * (top ? quadOf(1.0f) : quadOf(f.wsRect)) * cosine(in * 6.28318f * depth);
}
} // namespace

void ringModUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.ringType = discreteChoice(p[0], 4.99f);
    slot.ringInc = std::exp2(p[1] * 10.0f) * 20.0f / slot.sampleRate;
    slot.ringAmount = p[2];
}

void ringModProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    float phase = slot.ringPhase;
    const float inc = slot.ringInc, amount = slot.ringAmount;
    const int type = slot.ringType;

    for (int t = 0; t < num; ++t)
    {
        phase = fraction(phase + inc);

        if (type == 4)
        {
            wetLeft[t] = wetRight[t] = x[t] * y[t] * 2.0f;
            continue;
        }

        const float v = amount * ringOscillator(type, phase) + (1.0f - amount);
        wetLeft[t] = v * x[t];
        wetRight[t] = v * y[t];
    }

    slot.ringPhase = phase;
}

void distortUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.distLimit = p[0];
    slot.distRect = p[1] * 2.0f - 1.0f;
    slot.distSat = std::exp2(p[2] * 8.0f) - 1.0f;
    slot.distTone = p[3];
    slot.distEmp = p[4];
    slot.distPost = levelGain(p[5], 40.0f, -30.0f);
    slot.distModWheelAmt = p[6] * 2.0f - 1.0f;
}

void distortProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    const DistortionFields& f = slot;
    SvfSetting settings[fxChunk];
    svfSettings(slot, slot.sampleCount, 16, settings, num,
                [&slot](int)
                {
                    setSvf(slot, clampUnit(slot.distModWheelAmt * slot.modWheel + slot.distTone),
                           slot.distEmp, 0.0f, slot.sampleRate);
                });

    driveCurve(x, f.distSat, wetLeft, num);
    driveCurve(y, f.distSat, wetRight, num);
    SvfRun svf(slot.svfA);

    for (int t = 0; t < num; ++t)
    {
        svf.tick(pairOf(wetLeft[t], wetRight[t]), settings[t]);
        const FloatPair band = svf.bandPass();
        wetLeft[t] = band[0];
        wetRight[t] = band[1];
    }

    svf.store();

    const auto shape = [&f](Quad b)
    {
        b = b * (b < 0.0f ? quadOf(f.distRect) : quadOf(1.0f));
        return finalCurve(f.distPost * heldTo(b, quadOf(-f.distLimit), quadOf(f.distLimit)));
    };
    forQuads(wetLeft, wetLeft, num, shape);
    forQuads(wetRight, wetRight, num, shape);
}

void multiDistortUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.mdType = discreteChoice(p[0], 11.99f);
    slot.mdPre = levelGain(p[1], 60.0f, -30.0f);
    slot.mdAmount1 = p[2];
    slot.mdAmount2 = p[3];
    slot.mdNormalize = p[4];
    setSvf(slot, p[5], 0.0f, 0.0f, slot.sampleRate);
    setSvfB(slot, p[6], 0.0f, slot.sampleRate);
    slot.mdPost = levelGain(p[7], 60.0f, -30.0f);
}

void multiDistortProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight,
                         int num)
{
    const DistortionFields& f = slot;
    const auto boosted = [&f](Quad in) { return heldTo(f.mdPre * in, quadOf(-1.0f), quadOf(1.0f)); };
    forQuads(x, wetLeft, num, boosted);
    forQuads(y, wetRight, num, boosted);
    multiCurve(f.mdType, f.mdAmount1, f.mdAmount2, wetLeft, wetLeft, num);
    multiCurve(f.mdType, f.mdAmount1, f.mdAmount2, wetRight, wetRight, num);

    const float n = f.mdNormalize, post = f.mdPost;
    Quad envelopes = {f.mdEnvInL, f.mdEnvInR, f.mdEnvOutL, f.mdEnvOutR};

    for (int t = 0; t < num; ++t)
    {
        const Quad levels = magnitude(Quad{x[t], y[t], wetLeft[t], wetRight[t]});
        envelopes = larger(envelopes * 0.98f + levels * 0.02f, quadOf(0.001f));
        const Quad gain =
            n * envelopes / __builtin_shufflevector(envelopes, envelopes, 2, 3, 2, 3) + (1.0f - n);
        wetLeft[t] = wetLeft[t] * gain[0];
        wetRight[t] = wetRight[t] * gain[1];
    }

    slot.mdEnvInL = envelopes[0];
    slot.mdEnvInR = envelopes[1];
    slot.mdEnvOutL = envelopes[2];
    slot.mdEnvOutR = envelopes[3];

    svfSeries(
        slot, wetLeft, wetRight, num,
        [=](int t) {
            return FloatPair{wetLeft[t], wetRight[t]};
        },
        [](FloatPair, const SvfRun& low) { return low.lowPass(); },
        [](FloatPair, const SvfRun& high) { return high.highPass(); });

    const auto finished = [=](Quad v) { return heldTo(post * v, quadOf(-1.0f), quadOf(1.0f)); };
    forQuads(wetLeft, wetLeft, num, finished);
    forQuads(wetRight, wetRight, num, finished);
}

void lowFiUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.lofiLevels = std::exp2(17.0f - p[0] * 16.0f);
    slot.lofiInvLevels = 1.0f / slot.lofiLevels;
    slot.lofiHold = truncateTo(std::exp2(p[1] * 5.0f), 1, 32);
    slot.lofiCut = p[2];
    slot.lofiModWheelAmt = p[3] * 2.0f - 1.0f;
}

void lowFiProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    DistortionFields& f = slot;
    SvfSetting settings[fxChunk];
    svfSettings(slot, slot.sampleCount, 16, settings, num,
                [&slot](int)
                {
                    const float v = clampUnit(slot.lofiModWheelAmt * slot.modWheel + slot.lofiCut);
                    slot.lofiCutSmooth = slot.lofiCutSmooth * 0.9f + v * 0.100000024f + fxTiny;
                    setSvf(slot, clampUnit(slot.lofiCutSmooth), 0.1f, 0.0f, slot.sampleRate);
                });

    // A new sample is taken at each multiple of the hold. The count's turn at 2^32 is one, whatever the hold.
    const auto hold = static_cast<std::uint32_t>(f.lofiHold);
    std::uint32_t count = slot.sampleCount, remainder = count % hold;
    float heldL = f.lofiHoldL, heldR = f.lofiHoldR;

    for (int t = 0; t < num; ++t)
    {
        ++count;
        remainder = remainder + 1 == hold || count == 0 ? 0 : remainder + 1;
        heldL = remainder == 0 ? x[t] : heldL;
        heldR = remainder == 0 ? y[t] : heldR;
        wetLeft[t] = heldL;
        wetRight[t] = heldR;
    }

    f.lofiHoldL = heldL;
    f.lofiHoldR = heldR;

    const float levels = f.lofiLevels, invLevels = f.lofiInvLevels;
    const auto quantised = [=](Quad in) { return truncated(levels * in) * invLevels; };
    forQuads(wetLeft, wetLeft, num, quantised);
    forQuads(wetRight, wetRight, num, quantised);
    svfLowPass(slot.svfA, settings, wetLeft, wetRight, num);
}

void waveshaperUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.wsTop = std::exp2(p[0] * 4.0f) - 1.0f;
    slot.wsBottom = std::exp2(p[1] * 4.0f) - 1.0f;
    slot.wsRect = 1.0f - p[2] * 2.0f;
    slot.wsLow = p[3];
    slot.wsModAmt = p[4];
    slot.wsInc = lfoIncTempo(p[5], slot.sampleRate, slot.bpm);
}

void waveshaperProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    const DistortionFields& f = slot;
    const std::uint32_t phase = slot.wsPhase;
    SvfSetting settings[fxChunk];
    svfSettings(slot, slot.sampleCount, 4, settings, num,
                [&slot, phase](int t)
                {
                    const std::uint32_t now =
                        lfoAdvance(phase, slot.wsInc * (static_cast<std::uint32_t>(t) + 1));
                    setSvf(slot, clampUnit(slot.sineBipolar[now >> 8] * slot.wsModAmt + slot.wsLow), 0.1f,
                           0.0f, slot.sampleRate);
                });
    slot.wsPhase = lfoAdvance(phase, slot.wsInc * static_cast<std::uint32_t>(num));

    const auto shape = [&f](Quad in) { return waveshape(in, f); };
    forQuads(x, wetLeft, num, shape);
    forQuads(y, wetRight, num, shape);
    svfLowPass(slot.svfA, settings, wetLeft, wetRight, num);
}

void clipperUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.clipDrive = levelGain(p[0], 60.0f, -30.0f);
    setSvf(slot, p[1], 0.0f, 0.0f, slot.sampleRate);
    const float t = std::exp2(-10.0f * p[2]);
    slot.clipLower = slot.clipUpper = t;
    if (p[3] < 0.5f)
        slot.clipUpper = p[3] * 2.0f * t;
    else
        slot.clipLower = (2.0f - p[3] * 2.0f) * t;

    setToneFilters(slot, p[4], p[5], slot.invSampleRate);
    slot.clipPost = levelGain(p[6], 60.0f, -30.0f);
}

void clipperProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    const Pair frequency = pairOf(slot.svfF), resonance = pairOf(slot.svfQ);
    const float drive = slot.clipDrive;
    const Quad lower = quadOf(-slot.clipLower), upper = quadOf(slot.clipUpper);
    SvfRun svf(slot.svfA);
    ToneRun tone(slot);

    for (int t = 0; t < num; ++t)
    {
        svf.tick(pairOf(x[t], y[t]), frequency, resonance);
        const FloatPair high = svf.highPass();
        const Quad clipped = heldTo(Quad{high[0], high[1], 0.0f, 0.0f} * drive, lower, upper);
        const Quad out = tone.tick(clipped);
        wetLeft[t] = out[0];
        wetRight[t] = out[1];
    }

    svf.store();
    tone.store();

    for (int t = 0; t < num; ++t)
    {
        wetLeft[t] = wetLeft[t] * slot.clipPost;
        wetRight[t] = wetRight[t] * slot.clipPost;
    }
}
} // namespace quorel
