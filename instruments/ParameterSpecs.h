// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "StarterInstruments.h"

#include <array>
#include <string>

namespace quorel
{

/** How a host value of 0..1 becomes a physical one. */
enum class Scale
{
    linear,
    exponential,
    halves ///< linear, rounded to the nearest half: frequency ratios
};

struct ParameterSpec
{
    const char* name; ///< at most 15 characters
    Scale scale;
    float low, high;
    const char* unit; ///< "%" shows a 0..1 value as 0..100
};

using ParameterSpecs = std::array<ParameterSpec, numLiveParameters>;

/** The sixteen live parameters of an engine. Number 11 is always the volume, with unity gain at 0.8. */
const ParameterSpecs& parameterSpecs(EngineKind engine);

constexpr int volumeParameter = 11;

/** Parameter that sets the rate in Hz of the engine's tremolo, or -1. */
int tremoloRateParameter(EngineKind engine);

/** Parameter whose vibrato is added to that of the modulation wheel, or -1. */
int vibratoParameter(EngineKind engine);

float physicalValue(const ParameterSpec& spec, float normalised);

/** The physical value in at most 7 characters, with a decimal point whatever the locale. */
std::string parameterText(const ParameterSpec& spec, float normalised);

// Indices into Controls::value, one list for each engine.
namespace analogue
{
enum
{
    oscMix,
    detune,
    cutoff,
    resonance,
    filterEnv,
    attack,
    decay,
    sustain,
    release,
    shape,
    sub,
    volume,
    filterDecay,
    keyFollow,
    vibrato,
    pulseWidth
};
}

namespace fm
{
enum
{
    ratio,
    brightness,
    modDecay,
    feedback,
    tine,
    attack,
    decay,
    sustain,
    release,
    detune,
    velocity,
    volume,
    tineRatio,
    tremolo,
    tremoloRate,
    modSustain
};
}

namespace pluck
{
enum
{
    brightness,
    position,
    decay,
    damping,
    body,
    softness,
    pickNoise,
    detune,
    release,
    width,
    velocity,
    volume,
    bodyTone,
    velocityTone,
    vibrato,
    octave
};
}

namespace modal
{
enum
{
    material,
    brightness,
    decay,
    damping,
    hardness,
    attack,
    bow,
    shimmer,
    release,
    tremolo,
    velocity,
    volume,
    octave,
    width,
    tremoloRate,
    noise
};
}

namespace organ
{
enum
{
    firstDrawbar,
    rotorRate = 9,
    percussion,
    volume,
    rotorDepth,
    keyClick,
    attack,
    release
};
}

namespace drums
{
enum
{
    kickTune,
    kickDecay,
    kickPunch,
    snareTune,
    snareSnap,
    snareDecay,
    hatTone,
    hatDecay,
    tomTune,
    tomDecay,
    clapDecay,
    volume,
    drive,
    velocity,
    bellTune,
    width
};
}

} // namespace quorel
