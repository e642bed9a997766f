// SPDX-License-Identifier: GPL-3.0-or-later
// Where a change of sound stands, and where it may go from there.
//
//                      preset asked for
//            +------------------------------+
//            |                              v
//    +---> idle <--------- fadingIn     fadingOut <-- preset asked for, from any state but loading
//    |       |                ^             |
//    |       |                |             |  silent, or nothing plays
//    |       |                |             v
//    |       |             settling      waiting <--- a state, while a window has to go away first
//    |       |                ^             |
//    |       |                |             |  time is up
//    |       |   loaded       |             v
//    |       +------------> loading <-------+-------- a state, from any other state
//    |                        |
//    +------------------------+  loaded at once, without fade and settling
//
// A "state" here is a project's from the host, or a side of the comparison. `loading` has no way out but its own
// end: what is asked for meanwhile is loaded before it ends.
#pragma once

namespace quorel
{

enum class ChangeState
{
    /** Nothing is under way. */
    idle,
    /** The old sound fades out. The audio thread ends it, or the timer where no block runs. */
    fadingOut,
    /** The timer counts down to the load. */
    waiting,
    /** The load runs on the message thread. */
    loading,
    /** The new sound is there, the timer counts down to the fade-in. */
    settling,
    /** The audio thread ends it, or the timer where no block runs. */
    fadingIn
};

constexpr bool isLegal(ChangeState from, ChangeState to) noexcept
{
    switch (to)
    {
    case ChangeState::idle:
        return from == ChangeState::fadingIn || from == ChangeState::loading;
    case ChangeState::fadingOut:
    case ChangeState::waiting:
    case ChangeState::loading:
        return from != ChangeState::loading;
    case ChangeState::settling:
        return from == ChangeState::loading;
    case ChangeState::fadingIn:
        return from == ChangeState::settling;
    }

    return false;
}

} // namespace quorel
