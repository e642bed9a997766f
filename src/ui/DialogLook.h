// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** JUCE's own look in the editor's colours, for what JUCE composes of many parts, such as its file chooser and its
    list of a plug-in's parameters. Message thread. */
class DialogLook : public juce::LookAndFeel_V4
{
public:
    DialogLook();

    juce::Typeface::Ptr getTypefaceForFont(const juce::Font& font) override;
};

} // namespace quorel
