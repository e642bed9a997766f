// SPDX-License-Identifier: GPL-3.0-or-later
// Controller tables on disk: which parameter each of the 128 MIDI controllers moves, kept as
// `<ECS folder>/<name>.ecs`. Message thread.
#pragma once

#include "platform/MenuEntries.h"

namespace quorel
{

class PluginProcessor;

MenuEntries ecsMenu(PluginProcessor& processor);

/** Does what a row of the menu says: clear the table, save it, delete the file in use, or load a file. Saving
    and deleting ask the user first, who is told what can't be done. Rows that the menu doesn't have do
    nothing. */
void chooseEcs(PluginProcessor& processor, const MenuEntry& row);

} // namespace quorel
