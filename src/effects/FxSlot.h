// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/AmpEffects.h"
#include "effects/ChorusEffects.h"
#include "effects/CombFilter.h"
#include "effects/DelayEffects.h"
#include "effects/DistortionEffects.h"
#include "effects/Dynamics.h"
#include "effects/FilterCore.h"
#include "effects/FilterEffects.h"
#include "effects/FlangerEffects.h"
#include "effects/FxContext.h"
#include "effects/FxTypes.h"
#include "effects/HqReverb.h"
#include "effects/PhaserEffects.h"
#include "effects/ReverbUnit.h"
#include "effects/RhythmEffects.h"

#include <cstdint>

namespace quorel
{
/** Settings and state of every type; all of them go to rest when a type starts. */
struct FxStates
{
    DelayState delay;
    TapeDelayState tapeDelay;
    CombState comb;
    HqReverbState hqReverb;
    ChorusState chorus;
    ChorusDelayState chorusDelay;
    EnsembleState ensemble;
    FlangerState flanger;
    PhaserState phaser;
    RingModState ringMod;
    DistortState distort;
    MultiDistortState multiDistort;
    LowFiState lowFi;
    WaveshaperState waveshaper;
    ClipperState clipper;
    AmpState amp;
    CabinetState cabinet;
    WidenerState widener;
    SweepState autoPan, tremelo;
    KappelState kappel;
    CompressorState compressor;
    GateState noiseGate;
    FilterState filter;
    BassState bass;
    WahWahDelayState wahWahDelay;
    AutoWahState autoWah;
};

/** One effect block: the states of all types side by side, and memory for the lines of any.

    Making a slot takes that memory; nothing is allocated afterwards, whatever the type. The functions below
    run on the audio thread, except fxConstruct, and fxInit where the owner keeps audio away. The output
    doesn't depend on how a signal is cut into blocks: any mix of fxProcessSample and fxProcessBlock gives the
    same. */
struct FxSlot : FxContext, FxStates
{
    std::uint8_t active = 1; ///< kept for the owner: it bypasses nothing
    float wetScale = 0.0f, dryScale = 0.0f;
    float gainLeft = 1.0f, gainRight = 1.0f; ///< pan
    float wetLeft = 0.0f, wetRight = 0.0f;   ///< the effect's latest output
    float wetGainL = 0.0f, wetGainR = 0.0f, dryGainL = 0.0f, dryGainR = 0.0f;
    float outLevel = 1.0f;
    float mix = 0.5f;

    float paramCopy[fxParameterCount] = {}; ///< of the parameters; nothing reads it

    FilterCore filterCore;
    ReverbUnit reverb[3];
};

/** Joins a new slot's parts and puts them at rest; once, before anything else. */
void fxConstruct(FxSlot& slot, const FxPages& pages = heapPages);

/** Clears what the slot's type reads and puts all settings at rest; after a change of type (which the caller
    stores first) or rate, and on preset load. A rate that is no number above 0 is taken as 44100 Hz. */
void fxInit(FxSlot& slot, float sampleRate);

/** Takes over the parameters (0 to 1) and the tempo in beats a minute; once a block, before its samples. */
void fxUpdate(FxSlot& slot, const float p[fxParameterCount], float bpm);

/** Sets output level (-60 to +20 dB, 0 below 0.001), mix and pan, each a parameter of 0 to 1. */
void fxSetMix(FxSlot& slot, float volume, float mix, float pan);

/** One stereo sample. */
void fxProcessSample(FxSlot& slot, float inL, float inR, float* outL, float* outR);

/** A block in place. */
void fxProcessBlock(FxSlot& slot, float* left, float* right, int numSamples);
} // namespace quorel
