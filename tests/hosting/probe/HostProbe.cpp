// SPDX-License-Identifier: GPL-3.0-or-later
// A silent VST2 instrument that asks its host who it is and shows the answers as parameter names.
#include "pluginterfaces/vst2.x/aeffectx.h"

#include <cstdio>
#include <cstring>

namespace
{
constexpr int numAnswers = 3;

struct Probe
{
    AEffect effect{};
    char answers[numAnswers][256]{};
};

Probe& probeOf(AEffect* effect)
{
    return *static_cast<Probe*>(effect->object);
}

VstIntPtr dispatch(AEffect* effect, int opcode, int index, VstIntPtr, void* const data, float)
{
    switch (opcode)
    {
    case effClose:
        delete &probeOf(effect);
        return 0;
    case effGetParamName:
        if (index >= 0 && index < numAnswers)
            std::strcpy(static_cast<char*>(data), probeOf(effect).answers[index]);
        return 0;
    case effGetPlugCategory:
        return kPlugCategSynth;
    default:
        return 0;
    }
}

void process(AEffect*, float**, float** outputs, int numSamples)
{
    for (int channel = 0; channel < 2; ++channel)
        std::memset(outputs[channel], 0, sizeof(float) * static_cast<size_t>(numSamples));
}

void setParameter(AEffect*, int, float)
{
}

float getParameter(AEffect*, int)
{
    return 0.0f;
}
} // namespace

extern "C" __attribute__((visibility("default"))) AEffect* VSTPluginMain(audioMasterCallback host)
{
    auto* probe = new Probe;
    auto& effect = probe->effect;
    effect.magic = kEffectMagic;
    effect.object = probe;
    effect.dispatcher = dispatch;
    effect.setParameter = setParameter;
    effect.getParameter = getParameter;
    effect.processReplacing = process;
    effect.process = process;
    effect.numParams = numAnswers;
    effect.numPrograms = 1;
    effect.numOutputs = 2;
    effect.flags = effFlagsIsSynth | effFlagsCanReplacing;
    effect.uniqueID = CCONST('Q', 'p', 'r', 'b');
    host(&effect, audioMasterGetVendorString, 0, 0, probe->answers[0], 0.0f);
    host(&effect, audioMasterGetProductString, 0, 0, probe->answers[1], 0.0f);
    std::snprintf(probe->answers[2], sizeof(probe->answers[2]), "%ld",
                  static_cast<long>(host(&effect, audioMasterGetVendorVersion, 0, 0, nullptr, 0.0f)));
    return &effect;
}
