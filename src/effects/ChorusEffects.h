// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

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
