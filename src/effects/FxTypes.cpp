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
        none}, nullptr, nullptr, nullptr},
    {"Stereo Delay", {"Left Delay", "Right Delay", "Sync", "Feedback", "CrossFeed", "Feed Equal", "LP Filter",
        "HP Filter", "Mod Amt", "Mod Speed"}, nullptr, nullptr, nullptr},
    {"Mono Tape Delay", {"Length", "Sync", "Feedback", "LP Filter", "HP Filter", "Widen", "Mod Amt", "Mod Speed",
        none, none}, nullptr, nullptr, nullptr},
    {"Stereo Tape Delay", {"Left Delay", "Right Delay", "Sync", "Feedback", "CrossFeed", "Feed Equal", "LP Filter",
        "HP Filter", "Mod Amt", "Mod Speed"}, nullptr, nullptr, nullptr},
    {"Comb Filter", {"Freq 1", "Feed 1", "Mod Amt 1", "Mod Spd 1", "Freq 2", "Feed 2", "Mod Amt 2", "Mod Spd 2",
        none, none}, nullptr, nullptr, nullptr},
    {"HQ Reverb", {"PreDelay", "Size", "Length", "Damp", "Spread", "LP Filter", "HP Filter", "Gate Limit",
        "Gate Hold", "Gate Decay"}, nullptr, nullptr, nullptr},
    {"Chorus", {"Length", "Width", "Speed", "Sync", "Spread", "Widen", "LP Filter", "HP Filter", none, none},
        nullptr, nullptr, nullptr},
    {"Tape Chorus", {"Length", "Width", "Speed", "Sync", "Spread", "Widen", "LP Filter", "HP Filter", none, none},
        nullptr, nullptr, nullptr},
    {"Chorus / Delay", {"Length", "Width", "Speed", "Sync", "Spread", "Delay Len", "Delay Feed", "Delay Vol", none,
        none}, nullptr, nullptr, nullptr},
    {"Ensemble", {"Length", "Width", "Speed", "Sync", "Feedback", "Ensemble", "Spread", "LP Filter", "HP Filter",
        none}, nullptr, nullptr, nullptr},
    {"Flanger", {"Length", "Width", "Speed", "Sync", "Feedback", "Pan", "LP Filter", "HP Filter", none, none},
        nullptr, nullptr, nullptr},
    {"Tape Flanger", {"Length", "Width", "Speed", "Sync", "Feedback", "Pan", "LP Filter", "HP Filter", none, none},
        nullptr, nullptr, nullptr},
    {"Phaser", {"Stages", "Pitch", "Feedback", "Width", "Speed", "Sync", "Spread", "Pan", none, none},
        nullptr, nullptr, nullptr},
    {"Ana. Phaser", {"Stages", "Pitch", "Feedback", "Width", "Speed", "Sync", "Spread", "Pan", "Q", none},
        nullptr, nullptr, nullptr},
    {"Ring-Mod", {"Type", "Freq", "Amount", none, none, none, none, none, none, none}, nullptr, nullptr, nullptr},
    {"Distort", {"Limit", "Rect", "Sat", "Tone", "Emp", "Post-Boost", "Mod Whl", none, none, none},
        nullptr, nullptr, nullptr},
    {"Multi Distort", {"Type", "PreBoost", "Amount 1", "Amount 2", "Normalize", "LP Filter", "HP Filter",
        "Post-Boost", none, none}, nullptr, nullptr, nullptr},
    {"Low Fi", {"Bits", "Sample", "LP Filter", "Mod Whl", none, none, none, none, none, none},
        nullptr, nullptr, nullptr},
    {"Waveshaper", {"Top", "Bottom", "Rect", "Low", "Mod Amt", "Mod Spd", none, none, none, none},
        nullptr, nullptr, nullptr},
    {"Clipper", {"Drive", "Tone", "Limit", "Symmetry", "LP Filter", "HP Filter", "Post-Boost", none, none, none},
        nullptr, nullptr, nullptr},
    {"Amp Sim", {"Type", "Distort", "Bass", "Treble", "Boost", none, none, none, none, none},
        nullptr, nullptr, nullptr},
    {"Cabinet", {"Type", "Distort", "Bass", "Treble", "Boost", none, none, none, none, none},
        nullptr, nullptr, nullptr},
    {"Widener", {"Amount", "Width", "Speed", "LP Filter", "HP Filter", none, none, none, none, none},
        nullptr, nullptr, nullptr},
    {"AutoPan", {"Wave", "Amount", "Smooth", "Speed", "Sync", none, none, none, none, none},
        nullptr, nullptr, nullptr},
    {"Tremelo", {"Wave", "Amount", "Smooth", "Speed", "Sync", none, none, none, none, none},
        nullptr, nullptr, nullptr},
    {"Kappel", {"Speed", "Smooth", "Mode", "Sync", "Swing", none, none, none, none, none},
        nullptr, nullptr, nullptr},
    {"Compressor", {"Threshold", "Ratio", "Attack", "Release", "Post-Boost", none, none, none, none, none},
        nullptr, nullptr, nullptr},
    {"Noise-Gate", {"Threshold", "Attack", "Hold", "Decay", none, none, none, none, none, none},
        nullptr, nullptr, nullptr},
    {"Filter", {"Type", "Distort", "Frequency", "Q", "Vowel", "Wave", "LFO Amt", "LFO Spd", "Sync", "Mod Whl"},
        nullptr, nullptr, nullptr},
    {"Bass", {"Freq", "PreBoost", "Distort", "Post-Boost", none, none, none, none, none, none},
        nullptr, nullptr, nullptr},
    {"WahWah Delay", {"Low Freq", "High Freq", "Wave", "Smooth", "Speed", "Sync", "Res", "Delay Len", "Delay Feed",
        "Delay Vol"}, nullptr, nullptr, nullptr},
    {"AutoWah", {"Type", "Low Freq", "High Freq", "Amount", "Q", "Smooth", none, none, none, none},
        nullptr, nullptr, nullptr},
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
