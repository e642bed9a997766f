// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/InstrumentPanel.h"
#include "ui/MixPanel.h"
#include "ui/SoundGround.h"

#include <array>
#include <memory>

namespace quorel
{

/** The strip of one layer: instrument and mixer on the left, and on the Layers page one of five panels on the
    right, chosen by keys. Message thread. */
class VirtualInstrumentUI : public StripPanel, public GroundHolder, private juce::ChangeListener
{
public:
    /** Panels by their number in the layer's panel parameter. */
    enum Panel
    {
        keyRange,
        zones,
        easy,
        eq,
        midi,
        numPanels
    };

    /** `layerIndex` is 0 to 3. */
    VirtualInstrumentUI(PluginProcessor& pluginProcessor, EditorHost& editorHost,
                        const EditorImages& editorImages, int layerIndex);
    ~VirtualInstrumentUI() override;

    void refresh() override;

    /** Follows the instrument, which may change by itself. Called by the editor every 100 milliseconds. */
    void follow() override;
    /** Lets the panel that is shown follow what changes by itself. Called in each pass of the editor. */
    void followShownPanel();

    void paint(juce::Graphics& g) override;
    void buttonClicked(juce::Button* button) override;

    int getLayer() const noexcept { return layer; }

    /** Lights the key of the chosen panel and the switch of the chosen mode. The panel itself changes at the
        next refresh. */
    void showPanelKeys();

    /** Follows panel and mode where something else than this strip has moved them. */
    void followPanel();

private:
    enum Key
    {
        easyKey,
        filterKey,
        eqKey,
        midiKey,
        numKeys
    };

    /** Tab goes from left to right, through the panel at the end. */
    void orderFocus();
    void changeListenerCallback(juce::ChangeBroadcaster* source) override;
    SoundGround* groundAt(juce::Point<int> position) override;
    int chosenPanel() const;
    bool isZoned() const;
    void choosePanel(Panel panel);
    std::unique_ptr<ControlPage> makePanel(int panel);
    void showPanel(int panel);
    void showLayoutMenu();

    /** Behind everything. */
    SoundGround ground;
    InstrumentPanel instrumentPanel;
    MixPanel mixPanel;
    /** Made when first shown. */
    std::array<std::unique_ptr<ControlPage>, numPanels> panels;
    std::array<std::unique_ptr<myOnOff>, numKeys> keys;
    myOnOff normalMode;
    myOnOff zoneMode;
    juce::DrawableButton layoutMenuButton{"easyfilesmenu", juce::DrawableButton::ImageStretched};
};

} // namespace quorel
