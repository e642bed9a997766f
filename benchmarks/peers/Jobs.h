// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "LV2Host.h"

#include <string>
#include <vector>

namespace quorel::peers
{
/** What a user might take instead of an effect: LV2 plug-ins one after another, or an effect of JUCE's. */
struct Peer
{
    std::string name;
    std::vector<LV2Setup> plugins;
    std::string juceEffect = {};
    int combs = 0;           ///< combs and all-passes of a reverb, both channels together, where known
    std::string lesser = {}; ///< what it lacks; such a peer is listed, but never the cheapest
};

/** One of Quorel's types, by its name in the type table. A kind of it has a label and sets parameter 0. */
struct OwnType
{
    std::string name;
    std::string label = {};
    float firstParameter = -1.0f;
    int combs = 0;
};

/** Effects that do the same job. */
struct Job
{
    std::string name;
    std::vector<OwnType> types;
    std::vector<Peer> peers;
    bool mayPassNoise = false; ///< a gate stands open for the noise
};

/** Names that stand for the equaliser instead of a type. */
inline constexpr const char* eqBandsName = "EQ, three bands";
inline constexpr const char* eqLaddersName = "EQ, two ladders";

const std::vector<Job>& allJobs();
} // namespace quorel::peers
