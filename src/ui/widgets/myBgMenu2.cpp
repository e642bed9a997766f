// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/myBgMenu2.h"

namespace quorel
{
namespace
{
constexpr int rowHeight = 12;
} // namespace

myBgMenu2::myBgMenu2(juce::Rectangle<int> bounds, juce::ComboBox::Listener* listener, int parameterId,
                     juce::Rectangle<int> popupBounds, const CBitmap* backgroundImage,
                     PluginProcessor& pluginProcessor)
    : ImageMenuBox(bounds, listener, parameterId, popupBounds, backgroundImage, pluginProcessor)
{
    setJustificationType(juce::Justification::centredLeft);
}

void myBgMenu2::mouseDown(const juce::MouseEvent& event)
{
    if (isEnabled() && !event.mods.isPopupMenu())
        showPopup();
}

void myBgMenu2::showPopup()
{
    openPopup(rowHeight);
}

} // namespace quorel
