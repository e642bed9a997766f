// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace quorel
{
struct FxSlot;

struct AmpFields
{
    std::int32_t ampType = 0;
    float ampDrive = 0.0f, ampBass = 1.0f, ampTreble = 1.0f, ampBoost = 1.0f;
    float ampHistL[64] = {}, ampHistR[64] = {};
};

struct CabinetFields
{
    std::int32_t cabType = 0; ///< row of the cabinet tables
    std::int32_t cabPos = 0;
    float cabDrive = 0.0f, cabBass = 1.0f, cabTreble = 1.0f, cabBoost = 1.0f;
    float cabHist[32][4] = {}; ///< input left and right, output left and right
};

void ampUpdate(FxSlot& slot);
void ampProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num);
void cabinetUpdate(FxSlot& slot);
void cabinetProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num);
} // namespace quorel
