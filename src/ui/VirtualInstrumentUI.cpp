// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/VirtualInstrumentUI.h"

#include "engine/LayoutMenu.h"
#include "parameters/Switches.h"
#include "ui/EasyPanel.h"
#include "ui/Geometry.h"
#include "ui/KeyRangePanel.h"
#include "ui/LayerEqPanel.h"
#include "ui/MidiPanel.h"
#include "ui/PopupMenus.h"
#include "ui/ZonePanel.h"

namespace quorel
{

namespace
{
constexpr float stepPerPanel = 0.1f;
} // namespace

VirtualInstrumentUI::VirtualInstrumentUI(PluginProcessor& pluginProcessor, EditorHost& editorHost,
                                         const EditorImages& editorImages, int layerIndex)
    : StripPanel(pluginProcessor, editorHost, editorImages, layerIndex)
    , ground(SoundGround::Kind::layer, layerIndex, pluginProcessor)
    , instrumentPanel(pluginProcessor, editorHost, editorImages, layerIndex)
    , mixPanel(pluginProcessor, editorHost, editorImages, layerIndex)
    , normalMode(at(geometry::strip::normalMode), this, id(layerSlot::drumMode), &images.smallOnOff,
                 processor)
    , zoneMode(at(geometry::strip::zoneMode), this, id(layerSlot::drumMode), &images.smallOnOff, processor)
{
    setName("Instrument " + juce::String(layer + 1));
    const auto prefix = "Layer " + juce::String(layer + 1) + " ";
    ground.setFace(geometry::strip::commonFrame);
    ground.setHelpText("Drag to swap layers, with Ctrl to copy");
    addAndMakeVisible(ground);
    addAndMakeVisible(instrumentPanel);
    addAndMakeVisible(mixPanel);

    const juce::Point<int> keyPositions[] = {geometry::strip::easyKey, geometry::strip::filterKey,
                                             geometry::strip::eqKey, geometry::strip::midiKey};
    constexpr const char* keyTitles[] = {"Easy panel", "key range panel", "EQ panel", "MIDI panel"};

    for (int i = 0; i < numKeys; ++i)
    {
        auto& key = keys[static_cast<size_t>(i)];
        key = std::make_unique<myOnOff>(at(keyPositions[i]), this, id(layerSlot::drumPage), &images.onOff,
                                        processor);
        key->setTitle(prefix + keyTitles[i]);
        addChildComponent(*key);
    }

    setUpHotspot(layoutMenuButton, geometry::strip::layoutMenu, prefix + "Easy layouts");
    layoutMenuButton.setTriggeredOnMouseDown(true);
    normalMode.setTitle(prefix + "key range mode");
    zoneMode.setTitle(prefix + "zone mode");

    addChildComponent(layoutMenuButton);
    addChildComponent(normalMode);
    addChildComponent(zoneMode);
    orderFocus();
    instrument().addChangeListener(this);
}

void VirtualInstrumentUI::orderFocus()
{
    int order = 1;

    for (juce::Component* part :
         {static_cast<juce::Component*>(&ground), static_cast<juce::Component*>(&instrumentPanel),
          static_cast<juce::Component*>(&mixPanel)})
        part->setExplicitFocusOrder(order++);

    for (auto& key : keys)
        key->setExplicitFocusOrder(order++);

    // What the keys show comes last, by position.
}

VirtualInstrumentUI::~VirtualInstrumentUI()
{
    instrument().removeChangeListener(this);
}

SoundGround* VirtualInstrumentUI::groundAt(juce::Point<int> position)
{
    return ground.getBounds().contains(position) ? &ground : nullptr;
}

int VirtualInstrumentUI::chosenPanel() const
{
    return static_cast<int>(value(layerSlot::drumPage) * 10.0f);
}

void VirtualInstrumentUI::refresh()
{
    instrumentPanel.refresh();
    mixPanel.refresh();

    const bool onLayersPage = viewPageOf(processor) == Page::layers;
    ground.setBounds(0, 0, onLayersPage ? geometry::strip::width : geometry::strip::commonWidth,
                     geometry::strip::height);
    showPanel(onLayersPage ? chosenPanel() : -1);

    for (auto& key : keys)
        key->setVisible(onLayersPage);

    layoutMenuButton.setVisible(onLayersPage && plugin() != nullptr);
    showPanelKeys();
    host.controlsChanged();
}

void VirtualInstrumentUI::paint(juce::Graphics& g)
{
    // The other panels draw their own images.
    if (panels[eq] != nullptr && panels[eq]->isVisible())
        images.panelEq.paint(g, {static_cast<float>(geometry::strip::panelX),
                                 static_cast<float>(geometry::strip::panelY[eq]),
                                 static_cast<float>(images.panelEq.getWidth()),
                                 static_cast<float>(images.panelEq.getHeight())});
}

void VirtualInstrumentUI::showPanel(int panel)
{
    if (panel >= 0 && panel < numPanels && panels[static_cast<size_t>(panel)] == nullptr)
    {
        auto& made = panels[static_cast<size_t>(panel)];
        made = makePanel(panel);
        made->setBounds(getLocalBounds());
        addChildComponent(*made);
        made->toBack();
        ground.toBack();
    }

    for (int i = 0; i < numPanels; ++i)
    {
        auto& made = panels[static_cast<size_t>(i)];

        if (made == nullptr)
            continue;

        if (i == panel)
            made->refresh();

        made->setVisible(i == panel);
    }

    normalMode.setVisible(panel == keyRange || panel == zones);
    zoneMode.setVisible(panel == keyRange || panel == zones);
}

std::unique_ptr<ControlPage> VirtualInstrumentUI::makePanel(int panel)
{
    switch (panel)
    {
    case keyRange:
        return std::make_unique<KeyRangePanel>(processor, host, images, layer);
    case zones:
        return std::make_unique<ZonePanel>(processor, host, images, layer);
    case easy:
        return std::make_unique<EasyPanel>(processor, host, images, layer);
    case eq:
        return std::make_unique<LayerEqPanel>(processor, host, images, layer);
    default:
        return std::make_unique<MidiPanel>(processor, host, images, layer);
    }
}

void VirtualInstrumentUI::showPanelKeys()
{
    const int panel = chosenPanel();
    const bool lit[] = {panel == easy, panel == keyRange || panel == zones, panel == eq, panel == midi};

    for (int i = 0; i < numKeys; ++i)
        keys[static_cast<size_t>(i)]->setToggleState(lit[i], juce::dontSendNotification);

    const bool zoned = isZoned();
    normalMode.setToggleState(!zoned, juce::dontSendNotification);
    zoneMode.setToggleState(zoned, juce::dontSendNotification);
}

void VirtualInstrumentUI::followPanel()
{
    const int panel = chosenPanel();
    const bool zoned = isZoned() && instrument().isDrumInstrument();

    // The mode alone may have moved: the panel goes along, as with a click.
    if ((panel == keyRange || panel == zones) && zoned != (panel == zones))
    {
        processor.setParameter(id(layerSlot::drumPage),
                               stepPerPanel * static_cast<float>(zoned ? zones : keyRange));
        refresh();
    }
    else
    {
        showPanelKeys();
    }
}

bool VirtualInstrumentUI::isZoned() const
{
    return isSwitchOn(id(layerSlot::drumMode), value(layerSlot::drumMode));
}

void VirtualInstrumentUI::choosePanel(Panel panel)
{
    processor.setParameterFromUi(id(layerSlot::drumPage), stepPerPanel * static_cast<float>(panel));
    refresh();
}

void VirtualInstrumentUI::buttonClicked(juce::Button* button)
{
    const bool takesZones = instrument().isDrumInstrument();

    if (button == keys[easyKey].get())
    {
        choosePanel(easy);
    }
    else if (button == keys[filterKey].get())
    {
        choosePanel(isZoned() && takesZones ? zones : keyRange);
    }
    else if (button == keys[eqKey].get())
    {
        choosePanel(eq);
    }
    else if (button == keys[midiKey].get())
    {
        choosePanel(midi);
    }
    else if (button == &normalMode || (button == &zoneMode && takesZones))
    {
        const UndoHistory::Recording recording(processor);
        const bool zoned = button == &zoneMode;
        processor.setParameter(id(layerSlot::drumMode), zoned ? 1.0f : 0.0f);
        processor.setParameter(id(layerSlot::drumPage), zoned ? stepPerPanel : 0.0f);
        refresh();
    }
    else if (button == &zoneMode)
    {
        showPanelKeys();
    }
    else if (button == &layoutMenuButton)
    {
        showLayoutMenu();
    }
}

void VirtualInstrumentUI::showLayoutMenu()
{
    const auto menu = layoutMenu(processor, layer);
    showMenu(popupMenuOf(menu), layoutMenuButton, *this,
             [this, alive = juce::Component::SafePointer<juce::Component>(this), menu](int chosen)
             {
                 chooseLayout(processor, layer, entryWithId(menu, chosen));

                 // The host may have closed the editor behind a question.
                 if (alive != nullptr)
                     refresh();
             });
}

void VirtualInstrumentUI::follow()
{
    instrumentPanel.showWindowState();

    if (instrument().needsDisplayUpdate.exchange(false) && plugin() != nullptr)
        refresh();
}

void VirtualInstrumentUI::followShownPanel()
{
    for (auto& panel : panels)
        if (panel != nullptr && panel->isVisible())
            panel->follow();
}

void VirtualInstrumentUI::changeListenerCallback(juce::ChangeBroadcaster*)
{
    if (plugin() != nullptr)
        refresh();
}

} // namespace quorel
