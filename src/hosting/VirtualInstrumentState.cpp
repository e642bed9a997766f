// SPDX-License-Identifier: GPL-3.0-or-later
// The state of a layer's instrument, on its way into a sound and out of it.
#include "hosting/HostedParameters.h"
#include "hosting/HostedState.h"
#include "hosting/InstrumentTable.h"
#include "hosting/VirtualInstrument.h"
#include "parameters/ParameterCodings.h"

#include <utility>

namespace quorel
{

namespace
{
/** What is saved of an instrument that has no state: too short to be one, and enough for the sound to load
    the instrument again. */
constexpr size_t placeholderBytes = 4;
} // namespace

void VirtualInstrument::keep(SharedState bytes, bool named)
{
    const std::lock_guard<std::mutex> guard(keptLock);
    // The old bytes, which may be many, are freed by the caller's copy.
    std::swap(kept, bytes);
    isNamed = named;
}

void VirtualInstrument::setNamed(bool named)
{
    const std::lock_guard<std::mutex> guard(keptLock);
    isNamed = named;
}

bool VirtualInstrument::keepStateOf(juce::AudioPluginInstance& plugin)
{
    const auto bytes = std::make_shared<const juce::MemoryBlock>(readHostedState(plugin));

    if (bytes->isEmpty())
        return false;

    keep(bytes, true);
    return true;
}

juce::MemoryBlock VirtualInstrument::stateToSave()
{
    const InstanceAccess::Use plugin(access);
    const auto now = getState();
    const auto isWanted = [this]
    {
        const std::lock_guard<std::mutex> guard(keptLock);
        return isNamed;
    };

    if (plugin && now == LayerState::playing && isWanted())
    {
        // What still waits to reach the instrument belongs to its state.
        const juce::ScopedLock lock(instrumentLock(*plugin.get()));
        passOnEasyValues(*plugin.get());
        auto untold = StateLoss::none;

        if (!keepStateOf(*plugin.get()))
            stateLoss.compare_exchange_strong(untold, StateLoss::untold);
    }

    SharedState bytes;
    bool named = false;
    {
        const std::lock_guard<std::mutex> guard(keptLock);
        bytes = kept;
        named = isNamed;
    }

    // What leaves is no part of the sound any more, but what waits behind it is.
    if (bytes != nullptr && now != LayerState::leaving)
        return *bytes;

    return named ? juce::MemoryBlock(placeholderBytes, true) : juce::MemoryBlock();
}

std::optional<float> VirtualInstrument::programToSave()
{
    const InstanceAccess::Use plugin(access);

    if (!plugin || getState() != LayerState::playing || plugin->getNumPrograms() == 0)
        return std::nullopt;

    return parameterOfProgram(plugin->getCurrentProgram(), plugin->getNumPrograms());
}

bool VirtualInstrument::giveState(const juce::MemoryBlock& bytes, float program)
{
    const auto now = getState();

    if (bytes.isEmpty())
        return false;

    if (now == LayerState::missing || now == LayerState::failed)
    {
        keep(std::make_shared<const juce::MemoryBlock>(bytes), true);
        return true;
    }

    if (now != LayerState::playing)
        return false;

    // They were meant for the state before.
    easyHandover.clear();

    if (!giveHostedState(*instance, bytes))
        return false;

    instance->setCurrentProgram(programOfParameter(program, instance->getNumPrograms()));
    keep(std::make_shared<const juce::MemoryBlock>(bytes), findInstrument(pluginName) != nullptr);
    return true;
}

void VirtualInstrument::tellOfLostState()
{
    auto untold = StateLoss::untold;

    if (!stateLoss.compare_exchange_strong(untold, StateLoss::told))
        return;

    bool hasKept = false;
    {
        const std::lock_guard<std::mutex> guard(keptLock);
        hasKept = kept != nullptr;
    }
    owner.userInteraction().alert(
        "Error", pluginName + " in layer " + juce::String(layer + 1) + " gives no state to save. " +
                     (hasKept ? "The last one that it gave is saved in its place."
                              : "Its name is saved, and it will start with its own settings."));
}

} // namespace quorel
