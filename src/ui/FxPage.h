// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/ControlPage.h"
#include "ui/EqControls.h"
#include "ui/SoundGround.h"
#include "ui/widgets/kappelDisplay.h"
#include "ui/widgets/myBgMenu.h"
#include "ui/widgets/myKnob.h"
#include "ui/widgets/myLabel.h"
#include "ui/widgets/myLabelFont.h"
#include "ui/widgets/myOnOff.h"

#include <array>
#include <memory>

namespace quorel
{

/** The four effect slots and the master EQ. A slot shows what its effect type has: a named knob for each
    parameter, and the step rows of the rhythm gate. Message thread. */
class FxPage : public ControlPage, public GroundHolder
{
public:
    FxPage(PluginProcessor& pluginProcessor, EditorHost& editorHost, const EditorImages& editorImages);

    void refresh() override;
    /** The legend of step rows. */
    void paint(juce::Graphics& g) override;

    /** Choosing a type switches the slot on, writes the type's start values, and asks for a refresh. */
    void comboBoxChanged(juce::ComboBox* box) override;

private:
    struct Knob
    {
        std::unique_ptr<myKnob> knob;
        std::unique_ptr<juce::Label> label;
    };

    struct Slot
    {
        std::unique_ptr<SoundGround> ground;
        std::unique_ptr<myOnOff> on;
        std::unique_ptr<myBgMenu> type;
        /** Shown while there is no type. */
        std::unique_ptr<myLabel> emptyText;
        /** Volume, mix and pan. */
        std::array<Knob, 3> mix;
        std::array<Knob, numFxParameters> parameters;
        /** Left and right channel. */
        std::array<std::unique_ptr<kappelDisplay>, 2> steps;
    };

    SoundGround* groundAt(juce::Point<int> position) override;
    void buildSlot(int block);
    void refreshSlot(int block);
    /** Sets a knob to its parameter; a double click returns to this value. */
    void showKnob(myKnob& knob);
    void chooseType(int block, int type);

    std::array<Slot, numFxBlocks> slots;
    EqControls masterEq;
};

} // namespace quorel
