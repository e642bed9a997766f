// SPDX-License-Identifier: GPL-3.0-or-later
// Where everything stands on the 1110 by 786 layout, in pixels from its top left: the editor places its
// controls by it, and the artwork draws their captions, wells and frames. Positions within a layer's strip
// count from the strip's own top left.
#pragma once

#include <juce_graphics/juce_graphics.h>

namespace quorel::geometry
{

using Point = juce::Point<int>;
using Box = juce::Rectangle<int>;

/** A box from its edges, as the tables of controls give them. */
constexpr int spanOf(int from, int to) noexcept
{
    return to - from;
}

inline Box edges(int left, int top, int right, int bottom)
{
    return {left, top, spanOf(left, right), spanOf(top, bottom)};
}

constexpr int width = 1110;
constexpr int height = 786;

/** Frame of a knob. Positions of knobs are the frame's top left; that of the master volume is its centre. */
constexpr int knobSize = 47;
constexpr int faderWidth = 28;
constexpr int faderHeight = 98;
constexpr int bigFaderWidth = 57;
constexpr int bigFaderHeight = 169;

//==============================================================================================================
// Header, on every page

namespace header
{
constexpr int height = 105;
inline const Point masterVolumeCentre{778, 61};
inline const Point masterMute{795, 75};
inline const Box backPanel{810, 20, 250, 80};
inline const Point userGuide{160, 72};
inline const Point previewNote{40, 72};
inline const Point editKey{499, 31};
inline const Point origKey{495, 60};
inline const Point layersKey{566, 31};
inline const Point fxKey{562, 60};
inline const Point managerKey{640, 31};
inline const Point multiKey{644, 60};
inline const Box hint{287, 56, 200, 14};
inline const Box midiMonitor{287, 36, 120, 14};
inline const Box tempo{353, 81, 60, 14};
inline const Point tap{284, 81};
inline const Box cpu{421, 81, 70, 14};
inline const Box meter{421, 39, 59, 8};
inline const Point folderPrevious{95, 57};
inline const Point folderNext{110, 57};
inline const Box folderMenu{125, 55, 150, 23};
inline const Point presetPrevious{242, 37};
inline const Point presetNext{257, 37};
inline const Box presetMenu{87, 34, 150, 23};
inline const Box undoKeys{200, 11, 74, 18};
} // namespace header

//==============================================================================================================
// A layer's strip

namespace strip
{
constexpr int width = 1110;
constexpr int height = 165;
/** Right edge of the part that all pages show; beyond it are the panel, or another page's controls. */
constexpr int commonWidth = 438;
/** The frame around that part. */
inline const Box commonFrame = edges(25, 3, 436, 163);

inline Box bounds(int layer)
{
    return {0, header::height + height * layer, width, height};
}

inline const Box instrumentMenu = edges(156, 11, 306, 27);
inline const Point programMenu{146, 34};
inline const Point programPrevious{316, 37};
inline const Point programNext{327, 37};
inline const Point bankMenu{168, 57};
inline const Point bankPrevious{146, 60};
inline const Point bankNext{157, 60};
inline const Point channelMenu{146, 80};
inline const Point on{43, 16};
inline const Point solo{43, 59};
inline const Point editor{43, 104};

inline Point send(int n)
{
    return {89 + 57 * n, 111};
}

inline Point sendPrePost(int n)
{
    return {92 + 57 * n, 109};
}

inline const Point pan{326, 111};
inline const Point volume{380, 111};
inline const Point icon{364, 24};
/** The invisible buttons over the icon, two pixels larger than it. */
inline const Point iconButton{363, 23};
constexpr int iconSize = 54;

// Keys of the panels, in a row at the top.
inline const Point easyKey{486, 3};
inline const Point filterKey{613, 3};
inline const Point eqKey{778, 3};
inline const Point midiKey{909, 3};

/** Left edge of all panel images; the top differs by panel: key range, zones, Easy (no image), EQ, MIDI. */
constexpr int panelX = 438;
constexpr int panelY[] = {24, 26, 0, 25, 25};

// Panels of the key range and of the zones.
inline const Point normalMode{463, 60};
inline const Point zoneMode{463, 105};

inline const Box keyRangeCaption = edges(620, 53, 770, 69);
inline const Point keyMin{640, 72};
inline const Point keyMax{680, 72};
inline const Box velocityRangeCaption = edges(620, 100, 770, 116);
inline const Point velocityMin{640, 120};
inline const Point velocityMax{680, 120};
/** Under the fields: the white keys of ten octaves and a half, 6 pixels each. */
inline const Box keyboard{606, 144, 450, 17};
inline const Box zoneKeyboard{574, 152, 450, 10};
inline const Box transposeCaption = edges(945, 70, 1095, 86);
inline const Point transpose{945, 90};
inline const Point transposeDown{982, 93};
inline const Point transposeUp{993, 93};

// Zones 0 to 7 stand in two columns of four.
constexpr int zoneColumn(int zone) noexcept
{
    return zone / 4;
}

constexpr int zoneRow(int zone) noexcept
{
    return zone % 4;
}

constexpr int zoneBoxWidth = 44;

inline Point zoneOn(int zone)
{
    return {517 + 293 * zoneColumn(zone), 55 + 25 * zoneRow(zone)};
}

/** Read-out `n` of a zone: lowest key, highest key, lowest velocity, highest velocity. */
inline Point zoneBox(int zone, int n)
{
    constexpr int x[] = {581, 632, 693, 744};
    return {x[n] + 288 * zoneColumn(zone), 57 + 25 * zoneRow(zone)};
}

// Easy panel.
inline Point easyFader(int n)
{
    return {460 + 53 * n, 32};
}

inline Box easyMenu(int n)
{
    return edges(447 + 53 * n, 125, 499 + 53 * n, 161);
}

inline const Box layoutMenu{509, 1, 80, 20};

// MIDI panel.
inline Point blockSwitch(int n)
{
    return {n < 4 ? 571 : 810, 51 + 23 * (n % 4)};
}

inline const Box userController1 = edges(832, 99, 936, 115);
inline const Box userController2 = edges(832, 122, 936, 138);
} // namespace strip

//==============================================================================================================
// EQ, within the strip for a layer's; the master's stands 598 pixels lower on the editor

namespace eq
{
constexpr int masterOffset = 598;
inline const Box screen = edges(736, 35, 1082, 157);
inline const Box masterScreen = edges(736, 632, 1082, 754);
inline const Point on{493, 36};
inline const Point masterOn{493, 634};
// The filters' switches stand one pixel apart from the offset rule.
inline const Point lowPassOn{492, 81};
inline const Point masterLowPassOn{493, 678};
inline const Point lowPassFrequency{442, 65};
inline const Point masterLowPassFrequency{442, 663};
inline const Point highPassOn{492, 125};
inline const Point masterHighPassOn{493, 722};
inline const Point highPassFrequency{442, 109};
inline const Point masterHighPassFrequency{442, 707};

inline Point bandOn(int band)
{
    return {545, 36 + 44 * band};
}

/** Knob `n` of a band: frequency, bandwidth, gain. */
inline Point bandKnob(int band, int n)
{
    return {569 + 55 * n, 22 + 44 * band};
}

inline Point onMaster(Point inStrip)
{
    return inStrip.translated(0, masterOffset);
}
} // namespace eq

//==============================================================================================================
// Effect slots, two by two

namespace fx
{
inline Point slotOffset(int slot)
{
    return {slot % 2 == 1 ? 324 : 0, slot >= 2 ? 256 : 0};
}

/** The frame around a slot. */
inline const Box frame = edges(440, 105, 762, 357);
inline const Point on{457, 108};
inline const Point type{450, 160};
constexpr int typeWidth = 100;
constexpr int typeHeight = 16;

/** Knob `n` of a slot's first row: volume, mix, pan. */
inline Point mixKnob(int n)
{
    return {563 + 52 * n, 147};
}

inline Box mixLabel(int n)
{
    return edges(575 + 52 * n, 188, 605 + 52 * n, 198);
}

/** Knob of effect parameter `j`, 0 to 9, in two rows of five. */
inline Point knob(int j)
{
    return {459 + 52 * (j % 5), j < 5 ? 210 : 273};
}

inline Box label(int j)
{
    const int i = j % 5;
    const int top = j < 5 ? 251 : 314;
    return edges(458 + 52 * i, top, 508 + 52 * i, top + 10);
}

/** Where the knobs are, of a slot without a type. */
inline const Box emptyText = edges(450, 262, 750, 275);

/** Step row `n` of the rhythm gate: left and right channel. */
inline Box stepRow(int n)
{
    return edges(490, 295 + 16 * n, 654, 309 + 16 * n);
}
} // namespace fx

//==============================================================================================================
// Preset manager

namespace manager
{
inline Point mode(int n)
{
    constexpr int x[] = {29, 194, 337, 517};
    return {x[n], 102};
}

inline const Box bankList = edges(770, 140, 1077, 737);
inline const Box presetGrid = edges(30, 140, 762, 737);
inline const Box categoryHeads[] = {edges(32, 140, 290, 158), edges(295, 140, 553, 158),
                                    edges(535, 140, 765, 158)};
inline const Box clearCategory = edges(350, 322, 500, 340);
inline const Box searchCaption = edges(30, 142, 130, 160);
inline const Box searchText = edges(135, 141, 435, 159);
inline const Box search = edges(440, 141, 540, 159);
/** The text field while categories are searched. */
inline const Box searchCaptionByCategory = edges(30, 322, 130, 340);
inline const Box searchTextByCategory = edges(135, 322, 340, 340);
/** The categories that a search by name is limited to. */
inline const Box limits = edges(550, 141, 760, 159);
inline const Box shown = edges(770, 104, 920, 121);
inline const Box order = edges(927, 104, 1077, 121);
/** Above the list: heart and stars, author and comment. */
inline const Box marks = edges(95, 121, 210, 136);
inline const Box author = edges(220, 121, 370, 136);
inline const Box comment = edges(380, 121, 762, 136);
constexpr int commandY = 740;

inline Point presetCommand(int n)
{
    return {30 + 80 * n, commandY};
}

inline Box presetCommandLabel(int n)
{
    return edges(53 + 80 * n, 744, 113 + 80 * n, 762);
}

inline Point folderCommand(int n)
{
    return {780 + 80 * n, commandY};
}

inline Box folderCommandLabel(int n)
{
    return edges(803 + 80 * n, 744, 863 + 80 * n, 762);
}
} // namespace manager

//==============================================================================================================
// Multi-controls: four columns of a fader and four knobs

namespace multi
{
constexpr int columnStep = 158;

inline Point fader(int column)
{
    return {505 + columnStep * column, 151};
}

inline Box name(int column)
{
    return edges(470 + columnStep * column, 318, 590 + columnStep * column, 336);
}

inline Point knob(int column, int row)
{
    return {504 + columnStep * column, 362 + 99 * row};
}

inline Box target(int column, int row)
{
    return {468 + columnStep * column, 413 + 99 * row, 120, 31};
}

constexpr int targetLineHeight = 14;
constexpr int targetLineStep = 16;

inline Point hold(int column, int row)
{
    return {566 + columnStep * column, 370 + 99 * row};
}
} // namespace multi

//==============================================================================================================
// Back panel

namespace back
{
inline const Box toFront{0, 0, width, geometry::height};
inline const Box version{100, 90, 500, 13};
inline const Point ecsMenu{100, 180};
inline const Box ecsLabel{125, 183, 200, 13};
inline const Point rescan{100, 240};
inline const Box rescanLabel{125, 243, 200, 13};
inline const Box rescanStatus{345, 243, 500, 13};
inline const Point folder{100, 300};
inline const Box folderLabel{125, 303, 150, 13};
inline const Box folderPath{345, 303, 300, 13};
/** Choice of the editor's size: a button that opens its menu, and its caption. */
inline const Point scale{100, 360};
inline const Box scaleLabel{125, 363, 200, 13};

inline Point block(int layer)
{
    return {100, 470 + 35 * layer};
}

inline Box blockLabel(int layer)
{
    return {125, 473 + 35 * layer, 200, 13};
}
} // namespace back

} // namespace quorel::geometry
