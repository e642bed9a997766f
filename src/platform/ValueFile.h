// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

namespace quorel
{

/** Texts by name in one small XML file, `<PROPERTIES>` with a `<VALUE name="" val=""/>` for each, replaced
    as a whole. The instruments read such a file with code of their own. Not on the audio thread. */
class ValueFile
{
public:
    enum class Names
    {
        exact,
        anyCase
    };

    /** Reads the file, if there is one. */
    ValueFile(const juce::File& file, Names names);

    /** True where something is there that isn't such a file, or can't be read: it reads as empty. */
    bool isBroken() const noexcept { return broken; }

    /** Empty where there is none. */
    juce::String get(const juce::String& name) const { return values.getValue(name, {}); }

    const juce::StringArray& names() const { return values.getAllKeys(); }

    void set(const juce::String& name, const juce::String& value) { values.set(name, value); }

    void remove(const juce::String& name) { values.remove(juce::StringRef(name)); }

    juce::Result save() const;

private:
    bool read();

    juce::File file;
    juce::StringPairArray values;
    bool broken = false;
};

} // namespace quorel
