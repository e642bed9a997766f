// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/EasyPanel.h"

#include "hosting/HostedParameters.h"
#include "parameters/ParameterCodings.h"
#include "ui/Geometry.h"

namespace quorel
{

namespace
{
/** The film is named for 81 frames, but has one more. */
constexpr int numFaderFrames = 82;
constexpr float valueWithoutInstrument = 0.5f;
} // namespace

EasyPanel::TargetMenu::TargetMenu(EasyPanel& easyPanel, int easyIndex)
    : myBgMenu2(geometry::strip::easyMenu(easyIndex), &easyPanel,
                easyPanel.id(layerSlot::easyMapping + easyIndex), {}, &easyPanel.images.readout30,
                easyPanel.processor)
    , panel(easyPanel)
    , easy(easyIndex)
{
}

void EasyPanel::TargetMenu::fill(const juce::StringArray& names, int from, int to)
{
    const int chosen = decodeParamInt(panel.value(layerSlot::easyMapping + easy));
    clear(juce::dontSendNotification);

    for (int target = from; target < to; ++target)
        if (names[target] != namelessParameter || target == chosen)
            addItem(names[target], target);

    setSelectedId(chosen, juce::dontSendNotification);
}

void EasyPanel::TargetMenu::showTarget()
{
    // 0 means no target, so an instrument's parameter 0 can't be one.
    const int target = decodeParamInt(panel.value(layerSlot::easyMapping + easy));
    const auto& names = panel.instrument().getParameterNames();
    const bool valid = panel.plugin() != nullptr && target > 0 && target < names.size();
    fill(names, valid ? target : 0, valid ? target + 1 : 0);
}

void EasyPanel::TargetMenu::showPopup()
{
    if (panel.plugin() == nullptr)
    {
        // Who asked for a popup takes it for open until it hears that it isn't.
        hidePopup();
        return;
    }

    const auto& names = panel.instrument().getParameterNames();
    fill(names, 1, names.size());
    myBgMenu2::showPopup();
}

EasyPanel::EasyPanel(PluginProcessor& pluginProcessor, EditorHost& editorHost,
                     const EditorImages& editorImages, int layerIndex)
    : StripPanel(pluginProcessor, editorHost, editorImages, layerIndex)
{
    for (int n = 0; n < numEasyParameters; ++n)
    {
        const auto i = static_cast<size_t>(n);
        faders[i] =
            std::make_unique<mySlider2>(at(geometry::strip::easyFader(n)), this, id(layerSlot::easyValue + n),
                                        &images.easyFader, numFaderFrames, processor);
        menus[i] = std::make_unique<TargetMenu>(*this, n);
        menus[i]->setTitle("Layer " + juce::String(layer + 1) + " Easy " + juce::String(n + 1) + " target");
        addAndMakeVisible(*faders[i]);
        addAndMakeVisible(*menus[i]);
    }
}

void EasyPanel::refresh()
{
    auto* hosted = plugin();

    for (int n = 0; n < numEasyParameters; ++n)
    {
        const auto i = static_cast<size_t>(n);
        const int target = decodeParamInt(value(layerSlot::easyMapping + n));
        float shown = valueWithoutInstrument;

        if (hosted != nullptr)
            shown = target > 0 && target < numHostedParameters(*hosted) ? hostedParameter(*hosted, target)
                                                                        : value(layerSlot::easyValue + n);

        faders[i]->setValue(static_cast<double>(shown), juce::dontSendNotification);
        faders[i]->setDoubleClickReturnValue(true, static_cast<double>(shown));
        menus[i]->showTarget();
    }
}

void EasyPanel::comboBoxChanged(juce::ComboBox* menu)
{
    if (menu->getSelectedId() > 0)
        processor.setParameterFromUi(parameterOf(*menu), encodeParamInt(menu->getSelectedId()));
}

} // namespace quorel
