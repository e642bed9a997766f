// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/StripPanel.h"

#include "ui/Geometry.h"

namespace quorel
{

StripPanel::StripPanel(PluginProcessor& pluginProcessor, EditorHost& editorHost,
                       const EditorImages& editorImages, int layerIndex, const CBitmap* panelImage,
                       int imageY)
    : ControlPage(pluginProcessor, editorHost, editorImages)
    , layer(layerIndex)
    , image(panelImage)
    , imagePosition(geometry::strip::panelX, imageY)
{
    setSize(geometry::strip::width, geometry::strip::height);
}

void StripPanel::paint(juce::Graphics& g)
{
    if (image != nullptr)
        image->paint(
            g, juce::Rectangle<int>(imagePosition.x, imagePosition.y, image->getWidth(), image->getHeight())
                   .toFloat());
}

void StripPanel::sliderValueChanged(juce::Slider* slider)
{
    ControlPage::sliderValueChanged(slider);

    if (const int parameter = parameterOf(*slider); parameter > 0)
        processor.multiControls().rebase(parameter, static_cast<float>(slider->getValue()));
}

juce::AudioPluginInstance* StripPanel::plugin() const
{
    auto& hosted = instrument();

    if (hosted.getState() != LayerState::playing)
        return nullptr;

    // Instruments come and go on this thread alone, so the pointer stays valid after this.
    const InstanceAccess::Use use(hosted.instanceAccess());
    return use.get();
}

} // namespace quorel
