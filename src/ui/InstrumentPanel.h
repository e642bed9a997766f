// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "hosting/InstrumentBanks.h"
#include "ui/StripPanel.h"
#include "ui/widgets/myBgMenu.h"
#include "ui/widgets/myButton.h"
#include "ui/widgets/myPicture.h"

#include <memory>

namespace quorel
{

/** Web site of the instruments' maker, opened for an instrument that is missing. */
constexpr const char* makerWebAddress = "https://ostrand.example/";

/** The instrument part of a layer's strip: the choice of instrument, bank and program, the instrument's icon,
    and the switch of its window. */
class InstrumentPanel : public StripPanel
{
public:
    InstrumentPanel(PluginProcessor& pluginProcessor, EditorHost& editorHost,
                    const EditorImages& editorImages, int layerIndex);

    void refresh() override;
    void buttonClicked(juce::Button* button) override;
    void comboBoxChanged(juce::ComboBox* menu) override;

    /** Lights the window's switch while the window is open. */
    void showWindowState();

private:
    void fillMenus();
    void showIcon();
    void stepMenu(juce::ComboBox& menu, int step);
    void chooseInstrument(int menuId);

    myBgMenu instrumentMenu;
    myBgMenu programMenu;
    myBgMenu bankMenu;
    myButton programPrevious;
    myButton programNext;
    myButton bankPrevious;
    myButton bankNext;
    myButton editorSwitch;
    juce::DrawableButton editorIcon{"toEditorIcon", juce::DrawableButton::ImageStretched};
    juce::DrawableButton missingIcon{"missingPluginIcon", juce::DrawableButton::ImageStretched};

    juce::String iconName;
    std::unique_ptr<CBitmap> iconImage;
    std::unique_ptr<myPicture> icon;
    juce::GlowEffect missingGlow;
    /** The instruments in the order of the menu's entries. */
    juce::Array<juce::PluginDescription> known;
};

} // namespace quorel
