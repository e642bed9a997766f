// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/EqControls.h"

#include "ui/Geometry.h"

namespace quorel
{
namespace
{
juce::Rectangle<int> at(juce::Point<int> position)
{
    return {position.x, position.y, 0, 0};
}
} // namespace

EqControls::EqControls(ControlPage& page, int unit, PluginProcessor& pluginProcessor,
                       const EditorImages& images)
    : isMaster(unit == masterEqUnit)
    , base(eqBase(unit))
    , processor(pluginProcessor)
    , screen(isMaster ? geometry::eq::masterScreen : geometry::eq::screen, unit, images.eqLine, processor)
    , on(at(isMaster ? geometry::eq::masterOn : geometry::eq::on), &page, base + eqSlot::on, &images.onOff,
         processor)
    , lowPass{{at(isMaster ? geometry::eq::masterLowPassOn : geometry::eq::lowPassOn), &page,
               base + eqSlot::lowPassOn, &images.smallOnOff, processor},
              {at(isMaster ? geometry::eq::masterLowPassFrequency : geometry::eq::lowPassFrequency), &page,
               base + eqSlot::lowPassFreq, &images.knobVolume, processor}}
    , highPass{{at(isMaster ? geometry::eq::masterHighPassOn : geometry::eq::highPassOn), &page,
                base + eqSlot::highPassOn, &images.smallOnOff, processor},
               {at(isMaster ? geometry::eq::masterHighPassFrequency : geometry::eq::highPassFrequency), &page,
                base + eqSlot::highPassFreq, &images.knobVolume, processor}}
    , bands{makeBand(page, images, 0), makeBand(page, images, 1), makeBand(page, images, 2)}
{
    page.addAndMakeVisible(screen);
    addToggle(page, on, "On");
    addToggle(page, lowPass.on, "Low-pass on");
    addToggle(page, highPass.on, "High-pass on");
    addKnob(page, lowPass.frequency, "Low-pass frequency");
    addKnob(page, highPass.frequency, "High-pass frequency");

    for (size_t i = 0; i < bands.size(); ++i)
    {
        const auto name = "Band " + juce::String(i + 1);
        addToggle(page, bands[i].on, name + " on");
        addKnob(page, bands[i].frequency, name + " frequency");
        addKnob(page, bands[i].width, name + " bandwidth");
        addKnob(page, bands[i].gain, name + " gain");
    }
}

EqControls::Band EqControls::makeBand(ControlPage& page, const EditorImages& images, int band)
{
    const auto place = [&](juce::Point<int> inStrip)
    { return at(isMaster ? geometry::eq::onMaster(inStrip) : inStrip); };
    const int first = base + eqSlot::bands + eqSlot::slotsPerBand * band;
    const auto i = static_cast<size_t>(band);
    return {{place(geometry::eq::bandOn(band)), &page, first + eqSlot::bandOn, &images.eqOnOff[i], processor},
            {place(geometry::eq::bandKnob(band, 0)), &page, first + eqSlot::bandFreq, &images.eqKnobVolume[i],
             processor},
            {place(geometry::eq::bandKnob(band, 1)), &page, first + eqSlot::bandWidth,
             &images.eqKnobVolume[i], processor},
            {place(geometry::eq::bandKnob(band, 2)), &page, first + eqSlot::bandGain, &images.eqKnobPan[i],
             processor}};
}

void EqControls::addToggle(ControlPage& page, myOnOff& toggle, const juce::String& name)
{
    // A layer's parameters have names of their own, the master's have none.
    if (isMaster)
        toggle.setTitle("Master EQ " + name);
    page.addAndMakeVisible(toggle);
    toggles.push_back(&toggle);
}

void EqControls::addKnob(ControlPage& page, myKnob& knob, const juce::String& name)
{
    if (isMaster)
        knob.setTitle("Master EQ " + name);
    ControlPage::returnToDefault(knob);
    page.addAndMakeVisible(knob);
    knobs.push_back(&knob);
}

void EqControls::refresh()
{
    const auto valueOf = [this](const juce::Component& control)
    { return processor.readParameter(ControlPage::parameterOf(control)); };
    for (auto* toggle : toggles)
        toggle->setToggleState(valueOf(*toggle) != 0.0f, juce::dontSendNotification);
    for (auto* knob : knobs)
        knob->setValue(static_cast<double>(valueOf(*knob)), juce::dontSendNotification);
    screen.repaint();
}

} // namespace quorel
