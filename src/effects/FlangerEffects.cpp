// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/FlangerEffects.h"

#include "effects/DelayLine.h"
#include "effects/EffectMath.h"
#include "effects/FxSlot.h"
#include "effects/Lfo.h"
#include "effects/ModLine.h"
#include "effects/TapeRun.h"

namespace quorel
{
namespace
{
constexpr std::uint32_t modLineMask = fxModLineLength - 1;

float flangerDistance(FlangerFields& f, const float* sineUnipolar)
{
    f.flangePhase = lfoAdvance(f.flangePhase, f.flangeInc);
    return (f.flangeDepth * sineUnipolar[f.flangePhase >> 8] + 1.0f - f.flangeDepth) * f.flangeLength + 10.0f;
}

void panFlanger(FlangerFields& f, const float* sineBipolar, std::uint32_t sampleCount)
{
    if ((sampleCount & 15) != 0)
        return;

    const float q = sineBipolar[f.flangePhase >> 8] * f.flangePanDepth + 0.5f;
    f.flangeGainL = clampUnit(2.0f - 2.0f * q);
    f.flangeGainR = clampUnit(2.0f * q);
}

template <bool plain>
void runTapeFlanger(FxSlot& slot, TapeRun tape, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num)
{
    FlangerFields f = slot;
    ToneRun tone(slot);
    const bool runs = slot.tape.guard == 0;
    std::uint32_t count = slot.sampleCount;
    float distance = 0.0f;

    for (int t = 0; t < num; ++t)
    {
        ++count;
        distance = flangerDistance(f, slot.sineUnipolar);
        const Quad read =
            runs ? tape.process<plain>(Quad{x[t], y[t], 0.0f, 0.0f}, TapeRun::speedFor(distance, distance))
                 : Quad{};
        panFlanger(f, slot.sineBipolar, count);
        const Quad out = tone.tick(read);
        wetLeft[t] = heldForLine(out[0] * f.flangeGainL);
        wetRight[t] = heldForLine(out[1] * f.flangeGainR);
    }

    static_cast<FlangerFields&>(slot) = f;
    tone.store();
    tape.store();
    tapeSetDistances(slot.tape, distance, distance);
}
} // namespace

void flangerUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    const double length = static_cast<double>(slot.sampleRate) * 0.05 * static_cast<double>(p[0]) + 44.0;
    slot.flangeLength = static_cast<float>(std::min(length, 16383.0));
    slot.flangeDepth = p[1] * 0.99f;
    slot.flangeInc = lfoInc(slot, p[2], p[3]);
    slot.flangeFeedback = p[4] * 1.98f - 0.99f + fxTiny;
    slot.flangePanDepth = p[5] * 0.5f;
    setToneFilters(slot, p[6], p[7], slot.invSampleRate);
}

void flangerProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    FlangerFields f = slot;
    ToneFilter tone = slot;
    std::uint32_t count = slot.sampleCount;

    for (int t = 0; t < num; ++t)
    {
        ++count;
        const float d = flangerDistance(f, slot.sineUnipolar);
        float l = modLineRead(slot.modLineL, count, d);
        float r = modLineRead(slot.modLineR, count, d);
        panFlanger(f, slot.sineBipolar, count);
        slot.modLineR[count & modLineMask] = heldForLine(y[t] - l * f.flangeFeedback) + fxTiny;
        slot.modLineL[count & modLineMask] = heldForLine(x[t] - r * f.flangeFeedback) + fxTiny;
        toneLowPass(tone, l, r);
        toneHighPass(tone, l, r);
        wetLeft[t] = heldForLine(l * f.flangeGainL);
        wetRight[t] = heldForLine(r * f.flangeGainR);
    }

    static_cast<FlangerFields&>(slot) = f;
    static_cast<ToneFilter&>(slot) = tone;
}

void tapeFlangerUpdate(FxSlot& slot)
{
    flangerUpdate(slot);
    tapeSetFilter(slot.tape, 1.0f, 0.0f);
    slot.tape.feedbackL = slot.tape.feedbackR = slot.flangeFeedback;
    slot.tape.crossL = slot.tape.crossR = 0.0f;
}

void tapeFlangerProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight,
                        int num)
{
    const TapeRun tape(slot.tape);
    if (tape.isPlain())
        runTapeFlanger<true>(slot, tape, x, y, wetLeft, wetRight, num);
    else
        runTapeFlanger<false>(slot, tape, x, y, wetLeft, wetRight, num);
}
} // namespace quorel
