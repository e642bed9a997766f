// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/StripPanel.h"
#include "ui/widgets/myBgMenu.h"
#include "ui/widgets/myOnOff.h"

#include <array>
#include <memory>

namespace quorel
{

/** What a layer's MIDI filter blocks: eight switches, the last two of which block a controller of the user's
    choice each. */
class MidiPanel : public StripPanel
{
public:
    MidiPanel(PluginProcessor& pluginProcessor, EditorHost& editorHost, const EditorImages& editorImages,
              int layerIndex);

    void refresh() override;
    void comboBoxChanged(juce::ComboBox* menu) override;

private:
    static constexpr int numBlocks = layerSlot::blockUserController2 - layerSlot::blockProgramChange + 1;

    std::array<std::unique_ptr<myOnOff>, numBlocks> blocks;
    myBgMenu controller1;
    myBgMenu controller2;
};

} // namespace quorel
