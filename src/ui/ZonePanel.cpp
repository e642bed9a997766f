// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ZonePanel.h"

#include "ui/Geometry.h"

namespace quorel
{

ZonePanel::ZonePanel(PluginProcessor& pluginProcessor, EditorHost& editorHost,
                     const EditorImages& editorImages, int layerIndex)
    : StripPanel(pluginProcessor, editorHost, editorImages, layerIndex, &editorImages.panelZones,
                 geometry::strip::panelY[1])
    , keyboard(geometry::strip::zoneKeyboard, layer, KeyboardStrip::Source::zones, processor)
{
    addAndMakeVisible(keyboard);
    constexpr const char* boxTitles[] = {"lowest key", "highest key", "lowest velocity", "highest velocity"};

    for (int i = 0; i < numZones; ++i)
    {
        auto& zone = zones[static_cast<size_t>(i)];
        const auto title = "Layer " + juce::String(layer + 1) + " zone " + juce::String(i + 1) + " ";
        zone.on = std::make_unique<myOnOff>(at(geometry::strip::zoneOn(i)), this, id(layerSlot::zoneOn + i),
                                            &images.smallOnOff, processor);
        zone.on->setTitle(title + "on");
        addAndMakeVisible(*zone.on);
        const int numbers[] = {layerSlot::zoneKeys + 2 * i, layerSlot::zoneKeys + 2 * i + 1,
                               layerSlot::zoneVelocities + 2 * i, layerSlot::zoneVelocities + 2 * i + 1};

        for (int n = 0; n < boxesPerZone; ++n)
        {
            const auto position = geometry::strip::zoneBox(i, n);
            auto& box = zone.boxes[static_cast<size_t>(n)];
            box = std::make_unique<myIntBox2>(juce::Rectangle<int>(position.x, position.y,
                                                                   geometry::strip::zoneBoxWidth,
                                                                   images.readout30.getHeight()),
                                              this, id(numbers[n]), &images.readout30, processor);
            box->noteNames = n < 2;
            box->setTitle(title + boxTitles[n]);
            addAndMakeVisible(*box);
        }
    }
}

void ZonePanel::refresh()
{
    for (auto& zone : zones)
    {
        showToggle(*zone.on);

        for (auto& box : zone.boxes)
            box->update(processor.readParameter(parameterOf(*box)));
    }

    keyboard.follow();
}

} // namespace quorel
