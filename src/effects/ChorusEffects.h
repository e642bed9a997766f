// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/EffectConstants.h"

#include <cstdint>

namespace quorel
{
struct FxSlot;

/** Fields of "Chorus", "Tape Chorus" and "Chorus / Delay". */
struct ChorusFields
{
    float chorusLength = 0.0f, chorusDepth = 0.0f;
    float chorusOffset = 0.0f; ///< extra samples of the right channel
    std::uint32_t chorusPhaseL = 0, chorusIncL = 0, chorusPhaseR = 0, chorusIncR = 0;
    float cdDelayTarget = 0.0f, cdDelaySmooth = 1.0f, cdFeed = 0.0f, cdVolume = 0.0f, cdLength = 0.0f;
};

struct EnsembleFields
{
    float ensFeedback = 0.0f, ensOutGain = 0.5f;
    std::uint32_t ensInc[6] = {}, ensPhase[6] = {};
    float ensLength[6] = {}, ensDepthSamples[6] = {}, ensBaseSamples[6] = {};
    float ensGainL[6] = {}, ensGainR[6] = {};
};

struct EnsembleLines
{
    /** A voice's line, left and right in turn, its first entry again at the end, and some bytes more so that
       the write positions of all lines don't share a cache set. */
    static constexpr int stride = 2 * (fxModLineLength + 1) + 30;

    float ensLines[6 * stride];
};

void modLineClear(FxSlot& slot);
void chorusUpdate(FxSlot& slot);
void chorusProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num);
void tapeChorusUpdate(FxSlot& slot);
void tapeChorusProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight,
                       int num);
void chorusDelayUpdate(FxSlot& slot);
void chorusDelayProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight,
                        int num);

void ensembleInit(FxSlot& slot);
void ensembleClear(FxSlot& slot);
void ensembleUpdate(FxSlot& slot);
void ensembleProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num);
} // namespace quorel
