// SPDX-License-Identifier: GPL-3.0-or-later
// The comings and goings of a layer's instrument, as a table. The standard library alone.
#pragma once

#include <array>
#include <optional>

namespace quorel
{

/** Where a layer stands. The audio thread runs the instrument in `playing` alone. */
enum class LayerState
{
    /** No instrument, and none asked for. */
    empty,
    /** An instrument was asked for and is waited for, or is being made. */
    loading,
    /** The instrument is there and sounds. */
    playing,
    /** The instrument is still there, silent, until its window has had time to go away. Another one may wait
        behind it. */
    leaving,
    /** The sound names an instrument that isn't installed; its state is kept. */
    missing,
    /** The instrument is installed and can't be loaded; its state is kept. */
    failed
};

enum class LayerEvent
{
    /** An instrument is asked for; it is loaded some ticks later. */
    loadAsked,
    /** An instrument is being made now. */
    loadBegun,
    loadDone,
    loadFailed,
    /** The instrument must go and its window is open: the window goes first. */
    windowClosed,
    /** The leaving instrument is asked for again. */
    kept,
    /** All that is in the layer or on its way goes, at once. */
    emptied,
    /** A sound names an instrument that nobody has installed. */
    notFound
};

struct LayerTransition
{
    LayerState from;
    LayerEvent event;
    LayerState to;
};

/** All legal transitions. Events that aren't listed for a state change nothing there.

        asked, begun +---------+ done                 +---------+ window closed  +---------+
    +--------------->| loading |--------------------->| playing |--------------->| leaving |
    |                +---------+ <-------- begun -----+---------+ <--- kept -----+---------+
    |                 |  ^   | failed                   | emptied                  |   |
    |   emptied       |  |   v                          |                   begun  |   | emptied
    |  +--------------+  |  +--------+                  |        (to loading) <----+   |
    |  |  begun, asked   +--| failed |                  |                              |
    |  v                    +--------+                  |                              |
    | +-------+ <--------------- emptied ---------------+------------------------------+
    +-| empty |
      +-------+ -- not found --> [ missing ] -- asked, begun --> [ loading ]

    What waits in a state is data of that state and goes with it: the ticks and the description of an
    instrument that is asked for, in `loading`; the ticks of one that leaves, and what is asked for meanwhile,
    in `leaving`; the kept state in `missing` and `failed`. */
constexpr std::array<LayerTransition, 21> layerTransitions{{
    {LayerState::empty, LayerEvent::loadAsked, LayerState::loading},
    {LayerState::empty, LayerEvent::loadBegun, LayerState::loading},
    {LayerState::empty, LayerEvent::notFound, LayerState::missing},
    {LayerState::empty, LayerEvent::emptied, LayerState::empty},

    {LayerState::loading, LayerEvent::loadAsked, LayerState::loading},
    {LayerState::loading, LayerEvent::loadBegun, LayerState::loading},
    {LayerState::loading, LayerEvent::loadDone, LayerState::playing},
    {LayerState::loading, LayerEvent::loadFailed, LayerState::failed},
    {LayerState::loading, LayerEvent::emptied, LayerState::empty},

    {LayerState::playing, LayerEvent::loadBegun, LayerState::loading},
    {LayerState::playing, LayerEvent::windowClosed, LayerState::leaving},
    {LayerState::playing, LayerEvent::emptied, LayerState::empty},

    {LayerState::leaving, LayerEvent::kept, LayerState::playing},
    {LayerState::leaving, LayerEvent::loadBegun, LayerState::loading},
    {LayerState::leaving, LayerEvent::emptied, LayerState::empty},

    {LayerState::missing, LayerEvent::loadAsked, LayerState::loading},
    {LayerState::missing, LayerEvent::loadBegun, LayerState::loading},
    {LayerState::missing, LayerEvent::emptied, LayerState::empty},

    {LayerState::failed, LayerEvent::loadAsked, LayerState::loading},
    {LayerState::failed, LayerEvent::loadBegun, LayerState::loading},
    {LayerState::failed, LayerEvent::emptied, LayerState::empty},
}};

/** Where `event` leads from `from`; nothing where it can't happen. */
constexpr std::optional<LayerState> nextLayerState(LayerState from, LayerEvent event) noexcept
{
    for (const auto& transition : layerTransitions)
        if (transition.from == from && transition.event == event)
            return transition.to;

    return std::nullopt;
}

} // namespace quorel
