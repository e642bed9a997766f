// SPDX-License-Identifier: GPL-3.0-or-later
// What is under way beside the files that it will replace, and what becomes of it when its process is killed.
// Any thread but the audio thread.
#pragma once

#include <juce_core/juce_core.h>

namespace quorel
{

/** A place in a folder for a file or a folder that isn't whole yet: short, whatever it will be called, and
    nothing that looks like a preset. */
juce::File temporaryIn(const juce::File& folder);

/** The place for a folder of whole files that are about to be moved to the folder above it. */
juce::File stageOf(const juce::File& temporary);

/** Moves all files of such a folder to the one above it, and removes it. What can't be moved stays for the
    next time. */
juce::Result takeIn(const juce::File& stage);

/** Removes from a folder what processes of ours that were killed have left in it, and completes what was
    whole and about to be moved, unless something newer is in its place; nothing of what a living one still
    works on. Looks once for each folder in the life of this process. */
void removeLeftovers(const juce::File& folder);

} // namespace quorel
