// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quorel
{

/** Keeps the system's sound libraries from printing what they try and miss, such as a server that doesn't run, for the
    rest of this process. For a program of our own: a host's libraries aren't ours. Before devices are looked for. */
void quietenSoundLibraries();

} // namespace quorel
