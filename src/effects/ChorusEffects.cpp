// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/ChorusEffects.h"

#include "effects/DelayLine.h"
#include "effects/EffectMath.h"
#include "effects/FxContext.h"
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

float lineLengthOf(const FxContext& c, float p)
{
    return c.sampleRate * 0.05f * p + 1.0f;
}

void setChorusLfos(ChorusState& f, FxContext& c)
{
    const float* p = c.param;
    f.depth = p[1] * 0.99f;
    f.incL = lfoInc(c, p[2], p[3]);
    f.incR =
        static_cast<std::uint32_t>(truncateTo((p[4] * 3.0f + 1.0f) * static_cast<float>(f.incL), 0, 1 << 30));
}

/** Advances both LFOs and gives the two read distances. */
void chorusDistances(ChorusState& f, const float* sineUnipolar, float& left, float& right)
{
    f.phaseL = lfoAdvance(f.phaseL, f.incL);
    f.phaseR = lfoAdvance(f.phaseR, f.incR);
    const float a = f.depth;
    left = (a * sineUnipolar[f.phaseL >> 8] + 1.0f - a) * f.length;
    right = (a * sineUnipolar[f.phaseR >> 8] + 1.0f - a) * f.length + f.offset;
}

template <bool plain>
void runTapeChorus(ChorusState& state, FxContext& c, TapeRun tape, const float* x, const float* y,
                   float* wetLeft, float* wetRight, int num)
{
    ChorusState f = state;
    ToneRun tone(c.tone);
    const bool runs = c.tape.guard == 0;
    float left = 0.0f, right = 0.0f;

    for (int t = 0; t < num; ++t)
    {
        chorusDistances(f, c.sines->unipolar, left, right);
        const Quad read =
            runs ? tape.process<plain>(Quad{x[t], y[t], 0.0f, 0.0f}, TapeRun::stepFor(left, right)) : Quad{};
        const Quad out = tone.tick(read);
        wetLeft[t] = out[0];
        wetRight[t] = out[1];
    }

    state = f;
    tone.store();
    tape.store();
    tapeSetDistances(c.tape, left, right);
}

/** One voice of the ensemble over a block. */
class EnsembleVoice
{
public:
    EnsembleVoice(const EnsembleState& f, const FxContext& c, int i)
        : phase(f.phase[i])
        , inc(f.inc[i])
        , count(c.writeCount)
        , line(c.memory->shared.ensemble.voices + i * EnsembleLines::stride)
        , depth(f.depthSamples[i])
        , base(f.baseSamples[i])
        , feedback(quadOf(f.feedback))
        , gains(Quad{f.gainL[i], f.gainR[i], f.gainL[i], f.gainR[i]})
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

void chorusUpdate(ChorusState& f, FxContext& c)
{
    const float* p = c.param;
    f.length = lineLengthOf(c, p[0]);
    setChorusLfos(f, c);
    f.offset = std::exp2(8.0f * p[5]) * 4.0f + 1.0f;
    setToneFilters(c.tone, p[6], p[7], c.invSampleRate);
}

void chorusProcess(ChorusState& state, FxContext& c, const float* x, const float* y, float* wetLeft,
                   float* wetRight, int num)
{
    ChorusState f = state;
    ToneFilter tone = c.tone;
    std::uint32_t count = c.sampleCount;

    for (int t = 0; t < num; ++t)
    {
        ++count;
        float left, right;
        chorusDistances(f, c.sines->unipolar, left, right);
        wetLeft[t] = modLineRead(c.memory->modLineL, count, left);
        wetRight[t] = modLineRead(c.memory->modLineR, count, right);

        float l = x[t], r = y[t];
        toneLowPass(tone, l, r);
        toneHighPass(tone, l, r);
        c.memory->modLineL[count & modLineMask] = l;
        c.memory->modLineR[count & modLineMask] = r;
    }

    state = f;
    c.tone = tone;
}

void tapeChorusUpdate(ChorusState& f, FxContext& c)
{
    chorusUpdate(f, c);
    tapeSetFilter(c.tape, 1.0f, 0.0f);
    c.tape.feedbackL = c.tape.feedbackR = c.tape.crossL = c.tape.crossR = 0.0f;
}

void tapeChorusProcess(ChorusState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                       float* wetRight, int num)
{
    const TapeRun tape(c.tape);
    if (tape.isPlain())
        runTapeChorus<true>(f, c, tape, x, y, wetLeft, wetRight, num);
    else
        runTapeChorus<false>(f, c, tape, x, y, wetLeft, wetRight, num);
}

void chorusDelayUpdate(ChorusDelayState& f, FxContext& c)
{
    const float* p = c.param;
    f.chorus.length = std::min(lineLengthOf(c, p[0]), 16383.0f);
    setChorusLfos(f.chorus, c);
    f.delayLength = std::min(syncedDelay(p[5], c.samplesPerWhole), 262142.0f);
    f.feed = p[6];
    f.volume = p[7];
}

void chorusDelayProcess(ChorusDelayState& state, FxContext& c, const float* x, const float* y, float* wetLeft,
                        float* wetRight, int num)
{
    ChorusDelayState f = state;
    std::uint32_t sampleCount = c.sampleCount, writeCount = c.writeCount;

    for (int t = 0; t < num; ++t)
    {
        ++sampleCount;
        ++writeCount;
        float left, right;
        chorusDistances(f.chorus, c.sines->unipolar, left, right);
        const float cl = modLineRead(c.memory->modLineL, sampleCount, left);
        const float cr = modLineRead(c.memory->modLineR, sampleCount, right);
        c.memory->modLineL[sampleCount & modLineMask] = x[t];
        c.memory->modLineR[sampleCount & modLineMask] = y[t];

        if ((sampleCount & 15) == 0)
        {
            f.delayTarget = std::min(f.delayLength, 262143.0f);
            f.delaySmooth = glideDistance(f.delaySmooth, f.delayTarget, 2.0f);
        }

        const float a = lineRead(c.memory->lineL, lineMask, writeCount, f.delaySmooth);
        const float b = lineRead(c.memory->lineR, lineMask, writeCount, f.delaySmooth);
        c.memory->lineL[writeCount & lineMask] = heldForLine(a * f.feed + cl);
        c.memory->lineR[writeCount & lineMask] = heldForLine(b * f.feed + cr);
        wetLeft[t] = heldForLine(f.volume * a + cl);
        wetRight[t] = heldForLine(f.volume * b + cr);
    }

    state = f;
}

void ensembleUpdate(EnsembleState& f, FxContext& c)
{
    const float* p = c.param;
    f.outGain = 0.5f;
    f.feedback = p[4];
    const float b = lineLengthOf(c, p[0]);
    const float s = (1.0f - p[5]) * -2.0f;

    for (int i = 0; i < 6; ++i)
    {
        const float v = static_cast<float>(i) * s;
        f.length[i] = std::min(std::exp2(v / 5.0f) * b, 16383.0f);

        const float speed = std::exp2(v / 5.3f);
        const float inc = p[3] >= 0.5f ? static_cast<float>(lfoIncTempo(p[2], c.sampleRate, c.bpm)) * speed
                                       : std::exp2(10.0f * p[2]) * c.invSampleRate * 112640.0f * speed;
        f.inc[i] = static_cast<std::uint32_t>(truncateTo(inc, 0, 1 << 30));

        const float d = p[1] * 0.99f * std::exp2(v / 8.3f);
        f.depthSamples[i] = f.length[i] * d;
        f.baseSamples[i] = f.length[i] * (1.0f - d);

        float pan = 0.5f;
        if (i % 3 == 0)
            pan = p[6] * 0.5f + 0.5f;
        else if (i % 3 == 2)
            pan = 0.5f - p[6] * 0.5f;

        f.gainL[i] = clampUnit(2.0f - 2.0f * pan);
        f.gainR[i] = clampUnit(2.0f * pan);
    }

    setToneFilters(c.tone, p[7], p[8], c.invSampleRate);
}

void ensembleProcess(EnsembleState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                     float* wetRight, int num)
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
        EnsembleVoice voice(f, c, i);
        int t = 0;

        if (voice.readsOldSamples())
            for (; t + 2 <= num; t += 2)
                voice.two(c.sines->unipolar, in + 2 * t, sums + 2 * t);

        for (; t < num; ++t)
            voice.one(c.sines->unipolar, in + 2 * t, sums + 2 * t);

        f.phase[i] = voice.phase;
    }

    ToneRun tone(c.tone);
    const float outGain = f.outGain;

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
