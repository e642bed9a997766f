// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/FxTypes.h"

#include "effects/EffectMath.h"

namespace quorel
{
namespace
{
constexpr const char* none = "";
}

// clang-format off
const std::array<FxType, fxTypeCount> fxTypes{{
    {"None", {none, none, none, none, none, none, none, none, none, none}},
    {"Mono Delay", {"Length", "Sync", "Feedback", "LP Filter", "HP Filter", "Widen", "Mod Amt", "Mod Speed", none,
        none}},
    {"Stereo Delay", {"Left Delay", "Right Delay", "Sync", "Feedback", "CrossFeed", "Feed Equal", "LP Filter",
        "HP Filter", "Mod Amt", "Mod Speed"}},
    {"Mono Tape Delay", {"Length", "Sync", "Feedback", "LP Filter", "HP Filter", "Widen", "Mod Amt", "Mod Speed",
        none, none}},
    {"Stereo Tape Delay", {"Left Delay", "Right Delay", "Sync", "Feedback", "CrossFeed", "Feed Equal", "LP Filter",
        "HP Filter", "Mod Amt", "Mod Speed"}},
    {"Comb Filter", {"Freq 1", "Feed 1", "Mod Amt 1", "Mod Spd 1", "Freq 2", "Feed 2", "Mod Amt 2", "Mod Spd 2",
        none, none}},
    {"HQ Reverb", {"PreDelay", "Size", "Length", "Damp", "Spread", "LP Filter", "HP Filter", "Gate Limit",
        "Gate Hold", "Gate Decay"}},
    {"Chorus", {"Length", "Width", "Speed", "Sync", "Spread", "Widen", "LP Filter", "HP Filter", none, none}},
    {"Tape Chorus", {"Length", "Width", "Speed", "Sync", "Spread", "Widen", "LP Filter", "HP Filter", none, none}},
    {"Chorus / Delay", {"Length", "Width", "Speed", "Sync", "Spread", "Delay Len", "Delay Feed", "Delay Vol", none,
        none}},
    {"Ensemble", {"Length", "Width", "Speed", "Sync", "Feedback", "Ensemble", "Spread", "LP Filter", "HP Filter",
        none}},
    {"Flanger", {"Length", "Width", "Speed", "Sync", "Feedback", "Pan", "LP Filter", "HP Filter", none, none}},
    {"Tape Flanger", {"Length", "Width", "Speed", "Sync", "Feedback", "Pan", "LP Filter", "HP Filter", none, none}},
    {"Phaser", {"Stages", "Pitch", "Feedback", "Width", "Speed", "Sync", "Spread", "Pan", none, none}},
    {"Ana. Phaser", {"Stages", "Pitch", "Feedback", "Width", "Speed", "Sync", "Spread", "Pan", "Q", none}},
    {"Ring-Mod", {"Type", "Freq", "Amount", none, none, none, none, none, none, none}},
    {"Distort", {"Limit", "Rect", "Sat", "Tone", "Emp", "Post-Boost", "Mod Whl", none, none, none}},
    {"Multi Distort", {"Type", "PreBoost", "Amount 1", "Amount 2", "Normalize", "LP Filter", "HP Filter",
        "Post-Boost", none, none}},
    {"Low Fi", {"Bits", "Sample", "LP Filter", "Mod Whl", none, none, none, none, none, none}},
    {"Waveshaper", {"Top", "Bottom", "Rect", "Low", "Mod Amt", "Mod Spd", none, none, none, none}},
    {"Clipper", {"Drive", "Tone", "Limit", "Symmetry", "LP Filter", "HP Filter", "Post-Boost", none, none, none}},
    {"Amp Sim", {"Type", "Distort", "Bass", "Treble", "Boost", none, none, none, none, none}},
    {"Cabinet", {"Type", "Distort", "Bass", "Treble", "Boost", none, none, none, none, none}},
    {"Widener", {"Amount", "Width", "Speed", "LP Filter", "HP Filter", none, none, none, none, none}},
    {"AutoPan", {"Wave", "Amount", "Smooth", "Speed", "Sync", none, none, none, none, none}},
    {"Tremelo", {"Wave", "Amount", "Smooth", "Speed", "Sync", none, none, none, none, none}},
    {"Kappel", {"Speed", "Smooth", "Mode", "Sync", "Swing", none, none, none, none, none}},
    {"Compressor", {"Threshold", "Ratio", "Attack", "Release", "Post-Boost", none, none, none, none, none}},
    {"Noise-Gate", {"Threshold", "Attack", "Hold", "Decay", none, none, none, none, none, none}},
    {"Filter", {"Type", "Distort", "Frequency", "Q", "Vowel", "Wave", "LFO Amt", "LFO Spd", "Sync", "Mod Whl"}},
    {"Bass", {"Freq", "PreBoost", "Distort", "Post-Boost", none, none, none, none, none, none}},
    {"WahWah Delay", {"Low Freq", "High Freq", "Wave", "Smooth", "Speed", "Sync", "Res", "Delay Len", "Delay Feed",
        "Delay Vol"}},
    {"AutoWah", {"Type", "Low Freq", "High Freq", "Amount", "Q", "Smooth", none, none, none, none}},
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
