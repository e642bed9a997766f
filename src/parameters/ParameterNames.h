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
    /** Name of an Easy parameter's target: layer 0 to 3, Easy number 0 to 11. Nothing where the layer is
     * empty. */
    std::function<juce::String(int layer, int easy)> easyName;
};

/** The host's name of a parameter; empty where the index has none. */
juce::String parameterName(int index, const ParameterNameSources& sources);

/** "Master Volume" and the like, or the number within the layer where it has no name of its own: without the
    "Layer1 " before it. `n` is 200 to 399. */
juce::String layerParameterName(int n);

} // namespace quorel
