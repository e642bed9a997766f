// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quorel
{

/** The parameter table as the parts of the engine reach it. Any thread. */
class ParameterAccess
{
public:
    virtual ~ParameterAccess() = default;

    /** Value, 0 to 1; 0 for an index outside the table. */
    virtual float readParameter(int index) const noexcept = 0;

    /** Stores a value, clamped to 0 to 1, with all that follows from it. Does nothing for an index outside
        the table. */
    virtual void writeParameter(int index, float value) = 0;

    /** The same, and tells the host and, for an index above 2, marks the preset as edited. */
    virtual void writeParameterNotifyingHost(int index, float value) = 0;

    /** Stores a value that follows from another write, as `writeParameter` does; a host hears of it soon after,
        from the message thread. */
    virtual void writeFollowingParameter(int index, float value) { writeParameter(index, value); }
};

} // namespace quorel
