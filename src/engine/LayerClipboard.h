// SPDX-License-Identifier: GPL-3.0-or-later
// Layers as a whole: copied, pasted, exchanged, reset, with all that belongs to them: the instrument with its state
// and its program, the Easy mapping, key ranges and zones, MIDI filter, EQ, mixer and sends. `layer` is 0 to 3. What is
// copied is there for all instances in the process. An operation returns false, and changes nothing, while another
// sound is on its way: the user is told. Message thread.
#pragma once

namespace quorel
{

class PluginProcessor;

/** Keeps the layer for `pasteLayer`, until another one is copied. */
void copyLayer(PluginProcessor& processor, int layer);

/** True once a layer has been copied. */
bool hasCopiedLayer() noexcept;

/** Puts the copied layer in place of this one. Multi-control knobs on this layer's volume, pan and sends stay there;
    those on its Easy values are let go, as with every new instrument. */
bool pasteLayer(PluginProcessor& processor, int layer);

/** The same with `from` itself, past what was copied. */
bool copyLayerTo(PluginProcessor& processor, int from, int to);

/** Exchanges two layers. Multi-control knobs go along: the sound stays as it is. */
bool swapLayers(PluginProcessor& processor, int first, int second);

/** Sets everything but the instrument and its sound to the defaults. Of multi-controls as `pasteLayer`. */
bool resetLayerSettings(PluginProcessor& processor, int layer);

} // namespace quorel
