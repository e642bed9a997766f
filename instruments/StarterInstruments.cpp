// SPDX-License-Identifier: GPL-3.0-or-later
#include "StarterInstruments.h"

#include <algorithm>

namespace quorel
{

namespace
{

/** Fails to compile for a name that isn't in the family's table. */
constexpr StarterInstrument starter(std::string_view name, EngineKind engine, int voicing, float level)
{
    return {*findInFamily(name), engine, voicing, level};
}

constexpr std::array<StarterInstrument, numStarterInstruments> starters{{
    starter("Orlen", EngineKind::analogue, 0, 0.19f),
    starter("Tarn", EngineKind::analogue, 1, 0.23f),
    starter("Tarn2", EngineKind::analogue, 2, 0.15f),
    starter("Hexley", EngineKind::fm, 0, 0.17f),
    starter("Hexley2", EngineKind::fm, 1, 0.14f),
    starter("Hexley-Mini", EngineKind::fm, 2, 0.16f),
    starter("Dorvik", EngineKind::drums, 0, 0.24f),
    starter("Dorvik-K", EngineKind::drums, 1, 0.24f),
    starter("Zeph", EngineKind::analogue, 4, 0.16f),
    starter("Imre", EngineKind::string, 0, 0.20f),
    starter("Glasson", EngineKind::modal, 0, 0.18f),
    starter("Glasson2", EngineKind::modal, 1, 0.17f),
    starter("Tarn-Mini", EngineKind::analogue, 3, 0.19f),
    starter("Fenn2", EngineKind::organ, 0, 0.15f),
}};

} // namespace

const std::array<StarterInstrument, numStarterInstruments>& starterInstruments()
{
    return starters;
}

const StarterInstrument& instrumentFor(const std::string& name)
{
    const auto found = std::find_if(starters.begin(), starters.end(),
                                    [&](const StarterInstrument& info) { return name == info.name; });
    return found != starters.end() ? *found : starters.front();
}

int liveParameterAt(const StarterInstrument& info, int hostIndex)
{
    for (int live = 0; live < numLiveParameters; ++live)
    {
        if (hostParameterOf(info, live) == hostIndex)
            return live;
    }
    return -1;
}

int hostParameterOf(const StarterInstrument& info, int live)
{
    return live < numEasyTargets ? info.easyMapping[static_cast<std::size_t>(live)]
                                 : firstExtraParameter + live - numEasyTargets;
}

std::uint32_t hashBytes(const void* data, std::size_t size)
{
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    std::uint32_t hash = 2166136261u;
    for (std::size_t i = 0; i < size; ++i)
        hash = (hash ^ bytes[i]) * 16777619u;
    return hash;
}

std::int32_t uniqueIdOf(const std::string& name)
{
    static constexpr char letters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    auto hash = hashBytes(name.data(), name.size());
    std::uint32_t id = 0;
    for (int i = 0; i < 4; ++i)
    {
        id = (id << 8) | static_cast<std::uint32_t>(letters[hash % 52u]);
        hash /= 52u;
    }
    return static_cast<std::int32_t>(id);
}

} // namespace quorel
