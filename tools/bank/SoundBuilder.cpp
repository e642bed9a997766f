// SPDX-License-Identifier: GPL-3.0-or-later
#include "SoundBuilder.h"

#include "EffectSection.h"
#include "EqLines.h"
#include "LayerSection.h"
#include "LayerSounds.h"
#include "LineReading.h"
#include "MultiControlSection.h"
#include "ParameterWords.h"
#include "SoundWriter.h"

#include "parameters/Categories.h"

namespace quorel
{

namespace bank
{
namespace
{
void setMaster(SoundWriter& sound, const TextLine& line)
{
    if (is(line, "Volume"))
        sound.set(slot::masterVolume, need(faderValue(line.value), line, "dB up to +12, or off"));
    else if (!setEq(sound, masterEqUnit, line))
        failUnknown(line);
}

void setCategories(SoundWriter& sound, const TextLine& line)
{
    if (!is(line, "Categories"))
        failUnknown(line);
    for (const auto& name : listOf(line.value))
    {
        const auto flag = findCategory(name);
        if (!flag)
            fail(line, "no category \"" + name + "\"");
        const int index = categoryParameter(*flag);
        sound.set(index, withCategory(sound.processor.getParameter(index), *flag, true));
    }
}
} // namespace
} // namespace bank

void buildSound(PluginProcessor& processor, const std::vector<TextSection>& text)
{
    using namespace bank;

    SoundWriter sound(processor);
    loadInstruments(sound, text);

    for (const auto& section : text)
        if (const int layer = numberedFrom(section.name, "Layer", numLayers); layer >= 0)
            chooseSounds(sound, layer, section);

    for (const auto& section : text)
    {
        if (const int layer = numberedFrom(section.name, "Layer", numLayers); layer >= 0)
        {
            for (const auto& line : section.lines)
                setLayer(sound, layer, line);
        }
        else if (const int block = numberedFrom(section.name, "Effect", numFxBlocks); block >= 0)
        {
            setEffect(sound, block, section);
        }
        else if (section.name.equalsIgnoreCase("Master"))
        {
            for (const auto& line : section.lines)
                setMaster(sound, line);
        }
        else if (section.name.isEmpty())
        {
            for (const auto& line : section.lines)
                setCategories(sound, line);
        }
        else if (numberedFrom(section.name, "Multi-control", numMultiFaders) < 0)
        {
            throw TextError(section.number, "unknown section [" + section.name + "]");
        }
    }

    // Last: a target's base is where it stands when its knob is assigned.
    sound.settle();
    for (const auto& section : text)
        if (const int group = numberedFrom(section.name, "Multi-control", numMultiFaders); group >= 0)
            setMultiControl(sound, group, section);
    sound.settle();
}

} // namespace quorel
