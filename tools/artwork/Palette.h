// SPDX-License-Identifier: GPL-3.0-or-later
// The colours of the whole editor: dark anodised metal, warm grey print, amber light.
#pragma once

#include <juce_graphics/juce_graphics.h>

namespace quorel::artwork
{

inline juce::Colour rgb(juce::uint32 value)
{
    return juce::Colour(0xff000000 | value);
}

namespace palette
{
// Metal, from the lit upper edge to the shade.
inline const juce::Colour chassisTop = rgb(0x2b2c2f);
inline const juce::Colour chassisBottom = rgb(0x1f2022);
inline const juce::Colour panelTop = rgb(0x36373b);
inline const juce::Colour panelBottom = rgb(0x2a2b2e);
inline const juce::Colour insetTop = rgb(0x1d1e20);
inline const juce::Colour insetBottom = rgb(0x242528);
inline const juce::Colour keyTop = rgb(0x4b4c51);
inline const juce::Colour keyBottom = rgb(0x303135);
inline const juce::Colour edge = rgb(0x0c0c0d);

// Display glass.
inline const juce::Colour glassTop = rgb(0x0a0a0b);
inline const juce::Colour glassBottom = rgb(0x111112);

// Print.
inline const juce::Colour print = rgb(0xc9c5bb);
inline const juce::Colour printDim = rgb(0xaaa79f);
/** For marks; text in it would be too faint. */
inline const juce::Colour printFaint = rgb(0x66645f);

// Light.
inline const juce::Colour amber = rgb(0xc38a00);
inline const juce::Colour amberBright = rgb(0xf0b232);
/** A lamp's own, deeper than print. */
inline const juce::Colour amberLamp = rgb(0xf2a516);
inline const juce::Colour amberCore = rgb(0xffe2a0);
// The EQ bands' hues, those of their curves a little brighter.
inline const juce::Colour green = rgb(0x4cc82a);
inline const juce::Colour blue = rgb(0x2f93d8);
inline const juce::Colour rose = rgb(0xc83ce0);
} // namespace palette

} // namespace quorel::artwork
