// SPDX-License-Identifier: GPL-3.0-or-later
#include "InstrumentTable.h"

#include <algorithm>

namespace quorel
{

// clang-format off
static const std::array<InstrumentInfo, numInstruments> table {{
    { "Orlen", "SOFTWARE\\KTMD\\Orlen", "BankDir", false, 1024, 950,
      { 946, 947, 29, 30, 28, 18, 19, 20, 23, 4, 5, 8 }, EngineKind::analogue, 0, 0.19f },
    { "Tarn", "SOFTWARE\\KTMD\\Tarn", "Bank", false, 2500, 1661,
      { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12 }, EngineKind::analogue, 1, 0.23f },
    { "Tarn2", "SOFTWARE\\Ostrand\\Tarn2", "BankDir", false, 4000, 3940,
      { 280, 310, 330, 350, 112, 113, 115, 108, 122, 123, 124, 100 }, EngineKind::analogue, 2, 0.15f },
    { "Hexley", "SOFTWARE\\KTMD\\Hexley", "BankDir", false, 1024, 630,
      { 61, 62, 78, 64, 69, 70, 71, 73, 91, 92, 93, 95 }, EngineKind::fm, 0, 0.17f },
    { "Hexley2", "SOFTWARE\\Ostrand\\Hexley2", "BankFolderDir", true, 1024, 128,
      { 92, 93, 94, 96, 59, 68, 65, 67, 89, 1001, 1002, 1013 }, EngineKind::fm, 1, 0.14f },
    { "Hexley-Mini", "SOFTWARE\\Ostrand\\Hexley-Mini", "BankDir", false, 1024, 630,
      { 61, 62, 78, 64, 69, 70, 71, 73, 91, 92, 93, 95 }, EngineKind::fm, 2, 0.16f },
    { "Dorvik", "SOFTWARE\\KTMD\\Dorvik", "BankDir", false, 10000, 9250,
      { 67, 70, 72, 73, 75, 76, 74, 77, 78, 10, 11, 12 }, EngineKind::drums, 0, 0.24f },
    { "Dorvik-K", "SOFTWARE\\Ostrand\\DorvikK", "BankDir", false, 4096, 3000,
      { 96, 98, 100, 101, 102, 103, 4, 5, 6, 28, 29, 30 }, EngineKind::drums, 1, 0.24f },
    { "Zeph", "SOFTWARE\\Ostrand\\Zeph", "BankDir", false, 1024, 765,
      { 37, 38, 39, 694, 64, 65, 66, 709, 70, 71, 82, 83 }, EngineKind::analogue, 4, 0.16f },
    { "Imre", "SOFTWARE\\KTMD\\Imre", "BankDir", false, 1024, 700,
      { 21, 22, 24, 29, 30, 31, 33, 28, 38, 5, 6, 63 }, EngineKind::string, 0, 0.20f },
    { "Glasson", "SOFTWARE\\KTMD\\Glasson", "BankDir", false, 1024, 630,
      { 41, 42, 55, 44, 49, 50, 51, 53, 48, 60, 64, 67 }, EngineKind::modal, 0, 0.18f },
    { "Glasson2", "SOFTWARE\\Ostrand\\Glasson2", "BankFolderDir", true, 1024, 128,
      { 30, 31, 45, 36, 37, 38, 39, 41, 42, 43, 48, 51 }, EngineKind::modal, 1, 0.17f },
    { "Tarn-Mini", "SOFTWARE\\KTMD\\Tarn-Mini", "Tarn_Banks", false, 2500, 1661,
      { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12 }, EngineKind::analogue, 3, 0.19f },
    { "Fenn2", "SOFTWARE\\Ostrand\\Fenn2", "BankFolderDir", true, 1024, 128,
      { 40, 41, 50, 16, 24, 25, 29, 36, 4, 5, 6, 8 }, EngineKind::organ, 0, 0.15f },
}};

// clang-format on

const std::array<InstrumentInfo, numInstruments>& instrumentTable()
{
    return table;
}

const InstrumentInfo& instrumentFor(const std::string& name)
{
    const auto found = std::find_if(table.begin(), table.end(),
                                    [&](const InstrumentInfo& info) { return name == info.name; });
    return found != table.end() ? *found : table.front();
}

int liveParameterAt(const InstrumentInfo& info, int hostIndex)
{
    for (int live = 0; live < numLiveParameters; ++live)
    {
        if (hostParameterOf(info, live) == hostIndex)
            return live;
    }
    return -1;
}

int hostParameterOf(const InstrumentInfo& info, int live)
{
    return live < numEasyParameters ? info.easy[static_cast<std::size_t>(live)]
                                    : firstExtraParameter + live - numEasyParameters;
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
