// SPDX-License-Identifier: GPL-3.0-or-later
#include "FormatHost.h"

#include "adapters/ScratchUser.h"
#include "common/MessagePump.h"

#include <stdexcept>

namespace quorel::test
{

namespace
{
/** What hosts of VST3 keep around a sound that VST2 can read, too: a header of four words, then a bank's. */
constexpr size_t wrappingSize = 16 + 160;

struct HostState : juce::AudioProcessor
{
    using juce::AudioProcessor::copyXmlToBinary;
    using juce::AudioProcessor::getXmlFromBinary;
};

struct FormatOfHost
{
    const char* name;
    const char* place;
    juce::AudioPluginFormat& client;
};

const FormatOfHost& formatOf(Format format)
{
    static juce::VSTPluginFormat vst2;
    static juce::VST3PluginFormat vst3;
#if JUCE_PLUGINHOST_LV2
    static juce::LV2PluginFormat lv2;
#endif
    static const FormatOfHost formats[] = {
        {"VST2", QUOREL_PLUGIN_FILE, vst2},
        {"VST3", QUOREL_VST3_PLUGIN, vst3},
#if JUCE_PLUGINHOST_LV2
        {"LV2", QUOREL_LV2_BUNDLE, lv2}
#endif
    };
    return formats[static_cast<size_t>(format)];
}

juce::AudioPluginInstance& asInstance(juce::AudioProcessor& plugin)
{
    return dynamic_cast<juce::AudioPluginInstance&>(plugin);
}

juce::MemoryBlock stateOf(juce::AudioProcessor& plugin)
{
    juce::MemoryBlock state;
    plugin.getStateInformation(state);
    return state;
}

std::unique_ptr<juce::XmlElement> componentState(juce::AudioProcessor& plugin)
{
    const auto state = stateOf(plugin);
    auto xml = HostState::getXmlFromBinary(state.getData(), static_cast<int>(state.getSize()));

    if (xml == nullptr || xml->getChildByName("IComponent") == nullptr)
        throw std::runtime_error("no state of a component");

    return xml;
}

/** The text between quotes behind the name of the sound in an LV2 state. */
juce::Range<int> soundIn(const juce::String& state)
{
    const int name = state.indexOf("StateString>");
    const int begin = state.indexOfChar(name, '"');
    int from = begin;

    while (state[from] == '"')
        ++from;

    if (name < 0 || begin < 0)
        throw std::runtime_error("no sound in the state");

    return {from, state.indexOfChar(from, '"')};
}
} // namespace

std::vector<Format> allFormats()
{
    auto formats = newerFormats();
    formats.insert(formats.begin(), Format::vst2);
    return formats;
}

std::vector<Format> newerFormats()
{
#if JUCE_PLUGINHOST_LV2
    return {Format::vst3, Format::lv2};
#else
    return {Format::vst3};
#endif
}

std::string nameOf(Format format)
{
    return formatOf(format).name;
}

juce::PluginDescription describe(Format format)
{
    auto& client = formatOf(format).client;
    juce::OwnedArray<juce::PluginDescription> found;
    juce::String place(formatOf(format).place);

    // LV2 plug-ins are named by their addresses.
    if (format == Format::lv2)
        for (const auto& uri : client.searchPathsForPlugins(
                 juce::FileSearchPath(juce::File(place).getParentDirectory().getFullPathName()), false,
                 false))
            if (uri.contains("quorel"))
                place = uri;

    client.findAllTypesForFile(found, place);

    if (found.size() != 1)
        throw std::runtime_error(std::to_string(found.size()) + " plug-ins in " + place.toStdString());

    return *found[0];
}

std::unique_ptr<juce::AudioPluginInstance> load(Format format, double rate, int blockSize)
{
    juce::String error;
    auto plugin =
        formatOf(format).client.createInstanceFromDescription(describe(format), rate, blockSize, error);

    if (plugin == nullptr)
        throw std::runtime_error(error.toStdString());

    plugin->prepareToPlay(rate, blockSize);
    return plugin;
}

juce::MemoryBlock soundOf(Format format, juce::AudioProcessor& plugin)
{
    juce::MemoryBlock sound;

    if (format == Format::vst2)
    {
        constexpr bool ofOneProgram = false;
        juce::VSTPluginFormat::getChunkData(&asInstance(plugin), sound, ofOneProgram);
        return sound;
    }

    if (format == Format::vst3)
    {
        sound.fromBase64Encoding(
            componentState(plugin)->getChildByName("IComponent")->getAllSubText().trim());

        if (sound.getSize() < wrappingSize)
            throw std::runtime_error("a state of VST3 without its wrapping");

        sound.removeSection(0, wrappingSize);
        return sound;
    }

    const auto text = stateOf(plugin).toString();
    const auto range = soundIn(text);
    sound.fromBase64Encoding(text.substring(range.getStart(), range.getEnd()));
    return sound;
}

void restore(Format format, juce::AudioProcessor& plugin, const juce::MemoryBlock& sound)
{
    juce::MemoryBlock state;

    if (format == Format::vst2)
    {
        constexpr bool ofOneProgram = false;
        juce::VSTPluginFormat::setChunkData(&asInstance(plugin), sound.getData(),
                                            static_cast<int>(sound.getSize()), ofOneProgram);
        return;
    }

    if (format == Format::vst3)
    {
        auto xml = componentState(plugin);
        auto* component = xml->getChildByName("IComponent");
        component->deleteAllChildElements();
        component->addTextElement(sound.toBase64Encoding());
        HostState::copyXmlToBinary(*xml, state);
    }
    else
    {
        const auto text = stateOf(plugin).toString();
        const auto range = soundIn(text);
        const auto changed =
            text.substring(0, range.getStart()) + sound.toBase64Encoding() + text.substring(range.getEnd());
        state.append(changed.toRawUTF8(), changed.getNumBytesAsUTF8());
    }

    plugin.setStateInformation(state.getData(), static_cast<int>(state.getSize()));
}

juce::AudioProcessorParameter* parameter(juce::AudioProcessor& plugin, const juce::String& name)
{
    for (auto* p : plugin.getParameters())
        if (p->getName(128) == name)
            return p;

    return nullptr;
}

juce::AudioBuffer<float> playChord(juce::AudioProcessor& plugin)
{
    constexpr int blockSize = 512, numBlocks = 172;
    juce::AudioBuffer<float> all(2, blockSize * numBlocks);
    juce::AudioBuffer<float> block(juce::jmax(plugin.getTotalNumInputChannels(), 2), blockSize);

    for (int i = 0; i < numBlocks; ++i)
    {
        juce::MidiBuffer midi;

        for (const int key : {48, 60, 64, 67})
        {
            if (i == 2)
                midi.addEvent(juce::MidiMessage::noteOn(1, key, juce::uint8{100}), 37);
            if (i == 120)
                midi.addEvent(juce::MidiMessage::noteOff(1, key), 5);
        }

        block.clear();
        plugin.processBlock(block, midi);

        for (int channel = 0; channel < 2; ++channel)
            all.copyFrom(channel, i * blockSize, block, channel, 0, blockSize);
    }

    return all;
}

bool comesToSound(juce::AudioProcessor& plugin)
{
    constexpr int blockSize = 512, patienceMillis = 10000;
    juce::AudioBuffer<float> block(juce::jmax(plugin.getTotalNumInputChannels(), 2), blockSize);
    return pumpUntil(
        [&]
        {
            juce::MidiBuffer midi;
            midi.addEvent(juce::MidiMessage::noteOn(1, 60, juce::uint8{100}), 0);
            block.clear();
            plugin.processBlock(block, midi);
            return block.getMagnitude(0, blockSize) > 0.0f;
        },
        patienceMillis);
}

} // namespace quorel::test
