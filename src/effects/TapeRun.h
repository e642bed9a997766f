// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/EffectConstants.h"
#include "effects/Quad.h"
#include "effects/TapeLine.h"

#include <algorithm>

namespace quorel
{
/** A tape while it runs over a block of at most fxChunk samples: positions, heads and filters are held here
    until store(). */
class TapeRun
{
public:
    /** Delays in samples, and how far the tape moves in one sample at these. */
    struct Step
    {
        FloatPair distance;
        Pair speed;
    };

    explicit TapeRun(TapeLine& owner)
        : tape(owner)
        , samples(owner.reel->samples)
        , feedback(Quad{owner.feedbackL, owner.feedbackR, 0.0f, 0.0f})
        , cross(Quad{owner.crossL, owner.crossR, 0.0f, 0.0f})
        , lpCoef(quadOf(owner.lpCoef))
        , hpCoef(quadOf(owner.hpCoef))
        , filterOn(owner.filterOn != 0)
        , position(Pair{owner.posL, owner.posR})
        , left(owner.headL, samples)
        , right(owner.headR, samples)
        , back(samples + owner.back)
        , low(Quad{owner.lpL, owner.lpR, 0.0f, 0.0f})
        , high(Quad{owner.hpL, owner.hpR, 0.0f, 0.0f})
    {
    }

    /** True if for the next fxChunk samples the heads stay run in, nothing wraps, fills up or runs empty, no
        position is wound back and every sample holds one value: then process<true>() needn't look. */
    bool isPlain() const
    {
        const double most = rewindDistance - fxChunk * headDistance / static_cast<double>(shortestDistance);
        return position[0] >= headDistance && position[1] >= headDistance && position[0] < most &&
               position[1] < most && left.isPlain(back) && right.isPlain(back) &&
               samples + TapeReel::capacity - back > 2 * fxChunk;
    }

    /** At the distances that the tape is set to. */
    Step step() const { return stepOf(FloatPair{tape.delayL, tape.delayR}); }

    /** At two distances in samples, at least 1e-3 each. */
    static Step stepFor(float leftDistance, float rightDistance)
    {
        return stepOf(
            FloatPair{std::max(leftDistance, shortestDistance), std::max(rightDistance, shortestDistance)});
    }

    /** One sample of both channels, in the first two lanes. */
    template <bool plain>
    [[gnu::always_inline]] Quad process(Quad in, const Step& step)
    {
        position = position + step.speed;
        if (!plain && (position[0] > rewindDistance + 1024.0 || position[1] > rewindDistance + 1024.0))
            position = Pair{left.woundBack(position[0]), right.woundBack(position[1])};

        const Pair t = position - headDistance;
        const bool runsInL = !plain && position[0] < headDistance,
                   runsInR = !plain && position[1] < headDistance;
        const Read l = runsInL ? silence : left.read<plain, 0>(t[0]),
                   r = runsInR ? silence : right.read<plain, 1>(t[1]);
        const Pair base = {l.value, r.value}, start = {l.time, r.time};
        const Pair read =
            (Pair{l.nextValue, r.nextValue} - base) * (t - start) / (Pair{l.nextTime, r.nextTime} - start) +
            base;
        const Quad out = _mm_cvtpd_ps(read);

        const Quad crossed = __builtin_shufflevector(out, out, 1, 0, 2, 3);
        Quad written =
            heldTo(in + out * feedback + crossed * cross + fxTiny, quadOf(-fxLineLimit), quadOf(fxLineLimit));

        if (filterOn)
        {
            low = (1.0f - lpCoef) * low + lpCoef * written + fxTiny;
            high = (1.0f - hpCoef) * high + hpCoef * low + fxTiny;
            written = low - high;
        }

        left.makeRoom<plain, 0>();
        right.makeRoom<plain, 1>();
        // Distances and first values in one, then the last values.
        const Quad distance = {step.distance[0], step.distance[1], 0.0f, 0.0f};
        const Quad first = {runsInL ? in[0] : written[0], runsInR ? in[1] : written[1], 0.0f, 0.0f};
        storeQuad(back->distance, _mm_movelh_ps(distance, first));
        _mm_storel_pi(reinterpret_cast<__m64*>(back->last), written);
        back = next<plain>(back, samples);
        left.noteWritten<plain>(position[0], runsInL);
        right.noteWritten<plain>(position[1], runsInR);
        return out;
    }

    void store()
    {
        tape.posL = position[0];
        tape.posR = position[1];
        tape.primedL = position[0] >= headDistance ? 1 : 0;
        tape.primedR = position[1] >= headDistance ? 1 : 0;
        tape.lpL = low[0];
        tape.lpR = low[1];
        tape.hpL = high[0];
        tape.hpR = high[1];
        tape.headL = left.stored();
        tape.headR = right.stored();
        tape.back = static_cast<int>(back - samples);
    }

private:
    static constexpr double headDistance = 100.0;
    static constexpr float shortestDistance = 1.0e-3f;

    // Positions lose precision as they grow, until a slow tape would stand still; winding them back costs
    // nothing in sound.
    static constexpr double rewindDistance = 1073741824.0;

    /** What lies before and behind the read head. */
    struct Read
    {
        double time, value, nextTime, nextValue;
    };

    static constexpr Read silence = {0.0, 0.0, 1.0, 0.0};

    static Step stepOf(FloatPair distance)
    {
        return {distance, headDistance / __builtin_convertvector(distance, Pair)};
    }

    /** The sample after one, in the ring. */
    template <bool plain, typename Sample>
    static Sample* next(Sample* sample, Sample* ring)
    {
        return !plain && sample + 1 == ring + TapeReel::capacity ? ring : sample + 1;
    }

    struct Track
    {
        Track(const TapeHead& from, const TapeSample* tapeRing)
            : head(from)
            , ring(tapeRing)
            , front(tapeRing + from.front)
        {
        }

        bool isPlain(const TapeSample* back) const
        {
            return back > front && head.doubled == 0 && head.unwoundLater == 0;
        }

        /** Moves on to the two values around position t. With fewer than two values after the front one there
            is nothing to read. */
        template <bool plain, int channel>
        [[gnu::always_inline]] Read read(double t)
        {
            while (head.later + (plain ? 0 : head.doubled) >= 2)
            {
                if (t < head.nextTime)
                    return {head.time, static_cast<double>(front->last[channel]), head.nextTime,
                            static_cast<double>(next<plain>(front, ring)->first[channel])};

                moveOn<plain, channel>();
            }

            return silence;
        }

        template <bool plain, int channel>
        [[gnu::always_inline]] void moveOn()
        {
            front = next<plain>(front, ring);
            head.time = head.nextTime;
            --head.later;
            if (!plain && head.doubled > 0)
                --head.doubled;

            // A plain run never comes to the sample that was written last.
            if (!plain && head.later == 0)
            {
                head.unwoundLater = 0;
                return;
            }

            // Delays change their distance every 16 samples at most: that saves most divisions.
            const float now = next<plain>(front, ring)->distance[channel];
            if (now != distance)
            {
                distance = now;
                speed = headDistance / static_cast<double>(now);
            }

            if (plain || head.unwoundLater == 0)
            {
                head.nextTime = head.nextTime + speed;
                return;
            }

            head.unwoundTime = head.unwoundTime + speed;
            head.nextTime = head.unwoundTime - rewindDistance;
            --head.unwoundLater;
        }

        /** Forgets the oldest sample of a full tape; only one that stands still can fill up. */
        template <bool plain, int channel>
        void makeRoom()
        {
            if (!plain && head.later + 1 == TapeReel::capacity)
                moveOn<plain, channel>();
        }

        template <bool plain>
        void noteWritten(double at, bool twoValues)
        {
            if (!plain && head.later == 0)
                head.nextTime = at;

            ++head.later;
            if (!plain && twoValues)
                ++head.doubled;
        }

        double woundBack(double at)
        {
            if (!(at > rewindDistance + 1024.0))
                return at;

            head.windBack(rewindDistance);
            return at - rewindDistance;
        }

        TapeHead stored() const
        {
            TapeHead result = head;
            result.front = static_cast<int>(front - ring);
            return result;
        }

        TapeHead head; ///< but for its front
        const TapeSample* ring;
        const TapeSample* front;
        float distance = 0.0f; ///< of the sample that was moved on to last, and the speed there
        double speed = 0.0;
    };

    TapeLine& tape;
    TapeSample* const samples;
    const Quad feedback, cross, lpCoef, hpCoef;
    const bool filterOn;
    Pair position;
    Track left, right;
    TapeSample* back; ///< where the next sample goes
    Quad low, high;
};
} // namespace quorel
