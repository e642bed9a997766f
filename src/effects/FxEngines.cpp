// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/FxEngines.h"

#include "effects/FxSlot.h"

namespace quorel
{
namespace
{
// A family's functions know the state of their own type and what all types have in common; these take both
// out of the slot.
template <auto state, auto function>
void update(FxSlot& slot)
{
    function(slot.*state, slot);
}

template <auto state, auto function>
void process(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    function(slot.*state, slot, x, y, wetLeft, wetRight, num);
}

template <auto state, auto updateFunction, auto processFunction>
constexpr FxEngine engine(void (*clear)(FxSlot&) = nullptr, FxMemoryUse use = {})
{
    return {clear, update<state, updateFunction>, process<state, processFunction>, use};
}

void updateReverb(FxSlot& slot)
{
    hqReverbUpdate(slot.hqReverb, slot.reverb, slot);
}

void processReverb(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    hqReverbProcess(slot.hqReverb, slot.reverb, slot, x, y, wetLeft, wetRight, num);
}

void processFilter(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num)
{
    filterEffectProcess(slot.filter, slot.filterCore, slot, x, y, wetLeft, wetRight, num);
}

void clearLineStarts(FxSlot& slot)
{
    slot.memory.clearLineStarts();
}

void clearModLines(FxSlot& slot)
{
    slot.memory.clearModLines();
}

void clearTape(FxSlot& slot)
{
    slot.memory.clearShared(sizeof(TapeSample));
    tapeInit(slot.tape, slot.sampleRate);
}

template <std::size_t bytes>
void clearShared(FxSlot& slot)
{
    slot.memory.clearShared(bytes);
}

constexpr std::size_t auxRingBytes = sizeof(FxLines::Shared::auxRing);

void clearReverb(FxSlot& slot)
{
    for (ReverbUnit& unit : slot.reverb)
        reverbRest(unit);

    slot.memory.clearShared(sizeof(ReverbLines));
}

constexpr FxMemoryUse lines{true, false, 0};
constexpr FxMemoryUse modLines{false, true, 0};
constexpr FxMemoryUse bothLines{true, true, 0};
constexpr FxMemoryUse auxRing{false, false, auxRingBytes};
constexpr FxMemoryUse tapeReel{false, false, sizeof(TapeReel)};
constexpr FxMemoryUse reverbLines{true, false, sizeof(ReverbLines)};
constexpr auto clearAuxRing = clearShared<auxRingBytes>;
constexpr auto clearComb = clearShared<sizeof(CombLines)>;
constexpr auto clearEnsemble = clearShared<sizeof(EnsembleLines)>;
} // namespace

const std::array<FxEngine, fxTypeCount> fxEngines{{
    {nullptr, nullptr, nullptr, {}}, // None
    engine<&FxSlot::delay, monoDelayUpdate, delayProcess>(clearLineStarts, lines),
    engine<&FxSlot::delay, stereoDelayUpdate, delayProcess>(clearLineStarts, lines),
    engine<&FxSlot::tapeDelay, monoTapeDelayUpdate, tapeDelayProcess>(clearTape, tapeReel),
    engine<&FxSlot::tapeDelay, stereoTapeDelayUpdate, tapeDelayProcess>(clearTape, tapeReel),
    engine<&FxSlot::comb, combUpdate, combProcess>(clearComb, {false, false, sizeof(CombLines)}),
    {clearReverb, updateReverb, processReverb, reverbLines},
    engine<&FxSlot::chorus, chorusUpdate, chorusProcess>(clearModLines, modLines),
    engine<&FxSlot::chorus, tapeChorusUpdate, tapeChorusProcess>(clearTape, tapeReel),
    engine<&FxSlot::chorusDelay, chorusDelayUpdate, chorusDelayProcess>(nullptr, bothLines),
    engine<&FxSlot::ensemble, ensembleUpdate, ensembleProcess>(clearEnsemble,
                                                               {false, false, sizeof(EnsembleLines)}),
    engine<&FxSlot::flanger, flangerUpdate, flangerProcess>(clearModLines, modLines),
    engine<&FxSlot::flanger, tapeFlangerUpdate, tapeFlangerProcess>(clearTape, tapeReel),
    engine<&FxSlot::phaser, phaserUpdate, phaserProcess>(clearAuxRing, auxRing),
    engine<&FxSlot::phaser, anaPhaserUpdate, anaPhaserProcess>(clearAuxRing, auxRing),
    engine<&FxSlot::ringMod, ringModUpdate, ringModProcess>(),
    engine<&FxSlot::distort, distortUpdate, distortProcess>(),
    engine<&FxSlot::multiDistort, multiDistortUpdate, multiDistortProcess>(),
    engine<&FxSlot::lowFi, lowFiUpdate, lowFiProcess>(),
    engine<&FxSlot::waveshaper, waveshaperUpdate, waveshaperProcess>(),
    engine<&FxSlot::clipper, clipperUpdate, clipperProcess>(),
    engine<&FxSlot::amp, ampUpdate, ampProcess>(),
    engine<&FxSlot::cabinet, cabinetUpdate, cabinetProcess>(),
    engine<&FxSlot::widener, widenerUpdate, widenerProcess>(clearAuxRing, auxRing),
    engine<&FxSlot::autoPan, sweepUpdate, autoPanProcess>(),
    engine<&FxSlot::tremelo, sweepUpdate, tremeloProcess>(),
    engine<&FxSlot::kappel, kappelUpdate, kappelProcess>(),
    engine<&FxSlot::compressor, compressorUpdate, compressorProcess>(),
    engine<&FxSlot::noiseGate, noiseGateUpdate, noiseGateProcess>(),
    {nullptr, update<&FxSlot::filter, filterUpdate>, processFilter, {}},
    engine<&FxSlot::bass, bassUpdate, bassProcess>(),
    engine<&FxSlot::wahWahDelay, wahWahDelayUpdate, wahWahDelayProcess>(nullptr, lines),
    engine<&FxSlot::autoWah, autoWahUpdate, autoWahProcess>(),
}};
} // namespace quorel
