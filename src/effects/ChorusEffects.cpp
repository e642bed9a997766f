// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/ChorusEffects.h"

#include "effects/DelayLine.h"
#include "effects/EffectMath.h"
#include "effects/FxSlot.h"
#include "effects/Lfo.h"
#include "effects/ModLine.h"
#include "effects/SyncTables.h"
#include "effects/TapeRun.h"

namespace quorel
{
namespace
{
constexpr std::uint32_t modLineMask = fxModLineLength - 1;
constexpr std::uint32_t lineMask = fxLineLength - 1;

float lineLengthOf(const FxSlot& slot, float p)
{
    return slot.sampleRate * 0.05f * p + 1.0f;
}

void setChorusLfos(FxSlot& slot)
{
    const float* p = slot.param;
    slot.chorusDepth = p[1] * 0.99f;
    slot.chorusIncL = lfoInc(slot, p[2], p[3]);
    slot.chorusIncR = static_cast<std::uint32_t>(
        truncateTo((p[4] * 3.0f + 1.0f) * static_cast<float>(slot.chorusIncL), 0, 1 << 30));
}

/** Advances both LFOs and gives the two read distances. */
void chorusDistances(ChorusFields& f, const float* sineUnipolar, float& left, float& right)
{
    f.chorusPhaseL = lfoAdvance(f.chorusPhaseL, f.chorusIncL);
    f.chorusPhaseR = lfoAdvance(f.chorusPhaseR, f.chorusIncR);
    const float a = f.chorusDepth;
    left = (a * sineUnipolar[f.chorusPhaseL >> 8] + 1.0f - a) * f.chorusLength;
    right = (a * sineUnipolar[f.chorusPhaseR >> 8] + 1.0f - a) * f.chorusLength + f.chorusOffset;
}

template <bool plain>
void runTapeChorus(FxSlot& slot, TapeRun tape, const float* x, const float* y, float* wetLeft,
                   float* wetRight, int num)
{
    ChorusFields f = slot;
    ToneRun tone(slot);
    const bool runs = slot.tape.guard == 0;
    float left = 0.0f, right = 0.0f;

    for (int t = 0; t < num; ++t)
    {
        chorusDistances(f, slot.sineUnipolar, left, right);
        const Quad read =
            runs ? tape.process<plain>(Quad{x[t], y[t], 0.0f, 0.0f}, TapeRun::speedFor(left, right)) : Quad{};
        const Quad out = tone.tick(read);
        wetLeft[t] = out[0];
        wetRight[t] = out[1];
    }

    static_cast<ChorusFields&>(slot) = f;
    tone.store();
    tape.store();
    tapeSetDistances(slot.tape, left, right);
}

/** One voice of the ensemble over a block. */
class EnsembleVoice
{
public:
    EnsembleVoice(FxSlot& slot, int i)
        : phase(slot.ensPhase[i])
        , inc(slot.ensInc[i])
        , count(slot.writeCount)
        , line(slot.ensLines + i * EnsembleLines::stride)
        , depth(slot.ensDepthSamples[i])
        , base(slot.ensBaseSamples[i])
        , feedback(quadOf(slot.ensFeedback))
        , gains(Quad{slot.ensGainL[i], slot.ensGainR[i], slot.ensGainL[i], slot.ensGainR[i]})
    {
    }

    /** True if two samples don't depend on each other, and the line is full. */
    bool readsOldSamples() const { return base >= 4.0f && depth >= 0.0f && count > fxModLineLength; }

    [[gnu::always_inline]] void two(const float* sineUnipolar, const float* in, float* sums)
    {
        const float first = distance(sineUnipolar), second = distance(sineUnipolar);
        const Quad d = {first, first, second, second};
        const QuadIndex whole = __builtin_convertvector(d, QuadIndex);
        const Quad f = d - __builtin_convertvector(whole, Quad) + fxTiny;
        const Quad a = entries(count + 1 - static_cast<std::uint32_t>(whole[0]));
        const Quad b = entries(count + 2 - static_cast<std::uint32_t>(whole[2]));
        const Quad older = _mm_movelh_ps(a, b), newer = _mm_movehl_ps(b, a);
        const Quad read = (older - newer) * f + newer + fxTiny;
        const Quad written = held(loadQuad(in) - read * feedback);
        write(written);
        write(_mm_movehl_ps(written, written));
        storeQuad(sums, loadQuad(sums) + read * gains);
    }

    void one(const float* sineUnipolar, const float* in, float* sums)
    {
        const float d = distance(sineUnipolar);
        const int whole = static_cast<int>(d);
        const int n = static_cast<int>(count + 1) - whole;
        const float f = d - static_cast<float>(whole) + fxTiny;
        const Quad pair = entries(static_cast<std::uint32_t>(n)), none = quadOf(0.0f);
        const Quad newer = n >= 0 ? Quad{pair[2], pair[3], 0.0f, 0.0f} : none;
        const Quad older = n - 1 >= 0 ? pair : none;
        const Quad read = (older - newer) * f + newer + fxTiny;
        write(held(Quad{in[0], in[1], 0.0f, 0.0f} - read * feedback));
        sums[0] = sums[0] + read[0] * gains[0];
        sums[1] = sums[1] + read[1] * gains[1];
    }

    std::uint32_t phase;

private:
    float distance(const float* sineUnipolar)
    {
        phase = lfoAdvance(phase, inc);
        return sineUnipolar[phase >> 8] * depth + base;
    }

    /** The pair before position n, and the one there. */
    Quad entries(std::uint32_t n) const { return loadQuad(line + 2 * ((n - 1) & modLineMask)); }

    static Quad held(Quad x) { return heldTo(x, quadOf(-fxLineLimit), quadOf(fxLineLimit)); }

    void write(Quad pair)
    {
        const std::uint32_t at = ++count & modLineMask;
        _mm_storel_pi(reinterpret_cast<__m64*>(line + 2 * at), pair);
        if (at == 0)
            _mm_storel_pi(reinterpret_cast<__m64*>(line + 2 * fxModLineLength), pair);
    }

    const std::uint32_t inc;
    std::uint32_t count;
    float* const line;
    const float depth, base;
    const Quad feedback, gains;
};
} // namespace

void modLineClear(FxSlot& slot)
{
    std::fill(std::begin(slot.modLineL), std::end(slot.modLineL), 0.0f);
    std::fill(std::begin(slot.modLineR), std::end(slot.modLineR), 0.0f);
}

void chorusUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.chorusLength = lineLengthOf(slot, p[0]);
    setChorusLfos(slot);
    slot.chorusOffset = std::exp2(8.0f * p[5]) * 4.0f + 1.0f;
    setToneFilters(slot, p[6], p[7], slot.invSampleRate);
}

void chorusProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    ChorusFields f = slot;
    ToneFilter tone = slot;
    std::uint32_t count = slot.sampleCount;

    for (int t = 0; t < num; ++t)
    {
        ++count;
        float left, right;
        chorusDistances(f, slot.sineUnipolar, left, right);
        wetLeft[t] = modLineRead(slot.modLineL, count, left);
        wetRight[t] = modLineRead(slot.modLineR, count, right);

        float l = x[t], r = y[t];
        toneLowPass(tone, l, r);
        toneHighPass(tone, l, r);
        slot.modLineL[count & modLineMask] = l;
        slot.modLineR[count & modLineMask] = r;
    }

    static_cast<ChorusFields&>(slot) = f;
    static_cast<ToneFilter&>(slot) = tone;
}

void tapeChorusUpdate(FxSlot& slot)
{
    chorusUpdate(slot);
    tapeSetFilter(slot.tape, 1.0f, 0.0f);
    slot.tape.feedbackL = slot.tape.feedbackR = slot.tape.crossL = slot.tape.crossR = 0.0f;
}

void tapeChorusProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    const TapeRun tape(slot.tape);
    if (tape.isPlain())
        runTapeChorus<true>(slot, tape, x, y, wetLeft, wetRight, num);
    else
        runTapeChorus<false>(slot, tape, x, y, wetLeft, wetRight, num);
}

void chorusDelayUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.chorusLength = std::min(lineLengthOf(slot, p[0]), 16383.0f);
    setChorusLfos(slot);
    slot.cdLength = std::min(syncedDelay(p[5], slot.samplesPerWhole), 262142.0f);
    slot.cdFeed = p[6];
    slot.cdVolume = p[7];
}

void chorusDelayProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight,
                        int num)
{
    ChorusFields f = slot;
    std::uint32_t sampleCount = slot.sampleCount, writeCount = slot.writeCount;

    for (int t = 0; t < num; ++t)
    {
        ++sampleCount;
        ++writeCount;
        float left, right;
        chorusDistances(f, slot.sineUnipolar, left, right);
        const float cl = modLineRead(slot.modLineL, sampleCount, left);
        const float cr = modLineRead(slot.modLineR, sampleCount, right);
        slot.modLineL[sampleCount & modLineMask] = x[t];
        slot.modLineR[sampleCount & modLineMask] = y[t];

        if ((sampleCount & 15) == 0)
        {
            f.cdDelayTarget = std::min(f.cdLength, 262143.0f);
            f.cdDelaySmooth = glideDistance(f.cdDelaySmooth, f.cdDelayTarget, 2.0f);
        }

        const float a = lineRead(slot.lineL, lineMask, writeCount, f.cdDelaySmooth);
        const float b = lineRead(slot.lineR, lineMask, writeCount, f.cdDelaySmooth);
        slot.lineL[writeCount & lineMask] = heldForLine(a * f.cdFeed + cl);
        slot.lineR[writeCount & lineMask] = heldForLine(b * f.cdFeed + cr);
        wetLeft[t] = heldForLine(f.cdVolume * a + cl);
        wetRight[t] = heldForLine(f.cdVolume * b + cr);
    }

    static_cast<ChorusFields&>(slot) = f;
}

void ensembleInit(FxSlot& slot)
{
    for (int i = 0; i < 6; ++i)
        slot.ensPhase[i] = static_cast<std::uint32_t>(i) * 0xffffffu / 6u;
}

void ensembleClear(FxSlot& slot)
{
    std::fill(std::begin(slot.ensLines), std::end(slot.ensLines), 0.0f);
}

void ensembleUpdate(FxSlot& slot)
{
    const float* p = slot.param;
    slot.ensOutGain = 0.5f;
    slot.ensFeedback = p[4];
    const float b = lineLengthOf(slot, p[0]);
    const float s = (1.0f - p[5]) * -2.0f;

    for (int i = 0; i < 6; ++i)
    {
        const float v = static_cast<float>(i) * s;
        slot.ensLength[i] = std::min(std::exp2(v / 5.0f) * b, 16383.0f);

        const float speed = std::exp2(v / 5.3f);
        const float inc = p[3] >= 0.5f
                              ? static_cast<float>(lfoIncTempo(p[2], slot.sampleRate, slot.bpm)) * speed
                              : std::exp2(10.0f * p[2]) * slot.invSampleRate * 112640.0f * speed;
        slot.ensInc[i] = static_cast<std::uint32_t>(truncateTo(inc, 0, 1 << 30));

        const float d = p[1] * 0.99f * std::exp2(v / 8.3f);
        slot.ensDepthSamples[i] = slot.ensLength[i] * d;
        slot.ensBaseSamples[i] = slot.ensLength[i] * (1.0f - d);

        float pan = 0.5f;
        if (i % 3 == 0)
            pan = p[6] * 0.5f + 0.5f;
        else if (i % 3 == 2)
            pan = 0.5f - p[6] * 0.5f;

        slot.ensGainL[i] = clampUnit(2.0f - 2.0f * pan);
        slot.ensGainR[i] = clampUnit(2.0f * pan);
    }

    setToneFilters(slot, p[7], p[8], slot.invSampleRate);
}

void ensembleProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    // Left and right in turn.
    float in[2 * fxChunk], sums[2 * fxChunk] = {};

    for (int t = 0; t < num; ++t)
    {
        in[2 * t] = x[t];
        in[2 * t + 1] = y[t];
    }

    for (int i = 0; i < 6; ++i)
    {
        EnsembleVoice voice(slot, i);
        int t = 0;

        if (voice.readsOldSamples())
            for (; t + 2 <= num; t += 2)
                voice.two(slot.sineUnipolar, in + 2 * t, sums + 2 * t);

        for (; t < num; ++t)
            voice.one(slot.sineUnipolar, in + 2 * t, sums + 2 * t);

        slot.ensPhase[i] = voice.phase;
    }

    ToneRun tone(slot);
    const float outGain = slot.ensOutGain;

    for (int t = 0; t < num; ++t)
    {
        const Quad out = tone.tick(Quad{sums[2 * t], sums[2 * t + 1], 0.0f, 0.0f}) * outGain;
        const Quad held = heldTo(out, quadOf(-fxLineLimit), quadOf(fxLineLimit));
        wetLeft[t] = held[0];
        wetRight[t] = held[1];
    }

    tone.store();
}
} // namespace quorel
