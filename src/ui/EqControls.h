// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/ControlPage.h"
#include "ui/TEQScreen.h"
#include "ui/widgets/myKnob.h"
#include "ui/widgets/myOnOff.h"

#include <array>
#include <vector>

namespace quorel
{

/** The controls of one EQ: the curve, three bands, low-pass and high-pass. They are children of the page that
    owns them, which listens to them. Message thread. */
class EqControls
{
public:
    /** `unit` is 0 to 3 for a layer's EQ, placed within its strip, or `masterEqUnit`. */
    EqControls(ControlPage& page, int unit, PluginProcessor& pluginProcessor, const EditorImages& images);

    /** Sets every control from the processor. */
    void refresh();

private:
    struct Band
    {
        myOnOff on;
        myKnob frequency;
        myKnob width;
        myKnob gain;
    };

    struct Filter
    {
        myOnOff on;
        myKnob frequency;
    };

    Band makeBand(ControlPage& page, const EditorImages& images, int band);
    void addToggle(ControlPage& page, myOnOff& toggle, const juce::String& name);
    void addKnob(ControlPage& page, myKnob& knob, const juce::String& name);

    const bool isMaster;
    const int base;
    PluginProcessor& processor;
    TEQScreen screen;
    myOnOff on;
    Filter lowPass;
    Filter highPass;
    std::array<Band, numEqBands> bands;
    std::vector<myOnOff*> toggles;
    std::vector<myKnob*> knobs;

    JUCE_DECLARE_NON_COPYABLE(EqControls)
};

} // namespace quorel
