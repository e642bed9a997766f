// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace quorel
{
struct FxSlot;

/** Fields of "Ring-Mod", "Distort", "Multi Distort", "Low Fi", "Waveshaper" and "Clipper". */
struct DistortionFields
{
    std::int32_t ringType = 0;
    float ringAmount = 0.0f, ringInc = 0.0f, ringPhase = 0.0f;

    float distSat = 0.0f, distRect = 0.0f, distLimit = 0.0f, distPost = 0.0f, distTone = 0.0f;
    float distModWheelAmt = 0.0f, distEmp = 0.0f;

    std::int32_t mdType = 0;
    float mdPre = 0.0f, mdAmount1 = 0.0f, mdAmount2 = 0.0f, mdNormalize = 0.0f, mdPost = 0.0f;
    float mdEnvInL = 0.0f, mdEnvInR = 0.0f, mdEnvOutL = 0.0f, mdEnvOutR = 0.0f;

    float lofiLevels = 1.0f, lofiInvLevels = 1.0f, lofiCut = 0.0f, lofiModWheelAmt = 0.0f,
          lofiCutSmooth = 0.0f;
    float lofiHoldL = 0.0f, lofiHoldR = 0.0f;
    std::int32_t lofiHold = 1;

    float wsTop = 0.0f, wsBottom = 0.0f, wsRect = 0.0f, wsLow = 0.0f, wsModAmt = 0.0f;
    std::uint32_t wsPhase = 0, wsInc = 0;

    float clipDrive = 0.0f, clipUpper = 0.0f, clipLower = 0.0f, clipPost = 0.0f;
};

void ringModUpdate(FxSlot& slot);
void ringModProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num);
void distortUpdate(FxSlot& slot);
void distortProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num);
void multiDistortUpdate(FxSlot& slot);
void multiDistortProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight,
                         int num);
void lowFiUpdate(FxSlot& slot);
void lowFiProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num);
void waveshaperUpdate(FxSlot& slot);
void waveshaperProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight,
                       int num);
void clipperUpdate(FxSlot& slot);
void clipperProcess(FxSlot& slot, const float* x, const float* y, float* wetLeft, float* wetRight, int num);
} // namespace quorel
