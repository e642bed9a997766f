// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace quorel
{
struct FxContext;

struct RingModState
{
    std::int32_t type = 0;
    float amount = 0.0f, inc = 0.0f, phase = 0.0f;
};

struct DistortState
{
    float sat = 0.0f, rect = 0.0f, limit = 0.0f, post = 0.0f, tone = 0.0f;
    float modWheelAmt = 0.0f, emp = 0.0f;
};

struct MultiDistortState
{
    std::int32_t type = 0;
    float pre = 0.0f, amount1 = 0.0f, amount2 = 0.0f, normalize = 0.0f, post = 0.0f;
    float envInL = 0.0f, envInR = 0.0f, envOutL = 0.0f, envOutR = 0.0f;
};

struct LowFiState
{
    float levels = 1.0f, invLevels = 1.0f, cut = 0.0f, modWheelAmt = 0.0f, cutSmooth = 0.0f;
    float holdL = 0.0f, holdR = 0.0f;
    std::int32_t hold = 1; ///< samples that each one taken is held for
};

struct WaveshaperState
{
    float top = 0.0f, bottom = 0.0f, rect = 0.0f, low = 0.0f, modAmt = 0.0f;
    std::uint32_t phase = 0, inc = 0;
};

struct ClipperState
{
    float drive = 0.0f, upper = 0.0f, lower = 0.0f, post = 0.0f;
};

void ringModUpdate(RingModState& f, FxContext& c);
void ringModProcess(RingModState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num);
void distortUpdate(DistortState& f, FxContext& c);
void distortProcess(DistortState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num);
void multiDistortUpdate(MultiDistortState& f, FxContext& c);
void multiDistortProcess(MultiDistortState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                         float* wetRight, int num);
void lowFiUpdate(LowFiState& f, FxContext& c);
void lowFiProcess(LowFiState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                  float* wetRight, int num);
void waveshaperUpdate(WaveshaperState& f, FxContext& c);
void waveshaperProcess(WaveshaperState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                       float* wetRight, int num);
void clipperUpdate(ClipperState& f, FxContext& c);
void clipperProcess(ClipperState& f, FxContext& c, const float* x, const float* y, float* wetLeft,
                    float* wetRight, int num);
} // namespace quorel
