// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace quorel
{

/** The sound engines; each family member is one engine with a voicing and programs of its own. */
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
constexpr int numEasyParameters = 12;
constexpr int firstExtraParameter = 400;

/** Number of read-only parameters that spell the name of the current bank. */
constexpr int bankNameLength = 38;

/** Programs of an instrument that keeps them in a list; the others hold the one that plays. */
constexpr int programsPerList = 8;

/** What the family's conventions say about one name. */
struct InstrumentInfo
{
    const char* name;
    const char* settingsKey;   ///< key of the per-user settings, under HKEY_CURRENT_USER on Windows
    const char* settingsValue; ///< value that holds the bank folder
    bool programFiles;         ///< banks are folders of .fxp files reached by MIDI, else .fxb files
    int numParameters;
    int firstBankNameParameter;
    std::array<int, numEasyParameters> easy; ///< host parameter numbers of live parameters 0..11
    EngineKind engine;
    int voicing; ///< which of the engine's fixed settings
    float level; ///< output trim: a note at velocity 100 peaks at about -15 dBFS
};

constexpr int numInstruments = 14;

const std::array<InstrumentInfo, numInstruments>& instrumentTable();

/** The entry of this name, or the first one: a renamed binary still plays. */
const InstrumentInfo& instrumentFor(const std::string& name);

/** Live parameter behind a host parameter number, or -1. */
int liveParameterAt(const InstrumentInfo& info, int hostIndex);

/** Host parameter number of a live parameter, 0..15. */
int hostParameterOf(const InstrumentInfo& info, int live);

/** Four printable characters made from the name (FNV-1a hash), used as the VST2 unique id. */
std::int32_t uniqueIdOf(const std::string& name);

/** FNV-1a, 32 bits. */
std::uint32_t hashBytes(const void* data, std::size_t size);

} // namespace quorel
