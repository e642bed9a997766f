// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/FxTypeDefaults.h"

namespace quorel
{
namespace
{
constexpr FxTypeDefaults monoDelay{{0.54f, 1.0f, 0.6f, 0.92f, 0.19f}};
constexpr FxTypeDefaults stereoDelay{{0.67f, 0.57f, 1.0f, 0.69f, 0.5f, 1.0f, 0.91f, 0.19f}};
constexpr FxTypeDefaults chorus{{0.481f, 0.44f, 0.42f, 1.0f, 0.36f, 0.0f, 0.98f}};
constexpr FxTypeDefaults flanger{{0.15f, 1.0f, 0.43f, 1.0f, 0.91f, 0.0f, 0.92f, 0.19f}};
constexpr FxTypeDefaults phaser{{0.5f, 0.53f, 0.57f, 0.85f, 0.44f, 1.0f, 0.91f, 0.68f}};
constexpr FxTypeDefaults panner{{0.0f, 1.0f, 0.0f, 0.48f, 1.0f}};

constexpr std::array<FxTypeDefaults, fxTypeCount> defaults{{
    {}, // None
    monoDelay,
    stereoDelay,
    monoDelay,                                          // Mono Tape Delay
    stereoDelay,                                        // Stereo Tape Delay
    {{0.1f, 0.75f, 0.0f, 0.0f, 0.75f, 0.5f}},           // Comb Filter
    {{0.69f, 0.79f, 0.75f, 0.09f, 0.0f, 0.97f, 0.06f}}, // HQ Reverb
    chorus,
    chorus,                                                    // Tape Chorus
    {{0.41f, 0.34f, 0.65f, 1.0f, 0.35f, 0.56f, 0.36f}},        // Chorus / Delay
    {{0.49f, 0.36f, 0.685f, 1.0f, 0.34f, 0.855f, 1.0f, 1.0f}}, // Ensemble
    flanger,
    flanger, // Tape Flanger
    phaser,
    phaser,                                                   // Ana. Phaser
    {{0.0f, 0.5f, 1.0f}},                                     // Ring-Mod
    {{0.88f, 0.72f, 0.57f, 0.46f, 0.81f, 0.28f, 0.5f}},       // Distort
    {{0.0f, 0.5f, 0.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0.5f}},       // Multi Distort
    {{0.52f, 0.95f, 1.0f, 0.45f}},                            // Low Fi
    {{0.0f, 0.0f, 0.0f, 1.0f}},                               // Waveshaper
    {{0.5f, 0.28f, 0.2f, 0.5f, 1.0f, 0.0f, 0.5f}},            // Clipper
    {{1.0f, 0.0f, 0.5f, 0.5f, 0.5f}},                         // Amp Sim
    {{0.0f, 0.0f, 0.5f, 0.5f, 0.5f}},                         // Cabinet
    {{1.0f, 0.24f, 0.31f, 0.92f, 0.19f}},                     // Widener
    panner,                                                   // AutoPan
    panner,                                                   // Tremelo
    {{0.46f, 0.7f}},                                          // Kappel
    {{0.5f, 0.29f, 0.2f, 0.2f, 0.5f}},                        // Compressor
    {},                                                       // Noise-Gate
    {{0.0f, 0.0f, 0.5f, 0.0f, 0.0f, 0.0f, 0.5f, 0.5f, 1.0f}}, // Filter
    {{0.75f, 0.5f, 0.0f, 0.5f}},                              // Bass
    {{0.0f, 1.0f, 0.0f, 0.0f, 0.48f, 1.0f, 0.5f}},            // WahWah Delay
    {{0.0f, 0.25f, 1.0f, 0.5f, 0.2f, 0.25f}},                 // AutoWah
}};

/** Bit j stands for parameter j. */
constexpr unsigned int bipolarParameters(int type)
{
    switch (type)
    {
    case 1:
    case 3:
    case 19:
        return 1u << 2;
    case 2:
    case 4:
        return 1u << 3 | 1u << 4;
    case 5:
        return 1u << 1 | 1u << 5;
    case 11:
    case 12:
        return 1u << 4;
    case 16:
        return 1u << 1 | 1u << 6;
    case 18:
    case 20:
        return 1u << 3;
    case 29:
        return 1u << 9;
    default:
        return 0;
    }
}
} // namespace

const FxTypeDefaults& fxTypeDefaults(int type)
{
    return defaults[static_cast<std::size_t>(type)];
}

bool isBipolarFxParameter(int type, int j)
{
    return (bipolarParameters(type) >> j & 1u) != 0;
}

} // namespace quorel
