// SPDX-License-Identifier: GPL-3.0-or-later
// Looks instruments up in the family's table, always by their exact names.
#pragma once

#include "hosting/InstrumentFamily.h"

#include <juce_core/juce_core.h>
#include <optional>

namespace quorel
{

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

/** Setting of the bank folder for a plug-in name. Besides the rows' names it knows "DorvikMulti" and
    "Dorvik-KMulti". None for any other name. */
std::optional<BankFolderSetting> bankFolderSetting(const juce::String& name);

} // namespace quorel
