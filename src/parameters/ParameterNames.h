// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <functional>

namespace quorel
{

/** What a parameter's name depends on besides its index. */
struct ParameterNameSources
{
    /** Type, 0 to 32, of effect block 0 to 3. */
    std::function<int(int block)> fxType;
    /** What an Easy value is called: layer 0 to 3, Easy value 0 to 11. */
    std::function<juce::String(int layer, int easy)> easyName;
};

/** The host's name of a parameter; empty where it has none. Any thread that the sources allow. */
juce::String parameterName(int index, const ParameterNameSources& sources);

} // namespace quorel
