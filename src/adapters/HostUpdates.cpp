// SPDX-License-Identifier: GPL-3.0-or-later
#include "adapters/HostUpdates.h"

#include "effects/FxTypes.h"
#include "engine/PluginProcessor.h"

#include <cmath>
#include <utility>

namespace quorel
{

namespace
{
constexpr int lookMillis = 250;
}

HostUpdates::HostUpdates(PluginProcessor& instrument)
    : processor(instrument)
    , knownNames(namesThatChange())
    , knownRevision(instrument.getUndo().getRevision())
{
    hostHasReadAll();
    processor.addListener(this);
}

void HostUpdates::begin()
{
    startTimer(lookMillis);
}

void HostUpdates::hostHasReadAll() noexcept
{
    for (int i = 0; i < numHostParameters; ++i)
        setKnown(i, processor.getParameter(i));
}

HostUpdates::~HostUpdates()
{
    stopTimer();
    processor.removeListener(this);
}

void HostUpdates::setKnown(int index, float value) noexcept
{
    if (juce::isPositiveAndBelow(index, numHostParameters))
        known[static_cast<size_t>(index)].store(value, std::memory_order_relaxed);
}

bool HostUpdates::isKnown(int index) const noexcept
{
    const float value = processor.getParameter(index);
    // A foreign sound may hold no number, which is equal to nothing.
    return std::isnan(value) || value == known[static_cast<size_t>(index)].load(std::memory_order_relaxed);
}

void HostUpdates::audioProcessorParameterChanged(juce::AudioProcessor*, int index, float value)
{
    setKnown(index, value);
}

juce::String HostUpdates::namesThatChange() const
{
    juce::String names;

    for (int block = 0; block < numFxBlocks; ++block)
        names << fxTypeFromParameter(processor.readParameter(slot::fxType + block)) << ' ';

    for (int layer = 0; layer < numLayers; ++layer)
        for (int i = 0; i < numEasyParameters; ++i)
            names << processor.getLayer(layer).easyName(i) << '\n';

    return names;
}

bool HostUpdates::takeNames()
{
    auto names = namesThatChange();
    return std::exchange(knownNames, names) != names;
}

bool HostUpdates::takeEdits()
{
    const auto& undo = processor.getUndo();
    const int revision = undo.getRevision();
    // The history is emptied when the host itself has brought a sound.
    return std::exchange(knownRevision, revision) != revision && (undo.canUndo() || undo.canRedo());
}

bool HostUpdates::takeValues()
{
    const bool isLv2 = processor.wrapperType == juce::AudioProcessor::wrapperType_LV2;
    bool any = false;

    for (auto* parameter : processor.getParameters())
    {
        const int index = parameter->getParameterIndex();

        if (!parameter->isAutomatable() || isKnown(index))
            continue;

        any = true;
        const float value = processor.getParameter(index);
        setKnown(index, value);

        if (isLv2)
            parameter->sendValueChangedMessageToListeners(value);
    }

    return any;
}

void HostUpdates::timerCallback()
{
    // VST3 has a notice that all values are others, which no host takes for moves to be recorded. LV2 has none, and is told
    // each.
    const bool hasValues = takeValues();
    const bool hasNames = takeNames();
    const bool hasEdits = takeEdits();

    if (hasValues || hasNames || hasEdits)
        processor.updateHostDisplay(juce::AudioProcessor::ChangeDetails()
                                        .withProgramChanged(hasValues)
                                        .withParameterInfoChanged(hasNames)
                                        .withNonParameterStateChanged(hasEdits));
}

} // namespace quorel
