// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/DistortionEffects.h"

#include "effects/DriveCurve.h"
#include "effects/EffectMath.h"
#include "effects/FxSlot.h"
#include "effects/Lfo.h"

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

/** Parabola that bends into +-1. */
float finalCurve(float c)
{
    const float m = std::abs(c);
    const float y = m > 1.0f ? 1.0f : (3.0f * m - m * m) * 0.5f + fxTiny;
    return c < 0.0f ? -y : y;
}

float distortSample(float in, const DistortionFields& f, SvfState& state, const SvfBanks& svf)
{
    svfTick(state, driveCurve(in, f.distSat), svf.svfF, svf.svfQ);
    float b = svfBandPass(state);
    b = b * (b < 0.0f ? f.distRect : 1.0f);
    return finalCurve(f.distPost * std::min(std::max(b, -f.distLimit), f.distLimit));
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

/** Curve of "Multi Distort"; what depends on the two amounts alone is worked out once. */
class MultiCurve
{
public:
    explicit MultiCurve(const DistortionFields& f)
        : type(f.mdType)
        , a(f.mdAmount1)
    {
        switch (type)
        {
        case mdAtan:
            t = std::exp2(5.0f * a) - 0.99f;
            u = std::atan(t);
            break;
        case mdCos:
            t = std::exp2(5.0f * a) - 1.0f;
            break;
        case mdCross:
            t = a * 0.2f;
            break;
        case mdFoldover:
            t = 1.0f - a * 0.99f;
            break;
        case mdFuzz:
            t = std::exp2(4.0f * f.mdAmount2) - 1.0f;
            break;
        case mdLimiter:
            t = std::exp2(-6.0f * a);
            break;
        case mdOverdrive:
            t = std::exp2(6.0f * a) - 1.0f;
            break;
        case mdPower:
            u = a * 0.999f;
            t = 2.0f * u / (1.0f - u);
            break;
        case mdSaturator:
            t = std::exp2(4.0f * a) - 1.0f;
            break;
        default:
            break;
        }
    }

    float operator()(float x) const
    {
        const float size = std::abs(x);

        switch (type)
        {
        case mdAtan:
            return size < 0.001f ? 0.0f : std::atan(x * t) / u + fxTiny;
        case mdCos:
            return x * std::cos(x * t * 3.14159f);
        case mdCross:
        {
            const float m = size - t;
            return std::copysign(1.0f, x) * (m < 0.0f ? m * 2.0f : m);
        }
        case mdFoldover:
        {
            const float z = x - t;
            const float r = z - std::trunc(z / (4.0f * t)) * 4.0f * t;
            return (std::abs(std::abs(r) - 2.0f * t) - t) / t;
        }
        case mdFuzz:
            return x + std::sin(x * t * 3.14159f) * (a - x * x * a);
        case mdLimiter:
            return std::min(std::max(x / t, -1.0f), 1.0f);
        case mdOverdrive:
            return (size + t) * x / ((t - 1.0f) * size + x * x + 1.0f);
        case mdPower:
            return (t + 1.0f) * x / (size * t + 1.0f);
        case mdRectifier:
            return x >= 0.0f ? x : x * (1.0f - 2.0f * a);
        case mdSaturator:
        {
            const float v = x * t + fxTiny;
            return (x + v) / (std::abs(v) + 1.0f) + fxTiny;
        }
        case mdSquare:
            return x >= 0.0f ? 1.0f : -1.0f;
        default:
            return x;
        }
    }

private:
    const int type;
    const float a;
    float t = 0.0f, u = 0.0f;
};

float followEnvelope(float env, float x)
{
    return std::max(env * 0.98f + std::abs(x) * 0.02f, 0.001f);
}

float multiDistortSample(float in, const MultiCurve& curve, const DistortionFields& f, float& envIn,
                         float& envOut, SvfState& low, SvfState& high, const SvfBanks& svf)
{
    envIn = followEnvelope(envIn, in);
    float y = curve(std::min(std::max(f.mdPre * in, -1.0f), 1.0f));
    envOut = followEnvelope(envOut, y);

    const float n = f.mdNormalize;
    y = y * (n * envIn / envOut + (1.0f - n));
    svfTick(low, y, svf.svfF, svf.svfQ);
    svfTick(high, svfLowPass(low), svf.svfBF, svf.svfQ);
    return std::min(std::max(f.mdPost * svfHighPass(high), -1.0f), 1.0f);
}

float waveshape(float in, const DistortionFields& f)
{
    const bool top = in > 0.0f;
    return in * (top ? 1.0f : f.wsRect) * std::cos(in * 6.28318f * (top ? f.wsTop : f.wsBottom));
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
    const DistortionFields f = slot;
    SvfBanks svf = slot;
    std::uint32_t count = slot.sampleCount;

    for (int t = 0; t < num; ++t)
    {
        if ((++count & 15) == 0)
            setSvf(svf, clampUnit(f.distModWheelAmt * slot.modWheel + f.distTone), f.distEmp, 0.0f,
                   slot.sampleRate);

        wetLeft[t] = distortSample(x[t], f, svf.svfL, svf);
        wetRight[t] = distortSample(y[t], f, svf.svfR, svf);
    }

    static_cast<SvfBanks&>(slot) = svf;
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
    DistortionFields f = slot;
    SvfBanks svf = slot;
    const MultiCurve curve(f);

    for (int t = 0; t < num; ++t)
    {
        wetLeft[t] = multiDistortSample(x[t], curve, f, f.mdEnvInL, f.mdEnvOutL, svf.svfL, svf.svfBL, svf);
        wetRight[t] = multiDistortSample(y[t], curve, f, f.mdEnvInR, f.mdEnvOutR, svf.svfR, svf.svfBR, svf);
    }

    static_cast<DistortionFields&>(slot) = f;
    static_cast<SvfBanks&>(slot) = svf;
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
    DistortionFields f = slot;
    SvfBanks svf = slot;
    std::uint32_t count = slot.sampleCount;

    for (int t = 0; t < num; ++t)
    {
        ++count;

        if ((count & 15) == 0)
        {
            const float v = clampUnit(f.lofiModWheelAmt * slot.modWheel + f.lofiCut);
            f.lofiCutSmooth = f.lofiCutSmooth * 0.9f + v * 0.100000024f + fxTiny;
            setSvf(svf, clampUnit(f.lofiCutSmooth), 0.1f, 0.0f, slot.sampleRate);
        }

        if (count % static_cast<std::uint32_t>(f.lofiHold) == 0)
        {
            f.lofiHoldL = x[t];
            f.lofiHoldR = y[t];
        }

        svfTick(svf.svfL, std::trunc(f.lofiLevels * f.lofiHoldL) * f.lofiInvLevels, svf.svfF, svf.svfQ);
        svfTick(svf.svfR, std::trunc(f.lofiLevels * f.lofiHoldR) * f.lofiInvLevels, svf.svfF, svf.svfQ);
        wetLeft[t] = svfLowPass(svf.svfL);
        wetRight[t] = svfLowPass(svf.svfR);
    }

    static_cast<DistortionFields&>(slot) = f;
    static_cast<SvfBanks&>(slot) = svf;
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
    DistortionFields f = slot;
    SvfBanks svf = slot;
    std::uint32_t count = slot.sampleCount;

    for (int t = 0; t < num; ++t)
    {
        f.wsPhase = lfoAdvance(f.wsPhase, f.wsInc);

        if ((++count & 3) == 0)
            setSvf(svf, clampUnit(slot.sineBipolar[f.wsPhase >> 8] * f.wsModAmt + f.wsLow), 0.1f, 0.0f,
                   slot.sampleRate);

        svfTick(svf.svfL, waveshape(x[t], f), svf.svfF, svf.svfQ);
        svfTick(svf.svfR, waveshape(y[t], f), svf.svfF, svf.svfQ);
        wetLeft[t] = svfLowPass(svf.svfL);
        wetRight[t] = svfLowPass(svf.svfR);
    }

    static_cast<DistortionFields&>(slot) = f;
    static_cast<SvfBanks&>(slot) = svf;
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
    SvfBanks svf = slot;
    ToneFilter tone = slot;
    const float drive = slot.clipDrive, lower = -slot.clipLower, upper = slot.clipUpper, post = slot.clipPost;

    for (int t = 0; t < num; ++t)
    {
        svfTick(svf.svfL, x[t], svf.svfF, svf.svfQ);
        svfTick(svf.svfR, y[t], svf.svfF, svf.svfQ);
        float l = std::min(std::max(svfHighPass(svf.svfL) * drive, lower), upper);
        float r = std::min(std::max(svfHighPass(svf.svfR) * drive, lower), upper);
        toneLowPass(tone, l, r);
        toneHighPass(tone, l, r);
        wetLeft[t] = l * post;
        wetRight[t] = r * post;
    }

    static_cast<SvfBanks&>(slot) = svf;
    static_cast<ToneFilter&>(slot) = tone;
}
} // namespace quorel
