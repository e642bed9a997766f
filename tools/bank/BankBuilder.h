// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <functional>

namespace quorel
{

/** Builds presets from their texts with a real processor and real instruments, as a user of its own whose
    files go away with the builder. Message thread. */
class BankBuilder
{
public:
    /** `distribution` holds the instruments in "Ostrand" and their banks in "Banks". */
    explicit BankBuilder(const juce::File& distribution);
    ~BankBuilder();

    /** The preset's bytes. An error names the file and, where there is one, the line. */
    juce::Result build(const juce::File& text, juce::MemoryBlock& bytes) const;

    /** Builds every `<folder>/<name>.txt` below `source` into `<folder>/<name>.qrl` below `output`. Goes on
        after an error, so that all of them are known at once; `report` gets each. False after any, and
        without any text. */
    bool buildAll(const juce::File& source, const juce::File& output,
                  const std::function<void(const juce::String&)>& report) const;

private:
    const juce::File places;
};

} // namespace quorel
