// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "hosting/InstrumentTable.h"
#include "hosting/VirtualInstrument.h"

namespace quorel
{

/** The programs of a layer's menu, in its order; `chooseProgram` counts them from 1. Message thread. */
inline juce::StringArray programsOf(VirtualInstrument& layer)
{
    const auto* row = findInstrument(layer.getPluginName());
    if (row != nullptr && row->programsByMidi)
    {
        layer.readProgramNames(layer.getBankName());
        return layer.getProgramNames();
    }
    juce::StringArray names;
    const InstanceAccess::Use plugin(layer.instanceAccess());
    for (int program = 0; plugin && program < plugin->getNumPrograms(); ++program)
        names.add(plugin->getProgramName(program));
    return names;
}

} // namespace quorel
