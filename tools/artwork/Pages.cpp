// SPDX-License-Identifier: GPL-3.0-or-later
// Page backgrounds: the header, the common part of the strips, and what each page prints for its own
// controls.
#include "Canvas.h"
#include "Lettering.h"
#include "Palette.h"
#include "Print.h"
#include "Symbols.h"
#include "ui/Geometry.h"

namespace quorel::artwork
{
namespace
{

constexpr float pageWidth = geometry::width;
constexpr float pageHeight = geometry::height;
constexpr float railWidth = 20.0f;
constexpr float headerBottom = 102.0f;
constexpr float half = geometry::knobSize / 2.0f;

void tiny(juce::Graphics& g, const juce::String& text, float x, float baseline, juce::Colour colour,
          juce::Justification justification = juce::Justification::horizontallyCentred)
{
    print(g, text, x, baseline, {Face::condensed, capitals::tiny, colour, 0.06f}, justification);
}

void captionTo(juce::Graphics& g, const juce::String& text, float right, float baseline)
{
    print(g, text, right, baseline, {Face::condensed, capitals::caption, palette::print},
          juce::Justification::right);
}

float centreX(juce::Point<int> knob)
{
    return static_cast<float>(knob.x) + half;
}

//==========================================================================================================

void drawChassis(juce::Graphics& g)
{
    brushed(g, {pageWidth, pageHeight}, palette::chassisTop, palette::chassisBottom, 0.05f);
    for (const float x : {0.0f, pageWidth - railWidth})
    {
        const Rect rail(x, 0, railWidth, pageHeight);
        g.setColour(juce::Colours::black.withAlpha(0.28f));
        g.fillRect(rail);
        groove(g, {x == 0.0f ? railWidth : x - 1, 0}, {x == 0.0f ? railWidth : x - 1, pageHeight});
        for (const float y : {16.0f, pageHeight / 2, pageHeight - 16.0f})
            screw(g, {x + railWidth / 2, y}, 5.5f);
    }
}

void drawHeader(juce::Graphics& g, bool standalone)
{
    namespace h = geometry::header;
    brushed(g, Rect(railWidth + 1, 0, pageWidth - 2 * railWidth - 2, headerBottom), palette::panelTop,
            palette::panelBottom, 0.05f);
    groove(g, {railWidth + 1, headerBottom}, {pageWidth - railWidth - 1, headerBottom});

    // Sound: what is loaded.
    print(g, standalone ? "LAYERING INSTRUMENT   STANDALONE" : "LAYERING INSTRUMENT", 40, 22,
          {Face::condensed, capitals::tiny, palette::printDim, 0.25f});
    for (const auto& menu : {h::presetMenu, h::folderMenu})
    {
        const auto box = menu.toFloat().reduced(0, 2);
        glass(g, box, 3);
        drawMenuMark(g, {box.getRight() - 9, box.getCentreY() - 2, 6, 4}, palette::amber);
    }
    captionTo(g, "PRESET", static_cast<float>(h::presetMenu.getX()) - 5, 49);
    captionTo(g, "FOLDER", static_cast<float>(h::folderPrevious.x) - 5, 66);
    captionFrom(g, "PREVIEW", static_cast<float>(h::previewNote.x) + 37, 92);
    captionFrom(g, "USER GUIDE", static_cast<float>(h::userGuide.x) + 39, 92);

    // Display: notes, hints, level; under it tempo and load.
    glass(g, Rect(281, 30, 212, 45), 3);
    tiny(g, "OUT", static_cast<float>(h::meter.getX()) - 3, 46, palette::printDim,
         juce::Justification::right);
    glass(g, h::cpu.toFloat().expanded(1, 1), 2);

    // Keys.
    tiny(g, "SOUND", 531, 25, palette::printDim);
    tiny(g, "PAGES", 641, 25, palette::printDim);
    for (const auto& [from, to] :
         {std::pair{499.0f, 512.0f}, {550.0f, 563.0f}, {570.0f, 622.0f}, {661.0f, 713.0f}})
        groove(g, {from, 22}, {to, 22});
    groove(g, {734, 16}, {734, 90});

    caption(g, "MASTER", static_cast<float>(h::masterVolumeCentre.x), 32);
    groove(g, {836, 16}, {836, 90});

    const float logoHeight = 27;
    const float logoWidth = 178;
    const float logoX = 1060 - logoWidth;
    drawLogo(g, {logoX, 34}, logoHeight, rgb(0xf2eee4), rgb(0x9d9a92), palette::amberBright);
    print(g, "OSTRAND", logoX, 79, {Face::bold, capitals::caption, palette::printDim, 0.3f});
    print(g, "BACK PANEL", 1052, 79, {Face::condensed, capitals::tiny, palette::amberBright, 0.08f},
          juce::Justification::right);
    drawArrow(g, Rect(1055, 74, 4, 5), palette::amberBright, false);
}

//==========================================================================================================

/** The common part of a strip, in strip coordinates. */
void printStrip(juce::Graphics& g, int layer)
{
    namespace s = geometry::strip;
    raisedPlate(g, {25, 2, 410, 160}, 5, palette::panelTop, palette::panelBottom);
    // The layer's number on a tab at the left.
    inset(g, {27, 4, 11, 156}, 3);
    print(g, juce::String(layer + 1), 32.5f, 86, {Face::bold, 8, palette::amberBright, 0.0f},
          juce::Justification::horizontallyCentred);

    for (const auto& [at, text] : {std::pair{s::on, "ON"}, {s::solo, "SOLO"}, {s::editor, "OPEN"}})
        caption(g, text, static_cast<float>(at.x) + 10, static_cast<float>(at.y) + 28);
    groove(g, {71, 10}, {71, 154});

    captionTo(g, "INSTRUMENT", static_cast<float>(s::instrumentMenu.getX()) - 6, 22);
    captionTo(g, "PROGRAM", static_cast<float>(s::programMenu.x) - 6, 45);
    captionTo(g, "BANK", static_cast<float>(s::bankPrevious.x) - 6, 68);
    captionTo(g, "CHANNEL", static_cast<float>(s::channelMenu.x) - 6, 91);
    groove(g, {78, 102}, {428, 102});

    for (int n = 0; n < 4; ++n)
    {
        const auto at = s::send(n);
        caption(g, "FX " + juce::String(n + 1), centreX(at), belowKnob(at.y));
        const auto pre = s::sendPrePost(n).toFloat();
        tiny(g, "PRE", pre.x - 2, pre.y + 7.5f, palette::printDim, juce::Justification::right);
    }
    caption(g, "PAN", centreX(s::pan), belowKnob(s::pan.y));
    caption(g, "VOLUME", centreX(s::volume), belowKnob(s::volume.y));
    groove(g, {316, 108}, {316, 154});
    inset(g, geometry::Box(s::icon.x, s::icon.y, s::iconSize, s::iconSize).toFloat().expanded(3), 8);
}

void eachStrip(juce::Graphics& g, void (*draw)(juce::Graphics&, int))
{
    for (int layer = 0; layer < 4; ++layer)
    {
        const juce::Graphics::ScopedSaveState state(g);
        g.addTransform(
            juce::AffineTransform::translation(0, static_cast<float>(geometry::strip::bounds(layer).getY())));
        draw(g, layer);
    }
}

/** The row of panel keys of a strip, and the ground of the Easy panel, which has no image of its own. */
void printPanelKeys(juce::Graphics& g, int)
{
    namespace s = geometry::strip;
    const std::pair<juce::Point<int>, const char*> panelKeys[] = {{s::easyKey, "EASY EDIT"},
                                                                  {s::filterKey, "KEYS / ZONES"},
                                                                  {s::eqKey, "EQUALISER"},
                                                                  {s::midiKey, "MIDI FILTER"}};
    for (const auto& [at, text] : panelKeys)
        captionFrom(g, text, static_cast<float>(at.x) + 25, static_cast<float>(at.y) + 13);
    // The layout menu opens from here.
    const auto menu = s::layoutMenu.toFloat();
    drawMenuMark(g, {menu.getX() + 52, 9.5f, 7, 4}, palette::amberBright);
    printEasyPanel(g);
}

//==========================================================================================================

void printFxSlots(juce::Graphics& g)
{
    namespace f = geometry::fx;
    for (int slot = 0; slot < 4; ++slot)
    {
        const juce::Graphics::ScopedSaveState state(g);
        const auto offset = f::slotOffset(slot).toFloat();
        g.addTransform(juce::AffineTransform::translation(offset.x, offset.y));
        inset(g, {440, 104.5f, 322, 252}, 5);
        print(g, "FX " + juce::String(slot + 1), 483, 122, {Face::bold, 8, palette::amberBright, 0.08f});
        groove(g, {450, 134}, {750, 134});
        captionFrom(g, "TYPE", static_cast<float>(f::type.x), static_cast<float>(f::type.y) - 5);
        groove(g, {450, 203}, {750, 203});
    }
    printEq(g, {440, 615.5f, 646, 168}, true);
    print(g, "MASTER", 447, 632, {Face::bold, capitals::caption, palette::amberBright, 0.06f});
    print(g, "EQ", 447, 643, {Face::bold, capitals::caption, palette::amberBright, 0.06f});
}

void printManager(juce::Graphics& g)
{
    namespace m = geometry::manager;
    const char* modes[] = {"BROWSE", "SEARCH BY NAME", "SEARCH BY CATEGORY", "EDIT CATEGORIES"};
    for (int n = 0; n < 4; ++n)
    {
        const auto at = m::mode(n).toFloat();
        captionFrom(g, modes[n], at.x + 25, at.y + 14);
    }
    print(g, "PRESETS", 32, 134, {Face::bold, capitals::caption, palette::amberBright, 0.1f});
    print(g, "FOLDERS", 772, 134, {Face::bold, capitals::caption, palette::amberBright, 0.1f});
    glass(g, m::presetGrid.toFloat().expanded(2).withTrimmedBottom(2), 3);
    glass(g, m::bankList.toFloat().expanded(2).withTrimmedBottom(2), 3);
    // The commands' ground: not all modes have them, so it is one bar to a list.
    for (const auto& list : {m::presetGrid, m::bankList})
    {
        constexpr float barHeight = 24;
        glass(g, list.toFloat().expanded(2, 0).withY(m::commandY - 1).withHeight(barHeight), 3);
    }
}

void printMulti(juce::Graphics& g)
{
    namespace m = geometry::multi;
    for (int column = 0; column < 4; ++column)
    {
        const auto name = m::name(column).toFloat();
        const float middle = name.getCentreX();
        inset(g, {name.getX() - 13, 106, 146, 650}, 5);
        print(g, "MULTI " + juce::String(column + 1), middle, 124,
              {Face::bold, 8, palette::amberBright, 0.1f}, juce::Justification::horizontallyCentred);
        const auto fader = m::fader(column).toFloat();
        for (const auto& [part, text] : {std::pair{0.0f, "100"}, {0.5f, "50"}, {1.0f, "0"}})
            tiny(g, text, fader.x, fader.y + 16.5f + 141.0f * part, palette::printDim,
                 juce::Justification::right);
        glass(g, name.expanded(1), 2);
        for (int row = 0; row < 4; ++row)
        {
            const auto knob = m::knob(column, row).toFloat();
            groove(g, {name.getX() - 6, knob.y - 12}, {name.getRight() + 6, knob.y - 12});
            print(g, juce::String(4 * column + row + 1), knob.x - 17, knob.y + 26,
                  {Face::bold, 8, palette::printDim, 0.0f}, juce::Justification::horizontallyCentred);
            const auto hold = m::hold(column, row).toFloat();
            tiny(g, "HOLD", hold.x + 8, hold.y + 23, palette::print);
            glass(g, m::target(column, row).toFloat().expanded(1), 2);
        }
    }
    tiny(g, "EACH FADER MOVES THE TARGETS OF ITS FOUR KNOBS. A KNOB SETS HOW FAR AND WHICH WAY.", 766, 770,
         palette::printDim);
}

//==========================================================================================================
// Design references: pages with their controls in place.

void paintAt(juce::Graphics& g, const char* name, juce::Point<int> at, int width, int height, int frame,
             int frames, bool (*painter)(const Canvas&))
{
    const juce::Graphics::ScopedSaveState state(g);
    g.setOrigin(at);
    painter({g, name, width, height, frame, frames});
}

void drawReferenceStrip(juce::Graphics& g, int layer)
{
    namespace s = geometry::strip;
    const auto knob = [&g](const char* name, juce::Point<int> at, int frame)
    { paintAt(g, name, at, geometry::knobSize, geometry::knobSize, frame, 137, paintKnob); };
    for (int n = 0; n < 4; ++n)
        knob("small_knobs_vol__137_frames", s::send(n), 20 * (n + layer));
    knob("small_knobs_pan__137_frames", s::pan, 68);
    knob("small_knobs_vol__137_frames", s::volume, 86);
    for (const auto& at : {s::on, s::solo, s::editor})
        paintAt(g, "switch", at, 20, 20, at == s::on ? 1 : 0, 2, paintSwitch);
}

void drawReference(juce::Graphics& g, const juce::String& name)
{
    eachStrip(g, drawReferenceStrip);
    if (name.contains("mcp"))
    {
        namespace m = geometry::multi;
        for (int column = 0; column < 4; ++column)
        {
            paintAt(g, "big_fader", m::fader(column), geometry::bigFaderWidth, geometry::bigFaderHeight,
                    47 * column, 142, paintFader);
            for (int row = 0; row < 4; ++row)
                paintAt(g, "small_knobs_pan__137_frames", m::knob(column, row), geometry::knobSize,
                        geometry::knobSize, 34 * row, 137, paintKnob);
        }
        return;
    }
    const int panel = name.contains("eq") ? 3 : name.contains("midi") ? 4 : name.contains("key") ? 0 : 2;
    const char* images[] = {"panel_synth", "panel_dorvik", nullptr, "panel_eq", "panel_midicc"};
    for (int layer = 0; layer < 4; ++layer)
    {
        const auto top = geometry::strip::bounds(layer).getPosition();
        if (panel == 2)
            for (int n = 0; n < 12; ++n)
                paintAt(g, "fader_81_frames", top + geometry::strip::easyFader(n), geometry::faderWidth,
                        geometry::faderHeight, 6 * n, 82, paintFader);
        else
            paintAt(g, images[panel],
                    top + juce::Point<int>(geometry::strip::panelX, geometry::strip::panelY[panel]), 650, 141,
                    0, 1, paintStripPanel);
    }
}

} // namespace

bool paintPage(const Canvas& canvas)
{
    const auto& name = canvas.name;
    if (!name.startsWith("quorel") || name == "quorel_back")
        return false;

    auto& g = canvas.g;
    drawChassis(g);
    drawHeader(g, name.contains("standalone"));
    if (name.contains("manager"))
    {
        printManager(g);
        return true;
    }
    eachStrip(g, printStrip);
    if (name.contains("mcp"))
        printMulti(g);
    else if (name.contains("fx"))
        printFxSlots(g);
    else
        eachStrip(g, printPanelKeys);
    if (name.contains("reference") || name == "quorel_eq")
        drawReference(g, name);
    return true;
}

} // namespace quorel::artwork
