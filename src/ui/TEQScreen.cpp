// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/TEQScreen.h"

#include "parameters/ParameterCatalogue.h"
#include "ui/EditorColours.h"
#include "ui/widgets/ParameterAccessibility.h"
#include "ui/widgets/WidgetTools.h"

#include <cmath>
#include <utility>

namespace quorel
{
namespace
{
// The EQ runs twice per sample. The picture assumes one fixed rate, and the same value of 2 pi as the engine.
constexpr double displayRate = 88100.0;
constexpr double fullCircle = 6.28318;
constexpr double lowestFrequency = 20.0;
constexpr double octaves = 10.0;
/** A gain closer to 0 dB than this draws a flat line. */
constexpr double flatDecibels = 0.01;
constexpr double smallestPower = 1e-30;
constexpr double shiftWidthFactor = 3.0;
/** Of the whole range of a bandwidth, for one click of the wheel. */
constexpr float wheelWidthStep = 0.02f;
constexpr float handleSize = 4.0f;
/** Columns whose heights differ by less, in pixels, are drawn as one. */
constexpr float runTolerance = 0.2f;

const juce::Colour groundColour{0xff000000};
const juce::Colour middleColour{0xff134108};

double angleOf(double normalisedFrequency)
{
    return std::exp2(normalisedFrequency * octaves) * lowestFrequency / displayRate * fullCircle;
}
} // namespace

TEQScreen::TEQScreen(juce::Rectangle<int> bounds, int unit, const std::array<CBitmap, numEqBands>& bandFills,
                     PluginProcessor& pluginProcessor)
    : juce::Slider(LinearVertical, NoTextBox)
    , processor(pluginProcessor)
    , base(eqBase(unit))
    , fills(bandFills)
    , grid(bounds.getWidth(), bounds.getHeight())
{
    setUpControl(*this, "EQlcd", noParameter);
    setTitle(unit == masterEqUnit ? "Master EQ curve" : "Layer" + juce::String(unit + 1) + " EQ curve");
    setWantsKeyboardFocus(true);
    setOpaque(true);
    setBounds(bounds);

    for (int x = 0; x < getWidth(); ++x)
    {
        const double w = angleOf(static_cast<double>(x) / getWidth());
        cosW.push_back(std::cos(w));
        cos2W.push_back(std::cos(2.0 * w));
    }
}

float TEQScreen::bandValue(int band, int offset) const
{
    return processor.readParameter(bandParameter(band, offset));
}

int TEQScreen::bandParameter(int band, int offset) const noexcept
{
    return base + eqSlot::bands + eqSlot::slotsPerBand * band + offset;
}

TEQScreen::BandFilter TEQScreen::filterOf(int band) const
{
    const double decibels = static_cast<double>(bandValue(band, eqSlot::bandGain)) * 40.0 - 20.0;
    const double q = std::exp2(4.0 - 10.0 * static_cast<double>(bandValue(band, eqSlot::bandWidth)));
    const double w = angleOf(static_cast<double>(bandValue(band, eqSlot::bandFreq)));
    const double amplitude = std::pow(10.0, decibels / 40.0);
    const double alpha = std::sin(w) / (2.0 * q);
    const double a0 = 1.0 + alpha / amplitude;
    const double middle = -2.0 * std::cos(w) / a0;
    return {std::abs(decibels) < flatDecibels,
            (1.0 + alpha * amplitude) / a0,
            middle,
            (1.0 - alpha * amplitude) / a0,
            middle,
            (1.0 - alpha / amplitude) / a0};
}

double TEQScreen::response(const BandFilter& f, int column) const
{
    if (f.flat)
        return 0.0;

    // Squared magnitude of c0 + c1 z^-1 + c2 z^-2 on the unit circle.
    const auto power = [&](double c0, double c1, double c2)
    {
        const auto x = static_cast<size_t>(column);
        const double sum =
            c0 * c0 + c1 * c1 + c2 * c2 + 2.0 * (c0 * c1 + c1 * c2) * cosW[x] + 2.0 * c0 * c2 * cos2W[x];
        return juce::jmax(smallestPower, sum);
    };
    return 0.5 * std::log(power(f.b0, f.b1, f.b2) / power(1.0, f.a1, f.a2)) / std::log(10.0);
}

float TEQScreen::heightAt(const BandFilter& filter, int column) const
{
    return (1.0f - static_cast<float>(response(filter, column))) * static_cast<float>(getHeight()) / 2.0f;
}

void TEQScreen::updateCurve(int band)
{
    const auto filter = filterOf(band);
    auto& curve = curves[static_cast<size_t>(band)];
    curve.runs.clear();
    for (int x = 0; x < getWidth(); ++x)
    {
        const float y = heightAt(filter, x);
        if (curve.runs.empty() || std::abs(y - curve.runs.back().y) > runTolerance)
            curve.runs.push_back({x, y});
    }

    const auto frequency = static_cast<double>(bandValue(band, eqSlot::bandFreq));
    const int column = juce::jlimit(0, getWidth() - 1, static_cast<int>(frequency * getWidth()));
    curve.handle = {static_cast<float>(frequency * getWidth()), heightAt(filter, column)};
    curve.end = heightAt(filter, getWidth() - 1);
    curve.flat = filter.flat;
}

void TEQScreen::paintFill(juce::Graphics& g, int band) const
{
    const auto& curve = curves[static_cast<size_t>(band)];
    if (curve.flat)
        return;

    g.setOpacity(1.0f);
    const float middle = static_cast<float>(getHeight()) / 2.0f;
    for (size_t i = 0; i < curve.runs.size(); ++i)
    {
        const auto [x, y] = curve.runs[i];
        const int end = i + 1 < curve.runs.size() ? curve.runs[i + 1].x : getWidth();
        if (std::abs(middle - y) > runTolerance)
            fills[static_cast<size_t>(band)].paint(g, {static_cast<float>(x), juce::jmin(y, middle),
                                                       static_cast<float>(end - x), std::abs(middle - y)});
    }
}

void TEQScreen::paintCurve(juce::Graphics& g, int band) const
{
    const auto& curve = curves[static_cast<size_t>(band)];
    juce::Path path;
    path.preallocateSpace(static_cast<int>(curve.runs.size() + 2) * 3);
    path.startNewSubPath(0.0f, curve.runs.front().y);
    for (const auto& run : curve.runs)
        path.lineTo(static_cast<float>(run.x), run.y);
    path.lineTo(static_cast<float>(getWidth()), curve.end);
    g.setColour(colours::eqBands[static_cast<size_t>(band)]);
    g.strokePath(path, juce::PathStrokeType(1.0f));
}

void TEQScreen::paint(juce::Graphics& g)
{
    g.fillAll(groundColour);
    grid.paint(g);
    for (int band = 0; band < numEqBands; ++band)
    {
        updateCurve(band);
        paintFill(g, band);
    }
    for (int band = 0; band < numEqBands; ++band)
        paintCurve(g, band);

    g.setColour(middleColour);
    g.fillRect(0.0f, static_cast<float>(getHeight() - 1) / 2.0f, static_cast<float>(getWidth()), 1.0f);

    for (size_t band = 0; band < curves.size(); ++band)
    {
        g.setColour(colours::eqBands[band]);
        g.drawEllipse(juce::Rectangle<float>(handleSize, handleSize).withCentre(curves[band].handle), 1.0f);
    }
}

int TEQScreen::nearestBand(double u) const
{
    int nearest = 0;
    double least = 1000.0;
    for (int band = 0; band < numEqBands; ++band)
    {
        const double distance = std::abs(static_cast<double>(bandValue(band, eqSlot::bandFreq)) - u);
        if (distance < least)
        {
            least = distance;
            nearest = band;
        }
    }
    return nearest;
}

void TEQScreen::writeBand(int band, int offset, float value)
{
    const int parameter = bandParameter(band, offset);
    if (dragging && !inGesture[static_cast<size_t>(offset)])
    {
        inGesture[static_cast<size_t>(offset)] = true;
        processor.beginUserGesture(parameter);
    }
    processor.setParameterFromUi(parameter, value);
    repaint();
}

void TEQScreen::resetBand(int band)
{
    constexpr int offsets[] = {eqSlot::bandFreq, eqSlot::bandWidth, eqSlot::bandGain};
    for (const int offset : offsets)
        processor.beginUserGesture(bandParameter(band, offset));
    for (const int offset : offsets)
        processor.setParameterFromUi(bandParameter(band, offset),
                                     parameterDefault(bandParameter(band, offset)));
    for (const int offset : offsets)
        processor.endUserGesture(bandParameter(band, offset));
    repaint();
}

void TEQScreen::mouseDown(const juce::MouseEvent& event)
{
    dragging = event.mods.isLeftButtonDown();

    // The first click of two has brought the band under the mouse.
    if (dragging && event.getNumberOfClicks() % 2 == 0)
    {
        dragging = false;
        resetBand(selectedBand);
        return;
    }
    selectedBand = nearestBand(event.position.x / static_cast<double>(getWidth()));
    mouseDrag(event);
}

void TEQScreen::mouseDrag(const juce::MouseEvent& event)
{
    if (!dragging)
        return;

    const float u = juce::jlimit(0.0f, 1.0f, event.position.x / static_cast<float>(getWidth()));
    const float v = juce::jlimit(0.0f, 1.0f, event.position.y / static_cast<float>(getHeight()));
    if (event.mods.isShiftDown())
    {
        const double distance = std::abs(static_cast<double>(u - bandValue(selectedBand, eqSlot::bandFreq)));
        writeBand(selectedBand, eqSlot::bandWidth,
                  static_cast<float>(juce::jmin(distance * shiftWidthFactor, 1.0)));
        return;
    }
    writeBand(selectedBand, eqSlot::bandFreq, u);
    writeBand(selectedBand, eqSlot::bandGain, 1.0f - v);
}

TEQScreen::~TEQScreen()
{
    endDrag();
}

void TEQScreen::mouseUp(const juce::MouseEvent&)
{
    endDrag();
}

void TEQScreen::endDrag()
{
    dragging = false;
    for (int offset = 0; offset < eqSlot::slotsPerBand; ++offset)
        if (std::exchange(inGesture[static_cast<size_t>(offset)], false))
            processor.endUserGesture(bandParameter(selectedBand, offset));
}

void TEQScreen::mouseWheelMove(const juce::MouseEvent& event, const juce::MouseWheelDetails& wheel)
{
    const float turn = wheel.isReversed ? -wheel.deltaY : wheel.deltaY;
    if (turn == 0.0f || dragging)
        return;

    selectedBand = nearestBand(event.position.x / static_cast<double>(getWidth()));
    const int parameter = bandParameter(selectedBand, eqSlot::bandWidth);
    const float width =
        bandValue(selectedBand, eqSlot::bandWidth) + (turn > 0.0f ? wheelWidthStep : -wheelWidthStep);
    processor.beginUserGesture(parameter);
    processor.setParameterFromUi(parameter, juce::jlimit(0.0f, 1.0f, width));
    processor.endUserGesture(parameter);
    repaint();
}

bool TEQScreen::keyPressed(const juce::KeyPress& key)
{
    // The gesture that is under way is the selected band's.
    if (dragging)
        return false;

    const int code = key.getKeyCode();
    if (code == juce::KeyPress::returnKey)
    {
        selectedBand = (selectedBand + 1) % numEqBands;
        return true;
    }
    if (code == juce::KeyPress::deleteKey || code == juce::KeyPress::backspaceKey)
    {
        resetBand(selectedBand);
        return true;
    }

    const bool sideways = code == juce::KeyPress::leftKey || code == juce::KeyPress::rightKey;
    const bool upOrRight = code == juce::KeyPress::upKey || code == juce::KeyPress::rightKey;
    if (!sideways && !upOrRight && code != juce::KeyPress::downKey)
        return false;

    const int offset = key.getModifiers().isShiftDown() ? eqSlot::bandWidth
                       : sideways                       ? eqSlot::bandFreq
                                                        : eqSlot::bandGain;
    const float step = static_cast<float>(upOrRight ? keyboardStep : -keyboardStep);
    writeBand(selectedBand, offset, juce::jlimit(0.0f, 1.0f, bandValue(selectedBand, offset) + step));
    return true;
}

std::unique_ptr<juce::AccessibilityHandler> TEQScreen::createAccessibilityHandler()
{
    return std::make_unique<juce::AccessibilityHandler>(*this, juce::AccessibilityRole::image);
}

} // namespace quorel
