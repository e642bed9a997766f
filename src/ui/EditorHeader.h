// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PresetCommands.h"
#include "ui/ControlPage.h"
#include "ui/UndoKeys.h"
#include "ui/widgets/meterHorizontal.h"
#include "ui/widgets/myButton.h"
#include "ui/widgets/myButton1.h"
#include "ui/widgets/myIntBox.h"
#include "ui/widgets/myKnob.h"
#include "ui/widgets/myLabel2.h"
#include "ui/widgets/myOnOff.h"

#include <array>
#include <memory>

namespace quorel
{

/** The controls along the top of every page: master volume, keys of the pages, folder and preset, Edit and
    Orig, tempo, and the display of the hovered parameter, incoming MIDI, level and load. Message thread. */
class EditorHeader : public ControlPage
{
public:
    EditorHeader(PluginProcessor& pluginProcessor, EditorHost& editorHost, const EditorImages& editorImages);

    /** Ends the preview note, whose key is held no more. */
    ~EditorHeader() override;

    void refresh() override;
    void sliderValueChanged(juce::Slider* slider) override;
    void buttonClicked(juce::Button* button) override;

    /** Follows what changes by itself: last MIDI, load, levels, tempo, Edit and Orig. Called in each pass. */
    void update();

    /** Shows that a preset is loading, and which, or takes the message away. */
    void showLoading(bool loading);

    /** Shows a text about the control under the mouse; empty for none. */
    void showHint(const juce::String& text);

private:
    void addPageKeys();
    void addTitledControls();
    void setUpLabel(juce::Label& label, juce::Rectangle<int> bounds);
    void setUpMenuButton(juce::DrawableButton& button, juce::Rectangle<int> bounds, juce::Label& caption,
                         const juce::String& title);
    void showPage(Page page);
    void preview(bool isDown);
    void showCpu(int percent);
    void showComparison();
    /** Names of folder and preset, the latter with a mark where the sound has unsaved edits. */
    void showNames();
    void showMidi();
    /** Says, where nothing else is to be read, why nothing is heard. */
    void showWhetherAudioRuns();
    void showTempo();
    void tap();
    void openUserGuide();
    void showMenuOf(juce::Button& button, const MenuEntries& content, void (PresetCommands::*choose)(int));

    juce::DrawableButton backPanelButton{"to Back Screen", juce::DrawableButton::ImageStretched};
    myKnob masterVolume;
    myOnOff masterMute;
    myButton userGuide;
    myButton1 previewNote;
    myButton editKey;
    myButton origKey;
    std::array<std::unique_ptr<myOnOff>, numPages> pageKeys;
    juce::Label hintLabel{"hintLabel"};
    juce::Label midiMonitorLabel{"midiMonitorLabel"};
    juce::Label cpuLabel{"cpuLabel"};
    myIntBox tempoBox;
    myButton tapButton;
    meterHorizontal meter;
    myButton folderPrevious;
    myButton folderNext;
    juce::DrawableButton folderMenuButton{"folderMenuButton", juce::DrawableButton::ImageStretched};
    myLabel2 folderLabel;
    myButton presetPrevious;
    myButton presetNext;
    juce::DrawableButton presetMenuButton{"presetMenuButton", juce::DrawableButton::ImageStretched};
    myLabel2 presetLabel;
    UndoKeys undoKeys;

    bool shownEdited = false;
    juce::String midiText;
    bool loadingShown = false;
    int shownCpu = -1;
    unsigned int passes = 0;
    int shownNote = 0;
    int shownVelocity = 0;
    int shownController = 0;
    int shownControllerValue = 0;
    double shownBpm = 0.0;
};

} // namespace quorel
