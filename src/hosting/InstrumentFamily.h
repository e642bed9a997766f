// SPDX-License-Identifier: GPL-3.0-or-later
// The family of instruments that layers host, and the conventions that each of them keeps. The starter
// instruments obey this table and the hosting side relies on it, so it needs the standard library alone.
#pragma once

#include <array>
#include <string_view>

namespace quorel
{

/** Number of hosted parameters that a layer's Easy controls drive. */
constexpr int numEasyTargets = 12;

/** Number of consecutive parameters in which an instrument spells the name of its current bank. */
constexpr int bankNameLength = 38;

/** What the family's conventions say of one instrument. */
struct InstrumentRow
{
    /** Name of the plug-in, of its file and of its folder. */
    const char* name;
    /** File ending of layouts, and stem of image names. */
    const char* shortName;
    /** Key of the per-user settings, below HKEY_CURRENT_USER where there is a registry, and its value that
        holds the instrument's bank folder. */
    const char* registryKey;
    const char* bankValue;
    /** Banks are folders; else they are ".fxb" files. */
    bool folderBanks;
    /** Programs are ".fxp" files of the bank, chosen by MIDI; else they are the plug-in's own list. */
    bool programsByMidi;
    /** Number of parameters, which also sizes the state of an instrument that doesn't report one. */
    int parametersPerProgram;
    /** First of the parameters that spell the name of the bank. */
    int firstBankNameParameter;
    /** Hosted parameter numbers of Easy 1 to 12. */
    std::array<int, numEasyTargets> easyMapping;
};

constexpr int numInstrumentRows = 16;

/** All rows in the order of scanning. Two names stand twice; the first of the two counts. */
// clang-format off
inline constexpr std::array<InstrumentRow, numInstrumentRows> instrumentTable{{
    {"Orlen", "orlen", "SOFTWARE\\KTMD\\Orlen", "BankDir", false, false, 1024, 950,
     {946, 947, 29, 30, 28, 18, 19, 20, 23, 4, 5, 8}},
    {"Tarn", "tarn", "SOFTWARE\\KTMD\\Tarn", "Bank", false, false, 2500, 1661,
     {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}},
    {"Tarn2", "tarn2", "SOFTWARE\\Ostrand\\Tarn2", "BankDir", false, false, 4000, 3940,
     {280, 310, 330, 350, 112, 113, 115, 108, 122, 123, 124, 100}},
    {"Hexley", "hexley", "SOFTWARE\\KTMD\\Hexley", "BankDir", false, false, 1024, 630,
     {61, 62, 78, 64, 69, 70, 71, 73, 91, 92, 93, 95}},
    {"Hexley2", "hexley2", "SOFTWARE\\Ostrand\\Hexley2", "BankFolderDir", true, true, 1024, 128,
     {92, 93, 94, 96, 59, 68, 65, 67, 89, 1001, 1002, 1013}},
    {"Hexley-Mini", "hexley", "SOFTWARE\\Ostrand\\Hexley-Mini", "BankDir", false, false, 1024, 630,
     {61, 62, 78, 64, 69, 70, 71, 73, 91, 92, 93, 95}},
    {"Dorvik", "dorvik", "SOFTWARE\\KTMD\\Dorvik", "BankDir", false, false, 10000, 9250,
     {67, 70, 72, 73, 75, 76, 74, 77, 78, 10, 11, 12}},
    {"Dorvik", "dorvik", "SOFTWARE\\KTMD\\Dorvik", "BankDir", false, false, 10000, 9250,
     {67, 70, 72, 73, 75, 76, 74, 77, 78, 10, 11, 12}},
    {"Dorvik-K", "dorvikk", "SOFTWARE\\Ostrand\\DorvikK", "BankDir", false, false, 4096, 3000,
     {96, 98, 100, 101, 102, 103, 4, 5, 6, 28, 29, 30}},
    {"Dorvik-K", "dorvikk", "SOFTWARE\\Ostrand\\DorvikK", "BankDir", false, false, 4096, 3000,
     {96, 98, 100, 101, 102, 103, 4, 5, 6, 28, 29, 30}},
    {"Zeph", "zeph", "SOFTWARE\\Ostrand\\Zeph", "BankDir", false, false, 1024, 765,
     {37, 38, 39, 694, 64, 65, 66, 709, 70, 71, 82, 83}},
    {"Imre", "imre", "SOFTWARE\\KTMD\\Imre", "BankDir", false, false, 1024, 700,
     {21, 22, 24, 29, 30, 31, 33, 28, 38, 5, 6, 63}},
    {"Glasson", "glsn", "SOFTWARE\\KTMD\\Glasson", "BankDir", false, false, 1024, 630,
     {41, 42, 55, 44, 49, 50, 51, 53, 48, 60, 64, 67}},
    {"Glasson2", "glsn2", "SOFTWARE\\Ostrand\\Glasson2", "BankFolderDir", true, true, 1024, 128,
     {30, 31, 45, 36, 37, 38, 39, 41, 42, 43, 48, 51}},
    {"Tarn-Mini", "tarn", "SOFTWARE\\KTMD\\Tarn-Mini", "Tarn_Banks", false, false, 2500, 1661,
     {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}},
    {"Fenn2", "fenn2", "SOFTWARE\\Ostrand\\Fenn2", "BankFolderDir", true, true, 1024, 128,
     {40, 41, 50, 16, 24, 25, 29, 36, 4, 5, 6, 8}},
}};

// clang-format on

/** First row with exactly this name, or null. Any thread. */
constexpr const InstrumentRow* findInFamily(std::string_view name) noexcept
{
    for (const auto& row : instrumentTable)
        if (name == row.name)
            return &row;
    return nullptr;
}

} // namespace quorel
