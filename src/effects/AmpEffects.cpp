// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/AmpEffects.h"

#include "effects/AmpTables.h"
#include "effects/DriveCurve.h"
#include "effects/EffectMath.h"
#include "effects/FxContext.h"
#include "effects/Quad.h"

namespace quorel
{
namespace
{
// Corners of the tone stack, 200 Hz and 4000 Hz.
constexpr float bassCut = 0.332192f;
constexpr float trebleCut = 0.7643856f;

constexpr int taps = 64;

/** The last 63 samples, oldest first, the chunk after them, and some silence. */
struct AmpInput
{
    float samples[taps - 1 + fxChunk + 3];

    AmpInput(float* history, std::uint32_t firstCount, const float* in, int num)
    {
        for (std::uint32_t age = 0; age < taps - 1; ++age)
            samples[age] = history[(firstCount + 1 + age) & 63];

        for (int t = 0; t < num; ++t)
        {
            samples[taps - 1 + t] = in[t];
            history[(firstCount + static_cast<std::uint32_t>(t)) & 63] = in[t];
        }

        std::fill(samples + taps - 1 + num, std::end(samples), 0.0f);
    }
};

/** Sums of `quads` times four outputs of each channel. */
template <std::size_t quads>
void ampSums(const float* row, const float* left, const float* right, float* outL, float* outR)
{
    Quad sumL[quads], sumR[quads];

    for (std::size_t q = 0; q < quads; ++q)
    {
        sumL[q] = loadQuad(left + taps - 1 + 4 * q) * row[0] + fxTiny;
        sumR[q] = loadQuad(right + taps - 1 + 4 * q) * row[0] + fxTiny;
    }

    for (int k = 1; k < taps; ++k)
    {
        const Quad weight = quadOf(row[k]);

        for (std::size_t q = 0; q < quads; ++q)
        {
            sumL[q] = sumL[q] + loadQuad(left + k - 1 + 4 * q) * weight;
            sumR[q] = sumR[q] + loadQuad(right + k - 1 + 4 * q) * weight;
        }
    }

    for (std::size_t q = 0; q < quads; ++q)
    {
        storeQuad(outL + 4 * q, sumL[q]);
        storeQuad(outR + 4 * q, sumR[q]);
    }
}

/** The history is walked the wrong way round: tap 0 meets the newest sample, tap k the one 64 - k samples
    old. That is the sound. Each output adds in the order of the taps; writes up to three samples past the
    end. */
void ampImpulse(const float* row, const AmpInput& left, const AmpInput& right, float* outL, float* outR,
                int num)
{
    int t = 0;
    for (; t + 16 <= num; t += 16)
        ampSums<4>(row, left.samples + t, right.samples + t, outL + t, outR + t);

    for (; t < num; t += 4)
        ampSums<1>(row, left.samples + t, right.samples + t, outL + t, outR + t);
}

void setToneStack(FxContext& c)
{
    setSvf(c.svf, bassCut, 0.0f, 0.0f, c.sampleRate);
    setSvfB(c.svf, trebleCut, 0.0f, c.sampleRate);
}

/** A cabinet's taps by twos, for left and right. */
struct CabinetWeights
{
    Quad feeds[16], backs[16];

    explicit CabinetWeights(int type)
    {
        for (int pair = 0; pair < 16; ++pair)
        {
            const float* in = cabFeed[type] + 2 * pair;
            const float* out = cabBack[type] + 2 * pair;
            feeds[pair] = Quad{in[0], in[0], in[1], in[1]};
            backs[pair] = Quad{out[0], out[0], out[1], out[1]};
        }
    }
};

const CabinetWeights cabinetWeights[8] = {CabinetWeights(0), CabinetWeights(1), CabinetWeights(2),
                                          CabinetWeights(3), CabinetWeights(4), CabinetWeights(5),
                                          CabinetWeights(6), CabinetWeights(7)};

/** The 32 taps of a cabinet over a chunk. Its ring is laid out in a line first, newest sample first, left and
    right in turn, so that nothing wraps and two taps come at a time. */
class CabinetFilter
{
public:
    explicit CabinetFilter(CabinetState& owner)
        : f(owner)
        , weights(cabinetWeights[owner.type])
        , feed0(quadOf(cabFeed[owner.type][0]))
        , feed1(quadOf(cabFeed[owner.type][1]))
        , back1(quadOf(cabBack[owner.type][1]))
    {
        for (int age = 0; age < length; ++age)
        {
            const Quad entry = loadQuad(f.hist[(f.pos - 1 - age) & 31]);
            storeHalf(inputs + 2 * (fxChunk + age), entry);
            storeHalf(outputs + 2 * (fxChunk + age), _mm_movehl_ps(entry, entry));
        }

        latest = loadQuad(outputs + 2 * fxChunk);
    }

    /** Adds in the order of the taps. As the second of them has the latest output, each sample waits for the
        whole sum of the one before. */
    [[gnu::always_inline]] FloatPair tick(int t, float x, float y)
    {
        float* in = inputs + 2 * (fxChunk - 1 - t);
        float* out = outputs + 2 * (fxChunk - 1 - t);
        const Quad newest = {x, y, 0.0f, 0.0f};
        const Quad second = loadQuad(in + 2);
        storeHalf(in, newest);
        Quad sum = newest * feed0 + (second * feed1 + latest * back1);

#pragma GCC unroll 2
        for (int pair = 1; pair < length / 2; ++pair)
        {
            const Quad two = loadQuad(in + 4 * pair) * weights.feeds[pair] +
                             loadQuad(out + 4 * pair) * weights.backs[pair];
            sum = sum + two;
            sum = sum + Quad(_mm_movehl_ps(two, two));
        }

        storeHalf(out, sum);
        latest = sum;
        return FloatPair{sum[0], sum[1]};
    }

    void store(int num)
    {
        f.pos = (f.pos + num) & 31;
        for (int age = 0; age < length; ++age)
        {
            const float* in = inputs + 2 * (fxChunk - num + age);
            const float* out = outputs + 2 * (fxChunk - num + age);
            storeQuad(f.hist[(f.pos - 1 - age) & 31], Quad{in[0], in[1], out[0], out[1]});
        }
    }

private:
    static constexpr int length = 32;

    static void storeHalf(float* p, Quad v)
    {
        _mm_storel_pi(reinterpret_cast<__m64*>(p), v);
    }

    CabinetState& f;
    const CabinetWeights& weights;
    const Quad feed0, feed1, back1;
    float inputs[2 * (length + fxChunk)], outputs[2 * (length + fxChunk)];
    Quad latest;
};

/** Bass and treble of a block. source(t) gives sample t, which may come from left and right; pick() takes of
    the second filter what "Treble" works on. */
template <typename Source, typename Pick>
void runToneStack(SvfBanks& banks, float bass, float treble, float boost, Source source, Pick pick,
                  float* left, float* right, int num)
{
    svfSeries(
        banks, left, right, num, source,
        [=](FloatPair in, const SvfRun& low) { return in + (bass - 1.0f) * low.lowPass(); },
        [=](FloatPair in, const SvfRun& high)
        { return ((treble - 1.0f) * pick(high) + in) * boost + fxTiny; });
}
} // namespace

void ampUpdate(AmpState& f, FxContext& c)
{
    const float* p = c.param;
    f.type = discreteChoice(p[0], 5.99f);
    f.drive = std::exp2(p[1] * 8.0f) - 1.0f;
    f.bass = levelGain(p[2], 40.0f, -20.0f);
    f.treble = levelGain(p[3], 40.0f, -20.0f);
    f.boost = levelGain(p[4], 40.0f, -20.0f);
    setToneStack(c);
}

void ampProcess(AmpState& f, FxContext& c, const float* x, const float* y, float* wetLeft, float* wetRight,
                int num)
{
    float sumL[fxChunk + 3], sumR[fxChunk + 3];

    if (f.type != 0)
    {
        const AmpInput left(f.histL, c.sampleCount + 1, x, num);
        const AmpInput right(f.histR, c.sampleCount + 1, y, num);
        ampImpulse(ampTaps[f.type], left, right, sumL, sumR, num);
    }
    else
    {
        for (int t = 0; t < num; ++t)
        {
            sumL[t] = x[t] + fxTiny;
            sumR[t] = y[t] + fxTiny;
        }
    }

    driveCurve(sumL, f.drive, sumL, num);
    driveCurve(sumR, f.drive, sumR, num);
    runToneStack(
        c.svf, f.bass, f.treble, f.boost,
        [&](int t) {
            return FloatPair{sumL[t], sumR[t]};
        },
        [](const SvfRun& svf) { return svf.highPass(); }, wetLeft, wetRight, num);
}

void cabinetUpdate(CabinetState& f, FxContext& c)
{
    const float* p = c.param;
    f.type = discreteChoice(p[0], 3.99f) + (c.sampleRate > 80000.0f ? 4 : 0);
    f.drive = std::exp2(p[1] * 8.0f) - 1.0f;
    f.bass = levelGain(p[2], 40.0f, -20.0f);
    f.treble = levelGain(p[3], 40.0f, -20.0f);
    f.boost = levelGain(p[4], 40.0f, -20.0f) * cabGain[f.type];
    setToneStack(c);
}

void cabinetProcess(CabinetState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num)
{
    const float drive = f.drive;
    const auto driven = [drive](FloatPair in)
    {
        const Quad out = driveCurve(Quad{in[0], in[1], 0.0f, 0.0f}, drive);
        return FloatPair{out[0], out[1]};
    };

    // Here "Treble" works below 4 kHz, not above.
    const auto treble = [](const SvfRun& svf) { return svf.lowPass(); };

    if (f.type == 0 || f.type == 4)
        return runToneStack(
            c.svf, f.bass, f.treble, f.boost,
            [&](int t) {
                return driven(FloatPair{x[t], y[t]});
            },
            treble, wetLeft, wetRight, num);

    // The tone stack takes the samples one by one, a little behind the filter, whose sums leave time for it.
    CabinetFilter filter(f);
    FloatPair waiting = filter.tick(0, x[0], y[0]);
    runToneStack(
        c.svf, f.bass, f.treble, f.boost,
        [&](int t)
        {
            const FloatPair out = driven(waiting);
            if (t + 1 < num)
                waiting = filter.tick(t + 1, x[t + 1], y[t + 1]);
            return out;
        },
        treble, wetLeft, wetRight, num);
    filter.store(num);
}
} // namespace quorel
