// SPDX-License-Identifier: GPL-3.0-or-later
#include "ParameterSpecs.h"

#include <algorithm>
#include <cmath>

namespace quorel
{

// clang-format off
static const ParameterSpecs analogueSpecs {{
    { "Osc Mix", Scale::linear, 0.0f, 1.0f, "%" },
    { "Detune", Scale::linear, 0.0f, 50.0f, "cent" },
    { "Cutoff", Scale::exponential, 40.0f, 16000.0f, "Hz" },
    { "Resonance", Scale::linear, 0.0f, 1.0f, "%" },
    { "Filter Env", Scale::linear, 0.0f, 6.0f, "oct" },
    { "Attack", Scale::exponential, 0.001f, 4.0f, "s" },
    { "Decay", Scale::exponential, 0.02f, 10.0f, "s" },
    { "Sustain", Scale::linear, 0.0f, 1.0f, "%" },
    { "Release", Scale::exponential, 0.01f, 10.0f, "s" },
    { "Shape", Scale::linear, 0.0f, 1.0f, "%" },
    { "Sub", Scale::linear, 0.0f, 1.0f, "%" },
    { "Volume", Scale::linear, 0.0f, 1.0f, "%" },
    { "Filter Decay", Scale::exponential, 0.02f, 10.0f, "s" },
    { "Key Follow", Scale::linear, 0.0f, 1.0f, "%" },
    { "Vibrato", Scale::linear, 0.0f, 1.0f, "%" },
    { "Pulse Width", Scale::linear, 0.5f, 0.95f, "" },
}};

static const ParameterSpecs fmSpecs {{
    { "Ratio", Scale::halves, 0.5f, 14.0f, "" },
    { "Brightness", Scale::linear, 0.0f, 8.0f, "" },
    { "Mod Decay", Scale::exponential, 0.01f, 8.0f, "s" },
    { "Feedback", Scale::linear, 0.0f, 1.0f, "%" },
    { "Tine Level", Scale::linear, 0.0f, 1.0f, "%" },
    { "Attack", Scale::exponential, 0.001f, 4.0f, "s" },
    { "Decay", Scale::exponential, 0.05f, 20.0f, "s" },
    { "Sustain", Scale::linear, 0.0f, 1.0f, "%" },
    { "Release", Scale::exponential, 0.01f, 10.0f, "s" },
    { "Detune", Scale::linear, 0.0f, 20.0f, "cent" },
    { "Velocity", Scale::linear, 0.0f, 1.0f, "%" },
    { "Volume", Scale::linear, 0.0f, 1.0f, "%" },
    { "Tine Ratio", Scale::halves, 1.0f, 15.0f, "" },
    { "Tremolo", Scale::linear, 0.0f, 1.0f, "%" },
    { "Tremolo Rate", Scale::exponential, 0.2f, 12.0f, "Hz" },
    { "Mod Sustain", Scale::linear, 0.0f, 1.0f, "%" },
}};

static const ParameterSpecs stringSpecs {{
    { "Brightness", Scale::linear, 0.0f, 1.0f, "%" },
    { "Pluck Pos", Scale::linear, 0.05f, 0.5f, "" },
    { "Decay", Scale::exponential, 0.2f, 20.0f, "s" },
    { "Damping", Scale::linear, 0.0f, 1.0f, "%" },
    { "Body", Scale::linear, 0.0f, 1.0f, "%" },
    { "Softness", Scale::linear, 0.0f, 1.0f, "%" },
    { "Pick Noise", Scale::linear, 0.0f, 1.0f, "%" },
    { "Detune", Scale::linear, 0.0f, 15.0f, "cent" },
    { "Release", Scale::exponential, 0.03f, 10.0f, "s" },
    { "Width", Scale::linear, 0.0f, 1.0f, "%" },
    { "Velocity", Scale::linear, 0.0f, 1.0f, "%" },
    { "Volume", Scale::linear, 0.0f, 1.0f, "%" },
    { "Body Tone", Scale::exponential, 60.0f, 600.0f, "Hz" },
    { "Velocity Tone", Scale::linear, 0.0f, 1.0f, "%" },
    { "Vibrato", Scale::linear, 0.0f, 1.0f, "%" },
    { "Octave String", Scale::linear, 0.0f, 1.0f, "%" },
}};

static const ParameterSpecs modalSpecs {{
    { "Material", Scale::linear, 0.0f, 1.0f, "%" },
    { "Brightness", Scale::linear, 0.0f, 1.0f, "%" },
    { "Decay", Scale::exponential, 0.1f, 20.0f, "s" },
    { "Damping", Scale::linear, 0.0f, 1.0f, "%" },
    { "Hardness", Scale::linear, 0.0f, 1.0f, "%" },
    { "Attack", Scale::exponential, 0.001f, 4.0f, "s" },
    { "Bow", Scale::linear, 0.0f, 1.0f, "%" },
    { "Shimmer", Scale::linear, 0.0f, 12.0f, "cent" },
    { "Release", Scale::exponential, 0.03f, 10.0f, "s" },
    { "Tremolo", Scale::linear, 0.0f, 1.0f, "%" },
    { "Velocity", Scale::linear, 0.0f, 1.0f, "%" },
    { "Volume", Scale::linear, 0.0f, 1.0f, "%" },
    { "Hum", Scale::linear, 0.0f, 1.0f, "%" },
    { "Width", Scale::linear, 0.0f, 1.0f, "%" },
    { "Tremolo Rate", Scale::exponential, 0.2f, 12.0f, "Hz" },
    { "Strike Noise", Scale::linear, 0.0f, 1.0f, "%" },
}};

static const ParameterSpecs organSpecs {{
    { "Drawbar 16", Scale::linear, 0.0f, 8.0f, "" },
    { "Drawbar 5 1/3", Scale::linear, 0.0f, 8.0f, "" },
    { "Drawbar 8", Scale::linear, 0.0f, 8.0f, "" },
    { "Drawbar 4", Scale::linear, 0.0f, 8.0f, "" },
    { "Drawbar 2 2/3", Scale::linear, 0.0f, 8.0f, "" },
    { "Drawbar 2", Scale::linear, 0.0f, 8.0f, "" },
    { "Drawbar 1 3/5", Scale::linear, 0.0f, 8.0f, "" },
    { "Drawbar 1 1/3", Scale::linear, 0.0f, 8.0f, "" },
    { "Drawbar 1", Scale::linear, 0.0f, 8.0f, "" },
    { "Rotor Rate", Scale::exponential, 0.5f, 8.0f, "Hz" },
    { "Percussion", Scale::linear, 0.0f, 1.0f, "%" },
    { "Volume", Scale::linear, 0.0f, 1.0f, "%" },
    { "Rotor Depth", Scale::linear, 0.0f, 1.0f, "%" },
    { "Key Click", Scale::linear, 0.0f, 1.0f, "%" },
    { "Attack", Scale::exponential, 0.002f, 2.0f, "s" },
    { "Release", Scale::exponential, 0.01f, 5.0f, "s" },
}};

static const ParameterSpecs drumSpecs {{
    { "Kick Tune", Scale::exponential, 30.0f, 90.0f, "Hz" },
    { "Kick Decay", Scale::exponential, 0.1f, 2.0f, "s" },
    { "Kick Punch", Scale::linear, 0.0f, 1.0f, "%" },
    { "Snare Tune", Scale::exponential, 120.0f, 360.0f, "Hz" },
    { "Snare Snap", Scale::linear, 0.0f, 1.0f, "%" },
    { "Snare Decay", Scale::exponential, 0.05f, 0.8f, "s" },
    { "Hat Tone", Scale::exponential, 3000.0f, 12000.0f, "Hz" },
    { "Hat Decay", Scale::exponential, 0.02f, 0.3f, "s" },
    { "Tom Tune", Scale::exponential, 60.0f, 240.0f, "Hz" },
    { "Tom Decay", Scale::exponential, 0.1f, 1.5f, "s" },
    { "Clap Decay", Scale::exponential, 0.05f, 0.8f, "s" },
    { "Volume", Scale::linear, 0.0f, 1.0f, "%" },
    { "Drive", Scale::linear, 0.0f, 1.0f, "%" },
    { "Velocity", Scale::linear, 0.0f, 1.0f, "%" },
    { "Bell Tune", Scale::exponential, 300.0f, 1200.0f, "Hz" },
    { "Width", Scale::linear, 0.0f, 1.0f, "%" },
}};

// clang-format on

const ParameterSpecs& parameterSpecs(EngineKind engine)
{
    switch (engine)
    {
    case EngineKind::fm:
        return fmSpecs;
    case EngineKind::string:
        return stringSpecs;
    case EngineKind::modal:
        return modalSpecs;
    case EngineKind::organ:
        return organSpecs;
    case EngineKind::drums:
        return drumSpecs;
    case EngineKind::analogue:
        break;
    }
    return analogueSpecs;
}

int tremoloRateParameter(EngineKind engine)
{
    switch (engine)
    {
    case EngineKind::fm:
        return fm::tremoloRate;
    case EngineKind::modal:
        return modal::tremoloRate;
    case EngineKind::organ:
        return organ::rotorRate;
    default:
        return -1;
    }
}

int vibratoParameter(EngineKind engine)
{
    if (engine == EngineKind::analogue)
        return analogue::vibrato;
    return engine == EngineKind::string ? static_cast<int>(pluck::vibrato) : -1;
}

float physicalValue(const ParameterSpec& spec, float normalised)
{
    switch (spec.scale)
    {
    case Scale::exponential:
        return spec.low * std::pow(spec.high / spec.low, normalised);
    case Scale::halves:
        return std::round(2.0f * (spec.low + (spec.high - spec.low) * normalised)) * 0.5f;
    case Scale::linear:
        break;
    }
    return spec.low + (spec.high - spec.low) * normalised;
}

std::string parameterText(const ParameterSpec& spec, float normalised)
{
    auto value = physicalValue(spec, std::clamp(normalised, 0.0f, 1.0f));
    int decimals = value < 1.0f ? 3 : (value < 10.0f ? 2 : (value < 100.0f ? 1 : 0));
    if (spec.unit[0] == '%')
    {
        value *= 100.0f;
        decimals = 0;
    }
    int factor = 1;
    for (int i = 0; i < decimals; ++i)
        factor *= 10;
    const auto scaled = static_cast<int>(std::lround(value * static_cast<float>(factor)));
    auto text = std::to_string(scaled / factor);
    if (decimals > 0)
    {
        const auto fraction = std::to_string(scaled % factor);
        text += '.' + std::string(static_cast<std::size_t>(decimals) - fraction.size(), '0') + fraction;
    }
    return text;
}

} // namespace quorel
