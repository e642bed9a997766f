// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/FxSlot.h"

#include <complex>
#include <functional>
#include <memory>
#include <vector>

namespace quorel::test
{
struct Stereo
{
    std::vector<float> left, right;
};

/** A slot on the heap, set to the wet signal alone at unity gain. */
std::unique_ptr<FxSlot> makeSlot(int type, float sampleRate = 48000.0f);

/** Changes the type of a slot as the audio block does. */
void changeType(FxSlot& slot, int type);

/** What a slot makes of a signal in blocks of 64, fxUpdate before each. */
Stereo run(FxSlot& slot, const std::vector<float>& p, Stereo signal, float bpm = 120.0f);

/** The same after so many samples of silence, in which the parameters settle. */
Stereo runAfter(int silent, FxSlot& slot, const std::vector<float>& p, Stereo signal, float bpm = 120.0f);

Stereo constant(int length, float value);
Stereo silence(int length);
Stereo impulse(int length, float left = 1.0f, float right = 1.0f);
Stereo sine(int length, double hz, float amplitude = 1.0f, double sampleRate = 48000.0);
Stereo noise(int length, float amplitude = 1.0f, unsigned seed = 1);
Stereo square(int length, int period, float amplitude = 1.0f);

/** Component of x from sample `from` on at a frequency, as a complex amplitude (1 for a unit cosine). */
std::complex<double> component(const std::vector<float>& x, std::size_t from, double hz,
                               double sampleRate = 48000.0);

/** Gain at a frequency of the filter with this impulse response. */
double gainAt(const std::vector<float>& impulseResponse, double hz, double sampleRate);

double peak(const std::vector<float>& x, std::size_t from = 0);
double rms(const std::vector<float>& x, std::size_t from = 0, std::size_t to = 0);
std::size_t peakPosition(const std::vector<float>& x, std::size_t from = 0, std::size_t to = 0);
double decibels(double gain);
} // namespace quorel::test
