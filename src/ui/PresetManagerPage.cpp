// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/PresetManagerPage.h"

#include "ui/EditorColours.h"
#include "ui/Geometry.h"
#include "ui/PopupMenus.h"
#include "ui/widgets/WidgetTools.h"

namespace quorel
{

namespace
{
constexpr const char* searchFieldName = "searchPresetLabelEntry";
constexpr int moreCommand = 8;
constexpr const char* amongTexts[] = {"all", "favourites", "recent"};
constexpr const char* orderTexts[] = {"name", "rating", "date"};

/** Rows from 1, the present choice ticked. */
template <size_t size>
MenuEntries choiceMenu(const char* const (&texts)[size], int present)
{
    MenuEntries menu;

    for (size_t i = 0; i < size; ++i)
        menu.push_back(MenuEntry::command(static_cast<int>(i) + 1, texts[i], static_cast<int>(i) == present));

    return menu;
}

constexpr int headGap = 5;
const juce::Colour headFill{0xff242426};
const juce::Colour fieldFill{0xff101011};
} // namespace

PresetManagerPage::PresetManagerPage(PluginProcessor& pluginProcessor, EditorHost& editorHost,
                                     const EditorImages& editorImages)
    : ControlPage(pluginProcessor, editorHost, editorImages)
    , commands(pluginProcessor.getPresetCommands())
    , library(pluginProcessor.getPresetLibrary())
    , bankList(geometry::manager::bankList, this, processor)
    , presetGrid(geometry::manager::presetGrid, this, processor)
    , categoryGrid(geometry::manager::presetGrid, this, processor)
    , clearButton(geometry::manager::clearCategory, this, "CLEAR CATEGORY", &images.textStripA,
                  colours::brightText, colours::raised)
    , searchCaption(geometry::manager::searchCaption, "Search For: ")
    , searchField(geometry::manager::searchText, searchFieldName, {})
    , searchButton(geometry::manager::search, this, "SEARCH", &images.textStripA, colours::brightText,
                   colours::raised)
    , limitButton(geometry::manager::limits, this, "Only", ChoiceButton::Sign::remove)
    , amongButton(geometry::manager::shown, this, "Show")
    , orderButton(geometry::manager::order, this, "Sort")
    , details(pluginProcessor, [this] { host.fullRefresh(); })
{
    addModeSwitches();
    addAndMakeVisible(bankList);
    addChildComponent(presetGrid);
    addChildComponent(categoryGrid);

    addCategoryHeads();
    clearButton.setTitle("Clear categories");
    addChildComponent(clearButton);
    addSearch();
    addControls({&amongButton, &orderButton, &details});
    addCommands();
    addMore();
}

void PresetManagerPage::addSearch()
{
    searchField.setTitle("Search text");
    searchField.setColour(juce::Label::backgroundColourId, fieldFill);
    searchField.setColour(juce::Label::textColourId, juce::Colours::white);
    searchField.setJustificationType(juce::Justification::centredLeft);
    searchField.addListener(this);
    searchButton.setTitle("Search");
    limitButton.setTooltip("Click to search in all categories");

    addChildComponent(searchCaption);
    addChildComponent(searchField);
    addChildComponent(searchButton);
    addChildComponent(limitButton);
}

void PresetManagerPage::addModeSwitches()
{
    constexpr const char* titles[] = {"Browse", "Search by name", "Search by category", "Edit categories"};

    for (int mode = 0; mode < numModes; ++mode)
    {
        auto& toggle = modeSwitches[static_cast<size_t>(mode)];
        toggle = std::make_unique<myOnOff>(at(geometry::manager::mode(mode)), this, noParameter,
                                           &images.onOff, processor);
        toggle->setTitle(titles[mode]);
        addAndMakeVisible(*toggle);
    }
}

void PresetManagerPage::addCategoryHeads()
{
    for (int group = 0; group < numCategoryGroups; ++group)
    {
        auto& head = heads[static_cast<size_t>(group)];
        head = std::make_unique<myLabelC>(geometry::manager::categoryHeads[group], categoryHeading(group),
                                          &images.textStripA, colours::amber, headFill);
        // One reaches below the next.
        if (group + 1 < numCategoryGroups)
            head->setShownWidth(
                juce::jmin(head->getWidth(),
                           geometry::manager::categoryHeads[group + 1].getX() - headGap - head->getX()));
        addChildComponent(*head);
    }
}

void PresetManagerPage::addCommands()
{
    constexpr std::pair<const char*, const char*> presetTexts[] = {
        {presetCommand::newPreset, "NEW"},       {presetCommand::renamePreset, "RENAME"},
        {presetCommand::deletePreset, "DELETE"}, {presetCommand::copyPreset, "COPY"},
        {presetCommand::pastePreset, "PASTE"},   {presetCommand::loadPreset, "LOAD"},
        {presetCommand::savePreset, "SAVE"},     {presetCommand::savePresetAs, "SAVE AS"}};
    constexpr std::pair<const char*, const char*> folderTexts[] = {{presetCommand::newFolder, "NEW"},
                                                                   {presetCommand::renameFolder, "RENAME"},
                                                                   {presetCommand::deleteFolder, "DELETE"}};

    for (const auto& [text, caption] : presetTexts)
    {
        const int n = static_cast<int>(presetCommands.size());
        addCommand(presetCommands, text, caption, geometry::manager::presetCommand(n),
                   geometry::manager::presetCommandLabel(n));
    }

    for (const auto& [text, caption] : folderTexts)
    {
        const int n = static_cast<int>(folderCommands.size());
        addCommand(folderCommands, text, caption, geometry::manager::folderCommand(n),
                   geometry::manager::folderCommandLabel(n));
    }
}

void PresetManagerPage::addMore()
{
    moreButton = std::make_unique<myButton>(at(geometry::manager::presetCommand(moreCommand)), this,
                                            &images.onOff, processor);
    moreButton->setTitle("more for selected presets");
    moreCaption = std::make_unique<myLabelB>(geometry::manager::presetCommandLabel(moreCommand), "MORE",
                                             &images.textStripA);
    addControls({moreButton.get(), moreCaption.get()});
}

void PresetManagerPage::addCommand(std::vector<Command>& list, const char* text, const char* caption,
                                   juce::Point<int> position, juce::Rectangle<int> captionBounds)
{
    list.push_back({text, std::make_unique<myButton>(at(position), this, &images.onOff, processor),
                    std::make_unique<myLabelB>(captionBounds, caption, &images.textStripA)});
    auto& command = list.back();
    command.button->setTitle(text);
    addAndMakeVisible(*command.button);
    addAndMakeVisible(*command.caption);
}

void PresetManagerPage::refresh()
{
    // The index is read from the disk when the page opens, and when files have changed since.
    if (getParentComponent() == nullptr || library.isIndexStale())
        commands.refreshIndex();

    const bool categories = managerMode == searchByCategory || managerMode == editCategories;
    const bool searching = managerMode == searchByText || managerMode == searchByCategory;

    library.showResults(searching);

    if (searching)
        library.search();

    for (int mode = 0; mode < numModes; ++mode)
        modeSwitches[static_cast<size_t>(mode)]->setToggleState(mode == managerMode,
                                                                juce::dontSendNotification);

    for (auto& head : heads)
        head->setVisible(categories);

    showSearch();
    showChoices();
    details.refresh();

    for (auto& command : presetCommands)
    {
        const bool visible = managerMode == browse || managerMode == editCategories;
        command.button->setVisible(visible);
        command.caption->setVisible(visible);
    }

    clearButton.setVisible(categories);
    presetGrid.setVisible(!categories);
    categoryGrid.setVisible(categories);
    bankList.setSearchMode(searching);
    presetGrid.setSearchMode(managerMode == searchByText);
    categoryGrid.setFilterMode(managerMode == searchByCategory);
}

void PresetManagerPage::showSearch()
{
    const bool byText = managerMode == searchByText;
    const bool searching = byText || managerMode == searchByCategory;
    const auto words = categoryWords(library.getCategoryFilter());
    searchCaption.setBounds(byText ? geometry::manager::searchCaption
                                   : geometry::manager::searchCaptionByCategory);
    searchField.setBounds(byText ? geometry::manager::searchText : geometry::manager::searchTextByCategory);
    searchCaption.setVisible(searching);
    searchField.setVisible(searching);
    searchButton.setVisible(byText);
    limitButton.setVisible(byText && !words.isEmpty());
    limitButton.setChoice(words.joinIntoString(", "));

    // Over the grid of words.
    searchCaption.toFront(false);
    searchField.toFront(false);

    // Don't overwrite what is being typed.
    if (!searchField.isBeingEdited())
        searchField.setText(library.getSearchText(), juce::dontSendNotification);
}

void PresetManagerPage::showChoices()
{
    amongButton.setChoice(amongTexts[static_cast<size_t>(library.getAmong())]);
    orderButton.setChoice(orderTexts[static_cast<size_t>(library.getOrder())]);
}

void PresetManagerPage::openMenu(const MenuEntries& entries, juce::Component& target,
                                 std::function<void(int)> chosen)
{
    showMenu(popupMenuOf(entries), target, *this,
             [this, chosen = std::move(chosen)](int id)
             {
                 const juce::Component::SafePointer<PresetManagerPage> self(this);
                 chosen(id);

                 if (self != nullptr)
                     host.fullRefresh();
             });
}

void PresetManagerPage::chooseAmong()
{
    openMenu(choiceMenu(amongTexts, static_cast<int>(library.getAmong())), amongButton,
             [this](int id)
             {
                 // Favourites and recent presets lie in all folders.
                 if (managerMode != searchByCategory)
                     setMode(id == 1 ? managerMode : searchByText);

                 commands.setAmong(static_cast<PresetQuery::Among>(id - 1));
             });
}

void PresetManagerPage::chooseOrder()
{
    openMenu(choiceMenu(orderTexts, static_cast<int>(library.getOrder())), orderButton,
             [this](int id) { commands.setOrder(static_cast<PresetOrder>(id - 1)); });
}

void PresetManagerPage::openSelectionMenu()
{
    auto& selection = commands.onSelection();
    openMenu(selection.menu(selection.chosen()), *moreButton,
             [&selection](int id) { selection.menuChosen(id); });
}

void PresetManagerPage::setMode(Mode mode)
{
    // Lists of one folder show all of it.
    if (mode == browse || mode == editCategories)
        library.setAmong(PresetQuery::Among::all);

    if (mode != managerMode)
    {
        // Both are positions in the list that was shown.
        library.clearSelection();
        library.setSelectedResultFolder(-1);
    }

    managerMode = mode;
    host.fullRefresh();
}

void PresetManagerPage::changeListenerCallback(juce::ChangeBroadcaster*)
{
    host.fullRefresh();
}

void PresetManagerPage::search(const juce::String& text)
{
    library.setSearchText(text);
    host.fullRefresh();
}

void PresetManagerPage::labelTextChanged(juce::Label* label)
{
    if (label->getName() == searchFieldName)
        search(label->getText());
}

void PresetManagerPage::editorShown(juce::Label*, juce::TextEditor& editor)
{
    editor.onTextChange = [this, &editor]
    {
        library.setSearchText(editor.getText());
        library.search();
        presetGrid.entriesChanged();
        categoryGrid.getGrid().entriesChanged();
    };
}

void PresetManagerPage::editorHidden(juce::Label* label, juce::TextEditor&)
{
    // Escape puts the text back to what it was before.
    if (label->getText() != library.getSearchText())
        search(label->getText());
}

void PresetManagerPage::clearCategory()
{
    if (managerMode == editCategories)
        commands.clearCategories();
    else
        commands.clearCategoryFilter();

    host.fullRefresh();
}

void PresetManagerPage::runCommand(const char* text)
{
    // A command may ask a question, which blocks, and the host may close the editor meanwhile: that must not
    // happen within a button's click.
    juce::MessageManager::callAsync(
        [self = juce::Component::SafePointer<PresetManagerPage>(this), text]
        {
            if (self != nullptr)
                self->commands.run(text);

            if (self != nullptr)
                self->host.fullRefresh();
        });
}

void PresetManagerPage::buttonClicked(juce::Button* button)
{
    for (int mode = 0; mode < numModes; ++mode)
        if (button == modeSwitches[static_cast<size_t>(mode)].get())
            return setMode(static_cast<Mode>(mode));

    if (button == &clearButton)
        return clearCategory();

    if (button == &searchButton)
        return search(searchField.getText(true));

    if (button == &limitButton)
    {
        commands.clearCategoryFilter();
        return host.fullRefresh();
    }

    if (button == &amongButton)
        return chooseAmong();

    if (button == &orderButton)
        return chooseOrder();

    if (button == moreButton.get())
        return openSelectionMenu();

    for (const auto* list : {&presetCommands, &folderCommands})
        for (const auto& command : *list)
            if (button == command.button.get())
                return runCommand(command.text);
}

} // namespace quorel
