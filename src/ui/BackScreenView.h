// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/ControlPage.h"
#include "ui/widgets/myButton.h"
#include "ui/widgets/myOnOff.h"

#include <array>
#include <memory>

namespace quorel
{

/** The settings on the back: controller table, plug-in folder and scan, size of the editor, and which layers
    the free MIDI controllers reach. A click anywhere else returns to the front. Message thread. */
class BackScreenView : public ControlPage, private juce::Timer
{
public:
    BackScreenView(PluginProcessor& pluginProcessor, EditorHost& editorHost,
                   const EditorImages& editorImages);
    ~BackScreenView() override;

    void refresh() override;
    void buttonClicked(juce::Button* button) override;

private:
    /** The text beside a control: passes clicks on to it. */
    class Caption : public juce::Label
    {
    public:
        Caption(juce::Rectangle<int> bounds, const juce::String& text, juce::Button& captioned);

        void mouseDown(const juce::MouseEvent& event) override;

    private:
        juce::Button& button;
    };

    void timerCallback() override;
    void setUpLabel(juce::Label& label, juce::Rectangle<int> bounds, const juce::String& title,
                    juce::Colour textColour);
    Caption& addWithCaption(juce::Button& button, juce::Rectangle<int> captionBounds,
                            const juce::String& text);
    void showPluginFolder();
    void chooseFolder();
    void showEcsMenu();
    void showScaleMenu();

    /** Behind everything else, as large as the panel. */
    juce::DrawableButton toFront{"to Plugin View", juce::DrawableButton::ImageStretched};
    juce::Label version;
    myButton ecsButton;
    myButton rescanButton;
    myButton folderButton;
    myButton scaleButton;
    juce::Label scanStatus;
    juce::Label folderPath;
    std::array<std::unique_ptr<myOnOff>, numLayers> blocks;
    std::vector<std::unique_ptr<Caption>> captions;
    /** Shows the scale in force. */
    Caption* scaleCaption = nullptr;
    bool scanRequested = false;
};

} // namespace quorel
