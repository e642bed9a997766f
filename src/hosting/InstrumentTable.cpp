// SPDX-License-Identifier: GPL-3.0-or-later
#include "hosting/InstrumentTable.h"

#include "parameters/ParameterLayout.h"

namespace quorel
{

static_assert(numEasyTargets == numEasyParameters);

int rowOf(const juce::String& name)
{
    const auto* row = findInstrument(name);
    return row == nullptr ? -1 : static_cast<int>(row - instrumentTable.data());
}

const InstrumentRow* findInstrument(const juce::String& name)
{
    return findInFamily(name.toRawUTF8());
}

std::optional<BankFolderSetting> bankFolderSetting(const juce::String& name)
{
    // The multi-output kits read the banks of their stereo siblings, but have no row of their own.
    const auto sibling = name == "DorvikMulti" || name == "Dorvik-KMulti" ? name.dropLastCharacters(5) : name;
    if (const auto* row = findInstrument(sibling))
        return BankFolderSetting{row->registryKey, row->bankValue};
    return {};
}

} // namespace quorel
