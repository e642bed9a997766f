// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <vector>

namespace quorel::peers
{
inline constexpr double sampleRate = 48000.0;

/** A stereo effect that takes part in the comparison, made for one block length. */
struct Candidate
{
    virtual ~Candidate() = default;

    /** One block; inputs and outputs never overlap. */
    virtual void process(const float* inL, const float* inR, float* outL, float* outR, int numSamples) = 0;
};

/** Effects one after another. */
struct Chain : Candidate
{
    Chain(std::vector<std::unique_ptr<Candidate>> parts, int blockLength);
    void process(const float* inL, const float* inR, float* outL, float* outR, int numSamples) override;

private:
    std::vector<std::unique_ptr<Candidate>> links;
    std::vector<float> left, right;
};
} // namespace quorel::peers
