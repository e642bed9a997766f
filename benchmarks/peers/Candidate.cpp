// SPDX-License-Identifier: GPL-3.0-or-later
#include "Candidate.h"

#include <algorithm>
#include <utility>

namespace quorel::peers
{
Chain::Chain(std::vector<std::unique_ptr<Candidate>> parts, int blockLength)
    : links(std::move(parts))
    , left(static_cast<std::size_t>(blockLength))
    , right(static_cast<std::size_t>(blockLength))
{
}

void Chain::process(const float* inL, const float* inR, float* outL, float* outR, int numSamples)
{
    links.front()->process(inL, inR, outL, outR, numSamples);

    for (std::size_t i = 1; i < links.size(); ++i)
    {
        std::copy_n(outL, numSamples, left.begin());
        std::copy_n(outR, numSamples, right.begin());
        links[i]->process(left.data(), right.data(), outL, outR, numSamples);
    }
}
} // namespace quorel::peers
