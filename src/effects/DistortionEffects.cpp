// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/DistortionEffects.h"

#include "effects/DriveCurve.h"
#include "effects/EffectMath.h"
#include "effects/FxContext.h"
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

// Curves of "Multi Distort" with amounts a and b; in and out may be the same. What depends on the amounts
// alone is worked out once.

void atanCurve(float a, const float* in, float* out, int num)
{
    const float t = std::exp2(5.0f * a) - 0.99f;
    const float u = std::atan(t);
    forQuads(in, out, num,
             [=](Quad x) { return magnitude(x) < 0.001f ? quadOf(0.0f) : arctangent(x * t) / u + fxTiny; });
}

void cosCurve(float a, const float* in, float* out, int num)
{
    const float t = std::exp2(5.0f * a) - 1.0f;
    forQuads(in, out, num, [=](Quad x) { return x * cosine(x * t * 3.14159f); });
}

void crossCurve(float a, const float* in, float* out, int num)
{
    const float t = a * 0.2f;
    forQuads(in, out, num,
             [=](Quad x)
             {
                 const Quad m = magnitude(x) - t;
                 return signedBy(m < 0.0f ? m * 2.0f : m, x);
             });
}

void foldoverCurve(float a, const float* in, float* out, int num)
{
    const float t = 1.0f - a * 0.99f;
    forQuads(in, out, num,
             [=](Quad x)
             {
                 const Quad z = x - t;
                 const Quad r = z - truncated(z / (4.0f * t)) * 4.0f * t;
                 return (magnitude(magnitude(r) - 2.0f * t) - t) / t;
             });
}

void fuzzCurve(float a, float b, const float* in, float* out, int num)
{
    const float t = std::exp2(4.0f * b) - 1.0f;
    forQuads(in, out, num, [=](Quad x) { return x + sine(x * t * 3.14159f) * (a - x * x * a); });
}

void limiterCurve(float a, const float* in, float* out, int num)
{
    const float t = std::exp2(-6.0f * a);
    forQuads(in, out, num, [=](Quad x) { return heldTo(x / t, quadOf(-1.0f), quadOf(1.0f)); });
}

void overdriveCurve(float a, const float* in, float* out, int num)
{
    const float t = std::exp2(6.0f * a) - 1.0f;
    forQuads(in, out, num,
             [=](Quad x)
             {
                 const Quad size = magnitude(x);
                 return (size + t) * x / ((t - 1.0f) * size + x * x + 1.0f);
             });
}

void powerCurve(float a, const float* in, float* out, int num)
{
    const float k = a * 0.999f;
    const float g = 2.0f * k / (1.0f - k);
    forQuads(in, out, num, [=](Quad x) { return (g + 1.0f) * x / (magnitude(x) * g + 1.0f); });
}

void saturatorCurve(float a, const float* in, float* out, int num)
{
    const float t = std::exp2(4.0f * a) - 1.0f;
    forQuads(in, out, num,
             [=](Quad x)
             {
                 const Quad v = x * t + fxTiny;
                 return (x + v) / (magnitude(v) + 1.0f) + fxTiny;
             });
}

void multiCurve(int type, float a, float b, const float* in, float* out, int num)
{
    switch (type)
    {
    case mdAtan:
        return atanCurve(a, in, out, num);
    case mdCos:
        return cosCurve(a, in, out, num);
    case mdCross:
        return crossCurve(a, in, out, num);
    case mdFoldover:
        return foldoverCurve(a, in, out, num);
    case mdFuzz:
        return fuzzCurve(a, b, in, out, num);
    case mdLimiter:
        return limiterCurve(a, in, out, num);
    case mdOverdrive:
        return overdriveCurve(a, in, out, num);
    case mdPower:
        return powerCurve(a, in, out, num);
    case mdRectifier:
        return forQuads(in, out, num, [=](Quad x) { return x >= 0.0f ? x : x * (1.0f - 2.0f * a); });
    case mdSaturator:
        return saturatorCurve(a, in, out, num);
    case mdSquare:
        return forQuads(in, out, num, [](Quad x) { return x >= 0.0f ? quadOf(1.0f) : quadOf(-1.0f); });
    default:
        std::copy(in, in + num, out);
    }
}

Quad waveshape(Quad in, const WaveshaperState& f)
{
    const QuadIndex top = in > 0.0f;
    const Quad depth = top ? quadOf(f.top) : quadOf(f.bottom);
    return in * (top ? quadOf(1.0f) : quadOf(f.rect)) * cosine(in * 6.28318f * depth);
}
} // namespace

void ringModUpdate(RingModState& f, FxContext& c)
{
    const float* p = c.param;
    f.type = discreteChoice(p[0], 4.99f);
    f.inc = std::exp2(p[1] * 10.0f) * 20.0f / c.sampleRate;
    f.amount = p[2];
}

void ringModProcess(RingModState& f, FxContext&, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num)
{
    float phase = f.phase;
    const float inc = f.inc, amount = f.amount;
    const int type = f.type;

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

    f.phase = phase;
}

void distortUpdate(DistortState& f, FxContext& c)
{
    const float* p = c.param;
    f.limit = p[0];
    f.rect = p[1] * 2.0f - 1.0f;
    f.sat = std::exp2(p[2] * 8.0f) - 1.0f;
    f.tone = p[3];
    f.emp = p[4];
    f.post = levelGain(p[5], 40.0f, -30.0f);
    f.modWheelAmt = p[6] * 2.0f - 1.0f;
}

void distortProcess(DistortState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num)
{
    SvfSetting settings[fxChunk];
    svfSettings(c.svf, c.sampleCount, 16, settings, num,
                [&](int) {
                    setSvf(c.svf, clampUnit(f.modWheelAmt * c.modWheel + f.tone), f.emp, 0.0f, c.sampleRate);
                });

    driveCurve(x, f.sat, wetLeft, num);
    driveCurve(y, f.sat, wetRight, num);
    SvfRun svf(c.svf.svfA);

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
        b = b * (b < 0.0f ? quadOf(f.rect) : quadOf(1.0f));
        return finalCurve(f.post * heldTo(b, quadOf(-f.limit), quadOf(f.limit)));
    };
    forQuads(wetLeft, wetLeft, num, shape);
    forQuads(wetRight, wetRight, num, shape);
}

void multiDistortUpdate(MultiDistortState& f, FxContext& c)
{
    const float* p = c.param;
    f.type = discreteChoice(p[0], 11.99f);
    f.pre = levelGain(p[1], 60.0f, -30.0f);
    f.amount1 = p[2];
    f.amount2 = p[3];
    f.normalize = p[4];
    setSvf(c.svf, p[5], 0.0f, 0.0f, c.sampleRate);
    setSvfB(c.svf, p[6], 0.0f, c.sampleRate);
    f.post = levelGain(p[7], 60.0f, -30.0f);
}

void multiDistortProcess(MultiDistortState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                         float* wetRight, int num)
{
    const auto boosted = [&f](Quad in) { return heldTo(f.pre * in, quadOf(-1.0f), quadOf(1.0f)); };
    forQuads(x, wetLeft, num, boosted);
    forQuads(y, wetRight, num, boosted);
    multiCurve(f.type, f.amount1, f.amount2, wetLeft, wetLeft, num);
    multiCurve(f.type, f.amount1, f.amount2, wetRight, wetRight, num);

    const float n = f.normalize, post = f.post;
    Quad envelopes = {f.envInL, f.envInR, f.envOutL, f.envOutR};

    for (int t = 0; t < num; ++t)
    {
        const Quad levels = magnitude(Quad{x[t], y[t], wetLeft[t], wetRight[t]});
        envelopes = larger(envelopes * 0.98f + levels * 0.02f, quadOf(0.001f));
        const Quad gain =
            n * envelopes / __builtin_shufflevector(envelopes, envelopes, 2, 3, 2, 3) + (1.0f - n);
        wetLeft[t] = wetLeft[t] * gain[0];
        wetRight[t] = wetRight[t] * gain[1];
    }

    f.envInL = envelopes[0];
    f.envInR = envelopes[1];
    f.envOutL = envelopes[2];
    f.envOutR = envelopes[3];

    svfSeries(
        c.svf, wetLeft, wetRight, num,
        [=](int t) {
            return FloatPair{wetLeft[t], wetRight[t]};
        },
        [](FloatPair, const SvfRun& low) { return low.lowPass(); },
        [](FloatPair, const SvfRun& high) { return high.highPass(); });

    const auto finished = [=](Quad v) { return heldTo(post * v, quadOf(-1.0f), quadOf(1.0f)); };
    forQuads(wetLeft, wetLeft, num, finished);
    forQuads(wetRight, wetRight, num, finished);
}

void lowFiUpdate(LowFiState& f, FxContext& c)
{
    const float* p = c.param;
    f.levels = std::exp2(17.0f - p[0] * 16.0f);
    f.invLevels = 1.0f / f.levels;
    f.hold = truncateTo(std::exp2(p[1] * 5.0f), 1, 32);
    f.cut = p[2];
    f.modWheelAmt = p[3] * 2.0f - 1.0f;
}

void lowFiProcess(LowFiState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                  float* wetRight, int num)
{
    SvfSetting settings[fxChunk];
    svfSettings(c.svf, c.sampleCount, 16, settings, num,
                [&](int)
                {
                    const float v = clampUnit(f.modWheelAmt * c.modWheel + f.cut);
                    f.cutSmooth = f.cutSmooth * 0.9f + v * 0.100000024f + fxTiny;
                    setSvf(c.svf, clampUnit(f.cutSmooth), 0.1f, 0.0f, c.sampleRate);
                });

    // A new sample is taken at each multiple of the hold. The count's turn at 2^32 is one, whatever the hold.
    const auto hold = static_cast<std::uint32_t>(f.hold);
    std::uint32_t count = c.sampleCount, remainder = count % hold;
    float heldL = f.holdL, heldR = f.holdR;

    for (int t = 0; t < num; ++t)
    {
        ++count;
        remainder = remainder + 1 == hold || count == 0 ? 0 : remainder + 1;
        heldL = remainder == 0 ? x[t] : heldL;
        heldR = remainder == 0 ? y[t] : heldR;
        wetLeft[t] = heldL;
        wetRight[t] = heldR;
    }

    f.holdL = heldL;
    f.holdR = heldR;

    const float levels = f.levels, invLevels = f.invLevels;
    const auto quantised = [=](Quad in) { return truncated(levels * in) * invLevels; };
    forQuads(wetLeft, wetLeft, num, quantised);
    forQuads(wetRight, wetRight, num, quantised);
    svfLowPass(c.svf.svfA, settings, wetLeft, wetRight, num);
}

void waveshaperUpdate(WaveshaperState& f, FxContext& c)
{
    const float* p = c.param;
    f.top = std::exp2(p[0] * 4.0f) - 1.0f;
    f.bottom = std::exp2(p[1] * 4.0f) - 1.0f;
    f.rect = 1.0f - p[2] * 2.0f;
    f.low = p[3];
    f.modAmt = p[4];
    f.inc = lfoIncTempo(p[5], c.sampleRate, c.bpm);
}

void waveshaperProcess(WaveshaperState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                       float* wetRight, int num)
{
    const std::uint32_t phase = f.phase;
    SvfSetting settings[fxChunk];
    svfSettings(c.svf, c.sampleCount, 4, settings, num,
                [&, phase](int t)
                {
                    const std::uint32_t now = lfoAdvance(phase, f.inc * (static_cast<std::uint32_t>(t) + 1));
                    setSvf(c.svf, clampUnit(c.sines->bipolar[now >> 8] * f.modAmt + f.low), 0.1f, 0.0f,
                           c.sampleRate);
                });
    f.phase = lfoAdvance(phase, f.inc * static_cast<std::uint32_t>(num));

    const auto shape = [&f](Quad in) { return waveshape(in, f); };
    forQuads(x, wetLeft, num, shape);
    forQuads(y, wetRight, num, shape);
    svfLowPass(c.svf.svfA, settings, wetLeft, wetRight, num);
}

void clipperUpdate(ClipperState& f, FxContext& c)
{
    const float* p = c.param;
    f.drive = levelGain(p[0], 60.0f, -30.0f);
    setSvf(c.svf, p[1], 0.0f, 0.0f, c.sampleRate);
    const float t = std::exp2(-10.0f * p[2]);
    f.lower = f.upper = t;
    if (p[3] < 0.5f)
        f.upper = p[3] * 2.0f * t;
    else
        f.lower = (2.0f - p[3] * 2.0f) * t;

    setToneFilters(c.tone, p[4], p[5], c.invSampleRate);
    f.post = levelGain(p[6], 60.0f, -30.0f);
}

void clipperProcess(ClipperState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num)
{
    const Pair frequency = pairOf(c.svf.svfF), resonance = pairOf(c.svf.svfQ);
    const float drive = f.drive;
    const Quad lower = quadOf(-f.lower), upper = quadOf(f.upper);
    SvfRun svf(c.svf.svfA);
    ToneRun tone(c.tone);

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
        wetLeft[t] = wetLeft[t] * f.post;
        wetRight[t] = wetRight[t] * f.post;
    }
}
} // namespace quorel
