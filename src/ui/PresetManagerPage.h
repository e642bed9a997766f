// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/CategoryManager.h"
#include "ui/ChoiceButton.h"
#include "ui/ControlPage.h"
#include "ui/PresetDetails.h"
#include "ui/tarnBankManager.h"
#include "ui/tarnPresetManager.h"
#include "ui/widgets/myButton.h"
#include "ui/widgets/myKickTextButton.h"
#include "ui/widgets/myLabel.h"
#include "ui/widgets/myLabelB.h"
#include "ui/widgets/myLabelC.h"
#include "ui/widgets/myLabelEdit.h"
#include "ui/widgets/myOnOff.h"

#include <array>
#include <memory>
#include <vector>

namespace quorel
{

/** The preset manager: folders on the right, presets or categories on the left, in one of four modes. A new
    page starts in the first. All it does goes through the processor's `PresetCommands`. Message thread. */
class PresetManagerPage : public ControlPage, private juce::ChangeListener
{
public:
    enum Mode
    {
        browse,
        searchByText,
        searchByCategory,
        editCategories,
        numModes
    };

    PresetManagerPage(PluginProcessor& pluginProcessor, EditorHost& editorHost,
                      const EditorImages& editorImages);

    void refresh() override;
    void buttonClicked(juce::Button* button) override;
    void labelTextChanged(juce::Label* label) override;
    /** The results follow every key typed. */
    void editorShown(juce::Label* label, juce::TextEditor& editor) override;
    void editorHidden(juce::Label* label, juce::TextEditor& editor) override;

    Mode getMode() const noexcept { return managerMode; }

private:
    /** A button and the caption beside it. */
    struct Command
    {
        const char* text;
        std::unique_ptr<myButton> button;
        std::unique_ptr<myLabelB> caption;
    };

    void changeListenerCallback(juce::ChangeBroadcaster*) override;
    void addModeSwitches();
    void addCategoryHeads();
    void addCommands();
    void addCommand(std::vector<Command>& list, const char* text, const char* caption,
                    juce::Point<int> position, juce::Rectangle<int> captionBounds);
    void setMode(Mode mode);
    void search(const juce::String& text);
    void runCommand(const char* text);
    void clearCategory();
    void addSearch();
    void addMore();
    /** Where the text field stands, and what is said beside it. */
    void showSearch();
    void showChoices();
    /** What runs for a menu's row; the menu may outlive this page. */
    void openMenu(const MenuEntries& entries, juce::Component& target, std::function<void(int)> chosen);
    void chooseAmong();
    void chooseOrder();
    void openSelectionMenu();

    PresetCommands& commands;
    PresetLibrary& library;
    Mode managerMode = browse;
    std::array<std::unique_ptr<myOnOff>, numModes> modeSwitches;
    tarnBankManager bankList;
    tarnPresetManager presetGrid;
    CategoryManager categoryGrid;
    std::array<std::unique_ptr<myLabelC>, numCategoryGroups> heads;
    myKickTextButton clearButton;
    myLabel searchCaption;
    myLabelEdit searchField;
    myKickTextButton searchButton;
    /** The categories that a search by name is limited to; a click lifts the limit. */
    ChoiceButton limitButton;
    ChoiceButton amongButton;
    ChoiceButton orderButton;
    PresetDetails details;
    std::unique_ptr<myButton> moreButton;
    std::unique_ptr<myLabelB> moreCaption;
    std::vector<Command> presetCommands;
    std::vector<Command> folderCommands;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(PresetManagerPage)
};

} // namespace quorel
