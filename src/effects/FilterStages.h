// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/FilterCore.h"
#include "effects/Quad.h"

namespace quorel
{
// The stages that the filter types are made of. Each takes its history out of the core for the length of a
// block, to have it in registers, and puts it back with store(); load() takes over a control step's coefficients.
// Audio thread only.

/** The biquad of a block, its history in registers. */
class BiquadStage
{
public:
    explicit BiquadStage(FilterCore& owner)
        : core(owner)
        , x1(loadQuad(owner.x1))
        , x2(loadQuad(owner.x2))
        , y1(loadQuad(owner.y1))
        , y2(loadQuad(owner.y2))
    {
    }

    void load(const FilterCoefficients& c)
    {
        b0 = quadOf(c.b0);
        b1 = quadOf(c.b1);
        b2 = quadOf(c.b2);
        a1 = quadOf(c.a1);
        a2 = quadOf(c.a2);
    }

    // Guards against denormal numbers are added last, here and below: at a high resonance out of silence
    // another order would be heard as another start.
    [[gnu::always_inline]] Quad tick(Quad in)
    {
        const Quad x = in + fxTiny;
        const Quad y = x * b0 + x1 * b1 + x2 * b2 - y1 * a1 - y2 * a2 + fxTiny;
        x2 = x1;
        x1 = x;
        y2 = y1;
        y1 = y;
        return y;
    }

    void store()
    {
        storeQuad(core.x1, x1);
        storeQuad(core.x2, x2);
        storeQuad(core.y1, y1);
        storeQuad(core.y2, y2);
    }

private:
    FilterCore& core;
    Quad b0 = {}, b1 = {}, b2 = {}, a1 = {}, a2 = {};
    Quad x1, x2, y1, y2;
};

/** The state-variable filter of a block. */
class StateVariableStage
{
public:
    explicit StateVariableStage(FilterCore& owner)
        : core(owner)
        , band(loadQuad(owner.band))
        , high(loadQuad(owner.high))
        , low(loadQuad(owner.low))
    {
    }

    void load(const FilterCoefficients& c)
    {
        f = quadOf(c.svfF);
        q = quadOf(c.svfQ);
    }

    [[gnu::always_inline]] void tick(Quad in)
    {
        // Past a band state of 44.7 the cubic term gives back more than it takes.
        if (!bothTrue(magnitude(band) <= 44.0f))
            band = heldTo(band, 44.0f);

        // The cube of a silent band would be a denormal number; the larger square changes nothing else.
        const Quad damped = band - larger(band * band, quadOf(fxTiny)) * band * 0.001f + fxTiny;
        high = in - low - damped * q + fxTiny;
        band = high * f + fxTiny + damped;
        low = band * f + fxTiny + low;
    }

    void clamp(float limit)
    {
        band = heldTo(band, limit);
        high = heldTo(high, limit);
        low = heldTo(low, limit);
    }

    void store()
    {
        storeQuad(core.band, band);
        storeQuad(core.high, high);
        storeQuad(core.low, low);
    }

private:
    FilterCore& core;
    Quad f = {}, q = {};

public:
    Quad band, high, low;
};

/** The ladder of a block. */
class LadderStage
{
public:
    explicit LadderStage(FilterCore& owner)
        : core(owner)
        , inPrev(loadQuad(owner.inPrev))
        , s1(loadQuad(owner.s1))
        , s2(loadQuad(owner.s2))
        , s3(loadQuad(owner.s3))
        , s4(loadQuad(owner.s4))
    {
    }

    void load(const FilterCoefficients& c)
    {
        scale = quadOf(c.ladderScale);
        feedback = quadOf(c.ladderFeedback);
        p = quadOf(c.ladderP);
    }

    [[gnu::always_inline]] void tick(Quad in)
    {
        const Quad x = in - feedback * s4 + fxTiny;
        const Quad n1 = (x + inPrev) * p - scale * s1 + fxTiny;
        const Quad n2 = (n1 + s1) * p - scale * s2 + fxTiny;
        const Quad n3 = (n2 + s2) * p - scale * s3 + fxTiny;
        const Quad v = (n3 + s3) * p - scale * s4 + fxTiny;
        const Quad square = v * v;
        s1 = n1;
        s2 = n2;
        s3 = n3;
        s4 = (1.0f - square * 0.166666f) * v;
        inPrev = x + fxTiny;

        // Past the square root of 12 the cubic stage returns more than it was given, and would run off for
        // good.
        if (!bothTrue(square <= 12.0f))
            s4 = ladderHeld(s4, v);
    }

    void clamp()
    {
        s1 = heldTo(s1, 100.0f);
        s2 = heldTo(s2, 100.0f);
        s3 = heldTo(s3, 100.0f);
        s4 = heldTo(s4, 100.0f);
    }

    void store()
    {
        storeQuad(core.inPrev, inPrev);
        storeQuad(core.s1, s1);
        storeQuad(core.s2, s2);
        storeQuad(core.s3, s3);
        storeQuad(core.s4, s4);
    }

private:
    [[gnu::noinline]] static Quad ladderHeld(Quad s4, Quad v)
    {
        return v * v <= 12.0f ? s4 : signedBy(quadOf(0.9428090f), v);
    }

    FilterCore& core;
    Quad scale = {}, feedback = {}, p = {};
    Quad inPrev, s1, s2;

public:
    Quad s3, s4;
};

/** The one-pole of a block. */
class OnePoleStage
{
public:
    explicit OnePoleStage(FilterCore& owner)
        : core(owner)
        , state(loadQuad(owner.op))
    {
    }

    void load(const FilterCoefficients& c)
    {
        coef = quadOf(c.opCoef);
        inv = quadOf(c.opInv);
    }

    [[gnu::always_inline]] Quad tick(Quad in)
    {
        state = inv * state + coef * in + fxTiny;
        return state;
    }

    void store() { storeQuad(core.op, state); }

private:
    FilterCore& core;
    Quad coef = {}, inv = {};
    Quad state;
};
} // namespace quorel
