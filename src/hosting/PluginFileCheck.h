// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

namespace quorel
{

/** False for a 64-bit ELF library that is cut short, as a broken copy or a full disk leaves it. The
    system's loader doesn't look at a library's length: it maps what isn't there and takes the whole
    process down. True for anything else, missing files and other formats included, which the loader
    refuses by itself. Any thread. */
bool isWholePluginFile(const juce::File& file);

} // namespace quorel
