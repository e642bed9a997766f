// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameters/MixGains.h"

#include "parameters/ParameterCodings.h"

namespace quorel
{

void MixGains::setLayer(int layer, float volume, float pan) noexcept
{
    const double gain = cubicGainExact(static_cast<double>(volume));
    const double doubledPan = 2.0 * static_cast<double>(pan);
    double left = gain;
    double right = gain;

    if (doubledPan >= 1.0)
        left = (2.0 - doubledPan) * gain;
    else
        right = doubledPan * gain;

    layerFaderGains[index(layer)].store(static_cast<float>(gain), std::memory_order_relaxed);
    layerGains[0][index(layer)].store(static_cast<float>(left), std::memory_order_relaxed);
    layerGains[1][index(layer)].store(static_cast<float>(right), std::memory_order_relaxed);
}

void MixGains::setSend(int send, int layer, float level) noexcept
{
    sendGains[index(send)][index(layer)].store(cubicGain(level), std::memory_order_relaxed);
}

void MixGains::setMaster(float volume, float mute) noexcept
{
    master.store(mute > 0.5f ? 0.0f : cubicGain(volume), std::memory_order_relaxed);
}

} // namespace quorel
