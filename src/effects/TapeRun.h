// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/EffectConstants.h"
#include "effects/Quad.h"
#include "effects/TapeLine.h"

namespace quorel
{
/** A tape while it runs over a block of at most fxChunk samples: positions, queues and filters are held here
 * until store(). */
class TapeRun
{
public:
    explicit TapeRun(TapeLine& owner)
        : tape(owner)
        , feedback(Quad{owner.feedbackL, owner.feedbackR, 0.0f, 0.0f})
        , cross(Quad{owner.crossL, owner.crossR, 0.0f, 0.0f})
        , lpCoef(quadOf(owner.lpCoef))
        , hpCoef(quadOf(owner.hpCoef))
        , filterOn(owner.filterOn != 0)
        , position(Pair{owner.posL, owner.posR})
        , left(owner.queueL)
        , right(owner.queueR)
        , low(Quad{owner.lpL, owner.lpR, 0.0f, 0.0f})
        , high(Quad{owner.hpL, owner.hpR, 0.0f, 0.0f})
    {
    }

    /** True if for the next fxChunk samples the head stays run in, no queue wraps, fills up or runs empty,
       and no position is wound back: then process<true>() does without looking. */
    bool isPlain() const
    {
        const double most = rewindDistance - fxChunk * headDistance / static_cast<double>(shortestDistance);
        return position[0] >= headDistance && position[1] >= headDistance && position[0] < most &&
               position[1] < most && left.isPlain() && right.isPlain();
    }

    Pair speed() const { return Pair{tape.speedL, tape.speedR}; }

    /** Tape units a sample for two distances in samples, at least 1e-3 each. */
    static Pair speedFor(float leftDistance, float rightDistance)
    {
        return headDistance /
               pairOf(std::max(leftDistance, shortestDistance), std::max(rightDistance, shortestDistance));
    }

    /** One sample of both channels, in the first two lanes. */
    template <bool plain>
    [[gnu::always_inline]] Quad process(Quad in, Pair speedNow)
    {
        if (!plain && (left.count == 0 || right.count == 0))
            return Quad{};

        position = position + speedNow;
        if (!plain && (position[0] > rewindDistance + 1024.0 || position[1] > rewindDistance + 1024.0))
            position = Pair{left.rewound(position[0]), right.rewound(position[1])};

        const Pair t = position - headDistance;
        const Read l = left.read<plain>(position[0], t[0], in[0]),
                   r = right.read<plain>(position[1], t[1], in[1]);
        const Pair base = {l.a.value, r.a.value}, start = {l.a.time, r.a.time};
        const Pair read =
            (Pair{l.b.value, r.b.value} - base) * (t - start) / (Pair{l.b.time, r.b.time} - start) + base;
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

        const Pair kept = firstPair(written);
        left.push<plain>(position[0], kept[0]);
        right.push<plain>(position[1], kept[1]);
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
        left.store();
        right.store();
    }

private:
    static constexpr double headDistance = 100.0;
    static constexpr float shortestDistance = 1.0e-3f;

    // Positions lose precision as they grow, until a slow tape would stand still; winding them back costs
    // nothing in sound.
    static constexpr double rewindDistance = 1073741824.0;

    /** The two entries around the read head. */
    struct Read
    {
        TapeQueue::Entry a, b;
    };

    struct Track
    {
        explicit Track(TapeQueue& owner)
            : queue(owner)
            , front(owner.entries + owner.front)
            , back(owner.entries + (owner.front + owner.count) % TapeQueue::capacity)
            , count(owner.count)
        {
        }

        bool isPlain() const
        {
            return back > front && queue.entries + TapeQueue::capacity - back > 2 * fxChunk;
        }

        template <bool plain>
        void step(TapeQueue::Entry*& entry)
        {
            if (++entry == queue.entries + TapeQueue::capacity && !plain)
                entry = queue.entries;
        }

        const TapeQueue::Entry& second() const
        {
            return front + 1 == queue.entries + TapeQueue::capacity ? queue.entries[0] : front[1];
        }

        template <bool plain>
        void push(double time, double value)
        {
            if (!plain && count == TapeQueue::capacity)
                pop<plain>();

            *back = {time, value};
            step<plain>(back);
            ++count;
        }

        template <bool plain>
        void pop()
        {
            step<plain>(front);
            --count;
        }

        /** Before the tape has run the head's distance the input is written as well, and nothing is read:
           that is what two silent entries stand for. */
        template <bool plain>
        [[gnu::always_inline]] Read read(double at, double t, float in)
        {
            static constexpr Read silence = {{0.0, 0.0}, {1.0, 0.0}};

            if (!plain && at < headDistance)
            {
                push<plain>(at, static_cast<double>(in));
                return silence;
            }

            while (true)
            {
                if (count < 3)
                    return silence;

                const TapeQueue::Entry next = plain ? front[1] : second();
                if (t < next.time)
                    return {*front, next};

                pop<plain>();
            }
        }

        double rewound(double at)
        {
            if (!(at > rewindDistance + 1024.0))
                return at;

            store();
            queue.moveBack(rewindDistance);
            return at - rewindDistance;
        }

        void store()
        {
            queue.front = static_cast<int>(front - queue.entries);
            queue.count = count;
        }

        TapeQueue& queue;
        TapeQueue::Entry* front;
        TapeQueue::Entry* back; ///< where the next one goes
        int count;
    };

    TapeLine& tape;
    const Quad feedback, cross, lpCoef, hpCoef;
    const bool filterOn;
    Pair position;
    Track left, right;
    Quad low, high;
};
} // namespace quorel
