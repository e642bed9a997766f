// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/StripPanel.h"
#include "ui/widgets/myBgMenu.h"
#include "ui/widgets/myKnob.h"
#include "ui/widgets/myOnOff.h"

#include <array>
#include <memory>

namespace quorel
{

/** The mixer part of a layer's strip: on and solo, MIDI channel, sends, pan and volume. */
class MixPanel : public StripPanel
{
public:
    MixPanel(PluginProcessor& pluginProcessor, EditorHost& editorHost, const EditorImages& editorImages,
             int layerIndex);

    void refresh() override;
    void comboBoxChanged(juce::ComboBox* menu) override;

private:
    myOnOff onSwitch;
    myOnOff soloSwitch;
    myBgMenu channelMenu;
    std::array<std::unique_ptr<myKnob>, numSends> sends;
    std::array<std::unique_ptr<myOnOff>, numSends> sendSwitches;
    myKnob panKnob;
    myKnob volumeKnob;
};

} // namespace quorel
