// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/StripPanel.h"
#include "ui/widgets/myBgMenu2.h"
#include "ui/widgets/mySlider2.h"

#include <array>
#include <memory>

namespace quorel
{

/** A layer's twelve Easy faders, each with a menu that ties it to a parameter of the hosted instrument. */
class EasyPanel : public StripPanel
{
public:
    EasyPanel(PluginProcessor& pluginProcessor, EditorHost& editorHost, const EditorImages& editorImages,
              int layerIndex);

    void refresh() override;
    void comboBoxChanged(juce::ComboBox* menu) override;

private:
    /** Holds only the selected entry until it opens: an instrument may have thousands of parameters, and
        there are 48 of these menus. */
    class TargetMenu : public myBgMenu2
    {
    public:
        TargetMenu(EasyPanel& easyPanel, int easyIndex);

        void showTarget();
        void showPopup() override;

    private:
        void fill(const juce::StringArray& names, int from, int to);

        EasyPanel& panel;
        const int easy;
    };

    std::array<std::unique_ptr<mySlider2>, numEasyParameters> faders;
    std::array<std::unique_ptr<TargetMenu>, numEasyParameters> menus;
};

} // namespace quorel
