// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/widgets/MenuBox.h"

namespace quorel
{

/** A menu on a read-out image; `noParameter` for none. The editor's pass leaves it alone: it follows at the
    next full refresh. */
class myBgMenu : public ImageMenuBox
{
public:
    /** The popup opens at `popupBounds`, in the parent's coordinates, or under the menu where that
        is empty. */
    myBgMenu(juce::Rectangle<int> bounds, juce::ComboBox::Listener* listener, int parameterId,
             juce::Rectangle<int> popupBounds, const CBitmap* backgroundImage,
             PluginProcessor& pluginProcessor);

    void showPopup() override;
};

} // namespace quorel
