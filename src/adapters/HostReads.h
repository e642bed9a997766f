// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quorel
{

/** What hears that a host has just read the values of all parameters. JUCE's VST3 client tells it, and includes this. */
class HostReads
{
public:
    virtual ~HostReads() = default;

    /** On the host's thread. */
    virtual void hostHasReadAll() = 0;
};

} // namespace quorel
