// SPDX-License-Identifier: GPL-3.0-or-later
// The VST2 shell of an instrument.
#include "Instrument.h"
#include "PlatformFiles.h"

#include <pluginterfaces/vst2.x/aeffectx.h>

#include <cstring>
#include <new>
#include <optional>

namespace quorel
{

namespace
{

constexpr int vendorVersion = 1000;

struct Plugin
{
    Plugin(audioMasterCallback hostCallback, const std::string& name)
        : host(hostCallback)
        , instrument(name)
    {
    }

    AEffect effect{};
    audioMasterCallback host;
    Instrument instrument;
    Bytes chunk; ///< what the host reads after effGetChunk
};

Plugin& pluginOf(AEffect* effect)
{
    return *static_cast<Plugin*>(effect->object);
}

/** Copies text, terminated, into a host's buffer of `size` bytes. */
void giveText(void* target, const std::string& text, std::size_t size)
{
    if (target == nullptr)
        return;
    auto* out = static_cast<char*>(target);
    setText(out, size - 1, text);
    out[size - 1] = '\0';
}

/** Called where hosts poll from their message thread: only there may they be told of changes made by MIDI. */
void tellOfChanges(Plugin& plugin)
{
    if (plugin.instrument.takeDisplayChange() && plugin.host != nullptr)
        plugin.host(&plugin.effect, audioMasterUpdateDisplay, 0, 0, nullptr, 0.0f);
}

void queueEvents(Plugin& plugin, const VstEvents* events)
{
    for (int i = 0; events != nullptr && i < events->numEvents; ++i)
    {
        const auto* event = events->events[i];
        if (event == nullptr || event->type != kVstMidiType)
            continue;
        const auto* midi = reinterpret_cast<const VstMidiEvent*>(event);
        plugin.instrument.queueMidi(midi->deltaFrames, midi->midiData);
    }
}

t_fstPtrInt answerCanDo(const char* what)
{
    for (const char* known : {"receiveVstEvents", "receiveVstMidiEvent"})
    {
        if (what != nullptr && std::strcmp(what, known) == 0)
            return 1;
    }
    return -1;
}

/** What the host asks: the arguments of the dispatcher. */
struct Call
{
    int opcode;
    int index;
    t_fstPtrInt value;
    void* data;
    float option;
};

/** What a group of opcodes answers; none for an opcode outside the group. */
using Answer = std::optional<t_fstPtrInt>;

Answer answerLifeAndSound(Plugin& plugin, const Call& call)
{
    auto& instrument = plugin.instrument;
    switch (call.opcode)
    {
    case effOpen:
        instrument.open();
        return 0;
    case effClose:
        delete &plugin;
        return 0;
    case effSetSampleRate:
        instrument.prepare(static_cast<double>(call.option));
        return 0;
    case effMainsChanged:
        instrument.silence();
        return 0;
    case effProcessEvents:
        queueEvents(plugin, static_cast<const VstEvents*>(call.data));
        return 1;
    case effEditIdle:
    case effIdle:
        tellOfChanges(plugin);
        return 0;
    default:
        return {};
    }
}

Answer answerPrograms(Plugin& plugin, const Call& call)
{
    constexpr std::size_t programText = programNameSize + 1;
    auto& instrument = plugin.instrument;
    switch (call.opcode)
    {
    case effSetProgram:
        instrument.selectProgram(static_cast<int>(call.value));
        return 0;
    case effGetProgram:
        return instrument.currentProgram();
    case effSetProgramName:
        if (call.data != nullptr)
            instrument.renameProgram(std::string(static_cast<const char*>(call.data)));
        return 0;
    case effGetProgramName:
        giveText(call.data, instrument.programName(instrument.currentProgram()), programText);
        tellOfChanges(plugin);
        return 0;
    case effGetProgramNameIndexed:
        if (call.index < 0 || call.index >= instrument.numPrograms())
            return 0;
        giveText(call.data, instrument.programName(call.index), programText);
        tellOfChanges(plugin);
        return 1;
    default:
        return {};
    }
}

Answer answerParameters(Plugin& plugin, const Call& call)
{
    constexpr std::size_t shortText = 8, nameText = 24;
    const auto& instrument = plugin.instrument;
    switch (call.opcode)
    {
    case effGetParamLabel:
        giveText(call.data, instrument.parameterUnit(call.index), shortText);
        return 0;
    case effGetParamDisplay:
        giveText(call.data, instrument.parameterText(call.index), shortText);
        return 0;
    case effGetParamName:
        giveText(call.data, instrument.parameterName(call.index), nameText);
        return 0;
    case effCanBeAutomated:
        return liveParameterAt(instrument.info(), call.index) >= 0 ? 1 : 0;
    default:
        return {};
    }
}

Answer answerState(Plugin& plugin, const Call& call)
{
    const bool programOnly = call.index == 1;
    switch (call.opcode)
    {
    case effIdentify:
        return 0x4e764566; // "NvEf", what VST2 expects here
    case effGetChunk:
        if (call.data == nullptr)
            return 0;
        plugin.chunk = plugin.instrument.state(programOnly);
        *static_cast<void**>(call.data) = plugin.chunk.data();
        return static_cast<t_fstPtrInt>(plugin.chunk.size());
    case effSetChunk:
        if (call.data == nullptr || call.value <= 0)
            return 0;
        return plugin.instrument.setState(static_cast<const std::uint8_t*>(call.data),
                                          static_cast<std::size_t>(call.value), programOnly)
                   ? 1
                   : 0;
    default:
        return {};
    }
}

t_fstPtrInt describeOutput(int index, void* data)
{
    if (index < 0 || index > 1 || data == nullptr)
        return 0;
    auto& pin = *static_cast<VstPinProperties*>(data);
    pin = {};
    giveText(pin.label, index == 0 ? "Left" : "Right", sizeof(pin.label));
    giveText(pin.shortLabel, index == 0 ? "L" : "R", sizeof(pin.shortLabel));
    pin.flags = 3; // active, first of a stereo pair
    pin.arrangementType = kSpeakerArrStereo;
    return 1;
}

Answer answerIdentity(Plugin& plugin, const Call& call)
{
    constexpr std::size_t nameText = 64;
    switch (call.opcode)
    {
    case effGetOutputProperties:
        return describeOutput(call.index, call.data);
    case effGetPlugCategory:
        return kPlugCategSynth;
    case effGetEffectName:
    case effGetProductString:
        giveText(call.data, plugin.instrument.name(), nameText);
        return 1;
    case effGetVendorString:
        giveText(call.data, "Ostrand", nameText);
        return 1;
    case effGetVendorVersion:
        return vendorVersion;
    case effCanDo:
        return answerCanDo(static_cast<const char*>(call.data));
    case effGetVstVersion:
        return kVstVersion;
    default:
        return {};
    }
}

t_fstPtrInt dispatchUnguarded(Plugin& plugin, const Call& call)
{
    for (auto* group : {answerLifeAndSound, answerPrograms, answerParameters, answerState, answerIdentity})
    {
        // After effClose the plug-in is gone.
        if (const auto answer = group(plugin, call))
            return *answer;
    }
    return 0;
}

/** No exception (out of memory, a file system's) may reach the host. */
t_fstPtrInt dispatch(AEffect* effect, int opcode, int index, t_fstPtrInt value, void* const data,
                     float option)
{
    if (effect == nullptr || effect->object == nullptr)
        return 0;
    try
    {
        return dispatchUnguarded(pluginOf(effect), {opcode, index, value, data, option});
    }
    catch (const std::exception&)
    {
        return 0;
    }
}

void processBlock(AEffect* effect, float** outputs, int frames, bool add)
{
    if (outputs != nullptr && frames > 0)
        pluginOf(effect).instrument.process(outputs[0], outputs[1], frames, add);
}

void processReplacing(AEffect* effect, float**, float** outputs, int frames)
{
    processBlock(effect, outputs, frames, false);
}

void processAccumulating(AEffect* effect, float**, float** outputs, int frames)
{
    processBlock(effect, outputs, frames, true);
}

void setParameter(AEffect* effect, int index, float value)
{
    pluginOf(effect).instrument.setParameter(index, value);
}

float getParameter(AEffect* effect, int index)
{
    return pluginOf(effect).instrument.parameter(index);
}

AEffect* makePlugin(audioMasterCallback host)
{
    auto* plugin = new Plugin(host, ownFileName());
    auto& effect = plugin->effect;
    const auto& instrument = plugin->instrument;
    effect.magic = kEffectMagic;
    effect.dispatcher = dispatch;
    effect.process = processAccumulating;
    effect.processReplacing = processReplacing;
    effect.setParameter = setParameter;
    effect.getParameter = getParameter;
    effect.numPrograms = instrument.numPrograms();
    effect.numParams = instrument.info().parametersPerProgram;
    effect.numInputs = 0;
    effect.numOutputs = 2;
    effect.flags = effFlagsCanReplacing | effFlagsProgramChunks | effFlagsIsSynth;
    effect.object = plugin;
    effect.uniqueID = uniqueIdOf(instrument.name());
    effect.version = vendorVersion;
    return &effect;
}

} // namespace

} // namespace quorel

OSTRAND_EXPORT AEffect* VSTPluginMain(audioMasterCallback host)
{
    if (host == nullptr || host(nullptr, audioMasterVersion, 0, 0, nullptr, 0.0f) == 0)
        return nullptr;
    try
    {
        return quorel::makePlugin(host);
    }
    catch (const std::exception&)
    {
        return nullptr;
    }
}
