// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <memory>

namespace quorel
{

/** Reads XML of a few levels, as all files of ours are. Null for what isn't well formed; also for what is nested deeply, or
    declares anything: JUCE's reader calls itself for each level, and ends the process where the stack does. Any thread. */
std::unique_ptr<juce::XmlElement> parseFlatXml(const juce::String& text);

} // namespace quorel
