// SPDX-License-Identifier: GPL-3.0-or-later
// JUCE includes this as its VST2 header; the free FST headers provide the contents. JUCE does so inside a
// namespace of its own, so no system header may be included here.
//
// Three things in FST don't fit what JUCE does with them:
// - FST's speaker arrangement ends in a flexible array, while JUCE allocates `sizeof (VstSpeakerArrangement)`
//   and writes up to eight entries: with FST's own type that overruns the heap.
// - FST's pin properties end after the short label. The interface has 48 reserved bytes behind it, and
//   plug-ins fill them in: a hosted instrument would write past the copy on our stack.
// - FST gives opcodes that it hasn't explored placeholder numbers (100000 and up). Hosts and plug-ins that
//   send the real numbers would be ignored or, worse, sent a placeholder. The numbers below are the real
//   ones.
#pragma once

#define FST_DONT_DEPRECATE_UNKNOWN 1

#define t_fstSpeakerArrangement quorelFstSpeakerArrangement
#define VstSpeakerArrangement quorelFstVstSpeakerArrangement
#define t_fstPinProperties quorelFstPinProperties
#define VstPinProperties quorelFstVstPinProperties
#define audioMasterIdle quorelFstHostIdle
#define audioMasterPinConnected quorelFstHostPinConnected
#define audioMasterIOChanged quorelFstHostIOChanged
#define audioMasterNeedIdle quorelFstHostNeedIdle
#define audioMasterGetDirectory quorelFstHostGetDirectory
#define audioMasterUpdateDisplay quorelFstHostUpdateDisplay
#define effConnectInput quorelFstEffectConnectInput
#define effConnectOutput quorelFstEffectConnectOutput
#define effSetBypass quorelFstEffectSetBypass
#define effGetTailSize quorelFstEffectGetTailSize
#define effIdle quorelFstEffectIdle
#define effKeysRequired quorelFstEffectKeysRequired

#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wcpp"
#pragma GCC diagnostic ignored "-Wpedantic"
#endif

#include <pluginterfaces/fst/aeffect.h>

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

#undef t_fstSpeakerArrangement
#undef VstSpeakerArrangement
#undef t_fstPinProperties
#undef VstPinProperties
#undef audioMasterIdle
#undef audioMasterPinConnected
#undef audioMasterIOChanged
#undef audioMasterNeedIdle
#undef audioMasterGetDirectory
#undef audioMasterUpdateDisplay
#undef effConnectInput
#undef effConnectOutput
#undef effSetBypass
#undef effGetTailSize
#undef effIdle
#undef effKeysRequired

constexpr t_fstHostOpcode audioMasterIdle = static_cast<t_fstHostOpcode>(3);
constexpr t_fstHostOpcode audioMasterPinConnected = static_cast<t_fstHostOpcode>(4);
constexpr t_fstHostOpcode audioMasterIOChanged = static_cast<t_fstHostOpcode>(13);
constexpr t_fstHostOpcode audioMasterNeedIdle = static_cast<t_fstHostOpcode>(14);
constexpr t_fstHostOpcode audioMasterGetDirectory = static_cast<t_fstHostOpcode>(41);
constexpr t_fstHostOpcode audioMasterUpdateDisplay = static_cast<t_fstHostOpcode>(42);
constexpr t_fstPluginOpcode effConnectInput = static_cast<t_fstPluginOpcode>(31);
constexpr t_fstPluginOpcode effConnectOutput = static_cast<t_fstPluginOpcode>(32);
constexpr t_fstPluginOpcode effSetBypass = static_cast<t_fstPluginOpcode>(44);
constexpr t_fstPluginOpcode effGetTailSize = static_cast<t_fstPluginOpcode>(52);
constexpr t_fstPluginOpcode effIdle = static_cast<t_fstPluginOpcode>(53);
constexpr t_fstPluginOpcode effKeysRequired = static_cast<t_fstPluginOpcode>(57);

typedef struct quorelSpeakerArrangement_
{
    int type;
    int numChannels;
    t_fstSpeakerProperties speakers[8];
} t_fstSpeakerArrangement;

typedef t_fstSpeakerArrangement VstSpeakerArrangement;

typedef struct quorelPinProperties_
{
    char label[64];
    int flags;
    int arrangementType;
    char shortLabel[8];
    char reserved[48];
} t_fstPinProperties;

typedef t_fstPinProperties VstPinProperties;
