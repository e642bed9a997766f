// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/EffectConstants.h"
#include "effects/Quad.h"

namespace quorel
{
/** One-pole low-pass and high-pass of both channels, in series: "LP Filter" and "HP Filter" of most types. */
struct ToneFilter
{
    float lp = 1.0f;
    float hp = 0.0f;
    float lpInv = 0.0f;
    float hpInv = 1.0f;
    float lpStateL = 0.0f;
    float lpStateR = 0.0f;
    float hpStateL = 0.0f;
    float hpStateR = 0.0f;
};

/** Sets both corners, pLow and pHigh 0 to 1 for 20 Hz to 40960 Hz as 2^(11 p) x 20. */
void setToneFilters(ToneFilter& tone, float pLow, float pHigh, float invSampleRate);

/** Low-pass of both channels in place. */
inline void toneLowPass(ToneFilter& tone, float& l, float& r)
{
    tone.lpStateL = tone.lpInv * tone.lpStateL + tone.lp * l + fxTiny;
    tone.lpStateR = tone.lpInv * tone.lpStateR + tone.lp * r + fxTiny;
    l = tone.lpStateL;
    r = tone.lpStateR;
}

/** High-pass of both channels in place. */
inline void toneHighPass(ToneFilter& tone, float& l, float& r)
{
    tone.hpStateL = l * tone.hp + tone.hpInv * tone.hpStateL + fxTiny;
    tone.hpStateR = r * tone.hp + tone.hpInv * tone.hpStateR + fxTiny;
    l = l - tone.hpStateL;
    r = r - tone.hpStateR;
}

/** Both filters while they run over a block; channels in the first two lanes. */
class ToneRun
{
public:
    explicit ToneRun(ToneFilter& owner)
        : tone(owner)
        , lp(quadOf(owner.lp))
        , lpInv(quadOf(owner.lpInv))
        , hp(quadOf(owner.hp))
        , hpInv(quadOf(owner.hpInv))
        , low(Quad{owner.lpStateL, owner.lpStateR, 0.0f, 0.0f})
        , high(Quad{owner.hpStateL, owner.hpStateR, 0.0f, 0.0f})
    {
    }

    /** Low-pass, then high-pass. */
    [[gnu::always_inline]] Quad tick(Quad x)
    {
        low = lpInv * low + lp * x + fxTiny;
        high = low * hp + hpInv * high + fxTiny;
        return low - high;
    }

    void store() const
    {
        tone.lpStateL = low[0];
        tone.lpStateR = low[1];
        tone.hpStateL = high[0];
        tone.hpStateR = high[1];
    }

private:
    ToneFilter& tone;
    const Quad lp, lpInv, hp, hpInv;
    Quad low, high;
};
} // namespace quorel
