// SPDX-License-Identifier: GPL-3.0-or-later
// Effect blocks as a whole: copied, pasted, exchanged, reset. `block` is 0 to 3. What is copied is there for all
// instances in the process. An operation returns false, and changes nothing, while another sound is on its way: the
// user is told. Message thread.
#pragma once

namespace quorel
{

class PluginProcessor;

/** Keeps the block for `pasteEffect`, until another one is copied. */
void copyEffect(PluginProcessor& processor, int block);

/** True once a block has been copied. */
bool hasCopiedEffect() noexcept;

/** Puts the copied block in place of this one. What is sent to it stays. */
bool pasteEffect(PluginProcessor& processor, int block);

/** The same with `from` itself, past what was copied. */
bool copyEffectTo(PluginProcessor& processor, int from, int to);

/** Exchanges two blocks, with what the layers send to them and the multi-control knobs on these sends: the sound
    stays as it is. */
bool swapEffects(PluginProcessor& processor, int first, int second);

/** Makes the block empty. */
bool resetEffect(PluginProcessor& processor, int block);

} // namespace quorel
