// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/StateVariableFilter.h"

#include "effects/EffectMath.h"

namespace quorel
{
namespace
{
double svfFrequency(float cut, float mod, float sampleRate)
{
    const float c = clampUnit(cut + mod);
    const float hz = std::min(std::exp2(10.0f * c) * 20.0f, sampleRate * 0.2f);
    const float w = std::max(hz / sampleRate, 10.0f / sampleRate);
    return static_cast<double>(2.0f * std::sin(w * 3.14159f) + fxTiny);
}
} // namespace

void setSvf(SvfBanks& svf, float cut, float res, float mod, float sampleRate)
{
    svf.svfF = svfFrequency(cut, mod, sampleRate);
    svf.svfQ = static_cast<double>(1.0f - res + fxTiny);
}

void setSvfB(SvfBanks& svf, float cut, float mod, float sampleRate)
{
    svf.svfBF = svfFrequency(cut, mod, sampleRate);
}

[[gnu::noinline]] Pair svfRestrained(Pair state, double limit)
{
    const auto held = [limit](double x)
    { return std::isnan(x) ? 0.0 : std::min(std::max(x, -limit), limit); };
    return Pair{held(state[0]), held(state[1])};
}

void svfLowPass(SvfState& state, const SvfSetting* settings, float* left, float* right, int num)
{
    SvfRun svf(state);

    for (int t = 0; t < num; ++t)
    {
        svf.tick(pairOf(left[t], right[t]), settings[t]);
        const FloatPair low = svf.lowPass();
        left[t] = low[0];
        right[t] = low[1];
    }

    svf.store();
}
} // namespace quorel
