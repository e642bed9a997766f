// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

namespace quorel
{

/** False for a 64-bit ELF library that is cut short, as an interrupted copy or a full disk leaves it. The
    system's loader doesn't check a library's length: it maps pages that the file doesn't have and takes the
    whole process down. True for anything else, including missing files and other formats, which the loader
    itself refuses. Any thread. */
bool isWholePluginFile(const juce::File& file);

} // namespace quorel
