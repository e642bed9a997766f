// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameters/MixGains.h"

#include "parameters/ParameterCodings.h"

namespace quorel
{

void MixGains::refreshLayer(const ParameterAccess& parameters, int layer) noexcept
{
    layerWords[index(layer)].refresh(
        [&]
        {
            const float volume = parameters.readParameter(layerParameter(layer, layerSlot::volume));
            const float pan = parameters.readParameter(layerParameter(layer, layerSlot::pan));
            const double gain = cubicGainExact(static_cast<double>(volume));
            const double doubledPan = 2.0 * static_cast<double>(pan);
            double left = gain;
            double right = gain;

            if (doubledPan >= 1.0)
                left = (2.0 - doubledPan) * gain;
            else
                right = doubledPan * gain;

            layerFaderGains[index(layer)].store(static_cast<float>(gain));
            layerGains[0][index(layer)].store(static_cast<float>(left));
            layerGains[1][index(layer)].store(static_cast<float>(right));
        });
}

void MixGains::refreshSend(const ParameterAccess& parameters, int send, int layer) noexcept
{
    layerWords[index(layer)].refresh(
        [&]
        {
            const int level = layerParameter(layer, layerSlot::sendLevel + send);
            sendGains[index(send)][index(layer)].store(cubicGain(parameters.readParameter(level)));
        });
}

void MixGains::refreshMaster(const ParameterAccess& parameters) noexcept
{
    masterWords.refresh(
        [&]
        {
            const float volume = parameters.readParameter(slot::masterVolume);
            const bool muted = parameters.readParameter(slot::masterMute) > 0.5f;
            master.store(muted ? 0.0f : cubicGain(volume));
        });
}

} // namespace quorel
