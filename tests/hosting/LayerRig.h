// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "hosting/HostedParameters.h"
#include "support/FaultyInstruments.h"

#include <gtest/gtest.h>

namespace quorel::test
{

/** A processor, with a look through its layers at the instruments inside. */
class LayerRig : public testing::Test
{
protected:
    VirtualInstrument& layer(int i = 0) { return rig.processor.getLayer(i); }

    float hosted(int i, int index)
    {
        const InstanceAccess::Use plugin(layer(i).instanceAccess());
        return plugin ? hostedParameter(*plugin.get(), index) : -1.0f;
    }

    void setHosted(int i, int index, float value)
    {
        const InstanceAccess::Use plugin(layer(i).instanceAccess());
        setHostedParameter(*plugin.get(), index, value);
    }

    /** The name of a parameter, by which the faulty instrument tells what was done to it. */
    juce::String told(int i, int index)
    {
        const InstanceAccess::Use plugin(layer(i).instanceAccess());
        return hostedParameterName(*plugin.get(), index);
    }

    juce::PluginDescription known(const juce::String& name)
    {
        for (const auto& type : rig.processor.getKnownPlugins().getTypes())
            if (type.name == name)
                return type;

        ADD_FAILURE() << "no scan has found " << name;
        return {};
    }

    ProcessorRig rig;
};

} // namespace quorel::test
