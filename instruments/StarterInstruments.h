// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "hosting/InstrumentFamily.h"

#include <array>
#include <cstdint>
#include <string>

namespace quorel
{

/** The sound engines. Each member of the family is one of them, with a voicing and programs of its own. */
enum class EngineKind
{
    analogue,
    fm,
    string,
    modal,
    organ,
    drums
};

/** Live parameters of every instrument: twelve on the family's Easy numbers and four more from 400. */
constexpr int numLiveParameters = 16;
constexpr int firstExtraParameter = 400;

/** Programs of an instrument that keeps them in a list; the others hold the one that plays. */
constexpr int programsPerList = 8;

/** One instrument of the family as it is built here: the family's conventions and a sound. */
struct StarterInstrument : InstrumentRow
{
    EngineKind engine;
    /** Index of one of the engine's fixed settings. */
    int voicing;
    /** Output trim: a note at velocity 100 peaks at about -15 dBFS. */
    float level;
};

constexpr int numStarterInstruments = 14;

const std::array<StarterInstrument, numStarterInstruments>& starterInstruments();

/** The entry of this name, or the first one: a renamed binary still plays. */
const StarterInstrument& instrumentFor(const std::string& name);

/** Live parameter behind a host parameter number, or -1. */
int liveParameterAt(const StarterInstrument& info, int hostIndex);

/** Host parameter number of a live parameter, 0..15. */
int hostParameterOf(const StarterInstrument& info, int live);

/** Four printable characters made from the name (FNV-1a hash), used as the VST2 unique id. */
std::int32_t uniqueIdOf(const std::string& name);

/** FNV-1a, 32 bits. */
std::uint32_t hashBytes(const void* data, std::size_t size);

} // namespace quorel
