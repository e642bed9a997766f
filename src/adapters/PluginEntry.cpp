// SPDX-License-Identifier: GPL-3.0-or-later
// What JUCE's plug-in clients call to get a processor.
#include "adapters/PluginInstance.h"

juce::AudioProcessor* JUCE_CALLTYPE createPluginFilter();

juce::AudioProcessor* JUCE_CALLTYPE createPluginFilter()
{
    return new quorel::PluginInstance();
}
