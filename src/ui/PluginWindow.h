// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "hosting/VirtualInstrument.h"
#include "ui/DialogLook.h"
#include "ui/EditorLook.h"

#include <juce_audio_processors/juce_audio_processors.h>
#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** The window of a hosted instrument, with the instrument's own editor or, where it has none, a list of its
    parameters. The layer owns it and closes it with the instrument; it stays open when this instrument's own
    editor closes. Message thread. */
class PluginWindow : public juce::DocumentWindow, public InstrumentWindow
{
public:
    /** Opens the window of the layer's instrument, or brings it to the front. Does nothing if the layer is
        empty or the instrument's editor can't be created. */
    static void open(VirtualInstrument& layer);

    ~PluginWindow() override;

    /** True also while the window is minimised. */
    bool isShowing() const override { return isVisible(); }

    void closeButtonPressed() override;

private:
    PluginWindow(VirtualInstrument& owner, juce::AudioProcessorEditor* editor);

    /** Keeps the look that the window was made with. */
    EditorLook look;
    DialogLook listLook;
    VirtualInstrument& layer;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(PluginWindow)
};

} // namespace quorel
