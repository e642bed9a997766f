// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/EffectClipboard.h"

#include "engine/ChangeGuard.h"
#include "engine/MultiTargetMove.h"
#include "parameters/ParameterCatalogue.h"

#include <optional>

namespace quorel
{

namespace
{
/** First slots of what each block has. The type comes before its parameters. */
constexpr std::array<int, 5> blockSlots{slot::fxType, slot::fxOn, slot::fxVolume, slot::fxMix, slot::fxPan};
constexpr size_t numValues = blockSlots.size() + numFxParameters;

using EffectContents = std::array<float, numValues>;

std::optional<EffectContents>& copied()
{
    static std::optional<EffectContents> contents;
    return contents;
}

int slotOf(int block, size_t i)
{
    return i < blockSlots.size() ? blockSlots[i] + block
                                 : fxParameter(block, static_cast<int>(i - blockSlots.size()));
}

EffectContents contentsOf(const PluginProcessor& processor, int block)
{
    EffectContents contents{};

    for (size_t i = 0; i < numValues; ++i)
        contents[i] = processor.readParameter(slotOf(block, i));

    return contents;
}

void put(PluginProcessor& processor, int block, const EffectContents& contents)
{
    for (size_t i = 0; i < numValues; ++i)
        processor.writeFollowingParameter(slotOf(block, i), contents[i]);
}

void finish(PluginProcessor& processor)
{
    processor.getSession().markEdited();
    processor.requestEditorRefresh();
}

bool replace(PluginProcessor& processor, int block, const EffectContents& contents)
{
    if (refusesForChange(processor))
        return false;

    const UndoHistory::Recording recording(processor);
    put(processor, block, contents);
    finish(processor);
    return true;
}

void exchange(PluginProcessor& processor, int first, int second)
{
    const float kept = processor.readParameter(first);
    processor.writeFollowingParameter(first, processor.readParameter(second));
    processor.writeFollowingParameter(second, kept);
}
} // namespace

void copyEffect(PluginProcessor& processor, int block)
{
    copied() = contentsOf(processor, block);
}

bool hasCopiedEffect() noexcept
{
    return copied().has_value();
}

bool pasteEffect(PluginProcessor& processor, int block)
{
    return hasCopiedEffect() && replace(processor, block, *copied());
}

bool copyEffectTo(PluginProcessor& processor, int from, int to)
{
    return replace(processor, to, contentsOf(processor, from));
}

bool swapEffects(PluginProcessor& processor, int first, int second)
{
    if (refusesForChange(processor))
        return false;

    processor.getUndo().beforeSoundChange("swap effects");
    const auto isSendTo = [](int parameter, int block)
    { return isLayerParameter(parameter) && numberInLayer(parameter) == layerSlot::sendLevel + block; };
    const MultiTargetMove knobs(processor,
                                [&](int parameter)
                                {
                                    return isSendTo(parameter, first)    ? parameter + second - first
                                           : isSendTo(parameter, second) ? parameter + first - second
                                                                         : parameter;
                                });

    for (int layer = 0; layer < numLayers; ++layer)
        for (const int n : {layerSlot::sendLevel, layerSlot::sendPreFader})
            exchange(processor, layerParameter(layer, n + first), layerParameter(layer, n + second));

    const auto ofFirst = contentsOf(processor, first);
    put(processor, first, contentsOf(processor, second));
    put(processor, second, ofFirst);
    finish(processor);
    return true;
}

bool resetEffect(PluginProcessor& processor, int block)
{
    EffectContents contents{};

    for (size_t i = 0; i < blockSlots.size(); ++i)
        contents[i] = parameterDefault(slotOf(block, i));

    return replace(processor, block, contents);
}

} // namespace quorel
