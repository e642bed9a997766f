// SPDX-License-Identifier: GPL-3.0-or-later
#include "adapters/PluginInstance.h"

#include "adapters/HostParameters.h"
#include "platform/PlatformSeam.h"
#include "resources/CBitmap.h"
#include "setup/FirstStart.h"
#include "ui/PluginEditor.h"

#include <limits>
#include <utility>

namespace quorel
{

/** Images and look of the first editor, kept for the next ones. */
struct PluginInstance::KeptForEditors
{
    juce::SharedResourcePointer<ImageStore> images;
    EditorLook look;
};

namespace
{
/** More than a block ever holds; what comes beyond is dropped. */
constexpr size_t midiReserve = 64 * 1024;

/** Read from the bytes: a message made of them would take memory for system exclusive data. */
bool beginsNote(const juce::MidiMessageMetadata& event)
{
    constexpr int noteOn = 0x90, kind = 0xf0, withVelocity = 3;
    return event.numBytes == withVelocity && (event.data[0] & kind) == noteOn && event.data[2] > 0;
}

/** The settings of a user who has been set up to play. */
std::unique_ptr<UserStore> settingsOfUser()
{
    setUpAtFirstStart();
    return makeUserStore();
}
} // namespace

PluginInstance::PluginInstance()
    : PluginProcessor(settingsOfUser(), static_cast<BoxInteraction&>(*this))
{
    editorFactory = [this](PluginProcessor& processor) -> juce::AudioProcessorEditor*
    {
        if (kept == nullptr)
            kept = std::make_unique<KeptForEditors>();

        return new PluginEditor(processor);
    };
    findEditor = [this]() -> juce::Component*
    {
        auto* editor = dynamic_cast<PluginEditor*>(getActiveEditor());
        return editor != nullptr && editor->isShowing() ? &editor->getView() : nullptr;
    };

    if (isVst3OrLv2())
    {
        hostUpdates = std::make_unique<HostUpdates>(*this);
        addHostParameters(*this, *hostUpdates);
        hostUpdates->begin();
    }
}

PluginInstance::~PluginInstance() = default;

void PluginInstance::prepareToPlay(double rate, int newBlockSize)
{
    midiInBypass.ensureSize(midiReserve);
    PluginProcessor::prepareToPlay(rate, newBlockSize);
}

void PluginInstance::processBlock(juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midi)
{
    // The block that ends a fade-out leaves both as they come. Without an input that is what the last block had.
    if (isVst3OrLv2())
        buffer.clear();

    PluginProcessor::processBlock(buffer, midi);

    if (isVst3OrLv2())
        midi.clear();

    // A block of no samples has no room for a ramp.
    if (buffer.getNumSamples() > 0 && std::exchange(wasBypassed, false))
        buffer.applyGainRamp(0, buffer.getNumSamples(), 0.0f, 1.0f);
}

void PluginInstance::processBlockBypassed(juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midi)
{
    if (!isVst3OrLv2())
    {
        PluginProcessor::processBlockBypassed(buffer, midi);
        return;
    }

    const bool begins = buffer.getNumSamples() > 0 && !std::exchange(wasBypassed, true);

    if (begins)
        for (int i = 0; i < numLayers; ++i)
            getLayer(i).requestAllNotesOff();

    constexpr int bytesBesideEach = 8;
    size_t room = midiReserve;
    midiInBypass.clear();

    for (const auto event : midi)
    {
        const auto needed = static_cast<size_t>(event.numBytes + bytesBesideEach);

        if (needed > room || beginsNote(event))
            continue;

        midiInBypass.addEvent(event.data, event.numBytes, event.samplePosition);
        room -= needed;
    }

    buffer.clear();
    PluginProcessor::processBlock(buffer, midiInBypass);
    buffer.applyGainRamp(0, buffer.getNumSamples(), begins ? 1.0f : 0.0f, 0.0f);
    midi.clear();
}

double PluginInstance::getTailLengthSeconds() const
{
    return isVst3OrLv2() ? std::numeric_limits<double>::infinity() : PluginProcessor::getTailLengthSeconds();
}

void PluginInstance::hostHasReadAll()
{
    if (hostUpdates != nullptr)
        hostUpdates->hostHasReadAll();
}

} // namespace quorel
