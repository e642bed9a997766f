// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "EffectChoice.h"

#include <juce_core/juce_core.h>
#include <optional>
#include <string>
#include <vector>

namespace quorel
{

/** "2=Glasson:Bells": instrument, and program if there is one, of a layer. */
struct LayerChoice
{
    /** 0 to 3. */
    int layer = 0;
    juce::String instrument;
    /** A number from 1 or a name; empty for the program that the instrument starts with. */
    juce::String program;
};

/** "Layer1 Pan=0.25": a value for a parameter. */
struct ParameterChoice
{
    /** Name, or index in digits. */
    juce::String parameter;
    /** 0 to 1. */
    float value = 0.0f;
};

/** Where a sound comes from: a file, or folder and name of a preset in the user's banks folder. At most one
    of the two is set. */
struct PresetChoice
{
    juce::File file;
    juce::String folder;
    juce::String name;

    bool isGiven() const { return file != juce::File() || name.isNotEmpty(); }
};

/** Everything that the command line says. */
struct RenderOptions
{
    juce::File midiFile;
    /** Goes into the effects in place of the layers. */
    juce::File input;
    /** Not set for the standard output. */
    juce::File output;
    bool toStandardOutput = false;
    PresetChoice preset;
    juce::File savePreset;
    juce::File prefix;
    std::vector<LayerChoice> layers;
    std::vector<EffectChoice> effects;
    std::vector<SendChoice> sends;
    std::vector<ParameterChoice> parameters;
    bool listInstruments = false;
    bool listEffects = false;
    bool listPresets = false;
    /** Of the sound that is set up. */
    bool listPrograms = false;
    bool listParameters = false;
    /** Hz. */
    double rate = 48000.0;
    /** Samples. */
    int block = 512;
    /** Quarter notes a minute; without one the file's own tempi count. */
    std::optional<double> tempo;
    /** Seconds rendered after the end of the song or input. */
    double tail = 3.0;
    /** Of a sample in the file; 32 is floating point. */
    int bits = 24;
};

/** Reads a `--layer` value; the error says what was expected. */
juce::Result parseLayerChoice(const juce::String& text, LayerChoice& choice);

/** Reads a `--param` value: the last "=" parts name and value. A value is a number from 0 to 1, or a quotient
    such as 60.5/127. */
juce::Result parseParameterChoice(const juce::String& text, ParameterChoice& choice);

/** Reads a `--preset` value. What exists as a file, is an absolute path or ends like a preset file is a file;
    anything else is "Folder/Name". */
juce::Result parsePresetChoice(const juce::String& text, PresetChoice& choice);

} // namespace quorel
