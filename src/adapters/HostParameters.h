// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quorel
{

class HostUpdates;
class PluginProcessor;

/** Adds the parameters as the hosts of VST3 and LV2 see them: grouped and uniquely named; unnamed ones can't be
    automated. They stand at their indices, which their IDs are made of. What the host writes is noted in `updates`. Both
    outlive them. Message thread, before a host asks for them. */
void addHostParameters(PluginProcessor& processor, HostUpdates& updates);

} // namespace quorel
