// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_audio_utils/juce_audio_utils.h>
#include <juce_gui_extra/juce_gui_extra.h>

#include <memory>

// How JUCE's standalone part makes the instrument.
#include <juce_audio_plugin_client/utility/juce_CreatePluginFilter.h>

#include <juce_audio_plugin_client/Standalone/juce_StandaloneFilterWindow.h>

namespace quorel
{

/** The standalone program's window: the editor below a title bar with a menu, on JUCE's holder of the instrument and
    its devices. No audio inputs are opened. The window's place, the devices and the sound are kept in `settings`.
    Message thread. */
class StandaloneWindow final : public juce::DocumentWindow
{
public:
    /** `kept` outlives the window. */
    explicit StandaloneWindow(juce::PropertySet& kept);
    ~StandaloneWindow() override;

    juce::AudioProcessor& getProcessor() { return *holder.processor; }

    /** Puts the sound down in the settings, for the next start. */
    void keepSound() { holder.savePluginState(); }

    void resized() override;
    void closeButtonPressed() override;

private:
    void openEditor();
    void closeEditor();
    void showOptions();
    void showDevices();
    void reset();
    void placeOnScreen();

    juce::PropertySet& settings;
    juce::StandalonePluginHolder holder;
    juce::TextButton options{"Options"};
};

} // namespace quorel
