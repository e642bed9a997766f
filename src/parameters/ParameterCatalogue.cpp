// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameters/ParameterCatalogue.h"

#include "effects/FxTypes.h"
#include "parameters/Categories.h"
#include "parameters/ParameterCodings.h"
#include "parameters/ParameterText.h"

#include <limits>

namespace quorel
{

namespace
{
using Catalogue = std::array<ParameterInfo, numParameterSlots>;

/** 0 dB, to within 0.002. */
constexpr float unityFader = 0.63f;
constexpr float lowestKey = static_cast<float>(24.0 / 127.0);
constexpr float lowestVelocity = static_cast<float>(1.0 / 127.0);

constexpr ParameterName unnamed{};
constexpr ParameterName ownNumber{Naming::number, {}, ""};

constexpr ParameterName named(const char* text, int number = 0, int second = 0)
{
    return {Naming::text, {static_cast<std::uint8_t>(number), static_cast<std::uint8_t>(second)}, text};
}

constexpr ParameterCoding integerFrom(int low, int high)
{
    return {Coding::integer, static_cast<std::int8_t>(low), static_cast<std::uint8_t>(high)};
}

constexpr ParameterCoding stepsTo(int high)
{
    return {Coding::steps, 0, static_cast<std::uint8_t>(high)};
}

constexpr ParameterCoding midiNumber = integerFrom(0, 127);

/** A parameter that a reset sets to `value`. */
constexpr ParameterInfo withDefault(ParameterName name, float value, ParameterCoding coding,
                                    TextRule text = TextRule::none)
{
    return {name, coding, text, false, value};
}

/** A parameter that a reset leaves as it is, and that starts at 0. */
constexpr ParameterInfo kept(ParameterName name, ParameterCoding coding, TextRule text = TextRule::none)
{
    return {name, coding, text, true, 0.0f};
}

/** The list in the making: rows are entered by slot, runs of alike ones at once. */
struct Draft
{
    Catalogue all{};

    constexpr void put(int slotIndex, const ParameterInfo& info)
    {
        all[static_cast<size_t>(slotIndex)] = info;
    }

    constexpr void putRun(int first, int count, const ParameterInfo& info)
    {
        for (int i = 0; i < count; ++i)
            put(first + i, info);
    }

    /** Without a text: spaces behind an end of text. */
    constexpr void putEmptyText(int first)
    {
        putRun(first, slot::nameTextLength, withDefault(ownNumber, textFiller, {Coding::character}));
        put(first, withDefault(ownNumber, 0.0f, {Coding::character}));
    }
};

constexpr void putGlobals(Draft& draft)
{
    draft.putRun(1, slot::firstLayer - 1, kept(ownNumber, {Coding::unused}));
    draft.put(slot::masterVolume,
              withDefault(named("Master Volume"), unityFader, {Coding::fader}, TextRule::decibels));
    draft.put(slot::view, withDefault(named("View"), 0.3f, stepsTo(10), TextRule::view));
    draft.put(slot::editedOrOriginal,
              withDefault(named("Edited/Original preset"), 0.0f, {Coding::onOff}, TextRule::compared));
    draft.put(slot::masterMute, withDefault(ownNumber, 0.0f, {Coding::onAboveHalf}));
    draft.putRun(firstCategoryParameter, numCategoryParameters, kept(ownNumber, {Coding::categoryBits}));
    draft.putRun(slot::freeControllerBlock, numLayers, withDefault(ownNumber, 1.0f, {Coding::onOff}));
    draft.putEmptyText(slot::presetNameText);
    draft.putEmptyText(slot::folderNameText);
}

/** The 17 slots of an EQ unit. */
constexpr void putEq(Draft& draft, int base)
{
    const auto putSwitch = [&](int offset, ParameterName name)
    { draft.put(base + offset, withDefault(name, 0.0f, {Coding::onOff}, TextRule::onOff)); };
    const auto putFrequency = [&](int offset, ParameterName name, float value)
    { draft.put(base + offset, withDefault(name, value, {Coding::frequency}, TextRule::hertz)); };

    putSwitch(eqSlot::on, named("EQ On / Off"));

    for (int i = 0; i < numEqBands; ++i)
    {
        const int band = eqSlot::bands + eqSlot::slotsPerBand * i;
        putSwitch(band + eqSlot::bandOn, named("EQ Band # On / Off", i + 1));
        putFrequency(band + eqSlot::bandFreq, named("EQ Band # Freq", i + 1),
                     0.25f * static_cast<float>(i + 1));
        draft.put(base + band + eqSlot::bandWidth,
                  withDefault(named("EQ Band # BW", i + 1), 0.2f, {Coding::position}, TextRule::percent));
        draft.put(base + band + eqSlot::bandGain,
                  withDefault(named("EQ Band # Gain", i + 1), 0.5f, integerFrom(-20, 20),
                              TextRule::integerDecibels));
    }

    putSwitch(eqSlot::lowPassOn, named("EQ LP Filter On / Off"));
    putFrequency(eqSlot::lowPassFreq, named("EQ LP Filter Freq"), 1.0f);
    putSwitch(eqSlot::highPassOn, named("EQ HP Filter On / Off"));
    putFrequency(eqSlot::highPassFreq, named("EQ HP Filter Freq"), 0.0f);
}

/** Lower and upper end of a range, of which the lower starts at `low` and the upper at 1. */
constexpr void putRange(Draft& draft, int first, float low, ParameterName lowName, ParameterName highName)
{
    draft.put(first, withDefault(lowName, low, midiNumber));
    draft.put(first + 1, withDefault(highName, 1.0f, midiNumber));
}

/** Keys, velocities and switches of a layer's drum zones. */
constexpr void putZones(Draft& draft)
{
    for (int zone = 0; zone < numZones; ++zone)
    {
        putRange(draft, layerSlot::zoneKeys + 2 * zone, lowestKey, ownNumber, ownNumber);
        putRange(draft, layerSlot::zoneVelocities + 2 * zone, lowestVelocity, ownNumber, ownNumber);
    }

    draft.putRun(layerSlot::zoneOn, numZones, withDefault(ownNumber, 1.0f, {Coding::onOff}));
}

/** What decides which messages reach the hosted instrument. */
constexpr void putMidiFilter(Draft& draft)
{
    constexpr std::array<const char*, 8> blocks{"ProgramChange",     "BankSelect",       "PitchWheel",
                                                "ModWheel",          "AfterTouch",       "Sustain Pedal",
                                                "User Controller 1", "User Controller 2"};
    static_assert(layerSlot::blockProgramChange + static_cast<int>(blocks.size()) - 1 ==
                  layerSlot::blockUserController2);
    int n = layerSlot::blockProgramChange;

    for (const char* name : blocks)
        draft.put(n++, withDefault(named(name), 0.0f, {Coding::onOff}, TextRule::onOff));

    draft.put(layerSlot::midiChannel,
              withDefault(named("Midi Channel"), 0.0f, stepsTo(16), TextRule::midiChannel));
    // Controllers 39 and 42.
    draft.put(layerSlot::userController1,
              withDefault(named("Midi CC 1"), 0.3046875f, stepsTo(numControllers), TextRule::steps));
    draft.put(layerSlot::userController2,
              withDefault(named("Midi CC 2"), 0.328125f, stepsTo(numControllers), TextRule::steps));
    draft.put(layerSlot::drumPage, withDefault(ownNumber, 0.0f, {Coding::position}));
    draft.put(layerSlot::drumMode, withDefault(ownNumber, 0.0f, {Coding::onAtOne}));
    putRange(draft, layerSlot::keyMin, lowestKey, named("Keyboard Range Min"), named("Keyboard Range Max"));
    putRange(draft, layerSlot::velocityMin, lowestVelocity, named("Velocity Range Min"),
             named("Velocity Range Max"));
    draft.put(layerSlot::transpose,
              withDefault(named("Transpose"), 0.5f, integerFrom(-24, 24), TextRule::integer));
}

/** Layer 1, whose slots are the numbers within a layer. */
constexpr void putFirstLayer(Draft& draft)
{
    draft.putRun(slot::firstLayer, slot::layerStride, kept(ownNumber, {Coding::unused}));
    draft.putEmptyText(layerSlot::pluginNameText);
    draft.put(layerSlot::volume,
              withDefault(named("Volume"), unityFader, {Coding::fader}, TextRule::decibels));
    draft.put(layerSlot::pan, withDefault(named("Pan"), 0.5f, {Coding::centred}, TextRule::centred));
    draft.put(layerSlot::solo, withDefault(named("Solo"), 0.0f, {Coding::onOff}, TextRule::onOff));
    draft.put(layerSlot::on, withDefault(named("On/Off"), 1.0f, {Coding::onOff}, TextRule::onOff));
    draft.put(layerSlot::outputs, withDefault(named("Outputs"), 0.0f, {Coding::unused}));

    for (int send = 0; send < numSends; ++send)
    {
        draft.put(layerSlot::sendLevel + send,
                  withDefault(named("FX# Send", send + 1), 0.0f, {Coding::fader}, TextRule::decibels));
        draft.put(layerSlot::sendPreFader + send, withDefault(ownNumber, 0.0f, {Coding::onOff}));
    }

    draft.put(layerSlot::presetNumber, kept(named("Preset Number"), {Coding::position}));
    putMidiFilter(draft);
    putZones(draft);

    for (int easy = 0; easy < numEasyParameters; ++easy)
    {
        draft.put(layerSlot::easyValue + easy,
                  kept({Naming::easyTarget, {}, ""}, {Coding::position}, TextRule::easyTarget));
        draft.put(layerSlot::easyMapping + easy,
                  withDefault(ownNumber, encodeParamInt(easy + 1), {Coding::encodedInteger}));
    }

    putEq(draft, layerSlot::eq);
}

constexpr void putFurtherLayers(Draft& draft)
{
    for (int index = slot::firstLayer + slot::layerStride; index <= slot::lastLayer; ++index)
        draft.put(index, draft.all[static_cast<size_t>(numberInLayer(index))]);
}

constexpr void putEffectBlocks(Draft& draft)
{
    for (int k = 0; k < numFxBlocks; ++k)
    {
        const int number = k + 1;
        // "FX1On / Off" has no blank, and never had.
        draft.put(slot::fxOn + k,
                  withDefault(named("FX#On / Off", number), 0.0f, {Coding::onOff}, TextRule::onOff));
        draft.put(slot::fxType + k, withDefault(named("FX# Type", number), 0.0f, stepsTo(fxTypeCount - 1),
                                                TextRule::effectType));
        draft.put(slot::fxVolume + k, withDefault(named("FX# Volume", number), 0.75f, integerFrom(-60, 20),
                                                  TextRule::integerDecibels));
        draft.put(slot::fxMix + k,
                  withDefault(named("FX# Mix", number), 1.0f, {Coding::position}, TextRule::dryWet));
        draft.put(slot::fxPan + k,
                  withDefault(named("FX# Pan", number), 0.5f, {Coding::position}, TextRule::leftRight));

        for (int j = 0; j < numFxParameters; ++j)
            draft.put(fxParameter(k, j),
                      kept({Naming::effectLabel, {}, ""}, {Coding::position}, TextRule::effect));
    }
}

/** As a layer's, but without names and texts, and a reset leaves the switches of bands and filters alone. */
constexpr void putMasterEq(Draft& draft)
{
    putEq(draft, slot::masterEq);

    for (int index = slot::masterEq; index <= slot::masterEqEnd; ++index)
    {
        auto& info = draft.all[static_cast<size_t>(index)];
        info.name = unnamed;
        info.text = TextRule::none;
        info.isKeptByReset = info.coding.kind == Coding::onOff && index != slot::masterEq + eqSlot::on;
    }
}

/** "Multicontrol 1" and so on, ended by zeros. The last slot of each name is never written. */
constexpr void putMultiName(Draft& draft, int fader)
{
    constexpr char pattern[] = "Multicontrol #";
    const int first = slot::multiName + slot::multiNameLength * fader;
    draft.putRun(first, slot::multiNameLength - 1, withDefault(unnamed, 0.0f, {Coding::character}));
    draft.put(first + slot::multiNameLength - 1, kept(unnamed, {Coding::character}));

    for (int i = 0; pattern[i] != 0; ++i)
    {
        const char character = pattern[i] == '#' ? static_cast<char>('1' + fader) : pattern[i];
        draft.put(first + i, withDefault(unnamed, encodeParamChar(character), {Coding::character}));
    }
}

constexpr void putMultiControls(Draft& draft)
{
    for (int fader = 0; fader < numMultiFaders; ++fader)
    {
        draft.put(slot::multiFader + fader,
                  withDefault(named("Multi Fader #", fader + 1), 0.0f, {Coding::percent}, TextRule::percent));
        putMultiName(draft, fader);
    }

    for (int t = 0; t < numMultiTargets; ++t)
    {
        draft.put(slot::multiKnob + t, withDefault(named("Multi Knob #/#", t / multiTargetsPerFader + 1,
                                                         t % multiTargetsPerFader + 1),
                                                   0.5f, {Coding::centred}, TextRule::centredPercent));
        draft.put(slot::multiAssignment + t, withDefault(unnamed, 0.0f, {Coding::encodedInteger}));
        draft.put(slot::multiHold + t, kept(unnamed, {Coding::onOff}));
        draft.put(slot::multiMemory + t, withDefault(unnamed, 0.5f, {Coding::position}));
    }
}

constexpr Catalogue makeCatalogue()
{
    Draft draft;
    putGlobals(draft);
    putFirstLayer(draft);
    putFurtherLayers(draft);
    draft.putRun(slot::controllerMap, numControllers, kept(unnamed, {Coding::encodedInteger}));
    putEffectBlocks(draft);
    putMasterEq(draft);
    putMultiControls(draft);
    return draft.all;
}

constexpr Catalogue catalogue = makeCatalogue();
} // namespace

const ParameterInfo& parameterInfo(int index) noexcept
{
    return catalogue[static_cast<size_t>(index)];
}

} // namespace quorel
