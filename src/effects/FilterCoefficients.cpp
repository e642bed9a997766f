// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/EffectMath.h"
#include "effects/FilterCore.h"

namespace quorel
{
namespace
{
constexpr float pi = 3.14159f;
constexpr float twoPi = 6.28318f;
constexpr float sqrt8 = 2.8284271f;

/** Formants in Hz of "A", "E", "I", "O", "U". */
constexpr float vowelTable[5][4] = {
    {650.0f, 1080.0f, 2650.0f, 2900.0f}, {400.0f, 1700.0f, 2600.0f, 3200.0f},
    {290.0f, 1870.0f, 2800.0f, 3250.0f}, {400.0f, 800.0f, 2800.0f, 3000.0f},
    {350.0f, 600.0f, 2700.0f, 2900.0f},
};

// Rounding can carry the poles of a band far below the rate onto or past the unit circle; a step or two of a
// float back keeps them inside.
void stabilise(float& a1, float& a2)
{
    a2 = std::min(a2, std::nextafter(1.0f, 0.0f));
    const double limit = 1.0 + static_cast<double>(a2);

    if (std::abs(static_cast<double>(a1)) >= limit)
    {
        a1 = std::copysign(static_cast<float>(limit), a1);
        while (std::abs(static_cast<double>(a1)) >= limit)
            a1 = std::nextafter(a1, 0.0f);
    }
}

void setOnePole(const FilterCore& core, FilterCoefficients& c)
{
    const float n = std::max((core.freqHz + 0.001f) * core.invSampleRate + fxTiny, core.minFreq);
    c.opCoef = n > 0.2f ? 0.4f : 2.0f * n;
    c.opInv = 1.0f - c.opCoef;
}

void setStateVariable(FilterCoefficients& c, float fn, float r)
{
    c.svfF = 2.0f * std::sin(fn * pi);
    c.svfQ = 1.0f - r;
}

void setLowPassBiquad(FilterCoefficients& c, float w, float k)
{
    const float g = 1.0f / (k + 1.001f + w * w);
    c.b0 = c.b2 = g;
    c.b1 = 2.0f * g;
    c.a1 = (1.0f - w * w) * 2.0f * g;
    c.a2 = (1.0f - k + w * w) * g;
    stabilise(c.a1, c.a2);
}

void setHighPassBiquad(FilterCoefficients& c, float w, float k)
{
    const float g = 1.0f / (k + 1.0001f + w * w);
    c.b0 = c.b2 = g;
    c.b1 = -2.0f * g;
    c.a1 = (w * w - 1.0f) * 2.0f * g;
    c.a2 = (1.0f - k + w * w) * g;
    stabilise(c.a1, c.a2);
}

void setBandPassBiquad(FilterCoefficients& c, float fn, float r)
{
    const float w = fn * twoPi;
    const float q = std::exp2(r * 3.98f + 1.0f);
    const float a = std::sin(w) / q;
    c.b0 = std::sqrt(q + 1.0f) * 2.0f * a / (1.0f + a);
    c.b1 = 0.0f;
    c.b2 = std::sqrt(q + 1.0f) * (-2.0f * a) / (1.0f + a);
    c.a1 = -2.0f * std::cos(w) / (1.0f + a);
    c.a2 = (1.0f - a) / (1.0f + a);
    stabilise(c.a1, c.a2);
}

void setNotchBiquad(FilterCoefficients& c, float fn, float r)
{
    const float w = fn * twoPi;
    const float r2 = r * 0.98f;
    const float a = std::sin(w) / ((1.0f - r2) * 1.96f);
    c.a1 = -2.0f * std::cos(w) / (1.0f + a);
    c.b0 = c.b2 = 1.0f / (1.0f + a);
    c.a2 = (1.0f - a) / (1.0f + a);
    stabilise(c.a1, c.a2);
    c.b1 = c.a1;
}

void setSteepLowPassBiquad(FilterCoefficients& c, float fn)
{
    const float w = std::cos(fn * pi) / (std::sin(fn * pi) + 0.0015f);
    setLowPassBiquad(c, w, sqrt8 * w);
}

void setSteepHighPassBiquad(FilterCoefficients& c, float fn)
{
    const float w = std::sin(fn * pi) / std::abs(std::cos(fn * pi) + 0.0015f);
    setHighPassBiquad(c, w, sqrt8 * w);
}

void setLadder(FilterCoefficients& c, float fn, float r)
{
    const float f = fn * 2.0f;
    const float u = 1.0f - f;
    const float p = u * f + f;
    c.ladderScale = 2.0f * p - 1.0f;
    c.ladderP = p;
    c.ladderFeedback = ((u * 5.6f * u + (1.0f - u)) * (u * 0.5f) + 1.0f) * r;
}

void setComb(const FilterCore& core, FilterCoefficients& c)
{
    c.combDelay = truncateTo(core.sampleRate * 256.0f / core.freqHz, 0, 0x1ffffe);
    if (c.combDelay < 513)
        c.combDelay = 514;

    c.combGain = std::sqrt(std::sqrt(core.resonance));
    if (core.type == filterCombMinus)
        c.combGain = -c.combGain;
}

void setVowel(const FilterCore& core, FilterCoefficients& c, float r)
{
    const float q = (r * 0.399f + 0.1f) * pi;
    const float v = clampUnit(core.vowel) * 4.99f;
    const int i = static_cast<int>(v);
    const int next = i == 4 ? 0 : i + 1;
    const float frac = v - static_cast<float>(i);
    const float ratio = core.freqHz / 440.0f * core.invSampleRate;

    for (int k = 0; k < 4; ++k)
    {
        const float f =
            std::min(((1.0f - frac) * vowelTable[i][k] + frac * vowelTable[next][k]) * ratio, 0.4f);
        const float cot = 1.0f / (std::tan(f * q) + 0.001f);
        const float a = 1.0f / (cot + 1.0f);
        c.formantB[k] = a;
        c.formantA1[k] = -(2.0f * std::cos(f * 6.283180236816406f) * cot * a);
        c.formantA2[k] = (cot - 1.0f) * a;
        stabilise(c.formantA1[k], c.formantA2[k]);
    }
}

void setFormant(const FilterCore& core, FilterCoefficients& c, int k, float r, float multiple)
{
    const float q = std::exp2(r * 3.98f + 1.0f);
    const float f = std::min((core.freqHz + 0.001f) * multiple * core.invSampleRate + fxTiny, 0.4f);
    const float w = f * twoPi;
    const float a = std::sin(w) / q;
    c.formantB[k] = std::sqrt(q + 1.0f) * 2.0f * a / (1.0f + a);
    c.formantA1[k] = -2.0f * std::cos(w) / (1.0f + a);
    c.formantA2[k] = (1.0f - a) / (1.0f + a);
    stabilise(c.formantA1[k], c.formantA2[k]);
}

float modulation(const FilterCore& core)
{
    return core.mod0 + core.mod1 + core.mod2 + core.mod3 + core.mod4 + core.mod5 + core.mod6 + core.mod7;
}

void setBiquad(FilterCoefficients& c, int type, float fn, float r)
{
    switch (type)
    {
    case filterLp12Second:
    {
        // 3.143159 for pi is kept as it has always sounded.
        const float w = std::cos(fn * pi) / (std::sin(fn * 3.143159f) + 0.0015f);
        return setLowPassBiquad(c, w, sqrt8 * std::abs(1.0f - r) * w);
    }
    case filterHp12Second:
    {
        const float w = std::sin(fn * pi) / (std::cos(fn * pi) + 0.0015f);
        return setHighPassBiquad(c, w, sqrt8 * std::abs(1.0f - r) * w);
    }
    case filterBp12Second:
    case filterBp24Second:
        return setBandPassBiquad(c, fn, r);
    case filterNotch12Second:
    case filterNotch24Second:
        return setNotchBiquad(c, fn, r);
    case filterLp24:
    case filterLp36:
        return setSteepLowPassBiquad(c, fn);
    case filterHp24:
    case filterHp36:
        return setSteepHighPassBiquad(c, fn);
    default:
        break;
    }
}

void setFormants(const FilterCore& core, FilterCoefficients& c, float r)
{
    for (int k = 0; k < 4; ++k)
    {
        const float octaves = core.type == filterForm2
                                  ? (k < 2 ? -2.0f : 2.0f) * core.vowel
                                  : (core.vowel * 0.6666667f * static_cast<float>(k) - core.vowel) * 2.0f;
        setFormant(core, c, k, r, std::exp2(octaves));
    }
}

void setRing(const FilterCore& core, FilterCoefficients& c, float r)
{
    const float cut = clampUnit(modulation(core) + core.cutoffTarget);
    c.ringRate = std::exp2(10.0f * cut) * core.keyScale * 20.0f * twoPi * core.invSampleRate;
    c.ringDepth = r;
}

/** All but the biquad. */
void setOtherParts(const FilterCore& core, FilterCoefficients& c, float fn, float r)
{
    switch (core.type)
    {
    case filterLp6:
    case filterHp6:
        return setOnePole(core, c);
    case filterLp18:
    case filterHp18:
        setOnePole(core, c);
        return setStateVariable(c, fn, r);
    case filterLp12:
    case filterHp12:
    case filterBp12:
    case filterNotch12:
    case filterLp24:
    case filterHp24:
    case filterBp24Second:
    case filterNotch24Second:
        return setStateVariable(c, fn, r);
    case filterBp24:
    case filterNotch24:
    case filterLp24Second:
    case filterHp24Second:
    case filterLp36:
    case filterHp36:
        return setLadder(c, fn, r);
    case filterCombPlus:
    case filterCombMinus:
        return setComb(core, c);
    case filterVox:
        return setVowel(core, c, r);
    case filterForm2:
    case filterForm4:
        return setFormants(core, c, r);
    case filterRing:
        return setRing(core, c, r);
    default:
        break;
    }
}
} // namespace

bool filterCoefficients(FilterCore& core, FilterCoefficients& coefficients)
{
    core.cutoffSmooth = core.cutoffTarget * 0.01f + core.cutoffSmooth * 0.99f;
    core.freqHz = std::exp2(10.0f * clampUnit(modulation(core) + core.cutoffSmooth)) * core.keyScale * 20.0f;

    if (core.freqHz == core.lastFreqHz && core.resonance == core.lastResonance &&
        core.vowel == core.lastVowel && core.type == core.lastType)
        return false;

    core.lastFreqHz = core.freqHz;
    core.lastResonance = core.resonance;
    core.lastVowel = core.vowel;
    core.lastType = core.type;

    // A fraction of the doubled rate.
    const float r = std::min(core.resonance, 0.99f);
    const float fn = std::max(
        (std::min(core.freqHz, core.maxFreq) + 0.001f) * core.invSampleRate * 0.5f + fxTiny, core.minFreq);

    setBiquad(coefficients, core.type, fn, r);
    setOtherParts(core, coefficients, fn, r);
    return true;
}
} // namespace quorel
