// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/InstrumentPanel.h"

#include "hosting/InstrumentTable.h"
#include "parameters/ParameterText.h"
#include "ui/Geometry.h"
#include "ui/PluginWindow.h"
#include "ui/widgets/WidgetTools.h"

namespace quorel
{

namespace
{
constexpr float missingGlowRadius = 10.0f;

/** A combo box takes no empty text, which a bank's title may be. */
juce::String rowText(const MenuEntry& entry)
{
    return entry.text.isEmpty() ? juce::String(" ") : entry.text;
}

/** The menu has these rows already. To make hundreds of them takes longer than all the rest of a page. */
bool isFilledWith(const juce::ComboBox& menu, const MenuEntries& entries)
{
    if (menu.getNumItems() != static_cast<int>(entries.size()))
        return false;

    for (int i = 0; i < menu.getNumItems(); ++i)
        if (menu.getItemText(i) != rowText(entries[static_cast<size_t>(i)]))
            return false;

    return true;
}

void fill(juce::ComboBox& menu, const MenuEntries& entries)
{
    if (!isFilledWith(menu, entries))
    {
        menu.clear(juce::dontSendNotification);

        for (const auto& entry : entries)
            menu.addItem(rowText(entry), entry.id);
    }

    int selected = 0;

    for (const auto& entry : entries)
        if (entry.ticked)
            selected = entry.id;

    menu.setSelectedId(selected, juce::dontSendNotification);
}
} // namespace

InstrumentPanel::InstrumentPanel(PluginProcessor& pluginProcessor, EditorHost& editorHost,
                                 const EditorImages& editorImages, int layerIndex)
    : StripPanel(pluginProcessor, editorHost, editorImages, layerIndex)
    , instrumentMenu(geometry::strip::instrumentMenu, this, noParameter, {}, &images.readout80, processor)
    , programMenu(at(geometry::strip::programMenu), this, noParameter, {}, &images.readout80, processor)
    , bankMenu(at(geometry::strip::bankMenu), this, noParameter, {}, &images.readout80, processor)
    , programPrevious(at(geometry::strip::programPrevious), this, &images.arrowMidLeft, processor)
    , programNext(at(geometry::strip::programNext), this, &images.arrowMidRight, processor)
    , bankPrevious(at(geometry::strip::bankPrevious), this, &images.arrowMidLeft, processor)
    , bankNext(at(geometry::strip::bankNext), this, &images.arrowMidRight, processor)
    , editorSwitch(at(geometry::strip::editor), this, &images.onOff, processor)
{
    const auto prefix = "Layer " + juce::String(layer + 1) + " ";
    missingGlow.setGlowProperties(missingGlowRadius, juce::Colours::red);

    const juce::Rectangle<int> iconBounds(geometry::strip::iconButton.x, geometry::strip::iconButton.y,
                                          geometry::strip::iconSize + 2, geometry::strip::iconSize + 2);
    setUpHotspot(editorIcon, iconBounds, prefix + "instrument's window");
    setUpHotspot(missingIcon, iconBounds, prefix + "maker's web site");
    addChildComponent(editorIcon);
    addChildComponent(missingIcon);
    missingIcon.setComponentEffect(&missingGlow);

    const std::pair<juce::Component*, const char*> titled[] = {{&instrumentMenu, "instrument"},
                                                               {&programMenu, "program"},
                                                               {&bankMenu, "bank"},
                                                               {&programPrevious, "previous program"},
                                                               {&programNext, "next program"},
                                                               {&bankPrevious, "previous bank"},
                                                               {&bankNext, "next bank"},
                                                               {&editorSwitch, "instrument's window"}};

    for (const auto& [control, title] : titled)
    {
        control->setTitle(prefix + title);
        addAndMakeVisible(control);
    }
}

void InstrumentPanel::refresh()
{
    showIcon();
    fillMenus();
    showWindowState();
}

void InstrumentPanel::showIcon()
{
    auto& hosted = instrument();
    const bool loaded = plugin() != nullptr;
    const auto* row = loaded               ? findInstrument(hosted.getPluginName())
                      : hosted.isMissing() ? findInstrument(hosted.getMissingPluginName())
                                           : nullptr;
    const auto name = row == nullptr
                          ? juce::String()
                          : (loaded ? "ico_" : "ico_gray_") + juce::String(row->shortName) + "_png";

    if (name != iconName)
    {
        iconName = name;
        icon = nullptr;
        iconImage = name.isEmpty() ? nullptr : std::make_unique<CBitmap>(name);

        if (iconImage != nullptr)
        {
            icon = std::make_unique<myPicture>(at(geometry::strip::icon), iconImage.get());
            icon->setInterceptsMouseClicks(false, false);
            icon->setComponentEffect(loaded ? nullptr : &missingGlow);
            addAndMakeVisible(*icon);
        }
    }

    editorIcon.setVisible(loaded);
    missingIcon.setVisible(!loaded && row != nullptr);
    editorIcon.toFront(false);
    missingIcon.toFront(false);
}

void InstrumentPanel::fillMenus()
{
    auto& hosted = instrument();
    known = processor.getKnownPlugins().getTypes();
    const auto name = readParamText(processor, id(layerSlot::pluginNameText), slot::nameTextLength);
    fill(instrumentMenu, pluginMenu(processor.getKnownPlugins(), name));

    auto warning = missingPluginText(hosted.getMissingPluginName());

    if (hosted.isSilenced())
        warning = hosted.getPluginName() + " silenced";

    if (warning.isNotEmpty())
    {
        instrumentMenu.setText(warning, juce::dontSendNotification);
        instrumentMenu.setColour(juce::ComboBox::textColourId, juce::Colours::orange);
    }
    else
    {
        instrumentMenu.removeColour(juce::ComboBox::textColourId);
    }

    auto* hostedPlugin = plugin();

    if (hostedPlugin == nullptr)
    {
        fill(programMenu, {});
        fill(bankMenu, {});
        return;
    }

    const auto bank = hosted.getBankName();

    if (const auto* row = findInstrument(hosted.getPluginName()); row != nullptr && row->programsByMidi)
        hosted.readProgramNames(bank);

    fill(programMenu, quorel::programMenu(*hostedPlugin, hosted.getPluginName(), hosted.getProgramNames()));
    fill(bankMenu, quorel::bankMenu(hosted.getBankNames(), bank));
}

void InstrumentPanel::showWindowState()
{
    editorSwitch.setToggleState(instrument().isWindowShowing(), juce::dontSendNotification);
}

void InstrumentPanel::comboBoxChanged(juce::ComboBox* menu)
{
    const int menuId = menu->getSelectedId();

    if (menuId == 0)
        return;

    if (menu == &instrumentMenu)
        chooseInstrument(menuId);
    else if (menu == &programMenu)
        processor.getLayers().chooseProgram(layer, menuId);
    else if (menu == &bankMenu)
        processor.getLayers().chooseBank(layer, menuId);
}

void InstrumentPanel::chooseInstrument(int menuId)
{
    const int index = menuId - 2;

    if (index >= known.size())
        return;

    if (index < 0)
    {
        processor.chooseInstrument(layer, nullptr);
    }
    else
    {
        const auto description = known[index];
        processor.chooseInstrument(layer, &description);
    }

    refresh();
}

void InstrumentPanel::stepMenu(juce::ComboBox& menu, int step)
{
    const int count = menu.getNumItems();

    if (plugin() == nullptr || count == 0)
        return;

    const int index = menu.getSelectedItemIndex();
    const int next = step > 0 ? (index + 1) % count : (index <= 0 ? count - 1 : index - 1);
    menu.setSelectedItemIndex(next, juce::sendNotificationAsync);
}

void InstrumentPanel::buttonClicked(juce::Button* button)
{
    if (button == &programPrevious)
        stepMenu(programMenu, -1);
    else if (button == &programNext)
        stepMenu(programMenu, 1);
    else if (button == &bankPrevious)
        stepMenu(bankMenu, -1);
    else if (button == &bankNext)
        stepMenu(bankMenu, 1);
    else if (button == &missingIcon)
        juce::URL(makerWebAddress).launchInDefaultBrowser();
    else if (button == &editorSwitch || button == &editorIcon)
    {
        if (instrument().isWindowShowing())
            instrument().closeWindow();
        else if (plugin() != nullptr)
            PluginWindow::open(instrument());

        showWindowState();
    }
}

} // namespace quorel
