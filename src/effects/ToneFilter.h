// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/EffectConstants.h"
#include "effects/Quad.h"

namespace quorel
{
/** One-pole low-pass and high-pass of both channels, in series wherever an effect has "LP Filter", "HP
 * Filter". */
struct ToneFilter
{
    float toneLp = 1.0f;
    float toneHp = 0.0f;
    float toneLpInv = 0.0f;
    float toneHpInv = 1.0f;
    float toneLpStateL = 0.0f;
    float toneLpStateR = 0.0f;
    float toneHpStateL = 0.0f;
    float toneHpStateR = 0.0f;
};

/** Sets both corners, pLow and pHigh 0 to 1 for 20 Hz to 40960 Hz as 2^(11 p) x 20. */
void setToneFilters(ToneFilter& tone, float pLow, float pHigh, float invSampleRate);

/** Low-pass of both channels in place. */
inline void toneLowPass(ToneFilter& tone, float& l, float& r)
{
    tone.toneLpStateL = tone.toneLpInv * tone.toneLpStateL + tone.toneLp * l + fxTiny;
    tone.toneLpStateR = tone.toneLpInv * tone.toneLpStateR + tone.toneLp * r + fxTiny;
    l = tone.toneLpStateL;
    r = tone.toneLpStateR;
}

/** High-pass of both channels in place. */
inline void toneHighPass(ToneFilter& tone, float& l, float& r)
{
    tone.toneHpStateL = l * tone.toneHp + tone.toneHpInv * tone.toneHpStateL + fxTiny;
    tone.toneHpStateR = r * tone.toneHp + tone.toneHpInv * tone.toneHpStateR + fxTiny;
    l = l - tone.toneHpStateL;
    r = r - tone.toneHpStateR;
}

/** Both filters while they run over a block; channels in the first two lanes. */
class ToneRun
{
public:
    explicit ToneRun(ToneFilter& owner)
        : tone(owner)
        , lp(quadOf(owner.toneLp))
        , lpInv(quadOf(owner.toneLpInv))
        , hp(quadOf(owner.toneHp))
        , hpInv(quadOf(owner.toneHpInv))
        , low(Quad{owner.toneLpStateL, owner.toneLpStateR, 0.0f, 0.0f})
        , high(Quad{owner.toneHpStateL, owner.toneHpStateR, 0.0f, 0.0f})
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
        tone.toneLpStateL = low[0];
        tone.toneLpStateR = low[1];
        tone.toneHpStateL = high[0];
        tone.toneHpStateR = high[1];
    }

private:
    ToneFilter& tone;
    const Quad lp, lpInv, hp, hpInv;
    Quad low, high;
};
} // namespace quorel
