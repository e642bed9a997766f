// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/FxTypes.h"

#include <cstdint>

namespace quorel
{
struct FxContext;

/** "Chorus" and "Tape Chorus", and the chorus of "Chorus / Delay". */
struct ChorusState
{
    float length = 0.0f, depth = 0.0f;
    float offset = 0.0f; ///< extra samples of the right channel
    std::uint32_t phaseL = 0, incL = 0, phaseR = 0, incR = 0;
};

struct ChorusDelayState
{
    ChorusState chorus;
    float delayTarget = 0.0f, delaySmooth = 1.0f, feed = 0.0f, volume = 0.0f, delayLength = 0.0f;
};

struct EnsembleState
{
    float feedback = 0.0f, outGain = 0.5f;
    std::uint32_t inc[6] = {};
    std::uint32_t phase[6] = {firstPhase(0), firstPhase(1), firstPhase(2),
                              firstPhase(3), firstPhase(4), firstPhase(5)};
    float length[6] = {}, depthSamples[6] = {}, baseSamples[6] = {};
    float gainL[6] = {}, gainR[6] = {};

private:
    static constexpr std::uint32_t firstPhase(std::uint32_t voice) { return voice * 0xffffffu / 6u; }
};

// clang-format off
inline constexpr FxType chorusType{"Chorus", {{
    {"Length", fxtext::upTo50Ms, 0.481f},
    {"Width", fxtext::percent, 0.44f},
    // Runs at half the rate shown when it is free.
    {"Speed", fxtext::lfoSpeed(3), 0.42f},
    {"Sync", fxtext::choice(fxtext::offOn), 1.0f},
    {"Spread", fxtext::percent, 0.36f},
    {"Widen", fxtext::percent},
    // A one-pole: its corner is lower than the text, at 3.2 Hz x 2^(11 p).
    {"LP Filter", fxtext::hertz, 0.98f},
    {"HP Filter", fxtext::hertz},
}}};

inline constexpr FxType tapeChorusType{"Tape Chorus", chorusType.parameters};

inline constexpr FxType chorusDelayType{"Chorus / Delay", {{
    {"Length", fxtext::upTo50Ms, 0.41f},
    {"Width", fxtext::percent, 0.34f},
    // Runs at half the rate shown when it is free.
    {"Speed", fxtext::lfoSpeed(3), 0.65f},
    {"Sync", fxtext::choice(fxtext::offOn), 1.0f},
    {"Spread", fxtext::percent, 0.35f},
    {"Delay Len", fxtext::delayNote, 0.56f},
    {"Delay Feed", fxtext::percent, 0.36f},
    {"Delay Vol", fxtext::percent},
}}};

inline constexpr FxType ensembleType{"Ensemble", {{
    {"Length", fxtext::upTo50Ms, 0.49f},
    {"Width", fxtext::percent, 0.36f},
    // Runs at half the rate shown when it is free.
    {"Speed", fxtext::lfoSpeed(3), 0.685f},
    {"Sync", fxtext::choice(fxtext::offOn), 1.0f},
    {"Feedback", fxtext::percent, 0.34f},
    {"Ensemble", fxtext::percent, 0.855f},
    {"Spread", fxtext::percent, 1.0f},
    // A one-pole: its corner is lower than the text, at 3.2 Hz x 2^(11 p).
    {"LP Filter", fxtext::hertz, 1.0f},
    {"HP Filter", fxtext::hertz},
}}};
// clang-format on

void chorusUpdate(ChorusState& f, FxContext& c);
void chorusProcess(ChorusState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                   float* wetRight, int num);
void tapeChorusUpdate(ChorusState& f, FxContext& c);
void tapeChorusProcess(ChorusState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                       float* wetRight, int num);
void chorusDelayUpdate(ChorusDelayState& f, FxContext& c);
void chorusDelayProcess(ChorusDelayState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                        float* wetRight, int num);

void ensembleUpdate(EnsembleState& f, FxContext& c);
void ensembleProcess(EnsembleState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                     float* wetRight, int num);
} // namespace quorel
