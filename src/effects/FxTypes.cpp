// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/FxTypes.h"

#include "effects/AmpEffects.h"
#include "effects/ChorusEffects.h"
#include "effects/CombFilter.h"
#include "effects/DelayEffects.h"
#include "effects/DistortionEffects.h"
#include "effects/Dynamics.h"
#include "effects/EffectMath.h"
#include "effects/FilterEffects.h"
#include "effects/FlangerEffects.h"
#include "effects/HqReverb.h"
#include "effects/PhaserEffects.h"
#include "effects/RhythmEffects.h"

namespace quorel
{
namespace
{
constexpr FxType noneType{"None", {}};
}

const std::array<FxType, fxTypeCount> fxTypes{
    {noneType,     monoDelayType,   stereoDelayType,  monoTapeDelayType, stereoTapeDelayType,
     combType,     hqReverbType,    chorusType,       tapeChorusType,    chorusDelayType,
     ensembleType, flangerType,     tapeFlangerType,  phaserType,        anaPhaserType,
     ringModType,  distortType,     multiDistortType, lowFiType,         waveshaperType,
     clipperType,  ampType,         cabinetType,      widenerType,       autoPanType,
     tremeloType,  kappelType,      compressorType,   noiseGateType,     filterType,
     bassType,     wahWahDelayType, autoWahType}};

int fxTypeFromParameter(float value)
{
    return truncateTo(value * 32.0f, 0, fxTypeCount - 1);
}

const char* fxParameterLabel(int entry)
{
    if (entry < 0 || entry >= fxTypeCount * fxParameterCount)
        return FxParameter{}.label;

    return fxTypes[static_cast<std::size_t>(entry / fxParameterCount)]
        .parameters[static_cast<std::size_t>(entry % fxParameterCount)]
        .label;
}
} // namespace quorel
