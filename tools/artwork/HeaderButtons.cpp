// SPDX-License-Identifier: GPL-3.0-or-later
// The header's keys and icon buttons, and the tap button.
#include "Canvas.h"
#include "HeaderKeys.h"
#include "Lettering.h"
#include "Palette.h"
#include "Surfaces.h"
#include "Symbols.h"

namespace quorel::artwork
{
namespace
{

struct Key
{
    const char* name;
    const char* text;
    /** The drawn key within its frame; the frames of neighbours overlap. */
    juce::Rectangle<int> face;
};

const Key keys[] = {{"key_edit", "EDIT", headerKeyFaces::edit},
                    {"key_orig", "ORIGINAL", headerKeyFaces::orig},
                    {"key_layers", "LAYERS", headerKeyFaces::layers},
                    {"key_fx", "FX / EQ", headerKeyFaces::fx},
                    {"key_manager", "PRESETS", headerKeyFaces::manager},
                    {"key_mcp_short", "MULTI", headerKeyFaces::multi},
                    {"key_help", "HELP", {0, 1, 78, 26}},
                    {"key_mcp", "MULTI-CONTROL", {0, 1, 227, 26}}};

void drawKey(juce::Graphics& g, Rect face, bool lit)
{
    raisedPlate(g, face.reduced(0.5f), 3.5f, lit ? rgb(0x5a4312) : palette::keyTop,
                lit ? rgb(0x3a2b0c) : palette::keyBottom);
    // A light bar along the lower edge.
    const auto bar = face.reduced(9, 0).withTop(face.getBottom() - 6).withHeight(2);
    if (lit)
    {
        g.setColour(palette::amber.withAlpha(0.35f));
        g.fillPath(roundedRect(bar.expanded(1.5f), 2.5f));
    }
    g.setColour(lit ? palette::amberBright : rgb(0x19191b));
    g.fillPath(roundedRect(bar, 1));
}

void drawKeyText(juce::Graphics& g, const juce::String& text, Rect face, bool lit)
{
    print(g, text, face.getCentreX(), face.getY() + 14.0f,
          {Face::bold, capitals::title, lit ? palette::amberCore : palette::print, 0.04f},
          juce::Justification::horizontallyCentred);
}

/** Where the icon buttons are drawn on the page. */
constexpr float iconFacesTop = 78.0f;
constexpr float iconFaceHeight = 21.0f;

/** The icon of a header button. */
bool drawIcon(const Canvas& canvas)
{
    const auto& name = canvas.name;
    if (!name.startsWith("icons_"))
        return false;
    auto& g = canvas.g;
    const bool wide = canvas.width > 100;
    const bool mute = name.startsWith("icons_mute");
    // The drawn buttons stand in one row, whatever their frames' tops.
    const auto frame = mute ? geometry::header::masterMute : geometry::header::previewNote;
    const Rect face = canvas.bounds()
                          .reduced(1, 0)
                          .withY(iconFacesTop - static_cast<float>(frame.y))
                          .withHeight(iconFaceHeight);
    const bool lit = canvas.isDown();
    raisedPlate(g, face, 3.5f, lit ? (mute ? rgb(0x5c1d12) : rgb(0x5a4312)) : palette::keyTop,
                lit ? (mute ? rgb(0x3c130c) : rgb(0x3a2b0c)) : palette::keyBottom);
    const auto colour = lit ? (mute ? rgb(0xff8a70) : palette::amberCore) : palette::print;
    const auto area = Rect(14, 14).withCentre(face.getCentre().translated(wide ? -80.0f : 0.0f, 0));
    if (mute)
        drawSpeaker(g, area, colour, lit);
    else if (name.startsWith("icons_note"))
        drawNote(g, area, colour);
    else
        drawBook(g, area, colour, name.endsWith("1"));
    if (wide)
        print(g,
              mute                            ? "MUTE"
              : name.startsWith("icons_note") ? "PLAY A NOTE"
                                              : "USER GUIDE",
              face.getCentreX() - 60, face.getCentreY() + 3.5f, {Face::bold, capitals::title, colour, 0.04f});
    return true;
}

bool drawTap(const Canvas& canvas)
{
    if (!canvas.name.startsWith("tap_button"))
        return false;
    auto& g = canvas.g;
    const auto face = canvas.bounds().reduced(0.5f, 0.5f);
    const bool lit = canvas.isDown() || !canvas.name.contains("greyed");
    fillShaded(g, roundedRect(face, 2.5f), face, juce::Colours::black, rgb(0x3c3d40));
    const auto inner = face.reduced(1);
    fillShaded(g, roundedRect(inner, 1.8f), inner, canvas.isDown() ? rgb(0x7a5a14) : palette::keyTop,
               canvas.isDown() ? rgb(0x4a360c) : palette::keyBottom);
    print(g, "TAP TEMPO", face.getCentreX(), 10.0f,
          {Face::condensed, capitals::caption, lit ? palette::amberCore : palette::print, 0.05f},
          juce::Justification::horizontallyCentred);
    return true;
}

} // namespace

bool paintHeaderButton(const Canvas& canvas)
{
    for (const auto& key : keys)
        if (canvas.name == key.name)
        {
            drawKey(canvas.g, key.face.toFloat(), canvas.isDown());
            drawKeyText(canvas.g, key.text, key.face.toFloat(), canvas.isDown());
            return true;
        }
    return drawIcon(canvas) || drawTap(canvas);
}

} // namespace quorel::artwork
