// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/ControlPage.h"

namespace quorel
{

/** A part of a layer's strip, laid over the whole strip. Message thread. */
class StripPanel : public ControlPage
{
public:
    /** `layerIndex` is 0 to 3. `panelImage`, if any, is drawn with its top at `imageY`. */
    StripPanel(PluginProcessor& pluginProcessor, EditorHost& editorHost, const EditorImages& editorImages,
               int layerIndex, const CBitmap* panelImage = nullptr, int imageY = 0);

    void paint(juce::Graphics& g) override;

    /** A value set here becomes the base from which a multi-control with this target moves it. */
    void sliderValueChanged(juce::Slider* slider) override;

protected:
    /** Parameter of number `n` (200 to 399) of this layer. */
    int id(int n) const noexcept { return layerParameter(layer, n); }

    float value(int n) const { return processor.readParameter(id(n)); }

    VirtualInstrument& instrument() const { return processor.getLayer(layer); }

    /** The hosted instrument; null if there is none or it is being unloaded. Valid until the next message is
        handled. */
    juce::AudioPluginInstance* plugin() const;

    const int layer;

private:
    const CBitmap* image;
    const juce::Point<int> imagePosition;
};

} // namespace quorel
