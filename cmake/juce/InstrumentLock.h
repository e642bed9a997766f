// SPDX-License-Identifier: GPL-3.0-or-later
// The end of the changed copy of JUCE's VST2 host. src/hosting/HostedParameters.h says what this is for.
#pragma once

namespace quorel
{

const juce::CriticalSection& instrumentLock(juce::AudioPluginInstance& plugin) noexcept;

const juce::CriticalSection& instrumentLock(juce::AudioPluginInstance& plugin) noexcept
{
    // There is no other format.
    return static_cast<juce::VSTPluginInstance&>(plugin).callLock();
}

} // namespace quorel
