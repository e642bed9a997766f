// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quorel
{
/** Added to filter and feedback states, so that silence never turns them into denormal numbers. */
inline constexpr float fxTiny = 1e-15f;

/** The same inside the reverb's combs and all-passes. */
inline constexpr float reverbTiny = 1e-10f;

inline constexpr int fxLineLength = 262144;   ///< delay lines, samples a channel
inline constexpr int fxModLineLength = 16384; ///< chorus, flanger and ensemble lines, samples a channel
inline constexpr int fxAuxRingLength = 65536; ///< the mono ring of phasers, widener and reverb
inline constexpr int fxSineLength = 65536;    ///< the LFO's sine tables
inline constexpr int combLength = 8192;       ///< each buffer of the two comb effects

/** Longest run of samples that an effect processes at a time. */
inline constexpr int fxChunk = 64;

/** Largest value kept in a line whose feedback could otherwise grow without end: 40 dB over full scale. */
inline constexpr float fxLineLimit = 100.0f;

/** A sample past this (60 dB over full scale), or not a number at all, is no sound and is read as silence. */
inline constexpr float fxSignalLimit = 1000.0f;
} // namespace quorel
