// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PluginProcessor.h"
#include "resources/CBitmap.h"
#include "ui/widgets/ControlPopup.h"
#include "ui/widgets/MidiGlow.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** What knobs and faders have in common: a value of 0 to 1 shown by a frame of a film, a drag that Shift
    makes ten times finer, the menu of the right button, and the glow of MIDI control. Its owner,
    a listener, writes the parameter, and sets the slider when the parameter moves. Message thread. */
class FilmSlider : public juce::Slider
{
public:
    /** `slideFilm` outlives the slider. */
    FilmSlider(juce::Rectangle<int> bounds, SliderStyle style, const char* kind,
               juce::Slider::Listener* listener, int parameterId, const CBitmap* slideFilm, int numFrames,
               PluginProcessor& pluginProcessor);

    /** Shows another film of as many frames. */
    void setFilm(const CBitmap* newFilm);

    void mouseDown(const juce::MouseEvent& event) override;
    void mouseDrag(const juce::MouseEvent& event) override;
    void mouseUp(const juce::MouseEvent& event) override;
    void mouseDoubleClick(const juce::MouseEvent& event) override;
    bool keyPressed(const juce::KeyPress& key) override;
    juce::String getTextFromValue(double value) override;
    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

protected:
    /** Draws the frame for a position of 0 to 1. The last frame is for 1 alone. */
    void drawFrame(juce::Graphics& g, double position, juce::Rectangle<float> destination) const;

    /** Size of one frame. */
    int frameWidth() const { return film->getWidth(); }

    int frameHeight() const { return film->getHeight() / frames; }

private:
    bool showControlMenu(PopupPlace place);

    PluginProcessor& processor;
    const int parameter;
    const CBitmap* film;
    const int frames;
    const int dragExtent;
    bool dragging = false;
    MidiGlow glow{*this, parameter, processor};

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(FilmSlider)
};

} // namespace quorel
