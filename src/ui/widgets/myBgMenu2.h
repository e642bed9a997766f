// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/widgets/MenuBox.h"

namespace quorel
{

/** A menu on a read-out image with its text to the left and a popup of low rows, for long lists. */
class myBgMenu2 : public ImageMenuBox
{
public:
    /** The popup opens at `popupBounds`, in the parent's coordinates, or under the menu where that
        is empty. */
    myBgMenu2(juce::Rectangle<int> bounds, juce::ComboBox::Listener* listener, int parameterId,
              juce::Rectangle<int> popupBounds, const CBitmap* backgroundImage,
              PluginProcessor& pluginProcessor);

    void mouseDown(const juce::MouseEvent& event) override;
    void showPopup() override;
};

} // namespace quorel
