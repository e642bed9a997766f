// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/FxMemory.h"
#include "effects/FxTypes.h"
#include "effects/Lfo.h"
#include "effects/StateVariableFilter.h"
#include "effects/TapeLine.h"
#include "effects/ToneFilter.h"

#include <cstdint>

namespace quorel
{
/** What a slot's types have in common: clock, parameters, and the filters, tape and lines that several of
    them use. A family's functions take this beside the state of their own type. */
struct FxContext
{
    float sampleRate = 44100.0f;
    float bpm = 120.0f;
    float samplesPerWhole = 88200.0f; ///< length of a whole note, in samples
    float invSampleRate = 1.0f / 44100.0f;
    std::int32_t silenceCount = 0;     ///< samples since input or output were last heard
    std::int32_t type = 0;             ///< index into fxTypes
    std::uint32_t sampleCount = 0;     ///< control rate and ring position; never reset
    std::uint32_t writeCount = 0;      ///< write position of the delay lines; never reset, always below 2^31
    float modWheel = 0.0f;             ///< an input that nothing drives
    std::int32_t transportPlaying = 0; ///< likewise
    float songPosition = 0.0f;         ///< likewise, in quarter notes

    float param[fxParameterCount] = {}; ///< 0 to 1

    ToneFilter tone;
    SvfBanks svf;
    TapeLine tape;
    const SineTables* sines = nullptr;
    FxMemory memory;
};
} // namespace quorel
