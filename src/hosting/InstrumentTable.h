// SPDX-License-Identifier: GPL-3.0-or-later
// What is known of each instrument that a layer can host. Everything looks instruments up by the exact name.
#pragma once

#include "parameters/ParameterLayout.h"

#include <array>
#include <juce_core/juce_core.h>
#include <optional>

namespace quorel
{

constexpr int numInstrumentRows = 16;

/** One row of the table. */
struct InstrumentRow
{
    /** Name of the plug-in, of its file and of its folder. */
    const char* name;
    /** File ending of layouts, and stem of image names. */
    const char* shortName;
    /** Key under HKEY_CURRENT_USER, and its value that holds the instrument's bank folder. */
    const char* registryKey;
    const char* bankValue;
    /** Banks are folders; else they are ".fxb" files. */
    bool folderBanks;
    /** Programs are ".fxp" files of the bank, chosen by MIDI; else they are the plug-in's own program
        list. */
    bool programsByMidi;
    /** Sizes the state of an instrument that doesn't report one. */
    int parametersPerProgram;
    /** First of the parameters in which the instrument publishes the name of its bank. */
    int firstBankNameParameter;
    /** Hosted parameter numbers of Easy 1 to 12. */
    std::array<int, numEasyParameters> easyMapping;
};

/** All rows in the order of scanning. Two names stand twice; the first of the two counts. */
const std::array<InstrumentRow, numInstrumentRows>& instrumentTable() noexcept;

/** First row with exactly this name, or -1. Any thread. */
int rowOf(const juce::String& name);

/** The row of `rowOf`, or null. Any thread. */
const InstrumentRow* findInstrument(const juce::String& name);

/** Where an instrument's bank folder stands in the user's settings. */
struct BankFolderSetting
{
    juce::String key;
    juce::String valueName;
};

/** Setting of the bank folder for a plug-in name. Besides the rows it knows "DorvikMulti" and
    "Dorvik-KMulti". Empty for a name that it doesn't know. */
std::optional<BankFolderSetting> bankFolderSetting(const juce::String& name);

} // namespace quorel
