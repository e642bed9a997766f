// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/FxTypes.h"

#include <array>
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

inline constexpr std::array ampTypes{"None", "4x10", "4x12", "Bass", "Combo", "Radio"};
inline constexpr std::array cabinetTypes{"None", "Fender", "Marshall", "Off Axis"};

// clang-format off
inline constexpr FxType ampType{"Amp Sim", {{
    {"Type", fxtext::choice(ampTypes), 1.0f},
    {"Distort", fxtext::percent},
    {"Bass", fxtext::decibels(-20, 20), 0.5f},
    {"Treble", fxtext::decibels(-20, 20), 0.5f},
    {"Boost", fxtext::decibels(-20, 20), 0.5f},
}}};

inline constexpr FxType cabinetType{"Cabinet", {{
    {"Type", fxtext::choice(cabinetTypes)},
    {"Distort", fxtext::percent},
    {"Bass", fxtext::decibels(-20, 20), 0.5f},
    {"Treble", fxtext::decibels(-20, 20), 0.5f},
    {"Boost", fxtext::decibels(-20, 20), 0.5f},
}}};
// clang-format on

void ampUpdate(AmpState& f, FxContext& c);
void ampProcess(AmpState& f, FxContext& c, const float* x, const float* y, float* wetLeft, float* wetRight,
                int num);
void cabinetUpdate(CabinetState& f, FxContext& c);
void cabinetProcess(CabinetState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num);
} // namespace quorel
