// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/AmpEffects.h"

#include "effects/AmpTables.h"
#include "effects/DriveCurve.h"
#include "effects/EffectMath.h"
#include "effects/FxSlot.h"
#include "effects/Quad.h"

namespace quorel
{
namespace
{
// Corners of the tone stack, 200 Hz and 4000 Hz.
constexpr float bassCut = 0.332192f;
constexpr float trebleCut = 0.7643856f;

constexpr int taps = 64;

/** The last 63 samples, oldest first, and the chunk after them. */
struct AmpInput
{
    float samples[taps - 1 + fxChunk];

    AmpInput(float* history, std::uint32_t firstCount, const float* in, int num)
    {
        for (std::uint32_t age = 0; age < taps - 1; ++age)
            samples[age] = history[(firstCount + 1 + age) & 63];

        for (int t = 0; t < num; ++t)
        {
            samples[taps - 1 + t] = in[t];
            history[(firstCount + static_cast<std::uint32_t>(t)) & 63] = in[t];
        }
    }
};

/** The history is walked the wrong way round: tap 0 meets the newest sample, tap k the one 64 - k samples
   old. That is the sound. Each output adds in the order of the taps. */
void ampImpulse(const float* row, const AmpInput& in, float* out, int num)
{
    int t = 0;

    for (; t + 8 <= num; t += 8)
    {
        const float* samples = in.samples + t;
        Quad first = loadQuad(samples + taps - 1) * row[0] + fxTiny;
        Quad second = loadQuad(samples + taps + 3) * row[0] + fxTiny;

        for (int k = 1; k < taps; ++k)
        {
            first = first + loadQuad(samples + k - 1) * row[k];
            second = second + loadQuad(samples + k + 3) * row[k];
        }

        storeQuad(out + t, first);
        storeQuad(out + t + 4, second);
    }

    for (; t < num; ++t)
    {
        const float* samples = in.samples + t;
        float sum = samples[taps - 1] * row[0] + fxTiny;
        for (int k = 1; k < taps; ++k)
            sum = sum + samples[k - 1] * row[k];
        out[t] = sum;
    }
}

void setToneStack(FxSlot& slot)
{
    setSvf(slot, bassCut, 0.0f, 0.0f, slot.sampleRate);
    setSvfB(slot, trebleCut, 0.0f, slot.sampleRate);
}

/** Bass and treble of a block in place; pick() takes of the second filter what "Treble" works on. */
template <typename Pick>
void runToneStack(SvfBanks& banks, float bass, float treble, float boost, Pick pick, float* left,
                  float* right, int num)
{
    svfSeries(
        banks, left, right, num,
        [=](FloatPair in, const SvfRun& low) { return in + (bass - 1.0f) * low.lowPass(); },
        [=](FloatPair in, const SvfRun& high)
        { return ((treble - 1.0f) * pick(high) + in) * boost + fxTiny; });
}

/** Runs a chunk through a cabinet; its ring is laid out in a line first, so that nothing wraps. Each entry
   holds both inputs and both outputs, and each output adds in the order of the taps. */
void cabinetFilter(CabinetFields& f, const float* x, const float* y, float* outL, float* outR, int num)
{
    constexpr int length = 32;
    Quad line[length + fxChunk], weights[length];

    for (int k = 0; k < length; ++k)
    {
        const float feed = cabFeed[f.cabType][k], back = cabBack[f.cabType][k];
        weights[k] = Quad{feed, feed, back, back};
        line[k] = loadQuad(f.cabHist[(f.cabPos + k) & 31]);
    }

    for (int t = 0; t < num; ++t)
    {
        const Quad* newest = line + length + t;
        Quad sum = quadOf(0.0f);
        line[length + t] = Quad{x[t], y[t], 0.0f, 0.0f};

        for (int k = 0; k < length; ++k)
        {
            const Quad products = newest[-k] * weights[k];
            sum = sum + (products + __builtin_shufflevector(products, products, 2, 3, 2, 3));
        }

        line[length + t] = Quad{x[t], y[t], sum[0], sum[1]};
        outL[t] = sum[0];
        outR[t] = sum[1];
    }

    f.cabPos = (f.cabPos + num) & 31;
    for (int k = 0; k < length; ++k)
        storeQuad(f.cabHist[(f.cabPos + k) & 31], line[num + k]);
}
} // namespace

void ampUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.ampType = discreteChoice(p[0], 5.99f);
    slot.ampDrive = std::exp2(p[1] * 8.0f) - 1.0f;
    slot.ampBass = levelGain(p[2], 40.0f, -20.0f);
    slot.ampTreble = levelGain(p[3], 40.0f, -20.0f);
    slot.ampBoost = levelGain(p[4], 40.0f, -20.0f);
    setToneStack(slot);
}

void ampProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    if (slot.ampType != 0)
    {
        const float* row = ampTaps[slot.ampType];
        const AmpInput left(slot.ampHistL, slot.sampleCount + 1, x, num);
        const AmpInput right(slot.ampHistR, slot.sampleCount + 1, y, num);
        ampImpulse(row, left, wetLeft, num);
        ampImpulse(row, right, wetRight, num);
    }
    else
    {
        for (int t = 0; t < num; ++t)
        {
            wetLeft[t] = x[t] + fxTiny;
            wetRight[t] = y[t] + fxTiny;
        }
    }

    driveCurve(wetLeft, slot.ampDrive, wetLeft, num);
    driveCurve(wetRight, slot.ampDrive, wetRight, num);

    const auto treble = [](const SvfRun& svf) { return svf.highPass(); };
    runToneStack(slot, slot.ampBass, slot.ampTreble, slot.ampBoost, treble, wetLeft, wetRight, num);
}

void cabinetUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.cabType = discreteChoice(p[0], 3.99f) + (slot.sampleRate > 80000.0f ? 4 : 0);
    slot.cabDrive = std::exp2(p[1] * 8.0f) - 1.0f;
    slot.cabBass = levelGain(p[2], 40.0f, -20.0f);
    slot.cabTreble = levelGain(p[3], 40.0f, -20.0f);
    slot.cabBoost = levelGain(p[4], 40.0f, -20.0f) * cabGain[slot.cabType];
    setToneStack(slot);
}

void cabinetProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    if (slot.cabType == 0 || slot.cabType == 4)
    {
        std::copy(x, x + num, wetLeft);
        std::copy(y, y + num, wetRight);
    }
    else
    {
        cabinetFilter(slot, x, y, wetLeft, wetRight, num);
    }

    driveCurve(wetLeft, slot.cabDrive, wetLeft, num);
    driveCurve(wetRight, slot.cabDrive, wetRight, num);

    // Here "Treble" works below 4 kHz, not above.
    const auto treble = [](const SvfRun& svf) { return svf.lowPass(); };
    runToneStack(slot, slot.cabBass, slot.cabTreble, slot.cabBoost, treble, wetLeft, wetRight, num);
}
} // namespace quorel
