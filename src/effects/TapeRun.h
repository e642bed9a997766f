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
        , left{owner.headL}
        , right{owner.headR}
        , back(owner.back)
        , low(Quad{owner.lpL, owner.lpR, 0.0f, 0.0f})
        , high(Quad{owner.hpL, owner.hpR, 0.0f, 0.0f})
    {
    }

    /** True if for the next fxChunk samples the heads stay run in, nothing wraps, fills up or runs empty, and
        no position is wound back: then process<true>() does without looking. */
    bool isPlain() const
    {
        const double most = rewindDistance - fxChunk * headDistance / static_cast<double>(shortestDistance);
        return position[0] >= headDistance && position[1] >= headDistance && position[0] < most &&
               position[1] < most && left.isPlain(back) && right.isPlain(back) &&
               TapeReel::capacity - back > 2 * fxChunk;
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
        const Read l = runsInL ? silence : left.read<plain, 0>(samples, t[0]),
                   r = runsInR ? silence : right.read<plain, 1>(samples, t[1]);
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

        left.makeRoom<plain, 0>(samples);
        right.makeRoom<plain, 1>(samples);
        TapeSample& sample = samples[back];
        sample = {{step.distance[0], step.distance[1]},
                  {runsInL ? in[0] : written[0], runsInR ? in[1] : written[1]},
                  {written[0], written[1]}};
        back = next<plain>(back);
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
        tape.headL = left.head;
        tape.headR = right.head;
        tape.back = back;
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

    template <bool plain>
    static int next(int i)
    {
        return !plain && i + 1 == TapeReel::capacity ? 0 : i + 1;
    }

    struct Track
    {
        TapeHead head;

        bool isPlain(int back) const { return back > head.front && head.unwoundLater == 0; }

        /** Moves on to the last two values around position t. Before the tape has run the head's distance there is
            nothing to read, nor with fewer than two values after the front one. */
        template <bool plain, int channel>
        [[gnu::always_inline]] Read read(const TapeSample* samples, double t)
        {
            while (head.later + head.doubled >= 2)
            {
                if (t < head.nextTime)
                    return {head.time, static_cast<double>(samples[head.front].last[channel]), head.nextTime,
                            static_cast<double>(samples[next<plain>(head.front)].first[channel])};

                moveOn<plain, channel>(samples);
            }

            return silence;
        }

        template <bool plain, int channel>
        [[gnu::always_inline]] void moveOn(const TapeSample* samples)
        {
            head.front = next<plain>(head.front);
            head.time = head.nextTime;
            --head.later;
            if (head.doubled > 0)
                --head.doubled;

            // A plain run never comes to the sample that was written last.
            if (!plain && head.later == 0)
            {
                head.unwoundLater = 0;
                return;
            }

            const double speed =
                headDistance / static_cast<double>(samples[next<plain>(head.front)].distance[channel]);

            if (plain || head.unwoundLater == 0)
            {
                head.nextTime = head.nextTime + speed;
                return;
            }

            head.unwoundTime = head.unwoundTime + speed;
            head.nextTime = head.unwoundTime - rewindDistance;
            --head.unwoundLater;
        }

        /** Forgets the oldest sample of a full tape, which only one that stands still can fill. */
        template <bool plain, int channel>
        void makeRoom(const TapeSample* samples)
        {
            if (!plain && head.later + 1 == TapeReel::capacity)
                moveOn<plain, channel>(samples);
        }

        template <bool plain>
        void noteWritten(double at, bool twoValues)
        {
            if (!plain && head.later == 0)
                head.nextTime = at;

            ++head.later;
            head.doubled += twoValues ? 1 : 0;
        }

        double woundBack(double at)
        {
            if (!(at > rewindDistance + 1024.0))
                return at;

            head.windBack(rewindDistance);
            return at - rewindDistance;
        }
    };

    TapeLine& tape;
    TapeSample* const samples;
    const Quad feedback, cross, lpCoef, hpCoef;
    const bool filterOn;
    Pair position;
    Track left, right;
    int back;
    Quad low, high;
};
} // namespace quorel
