// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "parameters/DerivedWords.h"
#include "parameters/ParameterAccess.h"
#include "parameters/ParameterLayout.h"

#include <array>
#include <atomic>
#include <cstddef>

namespace quorel
{

/** The controls of one EQ unit as the block reads them: copied from its 17 slots whenever one of them is
    written. Frequencies, widths and gains stay positions of 0 to 1. */
struct EqUnitSettings
{
    struct Band
    {
        std::atomic<bool> on{false};
        std::atomic<float> freq{0.0f};
        std::atomic<float> width{0.0f};
        std::atomic<float> gain{0.0f};
    };

    std::atomic<bool> on{false};
    std::array<Band, numEqBands> bands;
    std::atomic<bool> lowPassOn{false};
    std::atomic<float> lowPassFreq{0.0f};
    std::atomic<bool> highPassOn{false};
    std::atomic<float> highPassFreq{0.0f};

    /** Reads all 17 slots from `base`, after a write to one of them. Any thread. */
    void refresh(const ParameterAccess& parameters, int base) noexcept;

private:
    void copy(const ParameterAccess& parameters, int base) noexcept;

    DerivedWords words;
};

/** Units 0 to 3 are the layers', 4 the master's. */
using EqSettings = std::array<EqUnitSettings, numEqUnits>;

} // namespace quorel
