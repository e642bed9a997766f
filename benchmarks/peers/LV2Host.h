// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Candidate.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace quorel::peers
{
/** An LV2 plug-in, and the controls (by symbol) that don't keep their defaults. */
struct LV2Setup
{
    std::string uri;
    std::vector<std::pair<std::string, float>> controls;
};

/** Loads installed LV2 plug-ins, without their windows. Gives them URIDs, options, a bounded block length,
    and a worker that works at once. One thread; must outlive the candidates it makes. */
class LV2Host
{
public:
    LV2Host();
    ~LV2Host();

    /** A running plug-in; one with a single channel runs twice, side by side. Null, with the reason in
        `problem`, if it isn't installed or can't run. */
    std::unique_ptr<Candidate> load(const LV2Setup& setup, int blockLength, std::string& problem);

    struct Impl;

private:
    std::unique_ptr<Impl> impl;
};
} // namespace quorel::peers
