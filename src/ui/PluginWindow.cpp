// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/PluginWindow.h"

#include "platform/PlatformSeamWindow.h"
#include "resources/WindowIcons.h"

namespace quorel
{

PluginWindow::PluginWindow(VirtualInstrument& owner, juce::AudioProcessorEditor* editor)
    : juce::DocumentWindow(owner.getPluginName(), juce::Colours::black, juce::DocumentWindow::closeButton)
    , layer(owner)
{
    setUsingNativeTitleBar(true);

    if (dynamic_cast<juce::GenericAudioProcessorEditor*>(editor) != nullptr)
        editor->setLookAndFeel(&listLook);

    setContentOwned(editor, true);
    setResizable(editor->isResizable(), false);

    if (const auto* display = juce::Desktop::getInstance().getDisplays().getPrimaryDisplay())
        setBounds(getBounds().withCentre(display->userArea.getCentre()).constrainedWithin(display->userArea));

    setVisible(true);
    setWindowIcons(*getPeer(), windowIcons());
}

PluginWindow::~PluginWindow()
{
    // An editor tells its instrument that it is being deleted, and may expect its window to be there still.
    clearContentComponent();
}

void PluginWindow::open(VirtualInstrument& layer)
{
    if (auto* window = dynamic_cast<PluginWindow*>(layer.getWindow()))
    {
        window->setMinimised(false);
        window->toFront(true);
        return;
    }

    juce::AudioPluginInstance* plugin = nullptr;
    {
        const InstanceAccess::Use use(layer.instanceAccess());
        plugin = use.get();
    }

    if (plugin == nullptr || layer.getState() != LayerState::playing)
        return;

    // Only this thread unloads instruments, so the pointer stays valid.
    auto* editor = plugin->createEditorIfNeeded();

    if (editor == nullptr && !plugin->hasEditor())
        editor = new juce::GenericAudioProcessorEditor(*plugin);

    if (editor != nullptr)
        layer.setWindow(std::unique_ptr<InstrumentWindow>(new PluginWindow(layer, editor)));
}

void PluginWindow::closeButtonPressed()
{
    // Deletes this window.
    layer.closeWindow();
}

} // namespace quorel
