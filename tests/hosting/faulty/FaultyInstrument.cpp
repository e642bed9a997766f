// SPDX-License-Identifier: GPL-3.0-or-later
// A VST2 instrument with the faults that a text file beside it names, "<name>.faults" beside "<name>.so".
// Without any it plays a constant level of 0.25 while a key is down, times its parameter 1, and keeps its state.
// A file that changes while it is loaded counts from the next call.
//
//   throw-entry, throw-open, throw-chunk, throw-process, throw-set, throw-idle, throw-close
//   abort-entry, abort-open     ends the process
//   slow-prepare, slow-chunk    takes 300 ms
//   big-chunk, growing-chunk    200 MB; 1000 bytes more at each call
//   no-chunk                    says that it has no bytes
//   nan, huge, channels         what it puts out: no number, +80 dB, or another level on each of 32 outputs
//   empty-names, hundred-programs, window
//   no-process                  lacks what plays
//   far-program                 is without chunks, and says that its program is the 1000th of one
//   more-outputs, most-outputs  has 48 or 400 of them once it is switched on
//   size-in-block, size-in-idle asks for a window of 100000 pixels
//   idle-in-set                 gives its host time in the midst of a call
//
// Parameter names tell what its host did: 0 the rate and block size, 2 the count of program changes by MIDI,
// 3 the tempo at the last block; and 77 to 79 the vendor, product and version that it gives itself.
#include "support/HostSeam.h"

#include "pluginterfaces/vst2.x/aeffectx.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <limits>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace
{
constexpr int numParameters = 80;
constexpr int firstHostAnswer = 77;
constexpr int manyOutputs = 32;

std::set<std::string> faults()
{
    std::ifstream file(
        quorel::test::libraryOf(reinterpret_cast<const void*>(&faults)).replace_extension(".faults"));
    std::set<std::string> words;
    std::string word;

    while (file >> word)
        words.insert(word);

    return words;
}

bool has(const char* fault)
{
    return faults().count(fault) != 0;
}

void failIf(const std::string& call)
{
    if (has(("slow-" + call).c_str()))
        std::this_thread::sleep_for(std::chrono::milliseconds(300));

    if (has(("throw-" + call).c_str()))
        throw std::runtime_error("in " + call);

    if (has(("abort-" + call).c_str()))
        std::abort();
}

struct State
{
    float values[numParameters];
    int program;
};

struct Instrument
{
    AEffect effect{};
    audioMasterCallback host = nullptr;
    State state{};
    char hostAnswers[numParameters - firstHostAnswer][256]{};
    std::vector<char> chunk;
    int chunkCalls = 0;
    float rate = 0.0f;
    int blockSize = 0;
    std::atomic<int> programChanges{0};
    std::atomic<int> tempo{0};
    int keysDown = 0;
    ERect rect{0, 0, 100, 200};
    // What a block needs, so that it reads no file.
    bool isNan = false;
    bool isHuge = false;
    bool hasChannels = false;
    bool asksInProcess = false;
    std::atomic<bool> throwsInProcess{false};
    std::atomic<float> level{1.0f};
};

Instrument& instrumentOf(AEffect* effect)
{
    return *static_cast<Instrument*>(effect->object);
}

VstIntPtr getChunk(Instrument& self, void** data)
{
    constexpr size_t bigChunk = 200u * 1024 * 1024;
    failIf("chunk");

    if (has("no-chunk"))
        return 0;

    const size_t growth = has("growing-chunk") ? 1000u * static_cast<size_t>(self.chunkCalls++) : 0u;
    self.chunk.assign(has("big-chunk") ? bigChunk : sizeof(State) + growth, 0);
    std::memcpy(self.chunk.data(), &self.state, sizeof(State));
    *data = self.chunk.data();
    return static_cast<VstIntPtr>(self.chunk.size());
}

void takeEvents(Instrument& self, const VstEvents& events)
{
    for (int i = 0; i < events.numEvents; ++i)
    {
        const auto& event = *reinterpret_cast<const VstMidiEvent*>(events.events[i]);
        const int status = event.midiData[0] & 0xf0;
        self.programChanges += status == 0xc0 ? 1 : 0;

        if (status == 0x90)
            ++self.keysDown;
        else if (status == 0x80)
            self.keysDown = 0;
    }
}

void writeName(const Instrument& self, int index, char* name)
{
    if (index == 0)
        std::snprintf(name, 32, "%d/%d", static_cast<int>(self.rate), self.blockSize);
    else if (index == 2)
        std::snprintf(name, 32, "%d", self.programChanges.load());
    else if (index == 3)
        std::snprintf(name, 32, "%d", self.tempo.load());
    else if (index >= firstHostAnswer)
        std::strcpy(name, self.hostAnswers[index - firstHostAnswer]);
    else if (!has("empty-names"))
        std::snprintf(name, 32, "Value %d", index);
}

void askForSize(Instrument& self)
{
    constexpr int absurdSize = 100000;
    self.host(&self.effect, audioMasterSizeWindow, absurdSize, absurdSize, nullptr, 0.0f);
}

VstIntPtr dispatch(AEffect* effect, int opcode, int index, VstIntPtr value, void* const data, float option)
{
    auto& self = instrumentOf(effect);

    if (opcode != effProcessEvents)
        self.throwsInProcess = has("throw-process");

    switch (opcode)
    {
    case effOpen:
        failIf("open");
        return 0;
    case effClose:
        failIf("close");
        delete &self;
        return 0;
    case effMainsChanged:
        failIf("prepare");
        if (value != 0 && (has("more-outputs") || has("most-outputs")))
        {
            effect->numOutputs = has("most-outputs") ? 400 : 48;
            self.host(effect, audioMasterIOChanged, 0, 0, nullptr, 0.0f);
        }
        return 0;
    case effSetSampleRate:
        self.rate = option;
        return 0;
    case effSetBlockSize:
        self.blockSize = static_cast<int>(value);
        return 0;
    case effGetChunk:
        return getChunk(self, static_cast<void**>(data));
    case effSetChunk:
        std::memcpy(&self.state, data, std::min(sizeof(State), static_cast<size_t>(value)));
        self.level = self.state.values[1];
        return 1;
    case effSetProgram:
        self.state.program = static_cast<int>(value);
        return 0;
    case effGetProgram:
        return has("far-program") ? 1000 : self.state.program;
    case effProcessEvents:
        takeEvents(self, *static_cast<const VstEvents*>(data));
        return 1;
    case effGetParamName:
        writeName(self, index, static_cast<char*>(data));
        return 0;
    case effEditGetRect:
        *static_cast<ERect**>(data) = &self.rect;
        return 1;
    case effEditIdle:
        failIf("idle");
        if (has("size-in-idle"))
            askForSize(self);
        return 0;
    case effGetPlugCategory:
        return kPlugCategSynth;
    default:
        return 0;
    }
}

void process(AEffect* effect, float**, float** outputs, int numSamples)
{
    auto& self = instrumentOf(effect);

    if (self.throwsInProcess)
        throw std::runtime_error("in process");

    if (self.asksInProcess)
        askForSize(self);

    if (const auto* time =
            reinterpret_cast<const VstTimeInfo*>(self.host(effect, audioMasterGetTime, 0, 0, nullptr, 0.0f));
        time != nullptr)
        self.tempo = static_cast<int>(time->tempo);

    const float level = self.isNan    ? std::numeric_limits<float>::quiet_NaN()
                        : self.isHuge ? 1e4f
                                      : 0.25f * self.level;

    for (int channel = 0; channel < effect->numOutputs; ++channel)
        for (int i = 0; i < numSamples; ++i)
            outputs[channel][i] = self.keysDown == 0
                                      ? 0.0f
                                      : (self.hasChannels ? 0.01f * static_cast<float>(channel + 1) : level);
}

void setParameter(AEffect* effect, int index, float value)
{
    failIf("set");
    auto& self = instrumentOf(effect);

    if (has("idle-in-set"))
        self.host(effect, audioMasterIdle, 0, 0, nullptr, 0.0f);

    self.state.values[index] = value;

    if (index == 1)
        self.level = value;
}

float getParameter(AEffect* effect, int index)
{
    return instrumentOf(effect).state.values[index];
}
} // namespace

extern "C" __attribute__((visibility("default"))) AEffect* VSTPluginMain(audioMasterCallback host)
{
    failIf("entry");
    auto* self = new Instrument;
    self->host = host;
    self->isNan = has("nan");
    self->isHuge = has("huge");
    self->hasChannels = has("channels");
    self->asksInProcess = has("size-in-block");
    self->state.values[1] = 1.0f;
    auto& effect = self->effect;
    effect.magic = kEffectMagic;
    effect.object = self;
    effect.dispatcher = dispatch;
    effect.setParameter = setParameter;
    effect.getParameter = getParameter;
    effect.processReplacing = has("no-process") ? nullptr : process;
    effect.process = process;
    effect.numParams = numParameters;
    effect.numPrograms = has("hundred-programs") ? 100 : 1;
    effect.numOutputs = self->hasChannels ? manyOutputs : 2;
    effect.flags = effFlagsIsSynth | effFlagsCanReplacing;
    effect.flags |= has("far-program") ? 0 : effFlagsProgramChunks;
    effect.flags |= has("window") ? effFlagsHasEditor : 0;
    effect.uniqueID = CCONST('Q', 'f', 'l', 't');
    host(&effect, audioMasterGetVendorString, 0, 0, self->hostAnswers[0], 0.0f);
    host(&effect, audioMasterGetProductString, 0, 0, self->hostAnswers[1], 0.0f);
    std::snprintf(self->hostAnswers[2], sizeof(self->hostAnswers[2]), "%ld",
                  static_cast<long>(host(&effect, audioMasterGetVendorVersion, 0, 0, nullptr, 0.0f)));
    return &effect;
}
