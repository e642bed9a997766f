// SPDX-License-Identifier: GPL-3.0-or-later
#include "hosting/InstrumentTable.h"

namespace quorel
{

namespace
{
using EasyMapping = std::array<int, numEasyParameters>;

constexpr EasyMapping orlenEasy{946, 947, 29, 30, 28, 18, 19, 20, 23, 4, 5, 8};
constexpr EasyMapping tarnEasy{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
constexpr EasyMapping tarn2Easy{280, 310, 330, 350, 112, 113, 115, 108, 122, 123, 124, 100};
constexpr EasyMapping hexleyEasy{61, 62, 78, 64, 69, 70, 71, 73, 91, 92, 93, 95};
constexpr EasyMapping hexley2Easy{92, 93, 94, 96, 59, 68, 65, 67, 89, 1001, 1002, 1013};
constexpr EasyMapping dorvikEasy{67, 70, 72, 73, 75, 76, 74, 77, 78, 10, 11, 12};
constexpr EasyMapping dorvikKEasy{96, 98, 100, 101, 102, 103, 4, 5, 6, 28, 29, 30};
constexpr EasyMapping zephEasy{37, 38, 39, 694, 64, 65, 66, 709, 70, 71, 82, 83};
constexpr EasyMapping imreEasy{21, 22, 24, 29, 30, 31, 33, 28, 38, 5, 6, 63};
constexpr EasyMapping glassonEasy{41, 42, 55, 44, 49, 50, 51, 53, 48, 60, 64, 67};
constexpr EasyMapping glasson2Easy{30, 31, 45, 36, 37, 38, 39, 41, 42, 43, 48, 51};
constexpr EasyMapping fenn2Easy{40, 41, 50, 16, 24, 25, 29, 36, 4, 5, 6, 8};

constexpr const char* dorvikKey = "SOFTWARE\\KTMD\\Dorvik";
constexpr const char* dorvikKKey = "SOFTWARE\\Ostrand\\DorvikK";
constexpr const char* bankDir = "BankDir";
constexpr const char* bankFolderDir = "BankFolderDir";

// clang-format off
constexpr std::array<InstrumentRow, numInstrumentRows> table{{
    {"Orlen", "orlen", "SOFTWARE\\KTMD\\Orlen", bankDir, false, false, 1024, 950, orlenEasy},
    {"Tarn", "tarn", "SOFTWARE\\KTMD\\Tarn", "Bank", false, false, 2500, 1661, tarnEasy},
    {"Tarn2", "tarn2", "SOFTWARE\\Ostrand\\Tarn2", bankDir, false, false, 4000, 3940, tarn2Easy},
    {"Hexley", "hexley", "SOFTWARE\\KTMD\\Hexley", bankDir, false, false, 1024, 630, hexleyEasy},
    {"Hexley2", "hexley2", "SOFTWARE\\Ostrand\\Hexley2", bankFolderDir, true, true, 1024, 128, hexley2Easy},
    {"Hexley-Mini", "hexley", "SOFTWARE\\Ostrand\\Hexley-Mini", bankDir, false, false, 1024, 630, hexleyEasy},
    {"Dorvik", "dorvik", dorvikKey, bankDir, false, false, 10000, 9250, dorvikEasy},
    {"Dorvik", "dorvik", dorvikKey, bankDir, false, false, 10000, 9250, dorvikEasy},
    {"Dorvik-K", "dorvikk", dorvikKKey, bankDir, false, false, 4096, 3000, dorvikKEasy},
    {"Dorvik-K", "dorvikk", dorvikKKey, bankDir, false, false, 4096, 3000, dorvikKEasy},
    {"Zeph", "zeph", "SOFTWARE\\Ostrand\\Zeph", bankDir, false, false, 1024, 765, zephEasy},
    {"Imre", "imre", "SOFTWARE\\KTMD\\Imre", bankDir, false, false, 1024, 700, imreEasy},
    {"Glasson", "glsn", "SOFTWARE\\KTMD\\Glasson", bankDir, false, false, 1024, 630, glassonEasy},
    {"Glasson2", "glsn2", "SOFTWARE\\Ostrand\\Glasson2", bankFolderDir, true, true, 1024, 128, glasson2Easy},
    {"Tarn-Mini", "tarn", "SOFTWARE\\KTMD\\Tarn-Mini", "Tarn_Banks", false, false, 2500, 1661, tarnEasy},
    {"Fenn2", "fenn2", "SOFTWARE\\Ostrand\\Fenn2", bankFolderDir, true, true, 1024, 128, fenn2Easy},
}};
// clang-format on
} // namespace

const std::array<InstrumentRow, numInstrumentRows>& instrumentTable() noexcept
{
    return table;
}

int rowOf(const juce::String& name)
{
    for (std::size_t row = 0; row < table.size(); ++row)
        if (name == table[row].name)
            return static_cast<int>(row);
    return -1;
}

const InstrumentRow* findInstrument(const juce::String& name)
{
    const int row = rowOf(name);
    return row < 0 ? nullptr : &table[static_cast<std::size_t>(row)];
}

std::optional<BankFolderSetting> bankFolderSetting(const juce::String& name)
{
    if (const auto* row = findInstrument(name))
        return BankFolderSetting{row->registryKey, row->bankValue};
    if (name == "DorvikMulti")
        return BankFolderSetting{dorvikKey, bankDir};
    if (name == "Dorvik-KMulti")
        return BankFolderSetting{dorvikKKey, bankDir};
    return {};
}

} // namespace quorel
