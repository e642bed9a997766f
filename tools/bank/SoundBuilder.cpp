// SPDX-License-Identifier: GPL-3.0-or-later
#include "SoundBuilder.h"

#include "ParameterWords.h"

#include "common/MessagePump.h"
#include "effects/FxTypes.h"
#include "hosting/HostedParameters.h"
#include "hosting/InstrumentTable.h"
#include "parameters/Categories.h"
#include "parameters/ParameterCodings.h"
#include "parameters/ParameterText.h"

#include <algorithm>
#include <cmath>

namespace quorel
{

namespace
{
constexpr int loadTimeoutMillis = 30000;
constexpr int settleMillis = 20;
constexpr int longestMultiName = 23;
constexpr int numSteps = 16;

[[noreturn]] void fail(const TextLine& line, const juce::String& message)
{
    throw TextError(line.number, message);
}

[[noreturn]] void failUnknown(const TextLine& line)
{
    fail(line, "unknown: \"" + line.key + "\"");
}

template <typename Value>
Value need(const std::optional<Value>& value, const TextLine& line, const char* expected)
{
    if (!value)
        fail(line, line.key + " takes " + expected + ", not \"" + line.value + "\"");
    return *value;
}

/** 0 to `count` - 1 for "Prefix 1" and so on, else -1. */
int numberedFrom(const juce::String& text, const juce::String& prefix, int count)
{
    if (!text.startsWithIgnoreCase(prefix + " "))
        return -1;
    const auto digits = text.substring(prefix.length() + 1).trim();
    const int number = digits.length() <= 2 && digits.containsOnly("0123456789") ? digits.getIntValue() : 0;
    return number <= count ? number - 1 : -1;
}

juce::StringArray listOf(const juce::String& text)
{
    auto parts = juce::StringArray::fromTokens(text, ",", {});
    parts.trim();
    return parts;
}

bool is(const TextLine& line, const char* key)
{
    return line.key.equalsIgnoreCase(key);
}

std::optional<int> velocityNumber(const juce::String& text)
{
    const auto number = numberOf(text);
    return number && *number >= 0.0 && *number <= 127.0 ? std::optional<int>(static_cast<int>(*number))
                                                        : std::nullopt;
}

std::optional<float> channelValue(const juce::String& text)
{
    const auto number = numberOf(text);
    if (!number || *number < 0.0 || *number > 16.0 || *number != std::floor(*number))
        return {};
    return static_cast<float>(*number / 16.0);
}

/** Sixteen steps, "x" for open and "-" for shut, as the Kappel keeps them: the first step in the lowest bit.
 */
std::optional<float> stepPattern(const juce::String& text)
{
    const auto steps = text.removeCharacters(" ");
    if (steps.length() != numSteps || !steps.containsOnly("xX-"))
        return {};
    int mask = 0;
    for (int i = 0; i < numSteps; ++i)
        mask |= steps[i] == '-' ? 0 : 1 << i;
    return static_cast<float>((static_cast<double>(mask) + 0.5) / 65535.9);
}

juce::String bankWithoutEnding(const juce::String& bank)
{
    return bank.upToLastOccurrenceOf(".fxb", false, true);
}
} // namespace

SoundBuilder::SoundBuilder(PluginProcessor& processorIn)
    : processor(processorIn)
{
}

void SoundBuilder::build(const std::vector<TextSection>& text)
{
    loadInstruments(text);

    for (const auto& section : text)
        if (const int layer = numberedFrom(section.name, "Layer", numLayers); layer >= 0)
            chooseSounds(layer, section);

    for (const auto& section : text)
    {
        if (const int layer = numberedFrom(section.name, "Layer", numLayers); layer >= 0)
        {
            for (const auto& line : section.lines)
                setLayer(layer, line);
        }
        else if (const int block = numberedFrom(section.name, "Effect", numFxBlocks); block >= 0)
        {
            setEffect(block, section);
        }
        else if (section.name.equalsIgnoreCase("Master"))
        {
            for (const auto& line : section.lines)
                setMaster(line);
        }
        else if (section.name.isEmpty())
        {
            for (const auto& line : section.lines)
                setCategories(line);
        }
        else if (numberedFrom(section.name, "Multi-control", numMultiFaders) < 0)
        {
            throw TextError(section.number, "unknown section [" + section.name + "]");
        }
    }

    // Last, for a target's base is where it stands when its knob is assigned.
    settle();
    for (const auto& section : text)
        if (const int group = numberedFrom(section.name, "Multi-control", numMultiFaders); group >= 0)
            setMultiControl(group, section);
    settle();
}

//==============================================================================================================
// Instruments and their sounds

void SoundBuilder::loadInstruments(const std::vector<Section>& text)
{
    const auto types = processor.getKnownPlugins().getTypes();
    std::array<const TextLine*, numLayers> wanted{};
    for (const auto& section : text)
    {
        const int layer = numberedFrom(section.name, "Layer", numLayers);
        if (layer < 0)
            continue;
        if (section.lines.empty() || !is(section.lines.front(), "Instrument"))
            throw TextError(section.number, "a layer starts with its Instrument");
        const auto& line = section.lines.front();
        const auto* found =
            std::find_if(types.begin(), types.end(),
                         [&](const auto& type) { return type.name.equalsIgnoreCase(line.value); });
        if (found == types.end())
            fail(line, "no instrument \"" + line.value + "\"");
        processor.chooseInstrument(layer, found);
        wanted[static_cast<std::size_t>(layer)] = &line;
    }

    for (int layer = 0; layer < numLayers; ++layer)
    {
        const auto* line = wanted[static_cast<std::size_t>(layer)];
        if (line == nullptr)
            continue;
        auto& slot = processor.getLayer(layer);
        pumpUntil([&] { return slot.hasInstance() || slot.isMissing(); }, loadTimeoutMillis);
        if (!slot.hasInstance())
            fail(*line, line->value + " does not load");
    }
    settle();
}

void SoundBuilder::chooseSounds(int layer, const Section& section)
{
    // In this order, whatever the text's: a program replaces all parameters, and a mapping reads one.
    for (const auto& line : section.lines)
    {
        if (!is(line, "Program"))
            continue;
        if (!line.value.contains(" / "))
            fail(line, "a program is given as Bank / Program");
        chooseBank(layer, line.value.upToFirstOccurrenceOf(" / ", false, false).trim(), line);
        chooseProgram(layer, line.value.fromFirstOccurrenceOf(" / ", false, false).trim(), line);
    }
    for (const auto& line : section.lines)
        if (line.key.startsWithIgnoreCase("Parameter "))
            setHosted(layer, line);
    for (const auto& line : section.lines)
        if (numberedFrom(line.key, "Easy", numEasyParameters) >= 0)
            mapEasy(layer, line);
    // A mapping written anew takes its value from the instrument.
    for (int easy = 0; easy < numEasyParameters; ++easy)
    {
        const int mapping = layerParameter(layer, layerSlot::easyMapping + easy);
        set(mapping, processor.getParameter(mapping));
    }
}

void SoundBuilder::chooseBank(int layer, const juce::String& bank, const TextLine& line)
{
    auto& slot = processor.getLayer(layer);
    if (slot.getBankName() == bank)
        return;
    juce::StringArray names;
    for (const auto& name : slot.getBankNames())
        names.add(bankWithoutEnding(name));
    const int index = names.indexOf(bank);
    if (index < 0)
        fail(line,
             slot.getPluginName() + " has no bank \"" + bank + "\": there are " + names.joinIntoString(", "));
    slot.chooseBank(index + 1);
    settle();
    if (slot.getBankName() != bank)
        fail(line, slot.getPluginName() + " does not take the bank \"" + bank + "\"");
}

void SoundBuilder::chooseProgram(int layer, const juce::String& program, const TextLine& line)
{
    auto& slot = processor.getLayer(layer);
    const auto* row = findInstrument(slot.getPluginName());
    juce::StringArray names;
    if (row != nullptr && row->programsByMidi)
    {
        slot.readProgramNames(slot.getBankName());
        names = slot.getProgramNames();
    }
    else
    {
        const InstanceAccess::Use plugin(slot.instanceAccess());
        for (int i = 0; plugin && i < plugin->getNumPrograms(); ++i)
            names.add(plugin->getProgramName(i));
    }
    const int index = names.indexOf(program);
    if (index < 0)
        fail(line, "the bank has no program \"" + program + "\": there are " + names.joinIntoString(", "));
    slot.chooseProgram(index + 1);
    settle();

    const InstanceAccess::Use plugin(slot.instanceAccess());
    if (!plugin || plugin->getProgramName(plugin->getCurrentProgram()) != program)
        fail(line, slot.getPluginName() + " does not take the program \"" + program + "\"");
}

int SoundBuilder::hostedParameterCalled(int layer, const juce::String& name, const TextLine& line)
{
    auto& slot = processor.getLayer(layer);
    const int index = slot.getParameterNames().indexOf(name, true);
    // The first parameter of an instrument can't be mapped.
    if (index <= 0)
        fail(line, slot.getPluginName() + " has no parameter \"" + name + "\"");
    return index;
}

void SoundBuilder::setHosted(int layer, const TextLine& line)
{
    const int index = hostedParameterCalled(layer, line.key.fromFirstOccurrenceOf(" ", false, false), line);
    const float value = need(percentValue(line.value), line, "0 to 100 %");
    const InstanceAccess::Use plugin(processor.getLayer(layer).instanceAccess());
    if (plugin)
        setHostedParameter(*plugin.get(), index, value);
}

void SoundBuilder::mapEasy(int layer, const TextLine& line)
{
    const int easy = numberedFrom(line.key, "Easy", numEasyParameters);
    const int target =
        line.value.equalsIgnoreCase("none") ? 0 : hostedParameterCalled(layer, line.value, line);
    set(layerParameter(layer, layerSlot::easyMapping + easy), encodeParamInt(target));
}

//==============================================================================================================
// Layers

void SoundBuilder::setLayer(int layer, const TextLine& line)
{
    const bool isDone = is(line, "Instrument") || is(line, "Program") ||
                        line.key.startsWithIgnoreCase("Parameter ") ||
                        numberedFrom(line.key, "Easy", numEasyParameters) >= 0;
    if (isDone || setLayerRange(layer, line) || setLayerMix(layer, line) || setEq(layer, line))
        return;

    const auto name = "Layer" + juce::String(layer + 1) + " " + line.key;
    for (int n = layerSlot::volume; n <= layerSlot::eqEnd; ++n)
    {
        const int index = layerParameter(layer, n);
        if (processor.getParameterName(index).equalsIgnoreCase(name))
        {
            setShowing(index, line.value, line);
            return;
        }
    }
    failUnknown(line);
}

bool SoundBuilder::setLayerRange(int layer, const TextLine& line)
{
    const auto setRange = [&](int n, std::pair<int, int> range)
    {
        set(layerParameter(layer, n), stepValue(range.first, 0, 127));
        set(layerParameter(layer, n + 1), stepValue(range.second, 0, 127));
    };
    if (is(line, "Keys"))
        setRange(layerSlot::keyMin, need(rangeOf(line.value, keyNumber), line, "keys such as C1 - B3"));
    else if (is(line, "Velocity"))
        setRange(layerSlot::velocityMin,
                 need(rangeOf(line.value, velocityNumber), line, "velocities such as 1 - 90"));
    else if (numberedFrom(line.key, "Zone", numZones) >= 0)
        setZone(layer, line);
    else
        return false;
    return true;
}

void SoundBuilder::setZone(int layer, const TextLine& line)
{
    const int zone = numberedFrom(line.key, "Zone", numZones);
    if (line.value.equalsIgnoreCase("off"))
    {
        set(layerParameter(layer, layerSlot::zoneOn + zone), 0.0f);
        return;
    }
    const auto parts = listOf(line.value);
    const char* expected = "keys, and velocities behind a comma, such as C1, 1 - 90, or off";
    const auto keys = need(rangeOf(parts[0], keyNumber), line, expected);
    const auto velocities = need(parts.size() == 1   ? std::optional<std::pair<int, int>>({1, 127})
                                 : parts.size() == 2 ? rangeOf(parts[1], velocityNumber)
                                                     : std::nullopt,
                                 line, expected);
    const int firstKey = layerSlot::zoneKeys + 2 * zone;
    const int firstVelocity = layerSlot::zoneVelocities + 2 * zone;
    set(layerParameter(layer, firstKey), stepValue(keys.first, 0, 127));
    set(layerParameter(layer, firstKey + 1), stepValue(keys.second, 0, 127));
    set(layerParameter(layer, firstVelocity), stepValue(velocities.first, 0, 127));
    set(layerParameter(layer, firstVelocity + 1), stepValue(velocities.second, 0, 127));
}

bool SoundBuilder::setLayerMix(int layer, const TextLine& line)
{
    if (is(line, "Volume"))
        set(layerParameter(layer, layerSlot::volume),
            need(faderValue(line.value), line, "dB up to +12, or off"));
    else if (is(line, "Pan"))
        set(layerParameter(layer, layerSlot::pan), need(centredValue(line.value), line, "-100 to +100"));
    else if (is(line, "Block"))
        setBlocks(layer, line);
    else if (is(line, "Midi Channel"))
        set(layerParameter(layer, layerSlot::midiChannel),
            need(channelValue(line.value), line, "1 to 16, or 0 for all"));
    else if (numberedFrom(line.key, "Send", numSends) >= 0)
        setSend(layer, line);
    else
        return false;
    return true;
}

void SoundBuilder::setSend(int layer, const TextLine& line)
{
    const int send = numberedFrom(line.key, "Send", numSends);
    const bool preFader = line.value.endsWithIgnoreCase(" pre");
    const auto level = preFader ? percentValue(line.value.dropLastCharacters(4)) : faderValue(line.value);
    set(layerParameter(layer, layerSlot::sendPreFader + send), preFader ? 1.0f : 0.0f);
    set(layerParameter(layer, layerSlot::sendLevel + send),
        need(level, line, "dB such as -6 db, or 50 % pre"));
}

void SoundBuilder::setBlocks(int layer, const TextLine& line)
{
    for (const auto& name : listOf(line.value))
    {
        int found = 0;
        for (int n = layerSlot::blockProgramChange; n <= layerSlot::blockUserController2 && found == 0; ++n)
            if (processor.getParameterName(layerParameter(layer, n))
                    .fromFirstOccurrenceOf(" ", false, false) == name)
                found = n;
        if (found == 0)
            fail(line, "there is no switch \"" + name + "\" that blocks MIDI");
        set(layerParameter(layer, found), 1.0f);
    }
}

//==============================================================================================================
// EQ, effects, master

bool SoundBuilder::setEq(int unit, const TextLine& line)
{
    // The master's slots show nothing: layer 1's of the same meaning do.
    const auto setFrom = [&](int offset, const juce::String& wanted)
    {
        const int shown = eqBase(0) + offset;
        const auto value = valueShowing(wanted, [&](float v) { return shownAt(shown, v); });
        set(eqBase(unit) + offset, need(value, line, "frequency, and for a band gain and width"));
    };
    const int band = numberedFrom(line.key, "EQ Band", numEqBands);
    if (band >= 0)
    {
        const auto parts = listOf(line.value);
        if (parts.size() != 3)
            fail(line, line.key + " takes frequency, gain and width, such as 250 hz, +3 db, 40 %");
        const int first = eqSlot::bands + eqSlot::slotsPerBand * band;
        set(eqBase(unit) + first + eqSlot::bandOn, 1.0f);
        setFrom(first + eqSlot::bandFreq, parts[0]);
        setFrom(first + eqSlot::bandGain, parts[1]);
        setFrom(first + eqSlot::bandWidth, parts[2]);
    }
    else if (is(line, "EQ Low-pass"))
    {
        set(eqBase(unit) + eqSlot::lowPassOn, 1.0f);
        setFrom(eqSlot::lowPassFreq, line.value);
    }
    else if (is(line, "EQ High-pass"))
    {
        set(eqBase(unit) + eqSlot::highPassOn, 1.0f);
        setFrom(eqSlot::highPassFreq, line.value);
    }
    else
    {
        return false;
    }
    set(eqBase(unit) + eqSlot::on, 1.0f);
    return true;
}

void SoundBuilder::setEffect(int block, const Section& section)
{
    if (section.lines.empty() || !is(section.lines.front(), "Type"))
        throw TextError(section.number, "an effect starts with its Type");
    const auto& typeLine = section.lines.front();
    int type = 0;
    while (type < fxTypeCount &&
           !typeLine.value.equalsIgnoreCase(fxTypes[static_cast<std::size_t>(type)].name))
        ++type;
    if (type == fxTypeCount)
        fail(typeLine, "no effect \"" + typeLine.value + "\"");
    set(slot::fxOn + block, 1.0f);
    set(slot::fxType + block, stepValue(type, 0, fxTypeCount - 1));

    const auto& labels = fxTypes[static_cast<std::size_t>(type)].labels;
    for (int j = 0; j < numFxParameters; ++j)
    {
        const int index = fxParameter(block, j);
        const bool isLowPass = juce::String(labels[static_cast<std::size_t>(j)]) == "LP Filter";
        set(index, isLowPass ? 1.0f : restingValue([&](float v) { return shownAt(index, v); }));
    }

    // A length or speed reads as notes where the block is synced, and AutoPan takes its amount for that.
    const auto decides = [](const TextLine& line) { return is(line, "Sync") || is(line, "Amount"); };
    for (const bool deciding : {true, false})
        for (std::size_t i = 1; i < section.lines.size(); ++i)
            if (decides(section.lines[i]) == deciding)
                setEffectParameter(block, type, section.lines[i]);
}

void SoundBuilder::setEffectParameter(int block, int type, const TextLine& line)
{
    constexpr int kappelLeftSteps = 5;
    constexpr int kappelRightSteps = 6;
    const auto& row = fxTypes[static_cast<std::size_t>(type)];
    const bool isKappel = juce::String(row.name) == "Kappel";

    if (is(line, "Mix"))
        return set(slot::fxMix + block, need(percentValue(line.value), line, "0 to 100 %"));
    if (is(line, "Level"))
        return set(slot::fxVolume + block, need(effectLevelValue(line.value), line, "-60 to +20 db"));
    if (is(line, "Balance"))
        return set(slot::fxPan + block, need(centredValue(line.value), line, "-100 to +100"));
    if (isKappel && (is(line, "Left Steps") || is(line, "Right Steps")))
        return set(fxParameter(block, is(line, "Left Steps") ? kappelLeftSteps : kappelRightSteps),
                   need(stepPattern(line.value), line, "sixteen steps such as x--- x--- x--- x-x-"));
    for (int j = 0; j < numFxParameters; ++j)
        if (const auto* label = row.labels[static_cast<std::size_t>(j)]; *label != 0 && is(line, label))
            return setShowing(fxParameter(block, j), line.value, line);
    fail(line, juce::String(row.name) + " has no \"" + line.key + "\"");
}

void SoundBuilder::setMaster(const TextLine& line)
{
    if (is(line, "Volume"))
        set(slot::masterVolume, need(faderValue(line.value), line, "dB up to +12, or off"));
    else if (!setEq(masterEqUnit, line))
        failUnknown(line);
}

//==============================================================================================================
// Multi-controls and categories

void SoundBuilder::setMultiControl(int group, const Section& section)
{
    for (const auto& line : section.lines)
        if (const int knob = numberedFrom(line.key, "Knob", 4); knob >= 0)
            setKnob(4 * group + knob, line);

    for (const auto& line : section.lines)
    {
        if (numberedFrom(line.key, "Knob", 4) >= 0)
            continue;
        if (is(line, "Name"))
        {
            if (line.value.length() > longestMultiName ||
                line.value.getNumBytesAsUTF8() != static_cast<std::size_t>(line.value.length()))
                fail(line, "a name has at most 23 plain letters");
            writeParamText(processor, slot::multiName + slot::multiNameLength * group, line.value,
                           slot::multiNameLength - 1);
        }
        else if (is(line, "Position"))
        {
            set(slot::multiFader + group, need(percentValue(line.value), line, "0 to 100 %"));
        }
        else
        {
            failUnknown(line);
        }
    }
}

void SoundBuilder::setKnob(int target, const TextLine& line)
{
    const auto parts = listOf(line.value);
    const auto words = parts[0];
    const int layer = numberedFrom(words.substring(0, 7), "Layer", numLayers);
    const auto what = words.substring(7).trim();
    const int send = numberedFrom(what, "Send", numSends);
    const int easy = numberedFrom(what, "Easy", numEasyParameters);
    const int n = what.equalsIgnoreCase("Volume") ? layerSlot::volume
                  : what.equalsIgnoreCase("Pan")  ? layerSlot::pan
                  : send >= 0                     ? layerSlot::sendLevel + send
                  : easy >= 0                     ? layerSlot::easyValue + easy
                                                  : 0;
    const auto depth = parts.size() == 2 ? centredValue(parts[1]) : std::nullopt;
    if (layer < 0 || n == 0 || !depth)
        fail(line, line.key + " takes a target and a depth, such as Layer 2 Easy 3, +50 %");
    if (!processor.getLayer(layer).hasInstance())
        fail(line, "layer " + juce::String(layer + 1) + " has no instrument");

    for (int number = 1; number <= MultiControls::numTargets; ++number)
        if (MultiControls::parameterOfListNumber(number) == layerParameter(layer, n))
            set(slot::multiAssignment + target, encodeParamInt(number));
    set(slot::multiKnob + target, *depth);
}

void SoundBuilder::setCategories(const TextLine& line)
{
    if (!is(line, "Categories"))
        failUnknown(line);
    for (const auto& name : listOf(line.value))
    {
        const auto flag = findCategory(name);
        if (!flag)
            fail(line, "no category \"" + name + "\"");
        const int index = categoryParameter(*flag);
        set(index, withCategory(processor.getParameter(index), *flag, true));
    }
}

//==============================================================================================================

void SoundBuilder::setShowing(int index, const juce::String& wanted, const TextLine& line)
{
    // Some show nothing that could be searched for.
    const bool showsNothing = shownAt(index, 0.0f) == shownAt(index, 1.0f);
    const auto value = showsNothing ? percentValue(wanted)
                                    : valueShowing(wanted, [&](float v) { return shownAt(index, v); });
    if (!value)
        fail(line, line.key + " shows values from \"" + shownAt(index, 0.0f) + "\" to \"" +
                       shownAt(index, 1.0f) + "\", and never \"" + wanted + "\"");
    set(index, *value);
}

juce::String SoundBuilder::shownAt(int index, float value)
{
    ParameterTextSources sources;
    sources.value = [&](int i) { return i == index ? value : processor.getParameter(i); };
    sources.easyText = [](int, int) { return juce::String(); };
    return parameterText(index, sources);
}

void SoundBuilder::settle()
{
    juce::AudioBuffer<float> buffer(2, processor.getBlockSize());
    juce::MidiBuffer midi;
    for (int i = 0; i < 2; ++i)
    {
        processor.processBlock(buffer, midi);
        pumpUntil([] { return false; }, settleMillis);
    }
}

} // namespace quorel
