// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/MidiPanel.h"

#include "ui/Geometry.h"

namespace quorel
{

MidiPanel::MidiPanel(PluginProcessor& pluginProcessor, EditorHost& editorHost,
                     const EditorImages& editorImages, int layerIndex)
    : StripPanel(pluginProcessor, editorHost, editorImages, layerIndex, &editorImages.panelMidi,
                 geometry::strip::panelY[4])
    , controller1(geometry::strip::userController1, this, id(layerSlot::userController1), {},
                  &images.readout120, processor)
    , controller2(geometry::strip::userController2, this, id(layerSlot::userController2), {},
                  &images.readout120, processor)
{
    for (int n = 0; n < numBlocks; ++n)
    {
        auto& block = blocks[static_cast<size_t>(n)];
        block =
            std::make_unique<myOnOff>(at(geometry::strip::blockSwitch(n)), this,
                                      id(layerSlot::blockProgramChange + n), &images.smallOnOff, processor);
        addAndMakeVisible(*block);
    }

    for (auto* menu : {&controller1, &controller2})
    {
        for (int controller = 0; controller < numControllers; ++controller)
        {
            const char* name = juce::MidiMessage::getControllerName(controller);
            menu->addItem(juce::String(controller) + (name != nullptr ? " " + juce::String(name) : ""),
                          controller + 1);
        }

        addAndMakeVisible(*menu);
    }
}

void MidiPanel::refresh()
{
    for (auto& block : blocks)
        showToggle(*block);

    for (auto* menu : {&controller1, &controller2})
        menu->setSelectedId(static_cast<int>(processor.readParameter(parameterOf(*menu)) *
                                             static_cast<float>(numControllers)) +
                                1,
                            juce::dontSendNotification);
}

void MidiPanel::comboBoxChanged(juce::ComboBox* menu)
{
    const int controller = menu->getSelectedId() - 1;

    if (controller < 0)
        return;

    const UndoHistory::Recording recording(processor);
    processor.setParameter(parameterOf(*menu),
                           static_cast<float>(controller) / static_cast<float>(numControllers));
}

} // namespace quorel
