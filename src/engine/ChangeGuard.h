// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PluginProcessor.h"

namespace quorel
{

/** True while another sound is on its way, which would take with it what is done to the present one: the user is told.
    Message thread. */
inline bool refusesForChange(PluginProcessor& processor)
{
    const auto& change = processor.getSoundChange();

    if (!change.holdsDisplay() && !change.awaitedReason())
        return false;

    processor.userInteraction().alert({}, "Another sound is on its way. Try again when it plays.");
    return true;
}

} // namespace quorel
