// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/MixPanel.h"

#include "ui/Geometry.h"

namespace quorel
{

namespace
{
constexpr int numMidiChannels = 16;
} // namespace

MixPanel::MixPanel(PluginProcessor& pluginProcessor, EditorHost& editorHost, const EditorImages& editorImages,
                   int layerIndex)
    : StripPanel(pluginProcessor, editorHost, editorImages, layerIndex)
    , onSwitch(at(geometry::strip::on), this, id(layerSlot::on), &images.onOff, processor)
    , soloSwitch(at(geometry::strip::solo), this, id(layerSlot::solo), &images.onOff, processor)
    , channelMenu(at(geometry::strip::channelMenu), this, id(layerSlot::midiChannel), {}, &images.readout60,
                  processor)
    , panKnob(at(geometry::strip::pan), this, id(layerSlot::pan), &images.knobPan, processor)
    , volumeKnob(at(geometry::strip::volume), this, id(layerSlot::volume), &images.knobVolume, processor)
{
    channelMenu.addItem("Omni", 1);

    for (int channel = 1; channel <= numMidiChannels; ++channel)
        channelMenu.addItem(juce::String(channel), channel + 1);

    for (int n = 0; n < numSends; ++n)
    {
        auto& send = sends[static_cast<size_t>(n)];
        send = std::make_unique<myKnob>(at(geometry::strip::send(n)), this, id(layerSlot::sendLevel + n),
                                        &images.knobVolume, processor);
        returnToDefault(*send);
        addAndMakeVisible(*send);

        // Over the knob's corner.
        auto& prePost = sendSwitches[static_cast<size_t>(n)];
        prePost = std::make_unique<myOnOff>(at(geometry::strip::sendPrePost(n)), this,
                                            id(layerSlot::sendPreFader + n), &images.tinyOnOff, processor);
        prePost->setTitle("Layer " + juce::String(layer + 1) + " FX" + juce::String(n + 1) +
                          " send before the fader");
        addAndMakeVisible(*prePost);
    }

    returnToDefault(panKnob);
    returnToDefault(volumeKnob);

    addControls({&onSwitch, &soloSwitch, &channelMenu, &panKnob, &volumeKnob});
}

void MixPanel::refresh()
{
    showToggle(onSwitch);
    showToggle(soloSwitch);
    const auto channel =
        static_cast<int>(value(layerSlot::midiChannel) * static_cast<float>(numMidiChannels));
    channelMenu.setSelectedId(channel + 1, juce::dontSendNotification);

    for (auto& send : sends)
        showSlider(*send);

    for (auto& prePost : sendSwitches)
        showToggle(*prePost);

    showSlider(panKnob);
    showSlider(volumeKnob);
}

void MixPanel::comboBoxChanged(juce::ComboBox* menu)
{
    if (menu != &channelMenu || menu->getSelectedItemIndex() < 0)
        return;

    processor.setParameterFromUi(id(layerSlot::midiChannel),
                                 static_cast<float>(menu->getSelectedItemIndex()) /
                                     static_cast<float>(menu->getNumItems() - 1));
}

} // namespace quorel
