// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameters/EqSettings.h"

namespace quorel
{

void EqUnitSettings::refresh(const ParameterAccess& parameters, int base) noexcept
{
    const auto value = [&](int offset) { return parameters.readParameter(base + offset); };
    const auto isOn = [&](int offset) { return value(offset) != 0.0f; };
    constexpr auto relaxed = std::memory_order_relaxed;

    on.store(isOn(eqSlot::on), relaxed);

    for (int i = 0; i < numEqBands; ++i)
    {
        const int first = eqSlot::bands + eqSlot::slotsPerBand * i;
        auto& band = bands[static_cast<size_t>(i)];
        band.on.store(isOn(first + eqSlot::bandOn), relaxed);
        band.freq.store(value(first + eqSlot::bandFreq), relaxed);
        band.width.store(value(first + eqSlot::bandWidth), relaxed);
        band.gain.store(value(first + eqSlot::bandGain), relaxed);
    }

    lowPassOn.store(isOn(eqSlot::lowPassOn), relaxed);
    lowPassFreq.store(value(eqSlot::lowPassFreq), relaxed);
    highPassOn.store(isOn(eqSlot::highPassOn), relaxed);
    highPassFreq.store(value(eqSlot::highPassFreq), relaxed);
}

} // namespace quorel
