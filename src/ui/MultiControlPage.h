// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/ControlPage.h"
#include "ui/widgets/myKnob.h"
#include "ui/widgets/myLabel2.h"
#include "ui/widgets/myLabelEdit.h"
#include "ui/widgets/myOnOff.h"
#include "ui/widgets/mySlider2.h"

#include <array>
#include <memory>

namespace quorel
{

/** The multi-control panel: four named faders, and below each of them four knobs that can be given a target
    and held. Message thread. */
class MultiControlPage : public ControlPage
{
public:
    MultiControlPage(PluginProcessor& pluginProcessor, EditorHost& editorHost,
                     const EditorImages& editorImages);

    void refresh() override;
    void buttonClicked(juce::Button* button) override;
    void labelTextChanged(juce::Label* label) override;

private:
    /** Opens the menu of a knob's targets. */
    class TargetButton : public juce::DrawableButton
    {
    public:
        TargetButton(const juce::String& name, const CBitmap& frameImage);

    private:
        void paintButton(juce::Graphics& g, bool highlighted, bool down) override;

        const CBitmap& frame;
    };

    /** Disables its knob while it is on, whoever switched it. */
    class HoldSwitch : public myOnOff
    {
    public:
        HoldSwitch(juce::Rectangle<int> bounds, MultiControlPage& page, int t, juce::Component& heldKnob);

    private:
        void buttonStateChanged() override;

        juce::Component& knob;
    };

    /** A knob and what belongs to it. */
    struct Target
    {
        std::unique_ptr<myKnob> knob;
        std::unique_ptr<HoldSwitch> hold;
        std::unique_ptr<TargetButton> button;
        std::unique_ptr<myLabel2> layerLine;
        std::unique_ptr<myLabel2> nameLine;
    };

    void addColumn(int column);
    void addTarget(int column, int row);
    void showTarget(int t);
    void showTargetMenu(int t);

    std::array<std::unique_ptr<mySlider2>, numMultiFaders> faders;
    std::array<std::unique_ptr<myLabelEdit>, numMultiFaders> names;
    std::array<Target, numMultiTargets> targets;
};

} // namespace quorel
