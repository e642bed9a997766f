// SPDX-License-Identifier: GPL-3.0-or-later
#include "midi/MidiLearner.h"

namespace quorel
{

namespace
{
constexpr float glowRadius = 2.0f;

void sendToOutputsNamed(const juce::String& deviceName, const juce::MidiMessage& message)
{
    for (const auto& device : juce::MidiOutput::getAvailableDevices())
        if (device.name == deviceName)
            if (const auto output = juce::MidiOutput::openDevice(device.identifier))
                output->sendMessageNow(message);
}
} // namespace

MidiLearner::MidiLearner()
{
    glow.setGlowProperties(glowRadius, juce::Colour(glowColour));
}

MidiLearner::~MidiLearner()
{
    globalMidi->removeChangeListener(this);
}

std::function<void(const juce::String&)>& MidiLearner::displayBox()
{
    static std::function<void(const juce::String&)> show;
    return show;
}

void MidiLearner::setName(const juce::String& newName)
{
    if (name.isEmpty())
        name = newName;
}

int MidiLearner::getNumMappings() const
{
    const juce::ScopedLock lock(mappingLock);
    return mappings.size();
}

void MidiLearner::handleIncomingMidiMessage(juce::MidiInput* source, const juce::MidiMessage& message)
{
    const auto sourceName = source != nullptr ? source->getName() : juce::String();
    if (handleMessage(sourceName, message))
        sendToOutputsNamed(sourceName, message);
}

bool MidiLearner::handleMessage(const juce::String& sourceName, const juce::MidiMessage& message)
{
    if (!learning.load(std::memory_order_relaxed))
        return apply(MidiMapping(sourceName, message), true);

    learn(sourceName, message);
    return false;
}

void MidiLearner::changeListenerCallback(juce::ChangeBroadcaster* broadcaster)
{
    const auto* midi = dynamic_cast<GlobalMidi*>(broadcaster);
    if (midi == nullptr)
        return;

    for (const auto event : *midi)
    {
        const auto message = event.getMessage();
        if (learning.load(std::memory_order_relaxed))
            learn({}, message);
        else
            apply(MidiMapping({}, message), false);
    }
}

void MidiLearner::learn(const juce::String& sourceName, const juce::MidiMessage& message)
{
    // Asked for without a message manager the lock would be waited for without end.
    if (juce::MessageManager::getInstanceWithoutCreating() == nullptr)
        return;
    const juce::MessageManagerLock messageLock(juce::Thread::getCurrentThread());
    if (!messageLock.lockWasGained() || !learning.exchange(false))
        return;

    auto mapping = std::make_unique<MidiMapping>(sourceName, message);
    const auto text = "Midi Mapped (" + sourceName + " ch:" + juce::String(mapping->channel) +
                      " num:" + juce::String(mapping->number) + ")";
    {
        const juce::ScopedLock lock(mappingLock);
        mappings.add(std::move(mapping));
    }
    if (const auto& show = displayBox())
        show(text);
}

bool MidiLearner::apply(const MidiMapping& incoming, bool compareDevices)
{
    {
        const juce::ScopedLock lock(mappingLock);
        const auto isBinding = [&](const MidiMapping* stored)
        { return stored->matches(incoming, compareDevices); };
        // The time test also keeps a message that several bindings match from being applied twice.
        if (incoming.timestamp <= lastTimestamp || std::none_of(mappings.begin(), mappings.end(), isBinding))
            return false;
        lastTimestamp = incoming.timestamp;
    }
    setValueFromMidi(incoming.currentValue());
    return true;
}

} // namespace quorel
