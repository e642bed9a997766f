// SPDX-License-Identifier: GPL-3.0-or-later
// Layouts: which twelve parameters of its instrument a layer's Easy controls move, kept as
// `<layouts folder>/<name>.<short name of the instrument>`. Message thread.
#pragma once

#include "platform/MenuEntries.h"

namespace quorel
{

class PluginProcessor;

/** The layout menu of layer 0 to 3. None for a layer without an instrument. */
MenuEntries layoutMenu(PluginProcessor& processor, int layer);

/** Does what a row of the menu says: default mapping, save, delete, or the mapping of a file. Saving and
    deleting ask the user first, who is told what can't be done. Rows that the menu doesn't have do
    nothing. */
void chooseLayout(PluginProcessor& processor, int layer, const MenuEntry& row);

} // namespace quorel
