// SPDX-License-Identifier: GPL-3.0-or-later
// The panels of a layer's strip.
#include "Canvas.h"
#include "Lettering.h"
#include "Palette.h"
#include "Print.h"
#include "ui/Geometry.h"

namespace quorel::artwork
{
namespace
{

constexpr float switchSize = 20.0f;
/** Of the panels in use. */
constexpr float panelWidth = 650.0f;
constexpr float centred = 23.5f;

void tiny(juce::Graphics& g, const juce::String& text, float x, float baseline, juce::Colour colour)
{
    print(g, text, x, baseline, {Face::condensed, capitals::tiny, colour, 0.05f},
          juce::Justification::horizontallyCentred);
}

/** All panels fill the same part of the strip, whatever their images' own tops. */
const Rect panelFrame(438.5f, 26.0f, 649.0f, 138.0f);

/** Captions of the two mode switches, which both key panels have. */
void printModes(juce::Graphics& g)
{
    const std::pair<juce::Point<int>, const char*> modes[] = {{geometry::strip::normalMode, "NORMAL"},
                                                              {geometry::strip::zoneMode, "ZONES"}};
    for (const auto& [at, text] : modes)
        tiny(g, text, static_cast<float>(at.x) + switchSize / 2, static_cast<float>(at.y) + 27.0f,
             palette::print);
}

/** A sunk field for one group of controls. */
void field(juce::Graphics& g, Rect area)
{
    g.setColour(juce::Colours::black.withAlpha(0.25f));
    g.fillPath(roundedRect(area, 4));
    g.setColour(juce::Colours::white.withAlpha(0.05f));
    g.drawRoundedRectangle(area.reduced(0.5f), 4, 1);
}

void printKeyRange(juce::Graphics& g)
{
    printModes(g);
    field(g, {606, 49, 140, 45});
    field(g, {606, 96, 140, 45});
    field(g, {931, 66, 100, 45});
    // The captions are bitmap type on glass.
    namespace s = geometry::strip;
    for (const auto& area : {s::keyRangeCaption, s::velocityRangeCaption, s::transposeCaption})
    {
        const auto box = area.toFloat();
        glass(g, {box.getX() - 10, box.getY() - 2, box.getX() > 900 ? 88.0f : 128.0f, 14}, 2);
    }
    for (const auto& [from, to] : {std::pair{s::keyMin, s::keyMax}, {s::velocityMin, s::velocityMax}})
    {
        tiny(g, "LOW", static_cast<float>(from.x) - 13, static_cast<float>(from.y) + 11, palette::print);
        tiny(g, "HIGH", static_cast<float>(to.x) + 45, static_cast<float>(to.y) + 11, palette::print);
    }
}

void printZones(juce::Graphics& g)
{
    printModes(g);
    for (int column = 0; column < 2; ++column)
    {
        const int first = 4 * column;
        const auto left = static_cast<float>(geometry::strip::zoneOn(first).x);
        const auto box = [first](int n)
        { return static_cast<float>(geometry::strip::zoneBox(first, n).x) + 22; };
        field(g, {left - 8, 38, 283, 112});
        constexpr float baseline = 49;
        tiny(g, "ON", left + switchSize / 2, baseline, palette::print);
        tiny(g, "ZONE", left + 40, baseline, palette::print);
        tiny(g, "KEY FROM", box(0), baseline, palette::print);
        tiny(g, "TO", box(1), baseline, palette::print);
        tiny(g, "VEL FROM", box(2), baseline, palette::print);
        tiny(g, "TO", box(3), baseline, palette::print);
        for (int row = 0; row < 4; ++row)
            print(g, juce::String(first + row + 1), left + 40,
                  static_cast<float>(geometry::strip::zoneOn(row).y) + 14,
                  {Face::bold, 8, palette::amberBright, 0.0f}, juce::Justification::horizontallyCentred);
    }
}

void printMidi(juce::Graphics& g)
{
    field(g, {555, 40, 210, 108});
    field(g, {794, 40, 276, 108});
    const char* left[] = {"PROGRAM CHANGE", "BANK SELECT", "PITCH WHEEL", "MOD WHEEL"};
    const char* right[] = {"AFTERTOUCH", "SUSTAIN PEDAL", "CONTROLLER 1", "CONTROLLER 2"};
    for (int n = 0; n < 8; ++n)
    {
        const auto at = geometry::strip::blockSwitch(n);
        const bool withMenu = n >= 6;
        captionFrom(g, n < 4 ? left[n] : right[n - 4],
                    withMenu ? static_cast<float>(geometry::strip::userController1.getRight()) + 8
                             : static_cast<float>(at.x) + switchSize + 5,
                    static_cast<float>(at.y) + 13);
    }
    print(g, "BLOCK", 460, 56, {Face::bold, capitals::title, palette::amberBright, 0.1f});
    print(g, "MIDI THAT THIS", 460, 70, {Face::condensed, capitals::tiny, palette::printDim});
    print(g, "LAYER IGNORES", 460, 80, {Face::condensed, capitals::tiny, palette::printDim});
}

} // namespace

void printEasyPanel(juce::Graphics& g)
{
    inset(g, panelFrame, 5);
    for (int n = 0; n < 12; ++n)
    {
        const auto at = geometry::strip::easyFader(n).toFloat();
        print(g, juce::String(n + 1), at.x - 6, at.y + 11,
              {Face::condensed, capitals::caption, palette::amberBright},
              juce::Justification::horizontallyCentred);
    }
}

void printEq(juce::Graphics& g, Rect frame, bool master)
{
    namespace eq = geometry::eq;
    const int dy = master ? eq::masterOffset : 0;
    inset(g, frame, 5);

    const auto screen = (master ? eq::masterScreen : eq::screen).toFloat();
    glass(g, screen.expanded(2), 2);

    const auto switches = {std::pair{master ? eq::masterOn : eq::on, "EQ ON"},
                           {master ? eq::masterLowPassOn : eq::lowPassOn, "LP ON"},
                           {master ? eq::masterHighPassOn : eq::highPassOn, "HP ON"}};
    for (const auto& [at, text] : switches)
        tiny(g, text, static_cast<float>(at.x) + switchSize / 2, static_cast<float>(at.y) + 26.0f,
             palette::print);
    for (const auto& [at, text] :
         {std::pair{eq::lowPassFrequency, "LOW PASS"}, {eq::highPassFrequency, "HIGH PASS"}})
        tiny(g, text, static_cast<float>(at.x) + centred, belowKnob(at.y + dy) - 2, palette::print);

    const juce::Colour hues[] = {palette::green, palette::blue, palette::rose};
    for (int band = 0; band < 3; ++band)
    {
        const auto at = eq::bandOn(band).translated(0, dy).toFloat();
        tiny(g, "BAND " + juce::String(band + 1), at.x + switchSize / 2, at.y + 26.0f,
             hues[band].interpolatedWith(juce::Colours::white, 0.3f));
        const char* names[] = {"FREQ", "WIDTH", "GAIN"};
        for (int n = 0; n < 3; ++n)
        {
            const auto knob = eq::bandKnob(band, n).translated(0, dy);
            tiny(g, names[n], static_cast<float>(knob.x) + centred, belowKnob(knob.y) - 2, palette::print);
        }
    }
}

bool paintStripPanel(const Canvas& canvas)
{
    auto& g = canvas.g;
    const juce::String kinds[] = {"synth", "dorvik", "eq", "midicc", "easy"};
    if (!canvas.name.startsWith("panel"))
        return false;
    for (const auto& kind : kinds)
    {
        if (!canvas.name.contains(kind))
            continue;
        // Printed where the controls stand in the strip, whose part this is.
        const int panel = kind == "synth"    ? 0
                          : kind == "dorvik" ? 1
                          : kind == "easy"   ? 2
                          : kind == "eq"     ? 3
                                             : 4;
        const int top = panel == 2 ? 24 : geometry::strip::panelY[panel];
        // The alternatives are narrower.
        g.addTransform(juce::AffineTransform::scale(static_cast<float>(canvas.width) / panelWidth, 1.0f));
        g.addTransform(juce::AffineTransform::translation(-static_cast<float>(geometry::strip::panelX),
                                                          -static_cast<float>(top)));
        if (panel == 2)
        {
            printEasyPanel(g);
            return true;
        }
        if (panel == 3)
        {
            printEq(g, panelFrame, false);
            return true;
        }
        inset(g, panelFrame, 5);
        if (panel == 0)
            printKeyRange(g);
        else if (panel == 1)
            printZones(g);
        else
            printMidi(g);
        return true;
    }
    return false;
}

} // namespace quorel::artwork
