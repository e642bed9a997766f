// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/FxTypes.h"

#include "effects/EffectMath.h"
#include "effects/FxSlot.h"

namespace quorel
{
namespace
{
constexpr const char* none = "";
}

// clang-format off
const std::array<FxType, fxTypeCount> fxTypes{{
    {"None", {none, none, none, none, none, none, none, none, none, none}, nullptr, nullptr, nullptr},
    {"Mono Delay", {"Length", "Sync", "Feedback", "LP Filter", "HP Filter", "Widen", "Mod Amt", "Mod Speed", none,
        none}, delayClear, monoDelayUpdate, delayProcess},
    {"Stereo Delay", {"Left Delay", "Right Delay", "Sync", "Feedback", "CrossFeed", "Feed Equal", "LP Filter",
        "HP Filter", "Mod Amt", "Mod Speed"}, delayClear, stereoDelayUpdate, delayProcess},
    {"Mono Tape Delay", {"Length", "Sync", "Feedback", "LP Filter", "HP Filter", "Widen", "Mod Amt", "Mod Speed",
        none, none}, tapeClear, monoTapeDelayUpdate, tapeDelayProcess},
    {"Stereo Tape Delay", {"Left Delay", "Right Delay", "Sync", "Feedback", "CrossFeed", "Feed Equal", "LP Filter",
        "HP Filter", "Mod Amt", "Mod Speed"}, tapeClear, stereoTapeDelayUpdate, tapeDelayProcess},
    {"Comb Filter", {"Freq 1", "Feed 1", "Mod Amt 1", "Mod Spd 1", "Freq 2", "Feed 2", "Mod Amt 2", "Mod Spd 2",
        none, none}, combClear, combUpdate, combProcess},
    {"HQ Reverb", {"PreDelay", "Size", "Length", "Damp", "Spread", "LP Filter", "HP Filter", "Gate Limit",
        "Gate Hold", "Gate Decay"}, hqReverbClear, hqReverbUpdate, hqReverbProcess},
    {"Chorus", {"Length", "Width", "Speed", "Sync", "Spread", "Widen", "LP Filter", "HP Filter", none, none},
        modLineClear, chorusUpdate, chorusProcess},
    {"Tape Chorus", {"Length", "Width", "Speed", "Sync", "Spread", "Widen", "LP Filter", "HP Filter", none, none},
        tapeClear, tapeChorusUpdate, tapeChorusProcess},
    {"Chorus / Delay", {"Length", "Width", "Speed", "Sync", "Spread", "Delay Len", "Delay Feed", "Delay Vol", none,
        none}, nullptr, chorusDelayUpdate, chorusDelayProcess},
    {"Ensemble", {"Length", "Width", "Speed", "Sync", "Feedback", "Ensemble", "Spread", "LP Filter", "HP Filter",
        none}, ensembleClear, ensembleUpdate, ensembleProcess},
    {"Flanger", {"Length", "Width", "Speed", "Sync", "Feedback", "Pan", "LP Filter", "HP Filter", none, none},
        modLineClear, flangerUpdate, flangerProcess},
    {"Tape Flanger", {"Length", "Width", "Speed", "Sync", "Feedback", "Pan", "LP Filter", "HP Filter", none, none},
        tapeClear, tapeFlangerUpdate, tapeFlangerProcess},
    {"Phaser", {"Stages", "Pitch", "Feedback", "Width", "Speed", "Sync", "Spread", "Pan", none, none},
        auxRingClear, phaserUpdate, phaserProcess},
    {"Ana. Phaser", {"Stages", "Pitch", "Feedback", "Width", "Speed", "Sync", "Spread", "Pan", "Q", none},
        auxRingClear, anaPhaserUpdate, anaPhaserProcess},
    {"Ring-Mod", {"Type", "Freq", "Amount", none, none, none, none, none, none, none}, nullptr, ringModUpdate, ringModProcess},
    {"Distort", {"Limit", "Rect", "Sat", "Tone", "Emp", "Post-Boost", "Mod Whl", none, none, none},
        nullptr, distortUpdate, distortProcess},
    {"Multi Distort", {"Type", "PreBoost", "Amount 1", "Amount 2", "Normalize", "LP Filter", "HP Filter",
        "Post-Boost", none, none}, nullptr, multiDistortUpdate, multiDistortProcess},
    {"Low Fi", {"Bits", "Sample", "LP Filter", "Mod Whl", none, none, none, none, none, none},
        nullptr, lowFiUpdate, lowFiProcess},
    {"Waveshaper", {"Top", "Bottom", "Rect", "Low", "Mod Amt", "Mod Spd", none, none, none, none},
        nullptr, waveshaperUpdate, waveshaperProcess},
    {"Clipper", {"Drive", "Tone", "Limit", "Symmetry", "LP Filter", "HP Filter", "Post-Boost", none, none, none},
        nullptr, clipperUpdate, clipperProcess},
    {"Amp Sim", {"Type", "Distort", "Bass", "Treble", "Boost", none, none, none, none, none},
        nullptr, ampUpdate, ampProcess},
    {"Cabinet", {"Type", "Distort", "Bass", "Treble", "Boost", none, none, none, none, none},
        nullptr, cabinetUpdate, cabinetProcess},
    {"Widener", {"Amount", "Width", "Speed", "LP Filter", "HP Filter", none, none, none, none, none},
        auxRingClear, widenerUpdate, widenerProcess},
    {"AutoPan", {"Wave", "Amount", "Smooth", "Speed", "Sync", none, none, none, none, none},
        nullptr, autoPanUpdate, autoPanProcess},
    {"Tremelo", {"Wave", "Amount", "Smooth", "Speed", "Sync", none, none, none, none, none},
        nullptr, tremeloUpdate, tremeloProcess},
    {"Kappel", {"Speed", "Smooth", "Mode", "Sync", "Swing", none, none, none, none, none},
        nullptr, kappelUpdate, kappelProcess},
    {"Compressor", {"Threshold", "Ratio", "Attack", "Release", "Post-Boost", none, none, none, none, none},
        nullptr, compressorUpdate, compressorProcess},
    {"Noise-Gate", {"Threshold", "Attack", "Hold", "Decay", none, none, none, none, none, none},
        nullptr, noiseGateUpdate, noiseGateProcess},
    {"Filter", {"Type", "Distort", "Frequency", "Q", "Vowel", "Wave", "LFO Amt", "LFO Spd", "Sync", "Mod Whl"},
        nullptr, filterUpdate, filterEffectProcess},
    {"Bass", {"Freq", "PreBoost", "Distort", "Post-Boost", none, none, none, none, none, none},
        nullptr, bassUpdate, bassProcess},
    {"WahWah Delay", {"Low Freq", "High Freq", "Wave", "Smooth", "Speed", "Sync", "Res", "Delay Len", "Delay Feed",
        "Delay Vol"}, nullptr, wahWahDelayUpdate, wahWahDelayProcess},
    {"AutoWah", {"Type", "Low Freq", "High Freq", "Amount", "Q", "Smooth", none, none, none, none},
        nullptr, autoWahUpdate, autoWahProcess},
}};

// clang-format on

int fxTypeFromParameter(float value)
{
    return truncateTo(value * 32.0f, 0, fxTypeCount - 1);
}

const char* fxParameterLabel(int entry)
{
    if (entry < 0 || entry >= fxTypeCount * fxParameterCount)
        return none;

    return fxTypes[static_cast<std::size_t>(entry / fxParameterCount)]
        .labels[static_cast<std::size_t>(entry % fxParameterCount)];
}
} // namespace quorel
