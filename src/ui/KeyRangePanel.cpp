// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/KeyRangePanel.h"

#include "parameters/ParameterCodings.h"
#include "ui/Geometry.h"

#include <cmath>

namespace quorel
{

namespace
{
constexpr int transposeRange = 24;
/** Keeps the text clear of the arrows on the right end of the box. */
constexpr int transposeTextAdjust = -16;
} // namespace

KeyRangePanel::KeyRangePanel(PluginProcessor& pluginProcessor, EditorHost& editorHost,
                             const EditorImages& editorImages, int layerIndex)
    : StripPanel(pluginProcessor, editorHost, editorImages, layerIndex, &editorImages.panelSynth,
                 geometry::strip::panelY[0])
    , keyCaption(geometry::strip::keyRangeCaption, "KEYBOARD RANGE", &images.textStripA)
    , keyMin(at(geometry::strip::keyMin), this, id(layerSlot::keyMin), &images.readout30, processor)
    , keyMax(at(geometry::strip::keyMax), this, id(layerSlot::keyMax), &images.readout30, processor)
    , velocityCaption(geometry::strip::velocityRangeCaption, "VELOCITY RANGE", &images.textStripA)
    , velocityMin(at(geometry::strip::velocityMin), this, id(layerSlot::velocityMin), &images.readout30,
                  processor)
    , velocityMax(at(geometry::strip::velocityMax), this, id(layerSlot::velocityMax), &images.readout30,
                  processor)
    , transposeCaption(geometry::strip::transposeCaption, "TRANSPOSE", &images.textStripA)
    , transpose(at(geometry::strip::transpose), this, id(layerSlot::transpose), &images.readout60, processor,
                transposeTextAdjust)
    , transposeDown(at(geometry::strip::transposeDown), this, &images.arrowMidLeft, processor)
    , transposeUp(at(geometry::strip::transposeUp), this, &images.arrowMidRight, processor)
    , keyboard(geometry::strip::keyboard, layer, KeyboardStrip::Source::range, processor)
{
    keyMin.noteNames = true;
    keyMax.noteNames = true;
    transpose.minimum = -transposeRange;
    transpose.maximum = transposeRange;
    transposeDown.setTitle("Transpose down");
    transposeUp.setTitle("Transpose up");

    addControls({&keyCaption, &keyMin, &keyMax, &velocityCaption, &velocityMin, &velocityMax,
                 &transposeCaption, &transpose, &transposeDown, &transposeUp, &keyboard});
}

void KeyRangePanel::refresh()
{
    for (auto* box : {&keyMin, &keyMax, &velocityMin, &velocityMax, &transpose})
        box->update(processor.readParameter(parameterOf(*box)));

    keyboard.follow();
}

void KeyRangePanel::buttonClicked(juce::Button* button)
{
    if (button == &transposeDown)
        transposeBy(-1);
    else if (button == &transposeUp)
        transposeBy(1);
}

void KeyRangePanel::transposeBy(int semitones)
{
    const int now = paramToInt(value(layerSlot::transpose), -transposeRange, transposeRange);
    const int wanted = juce::jlimit(-transposeRange, transposeRange, now + semitones);
    auto written = static_cast<float>(wanted + transposeRange) / static_cast<float>(2 * transposeRange);

    // Rounded down, the value would read as the semitone below.
    while (paramToInt(written, -transposeRange, transposeRange) < wanted)
        written = std::nextafter(written, 1.0f);

    processor.setParameterFromUi(id(layerSlot::transpose), written);
}

} // namespace quorel
