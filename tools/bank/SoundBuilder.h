// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PresetText.h"

#include "engine/PluginProcessor.h"

namespace quorel
{

/** Brings a processor to the sound that a text describes. The processor is new, prepared, and used for
    nothing else; its message loop and blocks run meanwhile. Message thread. */
class SoundBuilder
{
public:
    explicit SoundBuilder(PluginProcessor& processor);

    /** Throws a TextError for what the text says wrong, or names that isn't there. */
    void build(const std::vector<TextSection>& text);

private:
    using Section = TextSection;

    void loadInstruments(const std::vector<Section>& text);
    void chooseSounds(int layer, const Section& section);
    void chooseBank(int layer, const juce::String& bank, const TextLine& line);
    void chooseProgram(int layer, const juce::String& program, const TextLine& line);
    void setHosted(int layer, const TextLine& line);
    void mapEasy(int layer, const TextLine& line);
    int hostedParameterCalled(int layer, const juce::String& name, const TextLine& line);

    void setLayer(int layer, const TextLine& line);
    bool setLayerRange(int layer, const TextLine& line);
    bool setLayerMix(int layer, const TextLine& line);
    void setZone(int layer, const TextLine& line);
    void setBlocks(int layer, const TextLine& line);
    void setSend(int layer, const TextLine& line);
    bool setEq(int unit, const TextLine& line);
    void setEffect(int block, const Section& section);
    void setEffectParameter(int block, int type, const TextLine& line);
    void setMaster(const TextLine& line);
    void setMultiControl(int group, const Section& section);
    void setKnob(int target, const TextLine& line);
    void setCategories(const TextLine& line);

    void set(int index, float value) { processor.setParameter(index, value); }

    void setShowing(int index, const juce::String& wanted, const TextLine& line);
    juce::String shownAt(int index, float value);
    /** Blocks and message loop for long enough that what was sent has arrived and was answered. */
    void settle();

    PluginProcessor& processor;
};

} // namespace quorel
