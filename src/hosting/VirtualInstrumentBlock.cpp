// SPDX-License-Identifier: GPL-3.0-or-later
// A layer's block.
#include "hosting/VirtualInstrument.h"
#include "midi/MidiMonitor.h"

#include <cmath>

namespace quorel
{

namespace
{
/** +60 dB. No instrument means that. */
constexpr float loudest = 1000.0f;
/** Of 50 ms: how long a silenced instrument is shown as such. */
constexpr int silencedDisplayTicks = 20;

/** False for anything that isn't finite or is beyond `loudest`. */
bool isSound(const juce::AudioBuffer<float>& buffer, int numChannels)
{
    bool good = true;

    for (int channel = 0; channel < numChannels; ++channel)
    {
        const float* samples = buffer.getReadPointer(channel);

        for (int i = 0; i < buffer.getNumSamples(); ++i)
            good &= std::abs(samples[i]) <= loudest;
    }

    return good;
}
} // namespace

void VirtualInstrument::sendMidi(const juce::MidiMessage& message) noexcept
{
    const auto* bytes = message.getRawData();
    const auto size = static_cast<juce::uint32>(juce::jlimit(0, 3, message.getRawDataSize()));
    juce::uint32 packed = size << 24;

    for (juce::uint32 i = 0; i < size; ++i)
        packed |= static_cast<juce::uint32>(bytes[i]) << (8 * i);

    pendingMidi.store(packed);
}

LayerMidiSettings VirtualInstrument::currentMidiSettings() const noexcept
{
    auto settings = midiParameters.snapshot();
    settings.drumMode = read(layerSlot::drumMode) == 1.0f;
    settings.freeControllerBlock = owner.readParameter(slot::freeControllerBlock + layer) != 0.0f;

    for (int zone = 0; zone < numZones; ++zone)
        settings.zoneOn[static_cast<size_t>(zone)] = read(layerSlot::zoneOn + zone) != 0.0f;

    return settings;
}

void VirtualInstrument::processBlock(juce::AudioBuffer<float>& buffer, const juce::MidiBuffer& incoming)
{
    const InstanceAccess::Use plugin(access);
    const auto now = state.load();

    if (now == LayerState::loading || now == LayerState::leaving)
        return;

    layerMidi.clear();
    const bool silenceFirst = allNotesOffRequested.exchange(false);
    filterLayerMidi(currentMidiSettings(), zoneHeldNotes, silenceFirst, incoming, layerMidi);

    if (const auto packed = pendingMidi.exchange(0); packed != 0)
    {
        const juce::uint8 bytes[3] = {static_cast<juce::uint8>(packed & 0xff),
                                      static_cast<juce::uint8>((packed >> 8) & 0xff),
                                      static_cast<juce::uint8>((packed >> 16) & 0xff)};
        layerMidi.addEvent(bytes, static_cast<int>(packed >> 24), 0);
    }

    if (plugin)
        renderInstance(*plugin.get(), buffer);
}

void VirtualInstrument::renderInstance(juce::AudioPluginInstance& plugin, juce::AudioBuffer<float>& buffer)
{
    // JUCE's VST2 instance leaves it to its host to heed this lock and the suspended flag. Whoever holds the
    // lock is about to stop the instrument, so it isn't worth waiting for.
    const juce::ScopedTryLock tryLock(plugin.getCallbackLock());

    if (!tryLock.isLocked() || plugin.isSuspended())
        return;

    passOnEasyValues(plugin);

    const int outputs = plugin.getTotalNumOutputChannels();
    const int samples = buffer.getNumSamples();
    bool sounds = false;
    copyEvents(layerMidi, hostedMidi);

    if (juce::jmax(plugin.getTotalNumInputChannels(), outputs) <= buffer.getNumChannels())
    {
        sounds = runInstance(plugin, buffer);
    }
    else
    {
        reserveWideBuffer(plugin, samples);
        wideBuffer.clear();
        sounds = runInstance(plugin, wideBuffer);

        for (int channel = 0; channel < buffer.getNumChannels(); ++channel)
            buffer.copyFrom(channel, 0, wideBuffer, channel, 0, samples);
    }

    // A mono instrument sounds on both sides.
    if (outputs == 1)
        buffer.copyFrom(1, 0, buffer, 0, 0, samples);
    else if (outputs == 0)
        buffer.clear();

    if (!sounds || !isSound(buffer, buffer.getNumChannels()))
    {
        buffer.clear();
        silencedTicks.store(silencedDisplayTicks);
    }
}

bool VirtualInstrument::runInstance(juce::AudioPluginInstance& plugin,
                                    juce::AudioBuffer<float>& buffer) noexcept
{
    try
    {
        plugin.processBlock(buffer, hostedMidi);
        return true;
    }
    catch (...)
    {
        return false;
    }
}

void VirtualInstrument::reserveWideBuffer(const juce::AudioPluginInstance& plugin, int samples)
{
    wideBuffer.setSize(juce::jmax(2, plugin.getTotalNumInputChannels(), plugin.getTotalNumOutputChannels()),
                       samples, false, false, true);
}

} // namespace quorel
