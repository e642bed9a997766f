// SPDX-License-Identifier: GPL-3.0-or-later
#include "TempoMap.h"

#include <algorithm>
#include <cmath>

namespace quorel
{

namespace
{
constexpr double startTempo = 120.0;
/** Quarter notes by which a position may miss a bar line through rounding and still be on it. */
constexpr double barLineTolerance = 1.0e-9;

/** Last entry whose key is not above `position`; the first entry stands at 0. */
template <typename Entry, typename Key>
const Entry& entryAt(const std::vector<Entry>& entries, double position, Key key)
{
    const auto after = std::upper_bound(entries.begin(), entries.end(), position,
                                        [&](double p, const Entry& e) { return p < e.*key; });
    return after == entries.begin() ? entries.front() : *(after - 1);
}
} // namespace

TempoMap::TempoMap()
    : tempos{{0.0, 0.0, startTempo}}
    , signatures{{0.0, 0, 4, 4}}
{
}

void TempoMap::addTempo(double quarters, double bpm)
{
    const Tempo added{quarters, secondsAt(quarters), bpm};
    if (quarters <= tempos.back().quarters)
        tempos.back().bpm = bpm;
    else
        tempos.push_back(added);
}

void TempoMap::addTempoAtSeconds(double seconds, double bpm)
{
    addTempo(quartersAt(seconds), bpm);
}

void TempoMap::addSignature(double quarters, int numerator, int denominator)
{
    auto& last = signatures.back();
    if (quarters <= last.quarters)
    {
        last.numerator = numerator;
        last.denominator = denominator;
        return;
    }
    const double bars = std::ceil((quarters - last.quarters) / last.quartersPerBar() - barLineTolerance);
    signatures.push_back({quarters, last.firstBar + static_cast<int>(bars), numerator, denominator});
}

double TempoMap::secondsAt(double quarters) const noexcept
{
    const auto& tempo = entryAt(tempos, quarters, &Tempo::quarters);
    return tempo.seconds + (quarters - tempo.quarters) * 60.0 / tempo.bpm;
}

double TempoMap::quartersAt(double seconds) const noexcept
{
    const auto& tempo = entryAt(tempos, seconds, &Tempo::seconds);
    return tempo.quarters + (seconds - tempo.seconds) * tempo.bpm / 60.0;
}

double TempoMap::bpmAt(double quarters) const noexcept
{
    return entryAt(tempos, quarters, &Tempo::quarters).bpm;
}

TempoMap::BarPosition TempoMap::barAt(double quarters) const noexcept
{
    const auto& signature = entryAt(signatures, quarters, &Signature::quarters);
    const double perBar = signature.quartersPerBar();
    const double bars = std::floor((quarters - signature.quarters) / perBar + barLineTolerance);
    return {signature.numerator, signature.denominator, signature.firstBar + static_cast<int>(bars),
            signature.quarters + bars * perBar};
}

} // namespace quorel
