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

/** Does what row `id` of the menu says: default mapping, save, delete, or the mapping of a file. Saving and
    deleting ask the user first. Ids that are not in the menu do nothing. */
void chooseLayout(PluginProcessor& processor, int layer, int id);

} // namespace quorel
