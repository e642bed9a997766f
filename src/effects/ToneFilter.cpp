// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/ToneFilter.h"

#include <algorithm>
#include <cmath>

namespace quorel
{
namespace
{
// A one-pole with a coefficient of 2 diverges; no rate from 22.05 kHz up gets past 1.858.
float onePoleCoefficient(float p, float invSampleRate)
{
    return std::min(std::exp2(11.0f * p) * 20.0f * invSampleRate, 1.9f);
}
} // namespace

void setToneFilters(ToneFilter& tone, float pLow, float pHigh, float invSampleRate)
{
    tone.lp = onePoleCoefficient(pLow, invSampleRate);
    tone.lpInv = 1.0f - tone.lp;
    tone.hp = onePoleCoefficient(pHigh, invSampleRate);
    tone.hpInv = 1.0f - tone.hp;
}
} // namespace quorel
