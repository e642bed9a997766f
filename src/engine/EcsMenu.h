// SPDX-License-Identifier: GPL-3.0-or-later
// Controller tables on disk: which parameter each of the 128 MIDI controllers moves, kept as
// `<ECS folder>/<name>.ecs`. Message thread.
#pragma once

#include "platform/MenuEntries.h"

namespace quorel
{

class PluginProcessor;

MenuEntries ecsMenu(PluginProcessor& processor);

/** Does what row `id` of the menu says: clear the table, save it, delete the file in use, or load a file.
    Saving and deleting ask the user first. Ids that are not in the menu do nothing. */
void chooseEcs(PluginProcessor& processor, int id);

} // namespace quorel
