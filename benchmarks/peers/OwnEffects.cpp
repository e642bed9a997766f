// SPDX-License-Identifier: GPL-3.0-or-later
#include "OwnEffects.h"

#include "effects/FxSlot.h"
#include "effects/LayerEq.h"

#include <algorithm>
#include <array>

namespace quorel::peers
{
namespace
{
struct OwnEffect : Candidate
{
    OwnEffect(int type, float firstParameter)
    {
        parameters.fill(0.5f);
        if (firstParameter >= 0.0f)
            parameters[0] = firstParameter;

        fxConstruct(*slot);
        slot->type = type;
        fxInit(*slot, static_cast<float>(sampleRate));
        fxSetMix(*slot, 0.75f, 0.5f, 0.5f);
    }

    void process(const float* inL, const float* inR, float* outL, float* outR, int numSamples) override
    {
        std::copy_n(inL, numSamples, outL);
        std::copy_n(inR, numSamples, outR);
        fxUpdate(*slot, parameters.data(), 120.0f);
        fxProcessBlock(*slot, outL, outR, numSamples);
    }

    std::unique_ptr<FxSlot> slot = std::make_unique<FxSlot>();
    std::array<float, fxParameterCount> parameters;
};

struct OwnEq : Candidate
{
    OwnEq(bool bands, bool filters)
    {
        eqInit(eq, static_cast<float>(sampleRate));
        eq.enabled = 1;
        for (int band = 0; band < 3; ++band)
            eqSetBand(eq, band, bands, 0.7f, 0.3f + 0.2f * static_cast<float>(band), 0.4f);
        eqSetFilters(eq, filters, 0.9f, filters, 0.1f);
    }

    void process(const float* inL, const float* inR, float* outL, float* outR, int numSamples) override
    {
        std::copy_n(inL, numSamples, outL);
        std::copy_n(inR, numSamples, outR);
        eqProcessBlock(eq, outL, outR, numSamples);
    }

    LayerEq eq;
};
} // namespace

std::unique_ptr<Candidate> makeOwnEffect(int type, float firstParameter)
{
    return std::make_unique<OwnEffect>(type, firstParameter);
}

std::unique_ptr<Candidate> makeOwnEq(bool bands, bool filters)
{
    return std::make_unique<OwnEq>(bands, filters);
}
} // namespace quorel::peers
