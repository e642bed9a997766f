// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameters/EqSettings.h"

namespace quorel
{

void EqUnitSettings::refresh(const ParameterAccess& parameters, int base) noexcept
{
    words.refresh([&] { copy(parameters, base); });
}

void EqUnitSettings::copy(const ParameterAccess& parameters, int base) noexcept
{
    const auto value = [&](int offset) { return parameters.readParameter(base + offset); };
    const auto isOn = [&](int offset) { return value(offset) != 0.0f; };

    on.store(isOn(eqSlot::on));

    for (int i = 0; i < numEqBands; ++i)
    {
        const int first = eqSlot::bands + eqSlot::slotsPerBand * i;
        auto& band = bands[static_cast<size_t>(i)];
        band.on.store(isOn(first + eqSlot::bandOn));
        band.freq.store(value(first + eqSlot::bandFreq));
        band.width.store(value(first + eqSlot::bandWidth));
        band.gain.store(value(first + eqSlot::bandGain));
    }

    lowPassOn.store(isOn(eqSlot::lowPassOn));
    lowPassFreq.store(value(eqSlot::lowPassFreq));
    highPassOn.store(isOn(eqSlot::highPassOn));
    highPassFreq.store(value(eqSlot::highPassFreq));
}

} // namespace quorel
