// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "hosting/VirtualInstrument.h"
#include "ui/EditorLook.h"

#include <juce_audio_processors/juce_audio_processors.h>
#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** The window of a hosted instrument, with the instrument's own editor or, where it has none, a list of its
    parameters. The layer owns it and closes it with the instrument; it stays when this instrument's own
   editor closes. Message thread. */
class PluginWindow : public juce::DocumentWindow, public InstrumentWindow
{
public:
    /** Opens the window of the layer's instrument, or brings it to the front. Does nothing for an empty
        layer, or where the instrument's editor can't be had. */
    static void open(VirtualInstrument& layer);

    ~PluginWindow() override;

    /** Also true while the window is iconised. */
    bool isShowing() const override { return isVisible(); }

    void closeButtonPressed() override;

private:
    PluginWindow(VirtualInstrument& owner, juce::AudioProcessorEditor* editor);

    /** Keeps the look alive that the window was made with. */
    EditorLook look;
    /** Of the list of parameters: the editor's own look, grey on black, leaves it unreadable. */
    juce::LookAndFeel_V4 listLook;
    VirtualInstrument& layer;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(PluginWindow)
};

} // namespace quorel
