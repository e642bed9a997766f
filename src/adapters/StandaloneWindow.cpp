// SPDX-License-Identifier: GPL-3.0-or-later
#include "adapters/StandaloneWindow.h"

namespace quorel
{
namespace
{
constexpr bool ownedByTheHolder = false;
constexpr short numOutputs = 2;
const juce::StandalonePluginHolder::PluginInOuts outputsAlone{0, numOutputs};
constexpr const char* xSetting = "windowX";
constexpr const char* ySetting = "windowY";

enum Option
{
    devices = 1,
    saveState,
    loadState,
    resetState
};
} // namespace

StandaloneWindow::StandaloneWindow(juce::PropertySet& kept)
    : juce::DocumentWindow(
          "Quorel",
          juce::LookAndFeel::getDefaultLookAndFeel().findColour(juce::ResizableWindow::backgroundColourId),
          juce::DocumentWindow::minimiseButton | juce::DocumentWindow::closeButton)
    , settings(kept)
    , holder(&kept, ownedByTheHolder, {}, nullptr, {outputsAlone})
{
    setTitleBarButtonsRequired(juce::DocumentWindow::minimiseButton | juce::DocumentWindow::closeButton,
                               false);
    options.setTriggeredOnMouseDown(true);
    options.setWantsKeyboardFocus(false);
    options.onClick = [this] { showOptions(); };
    juce::Component::addAndMakeVisible(options);
    openEditor();
    placeOnScreen();
}

StandaloneWindow::~StandaloneWindow()
{
    settings.setValue(xSetting, getX());
    settings.setValue(ySetting, getY());
    holder.stopPlaying();
    closeEditor();
}

void StandaloneWindow::openEditor()
{
    constexpr bool windowFollows = true;
    setContentOwned(holder.processor->createEditorIfNeeded(), windowFollows);
}

void StandaloneWindow::closeEditor()
{
    if (auto* editor = holder.processor->getActiveEditor())
        holder.processor->editorBeingDeleted(editor);

    clearContentComponent();
}

void StandaloneWindow::placeOnScreen()
{
    const auto& displays = juce::Desktop::getInstance().getDisplays();
    auto bounds = getBounds().withCentre(displays.getPrimaryDisplay()->userArea.getCentre());

    if (settings.containsKey(xSetting) && settings.containsKey(ySetting))
        bounds.setPosition(settings.getIntValue(xSetting), settings.getIntValue(ySetting));

    setBounds(bounds.constrainedWithin(displays.getDisplayForRect(bounds)->userArea));
}

void StandaloneWindow::resized()
{
    juce::DocumentWindow::resized();
    constexpr int left = 8;
    constexpr int top = 4;
    constexpr int width = 64;
    options.setBounds(left, top, width, getTitleBarHeight() - 2 * top);
}

void StandaloneWindow::closeButtonPressed()
{
    juce::JUCEApplicationBase::getInstance()->systemRequestedQuit();
}

void StandaloneWindow::showOptions()
{
    juce::PopupMenu menu;
    menu.addItem(Option::devices, "Audio/MIDI Settings...");
    menu.addSeparator();
    menu.addItem(Option::saveState, "Save current state...");
    menu.addItem(Option::loadState, "Load a saved state...");
    menu.addSeparator();
    menu.addItem(Option::resetState, "Reset to default state");
    menu.showMenuAsync(juce::PopupMenu::Options().withTargetComponent(options),
                       [self = SafePointer<StandaloneWindow>(this)](int chosen)
                       {
                           if (self == nullptr)
                               return;

                           if (chosen == Option::devices)
                               self->showDevices();
                           else if (chosen == Option::saveState)
                               self->holder.askUserToSaveState();
                           else if (chosen == Option::loadState)
                               self->holder.askUserToLoadState();
                           else if (chosen == Option::resetState)
                               self->reset();
                       });
}

void StandaloneWindow::showDevices()
{
    constexpr int width = 500;
    constexpr int height = 450;
    constexpr int noInputs = 0;
    constexpr bool showMidiInputs = true;
    constexpr bool showMidiOutput = false;
    constexpr bool asStereoPairs = true;
    constexpr bool hideAdvanced = false;
    auto selector = std::make_unique<juce::AudioDeviceSelectorComponent>(
        holder.deviceManager, noInputs, noInputs, 0, numOutputs, showMidiInputs, showMidiOutput,
        asStereoPairs, hideAdvanced);
    selector->setSize(width, height);

    juce::DialogWindow::LaunchOptions dialog;
    dialog.content.setOwned(selector.release());
    dialog.dialogTitle = "Audio/MIDI Settings";
    dialog.dialogBackgroundColour = getBackgroundColour();
    dialog.componentToCentreAround = this;
    dialog.escapeKeyTriggersCloseButton = true;
    dialog.useNativeTitleBar = true;
    dialog.resizable = false;
    dialog.launchAsync();
}

void StandaloneWindow::reset()
{
    holder.stopPlaying();
    closeEditor();
    holder.deletePlugin();
    settings.removeValue("filterState");
    holder.createPlugin();
    openEditor();
    holder.startPlaying();
}

} // namespace quorel
