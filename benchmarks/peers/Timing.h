// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Candidate.h"

#include <functional>
#include <memory>
#include <vector>

namespace quorel::peers
{
/** How often and how long each candidate plays. */
struct Rounds
{
    int count = 15;
    double seconds = 0.05;
};

/** Nanoseconds of processor time for a stereo frame of noise, for each candidate: the least of several
    rounds, in which all of them play in turn. Threads that an effect starts count too. Null candidates give
    0. */
std::vector<double> timeInTurn(const std::vector<Candidate*>& candidates, int blockLength,
                               const Rounds& rounds);

using Maker = std::function<std::unique_ptr<Candidate>(int blockLength)>;

/** The same in the dearest quarter second of 20 seconds of silence that follow half a second of noise; each
    quarter counts with its least of ten passes by fresh candidates, in which all of them play in turn. */
std::vector<double> timeSilence(const std::vector<Maker>& makers, int blockLength);

/** Whether noise comes out changed, and as finite numbers not all 0. */
bool changesNoise(Candidate& candidate, int blockLength);
} // namespace quorel::peers
