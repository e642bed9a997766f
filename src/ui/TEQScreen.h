// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PluginProcessor.h"
#include "resources/CBitmap.h"
#include "ui/EqGrid.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <array>
#include <vector>

namespace quorel
{

/** The curves of an EQ's three bands. A drag moves the nearest band in frequency and gain, with Shift in
    bandwidth; the wheel changes its bandwidth, and a double click resets it. It writes the parameters itself;
    the editor's pass repaints it when one of its unit's 17 changes. Message thread. */
class TEQScreen : public juce::Slider
{
public:
    /** `unit` is 0 to 3 for a layer or `masterEqUnit`. `bandFills`, the fills under the curves, outlive the
        screen. */
    TEQScreen(juce::Rectangle<int> bounds, int unit, const std::array<CBitmap, numEqBands>& bandFills,
              PluginProcessor& pluginProcessor);

    /** Ends a drag that is under way, for hosts. */
    ~TEQScreen() override;

    void paint(juce::Graphics& g) override;
    void mouseDown(const juce::MouseEvent& event) override;
    void mouseDrag(const juce::MouseEvent& event) override;
    void mouseUp(const juce::MouseEvent& event) override;

    /** The second press has done it. */
    void mouseDoubleClick(const juce::MouseEvent&) override {}

    void mouseWheelMove(const juce::MouseEvent& event, const juce::MouseWheelDetails& wheel) override;
    /** Left and Right move the selected band's frequency, Up and Down its gain; with Shift, each moves its
        bandwidth. Return selects the next band, Delete and Backspace reset it. */
    bool keyPressed(const juce::KeyPress& key) override;
    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

    /** Gain of a band at a pixel column, in units of 20 dB. */
    double responseAt(int band, int column) const { return response(filterOf(band), column); }

private:
    /** A peaking section, normalised to a0 = 1. */
    struct BandFilter
    {
        bool flat;
        double b0, b1, b2, a1, a2;
    };

    /** A band's curve as it is painted: columns of about the same height form one run. */
    struct Curve
    {
        struct Run
        {
            int x;
            float y;
        };

        std::vector<Run> runs;
        juce::Point<float> handle;
        float end = 0.0f;
        bool flat = true;
    };

    BandFilter filterOf(int band) const;
    double response(const BandFilter& filter, int column) const;
    /** Height of the curve at a pixel column, in pixels from the top. */
    float heightAt(const BandFilter& filter, int column) const;
    void updateCurve(int band);
    void paintFill(juce::Graphics& g, int band) const;
    void paintCurve(juce::Graphics& g, int band) const;
    float bandValue(int band, int offset) const;
    int bandParameter(int band, int offset) const noexcept;
    void writeBand(int band, int offset, float value);
    /** Frequency, width and gain to their defaults, as one gesture. */
    void resetBand(int band);
    void endDrag();
    int nearestBand(double u) const;

    PluginProcessor& processor;
    const int base;
    const std::array<CBitmap, numEqBands>& fills;
    const EqGrid grid;
    /** cos(w) and cos(2 w) of each pixel column's frequency. */
    std::vector<double> cosW;
    std::vector<double> cos2W;
    std::array<Curve, numEqBands> curves;
    int selectedBand = 0;
    bool dragging = false;
    /** By offset: parameters of the selected band that the current drag has touched. */
    std::array<bool, eqSlot::slotsPerBand> inGesture{};

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(TEQScreen)
};

} // namespace quorel
