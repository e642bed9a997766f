// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PluginProcessor.h"
#include "resources/CBitmap.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** What the menus have in common: no typing, and " --- " while nothing is chosen. Message thread. */
class MenuBox : public juce::ComboBox
{
public:
    /** `pluginProcessor` names the menu for screen readers; null for a menu without a parameter. */
    MenuBox(juce::Rectangle<int> bounds, juce::ComboBox::Listener* listener, const char* kind,
            int parameterId, PluginProcessor* pluginProcessor);

    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;
    void childrenChanged() override;
    void parentHierarchyChanged() override;

private:
    PluginProcessor* const processor;
    const int parameter;
    /** That the text was laid out with. */
    const juce::LookAndFeel* shownLook = nullptr;
};

/** A menu on a read-out image. */
class ImageMenuBox : public MenuBox
{
public:
    /** `backgroundImage` outlives the menu. The popup opens at `popupBounds`, in the parent's coordinates, or
        under the menu where that is empty. */
    ImageMenuBox(juce::Rectangle<int> bounds, juce::ComboBox::Listener* listener, int parameterId,
                 juce::Rectangle<int> popupBounds, const CBitmap* backgroundImage,
                 PluginProcessor& pluginProcessor);

    void paint(juce::Graphics& g) override;

protected:
    /** Opens the popup, unless it is open already, with rows of this height, or of the look and feel's for 0.
        Listeners hear the choice asynchronously. */
    void openPopup(int itemHeight);

private:
    const juce::Rectangle<int> popupArea;
    const CBitmap* image;
    bool popupOpen = false;
};

} // namespace quorel
