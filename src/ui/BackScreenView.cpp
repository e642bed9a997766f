// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/BackScreenView.h"

#include "engine/EcsMenu.h"
#include "platform/PlatformSeam.h"
#include "platform/Version.h"
#include "ui/EditorColours.h"
#include "ui/EditorScale.h"
#include "ui/Geometry.h"
#include "ui/PopupMenus.h"

namespace quorel
{

namespace
{
constexpr int timerMilliseconds = 50;
constexpr float labelFontHeight = 13.0f;
constexpr int pathMargin = 4;
constexpr const char* productText = "Ostrand QUOREL   ";
constexpr const char* sizeText = "Window Size";
} // namespace

BackScreenView::Caption::Caption(juce::Rectangle<int> bounds, const juce::String& text,
                                 juce::Button& captioned)
    : juce::Label({}, text)
    , button(captioned)
{
    setBounds(bounds);
    // Screen readers hear of the control alone.
    setAccessible(false);
}

void BackScreenView::Caption::mouseDown(const juce::MouseEvent& event)
{
    if (event.mods.isLeftButtonDown())
        button.triggerClick();
}

BackScreenView::BackScreenView(PluginProcessor& pluginProcessor, EditorHost& editorHost,
                               const EditorImages& editorImages)
    : ControlPage(pluginProcessor, editorHost, editorImages)
    , ecsButton(at(geometry::back::ecsMenu), this, &images.onOff, processor)
    , rescanButton(at(geometry::back::rescan), this, &images.onOff, processor)
    , folderButton(at(geometry::back::folder), this, &images.onOff, processor)
    , scaleButton(at(geometry::back::scale), this, &images.onOff, processor)
{
    setName("Back Panel View");
    setSize(images.back.getWidth(), images.back.getHeight());

    setUpHotspot(toFront, geometry::back::toFront, "Back to the front");
    addAndMakeVisible(toFront);

    setUpLabel(version, geometry::back::version, "Version", juce::Colours::black);
    version.setText(productText + versionText() + " " + productVersion, juce::dontSendNotification);
    setUpLabel(scanStatus, geometry::back::rescanStatus, "Scan status", juce::Colours::black);
    setUpLabel(folderPath, geometry::back::folderPath, "Plug-in folder", colours::brightText);
    folderPath.setColour(juce::Label::backgroundColourId, juce::Colours::black);
    folderPath.setBorderSize({0, pathMargin, 0, pathMargin});

    addWithCaption(ecsButton, geometry::back::ecsLabel, "ECS Menu");
    addWithCaption(rescanButton, geometry::back::rescanLabel, "Re-scan Plug-Ins");
    addWithCaption(folderButton, geometry::back::folderLabel, "Set VST Plug-Ins Folder");
    scaleCaption = &addWithCaption(scaleButton, geometry::back::scaleLabel, sizeText);

    for (int layer = 0; layer < numLayers; ++layer)
    {
        auto& block = blocks[static_cast<size_t>(layer)];
        block = std::make_unique<myOnOff>(at(geometry::back::block(layer)), this,
                                          slot::freeControllerBlock + layer, &images.onOff, processor);
        addWithCaption(*block, geometry::back::blockLabel(layer),
                       "Block free midi controllers layer " + juce::String(layer + 1));
    }
}

BackScreenView::~BackScreenView()
{
    stopTimer();
}

void BackScreenView::setUpLabel(juce::Label& label, juce::Rectangle<int> bounds, const juce::String& title,
                                juce::Colour textColour)
{
    label.setBounds(bounds);
    label.setTitle(title);
    label.setFont(juce::Font(labelFontHeight));
    label.setBorderSize({});
    label.setColour(juce::Label::textColourId, textColour);
    label.setColour(juce::Label::backgroundColourId, juce::Colours::transparentBlack);
    label.setInterceptsMouseClicks(false, false);
    addAndMakeVisible(label);
}

BackScreenView::Caption& BackScreenView::addWithCaption(juce::Button& button,
                                                        juce::Rectangle<int> captionBounds,
                                                        const juce::String& text)
{
    button.setTitle(text);
    addAndMakeVisible(button);
    captions.push_back(std::make_unique<Caption>(captionBounds, text, button));
    auto& caption = *captions.back();
    setUpLabel(caption, captionBounds, text, juce::Colours::black);
    caption.setInterceptsMouseClicks(true, false);
    return caption;
}

void BackScreenView::refresh()
{
    for (auto& block : blocks)
        showToggle(*block);

    showPluginFolder();
    const auto size = juce::String(host.getScalePercent()) + " %";
    scaleCaption->setText(sizeText + (" : " + size), juce::dontSendNotification);
    scaleButton.setDescription(size);
    startTimer(timerMilliseconds);
    repaint();
}

void BackScreenView::showPluginFolder()
{
    // Read again each time: an installer may have changed it meanwhile.
    folderPath.setText(processor.userStore().read(pathSetting::key, pathSetting::pluginFolder),
                       juce::dontSendNotification);
}

void BackScreenView::timerCallback()
{
    if (!isShowing())
    {
        stopTimer();
        return;
    }

    if (scanRequested)
    {
        scanRequested = false;

        // The scan holds the message thread, so the status has to reach the screen first.
        if (auto* peer = getPeer())
            peer->performAnyPendingRepaintsNow();

        processor.getInstallation().scan(true);
        refresh();
    }

    if (scanStatus.getText() != processor.getInstallation().getScanStatus())
        scanStatus.setText(processor.getInstallation().getScanStatus(), juce::dontSendNotification);
}

void BackScreenView::chooseFolder()
{
    const juce::Component::SafePointer<BackScreenView> self(this);
    const auto folder = processor.userInteraction().chooseFolder("Please select new VST folder",
                                                                 processor.getPaths().pluginFolder);

    // The editor may have gone by the time the chooser is answered.
    if (self == nullptr || folder == juce::File())
        return;

    processor.getInstallation().changePluginFolder(folder);
    refresh();
}

void BackScreenView::showEcsMenu()
{
    const auto menu = ecsMenu(processor);
    showMenu(popupMenuOf(menu), ecsButton, *this,
             [this, menu](int chosen) { chooseEcs(processor, entryWithId(menu, chosen)); });
}

void BackScreenView::showScaleMenu()
{
    MenuEntries scales;

    const auto own = static_cast<float>(host.getScalePercent()) / 100.0f;
    const int largest =
        largestFittingScale(*this, juce::Component::getApproximateScaleFactorForComponent(this) / own);

    for (const int percent : editorScales)
    {
        scales.push_back(
            MenuEntry::command(percent, juce::String(percent) + " %", percent == host.getScalePercent()));
        // What has no room on the display can't be chosen.
        scales.back().enabled = percent <= largest;
    }

    showMenu(popupMenuOf(scales), scaleButton, *this,
             [this](int chosen)
             {
                 const juce::Component::SafePointer<BackScreenView> self(this);
                 host.setScalePercent(chosen);

                 // The host may close the editor when it resizes it.
                 if (self != nullptr)
                     refresh();
             });
}

void BackScreenView::buttonClicked(juce::Button* button)
{
    if (button == &toFront)
    {
        host.fullRefresh();
    }
    else if (button == &ecsButton)
    {
        showEcsMenu();
    }
    else if (button == &rescanButton)
    {
        scanStatus.setText("Scanning plug-ins", juce::dontSendNotification);
        refresh();
        scanRequested = true;
    }
    else if (button == &folderButton)
    {
        // Not within the click: the host may close the editor while the chooser is open.
        juce::MessageManager::callAsync(
            [self = juce::Component::SafePointer<BackScreenView>(this)]
            {
                if (self != nullptr)
                    self->chooseFolder();
            });
    }
    else if (button == &scaleButton)
    {
        showScaleMenu();
    }
    else
    {
        ControlPage::buttonClicked(button);
    }
}

} // namespace quorel
