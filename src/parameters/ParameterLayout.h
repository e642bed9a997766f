// SPDX-License-Identifier: GPL-3.0-or-later
// Where everything lies in the flat table of 1508 parameters. The table is the host's parameter list, the
// preset format and the memory of the whole sound at once: these numbers are a file format and must not move.
// What each slot holds is in ParameterCatalogue.
#pragma once

namespace quorel
{

constexpr int numLayers = 4;
constexpr int numSends = 4;
constexpr int numFxBlocks = 4;
constexpr int numFxParameters = 10;
constexpr int numEqBands = 3;
/** Four layers, then the master. */
constexpr int numEqUnits = numLayers + 1;
constexpr int masterEqUnit = numLayers;
constexpr int numZones = 8;
constexpr int numEasyParameters = 12;
constexpr int numControllers = 128;
constexpr int numMultiTargets = 16;
constexpr int numMultiFaders = 4;
constexpr int multiTargetsPerFader = numMultiTargets / numMultiFaders;

/** All slots of the table. Hosts see one less: the last slot can be reached from inside only. */
constexpr int numParameterSlots = 1508;
constexpr int numHostParameters = 1507;

/** In place of an index where there is no parameter: the ID of the editor's controls that stand for none, and
    the target of a multi-control knob that has none. */
constexpr int noParameter = 999999;

/** First slots of what the whole instrument has once, in the order of their indices. */
namespace slot
{
constexpr int masterVolume = 1;
constexpr int view = 2;
constexpr int editedOrOriginal = 3;
constexpr int masterMute = 4;
constexpr int freeControllerBlock = 16;
constexpr int presetNameText = 100;
constexpr int folderNameText = 132;
constexpr int nameTextLength = 32;
constexpr int firstLayer = 200;
constexpr int lastLayer = 998;
constexpr int layerStride = 200;
constexpr int controllerMap = 1050;
constexpr int fxOn = 1200;
constexpr int fxType = 1204;
constexpr int fxVolume = 1208;
constexpr int fxMix = 1212;
constexpr int fxPan = 1216;
constexpr int fxParameters = 1220;
constexpr int masterEq = 1300;
constexpr int masterEqEnd = 1316;
constexpr int multiAssignment = 1330;
constexpr int multiFader = 1350;
constexpr int multiKnob = 1354;
constexpr int multiName = 1370;
constexpr int multiNameLength = 25;
constexpr int multiHold = 1471;
constexpr int multiMemory = 1490;
} // namespace slot

/** Numbers within a layer, 200 to 399: layer l keeps number n in slot 200 * l + n. */
namespace layerSlot
{
constexpr int pluginNameText = 200;
constexpr int volume = 232;
constexpr int pan = 233;
constexpr int solo = 234;
constexpr int on = 235;
constexpr int midiChannel = 236;
constexpr int outputs = 237;
constexpr int sendLevel = 238;
constexpr int presetNumber = 242;
constexpr int blockProgramChange = 243;
constexpr int blockUserController2 = 250;
constexpr int userController1 = 251;
constexpr int userController2 = 252;
constexpr int drumPage = 253;
constexpr int drumMode = 254;
constexpr int sendPreFader = 256;
constexpr int keyMin = 260;
constexpr int keyMax = 261;
constexpr int velocityMin = 262;
constexpr int velocityMax = 263;
constexpr int transpose = 264;
constexpr int zoneKeys = 270;
constexpr int zoneVelocities = 286;
constexpr int zoneOn = 302;
constexpr int easyValue = 310;
constexpr int easyMapping = 322;
constexpr int eq = 380;
constexpr int eqEnd = 396;
} // namespace layerSlot

/** Offsets within the 17 slots of an EQ unit. Band i (0 to 2) takes four slots from `bands + 4 * i`; the four
    offsets from `bandOn` to `bandGain` count from there. */
namespace eqSlot
{
constexpr int on = 0;
constexpr int bands = 1;
constexpr int bandOn = 0;
constexpr int bandFreq = 1;
constexpr int bandWidth = 2;
constexpr int bandGain = 3;
constexpr int slotsPerBand = 4;
constexpr int lowPassOn = 13;
constexpr int lowPassFreq = 14;
constexpr int highPassOn = 15;
constexpr int highPassFreq = 16;
} // namespace eqSlot

/** True where `number` is one of the `count` numbers from `first`. */
constexpr bool isWithin(int number, int first, int count) noexcept
{
    return number >= first && number < first + count;
}

/** Slot of number `n` (200 to 399) of layer `layer` (0 to 3). */
constexpr int layerParameter(int layer, int n) noexcept
{
    return slot::layerStride * layer + n;
}

/** True where the slot belongs to a layer. Slot 999 belongs to none: it is stored, and does nothing. */
constexpr bool isLayerParameter(int index) noexcept
{
    return index >= slot::firstLayer && index <= slot::lastLayer;
}

/** Layer, 0 to 3, of a layer's slot. */
constexpr int layerOf(int index) noexcept
{
    return index / slot::layerStride - 1;
}

/** Number within its layer, 200 to 399, of a layer's slot. */
constexpr int numberInLayer(int index) noexcept
{
    return index - slot::layerStride * layerOf(index);
}

/** Slot of parameter `j` (0 to 9) of effect block `block` (0 to 3). The blocks are interleaved. */
constexpr int fxParameter(int block, int j) noexcept
{
    return slot::fxParameters + numFxBlocks * j + block;
}

/** First of the 17 slots of EQ unit `unit`: 0 to 3 are the layers', 4 the master's. */
constexpr int eqBase(int unit) noexcept
{
    return unit == masterEqUnit ? slot::masterEq : layerParameter(unit, layerSlot::eq);
}

} // namespace quorel
