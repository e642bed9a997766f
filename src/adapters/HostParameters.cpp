// SPDX-License-Identifier: GPL-3.0-or-later
#include "adapters/HostParameters.h"

#include "adapters/HostUpdates.h"
#include "effects/FxTypes.h"
#include "engine/PluginProcessor.h"
#include "midi/NoteNames.h"
#include "parameters/ParameterCatalogue.h"
#include "parameters/ParameterCodings.h"
#include "parameters/ParameterValueEntry.h"

#include <memory>
#include <utility>

namespace quorel
{

namespace
{
bool isNamed(int index)
{
    const auto naming = parameterInfo(index).name.naming;
    return naming != Naming::none && naming != Naming::number;
}

enum class RangeEnd
{
    none,
    key,
    velocity
};

constexpr int highestOfRange = 127;

/** What a parameter bounds. Those have no text but what the editor's boxes show. */
RangeEnd rangeEndOf(int index)
{
    if (!isNamed(index) || !isLayerParameter(index))
        return RangeEnd::none;

    switch (numberInLayer(index))
    {
    case layerSlot::keyMin:
    case layerSlot::keyMax:
        return RangeEnd::key;
    case layerSlot::velocityMin:
    case layerSlot::velocityMax:
        return RangeEnd::velocity;
    default:
        return RangeEnd::none;
    }
}

/** Its ID is the index behind a letter: LV2 makes a name of it. */
class HostParameter final : public juce::AudioProcessorParameterWithID
{
public:
    HostParameter(PluginProcessor& instrument, HostUpdates& hostUpdates, int slotIndex)
        : juce::AudioProcessorParameterWithID(juce::ParameterID("p" + juce::String(slotIndex), 1), {})
        , processor(instrument)
        , updates(hostUpdates)
        , index(slotIndex)
        , info(parameterInfo(slotIndex))
    {
    }

    float getValue() const override { return processor.getParameter(index); }

    void setValue(float value) override
    {
        updates.hostHasWritten(index, value);
        processor.setParameter(index, value);
    }

    float getDefaultValue() const override { return info.defaultValue; }

    /** The four blocks' effects have the same labels, or none: the block's number tells them apart. Where names
        are written down once for all, they are those of no effect in particular. */
    juce::String getName(int maximumLength) const override
    {
        auto text = processor.getParameterName(index);

        if (info.name.naming == Naming::effectLabel)
        {
            const int j = (index - slot::fxParameters) / numFxBlocks;
            const bool isNameless = text.isEmpty() || text == "-" || isWrittenDown();
            text = "FX" + juce::String(index % numFxBlocks + 1) + " " +
                   (isNameless ? "Parameter " + juce::String(j + 1) : text);
        }

        return text.substring(0, maximumLength);
    }

    juce::String getText(float value, int maximumLength) const override
    {
        auto text = processor.getParameterText(index, value);

        if (const int number = paramToInt(value, 0, highestOfRange); rangeEnd != RangeEnd::none)
            text = rangeEnd == RangeEnd::key ? noteName(number) : juce::String(number);

        return (text.isNotEmpty() ? text : juce::String(value, 3)).substring(0, maximumLength);
    }

    float getValueForText(const juce::String& text) const override
    {
        if (rangeEnd == RangeEnd::none)
            return typedValue(index, text).value_or(processor.getParameter(index));

        const auto note = rangeEnd == RangeEnd::key ? noteOfName(text) : std::nullopt;
        const auto digits = text.trim();

        if (!note && (digits.isEmpty() || digits.length() > 3 || !digits.containsOnly("0123456789")))
            return processor.getParameter(index);

        // The middle of the number's range, so that rounding can't lead to a neighbour.
        const int number = juce::jlimit(0, highestOfRange, note.value_or(digits.getIntValue()));
        return clampUnit((static_cast<float>(number) + 0.5f) / static_cast<float>(highestOfRange));
    }

    int getNumSteps() const override
    {
        if (info.text == TextRule::onOff)
            return 2;

        return info.text == TextRule::effectType ? fxTypeCount
                                                 : juce::AudioProcessorParameterWithID::getNumSteps();
    }

    bool isDiscrete() const override { return isBoolean() || info.text == TextRule::effectType; }

    bool isBoolean() const override { return info.text == TextRule::onOff; }

    bool isAutomatable() const override { return isNamed(index); }

    /** Any parameter may be tied to others. */
    bool isMetaParameter() const override { return true; }

private:
    bool isWrittenDown() const { return processor.wrapperType == juce::AudioProcessor::wrapperType_LV2; }

    PluginProcessor& processor;
    HostUpdates& updates;
    const int index;
    const ParameterInfo& info;
    const RangeEnd rangeEnd = rangeEndOf(index);
};

using Group = juce::AudioProcessorParameterGroup;

/** Makes the parameters in the order of their slots, in groups of the processor's or outside them. */
class Builder
{
public:
    Builder(PluginProcessor& instrument, HostUpdates& hostUpdates)
        : processor(instrument)
        , updates(hostUpdates)
    {
    }

    void addAll()
    {
        addUngrouped(slot::firstLayer);

        for (int i = 0; i < numLayers; ++i)
            add(makeLayer(i), layerParameter(i, slot::firstLayer) + slot::layerStride);

        addUngrouped(slot::fxOn);
        add(makeGroup("effects", "Effects", slot::fxOn, slot::masterEq - 1), slot::masterEq);
        add(makeGroup("masterEq", "Master EQ", slot::masterEq, slot::masterEqEnd), slot::masterEqEnd + 1);
        addUngrouped(slot::multiAssignment);
        add(makeGroup("multi", "Multi-Controls", slot::multiAssignment, numHostParameters - 1),
            numHostParameters);
    }

private:
    std::unique_ptr<HostParameter> makeParameter(int index) const
    {
        return std::make_unique<HostParameter>(processor, updates, index);
    }

    /** Slots `first` to `last`, of which a part may be a group within. */
    std::unique_ptr<Group> makeGroup(const juce::String& id, const juce::String& name, int first,
                                     int last) const
    {
        auto group = std::make_unique<Group>(id, name, " | ");

        for (int i = first; i <= last; ++i)
            group->addChild(makeParameter(i));

        return group;
    }

    /** A layer with its EQ in the place of its slots: the order of all is that of their indices. */
    std::unique_ptr<Group> makeLayer(int layer) const
    {
        const juce::String number(layer + 1);
        const auto at = [layer](int n) { return layerParameter(layer, n); };
        const int first = at(layerSlot::pluginNameText), last = first + slot::layerStride - 1;
        auto group = makeGroup("layer" + number, "Layer " + number, first, at(layerSlot::eq) - 1);
        group->addChild(makeGroup("eq" + number, "EQ", at(layerSlot::eq), at(layerSlot::eqEnd)));

        for (int i = at(layerSlot::eqEnd) + 1; i <= last; ++i)
            group->addChild(makeParameter(i));

        return group;
    }

    void addUngrouped(int end)
    {
        for (; next < end; ++next)
            processor.addParameter(makeParameter(next).release());
    }

    void add(std::unique_ptr<Group> group, int end)
    {
        processor.addParameterGroup(std::move(group));
        next = end;
    }

    PluginProcessor& processor;
    HostUpdates& updates;
    int next = 0;
};
} // namespace

void addHostParameters(PluginProcessor& processor, HostUpdates& updates)
{
    Builder(processor, updates).addAll();
}

} // namespace quorel
