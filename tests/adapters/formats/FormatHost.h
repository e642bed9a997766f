// SPDX-License-Identifier: GPL-3.0-or-later
// Quorel as a host has it that knows all formats.
#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

#include <memory>
#include <string>
#include <vector>

namespace quorel::test
{

enum class Format
{
    vst2,
    vst3,
    lv2
};

/** Those that this system's hosts load; VST2 comes first. */
std::vector<Format> allFormats();

/** All but VST2. */
std::vector<Format> newerFormats();

std::string nameOf(Format format);

/** What the bundle or library says of itself. Throws std::runtime_error where it holds no plug-in, or several. */
juce::PluginDescription describe(Format format);

/** Loads and prepares it; throws std::runtime_error if it can't be had. Message thread. */
std::unique_ptr<juce::AudioPluginInstance> load(Format format, double rate = 44100.0, int blockSize = 512);

/** Bytes of the instrument itself within what a format stores around them. */
juce::MemoryBlock soundOf(Format format, juce::AudioProcessor& plugin);

/** Hands a format the instrument's own bytes, wrapped as its host would. */
void restore(Format format, juce::AudioProcessor& plugin, const juce::MemoryBlock& sound);

/** A parameter by its name; null for none. */
juce::AudioProcessorParameter* parameter(juce::AudioProcessor& plugin, const juce::String& name);

/** Two seconds of a chord from a silent state, in blocks of 512 samples. */
juce::AudioBuffer<float> playChord(juce::AudioProcessor& plugin);

/** Runs blocks until one sounds, or for a few seconds; then whether one did. */
bool comesToSound(juce::AudioProcessor& plugin);

} // namespace quorel::test
