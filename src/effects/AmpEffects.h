// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace quorel
{
struct FxContext;

struct AmpState
{
    std::int32_t type = 0;
    float drive = 0.0f, bass = 1.0f, treble = 1.0f, boost = 1.0f;
    float histL[64] = {}, histR[64] = {};
};

struct CabinetState
{
    std::int32_t type = 0; ///< row of the cabinet tables
    std::int32_t pos = 0;
    float drive = 0.0f, bass = 1.0f, treble = 1.0f, boost = 1.0f;
    float hist[32][4] = {}; ///< input left and right, output left and right
};

void ampUpdate(AmpState& f, FxContext& c);
void ampProcess(AmpState& f, FxContext& c, const float* x, const float* y, float* wetLeft, float* wetRight,
                int num);
void cabinetUpdate(CabinetState& f, FxContext& c);
void cabinetProcess(CabinetState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num);
} // namespace quorel
