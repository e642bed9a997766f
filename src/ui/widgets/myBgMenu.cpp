// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/myBgMenu.h"

namespace quorel
{

myBgMenu::myBgMenu(juce::Rectangle<int> bounds, juce::ComboBox::Listener* listener, int parameterId,
                   juce::Rectangle<int> popupBounds, const CBitmap* backgroundImage,
                   PluginProcessor& pluginProcessor)
    : ImageMenuBox(bounds, listener, parameterId, popupBounds, backgroundImage, pluginProcessor)
{
}

void myBgMenu::showPopup()
{
    openPopup(0);
}

} // namespace quorel
